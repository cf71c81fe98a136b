// The indexes of a library: that they serve the statements of a load, and how an older library gets them.
#include "store/library_indexes.h"

#include <QSqlDatabase>

#include "platform/disk_room.h"
#include "store/loading_fixture.h"
#include "store/people_collation.h"
#include "store/schema.h"
#include "store/statement_dialect.h"
#include "support/full_disk.h"
#include "support/other_program.h"

namespace zelmar::testing_support {
namespace {

class LibraryIndexing : public StoreTest {
 protected:
  QStringList Indexes() const {
    return database.Column(
        QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'index' AND name LIKE "
                       "'%ByTune' ORDER BY name"));
  }
  void MakeOld() const {
    OtherProgram program(database.Path());
    for (const LibraryIndex& index : LibraryIndexes())
      program.Run(QStringLiteral("DROP INDEX ") + index.name);
  }
  // How the engine runs a statement of the system.
  QString PlanOf(const QString& statement) const {
    QStringList steps;
    {
      auto engine = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("plan"));
      engine.setDatabaseName(database.Path());
      EXPECT_TRUE(engine.open());
      AddPeopleCollation(engine);
      QSqlQuery query(engine);
      EXPECT_TRUE(
          query.exec(QStringLiteral("EXPLAIN QUERY PLAN ") + StatementDialect::Translate(statement).sql));
      while (query.next()) steps.append(query.value(3).toString());
      engine.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("plan"));
    return steps.join(u';');
  }

  const QStringList all = {QStringLiteral("tblThemesByTune"), QStringLiteral("tblTracksByTune"),
                           QStringLiteral("tblWordsByTune")};
};

TEST_F(LibraryIndexing, ServesTheStatementsOfALoadAndOfASave) {
  const struct {
    const char* statement;
    const char* step;
  } statements[] = {
      {"SELECT * FROM tblMelodies WHERE CodeName = 'x'",
       "SEARCH tblMelodies USING INDEX sqlite_autoindex_tblMelodies_1 (CodeName=?)"},
      {"SELECT * FROM tblTracks WHERE CodeName = 'x' ORDER BY TrackNo",
       "SEARCH tblTracks USING INDEX tblTracksByTune (CodeName=?)"},
      {"SELECT * FROM tblWords WHERE FileName = 'x' ORDER BY Bar,Beat,Tick",
       "SEARCH tblWords USING INDEX tblWordsByTune (FileName=?)"},
      {"SELECT * FROM tblThemes WHERE CodeName = 'x' ORDER BY ThemeNo",
       "SEARCH tblThemes USING INDEX tblThemesByTune (CodeName=?)"},
      {"DELETE * FROM tblTracks WHERE CodeName = 'x'",
       "SEARCH tblTracks USING INDEX tblTracksByTune (CodeName=?)"},
      {"DELETE * FROM tblWords WHERE FileName = 'x'",
       "SEARCH tblWords USING INDEX tblWordsByTune (FileName=?)"},
      {"DELETE * FROM tblThemes WHERE CodeName = 'x'",
       "SEARCH tblThemes USING INDEX tblThemesByTune (CodeName=?)"},
  };
  for (const auto& line : statements) {
    const QString plan = PlanOf(QString::fromLatin1(line.statement));
    EXPECT_TRUE(plan.startsWith(QString::fromLatin1(line.step))) << plan.toStdString();
    EXPECT_FALSE(plan.contains(QStringLiteral("SCAN"))) << plan.toStdString();
  }
}

TEST_F(LibraryIndexing, FindsNamesWithoutRegardToCase) {
  database.AddRow(QStringLiteral("tblWords"), {QStringLiteral("Moon"), 1, 1, 0, QStringLiteral("la")});
  EXPECT_EQ(Rows(QStringLiteral("SELECT WordText FROM tblWords WHERE FileName = 'mOON'")),
            QStringList(QStringLiteral("la")));
  database.Execute(QStringLiteral("DELETE * FROM tblWords WHERE FileName = 'MOON'"));
  EXPECT_TRUE(Rows(QStringLiteral("SELECT * FROM tblWords")).isEmpty());
}

TEST_F(LibraryIndexing, AnOlderLibraryGetsThemWithItsFirstChangeAndNotBefore) {
  MakeOld();
  database.AddTune(QStringLiteral("Tune"), {QStringLiteral("C4")});
  const QByteArray before = BytesOf(database.Path());
  const auto connection = database.Connect();
  Recordset::OpenTable(connection, QStringLiteral("tblTracks"));
  EXPECT_TRUE(Indexes().isEmpty());
  EXPECT_EQ(BytesOf(database.Path()), before) << "reading changes nothing";
  connection->Execute(QStringLiteral("INSERT INTO tblFamily VALUES ('Strings')"));
  EXPECT_EQ(Indexes(), all);
  EXPECT_EQ(database.Column(QStringLiteral("SELECT TrackName FROM tblTracks WHERE CodeName = 'tune'")).size(),
            1);
  EXPECT_EQ(database.Column(QStringLiteral("SELECT * FROM pragma_integrity_check")),
            QStringList(QStringLiteral("ok")));
}

TEST_F(LibraryIndexing, OnlyThoseThatLackAreMade) {
  OtherProgram(database.Path()).Run("DROP INDEX tblWordsByTune");
  database.Execute(QStringLiteral("INSERT INTO tblFamily VALUES ('Strings')"));
  EXPECT_EQ(Indexes(), all);
}

TEST_F(LibraryIndexing, ALibraryThatLacksATableGetsThoseOfTheOthers) {
  MakeOld();
  OtherProgram(database.Path()).Run("DROP TABLE tblThemes");
  database.Execute(QStringLiteral("INSERT INTO tblFamily VALUES ('Strings')"));
  EXPECT_EQ(Indexes(), all.mid(1));
}

TEST_F(LibraryIndexing, WhereOneCannotBeMadeNoneIsAndTheChangeIs) {
  MakeOld();
  {
    OtherProgram program(database.Path());
    program.Run("DROP TABLE tblThemes");
    program.Run("CREATE TABLE tblThemes (Other TEXT)");
  }
  database.Execute(QStringLiteral("INSERT INTO tblFamily VALUES ('Strings')"));
  EXPECT_TRUE(Indexes().isEmpty());
  EXPECT_EQ(database.Column(QStringLiteral("SELECT * FROM tblFamily")).size(), 1);
}

class LibraryWithManyWords : public LibraryIndexing {
 protected:
  LibraryWithManyWords() {
    MakeOld();
    OtherProgram(database.Path())
        .Run(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) INSERT INTO "
            "tblWords "
            "SELECT 'tune ' || i, 1, 1, 1, 'la' FROM n");
  }
  // The change that would bring the indexes along is made without them.
  void ExpectNoneIsMade(const QString& path) {
    Connection::Open(path)->Execute(QStringLiteral("INSERT INTO tblFamily VALUES ('Strings')"));
    const auto names = Connection::Open(path);
    EXPECT_TRUE(Recordset::OpenStatement(names, QStringLiteral("SELECT * FROM sqlite_master WHERE name LIKE "
                                                               "'%ByTune'"))
                    ->Eof());
    EXPECT_EQ(Recordset::OpenTable(names, QStringLiteral("tblFamily"))->RecordCount(), 1);
    EXPECT_EQ(
        Recordset::OpenStatement(names, QStringLiteral("SELECT * FROM pragma_integrity_check"))->Text(0),
        QStringLiteral("ok"));
  }
};

TEST_F(LibraryWithManyWords, GetsNoIndexWhereOneDoesNotFit) {
  const FullDisk full(48 * 1024);
  ExpectNoneIsMade(database.Path());
}

// Room that a save may need is not taken for them.
TEST_F(LibraryWithManyWords, GetsNoIndexWhereTheDiskHasLittleRoom) {
  const auto size = static_cast<std::uint64_t>(QFileInfo(database.Path()).size());
  SetRoomOnDisk([size](const QString&) { return 2 * size - 1; });
  ExpectNoneIsMade(database.Path());
  SetRoomOnDisk([size](const QString&) { return 2 * size; });
  database.Execute(QStringLiteral("DELETE * FROM tblFamily"));
  SetRoomOnDisk({});
  EXPECT_EQ(Indexes(), all);
}

// What another program does at this moment is no reason to wait twice.
TEST_F(LibraryIndexing, ADatabaseThatIsHeldGetsThemAtTheNextTime) {
  MakeOld();
  {
    const LockedDatabase locked(database);
    EXPECT_EQ(FailureNumber([&] { database.Execute(QStringLiteral("DELETE * FROM tblFamily")); }),
              database_error::kInUse);
  }
  EXPECT_TRUE(Indexes().isEmpty());
  database.Execute(QStringLiteral("DELETE * FROM tblFamily"));
  EXPECT_EQ(Indexes(), all);
}

}  // namespace
}  // namespace zelmar::testing_support
