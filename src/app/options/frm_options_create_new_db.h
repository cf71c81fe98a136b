// Makes a new tune database from the template and goes over to it.
#pragma once

#include "shell/modal_dialog.h"
#include "store/new_database.h"

class QCheckBox;
class QPlainTextEdit;
class QProgressBar;

namespace zelmar {

class FrmOptionsCreateNewDB : public ModalDialog {
  Q_OBJECT

 public:
  static constexpr char kName[] = "frmOptionsCreateNewDB";

  explicit FrmOptionsCreateNewDB(QWidget* parent = nullptr);

 public Q_SLOTS:
  // Back and Escape, which wait for the end of a copy that runs.
  void reject() override;

 private:
  void MakeControls();
  void ArrangeControls();
  void cmdCreate_Click();
  bool Copy(const QString& target);
  bool Fill(const QString& target);
  void SetWorking(bool working);
  StandardTables Standard() const;

  QLineEdit* txtDBName_ = nullptr;
  QLineEdit* txtPerson_ = nullptr;
  QLineEdit* txtTitle_ = nullptr;
  QPlainTextEdit* txtDescription_ = nullptr;
  QCheckBox* chkComposers_ = nullptr;
  QCheckBox* chkCategories_ = nullptr;
  QCheckBox* chkPeriods_ = nullptr;
  QCheckBox* chkEnsembles_ = nullptr;
  QCheckBox* chkCountries_ = nullptr;
  QProgressBar* MyProgressBar_ = nullptr;
  QPushButton* cmdCreate_ = nullptr;
  bool working_ = false;
};

}  // namespace zelmar
