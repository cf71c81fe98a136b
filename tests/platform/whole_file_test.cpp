// Files that are written whole or not at all.
#include "platform/whole_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/failure.h"
#include "support/full_disk.h"

namespace zelmar {
namespace {

class WholeFile : public ::testing::Test {
 protected:
  QByteArray Bytes() const {
    QFile file(path_);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("a.csv"));
};

TEST_F(WholeFile, TakesThePlaceOfTheOldOne) {
  WriteWholeFile(path_, "first, longer");
  WriteWholeFile(path_, "second");
  EXPECT_EQ(Bytes(), "second");
  WriteWholeFile(path_, "");
  EXPECT_EQ(Bytes(), "");
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList(QStringLiteral("a.csv")));
}

TEST_F(WholeFile, WithoutRoomTheOldOneStaysAndTheFailureNamesIt) {
  WriteWholeFile(path_, "before");
  for (const qsizetype size : {2000, 100000}) {
    try {
      const testing_support::FullDisk full(1000);
      WriteWholeFile(path_, QByteArray(size, 'x'));
      FAIL() << "nothing was thrown for " << size << " bytes";
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.Number(), error_number::kFileAccess);
      EXPECT_TRUE(
          failure.Description().startsWith(QStringLiteral("The file %1 cannot be written: ").arg(path_)));
    }
    EXPECT_EQ(Bytes(), "before");
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList(QStringLiteral("a.csv")));
  }
}

TEST_F(WholeFile, AFolderThatIsNotThereIsAFailure) {
  EXPECT_THROW(WriteWholeFile(folder_.filePath(QStringLiteral("no/a.csv")), "x"), Failure);
}

}  // namespace
}  // namespace zelmar
