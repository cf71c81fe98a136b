#include "shell/active_play_bar.h"

#include "shell/child_window.h"
#include "shell/main_frame.h"

namespace zelmar {

PlayBar* ActivePlayBar() {
  MainFrame* const frame = TheMainFrame();
  ChildWindow* const window = frame != nullptr ? frame->ActiveChild() : nullptr;
  return window != nullptr ? window->MyPlayBar() : nullptr;
}

}  // namespace zelmar
