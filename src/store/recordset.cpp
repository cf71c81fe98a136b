#include "store/recordset.h"

#include <QHash>
#include <QSqlError>
#include <QSqlRecord>

#include "store/database_error.h"
#include "store/statement_dialect.h"

namespace zelmar {

namespace {

DatabaseError NoSuchMove() {
  return DatabaseError(database_error::kForwardOnly,
                       QStringLiteral("A forward-only cursor cannot go backwards."));
}

}  // namespace

// The second level of a shape, as every row's Chapter shares it.
struct Recordset::ShapeRows {
  QString chapter;
  int parent_field = 0;
  std::vector<QString> names;
  std::vector<Row> rows;
  QHash<QString, std::vector<std::size_t>> by_key;
};

std::unique_ptr<Recordset> Recordset::OpenStatement(std::shared_ptr<Connection> connection,
                                                    const QString& statement, CursorType cursor,
                                                    LockType lock) {
  const bool changeable =
      cursor == CursorType::kForwardOnly ? lock == LockType::kBatchOptimistic : lock != LockType::kReadOnly;
  const EngineStatement translated = StatementDialect::Translate(
      statement, changeable ? RowIdentity::kWhereThereIsOne : RowIdentity::kLeftOut);
  if (!translated.gives_rows)
    throw DatabaseError(database_error::kNotAStatement, QStringLiteral("The statement gives no rows"));
  std::unique_ptr<Recordset> recordset(new Recordset(std::move(connection)));
  if (translated.shape) {
    recordset->StartShape(translated);
    return recordset;
  }
  recordset->lock_ = lock;
  recordset->table_ = translated.table;
  recordset->first_field_ = translated.table.isEmpty() ? 0 : 1;
  recordset->Start(translated.sql, cursor);
  return recordset;
}

std::unique_ptr<Recordset> Recordset::OpenTable(std::shared_ptr<Connection> connection, const QString& table,
                                                CursorType cursor, LockType lock) {
  const QString bracketed = StatementDialect::Bracketed(StatementDialect::BareName(table));
  return OpenStatement(std::move(connection), QStringLiteral("SELECT * FROM ") + bracketed, cursor, lock);
}

Recordset::Recordset(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {
  connection_->open_rows_.push_back(this);
}

Recordset::~Recordset() {
  Close();
}

void Recordset::Drop() {
  query_.reset();
  insert_.reset();
  update_.reset();
  rows_.clear();
  gaps_.Clear();
  pending_.clear();
  children_.reset();
  streaming_ = false;
  at_end_ = before_start_ = true;
}

void Recordset::Close() {
  if (!connection_) return;
  Drop();
  std::erase(connection_->open_rows_, static_cast<OpenRows*>(this));
  connection_.reset();
}

void Recordset::Start(const QString& sql, CursorType cursor) {
  sql_ = sql;
  cursor_ = cursor;
  Run();
  TakeNames();
  if (cursor_ == CursorType::kStatic) FetchAll();
  MoveFirstIfAny();
}

void Recordset::Run() {
  query_.emplace(connection_->Opened(sql_));
}

void Recordset::TakeNames() {
  const QSqlRecord record = query_->record();
  names_.clear();
  for (int i = first_field_; i < record.count(); ++i) names_.push_back(record.fieldName(i));
}

void Recordset::MoveFirstIfAny() {
  if (cursor_ == CursorType::kForwardOnly) {
    streaming_ = true;
    rows_passed_ = 0;
    Step();
    before_start_ = at_end_;
    return;
  }
  StandForward(0);
  before_start_ = at_end_;
}

void Recordset::StartShape(const EngineStatement& statement) {
  const Shape& shape = *statement.shape;
  auto children = std::make_shared<ShapeRows>();
  {
    Recordset child(connection_);
    child.Start(shape.child, CursorType::kStatic);
    const int key_field = child.Field(shape.child_column);
    children->names = std::move(child.names_);
    children->rows = std::move(child.rows_);
    for (std::size_t i = 0; i < children->rows.size(); ++i) {
      const QVariant& key = children->rows[i].values[static_cast<std::size_t>(key_field)];
      if (!key.isNull()) children->by_key[key.toString()].push_back(i);
    }
  }
  Start(shape.parent, CursorType::kStatic);
  children->chapter = shape.chapter;
  children->parent_field = Field(shape.parent_column);
  children_ = std::move(children);
}

std::unique_ptr<Recordset> Recordset::Chapter(const QString& name) const {
  if (!children_ || children_->chapter.compare(name, Qt::CaseInsensitive) != 0)
    throw DatabaseError(database_error::kItemNotFound,
                        QStringLiteral("The rows have no chapter '%1'.").arg(name));
  std::unique_ptr<Recordset> chapter(new Recordset(connection_));
  chapter->names_ = children_->names;
  const QVariant key = Value(children_->parent_field);
  if (!key.isNull())
    for (const std::size_t row : children_->by_key.value(key.toString()))
      chapter->rows_.push_back(children_->rows[row]);
  chapter->MoveFirstIfAny();
  return chapter;
}

// --- Reading rows from the engine ---

void Recordset::Step() {
  if (query_->next()) {
    at_end_ = false;
    ++rows_passed_;
    return;
  }
  const QSqlError error = query_->lastError();
  at_end_ = true;
  if (error.isValid()) throw connection_->ErrorOf(error);
  connection_->RequireUnchanged();
  query_->finish();
}

Recordset::Row Recordset::ReadRow() const {
  Row row;
  row.values.reserve(names_.size());
  for (int i = 0; i < FieldCount(); ++i) row.values.push_back(query_->value(first_field_ + i));
  if (first_field_ > 0) row.row_id = query_->value(0).toLongLong();
  return row;
}

bool Recordset::Reach(std::size_t row) {
  while (query_ && !streaming_ && rows_.size() <= row) {
    if (query_->next()) {
      rows_.push_back(ReadRow());
      continue;
    }
    const QSqlError error = query_->lastError();
    query_.reset();
    if (error.isValid()) throw connection_->ErrorOf(error);
    connection_->RequireUnchanged();
  }
  return row < rows_.size();
}

void Recordset::Detach() {
  if (!query_) return;
  if (!streaming_) return FetchAll();
  if (!at_end_) {
    rows_.push_back(ReadRow());
    --rows_passed_;
  }
  const bool rows_left = !at_end_;
  streaming_ = false;
  current_ = 0;
  if (rows_left)
    FetchAll();
  else
    query_.reset();
}

// --- Moving ---

void Recordset::StandForward(std::size_t row) {
  if (Reach(row) && rows_[row].IsGone()) row = gaps_.Filled(row - gaps_.Before(row));
  at_end_ = !Reach(row);
  before_start_ = false;
  current_ = row;
}

void Recordset::StandBackward(std::size_t rows_before) {
  const std::size_t left_before = rows_before - gaps_.Before(rows_before);
  before_start_ = left_before == 0;
  at_end_ = false;
  current_ = before_start_ ? 0 : gaps_.Filled(left_before - 1);
}

void Recordset::MoveFirst() {
  if (at_end_ && before_start_) throw NoCurrentRecord();
  if (cursor_ == CursorType::kForwardOnly) {
    if (!pending_.empty()) throw NoSuchMove();
    if (AbsolutePosition() == 1) return;
    rows_.clear();
    Run();
    MoveFirstIfAny();
  } else {
    StandForward(0);
    before_start_ = at_end_;
  }
  if (at_end_) throw NoCurrentRecord();
}

void Recordset::MoveNext() {
  if (at_end_) throw NoCurrentRecord();
  if (streaming_) return Step();
  StandForward(before_start_ ? 0 : current_ + 1);
}

void Recordset::MovePrevious() {
  if (cursor_ == CursorType::kForwardOnly) throw NoSuchMove();
  if (before_start_) throw NoCurrentRecord();
  StandBackward(current_);
}

void Recordset::MoveLast() {
  if (cursor_ == CursorType::kForwardOnly) throw NoSuchMove();
  FetchAll();
  StandBackward(rows_.size());
  if (!before_start_) return;
  at_end_ = true;
  throw NoCurrentRecord();
}

qsizetype Recordset::RecordCount() {
  if (cursor_ == CursorType::kForwardOnly) {
    if (counted_ < 0 && connection_) {
      QSqlQuery query = connection_->Opened(QStringLiteral("SELECT count(*) FROM (%1)").arg(sql_));
      if (!query.next()) throw connection_->ErrorOf(query.lastError());
      counted_ = query.value(0).toLongLong();
    }
    return counted_;
  }
  FetchAll();
  return static_cast<qsizetype>(rows_.size() - gaps_.Count());
}

qsizetype Recordset::AbsolutePosition() const {
  if (at_end_ || before_start_) return 0;
  if (streaming_) return rows_passed_;
  if (rows_[current_].IsGone()) return 0;
  return rows_passed_ + 1 + static_cast<qsizetype>(current_ - gaps_.Before(current_));
}

void Recordset::MoveTo(qsizetype position) {
  if (cursor_ == CursorType::kForwardOnly) throw NoSuchMove();
  if (position < 1 || position > RecordCount()) throw NoCurrentRecord();
  StandForward(gaps_.Filled(static_cast<std::size_t>(position - 1)));
}

}  // namespace zelmar
