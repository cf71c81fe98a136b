// What a save leaves in the database when one of its stages fails, and that it says so.
#include <QSqlQuery>

#include "store/failure_words.h"
#include "store/saving_fixture.h"

namespace zelmar::testing_support {
namespace {

// A database that refuses a row of a table from the second one of a tune on.
class RefusedRow {
 public:
  RefusedRow(const QString& path, const QString& table, const QString& column) : path_(path) {
    Run(QStringLiteral(
            "CREATE TRIGGER refusal BEFORE INSERT ON [%1] WHEN (SELECT count(*) FROM [%1] WHERE %2) > 0 "
            "BEGIN SELECT RAISE(ABORT, 'the row is refused'); END")
            .arg(table,
                 column.isEmpty() ? QStringLiteral("1") : column + QStringLiteral(" = NEW.") + column));
  }
  ~RefusedRow() { Run(QStringLiteral("DROP TRIGGER IF EXISTS refusal")); }
  RefusedRow(const RefusedRow&) = delete;
  RefusedRow& operator=(const RefusedRow&) = delete;

 private:
  void Run(const QString& statement) const {
    const QString name = QStringLiteral("refusal");
    {
      auto engine = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
      engine.setDatabaseName(path_);
      EXPECT_TRUE(engine.open());
      QSqlQuery query(engine);
      EXPECT_TRUE(query.exec(statement)) << qPrintable(statement);
    }
    QSqlDatabase::removeDatabase(name);
  }

  QString path_;
};

class RemainsOfASave : public SavingTest {
 protected:
  std::shared_ptr<Tune> tune = MakeTune();
};

struct Stage {
  const char* table;
  const char* column;
  const char* told;
};
constexpr Stage kStages[] = {
    {"tblWords", "FileName",
     "Written to the database before that: catalogue data. The words in the database are incomplete, and the "
     "themes, tracks and notes there are those of an earlier save; save again."},
    {"tblThemes", "CodeName",
     "Written to the database before that: catalogue data, words. The themes in the database are incomplete, "
     "and "
     "the tracks and notes there are those of an earlier save; save again."},
    {"tblTracks", "CodeName",
     "Written to the database before that: catalogue data, words, themes. The tracks in the database are "
     "incomplete, and the notes there are those of an earlier save; save again."},
    {"Mine", "",
     "Written to the database before that: catalogue data, words, themes, tracks, the first event. The "
     "notes "
     "in the database are incomplete; save again."},
};

TEST_F(RemainsOfASave, EachStageThatFailsTellsWhatIsNoLongerWhole) {
  for (const Stage& stage : kStages) {
    Save(tune, "Mine");
    const QStringList whole = Everything();
    tune->SetTitle(QStringLiteral("At ") + QString::fromLatin1(stage.table));
    QString told;
    {
      const RefusedRow refusal(database.Path(), QString::fromLatin1(stage.table),
                               QString::fromLatin1(stage.column));
      told = FailureOfSave(tune, QStringLiteral("Mine"), database_error::kDuplicateValue);
    }
    EXPECT_TRUE(told.contains(QString::fromLatin1(stage.told))) << told.toStdString();
    EXPECT_NE(Everything(), whole);
    // The part that is told of is cut, and those behind it are as they were.
    EXPECT_EQ(Events("Mine").size(), stage.column[0] == '\0' ? 1 : 4);
    // The next save makes it whole.
    Save(tune, "Mine");
    EXPECT_EQ(Events("Mine").size(), 4);
    EXPECT_EQ(Select("select * from tblTracks where CodeName = 'Mine'").size(), 2);
  }
}

TEST_F(RemainsOfASave, OfANewTuneWhatIsBehindIsMissing) {
  const RefusedRow refusal(database.Path(), QStringLiteral("tblThemes"), QStringLiteral("CodeName"));
  const QString told = FailureOfSave(tune, QStringLiteral("Mine"), database_error::kDuplicateValue);
  EXPECT_TRUE(
      told.contains(QStringLiteral("The themes in the database are incomplete, and the tracks and notes "
                                   "there are still missing; save again.")))
      << told.toStdString();
}

TEST_F(RemainsOfASave, AnUnchangedTuneOfWhichNothingIsWrittenStaysUnchanged) {
  Save(tune, "Mine");
  database.Execute(QStringLiteral("drop table tblWords"));
  bool failed = false;
  try {
    SaveTune(tune, QStringLiteral("Mine"), failed, SavePortion::kAll);
    ADD_FAILURE() << "it was saved";
  } catch (const Failure& failure) {
    EXPECT_TRUE(failure.Description().endsWith(QStringLiteral("The tune in memory is whole.")))
        << failure.Description().toStdString();
  }
  EXPECT_FALSE(tune->ChangedSinceLastSaved());
}

TEST_F(RemainsOfASave, AnUnchangedTuneOfWhichAPartIsWrittenCountsAsChanged) {
  Save(tune, "Mine");
  const RefusedRow refusal(database.Path(), QStringLiteral("Mine"), QString());
  bool failed = false;
  EXPECT_THROW(SaveTune(tune, QStringLiteral("Mine"), failed, SavePortion::kAll), Failure);
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
  EXPECT_NE(tune->Changes(), tune->ChangesSaved());
}

TEST_F(RemainsOfASave, AnEventTableThatGoesIsToldByTheProgress) {
  Save(tune, "Mine");
  platform.events->on_serve = [&, done = false](int) mutable {
    if (done || !Events("Mine").isEmpty()) return;
    done = true;
    database.Execute(QStringLiteral("drop table [Mine]"));
  };
  bool failed = false;
  SaveProgress progress;
  SaveTune(tune, QStringLiteral("Mine"), failed, SavePortion::kAll, &progress);
  EXPECT_TRUE(failed);
  EXPECT_EQ(
      WordsOfRemains(progress),
      QStringLiteral("Written to the database before that: catalogue data, words, themes, tracks. The notes "
                     "in the database are incomplete; save again."));
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
}

TEST_F(RemainsOfASave, ASaveThatGoesWellHasItAllWhole) {
  bool failed = true;
  SaveProgress progress;
  SaveTune(tune, QStringLiteral("Mine"), failed, SavePortion::kAll, &progress);
  EXPECT_FALSE(failed);
  EXPECT_EQ(progress.whole, progress.parts.size());
  EXPECT_EQ(progress.parts.size(), 5);
}

TEST_F(RemainsOfASave, ASaveThatTheUserCallsOffWroteNothing) {
  tune->SetTrackFilterOn(true);
  bool failed = false;
  SaveProgress progress;
  SaveTune(tune, QStringLiteral("Mine"), failed, SavePortion::kAll, &progress);
  EXPECT_TRUE(failed);
  EXPECT_FALSE(progress.Wrote());
}

TEST_F(RemainsOfASave, APartTellsOfItsOwnRows) {
  Save(tune, "Mine");
  tune->SetTitle(QStringLiteral("New"));
  const RefusedRow refusal(database.Path(), QStringLiteral("tblTracks"), QStringLiteral("CodeName"));
  const QString told = FailureOfSave(tune, QStringLiteral("Mine"), database_error::kDuplicateValue, "Tracks");
  EXPECT_TRUE(told.contains(QStringLiteral(
      "Written to the database before that: themes. The tracks in the database are incomplete; save again.")))
      << told.toStdString();
}

}  // namespace
}  // namespace zelmar::testing_support
