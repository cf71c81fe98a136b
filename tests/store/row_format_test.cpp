// Texts made of the fields of a row.
#include "store/row_format.h"

#include "store/rowsets_fixture.h"

namespace zelmar::testing_support {
namespace {

class RowFormats : public Rowsets {
 protected:
  // The format of a row with this word in it.
  QString Of(const char* format, const QVariant& text = QStringLiteral("Bach")) {
    const auto rows = Open();
    rows->SetValue(word, text);
    return RowFormat(QString::fromUtf8(format), *rows).Of(*rows);
  }
};

TEST_F(RowFormats, AFieldStandsForItsValueAndWordsForThemselves) {
  EXPECT_EQ(Of("{CodeName} - {n} - {WORD}"), QStringLiteral("One - 1 - Bach"));
  EXPECT_EQ(Of("{Word}{Word}"), QStringLiteral("BachBach"));
  EXPECT_EQ(Of("no field"), QStringLiteral("no field"));
  EXPECT_EQ(Of(""), QString());
  EXPECT_EQ(Of("<{Word}>", QVariant()), QStringLiteral("<>"));
}

TEST_F(RowFormats, ABracketIsLeftOutWhereItNamesNobody) {
  EXPECT_EQ(Of("{CodeName}[  by {Word}] - {n}"), QStringLiteral("One  by Bach - 1"));
  for (const QVariant& nobody :
       {QVariant(QStringLiteral("Various")), QVariant(QStringLiteral("")), QVariant()})
    EXPECT_EQ(Of("{CodeName}[  by {Word}] - {n}", nobody), QStringLiteral("One - 1"));
  EXPECT_EQ(Of("[by {Word}]", QStringLiteral("Various")), QString());
  EXPECT_EQ(Of("{Word}", QStringLiteral("Various")), QStringLiteral("Various"))
      << "outside brackets it stands";
}

TEST_F(RowFormats, BracketsAreLeftOutEachForItself) {
  EXPECT_EQ(Of("[a {Word}][b {CodeName}][c {Word}]d", QStringLiteral("Various")), QStringLiteral("b Oned"));
}

TEST_F(RowFormats, EachRowHasItsOwnText) {
  const auto rows = Open();
  const RowFormat format(QStringLiteral("{CodeName}[ {Word}]"), *rows);
  EXPECT_EQ(format.Of(*rows), QStringLiteral("One first"));
  rows->MoveLast();
  EXPECT_EQ(format.Of(*rows), QStringLiteral("Three"));
}

TEST_F(RowFormats, AFieldThatTheRowsDoNotHaveIsAFailure) {
  EXPECT_EQ(FailureNumber([&] { Of("{Nothing}"); }), database_error::kItemNotFound);
  EXPECT_EQ(FailureNumber([&] { Of("{CodeName"); }), database_error::kItemNotFound);
}

}  // namespace
}  // namespace zelmar::testing_support
