// Tells, on the interface thread, that the system asks the program to end: by SIGTERM, SIGINT or SIGHUP where
// there are signals.
//
// A second signal of the kind ends a program that does not react.
#pragma once

#include <QObject>
#include <memory>

class QSocketNotifier;

namespace zelmar {

class TerminationWatch : public QObject {
  Q_OBJECT

 public:
  // One watch at a time.
  explicit TerminationWatch(QObject* parent = nullptr);
  // The signals have their default effect again.
  ~TerminationWatch() override;

 Q_SIGNALS:
  // From the event queue, so whatever serves that can be on the stack.
  void EndWanted();

 private:
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace zelmar
