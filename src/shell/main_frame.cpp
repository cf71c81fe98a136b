#include "shell/main_frame.h"

#include "shell/child_window.h"

namespace zelmar {

namespace {

MainFrame* frame_in_use = nullptr;

}  // namespace

MainFrame* TheMainFrame() {
  return frame_in_use;
}

void SetMainFrame(MainFrame* frame) {
  frame_in_use = frame;
}

PlayBar* ActivePlayBar() {
  ChildWindow* const window = frame_in_use != nullptr ? frame_in_use->ActiveChild() : nullptr;
  return window != nullptr ? window->MyPlayBar() : nullptr;
}

}  // namespace zelmar
