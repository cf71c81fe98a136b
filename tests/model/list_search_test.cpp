// Finding texts on a printed page.
#include "model/list_search.h"

#include <gtest/gtest.h>

namespace zelmar {
namespace {

QString Word(const char* text) {
  return QString::fromUtf8(text);
}

// Two columns, the first of them over three lines.
PrintedPage Page() {
  PrintedPage page;
  page.push_back({PrintedStyle::kGroupHead, 0, 10, {{0, 200, Word("Dvořák")}}});
  page.push_back({PrintedStyle::kRow, 10, 10, {{0, 90, Word("From the New")}, {100, 90, Word("New")}}});
  page.push_back({PrintedStyle::kRow, 20, 10, {{0, 90, Word("World, a new")}}, true});
  page.push_back({PrintedStyle::kRow, 30, 10, {{0, 90, Word("start")}}, true});
  page.push_back({PrintedStyle::kRow, 40, 10, {{0, 90, Word("World")}}});
  return page;
}

// Each place as "line.piece:from+count", the parts of one place with a plus between them.
QStringList Found(const char* typed) {
  QStringList places;
  for (const FoundPlace& place : FindOnPage(Page(), Word(typed))) {
    QStringList parts;
    for (const FoundLetters& letters : place)
      parts.append(QStringLiteral("%1.%2:%3+%4")
                       .arg(letters.line)
                       .arg(letters.piece)
                       .arg(letters.from)
                       .arg(letters.count));
    places.append(parts.join(u'&'));
  }
  return places;
}

TEST(FindOnPage, FindsEachPlaceFromTheTopDownWithoutRegardToCaseAndAccents) {
  EXPECT_EQ(Found("dvorak"), QStringList(Word("0.0:0+6")));
  EXPECT_EQ(Found("NEW"), QStringList({Word("1.0:9+3"), Word("2.0:9+3"), Word("1.1:0+3")}));
}

TEST(FindOnPage, FindsAWrappedTextOnEachOfItsLines) {
  EXPECT_EQ(Found("new world"), QStringList(Word("1.0:9+3&2.0:0+5")));
  EXPECT_EQ(Found("the new world, a new st"), QStringList(Word("1.0:5+7&2.0:0+12&3.0:0+2")));
}

TEST(FindOnPage, JoinsNeitherColumnsNorRows) {
  EXPECT_EQ(Found("New New"), QStringList());
  EXPECT_EQ(Found("start World"), QStringList());
}

TEST(FindOnPage, NothingIsFoundForNothing) {
  EXPECT_EQ(Found(""), QStringList());
  EXPECT_EQ(Found("  "), QStringList());
  EXPECT_EQ(Found("quartet"), QStringList());
}

}  // namespace
}  // namespace zelmar
