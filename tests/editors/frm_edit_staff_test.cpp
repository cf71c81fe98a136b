// The staff view: the window itself, its tune, and how it goes with the transport bar and the main window.
#include "editors/frm_edit_staff.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>
#include <QSlider>

#include "app/frm_open.h"
#include "app/main_window_fixture.h"
#include "notation/track_staff.h"
#include "shell/help.h"

namespace zelmar {
namespace {

using namespace testing_support;

class FrmEditStaffTest : public MainWindowTest {
 protected:
  // Shows the window by its menu item.
  void Open() {
    Item("mnuEditStaff").trigger();
    QCoreApplication::processEvents();
    window_ = qobject_cast<FrmEditStaff*>(FindLoadedForm(QStringLiteral("frmEditStaff")));
    ASSERT_NE(window_, nullptr);
  }
  TrackStaff& Strip() { return *window_->MyTrackStaff(); }
  CtlQuilStaff& Staff(int item) { return *Strip().MyStaff()[static_cast<std::size_t>(item)]; }
  PlayBar& StaffBar() { return *window_->MyPlayBar(); }
  static int Heads(const CtlQuilStaff& staff) {
    const auto& drawn = staff.StaffDrawing().Primitives();
    return static_cast<int>(
        std::count_if(drawn.begin(), drawn.end(), [](const auto& p) { return p.role == Role::kNoteHead; }));
  }

  void RemoveFirstNoteOf(int bar) {
    Tune& tune = *main_->MyTune();
    QString key;
    for (const auto& tone : tune)
      if (key.isEmpty() && tone->Bar() == bar && tone->EventType() == MUSIC_NOTE)
        key = QString::number(tone->AbsRef());
    tune.Remove(key);
  }

  QPointer<FrmEditStaff> window_;
};

TEST_F(FrmEditStaffTest, TheMenuItemOpensItWithoutATune) {
  Start();
  Open();
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(window_->HelpContext(), 1800);
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Zelmar - Staff view"));
  EXPECT_TRUE(Find<QLabel>(*window_, "lblNoTune").isVisible());
  EXPECT_TRUE(StaffBar().NewTuneButtonStatus());
  EXPECT_FALSE(IsEnabled(StaffBar(), "cmdPlay"));
  QTest::mouseClick(Staff(0).picBox(), Qt::LeftButton, {}, QPoint(300, 60));
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(FrmEditStaffTest, ItShowsTheMelodyOfTheTuneInMemory) {
  Start();
  LoadTune();
  Open();
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Zelmar - Staff view of Bach - First"));
  EXPECT_FALSE(Find<QLabel>(*window_, "lblNoTune").isVisible());
  EXPECT_EQ(Strip().Tune(), main_->MyTune());
  EXPECT_EQ(Strip().TrackNumber(), main_->MyTune()->MelodyTrack());
  ASSERT_EQ(Strip().MyStaff().size(), 3U);
  for (int item = 0; item < 3; ++item) EXPECT_EQ(Heads(Staff(item)), 4);
  EXPECT_EQ(StaffBar().Tune(), main_->MyTune());
  EXPECT_EQ(StaffBar().FormName(), QStringLiteral("frmEditStaff"));
}

TEST_F(FrmEditStaffTest, ATuneOfVariousComposersIsNamedByItsTitle) {
  Start();
  LoadTune("TWO");
  Open();
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Zelmar - Staff view of Second"));
}

TEST_F(FrmEditStaffTest, ItFollowsTheTuneToTheEnd) {
  Start();
  LoadTune();
  Open();
  QList<int> left;
  int marked = 0;
  QObject::connect(main_->MyTune().get(), &Tune::Ticked, window_, [&] {
    left.append(Strip().LeftMostbar());
    for (const CtlQuilStaff* staff : Strip().MyStaff()) marked += staff->BeatMarker()->isVisible() ? 1 : 0;
  });
  StaffBar().Play();
  EXPECT_EQ(left.first(), 1);
  EXPECT_EQ(left.last(), 3);
  EXPECT_GE(marked, 12);
}

TEST_F(FrmEditStaffTest, PlayingAgainStartsOnThePageOfItsBar) {
  Start();
  LoadTune();
  Open();
  StaffBar().Play();
  EXPECT_EQ(Strip().LeftMostbar(), 3);
  int first = 0;
  QObject::connect(main_->MyTune().get(), &Tune::Ticked, window_, [&] {
    if (first == 0) first = Strip().LeftMostbar();
  });
  StaffBar().Play();
  EXPECT_EQ(first, 1);
}

TEST_F(FrmEditStaffTest, TheTransportBarLeadsTheStrip) {
  Start();
  LoadTune();
  Open();
  StaffBar().GoToEnd();
  EXPECT_EQ(Strip().LeftMostbar(), StaffBar().StartBar());
  StaffBar().Rewind();
  EXPECT_EQ(Strip().LeftMostbar(), 1);
  StaffBar().Forward();
  EXPECT_EQ(Strip().LeftMostbar(), 2);
  Find<QSlider>(StaffBar(), "PlaySlider").setValue(9);
  EXPECT_EQ(Strip().LeftMostbar(), 3);
}

TEST_F(FrmEditStaffTest, AJumpWhileItPlaysTakesTheStripAlong) {
  Start();
  LoadTune();
  Open();
  bool jumped = false;
  QList<int> bars, lefts;
  QObject::connect(main_->MyTune().get(), &Tune::Ticked, window_, [&] {
    bars.append(main_->MyTune()->BarNumber());
    lefts.append(Strip().LeftMostbar());
    if (jumped || main_->MyTune()->BarNumber() != 3) return;
    jumped = true;
    StaffBar().Back();
  });
  StaffBar().Play();
  ASSERT_TRUE(jumped);
  // On the second beat after the jump at the latest the bar that plays is on show.
  const auto place = bars.indexOf(3) + 2;
  ASSERT_EQ(bars.value(place), 2);
  EXPECT_EQ(lefts.value(place), 2);
}

// --- Stop ---

class StaffAfterStop : public FrmEditStaffTest {
 protected:
  void SetUp() override {
    Start();
    LoadTune();
    Open();
  }

  // Plays by one bar, and stops by another in bar 3.
  void PlayAndStop(PlayBar& played, PlayBar& stopped) {
    int stops = 0;
    QObject::connect(main_->MyTune().get(), &Tune::Ticked, main_.get(), [&] {
      if (main_->MyTune()->BarNumber() != 3 || main_->MyTune()->BeatWithinBar() != 2 || stops++ > 0) return;
      stopped.StopPlay();
    });
    played.Play();
    ASSERT_EQ(stops, 1);
    // What was still waiting for its turn changes nothing.
    QCoreApplication::processEvents();
  }

  void ExpectAllAtTheStart() {
    for (PlayBar* bar : {&Bar(), &StaffBar()}) {
      EXPECT_EQ(TextOf(*bar, "lblMyBar"), QStringLiteral("1"));
      EXPECT_EQ(TextOf(*bar, "lblMyBeat"), QStringLiteral("1"));
      EXPECT_EQ(Find<QSlider>(*bar, "PlaySlider").value(), 1);
    }
    EXPECT_EQ(Strip().LeftMostbar(), 1);
    for (int item = 0; item < 3; ++item) {
      EXPECT_EQ(Staff(item).CurrentBar(), 1 + item);
      EXPECT_FALSE(Staff(item).BeatMarker()->isVisible()) << item;
      EXPECT_EQ(Heads(Staff(item)), 4) << item;
    }
  }
};

TEST_F(StaffAfterStop, ItsOwnStopTakesEveryWindowToTheStart) {
  PlayAndStop(StaffBar(), StaffBar());
  ExpectAllAtTheStart();
}

TEST_F(StaffAfterStop, AStopOfAnotherWindowTakesTheStavesAlong) {
  PlayAndStop(Bar(), Bar());
  ExpectAllAtTheStart();
  PlayAndStop(StaffBar(), Bar());
  ExpectAllAtTheStart();
}

TEST_F(StaffAfterStop, APauseLeavesTheBlockAndAStopTakesItAway) {
  QObject context;
  QObject::connect(main_->MyTune().get(), &Tune::Ticked, &context, [this] {
    if (main_->MyTune()->BarNumber() == 3) StaffBar().Pause();
  });
  StaffBar().Play();
  ASSERT_EQ(Strip().LeftMostbar(), 3);
  EXPECT_TRUE(Staff(0).BeatMarker()->isVisible());
  StaffBar().StopPlay();
  ExpectAllAtTheStart();
}

TEST_F(StaffAfterStop, TheEndOfTheTuneLeavesTheLastBarOnShow) {
  StaffBar().Play();
  EXPECT_EQ(Strip().LeftMostbar(), 3);
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("3"));
}

TEST_F(FrmEditStaffTest, APressOnTheStaffAddsANoteToTheTune) {
  Start();
  LoadTune();
  Open();
  const auto before = main_->MyTune()->Count();
  QTest::mouseClick(Staff(1).picBox(), Qt::LeftButton, {}, QPoint(Staff(1).width() / 2, 60));
  EXPECT_EQ(main_->MyTune()->Count(), before + 2);  // and its end
  EXPECT_EQ(Heads(Staff(1)), 5);
  EXPECT_TRUE(main_->MyTune()->ChangedSinceLastSaved());
}

TEST_F(FrmEditStaffTest, ANoteThatLengthensTheTuneReachesTheTransportBar) {
  Start();
  LoadTune();
  Open();
  const QString before = TextOf(StaffBar(), "lblTotalbars");
  Strip().RefreshAllStaffs(9);
  QTest::mouseClick(Staff(1).picBox(), Qt::LeftButton, {}, QPoint(Staff(1).width() / 2, 60));
  EXPECT_NE(TextOf(StaffBar(), "lblTotalbars"), before);
  EXPECT_EQ(TextOf(StaffBar(), "lblTotalbars"), QStringLiteral("10"));
}

// --- The tune in memory changes ---

TEST_F(FrmEditStaffTest, OnComingToTheFrontItFetchesTheTuneAnew) {
  Start();
  LoadTune();
  Open();
  Strip().RefreshAllStaffs(2);
  Front().ShowOnTop();
  LoadTune("TWO");
  EXPECT_NE(Strip().Tune(), main_->MyTune());
  window_->ShowOnTop();
  QCoreApplication::processEvents();
  EXPECT_EQ(Strip().Tune(), main_->MyTune());
  EXPECT_EQ(Strip().LeftMostbar(), 1);
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Zelmar - Staff view of Second"));
}

TEST_F(FrmEditStaffTest, ATuneThatComesWhileAnyStaffHasTheKeyboardLeavesTheWindowInFront) {
  Start();
  LoadTune();
  Open();
  for (const bool in_menu : {false, true}) {
    Staff(2).setFocus();
    ASSERT_EQ(main_->focusWidget(), &Staff(2));
    if (in_menu) {
      Listed("mnuFile", "mnuRecentTunes", 2)[1]->trigger();
    } else {
      LoadTune("TWO");
      StaffBar().LoadNewTune(QString(), QString());
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    EXPECT_EQ(Strip().Tune(), main_->MyTune());
    EXPECT_EQ(main_->ActiveChild(), window_.data());
    EXPECT_EQ(main_->focusWidget(), &Staff(0));
  }
}

TEST_F(FrmEditStaffTest, ATuneThatIsOpenedFromAnotherWindowIsShownBehindIt) {
  Start();
  LoadTune("TWO");
  LoadTune("ONE");
  Open();
  Front().ShowOnTop();
  QCoreApplication::processEvents();
  Listed("mnuFile", "mnuRecentTunes", 2)[1]->trigger();
  EXPECT_EQ(main_->ActiveChild(), &Front());
  EXPECT_EQ(Front().windowTitle(), QStringLiteral("Zelmar - Second"));
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Zelmar - Staff view of Second"));
  EXPECT_EQ(Strip().Tune(), main_->MyTune());
  QStringList listed;
  for (const QAction* item : Listed("mnuWindowsTitle", "mnuWindows", 6)) listed.append(item->text());
  EXPECT_TRUE(listed.contains(QStringLiteral("Zelmar - Staff view of Second")))
      << qPrintable(listed.join('|'));
}

TEST_F(FrmEditStaffTest, TheSameTuneStaysAtItsBarAndIsDrawnAnew) {
  Start();
  LoadTune();
  Open();
  Strip().RefreshAllStaffs(2);
  RemoveFirstNoteOf(2);
  Front().ShowOnTop();
  QCoreApplication::processEvents();
  window_->ShowOnTop();
  QCoreApplication::processEvents();
  EXPECT_EQ(Strip().LeftMostbar(), 2);
  EXPECT_EQ(Heads(Staff(0)), 3);
}

TEST_F(FrmEditStaffTest, AFreshlyOpenedTuneRenewsTheStrip) {
  Start();
  LoadTune();
  Open();
  const auto before = main_->MyTune();
  QTimer timer;
  int opened = 0;
  timer.callOnTimeout([&opened] {
    QWidget* const form = FindLoadedForm(QStringLiteral("frmOpen"));
    if (form == nullptr || !form->isVisible() || opened > 0) return;
    ++opened;
    Find<QPushButton>(*form, "cmdOK").click();
    if (form->isVisible()) QTest::keyClick(form, Qt::Key_Escape);
  });
  timer.start(1);
  StaffBar().LoadNewTune();
  EXPECT_EQ(opened, 1);
  // Whichever entry the list starts at, what is on show is the tune in memory.
  EXPECT_EQ(Strip().Tune(), main_->MyTune());
  EXPECT_EQ(StaffBar().Tune(), main_->MyTune());
  Strip().SetTune(nullptr);
  StaffBar().LoadNewTune(QStringLiteral("ONE"), QStringLiteral("First"));
  EXPECT_EQ(Strip().Tune(), main_->MyTune());
}

// --- The main window ---

TEST_F(FrmEditStaffTest, OnReturnToTheProgramTheStavesAreDrawnAnew) {
  Start();
  LoadTune();
  Open();
  RemoveFirstNoteOf(1);
  EXPECT_EQ(Heads(Staff(0)), 4);
  QEvent activate(QEvent::WindowActivate);
  QCoreApplication::sendEvent(main_.get(), &activate);
  EXPECT_EQ(Heads(Staff(0)), 3);
}

TEST_F(FrmEditStaffTest, NewAndIdentifySayThatTheyAreNotPartOfThisVersion) {
  Start();
  Item("mnuFileNew").trigger();
  Item("mnuFileIdentify").trigger();
  ASSERT_EQ(Boxes().size(), 2);
  for (const auto& box : Boxes())
    EXPECT_EQ(box.text, QStringLiteral("This window is not part of this version yet."));
  EXPECT_EQ(FindLoadedForm(QStringLiteral("frmEditStaff")), nullptr);
}

TEST_F(FrmEditStaffTest, TheKeysOfTheTransportBarWorkOnTheStaff) {
  Start();
  LoadTune();
  Open();
  Staff(1).setFocus(Qt::TabFocusReason);
  QTest::keyClick(&Staff(1), Qt::Key_PageDown);
  EXPECT_EQ(Strip().LeftMostbar(), 2);
  QTest::keyClick(&Staff(1), Qt::Key_Home);
  EXPECT_EQ(Strip().LeftMostbar(), 1);
}

TEST_F(FrmEditStaffTest, TheHelpBookHasItsPage) {
  Start();
  Global().HelpPath = QStringLiteral(ZELMAR_BUILD_DIRECTORY "/Help");
  Open();
  EXPECT_TRUE(HasHelpContext(window_->HelpContext()));
}

TEST_F(FrmEditStaffTest, AnotherNumberOfStavesChangesTheHeightOfThePaper) {
  Start();
  LoadTune();
  Open();
  const int before = Strip().parentWidget()->height() - Strip().height();
  for (const int staves : {1, 5}) {
    Strip().SetBarsAcross(static_cast<std::int16_t>(staves));
    Strip().LoadBarsAcross(QStringLiteral("Best"));
    // The paper learns of it first, and then the window.
    for (int round = 0; round < 2; ++round) QCoreApplication::processEvents();
    EXPECT_EQ(Strip().parentWidget()->height() - Strip().height(), before) << staves;
  }
}

TEST_F(FrmEditStaffTest, NothingIsCutOffInASmallMainWindow) {
  Start();
  LoadTune();
  main_->resize(1024, 740);
  Open();
  window_->ShowMaximisedOnTop();
  QCoreApplication::processEvents();
  for (const QWidget* part : {static_cast<QWidget*>(&Strip()), static_cast<QWidget*>(&StaffBar())})
    EXPECT_TRUE(window_->rect().contains(QRect(part->mapTo(window_, QPoint()), part->size())));
  EXPECT_GE(Staff(0).width(), 300);
}

// --- Closing ---

TEST_F(FrmEditStaffTest, ClosingItWhileItsTunePlaysEndsNothingButTheWindow) {
  Start();
  LoadTune();
  Open();
  const auto tune = main_->MyTune();
  int beats_after = 0;
  QObject::connect(tune.get(), &Tune::Ticked, main_.get(), [&] {
    if (tune->BarNumber() == 2 && window_) {
      window_->Unload();
      LetClosedWindowsGo();
    } else if (!window_) {
      ++beats_after;
    }
  });
  StaffBar().Play();
  LetClosedWindowsGo();
  EXPECT_EQ(window_, nullptr);
  EXPECT_GT(beats_after, 0);
  Open();
  EXPECT_EQ(Strip().Tune(), tune);
}

TEST_F(FrmEditStaffTest, ClosingTheMainWindowWhileTheStripFollowsEndsThePlaying) {
  Start();
  LoadTune();
  Open();
  const auto tune = main_->MyTune();
  QObject::connect(tune.get(), &Tune::Ticked, main_.get(), [&] {
    if (tune->BarNumber() == 2) main_->close();
  });
  StaffBar().Play();
  EXPECT_FALSE(tune->Playing());
  EXPECT_EQ(tune->BarNumber(), 2);
}

TEST_F(FrmEditStaffTest, AnotherTuneMayBeLoadedWhileOnePlays) {
  Start();
  LoadTune();
  Open();
  const auto first = main_->MyTune();
  QObject::connect(first.get(), &Tune::Ticked, main_.get(), [&] {
    if (first->BarNumber() != 2 || Strip().Tune() != first) return;
    LoadTune("TWO");
    window_->Activate();
    EXPECT_EQ(Strip().LeftMostbar(), 1);
  });
  StaffBar().Play();
  EXPECT_EQ(Strip().Tune(), main_->MyTune());
  EXPECT_NE(Strip().Tune(), first);
  EXPECT_EQ(Strip().LeftMostbar(), 1);
}

}  // namespace
}  // namespace zelmar
