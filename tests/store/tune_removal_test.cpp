// What is removed by the name of a tune, and what no name may remove.
#include "store/tune_removal.h"

#include <functional>

#include "store/saving_fixture.h"
#include "store/schema.h"
#include "store/tune_name.h"

namespace zelmar::testing_support {
namespace {

using Removal = void (*)(const std::shared_ptr<Connection>&, const QString&);
constexpr Removal kRemovals[] = {&RemoveTune, &RemoveTuneReferences, &DropEventTable, &RemoveTrackRows,
                                 &RemoveWordRows};

class RemovedTune : public SavingTest {
 protected:
  RemovedTune() { Save(MakeTune(), "Mine"); }

  QStringList Tables() const { return database.Connect()->TableNames(); }
  qsizetype Count(const char* statement) const { return Select(statement).size(); }
};

TEST_F(RemovedTune, IsGoneButForItsThemesAndOtherTunesStay) {
  const QStringList other = OtherTune();
  database.AddRow(QStringLiteral("tblChords"), {QStringLiteral("Mine"), 1, 1, 0, QStringLiteral("C")});
  RemoveTune(database.Connect(), QStringLiteral("mine"));
  EXPECT_FALSE(Tables().contains(QStringLiteral("Mine")));
  EXPECT_EQ(Count("select * from tblMelodies where CodeName = 'Mine'"), 0);
  EXPECT_EQ(Count("select * from tblWords where FileName = 'Mine'"), 0);
  EXPECT_EQ(Count("select * from tblTracks where CodeName = 'Mine'"), 0);
  EXPECT_EQ(Count("select * from tblThemes where CodeName = 'Mine'"), 2);
  EXPECT_EQ(Count("select * from tblChords"), 1);
  EXPECT_EQ(OtherTune(), other);
}

TEST_F(RemovedTune, WithoutAnEventTableGoesTheSame) {
  database.Execute(QStringLiteral("drop table [Mine]"));
  RemoveTune(database.Connect(), QStringLiteral("Mine"));
  EXPECT_EQ(Count("select * from tblMelodies where CodeName = 'Mine'"), 0);
}

TEST_F(RemovedTune, WhoseTableHoldsNoEventsStaysWhole) {
  database.Execute(QStringLiteral("drop table [Mine]"));
  database.Execute(QStringLiteral("create table [Mine] (Person TEXT)"));
  const QStringList before = Everything();
  for (const Removal removal : {&RemoveTune, &DropEventTable})
    EXPECT_EQ(FailureNumber([&] { removal(database.Connect(), QStringLiteral("Mine")); }),
              database_error::kTableExists);
  EXPECT_EQ(Everything(), before);
}

TEST_F(RemovedTune, GoesWholeOrNotAtAll) {
  database.Execute(QStringLiteral("drop table tblTracks"));
  const QStringList before = Everything();
  for (const Removal removal : {&RemoveTune, &RemoveTuneReferences})
    EXPECT_EQ(FailureNumber([&] { removal(database.Connect(), QStringLiteral("Mine")); }),
              error_number::kTableNotFound);
  EXPECT_EQ(Everything(), before);
}

TEST_F(RemovedTune, ReferencesGoWithTheChordsWhereThereAreAny) {
  database.AddRow(QStringLiteral("tblChords"), {QStringLiteral("Mine"), 1, 1, 0, QStringLiteral("C")});
  for (int time = 0; time < 2; ++time) {
    RemoveTuneReferences(database.Connect(), QStringLiteral("Mine"));
    EXPECT_EQ(Count("select * from tblMelodies where CodeName = 'Mine'"), 0);
    EXPECT_EQ(Count("select * from tblTracks where CodeName = 'Mine'"), 0);
    EXPECT_EQ(Count("select * from tblWords where FileName = 'Mine'"), 0);
    EXPECT_EQ(Count("select * from tblThemes where CodeName = 'Mine'"), 2);
    EXPECT_TRUE(Tables().contains(QStringLiteral("Mine")));
    if (time == 0) {
      EXPECT_EQ(Count("select * from tblChords"), 0);
      Save(MakeTune(), "Mine");
      database.Execute(QStringLiteral("drop table tblChords"));
    }
  }
}

TEST_F(RemovedTune, EachPartCanGoByItself) {
  const QStringList other = OtherTune();
  const auto connection = database.Connect();
  RemoveTrackRows(connection, QStringLiteral("Mine"));
  EXPECT_EQ(Count("select * from tblTracks where CodeName = 'Mine'"), 0);
  EXPECT_EQ(Count("select * from tblWords where FileName = 'Mine'"), 2);
  RemoveWordRows(connection, QStringLiteral("Mine"));
  EXPECT_EQ(Count("select * from tblWords where FileName = 'Mine'"), 0);
  EXPECT_TRUE(Tables().contains(QStringLiteral("Mine")));
  DropEventTable(connection, QStringLiteral("Mine"));
  EXPECT_FALSE(Tables().contains(QStringLiteral("Mine")));
  DropEventTable(connection, QStringLiteral("Mine"));
  EXPECT_EQ(Count("select * from tblMelodies where CodeName = 'Mine'"), 1);
  EXPECT_EQ(OtherTune(), other);
}

// --- The guard ---

TEST_F(RemovedTune, ANameThatIsNoTunesRemovesNothing) {
  QStringList names = SharedTableNames();
  for (const LibraryIndex& index : LibraryIndexes()) names.append(index.name);
  for (const char* name :
       {"tblmelodies", "TEMPLATETUNE", "sqlite_master", "SQLITE_sequence", "sqlite_", "a]b", "]",
        "Mine] ; drop", "O'Carolan", "'", "x' OR 'a'='a", "Mine'; DROP TABLE [Other", "", " ", "\t \n"})
    names.append(QString::fromLatin1(name));
  names.append(QStringLiteral("Mine") + QChar(u'\0'));
  const QStringList before = Everything();
  for (const QString& name : names) {
    EXPECT_TRUE(WhyNotATuneName(name).endsWith(QStringLiteral(" Please choose another.")))
        << name.toStdString();
    for (const Removal removal : kRemovals) {
      const int number = FailureNumber([&] { removal(database.Connect(), name); });
      EXPECT_TRUE(number == database_error::kSyntax || number == database_error::kTableExists)
          << name.toStdString() << ' ' << number;
    }
    const int number = FailureNumber([&] {
      bool failed = false;
      SaveTune(MakeTune(), name, failed, SavePortion::kAll);
    });
    EXPECT_TRUE(number == database_error::kSyntax || number == database_error::kTableExists)
        << name.toStdString();
  }
  EXPECT_EQ(Everything(), before);
}

TEST_F(RemovedTune, WildcardsAndOtherSignsAreLettersOfAName) {
  const QStringList before = Everything();
  for (const char16_t* name :
       {u"%", u"*", u"?", u"_", u"M*", u"M%", u"Min_", u"Mine;", u"--", u"/*", u"\"x\"", u"`", u"[Mine",
        u" Mine ", u"tbl", u"tblMine", u"Ça", u"select", u"1"}) {
    const QString code_name = QString::fromUtf16(name);
    EXPECT_EQ(WhyNotATuneName(code_name), QString());
    for (const Removal removal : kRemovals) removal(database.Connect(), code_name);
    // As the name of a tune it is that tune's alone.
    Save(MakeTune(), code_name.toUtf8().constData());
    EXPECT_TRUE(Tables().contains(code_name)) << code_name.toStdString();
    RemoveTune(database.Connect(), code_name);
    EXPECT_EQ(Tables().contains(code_name), false) << code_name.toStdString();
    database.Execute(QStringLiteral("delete * from tblThemes where CodeName = \"%1\"")
                         .arg(QString(code_name).replace(u'"', QStringLiteral("\"\""))));
    EXPECT_EQ(Everything(), before) << code_name.toStdString();
  }
}

}  // namespace
}  // namespace zelmar::testing_support
