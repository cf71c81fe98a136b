// What a person types, folded and compared, over random texts.
#include <gtest/gtest.h>

#include "model/search_text.h"
#include "platform/folding.h"
#include "support/dice.h"

namespace zelmar {
namespace {

using testing_support::Dice;

QString AnyText(Dice& dice) {
  const QString signs =
      QString::fromUtf8("aAeE\u00e9\u00c9\u00e8o\u00f6\u00d6c\u00e7nN\u00f1 %_*?'1\u0159\u0148");
  QString text;
  for (int length = dice(10); length > 0; --length) text.append(signs[dice(static_cast<int>(signs.size()))]);
  return text;
}

QString Plain(const QString& text) {
  static const QString kMarked = QString::fromUtf8("\u00e9\u00c9\u00e8\u00f6\u00d6\u00e7\u00f1\u0159\u0148");
  static const QString kBare = QStringLiteral("eeeoocnrn");
  QString plain;
  for (const QChar sign : text) {
    const auto place = kMarked.indexOf(sign);
    plain.append(place < 0 ? sign.toLower() : kBare[place]);
  }
  return plain;
}

TEST(TypedTexts, FoldToTheirBareLettersAndKeepEverySign) {
  Dice dice(1);
  for (int i = 0; i < 500; ++i) {
    const QString text = AnyText(dice);
    EXPECT_EQ(FoldedForSearch(text), Plain(text)) << text.toStdString();
    EXPECT_EQ(FoldedForSearch(FoldedForSearch(text)), FoldedForSearch(text));
    EXPECT_EQ(SearchForm(text), Plain(text).trimmed());
    EXPECT_EQ(LetterByLetter(text).size(), text.size());
    EXPECT_EQ(LetterByLetter(text), Plain(text));
    EXPECT_EQ(FoldedForSearch(text.normalized(QString::NormalizationForm_D)), Plain(text))
        << text.toStdString();
  }
}

TEST(TypedTexts, AreHeldByATextThatHoldsEveryWordOfThem) {
  Dice dice(2);
  for (int i = 0; i < 500; ++i) {
    const QString text = SearchForm(AnyText(dice)), typed = SearchForm(AnyText(dice).left(4));
    bool holds = true;
    for (const QString& word : typed.split(u' ', Qt::SkipEmptyParts)) holds = holds && text.contains(word);
    EXPECT_EQ(HoldsEveryWord(text, typed), holds) << text.toStdString() << " and " << typed.toStdString();
  }
}

TEST(TypedTexts, StandForTheVeryValueOrTheOnlyOneLikeIt) {
  const QStringList values = {QStringLiteral("Bach"), QStringLiteral("bach"),
                              QString::fromUtf8("Dvo\u0159\u00e1k"), QStringLiteral("Haydn")};
  EXPECT_EQ(ValueTyped(values, QStringLiteral("Bach")), QStringLiteral("Bach"));
  EXPECT_EQ(ValueTyped(values, QStringLiteral("bach")), QStringLiteral("bach"));
  EXPECT_EQ(ValueTyped(values, QStringLiteral("BACH")), std::nullopt);
  EXPECT_EQ(ValueTyped(values, QStringLiteral(" dvorak ")), values[2]);
  EXPECT_EQ(ValueTyped(values, QStringLiteral("Hayd")), std::nullopt);
  EXPECT_EQ(ValueTyped(values, QString()), std::nullopt);
}

}  // namespace
}  // namespace zelmar
