// Short demonstrations of what the sound card or module can do.
//
// A demonstration plays within the click that started it, and events are served meanwhile: the window may be
// closed, or another demonstration asked for, in the middle. One that is asked for follows when the one that
// plays has been stopped.
#pragma once

#include <memory>

#include "shell/child_window.h"

class QLabel;

namespace zelmar {

struct Demonstration;
class ModeRow;
class Tune;

class FrmOptionsMidiTests : public ChildWindow {
  Q_OBJECT

 public:
  static constexpr char kName[] = "frmOptionsMidiTests";

  FrmOptionsMidiTests();

  // Stops what plays and plays the demonstration; returns at its end.
  void PlayDemo(const Demonstration& demonstration);
  // Brings the controllers of all channels to a known state.
  void ResetControllers();

 protected:
  void Activated() override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void Run(const Demonstration& demonstration);
  // The tune of the library, null when it is not there; the user has been told then.
  static std::shared_ptr<Tune> Load(const QString& code_name);
  // Title and description, and what keeps the tune from sounding as it should.
  void ShowDetails(Tune& tune);

  const Demonstration* next_ = nullptr;
  std::weak_ptr<Tune> playing_;
  bool begun_ = false;  // it has been in front before
  bool running_ = false;
  bool closed_ = false;
  ModeRow* mode_row_;
  QLabel* lblTitle_;
  QLabel* lblDescription_;
  QLabel* lblNotice_;
};

}  // namespace zelmar
