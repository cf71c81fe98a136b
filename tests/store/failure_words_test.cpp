// What a person reads of a save that failed: what was written, and what is no longer whole.
#include "store/failure_words.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "platform/failure.h"
#include "store/database_error.h"

namespace zelmar {
namespace {

SaveProgress Progress(qsizetype whole, bool begun, qsizetype events = 0, bool first_time = false) {
  SaveProgress progress;
  progress.parts = {QStringLiteral("catalogue data"), QStringLiteral("words"), QStringLiteral("themes"),
                    QStringLiteral("tracks"), QStringLiteral("notes")};
  progress.whole = whole;
  progress.begun = begun;
  progress.events = events;
  progress.first_time = first_time;
  return progress;
}

TEST(FailureWords, BeforeTheFirstRowNothingIsWritten) {
  EXPECT_EQ(WordsOfRemains(Progress(0, false)), QStringLiteral("Nothing was written to the database."));
  EXPECT_EQ(WordsOfRemains(SaveProgress()), QStringLiteral("Nothing was written to the database."));
}

TEST(FailureWords, EachStageTellsWhatIsNoLongerWhole) {
  EXPECT_EQ(
      WordsOfRemains(Progress(1, false)),
      QStringLiteral("Written to the database before that: catalogue data. The words, themes, tracks and "
                     "notes there are those of an earlier save; save again."));
  EXPECT_EQ(
      WordsOfRemains(Progress(1, true)),
      QStringLiteral("Written to the database before that: catalogue data. The words in the database are "
                     "incomplete, and the themes, tracks and notes there are those of an earlier save; "
                     "save again."));
  EXPECT_EQ(
      WordsOfRemains(Progress(3, true)),
      QStringLiteral("Written to the database before that: catalogue data, words, themes. The tracks in "
                     "the database are incomplete, and the notes there are those of an earlier save; save "
                     "again."));
  EXPECT_EQ(WordsOfRemains(Progress(4, true, 250)),
            QStringLiteral("Written to the database before that: catalogue data, words, themes, tracks, the "
                           "first 250 events. The notes in the database are incomplete; save again."));
}

TEST(FailureWords, OfATuneThatIsNewThereIsNoEarlierSave) {
  EXPECT_EQ(
      WordsOfRemains(Progress(2, false, 0, true)),
      QStringLiteral("Written to the database before that: catalogue data, words. The themes, tracks and "
                     "notes there are still missing; save again."));
}

TEST(FailureWords, AFirstPartThatIsNotWholeIsTold) {
  SaveProgress progress;
  progress.parts = {QStringLiteral("themes")};
  progress.begun = true;
  EXPECT_EQ(
      WordsOfRemains(progress),
      QStringLiteral("A part of it was written to the database before that. The themes in the database are "
                     "incomplete; save again."));
}

TEST(FailureWords, OfAFileThatDoesNotOpenItIsToldWhatIsWrongWithIt) {
  const QTemporaryDir folder;
  const QString there = folder.filePath(QStringLiteral("there.mdb"));
  {
    QFile file(there);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  const QString gone = folder.filePath(QStringLiteral("gone.mdb"));
  const auto words = [](int number, const QString& path) {
    return WordsOfFailedOpening(DatabaseError(number, QStringLiteral("x")), path);
  };
  EXPECT_EQ(words(database_error::kNotADatabase, there),
            QStringLiteral("The file %1 is not a database.").arg(there));
  EXPECT_EQ(words(database_error::kInUse, there),
            QStringLiteral("Another program holds the database %1.").arg(there));
  EXPECT_EQ(words(database_error::kFileNotFound, gone), QStringLiteral("There is no file %1.").arg(gone));
  const QString shut =
      QStringLiteral("The file %1 cannot be opened; perhaps it or its folder is protected.").arg(there);
  EXPECT_EQ(words(database_error::kFileNotFound, there), shut);
  EXPECT_EQ(words(database_error::kOther, there), shut);
}

TEST(FailureWords, AFailedSaveIsToldWithItsReasonAndWhatBecomesOfTheTune) {
  const Failure failure(1, QStringLiteral("The disk is gone"));
  EXPECT_EQ(
      WordsOfFailedSave(QStringLiteral("ONE"), failure, Progress(0, false), true),
      QStringLiteral("\"ONE\" is not saved. The disk is gone.\n\nNothing was written to the database. All "
                     "other tunes in it are as they were. The tune in memory is whole and still counts as "
                     "changed."));
  EXPECT_TRUE(WordsOfFailedSave(QStringLiteral("ONE"), failure, Progress(0, false), false)
                  .endsWith(QStringLiteral("The tune in memory is whole.")));
}

}  // namespace
}  // namespace zelmar
