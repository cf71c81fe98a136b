// Printed lists as comma-separated values.
#include "model/printed_list.h"

#include <gtest/gtest.h>

namespace zelmar {
namespace {

QString Word(const char* text) {
  return QString::fromUtf8(text);
}

PrintedList Sample() {
  PrintedList list;
  list.title = Word("By Composer");
  list.group_heading = Word("Composer");
  list.columns = {{Word("Title")}, {Word("Style")}};
  list.groups = {{Word("Dvořák"), {{Word("New World"), Word("Romantic")}}}};
  return list;
}

TEST(CommaSeparated, HasALineOfHeadingsAndOneForEachRowWithItsGroupInFront) {
  EXPECT_EQ(CommaSeparated(Sample()), QByteArray("Composer,Title,Style\r\nDvořák,New World,Romantic\r\n"));
}

TEST(CommaSeparated, QuotesWhatAReaderWouldTakeApart) {
  PrintedList list = Sample();
  list.groups[0].rows = {
      {Word("Air, in D"), Word("the \"great\"")}, {Word("two\nlines"), Word(" blanks ")}, {}};
  EXPECT_EQ(CommaSeparated(list), QByteArray("Composer,Title,Style\r\n"
                                             "Dvořák,\"Air, in D\",\"the \"\"great\"\"\"\r\n"
                                             "Dvořák,\"two\nlines\",\" blanks \"\r\n"
                                             "Dvořák\r\n"));
}

TEST(CommaSeparated, AGroupWithoutRowsIsNotLost) {
  PrintedList list = Sample();
  list.groups.push_back({Word("Nobody")});
  EXPECT_TRUE(CommaSeparated(list).endsWith("Nobody,,\r\n"));
}

TEST(CommaSeparated, RowsOfNoGroupHaveNoFirstValue) {
  PrintedList list = Sample();
  list.groups = {{{}, {{Word("Air"), Word("Baroque")}}}};
  EXPECT_EQ(CommaSeparated(list), QByteArray("Title,Style\r\nAir,Baroque\r\n"));
  list.groups.clear();
  EXPECT_EQ(CommaSeparated(list), QByteArray("Title,Style\r\n"));
}

TEST(PrintedDate, HasTheMonthInLettersWhateverTheLanguageOfTheSystem) {
  EXPECT_EQ(PrintedDate(QDate(2025, 12, 3)), Word("03 Dec 2025"));
  EXPECT_EQ(PrintedDate(QDate()), QString());
}

}  // namespace
}  // namespace zelmar
