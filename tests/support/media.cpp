#include "support/media.h"

#include <sched.h>
#include <sys/mount.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace zelmar::testing_support {

namespace {

// What this process mounts is seen by itself alone, and goes with it.
bool CanMount() {
  static const bool can = !qEnvironmentVariableIsSet("ZELMAR_TEST_WITHOUT_MOUNTS") &&
                          unshare(CLONE_NEWNS) == 0 &&
                          mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
  return can;
}

void Unmount(const QString& folder) {
  if (umount2(QFile::encodeName(folder).constData(), MNT_DETACH) != 0) std::abort();
}

bool MountReadOnly(const QString& folder) {
  const QByteArray name = QFile::encodeName(folder);
  if (!CanMount() || mount(name.constData(), name.constData(), nullptr, MS_BIND, nullptr) != 0) return false;
  if (mount(nullptr, name.constData(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) == 0) return true;
  Unmount(folder);
  return false;
}

constexpr auto kEverybodyReads = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup |
                                 QFile::ReadOther | QFile::ExeOther;

// Takes the right to write from a folder and the files in it, or gives it back.
void Protect(const QString& folder, bool on) {
  const auto rights = on ? QFile::Permissions(kEverybodyReads) : kEverybodyReads | QFile::WriteOwner;
  if (!on) QFile::setPermissions(folder, rights);
  for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files))
    QFile::setPermissions(file.filePath(), rights & ~(QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther));
  if (on) QFile::setPermissions(folder, rights);
}

qint64 Filled(const QString& path) {
  QFile fill(path);
  if (!fill.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) return 0;
  const QByteArray block(4096, 'x');
  while (fill.write(block) > 0) {
  }
  return fill.size();
}

}  // namespace

ReadOnlyFolder::ReadOnlyFolder(const QString& folder, ReadOnlyBy means) : folder_(folder), means_(means) {
  Shut();
}

ReadOnlyFolder::~ReadOnlyFolder() {
  Open();
}

void ReadOnlyFolder::Open() {
  if (mounted_) return Unmount(folder_);
  user_.reset();
  Protect(folder_, false);
}

void ReadOnlyFolder::Shut() {
  mounted_ = means_ == ReadOnlyBy::kMedium && MountReadOnly(folder_);
  if (mounted_) return;
  Protect(folder_, true);
  user_.emplace();
}

SmallMedium::SmallMedium(const QString& folder, qint64 bytes) : folder_(folder) {
  const QByteArray size = QByteArrayLiteral("size=") + QByteArray::number(bytes);
  mounted_ =
      CanMount() && mount("tmpfs", QFile::encodeName(folder).constData(), "tmpfs", 0, size.constData()) == 0;
}

SmallMedium::~SmallMedium() {
  if (mounted_) Unmount(folder_);
}

DatabaseOnFullDisk::DatabaseOnFullDisk(const QString& empty_folder, const QString& file)
    : medium_(empty_folder, QFileInfo(file).size() + 256 * 1024),
      path_(empty_folder + u'/' + QFileInfo(file).fileName()) {
  for (const char* ending : {"", "-wal", "-shm"})
    QFile::copy(file + QLatin1String(ending), path_ + QLatin1String(ending));
  if (!medium_.Mounted() || Filled(empty_folder + QStringLiteral("/fill")) == 0) limit_.emplace(0);
}

}  // namespace zelmar::testing_support
