// The members of Recordset that change rows.

#include <algorithm>

#include "store/database_error.h"
#include "store/recordset.h"
#include "store/statement_dialect.h"

namespace zelmar {

namespace {

// In the types that the engine has. An empty text stays a text: the driver would store it as a null
// otherwise.
QVariant Storable(const QVariant& value) {
  if (!value.isValid()) return QVariant(QMetaType(QMetaType::QString));
  switch (value.typeId()) {
    case QMetaType::QString:
      return value.toString().isNull() ? QVariant(QStringLiteral("")) : value;
    case QMetaType::Float:
      return value.toDouble();
    case QMetaType::Bool:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
      return value.toLongLong();
    default:
      return value;
  }
}

}  // namespace

void Recordset::RequireChangeable() const {
  if (table_.isEmpty())
    throw DatabaseError(database_error::kReadOnly, QStringLiteral("These rows cannot be changed."));
}

void Recordset::RequireChangeableRow() const {
  RequireChangeable();
  if (cursor_ == CursorType::kForwardOnly && (streaming_ || CurrentRow().state != RowState::kAdded))
    throw DatabaseError(database_error::kReadOnly, QStringLiteral("A row that streams cannot be changed."));
  CurrentRow();
}

void Recordset::AddNew() {
  RequireChangeable();
  if (cursor_ == CursorType::kForwardOnly && pending_.empty()) {
    query_.reset();
    rows_.clear();
    streaming_ = false;
  }
  FetchAll();
  Row row;
  row.values.assign(names_.size(), QVariant(QMetaType(QMetaType::QString)));
  row.written.assign(names_.size(), false);
  row.state = RowState::kAdded;
  rows_.push_back(std::move(row));
  current_ = rows_.size() - 1;
  at_end_ = before_start_ = false;
  pending_.push_back(current_);
}

void Recordset::SetValue(int field, const QVariant& value) {
  RequireChangeableRow();
  Row& row = rows_[current_];
  if (row.state == RowState::kStored) {
    row.state = RowState::kChanged;
    row.written.assign(names_.size(), false);
    pending_.push_back(current_);
  }
  const auto place = static_cast<std::size_t>(field);
  row.values.at(place) = Storable(value);
  row.written.at(place) = true;
}

void Recordset::Delete() {
  RequireChangeableRow();
  Row& row = rows_[current_];
  if (row.state == RowState::kStored) pending_.push_back(current_);
  row.state = row.state == RowState::kAdded ? RowState::kDropped : RowState::kDeleted;
  gaps_.Add(current_);
  if (row.state == RowState::kDropped) return;
  if (lock_ == LockType::kOptimistic) UpdateBatch();
}

void Recordset::UpdateBatch() {
  RequireChangeable();
  std::erase_if(pending_, [this](std::size_t place) { return rows_[place].state == RowState::kDropped; });
  if (pending_.empty()) return;
  if (!connection_) throw DatabaseError(database_error::kOther, QStringLiteral("The recordset is closed."));
  std::vector<qint64> row_ids;
  const auto commit_all = [&] {
    for (const std::size_t place : pending_) row_ids.push_back(Committed(rows_[place]));
  };
  if (pending_.size() > 1) {
    connection_->Together(commit_all);
  } else {
    // One row is a transaction by itself.
    connection_->PrepareToChange();
    commit_all();
  }
  for (std::size_t i = 0; i < pending_.size(); ++i) {
    Row& row = rows_[pending_[i]];
    row.row_id = row_ids[i];
    row.written.clear();
    if (row.state != RowState::kDeleted) row.state = RowState::kStored;
  }
  pending_.clear();
  if (cursor_ != CursorType::kForwardOnly) return;
  rows_.clear();
  gaps_.Clear();
  counted_ = -1;
  at_end_ = true;
}

qint64 Recordset::Committed(const Row& row) {
  switch (row.state) {
    case RowState::kAdded:
      return Insert(row);
    case RowState::kChanged:
      return Update(row);
    default:
      break;
  }
  QSqlQuery query = connection_->Prepare(
      QStringLiteral("DELETE FROM %1 WHERE rowid = ?").arg(StatementDialect::Bracketed(table_)));
  query.addBindValue(row.row_id);
  connection_->Exec(query);
  return row.row_id;
}

// A whole number that is the key of its table is the identity of its row too.
qint64 Recordset::IdentityOfChanged(const Row& row) {
  if (!number_key_) {
    QSqlQuery query = connection_->Prepare(QStringLiteral(
        "SELECT name FROM pragma_table_info(?) WHERE pk > 0 AND type = 'INTEGER' COLLATE NOCASE AND "
        "(SELECT count(*) FROM pragma_table_info(?) WHERE pk > 0) = 1"));
    query.addBindValue(table_);
    query.addBindValue(table_);
    connection_->Exec(query);
    const QString key = query.next() ? query.value(0).toString() : QString();
    const auto column = std::find_if(names_.begin(), names_.end(), [&key](const QString& name) {
      return !key.isEmpty() && name.compare(key, Qt::CaseInsensitive) == 0;
    });
    number_key_ = static_cast<std::size_t>(column - names_.begin());
  }
  const bool key_written = *number_key_ < names_.size() && row.written[*number_key_];
  return key_written ? row.values[*number_key_].toLongLong() : row.row_id;
}

// The statements are kept for the next row that writes the same fields, as a loop over rows does.
qint64 Recordset::Insert(const Row& row) {
  if (!insert_ || insert_fields_ != row.written) {
    QStringList columns, marks;
    for (std::size_t i = 0; i < names_.size(); ++i) {
      if (!row.written[i]) continue;
      columns.append(StatementDialect::Bracketed(names_[i]));
      marks.append(QStringLiteral("?"));
    }
    const QString table = StatementDialect::Bracketed(table_);
    insert_.emplace(connection_->Prepare(columns.isEmpty()
                                             ? QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(table)
                                             : QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                                   .arg(table, columns.join(u','), marks.join(u','))));
    insert_fields_ = row.written;
  }
  int position = 0;
  for (std::size_t i = 0; i < names_.size(); ++i)
    if (row.written[i]) insert_->bindValue(position++, row.values[i]);
  connection_->Exec(*insert_);
  return insert_->lastInsertId().toLongLong();
}

qint64 Recordset::Update(const Row& row) {
  const qint64 identity = IdentityOfChanged(row);
  if (!update_ || update_fields_ != row.written) {
    QStringList assignments;
    for (std::size_t i = 0; i < names_.size(); ++i)
      if (row.written[i]) assignments.append(StatementDialect::Bracketed(names_[i]) + QStringLiteral(" = ?"));
    update_.emplace(
        connection_->Prepare(QStringLiteral("UPDATE %1 SET %2 WHERE rowid = ?")
                                 .arg(StatementDialect::Bracketed(table_), assignments.join(u','))));
    update_fields_ = row.written;
  }
  int position = 0;
  for (std::size_t i = 0; i < names_.size(); ++i)
    if (row.written[i]) update_->bindValue(position++, row.values[i]);
  update_->bindValue(position, row.row_id);
  connection_->Exec(*update_);
  if (update_->numRowsAffected() == 0)
    throw DatabaseError(database_error::kNoCurrentRecord,
                        QStringLiteral("The changed row is no longer in the table."));
  return identity;
}

}  // namespace zelmar
