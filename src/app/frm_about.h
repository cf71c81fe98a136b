// What this program is, which version, and what it is working with.
#pragma once

#include "shell/child_window.h"

class QGridLayout;
class QLabel;
class QPushButton;

namespace zelmar {

class PageView;

class FrmAbout : public ChildWindow {
  Q_OBJECT

 public:
  FrmAbout();

 protected:
  void Activated() override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QLayout* Header();
  QLayout* Facts();
  QLayout* Buttons();
  QLabel* AddFact(QGridLayout* grid, const QString& heading, const char* name);

  PageView* view_;
  QLabel* lblVersion_ = nullptr;
  QLabel* lblComments_ = nullptr;
  QLabel* lblCurrentMelody_ = nullptr;
  QLabel* lblPath_ = nullptr;
  QLabel* lblMidiOutputDevice_ = nullptr;
  QLabel* lblMidiMode_ = nullptr;
};

}  // namespace zelmar
