#include "app/end_of_session.h"

#include <QGuiApplication>

#include "app/mdi_parent.h"

namespace zelmar {

EndOfSession::EndOfSession(MDIParent& window) : window_(window) {
  connect(&signals_, &TerminationWatch::EndWanted, &window_, &MDIParent::EndWithoutAsking);
  // Both are over when their handlers return.
  connect(qApp, &QGuiApplication::commitDataRequest, this, &EndOfSession::PutAway, Qt::DirectConnection);
  connect(qApp, &QGuiApplication::saveStateRequest, this, &EndOfSession::PutAway, Qt::DirectConnection);
  qApp->installEventFilter(this);
}

void EndOfSession::PutAway() {
  put_away_ = true;
  window_.KeepForNextStart();
}

bool EndOfSession::eventFilter(QObject* watched, QEvent* event) {
  // A session that ends tells its programs to quit, and waits for no box.
  if (watched == qApp && event->type() == QEvent::Quit && put_away_) {
    window_.EndWithoutAsking();
    return true;
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace zelmar
