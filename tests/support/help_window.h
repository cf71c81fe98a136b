// The help book that the build makes, and the window that shows it.
#pragma once

#include <QApplication>
#include <QTextBrowser>

#include "model/globals.h"
#include "support/window_fixture.h"

namespace zelmar::testing_support {

inline void UseBuiltHelp() {
  Global().HelpPath = QStringLiteral(ZELMAR_BUILD_DIRECTORY "/Help");
}

// Null while the window is not open.
inline QWidget* TheHelpWindow() {
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->objectName() == QLatin1String("HelpWindow") && window->isVisible()) return window;
  return nullptr;
}

// The first line of the page that is open; empty while none is.
inline QString HelpHeading() {
  QWidget* const window = TheHelpWindow();
  if (window == nullptr) return {};
  return Find<QTextBrowser>(*window, "WebHelp").toPlainText().section(QLatin1Char('\n'), 0, 0);
}

inline void CloseHelp() {
  delete TheHelpWindow();
}

}  // namespace zelmar::testing_support
