// How often an object gave a signal.
#pragma once

#include <QObject>

namespace zelmar::testing_support {

class SignalCount {
 public:
  template <typename Sender, typename Signal>
  SignalCount(const Sender* sender, Signal signal)
      : connection_(QObject::connect(sender, signal, [this] { ++count_; })) {}
  ~SignalCount() { QObject::disconnect(connection_); }
  SignalCount(const SignalCount&) = delete;
  SignalCount& operator=(const SignalCount&) = delete;

  int Count() const { return count_; }

 private:
  int count_ = 0;
  QMetaObject::Connection connection_;
};

}  // namespace zelmar::testing_support
