// Printed lists as pages: what stands where, with letters of one width.
#include "model/list_layout.h"

#include <gtest/gtest.h>

#include "platform/failure.h"

namespace zelmar {
namespace {

QString Word(const char* text) {
  return QString::fromUtf8(text);
}

// Every letter is 5 points wide and every line 10 high; of the title twice as much.
class CellMeasure : public TextMeasure {
 public:
  double Width(PrintedStyle style, const QString& text) const override {
    return static_cast<double>(text.size()) * (style == PrintedStyle::kTitle ? 10.0 : 5.0);
  }
  double LineHeight(PrintedStyle style) const override { return style == PrintedStyle::kTitle ? 20.0 : 10.0; }
};

class ListPages : public ::testing::Test {
 protected:
  ListPages() {
    list.title = Word("By Composer");
    list.database_title = Word("My Tunes");
    list.date = QDate(2025, 3, 7);
    list.columns = {{Word("Title"), 3.0}, {Word("Style"), 1.0}};
  }

  void AddGroup(const char* head, int rows) {
    PrintedGroup group{Word(head)};
    for (int row = 1; row <= rows; ++row)
      group.rows.push_back({QStringLiteral("%1%2").arg(Word(head).left(1)).arg(row), Word("Folk")});
    list.groups.push_back(group);
  }
  ListLayout Layout(double height = 200.0, double width = 400.0) const {
    return ListLayout(std::make_shared<PrintedList>(list), std::make_shared<CellMeasure>(), width, height);
  }
  ListLayout Finished(double height = 200.0, double width = 400.0) const {
    ListLayout layout = Layout(height, width);
    layout.Finish();
    return layout;
  }
  // The lines of a page, their pieces between bars.
  static QStringList Texts(const PrintedPage& page) {
    QStringList texts;
    for (const PrintedLine& line : page) {
      QStringList pieces;
      for (const PrintedPiece& piece : line.pieces) pieces.append(piece.text);
      texts.append(pieces.join(u'|'));
    }
    return texts;
  }
  static QStringList Body(const ListLayout& layout, int page) {
    QStringList texts = Texts(layout.Page(page));
    texts.removeLast();
    return texts.mid(page == 1 ? 3 : 2);
  }
  static void ExpectNothingOverlaps(const ListLayout& layout, double height) {
    for (int page = 1; page <= layout.PageCount(); ++page) {
      double below = 0.0;
      for (const PrintedLine& line : layout.Page(page)) {
        EXPECT_GE(line.top, below) << "page " << page;
        below = line.top + line.height;
      }
      EXPECT_LE(below, height) << "page " << page;
    }
  }

  PrintedList list;
};

TEST_F(ListPages, TheFirstPageBeginsWithTitleDatabaseDateAndTheHeadsOfTheColumns) {
  AddGroup("Bach", 2);
  const ListLayout layout = Finished();
  ASSERT_EQ(layout.PageCount(), 1);
  EXPECT_EQ(Texts(layout.Page(1)),
            QStringList({Word("By Composer"), Word("My Tunes|07 Mar 2025"), Word("Title|Style"), Word("Bach"),
                         Word("B1|Folk"), Word("B2|Folk"), Word("My Tunes|Page 1 of 1")}));
  const PrintedPage page = layout.Page(1);
  const PrintedPiece& date = page[1].pieces[1];
  EXPECT_TRUE(date.at_right);
  EXPECT_EQ(date.left + date.width, 400.0);
  EXPECT_EQ(page.back().top + page.back().height, 200.0) << "the footer stands at the bottom";
  EXPECT_EQ(page[3].style, PrintedStyle::kGroupHead);
  EXPECT_EQ(page[4].style, PrintedStyle::kRow);
  EXPECT_GT(page[4].pieces[0].left, page[3].pieces[0].left) << "rows are set in under their head";
}

TEST_F(ListPages, ColumnsShareTheWidthAndHaveAGapBetweenThem) {
  AddGroup("Bach", 1);
  const PrintedPage page = Finished().Page(1);
  const PrintedPiece& title = page[4].pieces[0];
  const PrintedPiece& style = page[4].pieces[1];
  EXPECT_NEAR(title.width, 3.0 * style.width, 1e-9);
  EXPECT_GT(style.left, title.left + title.width);
  EXPECT_NEAR(style.left + style.width, 400.0, 1e-9);
  EXPECT_EQ(page[2].pieces[1].left, style.left) << "heads stand over their columns";
}

TEST_F(ListPages, LaterPagesBeginWithTitleAndDateAndTheHeadsAgain) {
  AddGroup("Bach", 30);
  const ListLayout layout = Finished();
  ASSERT_GT(layout.PageCount(), 2);
  const QStringList second = Texts(layout.Page(2));
  EXPECT_EQ(second.mid(0, 3),
            QStringList({Word("By Composer|07 Mar 2025"), Word("Title|Style"), Word("Bach (continued)")}));
  EXPECT_EQ(second.last(), QStringLiteral("My Tunes|Page 2 of %1").arg(layout.PageCount()));
  ExpectNothingOverlaps(layout, 200.0);
}

TEST_F(ListPages, EveryRowIsThereOnceAndInOrder) {
  AddGroup("Bach", 25);
  AddGroup("Chopin", 1);
  AddGroup("Dukas", 40);
  const ListLayout layout = Finished();
  QStringList rows;
  for (int page = 1; page <= layout.PageCount(); ++page)
    for (const PrintedLine& line : layout.Page(page))
      if (line.style == PrintedStyle::kRow) rows.append(line.pieces[0].text);
  QStringList expected;
  for (const PrintedGroup& group : list.groups)
    for (const QStringList& row : group.rows) expected.append(row[0]);
  EXPECT_EQ(rows, expected);
  EXPECT_EQ(layout.Percent(), 100);
}

TEST_F(ListPages, TheHeadOfAGroupIsNeverLeftAloneAtTheEndOfAPage) {
  for (int rows = 1; rows <= 30; ++rows) {
    list.groups.clear();
    AddGroup("Bach", rows);
    AddGroup("Chopin", 3);
    const ListLayout layout = Finished();
    for (int page = 1; page <= layout.PageCount(); ++page) {
      const PrintedPage lines = layout.Page(page);
      EXPECT_NE(lines[lines.size() - 2].style, PrintedStyle::kGroupHead) << rows << " rows, page " << page;
    }
  }
}

TEST_F(ListPages, AGroupWithoutRowsHasItsHead) {
  AddGroup("Nobody", 0);
  AddGroup("Bach", 1);
  EXPECT_EQ(Body(Finished(), 1), QStringList({Word("Nobody"), Word("Bach"), Word("B1|Folk")}));
}

TEST_F(ListPages, RowsWithoutAGroupStandAtTheEdge) {
  list.groups = {{{}, {{Word("one"), Word("two")}}}};
  const PrintedPage page = Finished().Page(1);
  EXPECT_EQ(page[3].pieces[0].text, Word("one"));
  EXPECT_EQ(page[3].pieces[0].left, 0.0);
}

TEST_F(ListPages, ALongTextIsWrappedInItsColumnBetweenWords) {
  list.title = Word("Top 10");
  list.columns = {{Word("Title"), 1.0}, {Word("Style"), 1.0}};
  list.groups = {{{}, {{Word("one two three four five six seven"), Word("Folk")}, {Word("next"), {}}}}};
  const ListLayout layout = Finished(200.0, 109.0);  // 50 points to a column: 10 letters
  EXPECT_EQ(Body(layout, 1), QStringList({Word("one two|Folk"), Word("three four"), Word("five six"),
                                          Word("seven"), Word("next")}));
  const PrintedPage page = layout.Page(1);
  EXPECT_FALSE(page[3].goes_on);
  EXPECT_TRUE(page[4].goes_on);
  EXPECT_FALSE(page[7].goes_on);
  ExpectNothingOverlaps(layout, 200.0);
}

TEST(Wrapping, AWordLongerThanTheLineIsDividedAndNothingIsLost) {
  const CellMeasure measure;
  EXPECT_EQ(Wrapped(Word("abcdefghijkl mn"), PrintedStyle::kRow, 25.0, measure),
            QStringList({Word("abcde"), Word("fghij"), Word("kl mn")}));
  EXPECT_EQ(Wrapped(Word("a bcdefgh"), PrintedStyle::kRow, 25.0, measure),
            QStringList({Word("a"), Word("bcdef"), Word("gh")}));
  EXPECT_EQ(Wrapped(Word("abc"), PrintedStyle::kRow, 1.0, measure),
            QStringList({Word("a"), Word("b"), Word("c")}));
  EXPECT_EQ(Wrapped(Word("two\nlines"), PrintedStyle::kRow, 100.0, measure), QStringList(Word("two lines")));
  EXPECT_EQ(Wrapped({}, PrintedStyle::kRow, 100.0, measure), QStringList(QString()));
  const QString clef = QString::fromUcs4(U"\U0001D11E");
  EXPECT_EQ(Wrapped(clef + clef, PrintedStyle::kRow, 1.0, measure), QStringList({clef, clef}));
}

TEST_F(ListPages, ARowLongerThanAPageGoesOnOverPages) {
  list.columns = {{Word("Title"), 1.0}};
  list.groups = {{Word("Bach"), {{QString(600, u'x')}, {Word("after")}}}};
  const ListLayout layout = Finished(120.0, 112.0);  // 20 letters to a line
  qsizetype letters = 0;
  for (int page = 1; page <= layout.PageCount(); ++page)
    for (const PrintedLine& line : layout.Page(page))
      if (line.style == PrintedStyle::kRow && line.pieces[0].text != u"after")
        letters += line.pieces[0].text.size();
  EXPECT_EQ(letters, 600);
  EXPECT_GT(layout.PageCount(), 3);
  EXPECT_EQ(Body(layout, layout.PageCount()).last(), Word("after"));
  ExpectNothingOverlaps(layout, 120.0);
}

TEST_F(ListPages, APageThatIsTooSmallForAnythingStillComesToAnEnd) {
  AddGroup("Bach", 3);
  const ListLayout layout = Finished(5.0, 5.0);
  EXPECT_TRUE(layout.Finished());
  EXPECT_GE(layout.PageCount(), 3);
}

TEST_F(ListPages, TheClosingLinesStandTogetherAtTheEnd) {
  for (int rows = 8; rows <= 12; ++rows) {
    list.groups.clear();
    AddGroup("Bach", rows);
    list.closing = {Word("----"), QStringLiteral("%1 tunes.").arg(rows), Word("----")};
    const ListLayout layout = Finished();
    const QStringList last = Body(layout, layout.PageCount());
    EXPECT_EQ(last.mid(last.size() - 3), list.closing) << rows;
  }
}

TEST_F(ListPages, PrefaceLinesStandUnderTheHeadingOfTheFirstPageOnly) {
  AddGroup("Bach", 30);
  list.preface = {Word("Database path is C:\\Tunes.mdb")};
  const ListLayout layout = Finished();
  EXPECT_EQ(Texts(layout.Page(1))[2], list.preface[0]);
  EXPECT_FALSE(Texts(layout.Page(2)).contains(list.preface[0]));
}

TEST_F(ListPages, AnEmptyListSaysSoAndOneWithAClosingSaysThat) {
  EXPECT_EQ(Body(Finished(), 1), QStringList(Word("There is nothing to list.")));
  list.closing = {Word("0 tunes.")};
  EXPECT_EQ(Body(Finished(), 1), QStringList(Word("0 tunes.")));
}

TEST_F(ListPages, WithoutHeadsOfColumnsDateAndDatabaseTheirLinesAreLeftOut) {
  PrintedList bare;
  bare.title = Word("Top 10");
  bare.columns = {{QString(), 1.0}};
  bare.groups = {{{}, {{Word("1 Air")}}}};
  list = bare;
  EXPECT_EQ(Texts(Finished().Page(1)), QStringList({Word("Top 10"), Word("1 Air"), Word("Page 1 of 1")}));
}

TEST_F(ListPages, PagesComeOneByOneAndTheirNumberIsToldOnceItIsKnown) {
  AddGroup("Bach", 100);
  ListLayout layout = Layout();
  EXPECT_EQ(layout.PageCount(), 0);
  EXPECT_EQ(layout.Percent(), 0);
  layout.AddPage();
  EXPECT_EQ(layout.PageCount(), 1);
  EXPECT_FALSE(layout.Finished());
  EXPECT_EQ(Texts(layout.Page(1)).last(), Word("My Tunes|Page 1"));
  const int begun = layout.Percent();
  EXPECT_GT(begun, 0);
  EXPECT_LT(begun, 50);
  layout.Finish();
  EXPECT_EQ(Texts(layout.Page(1)).last(), QStringLiteral("My Tunes|Page 1 of %1").arg(layout.PageCount()));
  const int pages = layout.PageCount();
  layout.AddPage();
  EXPECT_EQ(layout.PageCount(), pages);
  EXPECT_THROW(layout.Page(0), SubscriptError);
  EXPECT_THROW(layout.Page(pages + 1), SubscriptError);
}

}  // namespace
}  // namespace zelmar
