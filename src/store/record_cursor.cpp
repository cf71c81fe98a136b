#include "store/record_cursor.h"

#include <QPointer>
#include <algorithm>

#include "store/database_error.h"
#include "store/recordset.h"

namespace zelmar {

namespace {

// Stands on the record with this key; false, and at the end, when there is none.
bool StandOn(Recordset& rows, const QString& key, const QVariant& value) {
  if (rows.Eof() && rows.Bof()) return false;
  rows.MoveFirst();
  if (value.isNull()) {
    while (!rows.Eof() && !rows.IsNull(key)) rows.MoveNext();
  } else {
    rows.Find(EqualsInStatement(key, value));
  }
  return !rows.Eof();
}

// Stands on the record of that number, on the last one where there are fewer, and nowhere when there is none.
void StandAt(Recordset& rows, qsizetype position) {
  const qsizetype count = rows.RecordCount();
  if (count > 0) rows.MoveTo(std::clamp<qsizetype>(position, 1, count));
}

DatabaseError RecordIsGone(const QVariant& key) {
  return {database_error::kNoCurrentRecord,
          QStringLiteral("The record \"%1\" is no longer in the database.").arg(key.toString())};
}

bool IsNothing(const QVariant& key) {
  return key.isNull() || key.toString().trimmed().isEmpty();
}

DatabaseError KeyIsMissing(const QString& column) {
  return {database_error::kItemNotFound, QStringLiteral("A record needs a value in %1.").arg(column)};
}

}  // namespace

RecordCursor::RecordCursor(RecordSource source, QString position_prefix, QObject* parent)
    : QObject(parent), source_(std::move(source)), position_prefix_(std::move(position_prefix)) {}

RecordCursor::~RecordCursor() = default;

void RecordCursor::OpenAll(std::shared_ptr<Connection> connection) {
  Open(std::move(connection), source_.All());
}

void RecordCursor::OpenOne(std::shared_ptr<Connection> connection, const QVariant& key_value) {
  Open(std::move(connection), source_.One(key_value));
}

void RecordCursor::Open(std::shared_ptr<Connection> connection, const QString& statement) {
  connection_ = std::move(connection);
  statement_ = statement;
  told_key_ = QVariant();
  Take(ReadAnew(statement_));
  const QPointer<RecordCursor> self(this);
  Q_EMIT KeysChanged();
  if (self) Tell();
}

void RecordCursor::Refresh() {
  const QVariant key = Key();
  const qsizetype position = Position();
  auto rows = ReadAnew(statement_);
  if (!StandOn(*rows, source_.key, key)) StandAt(*rows, position);
  Take(std::move(rows));
  const QPointer<RecordCursor> self(this);
  Q_EMIT KeysChanged();
  if (self) Tell();
}

std::unique_ptr<Recordset> RecordCursor::ReadAnew(const QString& statement) const {
  if (!connection_) throw NoCurrentRecord();
  return Recordset::OpenStatement(connection_, statement, CursorType::kStatic, LockType::kBatchOptimistic);
}

void RecordCursor::Take(std::unique_ptr<Recordset> rows) {
  rows_ = std::move(rows);
}

void RecordCursor::Tell() {
  const QVariant key = Key();
  const bool is_another = key != told_key_;
  told_key_ = key;
  const QPointer<RecordCursor> self(this);
  Q_EMIT Moved();
  if (self && is_another) Q_EMIT AnotherRecord();
}

// --- Where it stands ---

bool RecordCursor::HasRecord() const {
  return Position() > 0;
}

qsizetype RecordCursor::Position() const {
  return rows_ ? rows_->AbsolutePosition() : 0;
}

qsizetype RecordCursor::Count() const {
  return rows_ ? rows_->RecordCount() : 0;
}

QString RecordCursor::PositionText() const {
  return QStringLiteral("%1%2 of %3")
      .arg(position_prefix_, QString::number(Position()), QString::number(Count()));
}

QVariant RecordCursor::Key() const {
  return Value(source_.key);
}

QStringList RecordCursor::Keys() const {
  QStringList keys;
  if (!HasRecord()) return keys;
  const int field = rows_->Field(source_.key);
  const qsizetype position = Position();
  for (rows_->MoveFirst(); !rows_->Eof(); rows_->MoveNext()) keys.append(rows_->Value(field).toString());
  rows_->MoveTo(position);
  return keys;
}

QVariant RecordCursor::Value(const QString& column) const {
  return HasRecord() ? rows_->Value(column) : QVariant();
}

bool RecordCursor::YesNo(const QString& column) const {
  return HasRecord() && rows_->YesNo(column);
}

// --- Moving ---

void RecordCursor::MoveFirst() {
  Move(Step::kFirst);
}

void RecordCursor::MovePrevious() {
  Move(Step::kPrevious);
}

void RecordCursor::MoveNext() {
  Move(Step::kNext);
}

void RecordCursor::MoveLast() {
  Move(Step::kLast);
}

void RecordCursor::Move(Step step) {
  const QPointer<RecordCursor> self(this);
  if (!HasRecord() || !Leave() || !self || !HasRecord()) return;
  const qsizetype count = Count();
  const qsizetype position = Position();
  // The record at the end stays the current one while the hook is at work: what the hook lets in meets no
  // gap.
  const auto* hook = step == Step::kNext && position == count   ? &past_end_
                     : step == Step::kPrevious && position == 1 ? &before_start_
                                                                : nullptr;
  if (hook == nullptr) {
    const qsizetype to[] = {1, position - 1, position + 1, count};
    rows_->MoveTo(to[static_cast<int>(step)]);
  } else if (*hook) {
    (*hook)();
  }
  if (self) Tell();
}

bool RecordCursor::Find(const QVariant& key_value) {
  const QPointer<RecordCursor> self(this);
  if (!HasRecord() || !Leave() || !self || !HasRecord()) return false;
  const qsizetype position = Position();
  if (!StandOn(*rows_, source_.key, key_value)) {
    rows_->MoveTo(position);
    return false;
  }
  Tell();
  return true;
}

// --- Leaving a record ---

bool RecordCursor::Leave() {
  if (leaving_) return false;
  leaving_ = true;
  const QPointer<RecordCursor> self(this);
  // Those who are asked may bring others in.
  bool may_leave = true;
  try {
    for (std::size_t i = 0; self && may_leave && i < guards_.size(); ++i) {
      const auto guard = guards_[i];
      may_leave = guard();
    }
  } catch (...) {
    if (self) leaving_ = false;
    throw;
  }
  if (self) leaving_ = false;
  return self && may_leave;
}

// --- Changing ---

bool RecordCursor::Lock() {
  if (locked_) return true;
  const QPointer<RecordCursor> self(this);
  if (!Leave() || !self) return false;
  locked_ = true;
  Q_EMIT LockChanged();
  return true;
}

void RecordCursor::Unlock() {
  if (!locked_) return;
  locked_ = false;
  Q_EMIT LockChanged();
}

void RecordCursor::RequireUnlocked() const {
  if (locked_) throw DatabaseError(database_error::kReadOnly, QStringLiteral("The records are locked."));
}

std::unique_ptr<Recordset> RecordCursor::StandAnew() {
  if (!HasRecord()) throw NoCurrentRecord();
  const QVariant key = Key();
  auto rows = ReadAnew(statement_);
  if (StandOn(*rows, source_.key, key)) return rows;
  const DatabaseError gone = RecordIsGone(key);
  StandAt(*rows, Position());
  Take(std::move(rows));
  const QPointer<RecordCursor> self(this);
  Q_EMIT KeysChanged();
  if (self) Tell();
  throw gone;
}

void RecordCursor::Commit(Recordset& rows, const QVariant& key_value) const {
  try {
    rows.UpdateBatch();
  } catch (const DatabaseError& error) {
    if (error.Number() != database_error::kDuplicateValue) throw;
    throw DatabaseError(error.Number(),
                        QStringLiteral("There is a record \"%1\" already.").arg(key_value.toString()));
  }
}

void RecordCursor::Store(const QString& column, const QVariant& value) {
  RequireUnlocked();
  const bool is_key = column.compare(source_.key, Qt::CaseInsensitive) == 0;
  if (is_key && IsNothing(value)) throw KeyIsMissing(source_.key);
  const QVariant key = Key();
  auto rows = StandAnew();
  rows->SetValue(column, value);
  Commit(*rows, is_key ? value : key);
  if (is_key && statement_ != source_.All()) statement_ = source_.One(value);
  Take(std::move(rows));
  const QPointer<RecordCursor> self(this);
  if (is_key && value != key) {
    Q_EMIT Renamed(key, value);
    if (self) Q_EMIT KeysChanged();
  }
  if (self) Tell();
}

bool RecordCursor::Add(const Values& values) {
  RequireUnlocked();
  const auto key = std::find_if(values.begin(), values.end(), [this](const auto& value) {
    return value.first.compare(source_.key, Qt::CaseInsensitive) == 0;
  });
  if (key == values.end() || IsNothing(key->second)) throw KeyIsMissing(source_.key);
  const QPointer<RecordCursor> self(this);
  if (!Leave() || !self) return false;
  const qsizetype position = Position();
  const QString all = source_.All();
  const auto rows = ReadAnew(all);
  rows->AddNew();
  for (const auto& [column, value] : values) rows->SetValue(column, value);
  Commit(*rows, key->second);
  statement_ = all;
  // In its place among the others.
  auto sorted = ReadAnew(all);
  if (!StandOn(*sorted, source_.key, key->second)) StandAt(*sorted, position);
  Take(std::move(sorted));
  Q_EMIT KeysChanged();
  if (self) Tell();
  return true;
}

void RecordCursor::Delete() {
  RequireUnlocked();
  auto rows = StandAnew();
  const qsizetype position = rows->AbsolutePosition();
  rows->Delete();
  rows->UpdateBatch();
  StandAt(*rows, position);
  Take(std::move(rows));
  const QPointer<RecordCursor> self(this);
  Q_EMIT KeysChanged();
  if (self) Tell();
}

}  // namespace zelmar
