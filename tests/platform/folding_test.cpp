#include "platform/folding.h"

#include <gtest/gtest.h>

namespace zelmar {
namespace {

struct FoldedRow {
  const char16_t* text;
  const char* folded;
};

TEST(Folding, CaseAndMarksFallAway) {
  for (const FoldedRow& row : {FoldedRow{u"Été", "ete"},
                               {u"E\u0301te\u0301", "ete"},
                               {u"ETE", "ete"},
                               {u"Für Elise", "fur elise"},
                               {u"Dvořák", "dvorak"},
                               {u"Señor", "senor"},
                               {u"Ångström", "angstrom"},
                               {u"İzmir", "izmir"}})
    EXPECT_EQ(FoldedForSearch(QString::fromUtf16(row.text)), QLatin1String(row.folded));
}

TEST(Folding, LettersWithoutAMarkBecomeThoseOfAPlainKeyboard) {
  for (const FoldedRow& row : {FoldedRow{u"Søren Ødegård", "soren odegard"},
                               {u"Łódź", "lodz"},
                               {u"Weiß", "weiss"},
                               {u"Œuvre Ægir", "oeuvre aegir"},
                               {u"Þór Đorđe Ħal Ŧ ı ð", "thor dorde hal t i d"},
                               {u"ﬁn", "fin"}})
    EXPECT_EQ(FoldedForSearch(QString::fromUtf16(row.text)), QLatin1String(row.folded));
}

TEST(Folding, ApostrophesAndDashesBecomePlain) {
  EXPECT_EQ(FoldedForSearch(QString::fromUtf16(u"O’Carolan‘s aʼb")), QLatin1String("o'carolan's a'b"));
  EXPECT_EQ(FoldedForSearch(QString::fromUtf16(u"a–b—c‑d‐e‒f")), QLatin1String("a-b-c-d-e-f"));
}

TEST(Folding, OtherSignsStay) {
  EXPECT_EQ(FoldedForSearch(QStringLiteral("100% _a* [x] ? \\ & 'n'")),
            QLatin1String("100% _a* [x] ? \\ & 'n'"));
  EXPECT_EQ(FoldedForSearch(QString::fromUtf16(u"Ж音")), QString::fromUtf16(u"ж音"));
  EXPECT_EQ(FoldedForSearch(QString()), QString());
}

}  // namespace
}  // namespace zelmar
