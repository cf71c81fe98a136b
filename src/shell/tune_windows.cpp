#include "shell/tune_windows.h"

#include <QPointer>

#include "midi/widgets/play_bar.h"
#include "shell/child_window.h"
#include "shell/loaded_forms.h"
#include "shell/main_frame.h"

namespace zelmar {

namespace {

// A window may close another, or itself, when it is told.
void ForEachWindow(void (ChildWindow::*act)(), const ChildWindow* but = nullptr) {
  QList<QPointer<ChildWindow>> windows;
  for (QWidget* form : LoadedForms())
    if (auto* const window = qobject_cast<ChildWindow*>(form); window != but) windows.append(window);
  for (const auto& window : windows)
    if (window) (window->*act)();
}

}  // namespace

void ShowTuneInWindows() {
  ForEachWindow(&ChildWindow::Activate);
}

void ShowTuneInOtherWindows() {
  MainFrame* const frame = TheMainFrame();
  ForEachWindow(&ChildWindow::Activate, frame != nullptr ? frame->ActiveChild() : nullptr);
}

void ShowModeInWindows() {
  for (QWidget* form : LoadedForms())
    if (auto* const window = qobject_cast<ChildWindow*>(form); window != nullptr && window->MyPlayBar())
      window->MyPlayBar()->ShowMode();
}

void ShowTitleInWindows() {
  ForEachWindow(&ChildWindow::ShowTitleOfTune);
}

}  // namespace zelmar
