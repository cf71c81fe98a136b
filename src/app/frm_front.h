// The front page: the ways into the program, and a transport bar.
#pragma once

#include "shell/child_window.h"

class QGridLayout;
class QLabel;
class QPushButton;

namespace zelmar {

class FrmFront : public ChildWindow {
  Q_OBJECT

 public:
  FrmFront();

  // Puts the composer and the title of the tune in memory behind the caption.
  void ShowTuneInCaption();
  void ShowTitleOfTune() override;

 protected:
  void Activated() override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QLayout* Header();
  QLayout* Doors();
  void MyPlayBar_NewTuneWanted(const QString& action);

  QLabel* lblVersion_ = nullptr;
  QLabel* lblDatabaseTitle_ = nullptr;
  PlayBar* bar_ = nullptr;
};

}  // namespace zelmar
