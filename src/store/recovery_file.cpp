#include "store/recovery_file.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <utility>

#include "platform/paths.h"
#include "store/byte_stream.h"
#include "store/packed_tune.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace zelmar {

namespace {

const QString kPrefix = QStringLiteral("Zelmar-unsaved-");
const QString kEnding = QStringLiteral(".tune");
const QString kLockEnding = QStringLiteral(".lock");
const QString kAsideEnding = QStringLiteral(".set-aside");

// --- The seal: what every file begins with ---

constexpr QByteArrayView kMagic("ZELMTUNE");
constexpr std::uint32_t kVersion = 1;
constexpr auto kHash = QCryptographicHash::Sha256;
constexpr qsizetype kHashBytes = 32;
constexpr qsizetype kVersionBytes = 4;
constexpr qsizetype kSealBytes = 8 + kVersionBytes + kHashBytes;
const QString kCut = QStringLiteral("it is damaged, since it ends too early");
// A hundred times the longest tune that there is reason to expect.
constexpr qint64 kLongestFile = 512LL * 1024 * 1024;

QByteArray SealOf(const QByteArray& contents) {
  ByteWriter version;
  version.Put(kVersion);
  return kMagic.toByteArray() + version.Bytes() + QCryptographicHash::hash(contents, kHash);
}

[[noreturn]] void Refuse(const QString& path, const QString& reason) {
  throw Failure(error_number::kFileAccess,
                QStringLiteral("The file %1, in which an unsaved tune was kept, cannot be read: %2.")
                    .arg(QDir::toNativeSeparators(path), reason));
}

// The contents behind a seal that is whole.
QByteArray Unsealed(const QString& path, const QByteArray& bytes) {
  if (!bytes.startsWith(kMagic)) {
    if (kMagic.startsWith(bytes)) Refuse(path, kCut);
    Refuse(path, QStringLiteral("it was not written by Zelmar"));
  }
  // Only the version tells how what follows it is to be read.
  if (bytes.size() < kMagic.size() + kVersionBytes) Refuse(path, kCut);
  ByteReader seal(QByteArrayView(bytes).sliced(kMagic.size(), kVersionBytes));
  if (seal.Take<std::uint32_t>() != kVersion)
    Refuse(path, QStringLiteral("it was written by another version of Zelmar"));
  if (bytes.size() < kSealBytes) Refuse(path, kCut);
  const QByteArray contents = bytes.mid(kSealBytes);
  if (QCryptographicHash::hash(contents, kHash) !=
      QByteArrayView(bytes).sliced(kSealBytes - kHashBytes, kHashBytes))
    Refuse(path, QStringLiteral("it is damaged or not whole"));
  return contents;
}

KeptTune Unpacked(const QByteArray& contents) {
  ByteReader in(contents);
  KeptTune kept;
  kept.kept_at = QDateTime::fromMSecsSinceEpoch(in.Take<std::int64_t>(), Qt::UTC);
  kept.database_path = in.TakeText();
  kept.tune = UnpackTune(contents.right(in.Left()));
  return kept;
}

// --- Files and locks ---

QString NameOfThisProgram() {
  // Two of one process are apart by a count, for programs that keep more than one.
  static int count = 0;
  return kPrefix +
         QStringLiteral("%1-%2-%3")
             .arg(QCoreApplication::applicationPid())
             .arg(QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMddTHHmmsszzz")))
             .arg(++count) +
         kEnding;
}

// The lock of a file when no program that runs has it; null otherwise. The system lets go of a lock whose
// program is gone, whichever program has its process number by now.
std::unique_ptr<QLockFile> LockOf(const QString& path) {
  auto lock = std::make_unique<QLockFile>(path + kLockEnding);
  lock->setStaleLockTime(0);
  if (lock->tryLock(0)) return lock;
  if (lock->error() == QLockFile::LockFailedError && lock->removeStaleLockFile() && lock->tryLock(0))
    return lock;
  return nullptr;
}

// A name that was just given is on the disk once the folder is.
void SyncFolder([[maybe_unused]] const QString& folder) {
#ifdef Q_OS_UNIX
  const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;
  ::fsync(handle);
  ::close(handle);
#endif
}

// What a write that did not come to its end leaves: the name with six letters behind it.
QStringList HalfWritten(const QString& path) {
  const QFileInfo file(path);
  QStringList paths;
  for (const QString& name :
       QDir(file.path()).entryList({file.fileName() + QStringLiteral(".??????")}, QDir::Files))
    paths.append(file.path() + QLatin1Char('/') + name);
  return paths;
}

// The recovery files of a folder, whole or half done, by their names.
QStringList NamesIn(const QString& folder) {
  QStringList names;
  for (const QString& entry : QDir(folder).entryList({kPrefix + QLatin1Char('*')}, QDir::Files)) {
    const qsizetype end = entry.indexOf(kEnding);
    if (end < 0 || entry.endsWith(kAsideEnding)) continue;
    names.append(entry.left(end + kEnding.size()));
  }
  names.removeDuplicates();
  return names;
}

}  // namespace

QByteArray RecoveryContents(const QDateTime& kept_at, const QString& database_path, const QByteArray& head,
                            const QByteArray& events) {
  ByteWriter out;
  out.Put(static_cast<std::int64_t>(kept_at.toMSecsSinceEpoch()));
  out.Put(database_path);
  return out.Bytes() + head + events;
}

KeptTune ReadRecoveryFile(const QString& path) {
  QFile file(path);
  if (!QFileInfo(path).isFile()) Refuse(path, QStringLiteral("it is no file"));
  if (!file.open(QIODevice::ReadOnly)) Refuse(path, file.errorString());
  if (file.size() > kLongestFile) Refuse(path, QStringLiteral("it is longer than any tune"));
  const QByteArray contents = Unsealed(path, file.readAll());
  try {
    return Unpacked(contents);
  } catch (const Failure& failure) {
    Refuse(path, QStringLiteral("it is damaged, since ") + failure.Description());
  }
}

QStringList RecoveryFolders() {
  return {ApplicationDirectory(), StateDirectory()};
}

// --- The file of this program ---

RecoveryFile::RecoveryFile(QStringList folders) : folders_(std::move(folders)), name_(NameOfThisProgram()) {}

RecoveryFile::~RecoveryFile() = default;

void RecoveryFile::Write(const QByteArray& contents) {
  const QByteArray seal = SealOf(contents);
  QString reason;
  for (const QString& folder : folders_) {
    try {
      WriteInto(folder, seal, contents);
      return;
    } catch (const Failure& failure) {
      if (reason.isEmpty()) reason = failure.Description();
    }
  }
  throw Failure(error_number::kFileAccess, reason);
}

void RecoveryFile::WriteInto(const QString& folder, const QByteArray& seal, const QByteArray& contents) {
  const QString path = folder + QLatin1Char('/') + name_;
  const auto refuse = [&folder](const QString& why) {
    throw Failure(
        error_number::kFileAccess,
        QStringLiteral("The folder %1 takes no file (%2).").arg(QDir::toNativeSeparators(folder), why));
  };
  if (!QDir().mkpath(folder)) refuse(QStringLiteral("it cannot be made"));
  std::unique_ptr<QLockFile> lock;
  if (folder_ != folder) {
    lock = LockOf(path);
    if (!lock) refuse(QStringLiteral("it cannot be written to"));
  }
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) refuse(file.errorString());
  // What the disk does not take is noticed by the flush; the commit alone would pass over it.
  const bool written = file.write(seal) == seal.size() && file.write(contents) == contents.size();
  if (!written || !file.flush() || !file.commit()) refuse(file.errorString());
  SyncFolder(folder);
  if (!lock) return;
  // An older one in another folder would be offered beside it.
  if (!folder_.isEmpty()) RemoveFrom(folder_);
  folder_ = folder;
  lock_ = std::move(lock);
}

void RecoveryFile::Remove() {
  if (folder_.isEmpty()) return;
  RemoveFrom(std::exchange(folder_, QString()));
  lock_.reset();
}

void RecoveryFile::RemoveFrom(const QString& folder) {
  QFile::remove(folder + QLatin1Char('/') + name_);
}

// --- What was left behind ---

void LeftRecovery::Remove() {
  QFile::remove(path_);
}

QString LeftRecovery::SetAside() {
  const QString aside = path_ + kAsideEnding;
  return QFile::rename(path_, aside) ? aside : path_;
}

std::vector<LeftRecovery> LeftRecoveries(const QStringList& folders) {
  std::vector<LeftRecovery> left;
  for (const QString& folder : folders) {
    for (const QString& name : NamesIn(folder)) {
      const QString path = folder + QLatin1Char('/') + name;
      std::unique_ptr<QLockFile> lock = LockOf(path);
      if (!lock) continue;
      for (const QString& half : HalfWritten(path)) QFile::remove(half);
      if (QFileInfo::exists(path)) left.emplace_back(path, std::move(lock));
    }
  }
  const auto newer = [](const LeftRecovery& first, const LeftRecovery& second) {
    return QFileInfo(first.Path()).lastModified() > QFileInfo(second.Path()).lastModified();
  };
  std::stable_sort(left.begin(), left.end(), newer);
  return left;
}

}  // namespace zelmar
