// Reading a database file without any lock on it, and without the index of its log, which the engine makes
// beside the file where it may write. That is safe as long as nobody writes: it may begin only where no other
// program has the file open, and what was read counts only if nothing has changed since.
#pragma once

#include <QDateTime>
#include <QString>

namespace zelmar {

class UnlockedReading {
 public:
  // True when no program has the file open that could write to it: each of them keeps an index of its log
  // beside the file.
  static bool IsSafe(const QString& path);

  // Remembers the file and its log as they are.
  explicit UnlockedReading(const QString& path);

  // How the engine is to open the file: as one that never changes, or with what a program that ended badly
  // left in its log.
  const QString& FileName() const { return file_name_; }
  // Its log is to be read without the index.
  bool HasLog() const { return before_.log_size > 0; }

  // False once the file is another than at the start.
  bool IsUnchanged() const { return State(path_) == before_; }

 private:
  struct State {
    explicit State(const QString& path);
    bool operator==(const State&) const = default;

    qint64 size, log_size, journal_size;
    QDateTime changed, log_changed;
    bool has_index;
  };

  QString path_;
  State before_;
  QString file_name_;
};

}  // namespace zelmar
