// One short connection to a tune database: opened by its user, closed when done.
//
// Statements are given as they are written in the system; StatementDialect turns them into the engine's form.
// The file is touched by the first statement that changes something and not before. That one also gives an
// older library the indexes that it lacks.
//
// While another program holds the database, every call here and of a Recordset waits up to two seconds and
// serves events meanwhile (DatabaseWait); its caller is prepared for that as for ServeEvents.
//
// A library that cannot be changed is opened for reading; Obstacle tells why it cannot.
#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "store/unlocked_reading.h"
#include "store/write_obstacle.h"

class QSqlError;
struct sqlite3;

namespace zelmar {

class DatabaseError;

// Rows that are being read on a connection.
class OpenRows {
 public:
  // Lets go of what the engine holds for them, so that a table may change; what is left is read first.
  virtual void Detach() = 0;
  // The connection closes: the rows are lost.
  virtual void Drop() = 0;

 protected:
  ~OpenRows() = default;
};

class Connection : public std::enable_shared_from_this<Connection> {
 public:
  // Opens an existing database file; never creates one. Throws DatabaseError when there is no regular,
  // readable file at `path` or when it is not a database, and leaves the file as it was.
  static std::shared_ptr<Connection> Open(const QString& path);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // What is in the way of any change, where that could be told at the opening.
  WriteObstacle Obstacle() const { return obstacle_; }

  // Runs a statement that gives no rows. Throws DatabaseError.
  void Execute(const QString& statement);

  // Runs changes of this connection as one: all of them are committed, or none when one throws.
  void Together(const std::function<void()>& changes);

  // Moves what is committed from the log into the file. The engine does that by itself, in the middle of one
  // commit in a thousand, which then takes as long as the disk likes; who has just served the event queue
  // does it better. Where it cannot be done now, it is done later.
  void EmptyLog();
  // True when the log has grown to a few megabytes since it was last emptied, or on a disk with little room
  // to nearly one.
  bool LogIsLong() const { return pages_in_log_ - pages_when_emptied_ >= pages_of_long_log_; }

  // The names of all tables as stored, in the order of their making.
  QStringList TableNames() const;

  // Closes the recordsets that are still open on this connection, then the connection. May be called again.
  void Close();
  bool IsOpen() const { return database_.isOpen(); }

 private:
  friend class Recordset;  // runs statements and enters itself among the open rows

  explicit Connection(const QString& path);

  void OpenWhereItLies();
  void OpenFile(const QString& name, const QString& options);
  void OpenUnlocked();
  // The file as the engine finds it: throws what is wrong with it.
  void LookAtFile() const;

  void Run(const QString& sql) const;
  // The statement, run, standing before its first row.
  QSqlQuery Opened(const QString& sql) const;
  QSqlQuery Prepare(const QString& sql) const;
  // Runs a prepared statement.
  void Exec(QSqlQuery& query) const;
  template <typename Attempt>
  void Insist(Attempt attempt) const;
  DatabaseError ErrorOf(const QSqlError& error) const;
  void RequireOpen() const;
  // Throws when another program has begun to write to a file that is read without locks.
  void RequireUnchanged() const;

  void CopyTable(const QString& target, const QString& source, const QString& rows);
  QString DefinitionOf(const QString& table) const;
  // Called before every change: lets readers finish, and puts the file into write-ahead logging.
  void PrepareToChange();
  void LogAhead();
  void ChooseLengthOfLog();
  static int LogGrew(void* connection, sqlite3* engine, const char* file, int pages);

  QString path_;
  QString name_;
  QSqlDatabase database_;
  WriteObstacle obstacle_ = WriteObstacle::kNone;
  std::optional<UnlockedReading> unlocked_;
  bool logging_ahead_ = false;
  bool indexes_seen_to_ = false;
  bool together_ = false;
  int page_size_ = 4096;  // bytes
  int pages_in_log_ = 0;
  int pages_when_emptied_ = 0;
  int pages_of_long_log_ = 1000;  // until the size of a page is known
  std::vector<OpenRows*> open_rows_;
};

}  // namespace zelmar
