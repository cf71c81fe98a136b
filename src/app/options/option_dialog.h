// The base of the option windows that are shown modally, and how the menu shows one.
#pragma once

#include "shell/modal_dialog.h"

namespace zelmar {

class OptionDialog : public ModalDialog {
  Q_OBJECT

 protected:
  using ModalDialog::ModalDialog;
};

// The widget that option windows stand before: the main window, or nothing where there is none.
QWidget* ParentOfOptions();

// Brings the window that is open to the front, or shows a new one.
template <typename Dialog>
void ShowOptionDialog() {
  if (!RaiseModalDialog(QLatin1String(Dialog::kName))) (new Dialog(ParentOfOptions()))->ShowModally();
}

}  // namespace zelmar
