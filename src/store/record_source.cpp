#include "store/record_source.h"

#include "store/sql_tokens.h"

namespace zelmar {

namespace {

QString With(const QString& select, const QString& condition, const QString& order) {
  QString statement = select;
  if (!condition.isEmpty()) statement += QStringLiteral(" WHERE ") + condition;
  if (!order.isEmpty()) statement += u' ' + order;
  return statement;
}

}  // namespace

QString InStatement(const QVariant& value) {
  if (value.isNull()) return QStringLiteral("NULL");
  if (value.typeId() == QMetaType::QString) return SqlTextOf({TextToken(value.toString())});
  return value.toString();
}

QString EqualsInStatement(const QString& column, const QVariant& value) {
  return SqlTextOf({{SqlTokenKind::kName, column}}) + QStringLiteral(" = ") + InStatement(value);
}

QString RecordSource::All() const {
  return With(select, condition, order);
}

QString RecordSource::One(const QVariant& key_value) const {
  return With(select, EqualsInStatement(key, key_value), order);
}

}  // namespace zelmar
