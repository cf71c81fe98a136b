// The file in which a running program keeps its unsaved tune, and those that programs have left behind.
//
// Each program has a file of its own, "Zelmar-unsaved-<process>-<moment>.tune", and holds a lock beside it as
// long as the file is its. The lock goes with its program however that ends, so a file whose lock can be had
// is one that was left behind.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QLockFile>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

namespace zelmar {

class Tune;

// A tune as it was kept.
struct KeptTune {
  std::shared_ptr<Tune> tune;
  QDateTime kept_at;      // UTC
  QString database_path;  // of the database in use then
};

// The contents of a recovery file without its seal. Both halves of the tune are as a TunePacker gives them.
QByteArray RecoveryContents(const QDateTime& kept_at, const QString& database_path, const QByteArray& head,
                            const QByteArray& events);

// Reads a recovery file. Throws Failure, whose words tell whether the file is damaged, is none at all or is
// one of a later version, and what of it cannot be read; its bytes are data and nothing else.
KeptTune ReadRecoveryFile(const QString& path);

// Where recovery files lie: beside the settings, or in the state directory when that folder takes no files.
QStringList RecoveryFolders();

// The file of this program. Nothing is on the disk before the first Write. May be used from one thread at a
// time, which need not be that of the interface.
class RecoveryFile {
 public:
  explicit RecoveryFile(QStringList folders);
  // Gives up the lock; the file stays.
  ~RecoveryFile();
  RecoveryFile(const RecoveryFile&) = delete;
  RecoveryFile& operator=(const RecoveryFile&) = delete;

  // Writes the file whole in the first folder that takes it, and returns once it is on the disk: until then
  // the one before it stays. Throws Failure when no folder takes it, for the reason of the first.
  void Write(const QByteArray& contents);
  // Takes the file off the disk, and the lock with it.
  void Remove();

  const QString& Name() const { return name_; }

 private:
  void WriteInto(const QString& folder, const QByteArray& seal, const QByteArray& contents);
  void RemoveFrom(const QString& folder);

  const QStringList folders_;
  const QString name_;
  QString folder_;  // that the file is in; empty when there is none
  std::unique_ptr<QLockFile> lock_;
};

// A recovery file whose program is gone. Held by this program until the object goes.
class LeftRecovery {
 public:
  LeftRecovery(QString path, std::unique_ptr<QLockFile> lock)
      : path_(std::move(path)), lock_(std::move(lock)) {}

  const QString& Path() const { return path_; }
  KeptTune Read() const { return ReadRecoveryFile(path_); }
  void Remove();
  // Gives the file another name, under which it is offered no more, and returns that; the old one when it
  // cannot be renamed.
  QString SetAside();

 private:
  QString path_;
  std::unique_ptr<QLockFile> lock_;
};

// The files that programs left behind in the folders, the one that was written last first. What a program
// that ended in the middle of a write left half done is cleared away.
std::vector<LeftRecovery> LeftRecoveries(const QStringList& folders);

}  // namespace zelmar
