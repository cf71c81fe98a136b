#include <gtest/gtest.h>

#include "template/csv_table.h"

namespace zelmar {
namespace {

CsvTable Read(const QByteArray& text) {
  return ReadCsv(text, QStringLiteral("folder/t.csv"));
}

std::string MistakeOf(const QByteArray& text) {
  try {
    Read(text);
  } catch (const TextError& error) {
    return error.Description().toStdString();
  }
  return "no mistake";
}

TEST(Csv, HeaderNamesTheColumnsAndRowsFillThem) {
  const CsvTable table = Read("Name,Year\n\"Bach\",1685\nHandel , 1685\n");
  EXPECT_EQ(table.columns, (QStringList{QStringLiteral("Name"), QStringLiteral("Year")}));
  ASSERT_EQ(table.rows.size(), 2U);
  EXPECT_EQ(table.rows[0].cells, (QStringList{QStringLiteral("Bach"), QStringLiteral("1685")}));
  EXPECT_EQ(table.rows[1].cells, (QStringList{QStringLiteral("Handel"), QStringLiteral("1685")}));
  EXPECT_EQ(table.rows[1].line, 3);
  EXPECT_EQ(table.rows[1].positions[1], (TextPosition{3, 9}));
}

TEST(Csv, QuotesHoldCommasQuotesAndLineEnds) {
  const CsvTable table = Read("a,b\n\"x, \"\"y\"\"\nz\",2\nq,3");
  ASSERT_EQ(table.rows.size(), 2U);
  EXPECT_EQ(table.rows[0].cells[0], QStringLiteral("x, \"y\"\nz"));
  EXPECT_EQ(table.rows[1].line, 4);
}

TEST(Csv, AnEmptyCellIsNullAndEmptyQuotesAreAnEmptyText) {
  const CsvTable table = Read("a,b\n,\"\"\n");
  ASSERT_EQ(table.rows.size(), 1U);
  EXPECT_TRUE(table.rows[0].cells[0].isNull());
  EXPECT_FALSE(table.rows[0].cells[1].isNull());
  EXPECT_TRUE(table.rows[0].cells[1].isEmpty());
}

TEST(Csv, HeaderAloneIsAnEmptyTable) {
  EXPECT_TRUE(Read("a,b\n").rows.empty());
  EXPECT_TRUE(Read("a,b\r\n\r\n").rows.empty());
}

TEST(Csv, MistakesAreToldWithTheirPlace) {
  EXPECT_EQ(MistakeOf("a,b\n1\n"), "t.csv:2:1: This row has 1 cells where the table has 2 columns.");
  EXPECT_EQ(MistakeOf("a,b\n1,2\n1,2,3\n"), "t.csv:3:1: This row has 3 cells where the table has 2 columns.");
  EXPECT_EQ(MistakeOf("a,b\n1,\"x\n\n"), "t.csv:2:3: The quotation mark is never closed.");
  EXPECT_EQ(MistakeOf("a,b\n\"x\"y,2\n"),
            "t.csv:2:4: A comma or the end of the line must follow the quotation mark.");
  EXPECT_EQ(MistakeOf("a,b\n1,x\"y\n"), "t.csv:2:4: A quotation mark stands only around a whole cell.");
  EXPECT_EQ(MistakeOf("a,,c\n"), "t.csv:1:3: A column has no name.");
  EXPECT_EQ(MistakeOf(""), "t.csv:1:1: A column has no name.");
  EXPECT_EQ(MistakeOf("a,A\n"), "t.csv:1:3: There are two columns A.");
  EXPECT_EQ(MistakeOf("a\nok\nx\xff\n"), "t.csv:3:2: The text is not UTF-8.");
}

TEST(Csv, AFileThatCannotBeReadIsAFailure) {
  EXPECT_THROW(ReadCsvFile(QStringLiteral("/nowhere/t.csv")), Failure);
}

}  // namespace
}  // namespace zelmar
