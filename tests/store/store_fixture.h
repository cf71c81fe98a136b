// What the tests of the store share: scripted services, a sample database, and rows as texts.
#pragma once

#include <gtest/gtest.h>

#include <QFile>

#include "model/globals.h"
#include "store/database_error.h"
#include "store/recordset.h"
#include "support/sample_database.h"
#include "support/scripted_services.h"

namespace zelmar::testing_support {

inline void PrintTo(const QStringList& list, std::ostream* out) {
  *out << list.join(u'\n').toStdString();
}

class StoreTest : public testing::Test {
 protected:
  // Each row as its fields between bars; a null reads "null".
  QStringList Rows(const QString& statement) const {
    const auto rows = Recordset::OpenStatement(database.Connect(), statement);
    QStringList lines;
    for (; !rows->Eof(); rows->MoveNext()) {
      QStringList fields;
      for (int i = 0; i < rows->FieldCount(); ++i)
        fields.append(rows->IsNull(i) ? QStringLiteral("null") : rows->Text(i));
      lines.append(fields.join(u'|'));
    }
    return lines;
  }

  ScriptedPlatform platform;
  SampleDatabase database;
};

// The number of the failure that `command` ends with; 0 when it ends well.
template <typename Command>
int FailureNumber(Command command) {
  try {
    command();
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return 0;
}

inline QByteArray BytesOf(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return file.readAll();
}

}  // namespace zelmar::testing_support
