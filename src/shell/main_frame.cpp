#include "shell/main_frame.h"

#include <QApplication>

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

QWidget* OwnerOfNewWindow() {
  if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
  return frame_in_use != nullptr ? frame_in_use->Window() : nullptr;
}

}  // namespace zelmar
