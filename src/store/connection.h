// One short connection to a tune database: opened by its user, closed when done.
//
// Statements are given as they are written in the system; StatementDialect turns them into the engine's form.
// The file is touched by the first statement that changes something and not before.
#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

namespace zelmar {

class Recordset;

class Connection {
 public:
  // Opens an existing database file; never creates one. Throws DatabaseError when there is no regular,
  // readable file at `path` or when it is not a database, and leaves the file as it was.
  static std::shared_ptr<Connection> Open(const QString& path);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // Runs a statement that gives no rows. Throws DatabaseError.
  void Execute(const QString& statement);

  // Moves what is committed from the log into the file. The engine does that by itself, in the middle of one
  // commit in a thousand, which then takes as long as the disk likes; who has just served the event queue
  // does it better. Where it cannot be done now, it is done later.
  void EmptyLog();

  // The names of all tables as stored, in the order of their making.
  QStringList TableNames() const;

  // Closes the recordsets that are still open on this connection, then the connection. May be called again.
  void Close();
  bool IsOpen() const { return database_.isOpen(); }

 private:
  friend class Recordset;

  explicit Connection(const QString& path);

  void Run(const QString& sql);
  void CopyTable(const QString& target, const QString& source, const QString& rows);
  QString DefinitionOf(const QString& table) const;
  // Called before every change: lets readers finish, and puts the file into write-ahead logging.
  void PrepareToChange();
  QSqlQuery Prepare(const QString& sql) const;

  QString name_;
  QSqlDatabase database_;
  bool logging_ahead_ = false;
  std::vector<Recordset*> recordsets_;
};

}  // namespace zelmar
