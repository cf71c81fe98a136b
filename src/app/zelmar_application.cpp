#include "app/zelmar_application.h"

#include "midi/tune_player.h"
#include "platform/failure.h"
#include "platform/services.h"

namespace zelmar {

void NameProgram() {
  QCoreApplication::setApplicationName(QStringLiteral("zelmar"));
  QCoreApplication::setApplicationVersion(QStringLiteral(ZELMAR_VERSION));
}

ZelmarApplication::ZelmarApplication(int& argc, char** argv) : QApplication(argc, argv) {
  MakeTunesSound();
  NameProgram();
  // The end of the program is told by its main window, not by the last window that closes.
  setQuitOnLastWindowClosed(false);
}

bool ZelmarApplication::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const Failure& failure) {
    ShowMessage(MessageIcon::kCritical, failure.Description());
  } catch (const std::exception& error) {
    ShowMessage(MessageIcon::kCritical, QString::fromUtf8(error.what()));
  }
  return false;
}

}  // namespace zelmar
