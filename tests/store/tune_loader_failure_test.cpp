// Loads that fail: what is said, and that nothing is left open or half done.
#include "store/failing_load.h"

namespace zelmar::testing_support {
namespace {

TEST_F(FailingLoad, WithoutADatabaseTheLoadStops) {
  Global().DatabasePath = QStringLiteral("nowhere.mdb");
  Load(QStringLiteral("Tune"));
  ExpectNothingLoaded();
  EXPECT_EQ(loader.TuneName(), QStringLiteral("Tune"));
  EXPECT_EQ(platform.messages->shown.size(), 1);
  EXPECT_TRUE(percents.empty());
}

TEST_F(FailingLoad, AnUnknownTuneStopsWithoutAMessage) {
  QString name = QStringLiteral("Unknown");
  loader.DoLoad(name);
  ExpectNothingLoaded();
  EXPECT_TRUE(platform.messages->shown.isEmpty());
  EXPECT_EQ(name, QStringLiteral("Unknown"));
}

TEST_F(FailingLoad, AFailedLoadKeepsTheFlagOfTheLastTune) {
  for (const bool flag : {true, false}) {
    Global().TuneLoadedFlag = flag;
    Load(QStringLiteral("Unknown"));
    EXPECT_EQ(Global().TuneLoadedFlag, flag);
  }
}

TEST_F(FailingLoad, AFailedLoadLeavesTheTargetAsItWas) {
  auto target = std::make_shared<Tune>();
  const auto before = target;
  QString name = QStringLiteral("Unknown");
  loader.DoLoad(name, target);
  EXPECT_EQ(target, before);
  EXPECT_EQ(window.MyTune(), nullptr);
}

TEST_F(FailingLoad, ATuneWithoutTracksIsWarnedOf) {
  Change("delete * from tblTracks");
  ExpectQuietFailure();
  ASSERT_EQ(platform.messages->shown.size(), 1);
  const ShownMessage& box = platform.messages->shown[0];
  EXPECT_EQ(box.icon, MessageIcon::kExclamation);
  EXPECT_EQ(box.text, QStringLiteral("No track data for Tune"));
  EXPECT_EQ(
      box.title,
      QStringLiteral("Please check the integrity of your database. Perhaps restore it from your backup"));
  EXPECT_EQ(percents, std::vector<int>({5}));
}

TEST_F(FailingLoad, AMissingEventTableIsTold) {
  Change("DROP TABLE [Tune]");
  QString name = QStringLiteral("tUNE");
  loader.DoLoad(name);
  ExpectNothingLoaded();
  EXPECT_EQ(name, QStringLiteral("Tune"));
  ASSERT_EQ(platform.messages->shown.size(), 1);
  const ShownMessage& box = platform.messages->shown[0];
  EXPECT_EQ(box.icon, MessageIcon::kNone);
  EXPECT_EQ(box.text, QStringLiteral("This melody table (Tune) not found in database"));
  EXPECT_TRUE(box.title.isEmpty());
  EXPECT_EQ(percents, std::vector<int>({5, 10, 15}));
}

TEST_F(FailingLoad, AnEventTableThatCannotBeOpenedIsToldWithItsNumber) {
  Change("UPDATE tblMelodies SET CodeName = 'a]b'");
  Change("UPDATE tblTracks SET CodeName = 'a]b'");
  Load(QStringLiteral("a]b"));
  ExpectNothingLoaded();
  ASSERT_EQ(platform.messages->shown.size(), 1);
  const ShownMessage& box = platform.messages->shown[0];
  EXPECT_EQ(box.icon, MessageIcon::kCritical);
  EXPECT_EQ(box.title, QStringLiteral("Tune table not found in database."));
  EXPECT_TRUE(box.text.startsWith(
      QStringLiteral("Error while trying to load melody table (a]b).    Error no.3075.  Syntax error")))
      << box.text.toStdString();
}

TEST_F(FailingLoad, AnEmptyEventTableFailsAtItsFirstRow) {
  Change("delete * from [Tune]");
  ExpectFailure(database_error::kNoCurrentRecord);
  EXPECT_TRUE(platform.messages->shown.isEmpty());
}

TEST_F(FailingLoad, ANullInAnEventRowIsAFailureThatTellsTheRow) {
  for (const char* column :
       {"EventType", "AbsRef", "Bar", "Beat", "Tick", "Track", "Duration", "Instrument", "Pitch", "Volume"}) {
    const QString name = QString::fromLatin1(column);
    database.Execute(QStringLiteral("delete * from [Tune]"));
    database.AddNotes(QStringLiteral("Tune"), 3);
    database.Execute(QStringLiteral("UPDATE [Tune] SET %1 = NULL WHERE AbsRef = 2").arg(name));
    window.SetMyTune(std::make_shared<Tune>());
    EXPECT_EQ(ExpectFailure(error_number::kInvalidNull), QStringLiteral("[Tune], row 2: Invalid use of Null"))
        << column;
  }
}

TEST_F(FailingLoad, ANumberTooWideForItsFieldIsAFailureThatTellsTheRow) {
  const struct {
    const char* column;
    const char* value;
  } cases[] = {{"EventType", "256"}, {"AbsRef", "2147483648"}, {"Bar", "32768"},  {"Beat", "-32769"},
               {"Tick", "40000"},    {"Track", "-1"},          {"Volume", "256"}, {"Instrument", "1000"}};
  for (const auto& entry : cases) {
    Change("delete * from [Tune]");
    database.AddNotes(QStringLiteral("Tune"), 3);
    database.Execute(QStringLiteral("UPDATE [Tune] SET %1 = %2 WHERE AbsRef = 3")
                         .arg(QString::fromLatin1(entry.column), QString::fromLatin1(entry.value)));
    EXPECT_THROW(
        {
          try {
            Load(QStringLiteral("Tune"));
          } catch (const OverflowError& failure) {
            EXPECT_EQ(failure.Description(), QStringLiteral("[Tune], row 3: Overflow"));
            throw;
          }
        },
        OverflowError)
        << entry.column;
    ExpectNothingLoaded();
  }
}

TEST_F(FailingLoad, AnAbsRefUsedTwiceIsAFailureThatTellsTheRow) {
  Change("UPDATE [Tune] SET AbsRef = 1 WHERE AbsRef = 3");
  const QString description = ExpectFailure(error_number::kKeyInUse);
  EXPECT_TRUE(description.startsWith(QStringLiteral("[Tune], row 3: "))) << description.toStdString();
}

TEST_F(FailingLoad, AColumnOfAnotherTypeIsATypeMismatch) {
  Change("DROP TABLE [Tune]");
  Change(
      "CREATE TABLE [Tune] (EventType INTEGER, AbsRef INTEGER, Bar TEXT, Beat INTEGER, Tick INTEGER, Track "
      "INTEGER, "
      "Duration REAL, Instrument INTEGER, Pitch TEXT, Volume INTEGER, EnHarmonic TEXT)");
  Change("INSERT INTO [Tune] VALUES (128, 1, 'first', 1, 0, 1, 1.0, 0, 'C4', 100, ' ')");
  EXPECT_EQ(ExpectFailure(error_number::kTypeMismatch), QStringLiteral("[Tune], row 1: Type mismatch"));
  // A text that spells a number is one.
  Change("UPDATE [Tune] SET Bar = '2'");
  EXPECT_EQ(Load(QStringLiteral("Tune"))->Item(1)->Bar(), 2);
}

TEST_F(FailingLoad, AnEventTableWithoutAColumnIsAFailure) {
  Change("DROP TABLE [Tune]");
  Change("CREATE TABLE [Tune] (EventType INTEGER, AbsRef INTEGER)");
  Change("INSERT INTO [Tune] VALUES (128, 1)");
  ExpectFailure(database_error::kItemNotFound);
}

TEST_F(FailingLoad, AMissingSharedTableIsAFailure) {
  for (const char* table : {"tblThemes", "tblWords", "tblTracks", "tblMelodies"}) {
    Change((QByteArray("DROP TABLE ") + table).constData());
    ExpectFailure(error_number::kTableNotFound);
  }
}

TEST_F(FailingLoad, AFailureInAnotherTableTellsTableAndRow) {
  Change("UPDATE tblMelodies SET Tempo = 40000");
  EXPECT_EQ(ExpectFailure(error_number::kOverflow), QStringLiteral("tblMelodies, row 1: Overflow"));
  Change("UPDATE tblMelodies SET Tempo = 120");
  Change("INSERT INTO tblThemes (CodeName, ThemeNo) VALUES ('Tune', 1)");
  EXPECT_EQ(ExpectFailure(error_number::kInvalidNull),
            QStringLiteral("tblThemes, row 1: Invalid use of Null"));
  Change("delete * from tblThemes");
  Change("INSERT INTO tblTracks VALUES ('Tune', 300, 'x', 1, 0, 0, 0, 0)");
  EXPECT_EQ(ExpectFailure(error_number::kOverflow), QStringLiteral("tblTracks, row 2: Overflow"));
}

TEST_F(FailingLoad, AnApostropheInTheNameIsALetterOfIt) {
  EXPECT_EQ(FailureNumber([&] { Load(QStringLiteral("Tune' OR 'a'='a")); }), 0);
  ExpectNothingLoaded();
  SampleTune tune;
  tune.code_name = QStringLiteral("O'Carolan");
  tune.events = SampleMelody({QStringLiteral("C4")});
  tune.words = {{1, 1, 0, QStringLiteral("la")}};
  tune.themes = {SampleTheme()};
  LoadingTest::Load(tune);
  ASSERT_NE(window.MyTune(), nullptr);
  EXPECT_EQ(window.MyTune()->FileName(), QStringLiteral("O'Carolan"));
  EXPECT_EQ(window.MyTune()->Words()->Count(), 1);
  EXPECT_EQ(window.MyTune()->Themes()->Count(), 1);
}

TEST_F(FailingLoad, AFailureTakesTheWaitTextAway) {
  database.AddNotes(QStringLiteral("Tune"), 6001);
  Change("UPDATE [Tune] SET Bar = NULL WHERE AbsRef = 6000");
  ExpectFailure(error_number::kInvalidNull);
  ASSERT_EQ(window.wait_texts.size(), 2);
  EXPECT_TRUE(window.wait_texts.last().isEmpty());
}

TEST_F(FailingLoad, ALoadGoesWellAfterOneThatFailed) {
  Load(QStringLiteral("Unknown"));
  EXPECT_NE(Load(QStringLiteral("Tune")), nullptr);
  EXPECT_TRUE(loader.LoadedOk());
}

TEST_F(FailingLoad, ATrackNumberUsedTwiceIsAFailureUnlessItIsTheFirstTrack) {
  Change("INSERT INTO tblTracks VALUES ('Tune', 1, 'again', 5, 0, 0, 0, 0)");
  EXPECT_EQ(Load(QStringLiteral("Tune"))->Tracks()->Item(1)->Description(), QStringLiteral("again"));
  EXPECT_EQ(window.MyTune()->Tracks()->Count(), 1);
  done.clear();
  Global().RecentCodeNames = {};
  Change("INSERT INTO tblTracks VALUES ('Tune', 2, 'x', 1, 0, 0, 0, 0)");
  Change("INSERT INTO tblTracks VALUES ('Tune', 2, 'y', 1, 0, 0, 0, 0)");
  const QString description = ExpectFailure(error_number::kKeyInUse);
  EXPECT_TRUE(description.startsWith(QStringLiteral("tblTracks, row 4: "))) << description.toStdString();
}

// The note-offs fail on a metre of 0, the sort on a bar too far off for its key.
TEST_F(FailingLoad, AFailureOfTheNoteOffsOrTheSortEndsTheLoadAndTheNextOneGoesWell) {
  const struct {
    const char* breaking;
    const char* mending;
    int number;
  } cases[] = {{"UPDATE tblMelodies SET BeatLength = 0", "UPDATE tblMelodies SET BeatLength = 4",
                error_number::kDivisionByZero},
               {"UPDATE tblMelodies SET BeatsPerBar = 10000", "UPDATE tblMelodies SET BeatsPerBar = 4",
                error_number::kOverflow}};
  database.Execute(QStringLiteral("delete * from [Tune]"));
  database.AddNotes(QStringLiteral("Tune"), 6001);
  for (const auto& entry : cases) {
    Change(entry.breaking);
    ExpectFailure(entry.number);
    ASSERT_EQ(window.wait_texts.size(), 2);
    EXPECT_FALSE(window.wait_texts[0].isEmpty());
    EXPECT_TRUE(window.wait_texts[1].isEmpty());
    Change(entry.mending);
    percents.clear();
    ASSERT_NE(Load(QStringLiteral("Tune")), nullptr);
    EXPECT_TRUE(loader.LoadedOk());
    EXPECT_EQ(std::count(percents.begin(), percents.end(), 100), 2) << "99 % of the sort, and the end";
    window.SetMyTune(nullptr);
    window.wait_texts.clear();
    done.clear();
    Global().RecentCodeNames = {};
  }
}

}  // namespace
}  // namespace zelmar::testing_support
