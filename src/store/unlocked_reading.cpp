#include "store/unlocked_reading.h"

#include <QFileInfo>
#include <QUrl>

namespace zelmar {

namespace {

// The engine's way to the operating system that takes no locks.
#ifdef _WIN32
constexpr char kNoLocks[] = "?mode=ro&vfs=win32-none";
#else
constexpr char kNoLocks[] = "?mode=ro&vfs=unix-none";
#endif
constexpr char kNeverChanges[] = "?mode=ro&immutable=1";

constexpr qint64 kSmallestIndex = 32 * 1024;  // bytes: what the engine makes at once, where there is room

QFileInfo Beside(const QString& path, const char* ending) {
  return QFileInfo(path + QLatin1String(ending));
}
QFileInfo Log(const QString& path) {
  return Beside(path, "-wal");
}
// A smaller one is left from an opening that came to nothing.
bool HasIndex(const QString& path) {
  return Beside(path, "-shm").size() >= kSmallestIndex;
}
QFileInfo Journal(const QString& path) {
  return Beside(path, "-journal");
}

}  // namespace

bool UnlockedReading::IsSafe(const QString& path) {
  // A journal that is left over must be played back first, which is a change.
  return Journal(path).size() == 0 && !(HasIndex(path) && Log(path).exists());
}

UnlockedReading::State::State(const QString& path)
    : size(QFileInfo(path).size()),
      log_size(Log(path).size()),
      journal_size(Journal(path).size()),
      changed(QFileInfo(path).lastModified()),
      log_changed(Log(path).lastModified()),
      has_index(HasIndex(path)) {}

UnlockedReading::UnlockedReading(const QString& path)
    : path_(path),
      before_(path),
      file_name_(QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded()) +
                 QLatin1String(HasLog() ? kNoLocks : kNeverChanges)) {}

}  // namespace zelmar
