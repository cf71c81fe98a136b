// The front page: the ways to a tune and into the rooms of the program, and a transport bar. A room that is
// not there yet stands dimmed and says so.
#pragma once

#include <QList>

#include "app/opened_tunes.h"
#include "shell/child_window.h"

class QBoxLayout;
class QGridLayout;
class QLabel;
class QPushButton;

namespace zelmar {

class CardButton;

class FrmFront : public ChildWindow {
  Q_OBJECT

 public:
  FrmFront();

  // Puts the composer and the title of the tune in memory behind the caption.
  void ShowTuneInCaption();
  void ShowTitleOfTune() override;
  // Puts the tunes that were opened last on their buttons, each of them once.
  void ShowRecentTunes();

 protected:
  void Activated() override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QLayout* Header();
  QLayout* Opening();
  QLayout* Doors();
  void PlaceInColumns();
  void SetTabOrder();
  void ShowWhatIsThere();
  // The place of the button, from 0.
  void OpenRecentTune(int button);
  void MyPlayBar_NewTuneWanted(const QString& action);

  QLabel* lblVersion_ = nullptr;
  QLabel* lblDatabaseTitle_ = nullptr;
  QLabel* lblRecentTunes_ = nullptr;
  QBoxLayout* header_ = nullptr;
  QGridLayout* recent_tunes_ = nullptr;
  QList<QPushButton*> cmdRecentTunes_;
  QList<OpenedTune> opened_;  // what each button stands for
  QGridLayout* doors_ = nullptr;
  QList<CardButton*> cards_;
  PlayBar* bar_ = nullptr;
};

}  // namespace zelmar
