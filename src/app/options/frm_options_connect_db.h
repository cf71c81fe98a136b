// Which tune database is in use, who chose it and why, and what it says about itself.
//
// A file that is chosen is the one in use from then on, also when this window is left without saving.
#pragma once

#include "shell/modal_dialog.h"

class QPlainTextEdit;

namespace zelmar {

class FrmOptionsConnectDB : public ModalDialog {
  Q_OBJECT

 public:
  static constexpr char kName[] = "frmOptionsConnectDB";

  explicit FrmOptionsConnectDB(QWidget* parent = nullptr);

  // Shows the window and returns when it is closed: for the start, which cannot go on without a database.
  static void ShowAndWait();

 private:
  void MakeControls();
  void ArrangeControls();
  void Load();
  void ShowChange();
  // Shows what the database says about itself, or what is wrong with it.
  void FindInfo();
  void SayTrouble(const QString& trouble);
  QString Warning() const;
  void cmdChangePath_Click();
  void cmdQuit_Click();
  void SaveInfo();

  QString title_read_;
  QString description_read_;
  bool info_read_ = false;  // from the database that is in use

  QLineEdit* txtCurrentPath_ = nullptr;
  QPushButton* cmdChangePath_ = nullptr;
  QLineEdit* txtDate_ = nullptr;
  QLineEdit* txtTime_ = nullptr;
  QLineEdit* txtPerson_ = nullptr;
  QLineEdit* txtComments_ = nullptr;
  QLineEdit* txtFileName_ = nullptr;
  QLineEdit* txtTitle_ = nullptr;
  QPlainTextEdit* txtDescription_ = nullptr;
  QLabel* lblState_ = nullptr;
  QPushButton* cmdQuit_ = nullptr;
};

}  // namespace zelmar
