#include "app/options/option_dialog.h"

#include "shell/main_frame.h"

namespace zelmar {

QWidget* ParentOfOptions() {
  MainFrame* const frame = TheMainFrame();
  return frame != nullptr ? frame->Window() : nullptr;
}

}  // namespace zelmar
