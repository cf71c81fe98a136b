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

// A copy of the connection: it may serve events while it waits, and its holder may go meanwhile.
std::unique_ptr<Recordset> ReadAnew(std::shared_ptr<Connection> connection, const QString& statement) {
  if (!connection) throw NoCurrentRecord();
  return Recordset::OpenStatement(std::move(connection), statement, CursorType::kStatic,
                                  LockType::kBatchOptimistic);
}

// A key that is taken is told in words.
void Commit(Recordset& rows, const QVariant& key_value) {
  try {
    rows.UpdateBatch();
  } catch (const DatabaseError& error) {
    if (error.Number() != database_error::kDuplicateValue) throw;
    throw DatabaseError(error.Number(),
                        QStringLiteral("There is a record \"%1\" already.").arg(key_value.toString()));
  }
}

bool IsNothing(const QVariant& key) {
  return key.isNull() || key.toString().trimmed().isEmpty();
}

DatabaseError KeyIsMissing(const QString& column) {
  return {database_error::kItemNotFound, QStringLiteral("A record needs a value in %1.").arg(column)};
}

}  // namespace

// While it lives no other change begins and no record is left. It may outlive the cursor.
class RecordCursor::Work {
 public:
  explicit Work(RecordCursor* cursor) : cursor_(cursor) {
    if (cursor->is_changing_)
      throw DatabaseError(database_error::kInUse, QStringLiteral("The records are being changed already."));
    cursor->is_changing_ = true;
  }
  ~Work() {
    if (cursor_) cursor_->is_changing_ = false;
  }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

  // False once the cursor went.
  bool GoesOn() const { return !cursor_.isNull(); }

 private:
  QPointer<RecordCursor> cursor_;
};

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
  {
    const Work work(this);
    auto rows = ReadAnew(connection, statement);
    if (!work.GoesOn()) return;
    connection_ = std::move(connection);
    statement_ = statement;
    rows_ = std::move(rows);
  }
  told_key_ = QVariant();
  Tell(KeysAre::kChanged);
}

void RecordCursor::Refresh() {
  {
    const Work work(this);
    const QVariant key = Key();
    const qsizetype position = Position();
    auto rows = ReadAnew(connection_, statement_);
    if (!work.GoesOn()) return;
    if (!StandOn(*rows, source_.key, key)) StandAt(*rows, position);
    rows_ = std::move(rows);
  }
  Tell(KeysAre::kChanged);
}

void RecordCursor::Tell(KeysAre keys) {
  const QVariant key = Key();
  const bool is_another = key != told_key_;
  told_key_ = key;
  const QPointer<RecordCursor> self(this);
  if (keys == KeysAre::kChanged) Q_EMIT KeysChanged();
  if (self) Q_EMIT Moved();
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
  if ((step == Step::kNext && position == count) || (step == Step::kPrevious && position == 1)) {
    // A copy: the hook may end the cursor, and with it itself.
    const auto hook = step == Step::kNext ? past_end_ : before_start_;
    if (hook) hook();
  } else {
    const qsizetype to[] = {1, position - 1, position + 1, count};
    rows_->MoveTo(to[static_cast<int>(step)]);
  }
  if (self) Tell(KeysAre::kSame);
}

bool RecordCursor::Find(const QVariant& key_value) {
  const QPointer<RecordCursor> self(this);
  if (!HasRecord() || !Leave() || !self || !HasRecord()) return false;
  const qsizetype position = Position();
  if (!StandOn(*rows_, source_.key, key_value)) {
    rows_->MoveTo(position);
    return false;
  }
  Tell(KeysAre::kSame);
  return true;
}

// --- Leaving a record ---

bool RecordCursor::Leave() {
  if (is_leaving_ || is_changing_) return false;
  is_leaving_ = true;
  const QPointer<RecordCursor> self(this);
  bool may_leave = false;
  try {
    may_leave = AskGuards();
  } catch (...) {
    if (self) is_leaving_ = false;
    throw;
  }
  if (self) is_leaving_ = false;
  return self && may_leave;
}

bool RecordCursor::AskGuards() {
  const QPointer<RecordCursor> self(this);
  // Those who are asked may bring others in.
  for (std::size_t i = 0; self && i < guards_.size(); ++i) {
    const auto may_leave = guards_[i];
    if (!may_leave()) return false;
  }
  return true;
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

template <typename Change>
bool RecordCursor::ChangeRecord(Change change) {
  if (!HasRecord()) throw NoCurrentRecord();
  const QVariant key = Key();
  bool is_there = false;
  {
    const Work work(this);
    const qsizetype position = Position();
    const QString key_column = source_.key;
    auto rows = ReadAnew(connection_, statement_);
    is_there = StandOn(*rows, key_column, key);
    if (is_there)
      change(*rows);
    else
      StandAt(*rows, position);
    if (!work.GoesOn()) return false;
    rows_ = std::move(rows);
  }
  if (is_there) return true;
  Tell(KeysAre::kChanged);
  throw RecordIsGone(key);
}

void RecordCursor::Store(const QString& column, const QVariant& value) {
  RequireUnlocked();
  const bool is_key = column.compare(source_.key, Qt::CaseInsensitive) == 0;
  if (is_key && IsNothing(value)) throw KeyIsMissing(source_.key);
  const QVariant key = Key();
  const bool goes_on = ChangeRecord([&](Recordset& rows) {
    rows.SetValue(column, value);
    Commit(rows, is_key ? value : key);
  });
  if (!goes_on) return;
  const bool is_renamed = is_key && value != key;
  if (is_renamed && statement_ != source_.All()) statement_ = source_.One(value);
  const QPointer<RecordCursor> self(this);
  if (is_renamed) Q_EMIT Renamed(key, value);
  if (self) Tell(is_renamed ? KeysAre::kChanged : KeysAre::kSame);
}

bool RecordCursor::Add(const Values& values) {
  RequireUnlocked();
  const auto key = std::find_if(values.begin(), values.end(), [this](const auto& value) {
    return value.first.compare(source_.key, Qt::CaseInsensitive) == 0;
  });
  if (key == values.end() || IsNothing(key->second)) throw KeyIsMissing(source_.key);
  const QPointer<RecordCursor> self(this);
  if (!Leave() || !self) return false;
  {
    const Work work(this);
    const qsizetype position = Position();
    const auto connection = connection_;
    const QString key_column = source_.key;
    const QString all = source_.All();
    const auto rows = ReadAnew(connection, all);
    rows->AddNew();
    for (const auto& [column, value] : values) rows->SetValue(column, value);
    Commit(*rows, key->second);
    // In its place among the others.
    auto sorted = ReadAnew(connection, all);
    if (!work.GoesOn()) return true;
    if (!StandOn(*sorted, key_column, key->second)) StandAt(*sorted, position);
    statement_ = all;
    rows_ = std::move(sorted);
  }
  Tell(KeysAre::kChanged);
  return true;
}

void RecordCursor::Delete() {
  RequireUnlocked();
  const bool goes_on = ChangeRecord([](Recordset& rows) {
    const qsizetype position = rows.AbsolutePosition();
    rows.Delete();
    rows.UpdateBatch();
    StandAt(rows, position);
  });
  if (goes_on) Tell(KeysAre::kChanged);
}

}  // namespace zelmar
