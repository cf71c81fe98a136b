// The end of the program: what it stops, asks and keeps.
#include <QCloseEvent>
#include <QSignalSpy>

#include "app/failing_output.h"
#include "app/frm_open.h"
#include "app/main_window_fixture.h"
#include "app/troubled_database.h"
#include "shell/recovery_keeper.h"
#include "store/recovery_file.h"

namespace zelmar {
namespace {

using namespace testing_support;

class Closing : public MainWindowTest {
 protected:
  QStringList StoredRecentTunes() {
    return database_.Column(QStringLiteral("select CodeName from tblRecentFiles"));
  }
};

TEST_F(Closing, WithoutATuneNothingIsAsked) {
  Start();
  main_->close();
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_TRUE(Global().MainFormLoaded);
}

TEST_F(Closing, WithoutAChangeNothingIsAsked) {
  Start();
  LoadTune();
  main_->close();
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(Closing, AChangedTuneIsAskedAboutWithNoAsTheDefault) {
  Start();
  LoadTune();
  main_->MyTune()->SetTitle(QStringLiteral("Other"));
  main_->close();
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kQuestion);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("About to close Zelmar"));
  EXPECT_EQ(Boxes()[0].text,
            QStringLiteral("Do you want to save the current tune onto the database before closing?"));
  EXPECT_EQ(Boxes()[0].buttons, MessageButtons::kYesNo);
  EXPECT_EQ(Boxes()[0].default_button, MessageAnswer::kNo);
  EXPECT_EQ(StoredRecentTunes(), QStringList{QStringLiteral("ONE")});
  EXPECT_EQ(database_.Column(QStringLiteral("select Title from tblMelodies where CodeName = 'ONE'")),
            QStringList{QStringLiteral("First")});
}

TEST_F(Closing, AQuestionThatIsTurnedAwayFromLeavesTheProgramAsItWas) {
  std::int16_t result = 0;
  TheSoundCard()->OpenCard(0, result);
  Global().MidiMode = QStringLiteral("XG");
  Start();
  LoadTune();
  const auto tune = main_->MyTune();
  tune->SetTitle(QStringLiteral("Other"));
  platform_.messages->answers = {MessageAnswer::kClosed};
  EXPECT_FALSE(main_->close());
  EXPECT_EQ(Boxes().size(), 1);
  EXPECT_TRUE(main_->isVisible());
  EXPECT_FALSE(Global().MainFormLoaded);
  EXPECT_TRUE(TheSoundCard()->Opened());
  EXPECT_EQ(platform_.midi->sent.back().kind, SentMessage::Kind::kLong) << "the mode is set anew";
  EXPECT_EQ(main_->MyTune(), tune);
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
  EXPECT_EQ(KeptFiles().size(), 1);
  // It goes on: the tune plays, and the next end asks anew.
  Bar().Play();
  EXPECT_FALSE(platform_.midi->ShortMessages().empty());
  main_->close();
  EXPECT_EQ(Boxes().size(), 2);
  EXPECT_FALSE(main_->isVisible());
  EXPECT_TRUE(Global().MainFormLoaded);
  main_.reset();
  EXPECT_TRUE(KeptFiles().isEmpty()) << "No is an answer";
}

TEST_F(Closing, WithoutASoundDeviceNoneIsOpenedByStaying) {
  Start();
  LoadTune();
  main_->MyTune()->SetTitle(QStringLiteral("Other"));
  platform_.messages->answers = {MessageAnswer::kClosed};
  EXPECT_FALSE(main_->close());
  EXPECT_FALSE(TheSoundCard()->Opened());
}

TEST_F(Closing, YesSavesTheTuneAndClosingGoesOn) {
  Start();
  LoadTune();
  main_->MyTune()->SetTitle(QStringLiteral("Other"));
  platform_.messages->answers = {MessageAnswer::kYes};
  QStringList captions;
  platform_.events->on_serve = [&](int) {
    if (const QWidget* const window = FindLoadedForm(QStringLiteral("DialogWait")))
      captions.append(window->windowTitle());
  };
  main_->close();
  EXPECT_EQ(Boxes().size(), 1);
  EXPECT_EQ(database_.Column(QStringLiteral("select Title from tblMelodies where CodeName = 'ONE'")),
            QStringList{QStringLiteral("Other")});
  captions.removeDuplicates();
  EXPECT_EQ(captions,
            QStringList{QStringLiteral("Saving Zelmar file  ONE to database on disk. Please wait.")});
  EXPECT_EQ(FindLoadedForm(QStringLiteral("DialogWait")), nullptr);
  EXPECT_EQ(StoredRecentTunes(), QStringList{QStringLiteral("ONE")});
  EXPECT_FALSE(main_->isVisible());
}

TEST_F(Closing, ASaveThatFailsIsToldOnceAndClosingGoesOn) {
  Start();
  LoadTune();
  main_->MyTune()->SetTitle(QStringLiteral("Other"));
  database_.Execute(QStringLiteral("drop table tblWords"));
  platform_.messages->answers = {MessageAnswer::kYes};
  main_->close();
  ASSERT_EQ(Boxes().size(), 2);
  EXPECT_EQ(Boxes()[1].icon, MessageIcon::kCritical);
  EXPECT_TRUE(Boxes()[1].text.contains(QStringLiteral("tblWords")));
  EXPECT_EQ(FindLoadedForm(QStringLiteral("DialogWait")), nullptr);
  EXPECT_EQ(StoredRecentTunes(), QStringList{QStringLiteral("ONE")});
  EXPECT_FALSE(main_->isVisible());
}

TEST_F(Closing, ATrackFilterIsAskedAboutAndNoLeavesTheDatabaseAsItWas) {
  Start();
  LoadTune();
  main_->MyTune()->SetTitle(QStringLiteral("Other"));
  main_->MyTune()->SetTrackFilterOn(true);
  platform_.messages->answers = {MessageAnswer::kYes, MessageAnswer::kNo};
  main_->close();
  ASSERT_EQ(Boxes().size(), 2);
  EXPECT_EQ(Boxes()[1].default_button, MessageAnswer::kNo);
  EXPECT_EQ(database_.Column(QStringLiteral("select Title from tblMelodies where CodeName = 'ONE'")),
            QStringList{QStringLiteral("First")});
  EXPECT_FALSE(main_->isVisible());
}

TEST_F(Closing, TheRecentTunesAreWrittenNewestFirst) {
  database_.AddRow(QStringLiteral("tblRecentFiles"), {QStringLiteral("OLD"), QStringLiteral("Old")});
  Start();
  LoadTune("ONE");
  LoadTune("TWO");
  main_->close();
  EXPECT_EQ(StoredRecentTunes(),
            (QStringList{QStringLiteral("TWO"), QStringLiteral("ONE"), QStringLiteral("OLD")}));
  EXPECT_EQ(database_.Column(QStringLiteral("select Caption from tblRecentFiles")).first(),
            QStringLiteral("Second"));
}

TEST_F(Closing, TheDeviceIsResetAndClosed) {
  std::int16_t result = 0;
  TheSoundCard()->OpenCard(0, result);
  Start();
  main_->close();
  EXPECT_FALSE(TheSoundCard()->Opened());
  EXPECT_GT(platform_.midi->CountOf(SentMessage::Kind::kReset), 0);
  EXPECT_EQ(platform_.midi->CountOf(SentMessage::Kind::kClose), 1);
}

TEST_F(Closing, ADeviceThatFailsKeepsNothingOpenAndNothingFromBeingKept) {
  std::int16_t result = 0;
  TheSoundCard()->OpenCard(0, result);
  Start();
  LoadTune();
  using Kind = SentMessage::Kind;
  const auto gone = std::make_shared<FailingOutput>(std::initializer_list<Kind>{Kind::kReset, Kind::kClose});
  Platform().midi = gone;
  main_->close();
  EXPECT_EQ(gone->failures, 3) << "the tune's stop, the reset, the close";
  EXPECT_FALSE(main_->isVisible());
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_EQ(StoredRecentTunes(), QStringList{QStringLiteral("ONE")});
}

TEST_F(Closing, ASecondCloseAsksNothing) {
  Start();
  LoadTune();
  main_->MyTune()->SetTitle(QStringLiteral("Other"));
  main_->close();
  ASSERT_EQ(Boxes().size(), 1);
  main_->close();
  QCloseEvent another;
  QCoreApplication::sendEvent(main_.get(), &another);
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(Closing, ATuneFromMemoryDoesNotStartOnceTheProgramCloses) {
  Start();
  LoadTune();
  const auto other = TuneOfBars(4);
  bool asked = false;
  QObject::connect(other.get(), &Tune::Ticked, main_.get(), [&] {
    if (asked) return;
    asked = true;
    main_->PlayTuneFromMemory();
  });
  QObject::connect(other.get(), &Tune::Finished, main_.get(), [&] { main_->close(); });
  QSignalSpy begun(main_->MyTune().get(), &Tune::NoteStarted);
  other->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  other->Play();
  EXPECT_TRUE(asked);
  EXPECT_FALSE(main_->isVisible());
  EXPECT_EQ(begun.count(), 0);
}

TEST_F(Closing, WithTheDatabaseGoneTheProgramStillEnds) {
  database_.AddRow(QStringLiteral("tblRecentFiles"), {QStringLiteral("OLD"), QStringLiteral("Old")});
  Start();
  LoadTune();
  Global().DatabasePath = database_.Directory() + QStringLiteral("/gone.mdb");
  main_->close();
  EXPECT_FALSE(main_->isVisible());
  EXPECT_TRUE(Global().DatabaseFailed);
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kInformation);
  EXPECT_TRUE(Boxes()[0].text.startsWith(QStringLiteral("Zelmar Database cannot be found at the path = ") +
                                         Global().DatabasePath));
  // As it was written when it changed last.
  EXPECT_EQ(StoredRecentTunes(), (QStringList{QStringLiteral("ONE"), QStringLiteral("OLD")}));
  EXPECT_FALSE(QFileInfo::exists(Global().DatabasePath));
}

// --- What is kept for the next start ---

TEST_F(Closing, ATuneThatIsGivenUpOrSavedIsKeptNoLonger) {
  for (const MessageAnswer answer : {MessageAnswer::kNo, MessageAnswer::kYes}) {
    Start();
    LoadTune();
    main_->MyTune()->SetTitle(QStringLiteral("Other"));
    EXPECT_TRUE(main_->Recovery().KeepNow());
    ASSERT_EQ(KeptFiles().size(), 1);
    platform_.messages->answers = {answer};
    main_->close();
    main_.reset();
    EXPECT_TRUE(KeptFiles().isEmpty());
    ForgetTheEnd();
  }
}

TEST_F(Closing, ATuneWhoseSaveFailedIsKeptAndThatIsTold) {
  Start();
  LoadTune();
  main_->MyTune()->SetTitle(QStringLiteral("Other"));
  database_.Execute(QStringLiteral("drop table tblWords"));
  platform_.messages->answers = {MessageAnswer::kYes};
  main_->close();
  ASSERT_EQ(Boxes().size(), 2);
  EXPECT_TRUE(Boxes()[1].text.endsWith(QStringLiteral("It is kept aside, and offered at the next start.")));
  main_.reset();
  ASSERT_EQ(KeptFiles().size(), 1);
  EXPECT_EQ(ReadRecoveryFile(database_.Directory() + u'/' + KeptFiles()[0]).tune->Title(),
            QStringLiteral("Other"));
}

TEST_F(Closing, ATuneWhoseSaveWasCalledOffIsKept) {
  Start();
  LoadTune();
  main_->MyTune()->SetTrackFilterOn(true);
  main_->MyTune()->SetTitle(QStringLiteral("Other"));
  platform_.messages->answers = {MessageAnswer::kYes, MessageAnswer::kNo};
  main_->close();
  main_.reset();
  EXPECT_EQ(KeptFiles().size(), 1);
}

TEST_F(Closing, TheMetronomeIsAskedAboutAndNeverKept) {
  Start();
  LoadTune();
  main_->MyTune()->SetMetroVolume(100);
  main_->close();
  EXPECT_EQ(Boxes().size(), 1);
  main_.reset();
  EXPECT_TRUE(KeptFiles().isEmpty());
}

// A database that takes no row is told once for the tune and once for the list, and the program ends.
class ClosingOverATroubledDatabase : public Closing {
 protected:
  ClosingOverATroubledDatabase() {
    database_.AddRow(QStringLiteral("tblRecentFiles"), {QStringLiteral("OLD"), QStringLiteral("Old")});
    Start();
    LoadTune();
    main_->MyTune()->SetTitle(QStringLiteral("Other"));
    platform_.messages->answers = {MessageAnswer::kYes};
  }

  void ExpectTheTuneIsTold(const QString& reason) {
    EXPECT_FALSE(main_->isVisible());
    ASSERT_GE(Boxes().size(), 2);
    EXPECT_EQ(Boxes()[0].icon, MessageIcon::kQuestion);
    EXPECT_EQ(Boxes()[1].icon, MessageIcon::kCritical);
    EXPECT_TRUE(Boxes()[1].text.startsWith(QStringLiteral("\"ONE\" is not saved. ") + reason))
        << qPrintable(Boxes()[1].text);
  }
  void ExpectBothAreTold(const QString& reason) {
    ExpectTheTuneIsTold(reason);
    ASSERT_EQ(Boxes().size(), 3);
    EXPECT_EQ(Boxes()[2].icon, MessageIcon::kCritical);
    EXPECT_TRUE(
        Boxes()[2].text.startsWith(QStringLiteral("The list of recent tunes could not be kept. ") + reason))
        << qPrintable(Boxes()[2].text);
    EXPECT_TRUE(Boxes()[2].text.endsWith(QStringLiteral(" No tune is changed by that.")));
  }
  void ExpectAllIsAsItWas() {
    EXPECT_EQ(StoredRecentTunes(), (QStringList{QStringLiteral("ONE"), QStringLiteral("OLD")}));
    ExpectTheTuneIsAsItWas();
  }
  void ExpectTheTuneIsAsItWas() {
    EXPECT_EQ(database_.Column(QStringLiteral("select Title from tblMelodies where CodeName = 'ONE'")),
              QStringList{QStringLiteral("First")});
  }
};

TEST_F(ClosingOverATroubledDatabase, OneThatIsLocked) {
  {
    const LockedDatabase locked(database_);
    main_->close();
  }
  ExpectBothAreTold(QStringLiteral("Another program keeps the database for itself ("));
  ExpectAllIsAsItWas();
}

TEST_F(ClosingOverATroubledDatabase, OneThatIsReadOnly) {
  {
    const ReadOnlyDatabase read_only(database_);
    main_->close();
    ExpectTheTuneIsTold(read_only.Words());
  }
  // That nothing can be kept in it is known by then.
  EXPECT_EQ(Boxes().size(), 2);
  ExpectAllIsAsItWas();
}

// The one message comes when the program starts, and none comes with its end.
TEST_F(Closing, OverALibraryThatCanOnlyBeReadIsQuiet) {
  {
    const ReadOnlyDatabase read_only(database_);
    Start();
    ASSERT_EQ(Boxes().size(), 1);
    EXPECT_EQ(Boxes()[0].icon, MessageIcon::kExclamation);
    EXPECT_EQ(Boxes()[0].title, QStringLiteral("Database opened for reading"));
    EXPECT_TRUE(Boxes()[0].text.contains(ReasonOf(read_only.Obstacle()))) << qPrintable(Boxes()[0].text);
    LoadTune();
    main_->close();
  }
  EXPECT_FALSE(main_->isVisible());
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(ClosingOverATroubledDatabase, OneOnAFullDisk) {
  {
    main_->MyTune()->SetDescription(LongText());
    Global().RecentCaptions[0] = LongText();
    const FullDisk disk(kRoomWithoutLongTexts);
    main_->close();
  }
  ExpectBothAreTold(QStringLiteral("The database file cannot be written to: its disk is full ("));
  ExpectTheTuneIsAsItWas();
}

TEST_F(Closing, ExitEndsTheEventLoop) {
  Start();
  QTimer::singleShot(0, main_.get(),
                     [this] { QTest::keyClick(main_.get(), Qt::Key_X, Qt::ControlModifier); });
  QTimer::singleShot(5000, main_.get(), [] { QCoreApplication::exit(99); });
  EXPECT_EQ(QCoreApplication::exec(), 0);
}

TEST_F(Closing, WindowsMayCloseAndTheProgramEndWhileATunePlays) {
  Start();
  LoadTune();
  const QPointer<ChildWindow> front(&Front());
  platform_.events->on_serve = [this, front](int) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  };
  bool closed = false;
  const std::shared_ptr<Tune> tune = main_->MyTune();
  QObject::connect(tune.get(), &Tune::Ticked, main_.get(), [&] {
    if (tune->BarNumber() == 2 && tune->BeatWithinBar() == 1 && front) front->Unload();
    if (tune->BarNumber() == 3 && !closed) {
      closed = true;
      EXPECT_TRUE(front.isNull());
      main_->close();
    }
  });
  front->MyPlayBar()->Play();
  EXPECT_TRUE(closed);
  EXPECT_FALSE(tune->Playing());
}

TEST_F(Closing, ATuneThatIsNoLongerTheCurrentOneEndsTooAndLeavesNoNote) {
  Start();
  LoadTune("ONE");
  const std::shared_ptr<Tune> old = main_->MyTune();
  double closed_at = 0.0;
  QObject::connect(old.get(), &Tune::Ticked, main_.get(), [&] {
    if (old->BarNumber() != 2 || closed_at != 0.0) return;
    LoadTune("TWO");
    EXPECT_NE(main_->MyTune(), old);
    EXPECT_TRUE(old->Playing());
    closed_at = SecondsSinceMidnight();
    main_->close();
    EXPECT_FALSE(old->Playing());
  });
  Bar().Play();
  ASSERT_GT(closed_at, 0.0);
  EXPECT_LT(SecondsSinceMidnight() - closed_at, 0.1);
  // No note is struck after the last reset of the device.
  bool reset = false;
  for (const SentMessage& message : platform_.midi->sent) {
    if (message.kind == SentMessage::Kind::kReset) reset = true;
    if ((message.packed & 0xF0U) == 0x90U && message.packed >> 16U != 0) reset = false;
  }
  EXPECT_TRUE(reset);
}

TEST_F(Closing, ATuneThatNoWindowHoldsEndsWithTheProgram) {
  Start();
  const auto tune = TuneOfBars(8);
  bool closed = false;
  QObject::connect(tune.get(), &Tune::Ticked, main_.get(), [&] {
    if (tune->BarNumber() != 2 || closed) return;
    closed = true;
    main_->close();
  });
  EXPECT_EQ(tune->BarCount(), 8);  // the count that playing goes by
  tune->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  tune->Play();
  EXPECT_TRUE(closed);
  EXPECT_EQ(tune->BarNumber(), 2);
}

TEST_F(Closing, InTheMiddleOfALoadTheProgramEnds) {
  Start();
  FrmOpen dialog(main_.get());
  ASSERT_TRUE(dialog.Load());
  dialog.show();
  bool closed = false;
  QObject::connect(main_->MyLoader().get(), &TuneLoader::PercentCompleted, main_.get(),
                   [&](std::int16_t percent) {
                     if (percent < 30 || closed) return;
                     closed = true;
                     main_->close();
                   });
  dialog.GetTune();
  EXPECT_TRUE(closed);
  EXPECT_FALSE(main_->isVisible());
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(Closing, InTheMiddleOfALoadOfARecentTuneTheProgramEnds) {
  Start();
  LoadTune("TWO");
  LoadTune("ONE");
  const QPointer<ChildWindow> front = &Front();
  const std::shared_ptr<Tune> shown = Bar().Tune();
  const QString caption = front->windowTitle();
  QSignalSpy wanted(&Bar(), &PlayBar::NewTuneWanted);
  bool closed = false;
  QObject::connect(main_->MyLoader().get(), &TuneLoader::PercentCompleted, main_.get(),
                   [&](std::int16_t percent) {
                     if (percent < 30 || closed) return;
                     closed = true;
                     main_->close();
                   });
  Listed("mnuFile", "mnuRecentTunes", 2)[1]->trigger();
  EXPECT_TRUE(closed);
  EXPECT_FALSE(main_->isVisible());
  EXPECT_TRUE(Boxes().isEmpty());
  // No window takes the tune that came too late.
  ASSERT_TRUE(front);
  EXPECT_EQ(front->windowTitle(), caption);
  EXPECT_EQ(front->MyPlayBar()->Tune(), shown);
  EXPECT_EQ(wanted.count(), 0);
}

}  // namespace
}  // namespace zelmar
