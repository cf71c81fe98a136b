// The members of Recordset that find rows and read their fields.

#include "store/database_error.h"
#include "store/recordset.h"
#include "store/sql_tokens.h"
#include "store/tune_name.h"

namespace zelmar {

namespace {

// Columns that hold a CodeName are declared to compare without regard to case; Find keeps to that.
bool HoldsCodeName(const QString& column) {
  return column.compare(u"CodeName", Qt::CaseInsensitive) == 0 ||
         column.compare(u"FileName", Qt::CaseInsensitive) == 0;
}

bool IsNumber(const QVariant& value) {
  return value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Double;
}

}  // namespace

void Recordset::Find(const QString& criteria) {
  const SqlTokens tokens = SqlTokensOf(criteria);
  const bool understood = tokens.size() == 3 && tokens[0].IsName() && tokens[1].IsSign(u"=") &&
                          (tokens[2].kind == SqlTokenKind::kText || tokens[2].kind == SqlTokenKind::kNumber);
  if (!understood)
    throw DatabaseError(database_error::kSyntax, QStringLiteral("Cannot search for: %1").arg(criteria));
  if (at_end_ || before_start_) throw NoCurrentRecord();
  const int field = Field(tokens[0].text);
  const bool is_text = tokens[2].kind == SqlTokenKind::kText;
  const QVariant wanted = is_text ? QVariant(tokens[2].text) : QVariant(tokens[2].text.toDouble());
  if (!streaming_ && CurrentRowIsDeleted()) MoveNext();
  while (!at_end_ && !Holds(field, wanted)) MoveNext();
}

bool Recordset::Holds(int field, const QVariant& value) const {
  const QVariant held = Value(field);
  if (held.isNull()) return false;
  if (value.typeId() == QMetaType::Double) return IsNumber(held) && held.toDouble() == value.toDouble();
  if (HoldsCodeName(FieldName(field)))
    return FoldedCodeName(held.toString()) == FoldedCodeName(value.toString());
  return held.toString() == value.toString();
}

int Recordset::Field(const QString& name) const {
  for (int i = 0; i < FieldCount(); ++i)
    if (FieldName(i).compare(name, Qt::CaseInsensitive) == 0) return i;
  throw DatabaseError(database_error::kItemNotFound,
                      QStringLiteral("The rows have no field '%1'.").arg(name));
}

bool Recordset::CurrentRowIsDeleted() const {
  return !at_end_ && !before_start_ && rows_[current_].IsGone();
}

const Recordset::Row& Recordset::CurrentRow() const {
  if (at_end_ || before_start_ || rows_[current_].IsGone()) throw NoCurrentRecord();
  return rows_[current_];
}

QVariant Recordset::Value(int field) const {
  if (streaming_) {
    if (at_end_) throw NoCurrentRecord();
    return query_->value(first_field_ + field);
  }
  return CurrentRow().values.at(static_cast<std::size_t>(field));
}

QString Recordset::Text(int field) const {
  const QVariant value = Value(field);
  if (value.isNull()) throw Failure(error_number::kInvalidNull, QStringLiteral("Invalid use of Null"));
  return value.toString();
}

QString Recordset::TextOrBlank(int field) const {
  const QVariant value = Value(field);
  return value.isNull() ? QStringLiteral(" ") : value.toString();
}

bool Recordset::YesNo(int field) const {
  const QVariant value = Value(field);
  if (value.isNull()) return false;
  if (value.typeId() == QMetaType::QString) {
    const QString word = value.toString().trimmed().toLower();
    if (word == u"true" || word == u"yes" || word == u"on") return true;
    if (word == u"false" || word == u"no" || word == u"off") return false;
  }
  return recordset_detail::FloatingNumber(value) != 0.0;
}

namespace recordset_detail {

namespace {

Failure TypeMismatch() {
  return Failure(error_number::kTypeMismatch, QStringLiteral("Type mismatch"));
}

std::int64_t Rounded(double value) {
  constexpr double kLimit = 9223372036854775808.0;  // 2 to the power of 63
  const double whole = std::nearbyint(value);
  if (!(whole >= -kLimit && whole < kLimit)) throw OverflowError();
  return static_cast<std::int64_t>(whole);
}

}  // namespace

std::int64_t WholeNumber(const QVariant& value) {
  if (value.typeId() == QMetaType::LongLong) return value.toLongLong();
  if (value.typeId() == QMetaType::QString && !value.isNull()) {
    bool whole = false;
    const qlonglong number = value.toString().trimmed().toLongLong(&whole);
    if (whole) return number;
  }
  return Rounded(FloatingNumber(value));
}

double FloatingNumber(const QVariant& value) {
  if (value.isNull()) throw Failure(error_number::kInvalidNull, QStringLiteral("Invalid use of Null"));
  if (IsNumber(value)) return value.toDouble();
  if (value.typeId() != QMetaType::QString) throw TypeMismatch();
  bool ok = false;
  const double number = value.toString().trimmed().toDouble(&ok);
  if (!ok) throw TypeMismatch();
  return number;
}

}  // namespace recordset_detail

}  // namespace zelmar
