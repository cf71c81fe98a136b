// The room on a disk.
#include "platform/disk_room.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <limits>

namespace zelmar {
namespace {

TEST(RoomOnDisk, IsToldForTheFolderOfAFileThatNeedNotBeThere) {
  const QTemporaryDir folder;
  const std::uint64_t room = RoomOnDisk(folder.filePath(QStringLiteral("none.mdb")));
  EXPECT_GT(room, 0U);
  EXPECT_LT(room, std::numeric_limits<std::uint64_t>::max());
}

TEST(RoomOnDisk, IsPlentyWhereTheDiskDoesNotTell) {
  const QTemporaryDir folder;
  EXPECT_EQ(RoomOnDisk(folder.filePath(QStringLiteral("gone/none.mdb"))),
            std::numeric_limits<std::uint64_t>::max());
}

TEST(RoomOnDisk, CanBeAnsweredOtherwise) {
  SetRoomOnDisk([](const QString& path) { return path == u"a" ? 5 : 7; });
  EXPECT_EQ(RoomOnDisk(QStringLiteral("a")), 5U);
  EXPECT_EQ(RoomOnDisk(QStringLiteral("b")), 7U);
  SetRoomOnDisk({});
  EXPECT_NE(RoomOnDisk(QStringLiteral("a")), 5U);
}

}  // namespace
}  // namespace zelmar
