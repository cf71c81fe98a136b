// Where a walk through records takes them from: the pieces of its statements, and values as statements hold
// them.
#pragma once

#include <QString>
#include <QVariant>

namespace zelmar {

// "'O''Carolan'" for a text, "12" for a number, "NULL" for a null.
QString InStatement(const QVariant& value);

// "[Column] = value", as a condition of a statement and as what Recordset::Find looks for.
QString EqualsInStatement(const QString& column, const QVariant& value);

struct RecordSource {
  QString select;          // "select * from tblComposer"
  QString condition = {};  // of the walk through all records: "composer <> 'Various'"
  QString order = {};      // "Order by COMPOSER"
  QString key = {};        // a column whose values tell the records apart

  QString All() const;
  // The one record, which the condition need not hold for.
  QString One(const QVariant& key_value) const;
};

}  // namespace zelmar
