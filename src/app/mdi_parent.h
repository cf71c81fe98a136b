// The one top-level window: it owns the tune in memory and the loader that fills it, carries the menu, keeps
// the recent tunes and ends the program.
//
// Constructing it is not loading it: Load opens the front page and reads the recent tunes. Closing it ends
// the event loop; the object stays until its owner drops it, since a tune may still be on the stack.
#pragma once

#include <QMainWindow>
#include <QPointer>
#include <memory>

#include "model/main_window_link.h"
#include "shell/main_frame.h"

class QLabel;

namespace zelmar {

class KeptRecentTunes;
class RecoveryKeeper;
class Tune;
class TuneLoader;
struct CommandRow;

class MDIParent : public QMainWindow, public MainWindowLink, public MainFrame {
  Q_OBJECT

 public:
  MDIParent();
  ~MDIParent() override;

  void Load();

  std::shared_ptr<Tune> MyTune() override { return my_tune_; }
  void SetMyTune(std::shared_ptr<Tune> tune) override;
  std::shared_ptr<TuneLoader> MyLoader() override;
  void RebuildRecentTunesMenu() override;
  void ShowWaitText(const QString& text) override;
  void WakeUpPlayBar() override;

  QWidget* Window() override { return this; }
  QMdiArea* Area() override { return area_; }
  ChildWindow* ActiveChild() override;
  QMenu* WindowsMenu() override { return mnuWindowsTitle_; }
  QMenu* FileMenu() override { return mnuFile_; }

  void mnuRecentTunes_Click(int index) override;
  void OpenTune(const QString& code_name, const QString& caption) override;
  void SaveFile(const QString& code_name, bool& failed, const QString& portion) override;

  // Puts on the disk what the end of the program would cost: the unsaved tune and the recent tunes. Asks and
  // tells nothing.
  void KeepForNextStart();
  // The same, and ends the program, whatever is going on: what closing would ask, the next start does.
  void EndWithoutAsking();
  RecoveryKeeper& Recovery() { return *recovery_; }

  void ResetMidi() override;
  void PlayTuneFromMemory(bool hear_tick = false) override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void BuildMenu();
  void AddToMenu(const CommandRow& row);
  // The topic of the window in front; 0 where it has none in the help.
  int HelpContextInFront();
  bool TakesF1(QEvent& event);
  void ChildActivated();
  void UseFreshLoader();
  void MyTune_Finished();
  void MyLoader_PercentCompleted(std::int16_t percent);
  // Tells a person what becomes of a list that cannot be written.
  void KeepRecentTunes();
  void AskAboutChanges();
  void StayOpen(bool sounded);
  void SettleRecovery();
  void TakePlaceOfLastRun();
  void KeepPlace();

  QMdiArea* area_;
  QLabel* wait_text_;
  QPointer<ChildWindow> activated_child_;  // the one that came to the front last
  QMenu* mnuFile_ = nullptr;
  QMenu* mnuWindowsTitle_ = nullptr;
  std::shared_ptr<Tune> my_tune_;
  std::shared_ptr<TuneLoader> my_loader_;
  QString loading_text_;
  std::int16_t activation_count_ = 0;
  bool closing_ = false;
  bool ends_without_asking_ = false;
  bool given_up_ = false;  // the person does not want what is unsaved
  bool stays_ = false;     // the question about it was closed without an answer
  std::unique_ptr<RecoveryKeeper> recovery_;
  std::unique_ptr<KeptRecentTunes> recent_tunes_;
};

}  // namespace zelmar
