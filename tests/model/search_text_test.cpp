// Typed texts and what they find.
#include "model/search_text.h"

#include <gtest/gtest.h>

namespace zelmar {
namespace {

TEST(SearchText, CaseAccentsAndBlanksAroundMakeNoDifference) {
  const QString form = SearchForm(QStringLiteral("dvorak"));
  for (const char* typed : {"Dvořák", "DVORAK", "  dvorak "})
    EXPECT_EQ(SearchForm(QString::fromUtf8(typed)), form) << typed;
  EXPECT_EQ(SearchForm(QStringLiteral("ŒUVRE")), SearchForm(QStringLiteral("œuvre")));
  EXPECT_NE(SearchForm(QStringLiteral("O'Carolan")), SearchForm(QStringLiteral("OCarolan")));
}

TEST(SearchText, EveryWordIsWantedInAnyOrder) {
  const QString text = SearchForm(QStringLiteral("The Swan by Saint-Saens"));
  EXPECT_TRUE(HoldsEveryWord(text, SearchForm(QStringLiteral("saint swan"))));
  EXPECT_TRUE(HoldsEveryWord(text, QString()));
  EXPECT_FALSE(HoldsEveryWord(text, SearchForm(QStringLiteral("swan lake"))));
}

TEST(SearchText, LetterByLetterEachKeepsItsPlace) {
  EXPECT_EQ(LetterByLetter(QStringLiteral("A Dvořák! Ä")), QStringLiteral("a dvorak! a"));
  EXPECT_EQ(LetterByLetter(QStringLiteral("ß½")).size(), 2);
}

TEST(ValueTyped, TheVeryValueComesFirst) {
  const QStringList values = {QStringLiteral("bach"), QStringLiteral("Bach")};
  EXPECT_EQ(ValueTyped(values, QStringLiteral("Bach")), QStringLiteral("Bach"));
  EXPECT_EQ(ValueTyped(values, QStringLiteral("bach")), QStringLiteral("bach"));
}

TEST(ValueTyped, AnotherCaseOrAnAccentLessFindsTheOnlyOne) {
  const QStringList values = {QStringLiteral("Dvořák"), QStringLiteral("Bach")};
  EXPECT_EQ(ValueTyped(values, QStringLiteral(" dvorak")), QStringLiteral("Dvořák"));
  EXPECT_EQ(ValueTyped(values, QStringLiteral("BACH")), QStringLiteral("Bach"));
}

TEST(ValueTyped, WhatFitsTwoValuesOrIsOnlyTheBeginningOfOneFindsNone) {
  const QStringList values = {QStringLiteral("bach"), QStringLiteral("Bach"), QStringLiteral("Mozart")};
  EXPECT_EQ(ValueTyped(values, QStringLiteral("BACH")), std::nullopt);
  EXPECT_EQ(ValueTyped(values, QStringLiteral("Moz")), std::nullopt);
  EXPECT_EQ(ValueTyped(values, QStringLiteral(" ")), std::nullopt);
  EXPECT_EQ(ValueTyped(values, QString()), std::nullopt);
}

TEST(ValueTyped, AValueOfNothingButBlanksIsFoundOnlyAsItself) {
  EXPECT_EQ(ValueTyped({QStringLiteral(" ")}, QStringLiteral(" ")), QStringLiteral(" "));
  EXPECT_EQ(ValueTyped({QStringLiteral(" ")}, QStringLiteral("  ")), std::nullopt);
}

}  // namespace
}  // namespace zelmar
