// Every road on which another tune takes the place of a changed one: each asks first, and goes by the answer.
#include "app/frm_open.h"
#include "app/option_windows_fixture.h"
#include "app/options/frm_options_connect_db.h"
#include "app/options/frm_options_create_new_db.h"
#include "shell/frm_progress_bar.h"
#include "shell/recovery_keeper.h"

namespace zelmar {
namespace {

using namespace testing_support;

class Replacing : public OptionWindowTest {
 protected:
  Replacing() {
    SampleTune demo;
    demo.code_name = QStringLiteral("DemoReverb");
    demo.events = SampleMelody({QStringLiteral("C4")});
    database_.AddTune(demo);
    other_ = In(QStringLiteral("Other.mdb"));
    QFile::copy(database_.Path(), other_);
    QFile::copy(database_.Path(), In(QStringLiteral("ZelmarTemplate.mdb")));
    Start();
    LoadTune("TWO");
    LoadTune("ONE");
    tune_ = main_->MyTune();
    tune_->SetTitle(QStringLiteral("Changed"));
  }

  QString StoredTitle(const char* code_name) const {
    return database_
        .Column(QStringLiteral("select Title from tblMelodies where CodeName = '%1'")
                    .arg(QString::fromLatin1(code_name)))
        .join(u',');
  }
  void ExpectTheQuestion() const {
    ASSERT_FALSE(Boxes().isEmpty());
    EXPECT_EQ(Boxes()[0].text, QStringLiteral("Do you want to save the current tune onto the database before "
                                              "another tune takes its place?"));
    EXPECT_EQ(Boxes()[0].default_button, MessageAnswer::kCancel);
  }

  // Takes a road with an answer; then the box stood and nothing but it.
  void Take(const std::function<void()>& road, MessageAnswer answer,
            MessageAnswer to_filter = MessageAnswer::kYes) {
    platform_.messages->shown.clear();
    platform_.messages->answers = {answer, to_filter};
    road();
    ExpectTheQuestion();
  }
  void ExpectStays(const std::function<void()>& road) {
    Take(road, MessageAnswer::kCancel);
    EXPECT_EQ(Boxes().size(), 1);
    EXPECT_EQ(main_->MyTune(), tune_);
    EXPECT_TRUE(Global().TuneLoadedFlag);
    EXPECT_TRUE(tune_->ChangedSinceLastSaved());
    EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("First"));
    EXPECT_EQ(Global().DatabasePath, database_.Path());
  }

  void ChooseInOpenDialogue() {
    FrmOpen dialog(main_.get());
    ASSERT_TRUE(dialog.Load());
    dialog.show();
    dialog.GetTune();
    open_stands_ = dialog.isVisible();
  }
  void ChooseRecent() { Listed("mnuFile", "mnuRecentTunes", 2)[1]->trigger(); }
  void Demonstrate(const char* button) {
    Item("mnuOptionsMidiTests").trigger();
    QCoreApplication::processEvents();
    Click(*FindLoadedForm(QStringLiteral("frmOptionsMidiTests")), button);
  }
  void ChangeDatabase() {
    auto& window = Opened<FrmOptionsConnectDB>("mnuOptionsConnectDB");
    platform_.files->answers = {other_};
    Click(window, "cmdChangePath");
    window.close();
    LetClosedWindowsGo();
  }
  void CreateDatabase() {
    auto& window = Opened<FrmOptionsCreateNewDB>("mnuOptionsCreateNewDB");
    Type(window, "txtDBName", QStringLiteral("Fresh"));
    Click(window, "cmdCreate");
    window.close();
    LetClosedWindowsGo();
  }

  QString other_;
  std::shared_ptr<Tune> tune_;
  bool open_stands_ = false;
};

TEST_F(Replacing, CancelLeavesEverythingAsItIsOnEveryRoad) {
  ExpectStays([this] { ChooseInOpenDialogue(); });
  EXPECT_TRUE(open_stands_);
  ExpectStays([this] { ChooseRecent(); });
  EXPECT_EQ(FrmProgressBar::Loaded(), nullptr);
  ExpectStays([this] { Demonstrate("cmdReverb"); });
  ExpectStays([this] { Demonstrate("cmdOrganChord"); });
  ExpectStays([this] { Demonstrate("cmdPianoNote"); });
  ExpectStays([this] { ChangeDatabase(); });
  ExpectStays([this] { CreateDatabase(); });
  EXPECT_FALSE(QFile::exists(In(QStringLiteral("Fresh.mdb"))));
}

TEST_F(Replacing, ASaveThatFailsLeavesEverythingAsItIs) {
  tune_->SetTrackFilterOn(true);
  for (const auto& road : std::initializer_list<std::function<void()>>{
           [this] { ChooseInOpenDialogue(); }, [this] { ChooseRecent(); },
           [this] { Demonstrate("cmdReverb"); }, [this] { Demonstrate("cmdPianoNote"); },
           [this] { ChangeDatabase(); }, [this] { CreateDatabase(); }}) {
    Take(road, MessageAnswer::kYes, MessageAnswer::kNo);
    EXPECT_EQ(Boxes().size(), 2);
    EXPECT_EQ(main_->MyTune(), tune_);
    EXPECT_TRUE(tune_->ChangedSinceLastSaved());
    EXPECT_EQ(Global().DatabasePath, database_.Path());
  }
}

TEST_F(Replacing, YesSavesBeforeTheOpenDialogueLoads) {
  Global().RecentCodeNames[0] = QStringLiteral("TWO");
  Take([this] { ChooseInOpenDialogue(); }, MessageAnswer::kYes);
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("TWO"));
  EXPECT_FALSE(open_stands_);
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(Replacing, TheSameTuneMayBeOpenedAnewToGiveTheChangesUp) {
  Take([this] { ChooseInOpenDialogue(); }, MessageAnswer::kNo);
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("ONE"));
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("First"));
}

TEST_F(Replacing, TheOpenDialogueCannotBeLeftWhileTheTuneIsSaved) {
  FrmOpen dialog(main_.get());
  ASSERT_TRUE(dialog.Load());
  dialog.show();
  platform_.messages->answers = {MessageAnswer::kYes};
  bool tried = false;
  platform_.events->on_serve = [&](int) {
    if (FindLoadedForm(QStringLiteral("DialogWait")) == nullptr || std::exchange(tried, true)) return;
    dialog.reject();
    dialog.GetTune();
    EXPECT_TRUE(dialog.isVisible());
  };
  dialog.GetTune();
  EXPECT_TRUE(tried);
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(Replacing, ARecentTuneComesAfterYesAndNo) {
  Take([this] { ChooseRecent(); }, MessageAnswer::kYes);
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("TWO"));
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
  main_->MyTune()->SetTitle(QStringLiteral("Given up"));
  Take([this] { ChooseRecent(); }, MessageAnswer::kNo);
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("ONE"));
  EXPECT_EQ(StoredTitle("TWO"), QStringLiteral("Second"));
}

TEST_F(Replacing, ADemonstrationPlaysAfterYesAndNo) {
  Take([this] { Demonstrate("cmdReverb"); }, MessageAnswer::kYes);
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("DemoReverb"));
  main_->MyTune()->SetTitle(QStringLiteral("Given up"));
  Take([this] { Demonstrate("cmdOrganChord"); }, MessageAnswer::kNo);
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("TestOrganChord"));
  EXPECT_EQ(PitchesOn().size(), 5U);  // one of the demonstration, four of the chord
}

TEST_F(Replacing, ADemonstrationIsNoWorkThatIsAskedAbout) {
  Take([this] { Demonstrate("cmdOrganChord"); }, MessageAnswer::kNo);
  platform_.messages->shown.clear();
  Demonstrate("cmdPianoNote");
  Demonstrate("cmdReverb");
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(Replacing, TheProgramMayCloseWhileADemonstrationAsks) {
  platform_.messages->on_show = [this, done = false]() mutable {
    if (!std::exchange(done, true)) main_->close();
  };
  Demonstrate("cmdReverb");
  EXPECT_FALSE(main_->isVisible());
  EXPECT_EQ(main_->MyTune(), tune_);
  EXPECT_TRUE(PitchesOn().empty());
}

TEST_F(Replacing, AChangeOfDatabaseAsksForTheTuneOfTheOneBefore) {
  Take([this] { ChangeDatabase(); }, MessageAnswer::kYes);
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
  EXPECT_EQ(Global().DatabasePath, other_);
  // The tune stays in memory.
  EXPECT_EQ(main_->MyTune(), tune_);
}

TEST_F(Replacing, TheSameDatabaseChosenAgainIsNoChange) {
  other_ = database_.Path();
  platform_.messages->shown.clear();
  ChangeDatabase();
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(Replacing, ANewDatabaseAsksForTheTuneOfTheOneBefore) {
  Take([this] { CreateDatabase(); }, MessageAnswer::kYes);
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
  EXPECT_TRUE(QFile::exists(In(QStringLiteral("Fresh.mdb"))));
  EXPECT_TRUE(Global().DatabasePath.endsWith(QStringLiteral("Fresh.mdb")));
}

TEST_F(Replacing, AnUnchangedTuneIsReplacedWithoutAWord) {
  tune_->SetChangedSinceLastSaved(false);
  platform_.messages->shown.clear();
  ChooseRecent();
  Demonstrate("cmdReverb");
  ChangeDatabase();
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(Replacing, ListeningToATuneWithTheMetronomeIsNoChange) {
  LoadTune("TWO");
  Front().ShowOnTop();
  QCoreApplication::processEvents();
  Find<QCheckBox>(Bar(), "chkMetronome").click();
  Bar().Play();
  main_->PlayTuneFromMemory(true);
  EXPECT_TRUE(main_->MyTune()->ChangedSinceLastSaved());
  platform_.messages->shown.clear();
  ChooseRecent();
  EXPECT_TRUE(Boxes().isEmpty());
}

// --- What is kept meanwhile ---

TEST_F(Replacing, TheFileOfAChangedTuneGoesWithTheTune) {
  EXPECT_TRUE(main_->Recovery().KeepNow());
  EXPECT_EQ(KeptFiles().size(), 1);
  Take([this] { ChooseRecent(); }, MessageAnswer::kNo);
  EXPECT_TRUE(main_->Recovery().KeepNow());
  EXPECT_TRUE(KeptFiles().isEmpty());
}

TEST_F(Replacing, TheFileOfAChangedTuneGoesWithTheSave) {
  EXPECT_TRUE(main_->Recovery().KeepNow());
  RunCommand(QStringLiteral("mnuFileSave"));
  main_.reset();
  EXPECT_TRUE(KeptFiles().isEmpty());
}

}  // namespace
}  // namespace zelmar
