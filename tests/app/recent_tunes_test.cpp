// The recent tunes: their menu, and a load from it.
#include <QProgressBar>
#include <QSignalSpy>

#include "app/main_window_fixture.h"
#include "shell/dialog_wait.h"
#include "shell/frm_progress_bar.h"

namespace zelmar {
namespace {

using namespace testing_support;

TEST_F(MainWindowTest, ATuneOpenedTwiceStandsTwiceAndASeventhDropsTheOldest) {
  Start();
  LoadTune("TWO");
  for (int i = 0; i < 6; ++i) LoadTune("ONE");
  const auto items = Listed("mnuFile", "mnuRecentTunes", 2);
  ASSERT_EQ(items.size(), 6);
  for (const QAction* item : items) EXPECT_EQ(item->text(), QStringLiteral("Bach - First"));
  EXPECT_EQ(items[0]->data().toString(), QStringLiteral("ONE"));
}

TEST_F(MainWindowTest, RecentTunesAreReadAtTheStartInTableOrder) {
  database_.AddRow(QStringLiteral("tblRecentFiles"), {QStringLiteral("TWO"), QStringLiteral("Second")});
  database_.AddRow(QStringLiteral("tblRecentFiles"), {QStringLiteral("ONE"), QStringLiteral("Bach - First")});
  Start();
  const auto items = Listed("mnuFile", "mnuRecentTunes", 2);
  ASSERT_EQ(items.size(), 2);
  EXPECT_EQ(items[0]->text(), QStringLiteral("Second"));
  EXPECT_EQ(items[1]->data().toString(), QStringLiteral("ONE"));
}

TEST_F(MainWindowTest, TheListIsInTheDatabaseAsSoonAsItHasChanged) {
  const auto stored = [this] {
    return database_.Column(QStringLiteral("select CodeName from tblRecentFiles"));
  };
  Start();
  LoadTune("TWO");
  QCoreApplication::processEvents();
  EXPECT_EQ(stored(), QStringList{QStringLiteral("TWO")});
  for (int i = 0; i < 6; ++i) LoadTune("ONE");
  QCoreApplication::processEvents();
  EXPECT_EQ(stored(), QStringList(6, QStringLiteral("ONE")));
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(MainWindowTest, AListThatCannotBeWrittenAtOnceIsToldOfAtTheEndAlone) {
  Start();
  database_.Execute(QStringLiteral("drop table tblRecentFiles"));
  LoadTune();
  QCoreApplication::processEvents();
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_FALSE(Global().DatabaseFailed);
  main_->close();
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_TRUE(Boxes()[0].text.startsWith(QStringLiteral("The list of recent tunes could not be kept.")));
}

TEST_F(MainWindowTest, ASeventhStoredRecentTuneIsAFailure) {
  for (int i = 0; i < 7; ++i)
    database_.AddRow(QStringLiteral("tblRecentFiles"), {QStringLiteral("ONE"), QStringLiteral("x")});
  main_ = std::make_unique<MDIParent>();
  EXPECT_THROW(main_->Load(), SubscriptError);
}

TEST_F(MainWindowTest, ARecentTuneLoadsIntoTheWindowInFront) {
  Start();
  LoadTune("TWO");
  LoadTune("ONE");
  QSignalSpy wanted(&Bar(), &PlayBar::NewTuneWanted);
  QStringList captions;
  QObject::connect(main_->MyLoader().get(), &TuneLoader::PercentCompleted, main_.get(),
                   [&](std::int16_t percent) {
                     ASSERT_NE(FrmProgressBar::Loaded(), nullptr);
                     EXPECT_TRUE(FrmProgressBar::Loaded()->isVisible());
                     EXPECT_EQ(FrmProgressBar::Loaded()->MyProgressBar()->value(), percent);
                     captions.append(FrmProgressBar::Loaded()->windowTitle());
                   });
  Listed("mnuFile", "mnuRecentTunes", 2)[1]->trigger();
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Second"));
  EXPECT_EQ(Bar().Tune(), main_->MyTune());
  EXPECT_TRUE(Bar().NewTuneButtonStatus());
  EXPECT_EQ(Front().windowTitle(), QStringLiteral("Zelmar - Second"));
  EXPECT_EQ(FrmProgressBar::Loaded(), nullptr);
  EXPECT_EQ(wanted.count(), 1);
  EXPECT_TRUE(captions.contains(QStringLiteral("Loading Second5% completed. ")));
  EXPECT_TRUE(captions.contains(QStringLiteral("Loading Second55% completed.  Sorting in progress.  ")));
}

TEST_F(MainWindowTest, OnlyAtFiftyFivePercentTheCaptionSpeaksOfTheSort) {
  Start();
  LoadTune("TWO");
  QList<int> percents;
  QObject::connect(
      main_->MyLoader().get(), &TuneLoader::PercentCompleted, main_.get(), [&](std::int16_t percent) {
        percents.append(percent);
        ASSERT_NE(FrmProgressBar::Loaded(), nullptr);
        EXPECT_EQ(FrmProgressBar::Loaded()->windowTitle(),
                  QStringLiteral("Loading Second%1% completed. %2")
                      .arg(percent)
                      .arg(percent == 55 ? QStringLiteral(" Sorting in progress.  ") : QString()));
      });
  Listed("mnuFile", "mnuRecentTunes", 2)[0]->trigger();
  EXPECT_TRUE(percents.contains(55));
  EXPECT_TRUE(std::any_of(percents.begin(), percents.end(), [](int n) { return n > 55 && n < 100; }));
  EXPECT_EQ(percents.last(), 100);
}

TEST_F(MainWindowTest, TheCaptionOfARecentTuneStaysOnceEventsAreServed) {
  Start();
  LoadTune("TWO");
  LoadTune("ONE");
  Listed("mnuFile", "mnuRecentTunes", 2)[1]->trigger();
  QCoreApplication::processEvents();
  LeaveAndComeBack();
  EXPECT_EQ(FrmProgressBar::Loaded(), nullptr);
  EXPECT_EQ(Front().windowTitle(), QStringLiteral("Zelmar - Second"));
  EXPECT_EQ(TextOf(Bar(), "lblTitle"), QStringLiteral("Second"));
}

TEST_F(MainWindowTest, ARecentTuneLoadsThoughTheOneBeforeCannotBeStopped) {
  Start();
  LoadTune("TWO");
  LoadTune("ONE");
  QObject::connect(main_->MyTune().get(), &Tune::Finished, main_.get(), [] { throw OverflowError(); });
  EXPECT_NO_THROW(Listed("mnuFile", "mnuRecentTunes", 2)[1]->trigger());
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Second"));
  EXPECT_EQ(Bar().Tune(), main_->MyTune());
}

TEST_F(MainWindowTest, ARecentTuneThatIsGoneLeavesTheProgressWindow) {
  Start();
  LoadTune("ONE");
  database_.Execute(QStringLiteral("delete * from tblMelodies"));
  Listed("mnuFile", "mnuRecentTunes", 2)[0]->trigger();
  ASSERT_NE(FrmProgressBar::Loaded(), nullptr);
  EXPECT_TRUE(FrmProgressBar::Loaded()->isVisible());
  FrmProgressBar::Unload();
}

TEST_F(MainWindowTest, AnEmergencyResetInTheMiddleOfALoadHarmsNothing) {
  Start();
  LoadTune("TWO");
  bool reset = false;
  QObject::connect(main_->MyLoader().get(), &TuneLoader::PercentCompleted, main_.get(),
                   [&](std::int16_t percent) {
                     if (percent < 30 || reset) return;
                     reset = true;
                     QTimer::singleShot(50, main_.get(), [] { DialogWait::Unload(); });
                     Item("mnuPlayMIDIReset").trigger();
                   });
  Listed("mnuFile", "mnuRecentTunes", 2)[0]->trigger();
  EXPECT_TRUE(reset);
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Second"));
  EXPECT_EQ(Bar().Tune(), main_->MyTune());
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(MainWindowTest, AWindowThatClosesInTheMiddleOfALoadHarmsNothing) {
  Start();
  LoadTune("TWO");
  bool closed = false;
  QObject::connect(main_->MyLoader().get(), &TuneLoader::PercentCompleted, main_.get(),
                   [&](std::int16_t percent) {
                     if (percent < 30 || closed) return;
                     closed = true;
                     Front().Unload();
                     FrmProgressBar::Unload();
                     LetClosedWindowsGo();
                   });
  Listed("mnuFile", "mnuRecentTunes", 2)[0]->trigger();
  EXPECT_TRUE(closed);
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Second"));
  EXPECT_TRUE(Global().TuneLoadedFlag);
}

}  // namespace
}  // namespace zelmar
