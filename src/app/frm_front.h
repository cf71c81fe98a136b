// The front page: the ways to a tune and into the rooms of the program, and a transport bar. A room that is
// not there yet stands dimmed and says so.
#pragma once

#include <QList>

#include "app/opened_tunes.h"
#include "shell/tune_window.h"

class QBoxLayout;
class QGridLayout;
class QLabel;
class QPushButton;

namespace zelmar {

class CardButton;

class FrmFront : public TuneWindow {
  Q_OBJECT

 public:
  FrmFront();

  // Puts the tunes that were opened last on their buttons, each of them once.
  void ShowRecentTunes();

 protected:
  QString CaptionFor(const Tune* tune) const override;
  void NewTuneWanted(const QString& action, const QString& parameter) override;
  void Activated() override;
  void showEvent(QShowEvent* event) override;
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

  QLabel* lblVersion_ = nullptr;
  QLabel* lblDatabaseTitle_ = nullptr;
  QLabel* lblRecentTunes_ = nullptr;
  QBoxLayout* header_ = nullptr;
  QGridLayout* recent_tunes_ = nullptr;
  QList<QPushButton*> cmdRecentTunes_;
  QList<OpenedTune> opened_;  // what each button stands for
  QGridLayout* doors_ = nullptr;
  QList<CardButton*> cards_;
};

}  // namespace zelmar
