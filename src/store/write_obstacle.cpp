#include "store/write_obstacle.h"

#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <algorithm>
#include <cerrno>
#include <iterator>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/statvfs.h>
#include <unistd.h>
#endif

#include "platform/disk_room.h"

namespace zelmar {

namespace {

// With less room than this, in bytes, the engine cannot even make the index of its log.
constexpr std::uint64_t kLeastRoom = 32 * 1024;

struct SystemError {
  int number;
  WriteObstacle obstacle;
};
constexpr SystemError kSystemErrors[] = {
    {ENOSPC, WriteObstacle::kFullDisk},      {EFBIG, WriteObstacle::kFullDisk},
#ifdef EDQUOT
    {EDQUOT, WriteObstacle::kFullDisk},
#endif
    {EROFS, WriteObstacle::kReadOnlyMedium}, {EACCES, WriteObstacle::kProtected},
    {EPERM, WriteObstacle::kProtected},
};

struct ObstacleWords {
  WriteObstacle obstacle;
  int number;
  const char16_t* reason;
};
constexpr ObstacleWords kWords[] = {
    {WriteObstacle::kNone, database_error::kOther, u""},
    {WriteObstacle::kReadOnlyMedium, database_error::kReadOnlyMedium, u"it is on a read-only medium"},
    {WriteObstacle::kProtected, database_error::kProtected, u"it or its folder is protected"},
    {WriteObstacle::kFullDisk, database_error::kDiskFull, u"its disk is full"},
};

const ObstacleWords& WordsFor(WriteObstacle obstacle) {
  return *std::find_if(std::begin(kWords), std::end(kWords),
                       [obstacle](const ObstacleWords& words) { return words.obstacle == obstacle; });
}

QString FolderOf(const QString& path) {
  return QFileInfo(path).path();
}

// By the rights that the program works with, which need not be those of the user who started it.
bool MayWrite(const QString& path) {
#ifdef _WIN32
  return QFileInfo(path).isWritable();
#else
  return faccessat(AT_FDCWD, QFile::encodeName(path).constData(), W_OK, AT_EACCESS) == 0;
#endif
}

bool IsOnReadOnlyMedium(const QString& path) {
#ifdef _WIN32
  return QStorageInfo(path).isReadOnly();
#else
  struct statvfs medium {};
  return statvfs(QFile::encodeName(path).constData(), &medium) == 0 && (medium.f_flag & ST_RDONLY) != 0;
#endif
}

}  // namespace

WriteObstacle ObstacleInSight(const QString& path) {
  if (MayWrite(path) && MayWrite(FolderOf(path))) return WriteObstacle::kNone;
  return IsOnReadOnlyMedium(path) ? WriteObstacle::kReadOnlyMedium : WriteObstacle::kProtected;
}

WriteObstacle ObstacleBehind(const QString& path, int engine_code, int system_error) {
  switch (engine_code) {
    case SQLITE_FULL:
      return WriteObstacle::kFullDisk;
    case SQLITE_READONLY: {
      const WriteObstacle seen = ObstacleInSight(path);
      return seen == WriteObstacle::kNone ? WriteObstacle::kProtected : seen;
    }
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
      break;
    default:
      return WriteObstacle::kNone;
  }
  for (const SystemError& known : kSystemErrors)
    if (known.number == system_error) return known.obstacle;
  if (!QFileInfo::exists(path)) return WriteObstacle::kNone;
  if (const WriteObstacle seen = ObstacleInSight(path); seen != WriteObstacle::kNone) return seen;
  return RoomOnDisk(path) < kLeastRoom ? WriteObstacle::kFullDisk : WriteObstacle::kNone;
}

int ErrorNumberOf(WriteObstacle obstacle) {
  return WordsFor(obstacle).number;
}

QString ReasonOf(WriteObstacle obstacle) {
  return QString::fromUtf16(WordsFor(obstacle).reason);
}

DatabaseError ObstacleError(WriteObstacle obstacle, const QString& detail) {
  return {ErrorNumberOf(obstacle),
          WithDetail(QStringLiteral("The database file cannot be written to: %1").arg(ReasonOf(obstacle)),
                     detail)};
}

}  // namespace zelmar
