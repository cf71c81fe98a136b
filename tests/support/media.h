// Media that a folder lies on for the length of a scope: one that cannot be written to, one with little room.
// Real ones are mounted where the system lets this process do that; ZELMAR_TEST_WITHOUT_MOUNTS keeps it from
// trying.
#pragma once

#include <QString>
#include <optional>

#include "store/write_obstacle.h"
#include "support/full_disk.h"
#include "support/plain_user.h"

namespace zelmar::testing_support {

enum class ReadOnlyBy { kMedium, kRights };

// The folder cannot be written to: its medium is read-only, or it is protected from the user that this
// process becomes meanwhile, as it also is where no medium can be mounted.
class ReadOnlyFolder {
 public:
  explicit ReadOnlyFolder(const QString& folder, ReadOnlyBy means = ReadOnlyBy::kMedium);
  ~ReadOnlyFolder();
  ReadOnlyFolder(const ReadOnlyFolder&) = delete;
  ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

  WriteObstacle Obstacle() const {
    return mounted_ ? WriteObstacle::kReadOnlyMedium : WriteObstacle::kProtected;
  }
  // Runs `work` as one who may write there.
  template <typename Work>
  void Behind(Work work) {
    Open();
    work();
    Shut();
  }

 private:
  void Open();
  void Shut();

  QString folder_;
  ReadOnlyBy means_;
  bool mounted_ = false;
  std::optional<PlainUser> user_;
};

// An empty medium over an empty folder with room for so many bytes, if one can be mounted.
class SmallMedium {
 public:
  SmallMedium(const QString& folder, qint64 bytes);
  ~SmallMedium();
  SmallMedium(const SmallMedium&) = delete;
  SmallMedium& operator=(const SmallMedium&) = delete;

  bool Mounted() const { return mounted_; }

 private:
  QString folder_;
  bool mounted_ = false;
};

// The disk that a database lies on is full: its medium is filled to the last byte or, where none can be
// mounted, no file can grow.
class DatabaseOnFullDisk {
 public:
  // Copies the database `file`, and what lies beside it, to the disk.
  DatabaseOnFullDisk(const QString& empty_folder, const QString& file);

  const QString& Path() const { return path_; }

 private:
  SmallMedium medium_;
  QString path_;
  std::optional<FullDisk> limit_;
};

}  // namespace zelmar::testing_support
