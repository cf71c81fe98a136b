#include "store/connection.h"

#include <QFileInfo>
#include <QSqlError>

#include "store/database_error.h"
#include "store/people_collation.h"
#include "store/recordset.h"
#include "store/statement_dialect.h"

namespace zelmar {

namespace {

constexpr int kBusyMilliseconds = 2000;
constexpr qint64 kSmallestDatabase = 512;  // bytes: one page of the smallest size that the engine has

// The engine would make a missing file and take one of no or one byte for a new database; whether any other
// is one, it tells by itself. The file is looked at and not opened: closing any handle on it would drop the
// locks that the other connections of this process hold on it.
void RequireDatabaseFile(const QString& path) {
  const QFileInfo file(path);
  if (!file.isFile())
    throw DatabaseError(database_error::kFileNotFound, QStringLiteral("There is no file %1").arg(path));
  if (!file.isReadable())
    throw DatabaseError(database_error::kFileNotFound,
                        QStringLiteral("The file %1 cannot be read").arg(path));
  if (file.size() < kSmallestDatabase)
    throw DatabaseError(database_error::kNotADatabase,
                        QStringLiteral("The file %1 is not a database").arg(path));
}

QString NextName() {
  static int number = 0;
  return QStringLiteral("tune database %1").arg(++number);
}

// The column list of a CREATE TABLE statement, from its opening bracket on.
QString ColumnList(const QString& definition) {
  QChar closing;
  for (qsizetype i = 0; i < definition.size(); ++i) {
    const QChar c = definition[i];
    if (!closing.isNull()) {
      if (c == closing) closing = QChar();
    } else if (c == u'[') {
      closing = u']';
    } else if (c == u'"' || c == u'\'' || c == u'`') {
      closing = c;
    } else if (c == u'(') {
      return definition.mid(i);
    }
  }
  return {};
}

}  // namespace

std::shared_ptr<Connection> Connection::Open(const QString& path) {
  RequireDatabaseFile(path);
  return std::shared_ptr<Connection>(new Connection(path));
}

Connection::Connection(const QString& path)
    : name_(NextName()), database_(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_)) {
  database_.setDatabaseName(path);
  database_.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(kBusyMilliseconds));
  try {
    if (!database_.open()) throw DatabaseErrorFrom(database_.lastError());
    AddPeopleCollation(database_);
    // The engine reads the file only now, and finds out whether it is whole.
    Run(QStringLiteral("SELECT count(*) FROM sqlite_master"));
  } catch (...) {
    Close();
    throw;
  }
}

Connection::~Connection() {
  Close();
}

void Connection::Close() {
  if (name_.isEmpty()) return;
  for (Recordset* recordset : recordsets_) recordset->Drop();
  recordsets_.clear();
  database_.close();
  database_ = QSqlDatabase();
  QSqlDatabase::removeDatabase(name_);
  name_.clear();
}

QSqlQuery Connection::Prepare(const QString& sql) const {
  if (!IsOpen()) throw DatabaseError(database_error::kOther, QStringLiteral("The connection is closed"));
  QSqlQuery query(database_);
  query.setForwardOnly(true);
  if (!query.prepare(sql)) throw DatabaseErrorFrom(query.lastError());
  return query;
}

void Connection::Run(const QString& sql) {
  QSqlQuery query = Prepare(sql);
  if (!query.exec()) throw DatabaseErrorFrom(query.lastError());
}

void Connection::Execute(const QString& statement) {
  const EngineStatement translated = StatementDialect::Translate(statement);
  if (!translated.gives_rows) PrepareToChange();
  if (translated.copy)
    CopyTable(translated.copy->target, translated.copy->source, translated.copy->rows);
  else if (translated.shape)
    Run(translated.shape->parent);
  else
    Run(translated.sql);
}

void Connection::CopyTable(const QString& target, const QString& source, const QString& rows) {
  const QString bracketed = StatementDialect::Bracketed(target);
  // Without one whole table to copy there is no definition to take over, and the engine works out the
  // columns.
  if (source.isEmpty()) return Run(QStringLiteral("CREATE TABLE %1 AS %2").arg(bracketed, rows));
  const QString columns = ColumnList(DefinitionOf(source));
  if (!database_.transaction()) throw DatabaseErrorFrom(database_.lastError());
  try {
    Run(QStringLiteral("CREATE TABLE ") + bracketed + u' ' + columns);
    Run(QStringLiteral("INSERT INTO ") + bracketed + u' ' + rows);
    if (!database_.commit()) throw DatabaseErrorFrom(database_.lastError());
  } catch (...) {
    database_.rollback();
    throw;
  }
}

void Connection::EmptyLog() {
  if (!logging_ahead_ || !IsOpen()) return;
  Prepare(QStringLiteral("PRAGMA wal_checkpoint(PASSIVE)")).exec();
}

QString Connection::DefinitionOf(const QString& table) const {
  QSqlQuery query = Prepare(
      QStringLiteral("SELECT sql FROM sqlite_master WHERE type = 'table' AND name = ? COLLATE NOCASE"));
  query.addBindValue(table);
  if (!query.exec()) throw DatabaseErrorFrom(query.lastError());
  if (!query.next())
    throw DatabaseError(error_number::kTableNotFound,
                        QStringLiteral("The table '%1' is not in the database.").arg(table));
  return query.value(0).toString();
}

QStringList Connection::TableNames() const {
  QSqlQuery query = Prepare(QStringLiteral(
      "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite~_%' ESCAPE '~' "
      "ORDER BY rowid"));
  if (!query.exec()) throw DatabaseErrorFrom(query.lastError());
  QStringList names;
  while (query.next()) names.append(query.value(0).toString());
  return names;
}

void Connection::PrepareToChange() {
  // A table cannot go while rows of it are being read.
  for (Recordset* recordset : recordsets_) recordset->Detach();
  if (logging_ahead_ || !IsOpen()) return;
  // A reader elsewhere keeps the file as it is; that is no reason to wait, and the next change tries again.
  Run(QStringLiteral("PRAGMA busy_timeout=0"));
  QSqlQuery query = Prepare(QStringLiteral("PRAGMA journal_mode=WAL"));
  logging_ahead_ = query.exec() && query.next() && query.value(0).toString() == QStringLiteral("wal");
  query.finish();
  Run(QStringLiteral("PRAGMA synchronous=NORMAL"));
  Run(QStringLiteral("PRAGMA busy_timeout=%1").arg(kBusyMilliseconds));
}

}  // namespace zelmar
