// Statements at the corners of the dialect: nothing known, ties at the edge, signs that meet.
#include "store/statement_dialect.h"
#include "store/store_fixture.h"

namespace zelmar::testing_support {
namespace {

class StatementCorners : public StoreTest {
 protected:
  StatementCorners() : connection(database.Connect()) {
    connection->Execute(QStringLiteral("CREATE TABLE t (Name TEXT, Rank INTEGER, [Order] TEXT)"));
    for (const char* const row :
         {"'a',1,'x'", "'b',2,NULL", "NULL,2,'y'", "'d',NULL,'z'", "'e',3,'x'", "'a',3,'x'"})
      connection->Execute(QStringLiteral("INSERT INTO t VALUES (%1)").arg(QString::fromLatin1(row)));
  }
  QStringList Of(const char* statement) const { return Rows(QString::fromUtf8(statement)); }

  std::shared_ptr<Connection> connection;
};

TEST_F(StatementCorners, JoinedTextsTakeNothingForWhatIsNotKnown) {
  EXPECT_EQ(Of("SELECT Name & '-' & [Order] FROM t"), QStringList({"a-x", "b-", "-y", "d-z", "e-x", "a-x"}));
  EXPECT_EQ(Of("SELECT Name & Rank FROM t WHERE Rank > 1"), QStringList({"b2", "2", "e3", "a3"}));
  EXPECT_EQ(Of("SELECT 'a' & 'b' & 'c' & 1 + 2 FROM t WHERE Rank = 1"), QStringList({"abc3"}));
}

TEST_F(StatementCorners, AConditionThatIsNotKnownIsNotTrue) {
  EXPECT_EQ(Of("SELECT IIf(Rank > 1, 'high', 'low') FROM t"),
            QStringList({"low", "high", "high", "low", "high", "high"}));
}

TEST_F(StatementCorners, WhatIsNotKnownIsLikeNothing) {
  EXPECT_EQ(Of("SELECT Rank FROM t WHERE Name LIKE '*'"), QStringList({"1", "2", "null", "3", "3"}));
}

TEST_F(StatementCorners, TheFirstOfAnOrderKeepTheirTies) {
  EXPECT_EQ(Of("SELECT TOP 2 Rank FROM t WHERE Rank > 0 ORDER BY Rank"), QStringList({"1", "2", "2"}));
  EXPECT_EQ(Of("SELECT TOP 1 Rank FROM t ORDER BY t!Rank DESC"), QStringList({"3", "3"}));
  EXPECT_EQ(Of("select top 2 Name from t where Name like 'a' order by Name"), QStringList({"a", "a"}));
  EXPECT_EQ(Of("SELECT TOP 1 Rank, Name FROM t ORDER BY Rank DESC, Name DESC"), QStringList({"3|e"}));
  EXPECT_EQ(Of("SELECT TOP 9 Rank FROM t").size(), 6);
  EXPECT_EQ(Of("SELECT TOP 2 Name FROM t").size(), 2);
}

TEST_F(StatementCorners, TheFirstOfAllDifferentOnesAreDifferent) {
  EXPECT_EQ(Of("SELECT DISTINCT TOP 2 Rank FROM t WHERE Rank > 0 ORDER BY Rank"), QStringList({"1", "2"}));
}

TEST_F(StatementCorners, SignsThatMeetAreNoComments) {
  EXPECT_EQ(Of("SELECT Rank--1 FROM t WHERE Rank = 1"), QStringList({"2"}));
  EXPECT_EQ(Of("SELECT '--' & '/*' FROM t WHERE Rank = 1"), QStringList({"--/*"}));
}

TEST_F(StatementCorners, WordsOfTheLanguageAreNamesBetweenBrackets) {
  EXPECT_EQ(Of("SELECT [order] FROM [t] WHERE t![Order] = 'y'"), QStringList({"y"}));
  EXPECT_EQ(Of("SELECT `Order` FROM `t` WHERE `t`.`Order` = 'z'"), QStringList({"z"}));
}

TEST_F(StatementCorners, EitherKindOfMarkHoldsAText) {
  EXPECT_EQ(Of("SELECT \"it's\" & 'a \"b\"' FROM t WHERE Rank = 1"), QStringList({"it'sa \"b\""}));
  EXPECT_EQ(Of("SELECT Rank FROM t WHERE Name = \"b\""), QStringList({"2"}));
}

TEST_F(StatementCorners, ASemicolonAtTheEndIsLeftOutAndTextBehindItRefused) {
  EXPECT_EQ(Of("SELECT Rank FROM t WHERE Name = 'b';"), QStringList({"2"}));
  for (const char* const statement : {"SELECT 1 FROM t; SELECT 2 FROM t", "SELECT 1 FROM t;x"})
    EXPECT_EQ(FailureNumber([&] { Of(statement); }), database_error::kTextAfterStatement) << statement;
}

TEST_F(StatementCorners, UnfinishedStatementsAreRefused) {
  for (const char* const statement : {"SELECT 'a FROM t", "SELECT \"a FROM t", "SELECT [Name FROM t",
                                      "SELECT (1 FROM t", "SELECT `Name FROM t"})
    EXPECT_EQ(FailureNumber([&] { Of(statement); }), database_error::kSyntax) << statement;
}

TEST_F(StatementCorners, MissingTablesAndFieldsHaveTheirNumbers) {
  EXPECT_EQ(FailureNumber([&] { Of("SELECT * FROM nowhere"); }), error_number::kTableNotFound);
  EXPECT_EQ(FailureNumber([&] { Of("SELECT * FROM [no where]"); }), error_number::kTableNotFound);
  EXPECT_EQ(FailureNumber([&] { Of("SELECT absent FROM t"); }), database_error::kUnknownColumn);
  EXPECT_EQ(FailureNumber([&] { Recordset::OpenTable(connection, QStringLiteral("[nowhere]")); }),
            error_number::kTableNotFound);
}

TEST_F(StatementCorners, AFieldIsFoundByItsTextWithApostrophes) {
  connection->Execute(QStringLiteral("INSERT INTO t VALUES ('O''Brien',9,'q')"));
  const auto rows = Recordset::OpenTable(connection, QStringLiteral("t"));
  rows->Find(QStringLiteral("Name = 'O''Brien'"));
  ASSERT_FALSE(rows->Eof());
  EXPECT_EQ(rows->Number<int>(QStringLiteral("rank")), 9);
}

TEST_F(StatementCorners, ACopyTakesTheRowsThatItsConditionAsksFor) {
  connection->Execute(QStringLiteral("select * into [some of t] from t where Rank = 3"));
  EXPECT_EQ(Of("select Name, Rank from [some of t]"), QStringList({"e|3", "a|3"}));
  connection->Execute(QStringLiteral("insert into [some of t] select * from t where rank = 1"));
  EXPECT_EQ(Of("select Name from [SOME OF T]"), QStringList({"e", "a", "a"}));
}

TEST_F(StatementCorners, AnEventTableIsMadeOfItsTemplateEmptyAndWhole) {
  connection->Execute(QStringLiteral("select * into [My tune] from TemplateTune"));
  const auto rows = Recordset::OpenTable(connection, QStringLiteral("[My tune]"));
  EXPECT_TRUE(rows->Eof());
  QStringList names;
  for (int i = 0; i < rows->FieldCount(); ++i) names.append(rows->FieldName(i).toLower());
  names.sort();
  EXPECT_EQ(names, QStringList({"absref", "bar", "beat", "duration", "enharmonic", "eventtype", "instrument",
                                "pitch", "tick", "track", "volume"}));
}

}  // namespace
}  // namespace zelmar::testing_support
