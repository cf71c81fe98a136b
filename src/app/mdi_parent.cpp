#include "app/mdi_parent.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>
#include <QStatusBar>
#include <QTimer>
#include <utility>

#include "app/frm_front.h"
#include "app/kept_recent_tunes.h"
#include "app/keyboard_memory.h"
#include "app/main_title.h"
#include "app/menu_rows.h"
#include "app/opened_tunes.h"
#include "app/options/frm_options_connect_db.h"
#include "midi/mode_commands.h"
#include "midi/running_tunes.h"
#include "midi/sound_card.h"
#include "midi/widgets/now_listening.h"
#include "midi/widgets/play_bar.h"
#include "model/globals.h"
#include "model/tune.h"
#include "notation/ctl_quil_staff.h"
#include "platform/failure.h"
#include "platform/ignoring_failures.h"
#include "platform/services.h"
#include "platform/settings.h"
#include "platform/widgets/screen_place.h"
#include "platform/widgets/widget_services.h"
#include "shell/active_play_bar.h"
#include "shell/child_window.h"
#include "shell/database_wait_window.h"
#include "shell/frm_progress_bar.h"
#include "shell/loaded_forms.h"
#include "shell/recovery_keeper.h"
#include "shell/saving.h"
#include "shell/theme.h"
#include "shell/tune_fetch.h"
#include "shell/tune_windows.h"
#include "shell/unsaved_work.h"
#include "shell/window_catalogue.h"
#include "shell/window_menu.h"
#include "store/connect_database.h"
#include "store/connection.h"
#include "store/failure_words.h"
#include "store/recordset.h"
#include "store/tune_loader.h"

namespace zelmar {

namespace {

void RePaintStaves(const ChildWindow& window) {
  // A message about a bar may close the window.
  QList<QPointer<CtlQuilStaff>> staves;
  for (CtlQuilStaff* staff : window.findChildren<CtlQuilStaff*>()) staves.append(staff);
  for (const auto& staff : staves)
    if (staff) staff->RePaint();
}

constexpr QSize kFirstSize(1000, 720);
constexpr int kLookMilliseconds = 500;  // between two looks at the tune in memory, for its mark in the title
const QString kPlaceKey = QStringLiteral("MainWindow/Place");

template <typename Step>
void TellingFailures(Step step) {
  try {
    step();
  } catch (const std::exception& failure) {
    IgnoringFailures([&failure] { ShowMessage(MessageIcon::kCritical, QString::fromUtf8(failure.what())); });
  }
}

}  // namespace

MDIParent::MDIParent()
    : area_(new QMdiArea(this)),
      wait_text_(new QLabel(this)),
      recovery_(std::make_unique<RecoveryKeeper>()),
      recent_tunes_(std::make_unique<KeptRecentTunes>()) {
  setObjectName(QStringLiteral("MDIParent"));
  setWindowTitle(kApplicationTitle);
  area_->setObjectName(QStringLiteral("MdiArea"));
  area_->setBackground(QBrush(palette().color(QPalette::Dark)));
  area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setCentralWidget(area_);
  new KeyboardMemory(*area_);
  wait_text_->setObjectName(QStringLiteral("lblWait"));
  wait_text_->setTextFormat(Qt::PlainText);
  statusBar()->addWidget(wait_text_, 1);
  statusBar()->hide();
  TakePlaceOfLastRun();
  AddMenuRows();
  BuildMenu();

  AddLoadedForm(this);
  SetMainWindowLink(this);
  SetMainFrame(this);
  ShowDatabaseWaits();
  SetFormsListener(&RebuildWindowMenu);
  SetNowListeningHider([] {
    if (QWidget* const window = FindLoadedForm(QStringLiteral("frmNowListening"))) window->hide();
  });
  connect(area_, &QMdiArea::subWindowActivated, this, &MDIParent::ChildActivated);
  auto* const look = new QTimer(this);
  look->setInterval(kLookMilliseconds);
  connect(look, &QTimer::timeout, this, [this] { RenewMainTitle(*this); });
  look->start();
}

MDIParent::~MDIParent() {
  // A save that was on its way when the program was told to end has come to its own end by now.
  if (my_tune_ && !HasUnsavedWork(*my_tune_)) recovery_->Forget();
  disconnect(area_, nullptr, this, nullptr);
  // Nothing asks this window for its area or menus while they go.
  StopShowingDatabaseWaits();
  SetMainFrame(nullptr);
  SetNowListeningHider({});
  delete area_->findChild<KeyboardMemory*>();
  delete area_;
  SetMainWindowLink(nullptr);
}

void MDIParent::Load() {
  Global().MainFormLoaded = false;
  if (ChildWindow* const front = WindowByName(QStringLiteral("frmFront"))) front->ShowMaximisedOnTop();
  Global().DatabaseFailed = false;
  std::shared_ptr<Connection> connection;
  ConnectDatabase(connection);
  if (Global().DatabaseFailed) {
    FrmOptionsConnectDB::ShowAndWait();
    return;
  }
  UseFreshLoader();
  recent_tunes_->Read(connection);
  RebuildRecentTunesMenu();
}

void MDIParent::SetMyTune(std::shared_ptr<Tune> tune) {
  if (my_tune_) my_tune_->disconnect(this);
  my_tune_ = std::move(tune);
  if (my_tune_) connect(my_tune_.get(), &Tune::Finished, this, &MDIParent::MyTune_Finished);
  recovery_->TuneReplaced();
}

void MDIParent::MyTune_Finished() {
  if (TheSoundCard()) TheSoundCard()->MidiReset();
}

std::shared_ptr<TuneLoader> MDIParent::MyLoader() {
  if (!my_loader_) UseFreshLoader();
  return my_loader_;
}

void MDIParent::UseFreshLoader() {
  my_loader_ = std::make_shared<TuneLoader>();
  connect(my_loader_.get(), &TuneLoader::PercentCompleted, this, &MDIParent::MyLoader_PercentCompleted);
}

void MDIParent::MyLoader_PercentCompleted(std::int16_t percent) {
  FrmProgressBar* const window = FrmProgressBar::Loaded();
  if (window == nullptr) return;
  window->MyProgressBar()->setValue(percent);
  window->SetCaption(loading_text_ + ProgressWords(percent));
}

void MDIParent::RebuildRecentTunesMenu() {
  zelmar::RebuildRecentTunesMenu();
  NoteOpenedTune(Global().RecentCodeNames[0], Global().RecentCaptions[0]);
  QTimer::singleShot(0, this, [this] {
    if (!closing_) recent_tunes_->WriteChange();
  });
  if (auto* const front = qobject_cast<FrmFront*>(FindLoadedForm(QStringLiteral("frmFront"))))
    front->ShowRecentTunes();
}

void MDIParent::ShowWaitText(const QString& text) {
  wait_text_->setText(text);
  statusBar()->setVisible(!text.isEmpty());
}

void MDIParent::WakeUpPlayBar() {
  if (PlayBar* const bar = ActivePlayBar()) bar->WakeUp();
  ShowModeInWindows();
}

ChildWindow* MDIParent::ActiveChild() {
  // The current window stays current while a dialogue or another program is in front.
  QMdiSubWindow* const frame = area_->currentSubWindow();
  return frame != nullptr ? qobject_cast<ChildWindow*>(frame->widget()) : nullptr;
}

void MDIParent::ChildActivated() {
  if (closing_) return;
  QMdiSubWindow* const frame = area_->activeSubWindow();
  auto* const child = frame != nullptr ? qobject_cast<ChildWindow*>(frame->widget()) : nullptr;
  // The child in front is told of again when a message box or another program gives the keyboard back: what
  // it shows, such as a pause, stays.
  if (child == nullptr || child == activated_child_) {
    RebuildWindowMenu();
    return;
  }
  activated_child_ = child;
  child->Activate();
}

bool MDIParent::event(QEvent* event) {
  if (TakesF1(*event)) return true;
  if (event->type() == QEvent::WindowActivate) {
    ChildWindow* const child = ActiveChild();
    if (child != nullptr && child->objectName() == QLatin1String("frmEditStaff")) RePaintStaves(*child);
    if (activation_count_ < 2 && ++activation_count_ == 1) UseFreshLoader();
  }
  if (event->type() == QEvent::WindowTitleChange) TidyMainTitle(*this);
  if (event->type() == QEvent::ThemeChange) FollowSystemTheme(*qApp);
  if (event->type() == QEvent::PaletteChange) area_->setBackground(palette().color(QPalette::Dark));
  return QMainWindow::event(event);
}

// --- The place on the screen ---

void MDIParent::TakePlaceOfLastRun() {
  ResizeWithinScreen(*this, kFirstSize);
  restoreGeometry(Settings().value(kPlaceKey).toByteArray());
  // The place may lie off every screen by now, or be larger than any.
  KeepWithinScreen(*this);
}

void MDIParent::KeepPlace() {
  auto settings = Settings();
  settings.setValue(kPlaceKey, saveGeometry());
}

// --- The end ---

void MDIParent::closeEvent(QCloseEvent* event) {
  event->accept();
  if (closing_) return;
  closing_ = true;
  Global().MainFormLoaded = true;
  IgnoringFailures([this] { KeepPlace(); });
  // A device that is gone does not keep the program open.
  IgnoringFailures([this] {
    if (const std::shared_ptr<Tune> tune = my_tune_) tune->Stopit();
  });
  // A tune that is no longer the current one may still play.
  StopRunningTunes();
  const auto card = TheSoundCard();
  const bool sounded = card && card->Opened();
  if (card) {
    IgnoringFailures([&card] { card->MidiReset(); });
    IgnoringFailures([&card] {
      if (card->Opened()) card->CloseCard();
    });
  }
  // Whatever becomes of a save, the recent tunes are kept and the program ends.
  if (!ends_without_asking_) TellingFailures([this] { AskAboutChanges(); });
  if (std::exchange(stays_, false)) {
    event->ignore();
    StayOpen(sounded);
    return;
  }
  SettleRecovery();
  TellingFailures([this] { KeepRecentTunes(); });
  QCoreApplication::exit(0);
}

void MDIParent::AskAboutChanges() {
  if (!Global().TuneLoadedFlag || !my_tune_ || !my_tune_->ChangedSinceLastSaved()) return;
  const MessageAnswer answer =
      ShowMessage(MessageIcon::kQuestion,
                  QStringLiteral("Do you want to save the current tune onto the database before closing?"),
                  QStringLiteral("About to close Zelmar"), MessageButtons::kYesNo, MessageAnswer::kNo);
  if (answer == MessageAnswer::kClosed) {
    // Who turns away from the question wants neither answer; the end of the session may have done that too.
    stays_ = !ends_without_asking_;
    return;
  }
  if (answer == MessageAnswer::kNo) {
    given_up_ = !ends_without_asking_;
    return;
  }
  try {
    SaveWholeTune(QStringLiteral("Saving Zelmar file  ") + my_tune_->FileName() +
                  QStringLiteral(" to database on disk. Please wait."));
  } catch (const std::exception& failure) {
    const bool kept = UnsavedTune() && recovery_->KeepNow();
    throw Failure(
        error_number::kInvalidCall,
        QString::fromUtf8(failure.what()) +
            (kept ? QStringLiteral("\n\nIt is kept aside, and offered at the next start.") : QString()));
  }
}

// The way back from an end that was begun: the device sounds again, and the windows go on.
void MDIParent::StayOpen(bool sounded) {
  closing_ = false;
  Global().MainFormLoaded = false;
  recovery_->KeepNow();
  if (!sounded) return;
  IgnoringFailures([] {
    std::int16_t result = 0;
    TheSoundCard()->OpenCard(Global().MidiDeviceNumber, result);
    RepeatModeCommand();
  });
}

// What is neither saved nor given up stays in its file.
void MDIParent::SettleRecovery() {
  if (given_up_)
    recovery_->Forget();
  else
    recovery_->KeepNow();
}

void MDIParent::KeepForNextStart() {
  // Nobody may be there to press a button.
  const auto messages = std::exchange(Platform().messages, nullptr);
  recovery_->KeepNow();
  IgnoringFailures([this] { recent_tunes_->Write(); });
  Platform().messages = messages;
}

void MDIParent::EndWithoutAsking() {
  ends_without_asking_ = true;
  KeepForNextStart();
  Platform().messages = nullptr;
  close();
  // Boxes that stand are taken away too.
  QCoreApplication::exit(0);
}

void MDIParent::KeepRecentTunes() {
  try {
    recent_tunes_->Write();
  } catch (const Failure& failure) {
    throw Failure(failure.Number(),
                  QStringLiteral("The list of recent tunes could not be kept. %1 No tune is changed by that.")
                      .arg(WordsForPerson(failure)));
  }
}

}  // namespace zelmar
