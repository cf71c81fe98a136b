// Libraries that cannot be changed: on a read-only medium, in a protected folder, on a full disk.
#include <QDir>
#include <QSqlDatabase>

#include "store/connect_database.h"
#include "store/database_info.h"
#include "store/saved_tune.h"
#include "store/saving_fixture.h"
#include "store/write_obstacle.h"
#include "support/media.h"
#include "support/other_program.h"

namespace zelmar::testing_support {
namespace {

class UnchangeableLibrary : public SavingTest {
 protected:
  ~UnchangeableLibrary() override { EXPECT_TRUE(QSqlDatabase::connectionNames().isEmpty()); }

  std::shared_ptr<Connection> Connected() {
    std::shared_ptr<Connection> connection;
    ConnectDatabase(connection);
    EXPECT_FALSE(Global().DatabaseFailed) << ConnectFailureWords().toStdString();
    if (!connection) throw std::runtime_error("no connection");
    return connection;
  }

  // Every file of the folder with its bytes.
  QMap<QString, QByteArray> Files(const QString& folder) const {
    QMap<QString, QByteArray> files;
    for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files))
      files[file.fileName()] = BytesOf(file.filePath());
    return files;
  }

  // The tune beside the one that is saved opens, with another connection standing; the user is told once.
  void ExpectOpensForReading(WriteObstacle obstacle) {
    const auto standing = Connected();
    EXPECT_EQ(standing->Obstacle(), obstacle);
    const auto tune = Load(QStringLiteral("Other"));
    ASSERT_NE(tune, nullptr);
    EXPECT_EQ(tune->Words()->Count(), 1);
    EXPECT_EQ(FindDBInfo()->read_only_words, Boxes().first().text.section(u'.', 0, -3) + u'.');
    ASSERT_EQ(Boxes().size(), 1) << Boxes()[1].text.toStdString();
    EXPECT_EQ(Boxes()[0].icon, MessageIcon::kExclamation);
    EXPECT_EQ(Boxes()[0].title, QStringLiteral("Database opened for reading"));
    EXPECT_EQ(
        Boxes()[0].text,
        QStringLiteral("The database %1 can be read and not changed: %2. Its tunes can be opened and played; "
                       "nothing can be saved in it.")
            .arg(Global().DatabasePath, ReasonOf(obstacle)));
  }

  void ExpectSaveTells(WriteObstacle obstacle) {
    const auto tune = MakeTune();
    const qsizetype boxes = Boxes().size();
    const QString told = FailureOfSave(tune, QStringLiteral("Mine"), ErrorNumberOf(obstacle));
    EXPECT_TRUE(
        told.startsWith(QStringLiteral("\"Mine\" is not saved. The database file cannot be written to: %1")
                            .arg(ReasonOf(obstacle))))
        << told.toStdString();
    EXPECT_TRUE(told.contains(QStringLiteral("Nothing was written to the database."))) << told.toStdString();
    EXPECT_EQ(Boxes().size(), boxes) << "the failure is the one message";
  }
};

class ReadOnlyLibrary : public UnchangeableLibrary, public ::testing::WithParamInterface<ReadOnlyBy> {
 protected:
  // Opens for reading and refuses a save, and no byte of the folder is another afterwards.
  void ExpectReadOnly() {
    const ReadOnlyFolder folder(database.Directory(), GetParam());
    const auto files = Files(database.Directory());
    ExpectOpensForReading(folder.Obstacle());
    ExpectSaveTells(folder.Obstacle());
    EXPECT_EQ(Files(database.Directory()), files);
    EXPECT_TRUE(files.contains(QStringLiteral("Sample.mdb")));
  }

  // What a program that ended badly leaves: rows that are in the log alone.
  void LeaveALog(std::initializer_list<const char*> endings) {
    const QString beside = database.Directory() + QStringLiteral("/left");
    {
      OtherProgram program(database.Path());
      program.Run("UPDATE tblDBInfo SET Title = 'In the log'");
      for (const char* ending : endings)
        ASSERT_TRUE(QFile::copy(database.Path() + QLatin1String(ending), beside + QLatin1String(ending)));
      ASSERT_TRUE(QFile::copy(database.Path(), beside));
    }
    QFile::remove(database.Path());
    ASSERT_TRUE(QFile::rename(beside, database.Path()));
    for (const char* ending : endings)
      ASSERT_TRUE(QFile::rename(beside + QLatin1String(ending), database.Path() + QLatin1String(ending)));
  }
};

TEST_P(ReadOnlyLibrary, WithoutALogOpens) {
  ExpectReadOnly();
}

TEST_P(ReadOnlyLibrary, ThatNeverLoggedAheadOpens) {
  OtherProgram(database.Path()).Run("PRAGMA journal_mode=DELETE");
  ExpectReadOnly();
}

TEST_P(ReadOnlyLibrary, WhoseLogWasLeftWithItsIndexOpensWithTheRowsOfTheLog) {
  LeaveALog({"-wal", "-shm"});
  ExpectReadOnly();
  EXPECT_EQ(database.Column(QStringLiteral("SELECT Title FROM tblDBInfo")),
            QStringList(QStringLiteral("In the log")));
}

TEST_P(ReadOnlyLibrary, WhoseLogWasLeftWithoutItsIndexOpensWithTheRowsOfTheLog) {
  LeaveALog({"-wal"});
  {
    const ReadOnlyFolder folder(database.Directory(), GetParam());
    EXPECT_EQ(Rows(QStringLiteral("SELECT Title FROM tblDBInfo")), QStringList(QStringLiteral("In the log")));
  }
  ExpectReadOnly();
}

TEST_P(ReadOnlyLibrary, WithAnEmptyLogOpens) {
  QFile log(database.Path() + QStringLiteral("-wal"));
  ASSERT_TRUE(log.open(QIODevice::WriteOnly));
  log.close();
  ExpectReadOnly();
}

// A half of a change can neither be taken for the whole nor be taken back.
TEST_P(ReadOnlyLibrary, WithAHalfMadeChangeIsNotOpened) {
  const QString copy = database.Directory() + QStringLiteral("/Half.mdb");
  {
    OtherProgram program(database.Path());
    program.Run("PRAGMA journal_mode=DELETE");
    program.Run("PRAGMA cache_size=1");
    program.Run("BEGIN EXCLUSIVE");
    program.Run("UPDATE tblDBInfo SET Title = 'Half', Description = printf('%.300000c', 'x')");
    ASSERT_TRUE(QFile::copy(database.Path() + QStringLiteral("-journal"), copy + QStringLiteral("-journal")));
    ASSERT_TRUE(QFile::copy(database.Path(), copy));
    program.Run("ROLLBACK");
  }
  Global().DatabasePath = copy;
  {
    const ReadOnlyFolder folder(database.Directory(), GetParam());
    std::shared_ptr<Connection> connection;
    ConnectDatabase(connection);
    EXPECT_TRUE(Global().DatabaseFailed);
    EXPECT_EQ(Boxes().size(), 1);
  }
  EXPECT_EQ(Connected()->TableNames().size(), 24) << "where it can be written to it is mended";
}

TEST_P(ReadOnlyLibrary, IsReadWhileAnotherProgramThatMayChangesIt) {
  OtherProgram program(database.Path());
  program.Run("UPDATE tblDBInfo SET Title = 'Changed'");
  const ReadOnlyFolder folder(database.Directory(), GetParam());
  EXPECT_EQ(Rows(QStringLiteral("SELECT Title FROM tblDBInfo")), QStringList(QStringLiteral("Changed")));
  folder.Obstacle();
  program.Run("UPDATE tblDBInfo SET Title = 'Changed again'");
  EXPECT_EQ(Rows(QStringLiteral("SELECT Title FROM tblDBInfo")),
            QStringList(QStringLiteral("Changed again")));
}

// Without locks nobody is kept from writing; what was read meanwhile does not count then.
TEST_P(ReadOnlyLibrary, RowsThatWereReadWhileAnotherProgramBeganToWriteAreRefused) {
  ReadOnlyFolder folder(database.Directory(), GetParam());
  const auto connection = Connected();
  const auto rows = Recordset::OpenTable(connection, QStringLiteral("tblMelodies"), CursorType::kForwardOnly);
  folder.Behind([this] {
    OtherProgram program(database.Path());
    program.Run("UPDATE tblDBInfo SET Title = 'Changed'");
    program.Run("PRAGMA wal_checkpoint");
  });
  EXPECT_EQ(FailureNumber([&] { rows->MoveNext(); }), database_error::kInUse);
  EXPECT_EQ(FailureNumber([&] { connection->TableNames(); }), database_error::kInUse);
  EXPECT_EQ(Rows(QStringLiteral("SELECT Title FROM tblDBInfo")), QStringList(QStringLiteral("Changed")));
}

TEST_P(ReadOnlyLibrary, IsToldOnceAndAgainWhenItWasChangeableMeanwhile) {
  for (int time = 1; time <= 2; ++time) {
    {
      const ReadOnlyFolder folder(database.Directory(), GetParam());
      for (int i = 0; i < 3; ++i) Connected();
      EXPECT_EQ(Boxes().size(), time);
    }
    EXPECT_EQ(Connected()->Obstacle(), WriteObstacle::kNone);
    EXPECT_EQ(Boxes().size(), time);
  }
}

// The box that tells of it as it opens would come on top of the failure.
TEST_P(ReadOnlyLibrary, IsToldByTheSaveAloneThatIsTheFirstToMeetIt) {
  const ReadOnlyFolder folder(database.Directory(), GetParam());
  ExpectSaveTells(folder.Obstacle());
  EXPECT_TRUE(Boxes().isEmpty());
  Connected();
  EXPECT_TRUE(Boxes().isEmpty()) << "it is known by then";
}

TEST_P(ReadOnlyLibrary, IsNotToldWhenANameIsLookedUpForASave) {
  const ReadOnlyFolder folder(database.Directory(), GetParam());
  EXPECT_EQ(TitleOfSavedTune(QStringLiteral("Other")), QStringLiteral("A Title"));
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_P(ReadOnlyLibrary, GetsNoIndexes) {
  database.Execute(QStringLiteral("DELETE * FROM tblTracks"));
  OtherProgram(database.Path()).Run("DROP INDEX tblWordsByTune");
  const QByteArray before = BytesOf(database.Path());
  {
    const ReadOnlyFolder folder(database.Directory(), GetParam());
    EXPECT_EQ(FailureNumber([&] { Connected()->Execute(QStringLiteral("DELETE * FROM tblWords")); }),
              ErrorNumberOf(folder.Obstacle()));
  }
  EXPECT_EQ(BytesOf(database.Path()), before);
}

INSTANTIATE_TEST_SUITE_P(, ReadOnlyLibrary, ::testing::Values(ReadOnlyBy::kMedium, ReadOnlyBy::kRights),
                         [](const auto& kind) {
                           return kind.param == ReadOnlyBy::kMedium ? "OnAMedium" : "InAProtectedFolder";
                         });

// A file alone that may not be written to is protected, and nothing is left beside it by reading.
TEST_F(UnchangeableLibrary, AFileThatIsProtectedInAnOpenFolderOpens) {
  QFile::setPermissions(database.Path(), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
  QFile::setPermissions(database.Directory(), QFileDevice::Permissions(0x7777));
  {
    const PlainUser user;
    ExpectOpensForReading(WriteObstacle::kProtected);
    ExpectSaveTells(WriteObstacle::kProtected);
  }
  EXPECT_EQ(Files(database.Directory()).keys(), QStringList(QStringLiteral("Sample.mdb")));
}

// --- A full disk ---

class LibraryOnAFullDisk : public UnchangeableLibrary {
 protected:
  QTemporaryDir disk;
};

TEST_F(LibraryOnAFullDisk, OpensForReadingAndASaveTellsWhy) {
  const DatabaseOnFullDisk full(disk.path(), database.Path());
  Global().DatabasePath = full.Path();
  const QByteArray before = BytesOf(full.Path());
  ExpectOpensForReading(WriteObstacle::kFullDisk);
  ExpectSaveTells(WriteObstacle::kFullDisk);
  EXPECT_EQ(BytesOf(full.Path()), before);
}

TEST_F(LibraryOnAFullDisk, WithALogThatWasLeftOpensWithTheRowsOfTheLog) {
  OtherProgram program(database.Path());
  program.Run("UPDATE tblDBInfo SET Title = 'In the log'");
  const QString left = database.Directory() + QStringLiteral("/Left.mdb");
  for (const char* ending : {"", "-wal"})
    ASSERT_TRUE(QFile::copy(database.Path() + QLatin1String(ending), left + QLatin1String(ending)));
  const DatabaseOnFullDisk full(disk.path(), left);
  Global().DatabasePath = full.Path();
  EXPECT_EQ(FindDBInfo()->title, QStringLiteral("In the log"));
  EXPECT_EQ(Connected()->Obstacle(), WriteObstacle::kFullDisk);
  EXPECT_EQ(FindDBInfo()->title, QStringLiteral("In the log"));
}

TEST_F(LibraryOnAFullDisk, ThatFillsDuringASaveTellsWhatIsWritten) {
  const auto tune = MakeTune();
  tune->SetDescription(QString(60000, u'x'));
  QString told;
  {
    // Room for the index of the log, and not for the text in the log itself.
    const FullDisk full(34000);
    told = FailureOfSave(tune, QStringLiteral("Mine"), database_error::kDiskFull);
  }
  EXPECT_TRUE(told.startsWith(
      QStringLiteral("\"Mine\" is not saved. The database file cannot be written to: its disk "
                     "is full (")))
      << told.toStdString();
  EXPECT_TRUE(told.contains(QStringLiteral("Nothing was written to the database."))) << told.toStdString();
  EXPECT_TRUE(Boxes().isEmpty());
}

// --- What is behind a failure ---

TEST_F(UnchangeableLibrary, EachFailureOfTheSystemIsOneOfTheThree) {
  const struct {
    int code, system_error;
    WriteObstacle obstacle;
  } kFailures[] = {
      {13, 0, WriteObstacle::kFullDisk},       {10, ENOSPC, WriteObstacle::kFullDisk},
      {10, EDQUOT, WriteObstacle::kFullDisk},  {10, EFBIG, WriteObstacle::kFullDisk},
      {14, ENOSPC, WriteObstacle::kFullDisk},  {14, EROFS, WriteObstacle::kReadOnlyMedium},
      {14, EACCES, WriteObstacle::kProtected}, {10, EPERM, WriteObstacle::kProtected},
      {8, 0, WriteObstacle::kProtected},       {10, EIO, WriteObstacle::kNone},
      {14, EMFILE, WriteObstacle::kNone},      {11, ENOSPC, WriteObstacle::kNone},
      {5, EACCES, WriteObstacle::kNone},       {1, ENOSPC, WriteObstacle::kNone},
  };
  for (const auto& failure : kFailures)
    EXPECT_EQ(ObstacleBehind(database.Path(), failure.code, failure.system_error), failure.obstacle)
        << failure.code << ' ' << failure.system_error;
}

}  // namespace
}  // namespace zelmar::testing_support
