// The base of the windows that show the tune in memory over a transport bar.
//
// It makes the bar, keeps it below the window's page and to the tune: whenever the window comes to the front,
// after a load that the bar asked for, and when the tune gets another title. A window says what its caption
// reads and what else it does with the tune.
#pragma once

#include <memory>

#include "shell/child_window.h"

class QLayout;
class QVBoxLayout;

namespace zelmar {

class Tune;

class TuneWindow : public ChildWindow {
  Q_OBJECT

 public:
  void ShowTitleOfTune() override;

 protected:
  explicit TuneWindow(const QString& system_name);

  // Puts the page above a new bar, with all the room there is, and the bar behind the page's controls in the
  // way of the keyboard. Called once, when the page is whole; Bar gives null before.
  void SetPage(QWidget* page);
  void SetPage(QLayout* page);
  PlayBar* Bar() const { return bar_; }

  // The window's caption with a tune, or with none.
  virtual QString CaptionFor(const Tune* tune) const = 0;
  // Shows what the window shows of the tune beside caption and bar. A window may be closed in the middle of
  // it.
  virtual void ShowTune(const std::shared_ptr<Tune>&) {}
  // A tune was asked for by the bar: "OpenDialog" shows the open dialogue, and the tune is fetched then.
  virtual void NewTuneWanted(const QString& action, const QString& parameter);

  // Hands the tune in memory to caption, window and bar; without one they stay as they are.
  void FetchTune();

  void Activated() override;
  void changeEvent(QEvent* event) override;

 private:
  QVBoxLayout* ColumnOverBar();
  void ShowBackGround();

  PlayBar* bar_ = nullptr;
};

}  // namespace zelmar
