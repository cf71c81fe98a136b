// Three composers, a walk through them, and what a window test of it needs.
#pragma once

#include "store/connection.h"
#include "store/record_cursor.h"
#include "support/sample_database.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {

class RecordsTest : public ::testing::Test {
 protected:
  RecordsTest() {
    for (const char* row :
         {"'Bach','Johann',1685,1750,'Germany','Baroque'", "'Dvořák','Antonín',1841,1904,NULL,'Romantic'",
          "'O''Carolan','Turlough',1670,NULL,'Ireland',NULL"})
      database_.Execute(QStringLiteral("INSERT INTO tblComposer VALUES (%1)").arg(QString::fromUtf8(row)));
  }

  static QString Word(const char* text) { return QString::fromUtf8(text); }
  // The columns of one composer between bars.
  QString Stored(const char* composer, const char* columns) const {
    const QString list = Word(columns);
    QStringList values;
    for (const QString& column : list.split(u','))
      values += database_.Column(QStringLiteral("SELECT %1 FROM tblComposer WHERE COMPOSER = %2")
                                     .arg(column, InStatement(Word(composer))));
    return values.join(u'|');
  }
  void Open() { cursor_.OpenAll(database_.Connect()); }

  testing_support::ScriptedPlatform platform_;
  testing_support::SampleDatabase database_;
  RecordCursor cursor_{{QStringLiteral("select * from tblComposer"),
                        {},
                        QStringLiteral("Order by COMPOSER"),
                        QStringLiteral("COMPOSER")},
                       QStringLiteral("Composer No. ")};
};

}  // namespace zelmar
