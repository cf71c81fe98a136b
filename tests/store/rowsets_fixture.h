// A table of three rows for the tests of recordsets.
#pragma once

#include "store/store_fixture.h"

namespace zelmar::testing_support {

class Rowsets : public StoreTest {
 protected:
  Rowsets() : connection(database.Connect()) {
    connection->Execute(
        QStringLiteral("CREATE TABLE t (CodeName TEXT COLLATE NOCASE, Word TEXT, n INTEGER, r REAL)"));
    for (const char* row : {"'One','first',1,0.5", "'Two','second',2,1.5", "'Three',NULL,NULL,NULL"})
      connection->Execute(QStringLiteral("INSERT INTO t VALUES (%1)").arg(QString::fromLatin1(row)));
  }

  std::unique_ptr<Recordset> Open(CursorType cursor = CursorType::kStatic,
                                  LockType lock = LockType::kBatchOptimistic) {
    return Recordset::OpenTable(connection, QStringLiteral("[T]"), cursor, lock);
  }
  QStringList Names() const { return database.Column(QStringLiteral("SELECT CodeName FROM t")); }

  std::shared_ptr<Connection> connection;
  const QString code_name = QStringLiteral("codename");
  const QString word = QStringLiteral("WORD");
  const QString n = QStringLiteral("N");
  const QString r = QStringLiteral("R");
};

}  // namespace zelmar::testing_support
