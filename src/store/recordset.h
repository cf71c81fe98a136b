// The rows of a table or of a statement, with a cursor.
//
// A forward-only cursor streams: one row is held at a time. A key-set cursor reads rows as they are reached
// and keeps them. A static cursor holds all rows from the start. Rows can be changed where the lock type
// allows it and the rows are those of one table; changes wait until UpdateBatch. A forward-only cursor with a
// batch-optimistic lock takes new rows alone: the first ends the reading, and each goes out of memory once it
// is committed.
//
// Fields are named without regard to case. Loops over many rows resolve a name once, by Field, and read by
// its number.
#pragma once

#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <concepts>
#include <memory>
#include <optional>
#include <vector>

#include "platform/numbers.h"
#include "store/connection.h"
#include "store/gaps.h"

namespace zelmar {

struct EngineStatement;

enum class CursorType { kForwardOnly, kKeyset, kStatic };
enum class LockType { kReadOnly, kOptimistic, kBatchOptimistic };

class Recordset final : private OpenRows {
 public:
  // Throws DatabaseError; its number is error_number::kTableNotFound where a table is missing.
  static std::unique_ptr<Recordset> OpenStatement(std::shared_ptr<Connection> connection,
                                                  const QString& statement,
                                                  CursorType cursor = CursorType::kForwardOnly,
                                                  LockType lock = LockType::kReadOnly);
  // `table` may stand between square brackets.
  static std::unique_ptr<Recordset> OpenTable(std::shared_ptr<Connection> connection, const QString& table,
                                              CursorType cursor = CursorType::kStatic,
                                              LockType lock = LockType::kBatchOptimistic);
  ~Recordset();
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  // Gives up the rows and what was not committed. May be called again.
  void Close();

  // --- Moving ---

  // A fresh recordset stands on its first row. Moves throw DatabaseError (kNoCurrentRecord) on an empty set
  // and beyond either end, and (kForwardOnly) backwards on a forward-only cursor.
  void MoveFirst();
  void MoveNext();
  void MovePrevious();
  void MoveLast();
  bool Eof() const { return at_end_; }
  bool Bof() const { return before_start_; }

  // Counts all rows, those not yet reached too.
  qsizetype RecordCount();
  // Number of the current row, from 1; 0 when there is none.
  qsizetype AbsolutePosition() const;
  void MoveTo(qsizetype position);

  // Goes forward from the current row, that row included, to the first for which "Column = 'text'" or "Column
  // = 1" holds; to the end when there is none. Throws DatabaseError without a current row.
  void Find(const QString& criteria);

  // --- Reading the current row ---

  // The number of a field, from 0. Throws DatabaseError (kItemNotFound).
  int Field(const QString& name) const;
  int FieldCount() const { return static_cast<int>(names_.size()); }
  const QString& FieldName(int field) const { return names_[static_cast<std::size_t>(field)]; }

  QVariant Value(int field) const;
  bool IsNull(int field) const { return Value(field).isNull(); }
  // Failure 94 for a null.
  QString Text(int field) const;
  // One blank for a null.
  QString TextOrBlank(int field) const;
  // A number or the text of one, in the width of T; a half goes to the even neighbour. Failure 94 for a null,
  // 13 for what is no number; OverflowError when it does not fit.
  template <typename T>
  T Number(int field) const;
  // False for a null, since a yes/no column has no third state.
  bool YesNo(int field) const;

  QVariant Value(const QString& name) const { return Value(Field(name)); }
  bool IsNull(const QString& name) const { return IsNull(Field(name)); }
  QString Text(const QString& name) const { return Text(Field(name)); }
  QString TextOrBlank(const QString& name) const { return TextOrBlank(Field(name)); }
  template <typename T>
  T Number(const QString& name) const {
    return Number<T>(Field(name));
  }
  bool YesNo(const QString& name) const { return YesNo(Field(name)); }

  // The child rows of the current row of a two-level shape: a static recordset of its own.
  std::unique_ptr<Recordset> Chapter(const QString& name) const;

  // --- Changing ---

  // Adds a row of nulls at the end and stands on it.
  void AddNew();
  // Changes a field of the current row. An invalid QVariant stores a null, any text is stored as it is.
  void SetValue(int field, const QVariant& value);
  void SetValue(const QString& name, const QVariant& value) { SetValue(Field(name), value); }
  // Takes the current row out; the recordset has no current row until the next move. Committed at once with
  // an optimistic lock, by UpdateBatch with a batch-optimistic one.
  void Delete();
  // Commits all changed, added and deleted rows at once, or none of them.
  void UpdateBatch();

 private:
  friend class Connection;
  // A row that is deleted before it was ever stored is kDropped: nothing of it goes to the engine.
  enum class RowState { kStored, kChanged, kAdded, kDeleted, kDropped };
  struct Row {
    std::vector<QVariant> values;
    std::vector<bool> written;  // fields that wait for UpdateBatch; empty when none does
    qint64 row_id = 0;
    RowState state = RowState::kStored;

    bool IsGone() const { return state == RowState::kDeleted || state == RowState::kDropped; }
  };
  struct ShapeRows;

  explicit Recordset(std::shared_ptr<Connection> connection);
  void Start(const QString& sql, CursorType cursor);
  void StartShape(const EngineStatement& statement);
  void Run();
  void TakeNames();
  void MoveFirstIfAny();
  // Gives up what is open in the engine, and the rows.
  void Drop() override;
  // Streaming: goes to the next row of the query.
  void Step();
  // Reads rows that were not reached yet, until `row` is there or there are no more.
  bool Reach(std::size_t row);
  void FetchAll() { Reach(static_cast<std::size_t>(-1)); }
  Row ReadRow() const;
  // Takes the rows that are left into memory, so that nothing of this recordset is open in the engine.
  void Detach() override;
  // Stands on the first row from `row` on that is not deleted, or at the end.
  void StandForward(std::size_t row);
  void StandBackward(std::size_t rows_before);
  bool Holds(int field, const QVariant& value) const;
  bool CurrentRowIsDeleted() const;
  const Row& CurrentRow() const;
  void RequireChangeable() const;
  void RequireChangeableRow() const;
  // Each sends one row to the engine and gives its identity there.
  qint64 Committed(const Row& row);
  qint64 Insert(const Row& row);
  qint64 Update(const Row& row);
  // The identity of a row once its changes are stored.
  qint64 IdentityOfChanged(const Row& row);

  std::shared_ptr<Connection> connection_;
  QString sql_;
  QString table_;  // the one table that changes go to; empty when there is none
  CursorType cursor_ = CursorType::kStatic;
  LockType lock_ = LockType::kReadOnly;
  std::vector<QString> names_;

  std::optional<QSqlQuery> query_;
  bool streaming_ = false;     // the current row is that of query_
  int first_field_ = 0;        // column of query_ that is field 0
  qsizetype rows_passed_ = 0;  // of a forward-only cursor: the current row's number, or the rows before rows_
  qsizetype counted_ = -1;

  std::vector<Row> rows_;
  std::size_t current_ = 0;
  Gaps gaps_;                         // rows of rows_ that are gone and still keep their place
  std::vector<std::size_t> pending_;  // rows that wait for UpdateBatch, in the order of their first change
  bool at_end_ = true;
  bool before_start_ = true;

  std::optional<QSqlQuery> insert_;
  std::vector<bool> insert_fields_;
  std::optional<QSqlQuery> update_;
  std::vector<bool> update_fields_;
  std::optional<std::size_t> number_key_;  // the field that is the rows' identity, behind all fields for none

  std::shared_ptr<const ShapeRows> children_;
};

namespace recordset_detail {
std::int64_t WholeNumber(const QVariant& value);
double FloatingNumber(const QVariant& value);
}  // namespace recordset_detail

template <typename T>
T Recordset::Number(int field) const {
  const QVariant value = Value(field);
  if constexpr (std::floating_point<T>) {
    return static_cast<T>(recordset_detail::FloatingNumber(value));
  } else {
    return Narrow<T>(recordset_detail::WholeNumber(value));
  }
}

}  // namespace zelmar
