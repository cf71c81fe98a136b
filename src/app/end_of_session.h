// Sees to it that nothing is lost when the program is ended from outside: by a signal, or by the session of
// the desktop.
#pragma once

#include <QObject>

#include "platform/termination.h"

namespace zelmar {

class MDIParent;

class EndOfSession : public QObject {
  Q_OBJECT

 public:
  // `window` outlives this object.
  explicit EndOfSession(MDIParent& window);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // The session manager has everybody put their data away; it may end the session then, or not.
  void PutAway();

  MDIParent& window_;
  TerminationWatch signals_;
  bool put_away_ = false;
};

}  // namespace zelmar
