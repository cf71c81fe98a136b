#include "store/connection.h"

#include <sqlite3.h>

#include <QFileInfo>
#include <QSqlError>
#include <algorithm>

#include "platform/disk_room.h"
#include "store/database_error.h"
#include "store/database_wait.h"
#include "store/engine_handle.h"
#include "store/library_indexes.h"
#include "store/people_collation.h"
#include "store/statement_dialect.h"

namespace zelmar {

namespace {

constexpr qint64 kSmallestDatabase = 512;  // bytes: one page of the smallest size that the engine has

// In bytes. A log of a few megabytes costs the least time, since the disk is waited for each time that it is
// emptied. Where the disk has little room the log, the commit with which it grew too long and its index stay
// below one megabyte together.
constexpr int kLongLog = 3600 * 1024;
constexpr int kLongLogOfLittleRoom = 960 * 1024;
constexpr std::uint64_t kLittleRoom = 64 * 1024 * 1024;
constexpr int kPageHead = 24;           // what the log keeps beside each page
constexpr int kPagesAtMost = 1000;      // who does not empty the log has it emptied then
constexpr int kPrimaryCodeMask = 0xFF;  // the engine puts details into the higher bits

// The engine itself never waits: DatabaseWait does, between two attempts.
const QString kNoWaiting = QStringLiteral("QSQLITE_BUSY_TIMEOUT=0");
const QString kFileIsUri = QStringLiteral(";QSQLITE_OPEN_URI");

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

int CodeOf(const QSqlError& error) {
  return error.nativeErrorCode().toInt() & kPrimaryCodeMask;
}

}  // namespace

// --- Opening ---

std::shared_ptr<Connection> Connection::Open(const QString& path) {
  RequireDatabaseFile(path);
  return std::shared_ptr<Connection>(new Connection(path));
}

Connection::Connection(const QString& path)
    : path_(path), name_(NextName()), database_(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_)) {
  try {
    OpenWhereItLies();
  } catch (...) {
    Close();
    throw;
  }
}

// Where nothing can be written the engine cannot make what it needs for its locks, and leaves such files
// lying about where it can; so there the file is read without locks, if that is safe.
void Connection::OpenWhereItLies() {
  obstacle_ = ObstacleInSight(path_);
  if (obstacle_ != WriteObstacle::kNone && UnlockedReading::IsSafe(path_)) return OpenUnlocked();
  try {
    OpenFile(path_, kNoWaiting);
    LookAtFile();
  } catch (const DatabaseError& failure) {
    const bool full = failure.Number() == database_error::kDiskFull;
    if (obstacle_ != WriteObstacle::kNone || !full || !UnlockedReading::IsSafe(path_)) throw;
    obstacle_ = WriteObstacle::kFullDisk;
    OpenUnlocked();
  }
}

void Connection::OpenFile(const QString& name, const QString& options) {
  database_.close();
  database_.setDatabaseName(name);
  database_.setConnectOptions(options);
  if (!database_.open()) throw ErrorOf(database_.lastError());
  AddPeopleCollation(database_);
  sqlite3_wal_hook(EngineHandle(database_), &Connection::LogGrew, this);
}

void Connection::OpenUnlocked() {
  const UnlockedReading reading(path_);
  OpenFile(reading.FileName(), kNoWaiting + kFileIsUri);
  if (reading.HasLog()) {
    // The index of the log is made in memory, and the log stays as it is at the end.
    sqlite3_db_config(EngineHandle(database_), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    Run(QStringLiteral("PRAGMA locking_mode=EXCLUSIVE"));
  }
  unlocked_ = reading;
  LookAtFile();
}

// The engine reads the file with the first statement, and finds out whether it is whole.
void Connection::LookAtFile() const {
  Run(QStringLiteral("SELECT count(*) FROM sqlite_master"));
}

Connection::~Connection() {
  Close();
}

void Connection::Close() {
  if (name_.isEmpty()) return;
  for (OpenRows* rows : open_rows_) rows->Drop();
  open_rows_.clear();
  database_.close();
  database_ = QSqlDatabase();
  QSqlDatabase::removeDatabase(name_);
  name_.clear();
}

// --- Statements ---

void Connection::RequireOpen() const {
  if (!IsOpen()) throw DatabaseError(database_error::kOther, QStringLiteral("The connection is closed"));
}

void Connection::RequireUnchanged() const {
  if (unlocked_ && !unlocked_->IsUnchanged())
    throw DatabaseError(database_error::kInUse,
                        QStringLiteral("Another program has begun to change the database file while it was "
                                       "read. Please try again."));
}

DatabaseError Connection::ErrorOf(const QSqlError& error) const {
  sqlite3* const engine = EngineHandle(database_);
  const int code = CodeOf(error);
  const WriteObstacle obstacle =
      ObstacleBehind(path_, code, engine == nullptr ? 0 : sqlite3_system_errno(engine));
  if (obstacle != WriteObstacle::kNone) return ObstacleError(obstacle, error.databaseText());
  return DatabaseErrorFrom(error);
}

// Makes the attempt, which gives an error or none, and makes it again while another program holds the
// database.
template <typename Attempt>
void Connection::Insist(Attempt attempt) const {
  // What the queue brings may let go of this connection.
  const auto self = weak_from_this().lock();
  DatabaseWait wait;
  for (;;) {
    RequireOpen();
    const QSqlError error = attempt();
    if (!error.isValid()) return;
    if (CodeOf(error) != SQLITE_BUSY) throw ErrorOf(error);
    if (wait.GoesOn()) continue;
    throw wait.Cancelled() ? InUse(QStringLiteral("the wait for it was ended")) : ErrorOf(error);
  }
}

QSqlQuery Connection::Prepare(const QString& sql) const {
  std::optional<QSqlQuery> query;
  Insist([&] {
    RequireUnchanged();
    query.emplace(database_);
    query->setForwardOnly(true);
    return query->prepare(sql) ? QSqlError() : query->lastError();
  });
  return std::move(*query);
}

void Connection::Exec(QSqlQuery& query) const {
  Insist([&query] { return query.exec() ? QSqlError() : query.lastError(); });
}

QSqlQuery Connection::Opened(const QString& sql) const {
  QSqlQuery query = Prepare(sql);
  Exec(query);
  return query;
}

void Connection::Run(const QString& sql) const {
  Opened(sql);
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

void Connection::Together(const std::function<void()>& changes) {
  if (together_) return changes();
  PrepareToChange();
  Run(QStringLiteral("BEGIN IMMEDIATE"));
  together_ = true;
  try {
    changes();
    Run(QStringLiteral("COMMIT"));
    together_ = false;
  } catch (...) {
    together_ = false;
    if (IsOpen()) QSqlQuery(database_).exec(QStringLiteral("ROLLBACK"));
    throw;
  }
}

void Connection::CopyTable(const QString& target, const QString& source, const QString& rows) {
  const QString bracketed = StatementDialect::Bracketed(target);
  // Without one whole table to copy there is no definition to take over, and the engine works out the
  // columns.
  if (source.isEmpty()) return Run(QStringLiteral("CREATE TABLE %1 AS %2").arg(bracketed, rows));
  const QString columns = ColumnList(DefinitionOf(source));
  Together([&] {
    Run(QStringLiteral("CREATE TABLE ") + bracketed + u' ' + columns);
    Run(QStringLiteral("INSERT INTO ") + bracketed + u' ' + rows);
  });
}

QString Connection::DefinitionOf(const QString& table) const {
  QSqlQuery query = Prepare(
      QStringLiteral("SELECT sql FROM sqlite_master WHERE type = 'table' AND name = ? COLLATE NOCASE"));
  query.addBindValue(table);
  Exec(query);
  if (!query.next())
    throw DatabaseError(error_number::kTableNotFound,
                        QStringLiteral("The table '%1' is not in the database.").arg(table));
  return query.value(0).toString();
}

QStringList Connection::TableNames() const {
  QSqlQuery query = Opened(QStringLiteral(
      "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite~_%' ESCAPE '~' "
      "ORDER BY rowid"));
  QStringList names;
  while (query.next()) names.append(query.value(0).toString());
  return names;
}

// --- Changes ---

void Connection::PrepareToChange() {
  // A table cannot go while rows of it are being read.
  for (OpenRows* rows : open_rows_) rows->Detach();
  RequireOpen();
  if (together_) return;
  if (obstacle_ != WriteObstacle::kNone) throw ObstacleError(obstacle_);
  if (!logging_ahead_) LogAhead();
  if (indexes_seen_to_) return;
  indexes_seen_to_ = true;
  AddMissingIndexes(database_, path_);
}

void Connection::LogAhead() {
  // A reader elsewhere keeps the file as it is; that is no reason to wait, and the next change tries again.
  QSqlQuery query(database_);
  logging_ahead_ = query.exec(QStringLiteral("PRAGMA journal_mode=WAL")) && query.next() &&
                   query.value(0).toString() == QStringLiteral("wal");
  query.finish();
  Run(QStringLiteral("PRAGMA synchronous=NORMAL"));
  QSqlQuery size = Opened(QStringLiteral("PRAGMA page_size"));
  if (size.next()) page_size_ = size.value(0).toInt();
  ChooseLengthOfLog();
}

void Connection::ChooseLengthOfLog() {
  const bool little_room = RoomOnDisk(path_) < kLittleRoom;
  const int bytes = little_room ? kLongLogOfLittleRoom : kLongLog;
  pages_of_long_log_ = std::min(bytes / (page_size_ + kPageHead), kPagesAtMost);
  // A file that has grown longer gives its room back when the log begins anew.
  Run(QStringLiteral("PRAGMA journal_size_limit=%1").arg(little_room ? bytes : -1));
}

void Connection::EmptyLog() {
  if (!logging_ahead_ || !IsOpen()) return;
  pages_when_emptied_ = pages_in_log_;
  QSqlQuery(database_).exec(QStringLiteral("PRAGMA wal_checkpoint(PASSIVE)"));
  ChooseLengthOfLog();
}

// The engine calls this behind each commit. A log that is shorter than before has begun anew.
int Connection::LogGrew(void* connection, sqlite3* engine, const char* file, int pages) {
  auto* const self = static_cast<Connection*>(connection);
  if (pages < self->pages_in_log_) self->pages_when_emptied_ = 0;
  self->pages_in_log_ = pages;
  if (pages - self->pages_when_emptied_ >= kPagesAtMost) {
    self->pages_when_emptied_ = pages;
    sqlite3_wal_checkpoint_v2(engine, file, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
  }
  return SQLITE_OK;
}

}  // namespace zelmar
