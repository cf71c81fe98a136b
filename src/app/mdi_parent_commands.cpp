// What the main window does for its menus and for other windows with the tune in memory.

#include <QMenu>
#include <QProgressBar>

#include "app/mdi_parent.h"
#include "midi/mode_commands.h"
#include "midi/play_from_now.h"
#include "midi/running_tunes.h"
#include "midi/sound_card.h"
#include "midi/widgets/play_bar.h"
#include "model/globals.h"
#include "model/tune.h"
#include "platform/ignoring_failures.h"
#include "platform/services.h"
#include "platform/widgets/widget_services.h"
#include "shell/active_play_bar.h"
#include "shell/child_window.h"
#include "shell/dialog_wait.h"
#include "shell/frm_progress_bar.h"
#include "shell/loaded_forms.h"
#include "shell/recovery_keeper.h"
#include "shell/tune_fetch.h"
#include "shell/tune_windows.h"
#include "shell/unsaved_changes.h"
#include "store/tune_saver.h"

namespace zelmar {

void MDIParent::SaveFile(const QString& code_name, bool& failed, const QString& portion) {
  SaveTune(my_tune_, code_name, failed, SavePortionOf(portion));
  recovery_->Check();
}

void MDIParent::mnuRecentTunes_Click(int index) {
  const QAction* const item = mnuFile_->findChild<QAction*>(QStringLiteral("mnuRecentTunes(%1)").arg(index));
  if (item == nullptr) return;
  OpenTune(item->data().toString(), item->text().replace(QLatin1String("&&"), QLatin1String("&")));
}

void MDIParent::OpenTune(const QString& code_name, const QString& caption) {
  if (!MayReplaceTune()) return;
  loading_text_ = QStringLiteral("Loading ") + caption;
  FrmProgressBar* const progress = FrmProgressBar::Instance();
  progress->MyProgressBar()->setValue(0);
  progress->SetCaption(loading_text_);
  progress->show();
  ServeEvents();
  if (const std::shared_ptr<Tune> tune = my_tune_) IgnoringFailures([&tune] { tune->Stopit(); });
  QString stored_name = code_name;
  const Fetched outcome = FetchTune(stored_name);
  ServeEvents();
  if (closing_ || outcome != Fetched::kLoaded) return;

  if (PlayBar* const bar = ActivePlayBar()) bar->LoadNewTune(stored_name, caption);
  // The window may have put another bar in front.
  if (PlayBar* const bar = ActivePlayBar()) {
    bar->SetTune(my_tune_);
    bar->SetNewTuneEnabled();
  }
  ShowTuneInOtherWindows();
  if (ChildWindow* const window = ActiveChild())
    window->setWindowTitle(QString(kApplicationTitle) + QStringLiteral(" - ") + caption);
  FrmProgressBar::Unload();
}

void MDIParent::PlayTuneFromMemory(bool hear_tick) {
  const std::shared_ptr<Tune> tune = my_tune_;
  if (!Global().TuneLoadedFlag || !tune) {
    ShowMessage(MessageIcon::kNone, QStringLiteral("No melody loaded, so can't play anything."));
    return;
  }
  // A tune that plays would only go on after this one.
  StopRunningTunes();
  if (closing_) return;
  tune->SetMetroVolume(127);
  tune->SetHearTick(hear_tick ? 1 : 0);
  PlayFromNow(*tune);
}

// Failures of its steps are ignored, so that the later ones are still taken.
void MDIParent::ResetMidi() {
  if (const std::shared_ptr<Tune> tune = my_tune_; tune && Global().TuneLoadedFlag)
    IgnoringFailures([&tune] { tune->Stopit(); });
  DialogWait::ShowUntilItCloses(QStringLiteral("Midi Reset"));
  IgnoringFailures([] {
    if (TheSoundCard()) TheSoundCard()->MidiReset();
  });
  IgnoringFailures([] { RepeatModeCommand(); });
}

}  // namespace zelmar
