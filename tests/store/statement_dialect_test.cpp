// The rules of the dialect one by one.
#include "store/statement_dialect.h"

#include "store/store_fixture.h"

namespace zelmar::testing_support {
namespace {

class Dialect : public StoreTest {
 protected:
  Dialect() {
    const auto connection = database.Connect();
    connection->Execute(QStringLiteral("CREATE TABLE words (a TEXT, b TEXT, n INTEGER)"));
    connection->Execute(QStringLiteral("INSERT INTO words VALUES ('x', 'y', 1)"));
    connection->Execute(QStringLiteral("INSERT INTO words VALUES ('p', NULL, 2)"));
    connection->Execute(QStringLiteral("INSERT INTO words VALUES (NULL, NULL, 2)"));
    connection->Execute(QStringLiteral("INSERT INTO words VALUES ('q', 'z', 3)"));
  }

  int NumberOf(const QString& statement) const {
    return FailureNumber([&] { database.Execute(statement); });
  }
};

TEST_F(Dialect, JoiningTextsCountsNullsAsEmpty) {
  EXPECT_EQ(
      Rows(QStringLiteral("SELECT a & '-' & b AS t FROM words ORDER BY n, a")),
      QStringList({QStringLiteral("x-y"), QStringLiteral("-"), QStringLiteral("p-"), QStringLiteral("q-z")}));
  EXPECT_EQ(Rows(QStringLiteral("SELECT a & b FROM words WHERE n = 2 AND a IS NULL")),
            QStringList(QString()));
}

TEST_F(Dialect, JoiningBindsLooserThanSumsAndTighterThanComparisons) {
  EXPECT_EQ(Rows(QStringLiteral("SELECT n + 1 & 'th' FROM words WHERE a & b = 'xy'")),
            QStringList(QStringLiteral("2th")));
  EXPECT_EQ(Rows(QStringLiteral("SELECT n FROM words WHERE a & b <> 'xy' AND n = 3")),
            QStringList(QStringLiteral("3")));
}

TEST_F(Dialect, JoiningWorksInsideFunctionsAndBrackets) {
  EXPECT_EQ(
      Rows(QStringLiteral("SELECT IIf(n = 1, (a & b) & '!', 'no') FROM words WHERE n IN (1, 3) ORDER BY n")),
      QStringList({QStringLiteral("xy!"), QStringLiteral("no")}));
}

TEST_F(Dialect, JoiningNeedsTextsOnBothSides) {
  EXPECT_EQ(NumberOf(QStringLiteral("SELECT a & FROM words")), database_error::kSyntax);
}

TEST_F(Dialect, TextBetweenQuotationMarksStaysAsWritten) {
  EXPECT_EQ(Rows(QStringLiteral("SELECT 'a & b; [x] -- ! TOP 3 * it''s' AS t FROM words WHERE n = 1")),
            QStringList(QStringLiteral("a & b; [x] -- ! TOP 3 * it's")));
  EXPECT_EQ(Rows(QStringLiteral("SELECT n FROM words WHERE a = \"x\"")), QStringList(QStringLiteral("1")));
  EXPECT_EQ(Rows(QStringLiteral("SELECT n FROM words WHERE a = \"a\"")), QStringList());
  EXPECT_EQ(Rows(QStringLiteral("SELECT \"it's\" FROM words WHERE n = 1")),
            QStringList(QStringLiteral("it's")));
}

TEST_F(Dialect, AValueIsFoundAsItIsWhateverItHolds) {
  for (const char16_t* value : {u"O'Carolan", u"'", u"''", u"\"", u"it's \"so\"; [x] -- & ! %*?_", u"a\\",
                                u"Ça", u"", u"x' OR 'a'='a"}) {
    const QString text = QString::fromUtf16(value);
    database.AddRow(QStringLiteral("tblComposer"),
                    {text, QStringLiteral("Turlough"), 1670, 1738, text, text});
    const QString quoted = StatementDialect::Quoted(text);
    EXPECT_EQ(Rows(QStringLiteral("SELECT COMPOSER FROM tblComposer WHERE composer = ") + quoted),
              QStringList(text));
    const auto rows = Recordset::OpenTable(database.Connect(), QStringLiteral("tblComposer"));
    rows->Find(QStringLiteral("composer = ") + quoted);
    EXPECT_EQ(rows->Text(0), text);
    database.Execute(QStringLiteral("DELETE * FROM tblComposer WHERE COMPOSER = ") + quoted);
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM tblComposer")), QStringList());
  }
}

TEST_F(Dialect, TextBehindASemicolonIsRefused) {
  const auto refused = database_error::kTextAfterStatement;
  EXPECT_EQ(NumberOf(QStringLiteral("delete * from words; delete * from tblMelodies")), refused);
  EXPECT_EQ(NumberOf(QStringLiteral("delete * from words;;")), refused);
  EXPECT_EQ(FailureNumber([&] { Rows(QStringLiteral("SELECT * FROM words; DROP TABLE words")); }), refused);
  EXPECT_EQ(Rows(QStringLiteral("SELECT count(1) FROM words; ")), QStringList(QStringLiteral("4")));
  EXPECT_EQ(NumberOf(QStringLiteral("DROP TABLE words; x")), refused);
}

TEST_F(Dialect, CommentsAreNone) {
  EXPECT_EQ(Rows(QStringLiteral("SELECT 1--1 FROM words WHERE n = 1")), QStringList(QStringLiteral("2")));
  EXPECT_EQ(NumberOf(QStringLiteral("SELECT n /* all */ FROM words")), database_error::kSyntax);
}

TEST_F(Dialect, UnfinishedStatementsAreSyntaxErrors) {
  for (const char* statement :
       {"SELECT 'abc FROM words", "SELECT [a FROM words", "SELECT (n FROM words", "SELECT n) FROM words",
        "SELECT FROM words", "delete * from", "SELECT * FROM tblMelodies WHERE CodeName = 'it's'"})
    EXPECT_EQ(NumberOf(QString::fromLatin1(statement)), database_error::kSyntax) << statement;
}

TEST_F(Dialect, OnlyTheCommandsOfTheSystemRun) {
  for (const char* statement :
       {"PRAGMA journal_mode=DELETE", "ATTACH 'other.db' AS other", "VACUUM", "", "42"})
    EXPECT_EQ(NumberOf(QString::fromLatin1(statement)), database_error::kNotAStatement) << statement;
}

TEST_F(Dialect, ABangStandsBetweenTableAndColumn) {
  EXPECT_EQ(Rows(QStringLiteral("SELECT words!a FROM words WHERE [words]![n] = 3")),
            QStringList(QStringLiteral("q")));
}

TEST_F(Dialect, NamesStandBareInBracketsOrInBackquotes) {
  EXPECT_EQ(Rows(QStringLiteral("SELECT [A], `b` FROM WORDS WHERE N = 3")),
            QStringList(QStringLiteral("q|z")));
  EXPECT_EQ(NumberOf(QStringLiteral("SELECT [missing] FROM words")), database_error::kUnknownColumn);
  EXPECT_EQ(NumberOf(QStringLiteral("SELECT * FROM [no such]")), error_number::kTableNotFound);
}

TEST_F(Dialect, PatternsTakeBothWildcardsAndOneCharacterByUnderscore) {
  EXPECT_EQ(Rows(QStringLiteral("SELECT n FROM words WHERE b LIKE '*y'")), QStringList(QStringLiteral("1")));
  EXPECT_EQ(
      Rows(QStringLiteral("SELECT n FROM words WHERE a & b LIKE 'x%' OR b LIKE '_' AND n = 3 ORDER BY n")),
      QStringList({QStringLiteral("1"), QStringLiteral("3")}));
  EXPECT_EQ(Rows(QStringLiteral("SELECT n FROM words WHERE b LIKE '?'")), QStringList());
  EXPECT_EQ(Rows(QStringLiteral("SELECT n FROM words WHERE b NOT LIKE '*y'")),
            QStringList(QStringLiteral("3")));
  EXPECT_EQ(Rows(QStringLiteral("SELECT n FROM words WHERE b LIKE '*' & 'Y' & '*'")),
            QStringList(QStringLiteral("1")));
}

TEST_F(Dialect, TopKeepsTiesByTheOrder) {
  EXPECT_EQ(Rows(QStringLiteral("SELECT TOP 2 n FROM words ORDER BY n")),
            QStringList({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("2")}));
  EXPECT_EQ(Rows(QStringLiteral("select top 1 n from words order by n desc")),
            QStringList(QStringLiteral("3")));
  EXPECT_EQ(Rows(QStringLiteral("SELECT TOP 2 n FROM words ORDER BY n, a")),
            QStringList({QStringLiteral("1"), QStringLiteral("2")}));
  EXPECT_EQ(Rows(QStringLiteral("SELECT TOP 0 n FROM words ORDER BY n")), QStringList());
}

TEST_F(Dialect, TopSortsByANamedColumnAndByItsNumber) {
  EXPECT_EQ(Rows(QStringLiteral("SELECT TOP 1 a, 10 - n AS turned FROM words ORDER BY turned")),
            QStringList(QStringLiteral("q|7")));
  EXPECT_EQ(Rows(QStringLiteral("SELECT TOP 1 a, 10 - n AS turned FROM words ORDER BY 2")),
            QStringList(QStringLiteral("q|7")));
}

TEST_F(Dialect, TopWithoutAnOrderGivesJustSoMany) {
  EXPECT_EQ(Rows(QStringLiteral("SELECT TOP 3 * FROM words")).size(), 3);
  EXPECT_EQ(Rows(QStringLiteral("SELECT TOP 3 * FROM words WHERE n = 2")).size(), 2);
}

TEST_F(Dialect, TopOfDistinctRowsAndOfGroups) {
  EXPECT_EQ(Rows(QStringLiteral("SELECT DISTINCT TOP 2 n FROM words ORDER BY n")),
            QStringList({QStringLiteral("1"), QStringLiteral("2")}));
  EXPECT_EQ(Rows(QStringLiteral("SELECT TOP 1 n, Count(1) AS c FROM words GROUP BY n ORDER BY Count(1)")),
            QStringList({QStringLiteral("1|1"), QStringLiteral("3|1")}));
}

TEST_F(Dialect, TopInsideANestedStatement) {
  EXPECT_EQ(
      Rows(QStringLiteral("SELECT a FROM words WHERE n IN (SELECT TOP 1 n FROM words ORDER BY n DESC)")),
      QStringList(QStringLiteral("q")));
}

TEST_F(Dialect, ATableIsMadeFromTheTemplateWithItsColumns) {
  const auto connection = database.Connect();
  connection->Execute(QStringLiteral("INSERT INTO TemplateTune (EventType, Pitch) VALUES (128, 'E4')"));
  connection->Execute(QStringLiteral("select * into [My New-Tune (1)] from TemplateTune"));
  EXPECT_EQ(Rows(QStringLiteral("SELECT EventType, Pitch FROM [my new-tune (1)]")),
            QStringList(QStringLiteral("128|E4")));
  // Declared types: a text that spells a number enters a number column as a number, and stays a text in a
  // text column.
  connection->Execute(
      QStringLiteral("INSERT INTO [My New-Tune (1)] (Bar, Pitch, Duration) VALUES ('7', 5, 1)"));
  EXPECT_EQ(Rows(QStringLiteral(
                "SELECT typeof(Bar), typeof(Pitch), typeof(Duration) FROM [My New-Tune (1)] WHERE Bar = 7")),
            QStringList(QStringLiteral("integer|text|real")));
}

TEST_F(Dialect, ACopiedTableKeepsItsCollations) {
  database.AddRow(QStringLiteral("tblWords"), {QStringLiteral("Moon"), 1, 1, 0, QStringLiteral("la")});
  database.Execute(QStringLiteral("SELECT * INTO copied FROM tblWords"));
  EXPECT_EQ(Rows(QStringLiteral("SELECT WordText FROM copied WHERE FileName = 'MOON'")),
            QStringList(QStringLiteral("la")));
}

TEST_F(Dialect, ACopyTakesOnlyTheRowsAskedFor) {
  database.Execute(QStringLiteral("SELECT * INTO some FROM words WHERE n = 2"));
  EXPECT_EQ(Rows(QStringLiteral("SELECT n FROM some")),
            QStringList({QStringLiteral("2"), QStringLiteral("2")}));
  database.Execute(QStringLiteral("SELECT a, n INTO less FROM words WHERE n = 1"));
  EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM less")), QStringList(QStringLiteral("x|1")));
}

TEST_F(Dialect, AnExistingTableIsNotMadeAgain) {
  EXPECT_EQ(NumberOf(QStringLiteral("select * into [WORDS] from TemplateTune")),
            database_error::kTableExists);
  EXPECT_EQ(Rows(QStringLiteral("SELECT count(1) FROM words")), QStringList(QStringLiteral("4")));
  EXPECT_EQ(NumberOf(QStringLiteral("select * into [x] from NoTemplate")), error_number::kTableNotFound);
}

TEST_F(Dialect, TablesAreDroppedByBareOrBracketedName) {
  const auto connection = database.Connect();
  for (const char* name : {"plain", "40th Symphony", "a-b", "with'quote"})
    connection->Execute(
        QStringLiteral("select * into [%1] from TemplateTune").arg(QString::fromLatin1(name)));
  connection->Execute(QStringLiteral("DROP TABLE plain"));
  connection->Execute(QStringLiteral("DROP TABLE 40th Symphony"));
  connection->Execute(QStringLiteral("drop table a-b;"));
  connection->Execute(QStringLiteral("DROP TABLE [WITH'quote]"));
  for (const char* name : {"plain", "40th Symphony", "a-b", "with'quote"})
    EXPECT_FALSE(connection->TableNames().contains(QString::fromLatin1(name))) << name;
  EXPECT_EQ(NumberOf(QStringLiteral("DROP TABLE [plain]")), error_number::kTableNotFound);
}

TEST_F(Dialect, ANameThatHoldsABracketIsRefused) {
  EXPECT_EQ(FailureNumber([] { StatementDialect::Bracketed(QStringLiteral("a]b")); }),
            database_error::kSyntax);
  EXPECT_EQ(StatementDialect::BareName(QStringLiteral(" [My Tune] ")), QStringLiteral("My Tune"));
  EXPECT_EQ(StatementDialect::BareName(QStringLiteral("`My Tune`")), QStringLiteral("My Tune"));
}

TEST_F(Dialect, AShapeMayLeaveOutNamesAndQuotationMarks) {
  const auto rows = Recordset::OpenStatement(
      database.Connect(),
      QStringLiteral("SHAPE {select distinct n from words where n < 3 order by n} APPEND ({select * "
                     "from words} AS kids RELATE n TO N)"));
  EXPECT_EQ(rows->Chapter(QStringLiteral("Kids"))->RecordCount(), 1);
  rows->MoveNext();
  EXPECT_EQ(rows->Chapter(QStringLiteral("kids"))->RecordCount(), 2);
  EXPECT_EQ(FailureNumber([&] { rows->Chapter(QStringLiteral("other")); }), database_error::kItemNotFound);
}

TEST_F(Dialect, ABrokenShapeIsASyntaxError) {
  for (const char* statement :
       {"SHAPE", "SHAPE {select * from words}", "SHAPE {select * from words} APPEND ({select * from words})",
        "SHAPE (select * from words) APPEND ({select * from words} RELATE n TO n)",
        "SHAPE {select * from words} APPEND ({select * from words} RELATE n TO n) AS a b"})
    EXPECT_EQ(
        FailureNumber([&] { Recordset::OpenStatement(database.Connect(), QString::fromLatin1(statement)); }),
        database_error::kSyntax)
        << statement;
}

}  // namespace
}  // namespace zelmar::testing_support
