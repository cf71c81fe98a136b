// The open dialogue: pick a tune, watch it load.
#pragma once

#include <QDialog>
#include <memory>

class QLabel;
class QProgressBar;
class QPushButton;
class QTimer;

namespace zelmar {

class Connection;
class MarqueeLabel;
class TuneCombo;

class FrmOpen : public QDialog {
  Q_OBJECT

 public:
  explicit FrmOpen(QWidget* parent = nullptr);

  // Shows the dialogue and returns when it is closed. Without a database, or with an empty one, nothing is
  // shown but the message that says so.
  static void ShowModal();

  // Fills the list. False when there is nothing to choose from; the user has been told then.
  bool Load();

  // Loads the selected tune into the main window and closes the dialogue; it stays open when that fails.
  void GetTune();

 public Q_SLOTS:
  // Escape and Cancel, which wait for the end of a load that runs.
  void reject() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void MakeControls();
  void SayWhatToDo();
  void SetLoading(bool loading);
  void ThisLoader_PercentCompleted(std::int16_t percent);
  bool LoadInto(QString& code_name);
  void HandTuneToFrontPage();

  std::shared_ptr<Connection> connection_;
  TuneCombo* cboMelodies_ = nullptr;
  QLabel* lblPleaseWait_ = nullptr;
  QLabel* lblPercent_ = nullptr;
  QProgressBar* MyProgressBar_ = nullptr;
  MarqueeLabel* txtWait_ = nullptr;
  QTimer* Timer1_ = nullptr;
  QPushButton* cmdOK_ = nullptr;
  QPushButton* cmdCancel_ = nullptr;
  QPushButton* cmdHelp_ = nullptr;
  bool loading_ = false;
};

}  // namespace zelmar
