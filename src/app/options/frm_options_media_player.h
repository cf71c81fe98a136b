// Whether movie clips can be shown.
#pragma once

#include "shell/modal_dialog.h"

class QCheckBox;

namespace zelmar {

class FrmOptionsMediaPlayer : public ModalDialog {
  Q_OBJECT

 public:
  static constexpr char kName[] = "frmOptionsMediaPlayer";

  explicit FrmOptionsMediaPlayer(QWidget* parent = nullptr);

 private:
  void cmdSave_Click();

  QCheckBox* chkMediaPlayerInstalled_;
};

}  // namespace zelmar
