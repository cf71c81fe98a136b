// The commands of the main window.

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QProgressBar>

#include "app/frm_open.h"
#include "app/mdi_parent.h"
#include "app/options/frm_options_connect_db.h"
#include "app/options/frm_options_create_new_db.h"
#include "app/options/frm_options_media_player.h"
#include "app/options/frm_options_midi_setup.h"
#include "app/product.h"
#include "midi/mode_commands.h"
#include "midi/running_tunes.h"
#include "midi/sound_card.h"
#include "midi/widgets/play_bar.h"
#include "model/globals.h"
#include "model/tune.h"
#include "platform/ignoring_failures.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "platform/widgets/widget_services.h"
#include "shell/child_window.h"
#include "shell/dialog_wait.h"
#include "shell/frm_progress_bar.h"
#include "shell/help.h"
#include "shell/loaded_forms.h"
#include "shell/tune_windows.h"
#include "shell/unsaved_changes.h"
#include "shell/window_catalogue.h"
#include "shell/window_menu.h"
#include "store/tune_loader.h"

namespace zelmar {

namespace {

void SayNoMelodyToEdit() {
  ShowMessage(MessageIcon::kInformation,
              QStringLiteral("No melody loaded yet into memory, so use File Load melody, then try again."));
}

void ShowWaitUntilItCloses(const QString& caption) {
  DialogWait* const window = DialogWait::Instance();
  window->SetCaption(caption);
  window->SetSelfClosing(true);
  window->exec();
}

}  // namespace

// --- File ---

void MDIParent::ShowOpenDialogue() {
  FrmOpen::ShowModal();
}

void MDIParent::mnuFileNew_Click() {
  SayCommandNotPartOfThisVersion(QStringLiteral("mnuFileNew"));
}

void MDIParent::mnuFileOpen_Click() {
  if (const std::shared_ptr<Tune> tune = my_tune_) IgnoringFailures([&tune] { tune->Stopit(); });
  if (PlayBar* const bar = ActivePlayBar())
    bar->LoadNewTune(QStringLiteral("XX"), QStringLiteral("OpenDialog"));
  else
    ShowOpenDialogue();
}

void MDIParent::mnuFilePrint_Click() {
  ChildWindow* const window = ActiveChild();
  if (window != nullptr && Platform().printer) Platform().printer->PrintLandscape(*window);
}

void MDIParent::mnuFileIdentify_Click() {
  SayCommandNotPartOfThisVersion(QStringLiteral("mnuFileIdentify"));
}

void MDIParent::mnuFileExit_Click() {
  close();
}

void MDIParent::mnuRecentTunes_Click(int index) {
  const QAction* const item = mnuFile_->findChild<QAction*>(QStringLiteral("mnuRecentTunes(%1)").arg(index));
  if (item == nullptr) return;
  OpenTune(item->data().toString(), item->text().replace(QLatin1String("&&"), QLatin1String("&")));
}

void MDIParent::OpenTune(QString code_name, const QString& caption) {
  if (!MayReplaceTune()) return;
  loading_text_ = QStringLiteral("Loading ") + caption;
  FrmProgressBar* const progress = FrmProgressBar::Instance();
  progress->MyProgressBar()->setValue(0);
  progress->SetCaption(loading_text_);
  progress->show();
  ServeEvents();
  if (const std::shared_ptr<Tune> tune = my_tune_) IgnoringFailures([&tune] { tune->Stopit(); });
  const std::shared_ptr<TuneLoader> loader = MyLoader();
  loader->DoLoad(code_name);
  ServeEvents();
  if (closing_ || !loader->LoadedOk()) return;

  if (PlayBar* const bar = ActivePlayBar()) bar->LoadNewTune(code_name, caption);
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

// --- Edit ---

void MDIParent::mnuEditMelodyData_Click() {
  if (Global().TuneLoadedFlag)
    ShowWindow(QStringLiteral("frmEditMelody"));
  else
    SayNoMelodyToEdit();
}

void MDIParent::mnuEditTrackData_Click() {
  if (Global().TuneLoadedFlag)
    ShowWindow(QStringLiteral("frmEditTracks"));
  else
    SayNoMelodyToEdit();
}

void MDIParent::mnuEditTrackFilter_Click() {
  if (Global().TuneLoadedFlag)
    ShowWindow(QStringLiteral("frmEditTrackFilter"));
  else
    ShowMessage(MessageIcon::kInformation,
                QStringLiteral("Unable to apply any track filter because no melody has been loaded into "
                               "memory. Use File Load Melody to load a melody, then try again."));
}

void MDIParent::mnuEditKeyboardInput_Click() {
  ShowWindow(QStringLiteral("frmEditKeyboardInput"));
}

// --- Play ---

void MDIParent::mnuPlayPlayTune_Click() {
  PlayBar* const bar = ActivePlayBar();
  if (bar == nullptr) return;
  if (Global().TuneLoadedFlag)
    bar->Play();
  else
    ShowMessage(MessageIcon::kInformation, QStringLiteral("No tune loaded."),
                QStringLiteral("Unable to play anything, because..."));
}

void MDIParent::mnuPlayStop_Click() {
  if (PlayBar* const bar = ActivePlayBar()) bar->StopPlay();
}

void MDIParent::mnuPlayPause_Click() {
  if (PlayBar* const bar = ActivePlayBar()) bar->Pause();
}

void MDIParent::mnuPlayGoTo_Click() {
  if (PlayBar* const bar = ActivePlayBar()) bar->GoToBar();
}

void MDIParent::mnuPlayRewind_Click() {
  if (PlayBar* const bar = ActivePlayBar()) bar->Rewind();
}

void MDIParent::mnuPlayJukeBox_Click() {
  ShowWindow(QStringLiteral("frmPlayJukeBox"));
}

void MDIParent::mnuPlayHits_Click() {
  ShowWindow(QStringLiteral("frmPlayHits"));
}

void MDIParent::mnuPlayDictionary_Click() {
  ShowWindow(QStringLiteral("frmPlayDictionary"));
}

void MDIParent::mnuPlayTuneQuiz_Click() {
  ShowWindow(QStringLiteral("frmPlayTuneQuiz"));
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
  tune->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  tune->Play();
}

// --- Options ---

void MDIParent::mnuOptionsGSReset_Click() {
  GSModeCommand();
}

void MDIParent::mnuOptionsXGReset_Click() {
  XGModeCommand();
}

void MDIParent::mnuOptionsGMReset_Click() {
  GMModeCommand();
}

void MDIParent::mnuOptionsMidiControllersReset_Click() {
  ResetChannels(ChannelReset::kControllers);
  ShowWaitUntilItCloses(QStringLiteral("Controllers Reset"));
}

void MDIParent::mnuOptionsMidiSetup_Click() {
  ShowOptionDialog<FrmOptionsMidiSetup>();
  if (PlayBar* const bar = ActivePlayBar()) bar->SetDeviceID(Global().MidiDeviceNumber);
}

void MDIParent::mnuOptionsConnectDB_Click() {
  ShowOptionDialog<FrmOptionsConnectDB>();
}

void MDIParent::mnuOptionsCreateNewDB_Click() {
  ShowOptionDialog<FrmOptionsCreateNewDB>();
}

void MDIParent::mnuOptionsMediaPlayer_Click() {
  ShowOptionDialog<FrmOptionsMediaPlayer>();
}

// Failures of its steps are ignored, so that the later ones are still taken.
void MDIParent::ResetMidi() {
  if (const std::shared_ptr<Tune> tune = my_tune_; tune && Global().TuneLoadedFlag)
    IgnoringFailures([&tune] { tune->Stopit(); });
  ShowWaitUntilItCloses(QStringLiteral("Midi Reset"));
  IgnoringFailures([] {
    if (TheSoundCard()) TheSoundCard()->MidiReset();
  });
  IgnoringFailures([] { RepeatModeCommand(); });
}

// --- Musicology ---

void MDIParent::mnuInstruments_Click() {
  ShowWindow(Global().MediaPlayerInstalled ? QStringLiteral("frmInstruments")
                                           : QStringLiteral("frmInstrumentsNoVideo"));
}

void MDIParent::mnuMusicologyHistory_Click() {
  ShowWindow(QStringLiteral("frmMusicologyHistory"));
}

// --- Windows ---

void MDIParent::mnuWindows_Click(int index) {
  switch (index) {
    case 1:
      for (QMdiSubWindow* window : area_->subWindowList())
        if (window->isVisible()) window->showNormal();
      area_->cascadeSubWindows();
      KeepWithinArea();
      return;
    case 2:
      PlaceSideBySide(Qt::Horizontal);
      return;
    case 3:
      PlaceSideBySide(Qt::Vertical);
      return;
    case 4:
      ShowWindow(QStringLiteral("frmFront"));
      return;
    default:
      break;
  }
  const QAction* const item =
      mnuWindowsTitle_->findChild<QAction*>(QStringLiteral("mnuWindows(%1)").arg(index));
  if (item == nullptr || index < kFirstListedWindow) return;
  QWidget* const form = LoadedForms().value(item->data().toInt());
  if (auto* child = qobject_cast<ChildWindow*>(form)) {
    child->ShowMaximisedOnTop();
  } else if (form != nullptr && form != this) {
    form->showMaximized();
    form->raise();
  }
}

// A cascade gives each window the size that it likes best, whatever the area has room for.
void MDIParent::KeepWithinArea() {
  const QSize room = area_->viewport()->size();
  for (QMdiSubWindow* window : area_->subWindowList())
    if (window->isVisible() && !window->isMinimized())
      window->resize(window->size().boundedTo(room - QSize(window->x(), window->y())));
}

void MDIParent::PlaceSideBySide(Qt::Orientation orientation) {
  QList<QMdiSubWindow*> windows;
  for (QMdiSubWindow* window : area_->subWindowList())
    if (window->isVisible() && !window->isMinimized()) windows.append(window);
  const QSize room = area_->viewport()->size();
  const int count = static_cast<int>(windows.size());
  for (int i = 0; i < count; ++i) {
    windows[i]->showNormal();
    if (orientation == Qt::Horizontal)
      windows[i]->setGeometry(room.width() * i / count, 0, room.width() / count, room.height());
    else
      windows[i]->setGeometry(0, room.height() * i / count, room.width(), room.height() / count);
  }
}

// --- Help ---

void MDIParent::mnuHelpContents_Click() {
  ShowHelpTopic(QStringLiteral("Introduction.htm"));
}

void MDIParent::mnuHelpShortcuts_Click() {
  ShowHelpPage(ApplicationDirectory() + QStringLiteral("\\Help\\KeyboardShortcuts.htm"),
               HelpPlace::kModalWindow);
}

void MDIParent::mnuHelpWebSite_Click() {
  ShowHelpPage(kWebSite, HelpPlace::kWindow, kWebSiteTitle);
}

}  // namespace zelmar
