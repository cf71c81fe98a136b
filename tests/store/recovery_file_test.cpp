// The files in which unsaved tunes are kept: whole or not, whose they are, and where they lie.
#include "store/recovery_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "model/tune.h"
#include "platform/failure.h"
#include "store/packed_tune.h"
#include "support/application_directory.h"
#include "support/child_program.h"
#include "support/full_disk.h"
#include "support/scripted_services.h"
#include "support/whole_tune.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr char kFolderVariable[] = "ZELMAR_RECOVERY_FOLDER";

const QDateTime kMoment(QDate(2026, 3, 4), QTime(5, 6, 7), Qt::UTC);

QByteArray ContentsOf(Tune& tune) {
  return RecoveryContents(kMoment, QStringLiteral("/db/Mine.mdb"), PackedWhole(tune), {});
}

class RecoveryFiles : public ::testing::Test {
 protected:
  QStringList Files(const QTemporaryDir& folder) const {
    return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }
  QStringList Files() const { return Files(folder_); }
  QString In(const QString& name) const { return folder_.filePath(name); }
  QStringList Folders() const { return {folder_.path(), second_.path()}; }

  static QByteArray BytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  static void WriteBytes(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
  }

  // What is told of a file that cannot be read.
  QString ReasonOf(const QByteArray& bytes) const {
    const QString path = In(QStringLiteral("any.tune"));
    WriteBytes(path, bytes);
    try {
      ReadRecoveryFile(path);
    } catch (const Failure& failure) {
      EXPECT_TRUE(failure.Description().contains(path));
      return failure.Description();
    }
    return QStringLiteral("it was read");
  }

  // A file whose program is gone, and its bytes.
  QByteArray LeaveOneBehind() {
    QByteArray bytes;
    {
      RecoveryFile file({folder_.path()});
      file.Write(ContentsOf(*TuneWithEverything()));
      bytes = BytesOf(In(file.Name()));
    }
    EXPECT_FALSE(bytes.isEmpty());
    return bytes;
  }

  ScriptedPlatform platform_;
  QTemporaryDir folder_;
  QTemporaryDir second_;
};

// --- Writing and reading ---

TEST_F(RecoveryFiles, NothingIsOnTheDiskBeforeTheFirstWrite) {
  RecoveryFile file(Folders());
  EXPECT_TRUE(Files().isEmpty());
  file.Remove();
  EXPECT_TRUE(Files().isEmpty());
}

TEST_F(RecoveryFiles, WhatIsWrittenIsReadAgain) {
  const auto tune = TuneWithEverything();
  RecoveryFile file(Folders());
  file.Write(ContentsOf(*tune));
  const KeptTune kept = ReadRecoveryFile(In(file.Name()));
  EXPECT_EQ(Everything(*kept.tune), Everything(*tune));
  EXPECT_EQ(kept.kept_at, kMoment);
  EXPECT_EQ(kept.database_path, QStringLiteral("/db/Mine.mdb"));
  EXPECT_TRUE(Files(second_).isEmpty());
}

TEST_F(RecoveryFiles, ANewWriteTakesThePlaceOfTheOneBefore) {
  RecoveryFile file(Folders());
  const auto tune = TuneWithEverything();
  file.Write(ContentsOf(*tune));
  const QStringList names = Files();
  tune->SetTitle(QStringLiteral("Later"));
  file.Write(ContentsOf(*tune));
  EXPECT_EQ(Files(), names);
  EXPECT_EQ(ReadRecoveryFile(In(file.Name())).tune->Title(), QStringLiteral("Later"));
}

TEST_F(RecoveryFiles, RemovedItLeavesNothing) {
  RecoveryFile file(Folders());
  file.Write(ContentsOf(*TuneWithEverything()));
  EXPECT_EQ(Files().size(), 2);
  file.Remove();
  EXPECT_TRUE(Files().isEmpty());
}

TEST_F(RecoveryFiles, TheNameTellsTheProcessAndTheMoment) {
  const RecoveryFile file(Folders());
  EXPECT_TRUE(
      file.Name().startsWith(QStringLiteral("Zelmar-unsaved-%1-").arg(QCoreApplication::applicationPid())));
  EXPECT_TRUE(file.Name().endsWith(QStringLiteral(".tune")));
  EXPECT_NE(file.Name(), RecoveryFile(Folders()).Name());
}

// --- Files that are none, or not whole ---

TEST_F(RecoveryFiles, CutOffAtAnyByteItIsDamaged) {
  const QByteArray bytes = LeaveOneBehind();
  for (qsizetype size = 0; size < bytes.size(); ++size)
    ASSERT_TRUE(ReasonOf(bytes.left(size)).contains(QStringLiteral("it is damaged"))) << size;
}

TEST_F(RecoveryFiles, AnyByteThatChangedIsNoticed) {
  const QByteArray bytes = LeaveOneBehind();
  for (qsizetype place = 0; place < bytes.size(); ++place) {
    QByteArray wrong = bytes;
    wrong[place] = static_cast<char>(wrong[place] ^ 0x10);
    ASSERT_TRUE(ReasonOf(wrong).contains(QStringLiteral("cannot be read"))) << place;
  }
}

TEST_F(RecoveryFiles, AForeignFileIsToldApart) {
  EXPECT_TRUE(ReasonOf(QByteArray("SQLite format 3\0 and more", 25))
                  .contains(QStringLiteral("not written by Zelmar")));
  EXPECT_TRUE(ReasonOf(QByteArray(100000, 'x')).contains(QStringLiteral("not written by Zelmar")));
}

TEST_F(RecoveryFiles, ALaterVersionIsToldApart) {
  QByteArray bytes = LeaveOneBehind();
  bytes[8] = 2;
  EXPECT_TRUE(ReasonOf(bytes).contains(QStringLiteral("another version of Zelmar")));
  // Whatever that version has behind its number.
  EXPECT_TRUE(ReasonOf(bytes.left(12)).contains(QStringLiteral("another version of Zelmar")));
}

TEST_F(RecoveryFiles, SoundBytesThatAreNoTuneAreDamaged) {
  RecoveryFile file(Folders());
  file.Write(RecoveryContents(kMoment, {}, QByteArray(40, '\0'), {}));
  try {
    ReadRecoveryFile(In(file.Name()));
    ADD_FAILURE() << "it was read";
  } catch (const Failure& failure) {
    EXPECT_TRUE(failure.Description().contains(QStringLiteral("it is damaged")));
  }
}

TEST_F(RecoveryFiles, AMissingFileAndAFolderAreFailures) {
  EXPECT_THROW(ReadRecoveryFile(In(QStringLiteral("gone.tune"))), Failure);
  EXPECT_THROW(ReadRecoveryFile(folder_.path()), Failure);
}

// --- Folders ---

TEST_F(RecoveryFiles, TheyLieBesideTheSettingsElseInTheStateDirectory) {
  const TemporaryApplicationDirectory application;
  qputenv("XDG_STATE_HOME", "/some/state");
  EXPECT_EQ(RecoveryFolders(), (QStringList{application.Path(), QStringLiteral("/some/state/zelmar")}));
  qputenv("XDG_STATE_HOME", "relative");
  EXPECT_EQ(RecoveryFolders()[1], QDir::homePath() + QStringLiteral("/.local/state/zelmar"));
  qunsetenv("XDG_STATE_HOME");
}

// A folder that takes no file, also from an administrator: it cannot be made.
TEST_F(RecoveryFiles, AFolderThatTakesNoFileIsPassedOver) {
  WriteBytes(In(QStringLiteral("wall")), "x");
  RecoveryFile file({In(QStringLiteral("wall/inside")), second_.filePath(QStringLiteral("new/one"))});
  file.Write(ContentsOf(*TuneWithEverything()));
  EXPECT_TRUE(QFile::exists(second_.filePath(QStringLiteral("new/one/")) + file.Name()));
  file.Remove();
  EXPECT_TRUE(QDir(second_.filePath(QStringLiteral("new/one"))).isEmpty());
}

TEST_F(RecoveryFiles, WhereNoFolderTakesItTheFirstReasonIsTold) {
  WriteBytes(In(QStringLiteral("wall")), "x");
  RecoveryFile file({In(QStringLiteral("wall/a")), In(QStringLiteral("wall/b"))});
  try {
    file.Write(ContentsOf(*TuneWithEverything()));
    ADD_FAILURE() << "it was written";
  } catch (const Failure& failure) {
    EXPECT_TRUE(failure.Description().contains(In(QStringLiteral("wall/a"))))
        << qPrintable(failure.Description());
  }
}

TEST_F(RecoveryFiles, OnAFullDiskTheOneBeforeStays) {
  RecoveryFile file({folder_.path()});
  const auto tune = TuneWithEverything();
  file.Write(ContentsOf(*tune));
  const QStringList names = Files();
  {
    const FullDisk disk(300);
    EXPECT_THROW(file.Write(ContentsOf(*tune)), Failure);
  }
  EXPECT_EQ(Files(), names);
  EXPECT_EQ(Everything(*ReadRecoveryFile(In(file.Name())).tune), Everything(*tune));
}

TEST_F(RecoveryFiles, TheOneInTheFirstFolderGoesWhenTheSecondTakesItsPlace) {
  QTemporaryDir first;
  RecoveryFile file({first.path(), second_.path()});
  file.Write(ContentsOf(*TuneWithEverything()));
  EXPECT_EQ(Files(first).size(), 2);
  // A folder of that name in the way of the file.
  ASSERT_TRUE(QFile::remove(first.filePath(file.Name())));
  ASSERT_TRUE(QDir(first.path()).mkpath(file.Name() + QStringLiteral("/x")));
  file.Write(ContentsOf(*TuneWithEverything()));
  EXPECT_EQ(Files(second_).size(), 2);
  EXPECT_TRUE(Files(first).isEmpty());
}

// --- What was left behind ---

TEST_F(RecoveryFiles, WithoutAnyThereIsNone) {
  EXPECT_TRUE(LeftRecoveries(Folders()).empty());
  EXPECT_TRUE(LeftRecoveries({In(QStringLiteral("no folder"))}).empty());
}

TEST_F(RecoveryFiles, OneOfAProgramThatRunsIsNotLeftBehind) {
  RecoveryFile file(Folders());
  file.Write(ContentsOf(*TuneWithEverything()));
  const QStringList names = Files();
  EXPECT_TRUE(LeftRecoveries(Folders()).empty());
  EXPECT_EQ(Files(), names);
}

TEST_F(RecoveryFiles, OneOfAProgramThatIsGoneIsHeldByTheFinderAlone) {
  LeaveOneBehind();
  {
    const auto left = LeftRecoveries(Folders());
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(Everything(*left[0].Read().tune), Everything(*TuneWithEverything()));
    EXPECT_TRUE(LeftRecoveries(Folders()).empty());
  }
  EXPECT_EQ(LeftRecoveries(Folders()).size(), 1U);
  EXPECT_EQ(Files().size(), 1);
}

TEST_F(RecoveryFiles, ALeftOneCanBeRemoved) {
  LeaveOneBehind();
  LeftRecoveries(Folders())[0].Remove();
  EXPECT_TRUE(Files().isEmpty());
}

TEST_F(RecoveryFiles, ALeftOneThatIsSetAsideKeepsItsBytesAndIsFoundNoMore) {
  const QByteArray bytes = LeaveOneBehind();
  const QString aside = LeftRecoveries(Folders())[0].SetAside();
  EXPECT_EQ(BytesOf(aside), bytes);
  EXPECT_EQ(Files().size(), 1);
  EXPECT_TRUE(LeftRecoveries(Folders()).empty());
  EXPECT_EQ(Files().size(), 1);
}

TEST_F(RecoveryFiles, TheNewestComesFirstWhicheverFolderItIsIn) {
  for (const QTemporaryDir* folder : {&folder_, &second_}) {
    RecoveryFile file({folder->path()});
    file.Write(ContentsOf(*TuneWithEverything()));
  }
  const auto set_time = [](const QString& path, int day) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(
        file.setFileTime(QDateTime(QDate(2026, 1, day), QTime(0, 0)), QFileDevice::FileModificationTime));
  };
  set_time(In(Files()[0]), 2);
  set_time(second_.filePath(Files(second_)[0]), 3);
  const auto left = LeftRecoveries(Folders());
  ASSERT_EQ(left.size(), 2U);
  EXPECT_TRUE(left[0].Path().startsWith(second_.path()));
}

TEST_F(RecoveryFiles, HalfWrittenOnesAreClearedAwayWithTheirProgram) {
  const QString name = QStringLiteral("Zelmar-unsaved-999999-20260101T000000000-1.tune");
  WriteBytes(In(name + QStringLiteral(".AbC123")), "half");
  WriteBytes(In(name + QStringLiteral(".lock")), "999999\nzelmar\nhost\n");
  WriteBytes(In(QStringLiteral("Other.tune")), "not ours");
  EXPECT_TRUE(LeftRecoveries(Folders()).empty());
  EXPECT_EQ(Files(), QStringList{QStringLiteral("Other.tune")});
}

// A lock whose process number has gone to another program of the same name says nothing: only a program that
// still holds it counts.
TEST_F(RecoveryFiles, ALockWhoseProcessNumberIsInUseAgainHidesNothing) {
  LeaveOneBehind();
  const QString path = In(Files()[0]);
  {
    QLockFile lock(path + QStringLiteral(".lock"));
    ASSERT_TRUE(lock.tryLock(0));
    ASSERT_TRUE(QFile::copy(path + QStringLiteral(".lock"), In(QStringLiteral("copy"))));
  }
  ASSERT_TRUE(QFile::rename(In(QStringLiteral("copy")), path + QStringLiteral(".lock")));
  EXPECT_EQ(LeftRecoveries(Folders()).size(), 1U);
}

// Started by the test below; by itself it writes into its own folder.
TEST_F(RecoveryFiles, WritesAndWaitsForItsEnd) {
  const QString folder = qEnvironmentVariable(kFolderVariable, folder_.path());
  RecoveryFile file({folder});
  const auto tune = TuneWithEverything();
  const bool started = qEnvironmentVariableIsSet(kFolderVariable);
  int written = 0;
  do {
    tune->SetTitle(QStringLiteral("Write %1").arg(++written));
    file.Write(ContentsOf(*tune));
    if (written == 3) {
      std::printf("ready\n");
      std::fflush(stdout);
    }
  } while (started || written < 5);
  EXPECT_EQ(ReadRecoveryFile(folder + QLatin1Char('/') + file.Name()).tune->Title(),
            QStringLiteral("Write 5"));
}

TEST_F(RecoveryFiles, AProgramThatIsKilledInTheMiddleOfAWriteLeavesAWholeOne) {
  for (int kill = 0; kill < 20; ++kill) {
    QProcess process;
    StartAgain(process, "RecoveryFiles.WritesAndWaitsForItsEnd",
               {{QString::fromLatin1(kFolderVariable), folder_.path()}}, second_.path(), "ready");
    EXPECT_TRUE(LeftRecoveries({folder_.path()}).empty());
    process.kill();
    ASSERT_TRUE(process.waitForFinished());
    auto left = LeftRecoveries({folder_.path()});
    ASSERT_EQ(left.size(), 1U) << kill;
    EXPECT_TRUE(left[0].Read().tune->Title().startsWith(QStringLiteral("Write ")));
    left[0].Remove();
    left.clear();
    EXPECT_TRUE(Files().isEmpty()) << qPrintable(Files().join(u' '));
  }
}

}  // namespace
}  // namespace zelmar
