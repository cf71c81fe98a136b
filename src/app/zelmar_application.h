// The application object. A failure that a command throws ends that command here, with a message, and no
// more.
#pragma once

#include <QApplication>

namespace zelmar {

// Gives the program its name and version, for applications of any kind.
void NameProgram();

class ZelmarApplication : public QApplication {
  Q_OBJECT

 public:
  ZelmarApplication(int& argc, char** argv);
  bool notify(QObject* receiver, QEvent* event) override;
};

}  // namespace zelmar
