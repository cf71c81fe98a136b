#include "shell/tune_windows.h"

#include <QPointer>

#include "shell/child_window.h"
#include "shell/loaded_forms.h"

namespace zelmar {

namespace {

// A window may close another, or itself, when it is told.
void ForEachWindow(void (ChildWindow::*act)()) {
  QList<QPointer<ChildWindow>> windows;
  for (QWidget* form : LoadedForms())
    if (auto* const window = qobject_cast<ChildWindow*>(form)) windows.append(window);
  for (const auto& window : windows)
    if (window) (window->*act)();
}

}  // namespace

void ShowTuneInWindows() {
  ForEachWindow(&ChildWindow::Activate);
}

void ShowTitleInWindows() {
  ForEachWindow(&ChildWindow::ShowTitleOfTune);
}

}  // namespace zelmar
