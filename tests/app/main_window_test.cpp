// The main window's commands: opening, transport and resets.
#include <QAccessible>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSignalSpy>

#include "app/frm_open.h"
#include "app/main_window_fixture.h"
#include "midi/mode_commands.h"
#include "platform/widgets/screen_place.h"
#include "shell/dialog_wait.h"

namespace zelmar {
namespace {

using namespace testing_support;

// Presses Escape in the open dialogue as soon as it stands, and says whether it did.
class OpenDialogueCloser {
 public:
  OpenDialogueCloser() {
    timer_.callOnTimeout([this] {
      if (QWidget* const form = FindLoadedForm(QStringLiteral("frmOpen")); form && form->isVisible()) {
        ++seen;
        QTest::keyClick(form, Qt::Key_Escape);
      }
    });
    timer_.start(1);
  }
  int seen = 0;

 private:
  QTimer timer_;
};

TEST_F(MainWindowTest, LoadOpensTheFrontPageMaximised) {
  Start();
  EXPECT_EQ(main_->ActiveChild(), &Front());
  EXPECT_TRUE(main_->Area()->activeSubWindow()->isMaximized());
  EXPECT_EQ(Front().windowTitle(), QStringLiteral("Zelmar - Front Screen - "));
  EXPECT_FALSE(Global().MainFormLoaded);
  EXPECT_EQ(TextOf(Front(), "lblVersion"), QStringLiteral(ZELMAR_VERSION));
}

TEST_F(MainWindowTest, TheFrontPageGivesItsBarColourNameAndDevice) {
  Global().MidiDeviceNumber = 3;
  Start();
  EXPECT_EQ(Bar().FormName(), QStringLiteral("frmFront"));
  EXPECT_EQ(Bar().DeviceID(), 3);
  EXPECT_TRUE(Bar().BackGround().isValid());
}

TEST_F(MainWindowTest, TheFrontPageShowsATuneThatStillRuns) {
  Start();
  LoadTune();
  QObject::connect(main_->MyTune().get(), &Tune::Ticked, main_.get(), [this] {
    if (main_->MyTune()->BarNumber() != 2) return;
    Front().Activate();
    EXPECT_FALSE(IsEnabled(Bar(), "cmdPlay"));
    EXPECT_TRUE(IsEnabled(Bar(), "cmdPause"));
    EXPECT_TRUE(IsEnabled(Bar(), "cmdStop"));
  });
  Bar().Play();
}

TEST_F(MainWindowTest, AFailedDatabaseLeavesTheProgramWithItsFrontPage) {
  Global().DatabasePath = database_.Directory() + QStringLiteral("/gone.mdb");
  bool shown = false;
  QTimer closer;
  closer.callOnTimeout([&shown] {
    QWidget* const window = FindLoadedForm(QStringLiteral("frmOptionsConnectDB"));
    if (window == nullptr || !window->isVisible()) return;
    shown = window->isModal();
    window->close();
  });
  closer.start(1);
  Start();
  EXPECT_TRUE(shown);
  EXPECT_TRUE(Global().DatabaseFailed);
  EXPECT_TRUE(Front().isVisible());
  EXPECT_EQ(Boxes().size(), 2);  // the connection's, and that there is no path file to show
}

TEST_F(MainWindowTest, TheTitleBearsTheSystemsMarkWhileATuneIsNotSaved) {
  Start();
  LoadTune();
  const auto looked = [this] { return QTest::qWaitFor([this] { return main_->isWindowModified(); }, 5000); };
  EXPECT_FALSE(main_->isWindowModified());
  EXPECT_EQ(main_->windowTitle(), QStringLiteral("Zelmar - Front Screen - Bach - First"));
  main_->MyTune()->SetTempo(90);
  main_->MyTune()->SetComposer(QStringLiteral("Haydn"));
  EXPECT_TRUE(looked());
  EXPECT_EQ(main_->windowTitle(), QStringLiteral("Zelmar - Front Screen - Bach - First[*]"));
  // Another caption keeps the mark, once.
  Front().Activate();
  EXPECT_EQ(main_->windowTitle(), QStringLiteral("Zelmar - Front Screen - Haydn - First[*]"));
  EXPECT_EQ(Front().windowTitle(), QStringLiteral("Zelmar - Front Screen - Haydn - First"));
  RunCommand(QStringLiteral("mnuFileSave"));
  EXPECT_TRUE(QTest::qWaitFor([this] { return !main_->isWindowModified(); }, 5000));
  EXPECT_EQ(main_->windowTitle(), QStringLiteral("Zelmar - Front Screen - Haydn - First"));
  // A window that is not maximised has its caption to itself.
  main_->MyTune()->SetComposer(QStringLiteral("Gluck"));
  main_->Area()->activeSubWindow()->showNormal();
  EXPECT_TRUE(looked());
  EXPECT_EQ(main_->windowTitle(), QStringLiteral("Zelmar[*]"));
  main_->Area()->activeSubWindow()->showMaximized();
  EXPECT_EQ(main_->windowTitle(), QStringLiteral("Zelmar - Front Screen - Haydn - First[*]"));
}

TEST_F(MainWindowTest, TheFrontPageHasItsButtons) {
  Start();
  for (const char* name : {"cmdHelp", "cmdKeyboardShortcuts", "cmdJukeBox", "cmdHits", "cmdPlayDictionary",
                           "cmdThemeQuiz", "cmdThemeSearch", "CmdPiano", "cmdTimeLine", "cmdMusicology"}) {
    const auto& button = Find<QAbstractButton>(Front(), name);
    EXPECT_TRUE(button.isVisible()) << name;
    EXPECT_FALSE(button.text().isEmpty()) << name;
  }
  EXPECT_EQ(Find<QAbstractButton>(Front(), "cmdHelp").toolTip(),
            QStringLiteral("Hit this button, or press F1 for context-sensitive help about any screen"));
  EXPECT_EQ(Find<QAbstractButton>(Front(), "cmdKeyboardShortcuts").toolTip(),
            QStringLiteral("Get a list of shortcut keys (Function keys and CTRL keys)"));
  EXPECT_FALSE(Find<QAbstractButton>(Front(), "cmdGenCode").isVisible());
}

TEST_F(MainWindowTest, TheHiddenButtonWritesTheTuneAsStatements) {
  Start();
  LoadTune();
  Find<QAbstractButton>(Front(), "cmdGenCode").click();
  EXPECT_TRUE(QFile::exists(database_.Directory() + QStringLiteral("/ONE.TUN")));
}

TEST_F(MainWindowTest, AWindowOfACascadeIsNoLargerThanTheArea) {
  Start();
  OpenBareWindow();
  main_->resize(RoomInsideFrame({800, 600}));
  Item("mnuWindows(1)").trigger();
  for (const QMdiSubWindow* window : main_->Area()->subWindowList())
    EXPECT_TRUE(main_->Area()->viewport()->rect().contains(window->geometry()))
        << qPrintable(window->widget()->objectName());
}

TEST_F(MainWindowTest, AScreenReaderHearsTheWaitText) {
  Start();
  main_->ShowWaitText(QStringLiteral("Sorting, please wait"));
  auto& text = Find<QLabel>(*main_, "lblWait");
  EXPECT_TRUE(text.isVisible());
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&text)->text(QAccessible::Name),
            QStringLiteral("Sorting, please wait"));
}

// --- Opening ---

TEST_F(MainWindowTest, OpenGoesThroughTheBarOfTheWindowInFront) {
  Start();
  QSignalSpy wanted(&Bar(), &PlayBar::NewTuneWanted);
  OpenDialogueCloser closer;
  QTest::keyClick(main_.get(), Qt::Key_O, Qt::ControlModifier);
  ASSERT_EQ(wanted.count(), 1);
  EXPECT_EQ(wanted[0][0].toString(), QStringLiteral("OpenDialog"));
  EXPECT_EQ(wanted[0][1].toString(), QStringLiteral("XX"));
  EXPECT_EQ(closer.seen, 1);
}

TEST_F(MainWindowTest, OpenGoesStraightToTheDialogueWithoutABar) {
  Start();
  OpenBareWindow();
  QSignalSpy wanted(&Bar(), &PlayBar::NewTuneWanted);
  OpenDialogueCloser closer;
  Item("mnuFileOpen").trigger();
  EXPECT_EQ(wanted.count(), 0);
  EXPECT_EQ(closer.seen, 1);
}

TEST_F(MainWindowTest, OpenGoesStraightToTheDialogueWithoutAnyWindow) {
  Start();
  Front().Unload();
  LetClosedWindowsGo();
  OpenDialogueCloser closer;
  Item("mnuFileOpen").trigger();
  EXPECT_EQ(closer.seen, 1);
}

TEST_F(MainWindowTest, OpenStopsTheTuneThatPlays) {
  Start();
  LoadTune();
  OpenDialogueCloser closer;
  QObject::connect(main_->MyTune().get(), &Tune::Ticked, main_.get(), [this, &closer] {
    if (main_->MyTune()->BarNumber() == 2 && closer.seen == 0) Item("mnuFileOpen").trigger();
  });
  Bar().Play();
  EXPECT_EQ(closer.seen, 1);
  EXPECT_EQ(main_->MyTune()->BarNumber(), 2);
}

// --- Transport commands ---

TEST_F(MainWindowTest, WithoutABarTheTransportKeysDoNothingAndSayNothing) {
  Start();
  LoadTune();
  OpenBareWindow();
  platform_.midi->sent.clear();
  for (const Qt::Key key : {Qt::Key_F2, Qt::Key_F3, Qt::Key_F4, Qt::Key_F5, Qt::Key_F6})
    QTest::keyClick(main_.get(), key);
  EXPECT_TRUE(platform_.midi->sent.empty());
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_TRUE(platform_.input->shown.isEmpty());
}

TEST_F(MainWindowTest, PlayWithoutATuneSaysWhy) {
  Start();
  QTest::keyClick(main_.get(), Qt::Key_F2);
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kInformation);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("Unable to play anything, because..."));
  EXPECT_EQ(Boxes()[0].text, QStringLiteral("No tune loaded."));
}

TEST_F(MainWindowTest, TheTransportKeysDriveTheBarInFront) {
  Start();
  LoadTune();
  QObject::connect(main_->MyTune().get(), &Tune::Ticked, main_.get(), [this] {
    if (main_->MyTune()->BarNumber() == 2) QTest::keyClick(main_.get(), Qt::Key_F4);
  });
  QTest::keyClick(main_.get(), Qt::Key_F2);
  EXPECT_EQ(Bar().StartBar(), 2);
  platform_.input->answers = {QStringLiteral("3")};
  QTest::keyClick(main_.get(), Qt::Key_F5);
  EXPECT_EQ(Bar().StartBar(), 3);
  QTest::keyClick(main_.get(), Qt::Key_F6);
  EXPECT_EQ(Bar().StartBar(), 1);
}

TEST_F(MainWindowTest, TheEndOfATuneSilencesTheDevice) {
  Start();
  LoadTune();
  platform_.midi->sent.clear();
  Bar().Play();
  EXPECT_EQ(platform_.midi->CountOf(SentMessage::Kind::kReset), 1);
}

TEST_F(MainWindowTest, PlayFromMemoryPlaysFromTheTop) {
  Start();
  LoadTune();
  std::int16_t hear_tick = -1;
  QObject::connect(main_->MyTune().get(), &Tune::Ticked, main_.get(),
                   [&] { hear_tick = main_->MyTune()->HearTick(); });
  main_->PlayTuneFromMemory(true);
  EXPECT_EQ(hear_tick, 1);
  EXPECT_EQ(main_->MyTune()->MetroVolume(), 127);
  main_->PlayTuneFromMemory();
  EXPECT_EQ(hear_tick, 0);
}

TEST_F(MainWindowTest, PlayFromMemoryStopsWhatPlaysAndStartsAtTheTop) {
  Start();
  LoadTune();
  const std::shared_ptr<Tune> tune = main_->MyTune();
  QList<int> bars;
  bool again = false;
  QObject::connect(tune.get(), &Tune::Ticked, main_.get(), [&] {
    bars.append(tune->BarNumber());
    if (tune->BarNumber() != 2 || again) return;
    again = true;
    main_->PlayTuneFromMemory();
    EXPECT_FALSE(tune->Playing());
  });
  QSignalSpy finished(tune.get(), &Tune::Finished);
  Bar().Play();
  // Four beats and the one that starts anew, then the whole tune, and nothing of the first run after it.
  EXPECT_EQ(bars.indexOf(2), 4);
  EXPECT_EQ(bars.value(5), 1);
  EXPECT_EQ(finished.count(), 2);
  EXPECT_TRUE(std::is_sorted(bars.begin() + 5, bars.end()));
}

TEST_F(MainWindowTest, PlayFromMemoryStopsATuneThatIsNoLongerTheCurrentOne) {
  Start();
  LoadTune();
  const std::shared_ptr<Tune> first = main_->MyTune();
  bool done = false;
  int beats_after = 0;
  QObject::connect(first.get(), &Tune::Ticked, main_.get(), [&] {
    beats_after += done ? 1 : 0;
    if (first->BarNumber() != 2 || done) return;
    LoadTune("TWO");
    done = true;
    QObject::connect(main_->MyTune().get(), &Tune::Ticked, main_.get(),
                     [&] { EXPECT_FALSE(first->Playing()); });
    main_->PlayTuneFromMemory();
  });
  first->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  first->Play();
  EXPECT_TRUE(done);
  EXPECT_EQ(beats_after, 0);
}

TEST_F(MainWindowTest, PlayFromMemoryWithoutATuneSaysSo) {
  Start();
  main_->PlayTuneFromMemory();
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kNone);
  EXPECT_EQ(Boxes()[0].text, QStringLiteral("No melody loaded, so can't play anything."));
}

// --- The main window goes away and comes back ---

TEST_F(MainWindowTest, AWindowInFrontKeepsWhatItShowsWhileTheMainWindowIsAway) {
  Start();
  LoadTune();
  QObject::connect(main_->MyTune().get(), &Tune::Ticked, main_.get(), [this] {
    if (main_->MyTune()->BarNumber() == 3) QTest::keyClick(main_.get(), Qt::Key_F4);
  });
  QTest::keyClick(main_.get(), Qt::Key_F2);
  Find<QLabel>(Bar(), "lblMyTempo").setText(QStringLiteral("77"));
  const auto expect_paused = [this] {
    EXPECT_EQ(Bar().StartBar(), 3);
    EXPECT_TRUE(IsEnabled(Bar(), "cmdPlay"));
    EXPECT_FALSE(IsEnabled(Bar(), "cmdPause"));
    EXPECT_TRUE(IsEnabled(Bar(), "cmdStop"));
    EXPECT_EQ(TextOf(Bar(), "lblMyTempo"), QStringLiteral("77"));
  };
  expect_paused();

  LeaveAndComeBack();
  expect_paused();
}

TEST_F(MainWindowTest, AWindowThatComesToTheFrontAgainFetchesTheTune) {
  Start();
  ChildWindow* const bare = OpenBareWindow();
  QString name = QStringLiteral("TWO");
  main_->MyLoader()->DoLoad(name);
  bare->Unload();
  LetClosedWindowsGo();
  ASSERT_EQ(main_->ActiveChild(), &Front());
  EXPECT_EQ(Bar().Tune(), main_->MyTune());
  EXPECT_EQ(Front().windowTitle(), QStringLiteral("Zelmar - Front Screen - Second"));
}

// --- Resets ---

TEST_F(MainWindowTest, ModeCommandsSendTheirMessageAndWakeTheBar) {
  Start();
  Item("mnuOptionsXGReset").trigger();
  EXPECT_EQ(Global().MidiMode, QStringLiteral("XG"));
  EXPECT_EQ(TextOf(Bar(), "lblMidiMode"), QStringLiteral("XG"));
  Item("mnuOptionsGSReset").trigger();
  EXPECT_EQ(TextOf(Bar(), "lblMidiMode"), QStringLiteral("GS"));
  Item("mnuOptionsGMReset").trigger();
  EXPECT_EQ(TextOf(Bar(), "lblMidiMode"), QStringLiteral("GM2"));
  ASSERT_EQ(platform_.midi->CountOf(SentMessage::Kind::kLong), 3);
}

struct ResetCase {
  const char* mode;
  int long_messages;
  const char* mode_after;
};

TEST_F(MainWindowTest, AnEmergencyResetRepeatsTheModeMessageByMode) {
  Start();
  LoadTune();
  for (const ResetCase& row :
       {ResetCase{"GM", 1, "GM2"}, {"XG", 1, "XG"}, {"GS", 1, "GS"}, {"GM2", 0, "GM2"}}) {
    Bar().SetTune(nullptr);  // whose own answer to the stop is another test's
    Global().MidiMode = QLatin1String(row.mode);
    platform_.midi->sent.clear();
    QSignalSpy finished(main_->MyTune().get(), &Tune::Finished);
    QString caption;
    QTimer::singleShot(50, main_.get(), [&caption] {
      if (auto* const window = qobject_cast<DialogWait*>(FindLoadedForm(QStringLiteral("DialogWait")))) {
        caption = window->windowTitle();
        EXPECT_TRUE(window->isModal());
        EXPECT_TRUE(window->SelfClosing());
        DialogWait::Unload();  // and not a second later
      }
    });
    Item("mnuPlayMIDIReset").trigger();
    EXPECT_EQ(finished.count(), 1);
    EXPECT_EQ(caption, QStringLiteral("Midi Reset"));
    EXPECT_GT(platform_.midi->CountOf(SentMessage::Kind::kReset), 0);
    EXPECT_EQ(platform_.midi->CountOf(SentMessage::Kind::kLong), row.long_messages) << row.mode;
    EXPECT_EQ(Global().MidiMode, QLatin1String(row.mode_after));
  }
}

TEST_F(MainWindowTest, AnEmergencyResetWithoutATuneSilencesTheDeviceAndStopsNothing) {
  Start();
  Global().TuneLoadedFlag = false;
  Global().MidiMode = QStringLiteral("GM2");
  platform_.midi->sent.clear();
  QSignalSpy finished(main_->MyTune().get(), &Tune::Finished);
  QTimer::singleShot(50, main_.get(), [] { DialogWait::Unload(); });
  Item("mnuPlayMIDIReset").trigger();
  EXPECT_EQ(finished.count(), 0);
  EXPECT_EQ(platform_.midi->CountOf(SentMessage::Kind::kReset), 1);
  EXPECT_EQ(platform_.midi->CountOf(SentMessage::Kind::kLong), 0);
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(MainWindowTest, TheControllersResetSendsItsControllersAndWaits) {
  Start();
  platform_.midi->sent.clear();
  QString caption;
  QTimer::singleShot(50, main_.get(), [&caption] {
    if (QWidget* const window = FindLoadedForm(QStringLiteral("DialogWait"))) caption = window->windowTitle();
  });
  Item("mnuOptionsMidiControllersReset").trigger();
  EXPECT_EQ(platform_.midi->ShortMessages().size(), 16U * 9U);
  EXPECT_EQ(caption, QStringLiteral("Controllers Reset"));
}

TEST_F(MainWindowTest, StopHidesTheWindowThatTellsWhatPlays) {
  Start();
  LoadTune();
  auto* const window = new ChildWindow(QStringLiteral("frmNowListening"));
  window->show();
  main_->ActiveChild()->MyPlayBar()->StopPlay();
  EXPECT_FALSE(window->isVisible());
  delete window;
}

}  // namespace
}  // namespace zelmar
