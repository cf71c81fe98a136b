// The rows of rules that a typed text must pass, and the ready-made tests.
#include "model/field_rules.h"

#include <gtest/gtest.h>

namespace zelmar {
namespace {

using namespace typed;

bool Passes(const FieldTest& test, const char16_t* text) {
  return test(QString::fromUtf16(text));
}

TEST(FieldRules, TheFirstRowThatFailsGivesTheBox) {
  const std::vector<FieldRule> rules = {
      {Numeric(), MessageIcon::kExclamation, QStringLiteral("Invalid Tick value"),
       QStringLiteral("not numeric")},
      {WithoutFraction(),
       MessageIcon::kCritical,
       {},
       QStringLiteral("a fraction"),
       AfterFailure::kRuleBetweenFields},
      {Within(0, 119), MessageIcon::kInformation, QStringLiteral("Tick out of valid range"),
       QStringLiteral("outside")},
  };
  EXPECT_FALSE(FirstRefusal(rules, QStringLiteral("119")));
  const auto words = FirstRefusal(rules, QStringLiteral("x"));
  ASSERT_TRUE(words);
  EXPECT_EQ(words->text, QStringLiteral("not numeric"));
  EXPECT_EQ(words->title, QStringLiteral("Invalid Tick value"));
  EXPECT_EQ(words->icon, MessageIcon::kExclamation);
  EXPECT_EQ(words->after, AfterFailure::kStop);
  // Both of the last two rows fail.
  const auto fraction = FirstRefusal(rules, QStringLiteral("500.5"));
  ASSERT_TRUE(fraction);
  EXPECT_EQ(fraction->text, QStringLiteral("a fraction"));
  EXPECT_EQ(fraction->title, QString());
  EXPECT_EQ(fraction->after, AfterFailure::kRuleBetweenFields);
  EXPECT_EQ(FirstRefusal(rules, QStringLiteral("120"))->icon, MessageIcon::kInformation);
}

TEST(FieldRules, NoRowsPassEverything) {
  EXPECT_FALSE(FirstRefusal({}, QString()));
}

TEST(FieldRules, EndsAndWordsAreAskedForWhenTheRuleIsTried) {
  int bars = 4;
  const std::vector<FieldRule> rules = {
      {Within(1, [&bars] { return bars; }), MessageIcon::kExclamation, {}, [&bars] {
         return QStringLiteral("between 1 and %1").arg(bars);
       }}};
  EXPECT_FALSE(FirstRefusal(rules, QStringLiteral("4")));
  EXPECT_EQ(FirstRefusal(rules, QStringLiteral("5"))->text, QStringLiteral("between 1 and 4"));
  bars = 8;
  EXPECT_FALSE(FirstRefusal(rules, QStringLiteral("5")));
  EXPECT_EQ(FirstRefusal(rules, QStringLiteral("9"))->text, QStringLiteral("between 1 and 8"));
}

TEST(FieldTests, ARangeHoldsBothItsEnds) {
  const FieldTest test = Within(0.25, 40);
  for (const char16_t* text : {u"0.25", u"40", u"40.0", u" 3 "}) EXPECT_TRUE(Passes(test, text));
  for (const char16_t* text : {u"0.24", u"40.5", u"-1", u"", u"x", u"99999999999999999999999999"})
    EXPECT_FALSE(Passes(test, text));
}

TEST(FieldTests, OneEndAlone) {
  EXPECT_TRUE(Passes(AtLeast(0), u"0"));
  EXPECT_FALSE(Passes(AtLeast(0), u"-0.1"));
  EXPECT_TRUE(Passes(AtMost(12), u"12"));
  EXPECT_FALSE(Passes(AtMost(12), u"12.1"));
  EXPECT_TRUE(Passes(Below(120), u"119.9"));
  EXPECT_FALSE(Passes(Below(120), u"120"));
  for (const FieldTest& test : {AtLeast(0), AtMost(0), Below(9)}) EXPECT_FALSE(Passes(test, u"x"));
}

TEST(FieldTests, TheWholePartIsLookedAtAlone) {
  EXPECT_TRUE(Passes(WholePartWithin(1, 6), u"6.9"));
  EXPECT_FALSE(Passes(WholePartWithin(1, 6), u"0.9"));
  EXPECT_FALSE(Passes(WholePartWithin(1, 6), u"7"));
  EXPECT_FALSE(Passes(WholePartWithin(1, 6), u"six"));
  const FieldTest denominator = WholePartOneOf({2, 4, 8});
  for (const char16_t* text : {u"2", u"4", u"8", u"4.7"}) EXPECT_TRUE(Passes(denominator, text));
  for (const char16_t* text : {u"3", u"16", u"-2", u"1.9", u"", u"four"})
    EXPECT_FALSE(Passes(denominator, text));
}

TEST(FieldTests, AFractionIsADigitOtherThanZeroBehindThePoint) {
  EXPECT_TRUE(Passes(WithoutFraction(), u"3.000"));
  EXPECT_FALSE(Passes(WithoutFraction(), u"3.001"));
  EXPECT_FALSE(Passes(WithoutFraction(), u"3.00000000000000000000000001"));
  EXPECT_FALSE(Passes(WithoutFraction(), u"three"));
}

TEST(FieldTests, ANumberOfAListThatIsAskedFor) {
  std::vector<int> tracks = {1, 3};
  const FieldTest test = EqualToOneOf([&tracks] { return tracks; });
  EXPECT_TRUE(Passes(test, u"3"));
  EXPECT_TRUE(Passes(test, u"3.0"));
  EXPECT_FALSE(Passes(test, u"3.5"));
  EXPECT_FALSE(Passes(test, u"2"));
  tracks = {2};
  EXPECT_TRUE(Passes(test, u"2"));
  EXPECT_FALSE(Passes(EqualToOneOf(std::vector<int>{}), u"0"));
}

TEST(FieldTests, WhatIsRequiredIsMoreThanBlanks) {
  EXPECT_TRUE(Passes(Required(), u"a"));
  EXPECT_FALSE(Passes(Required(), u""));
  EXPECT_FALSE(Passes(Required(), u" \t\u00A0"));
}

TEST(FieldTests, OneOfSeveralTextsCountsAsItIsWritten) {
  const FieldTest test = OneOf(QStringList{QStringLiteral("Full"), QStringLiteral("Theme")});
  EXPECT_TRUE(Passes(test, u"Full"));
  EXPECT_FALSE(Passes(test, u"full"));
  EXPECT_FALSE(Passes(test, u""));
}

TEST(FieldTests, EitherOfTwo) {
  const FieldTest empty_or_number = Either([](const QString& text) { return text.isEmpty(); }, Numeric());
  EXPECT_TRUE(Passes(empty_or_number, u""));
  EXPECT_TRUE(Passes(empty_or_number, u"5"));
  EXPECT_FALSE(Passes(empty_or_number, u"x"));
}

TEST(FieldStores, HandOnTheNumberInItsWidth) {
  std::int16_t bar = 0;
  const FieldStore store = StoreWholePart<std::int16_t>([&bar](std::int16_t value) { bar = value; });
  store(QStringLiteral("12.7"));
  EXPECT_EQ(bar, 12);
  EXPECT_THROW(store(QStringLiteral("40000")), OverflowError);
  EXPECT_THROW(store(QStringLiteral("bar")), Failure);
  EXPECT_EQ(bar, 12);
  std::uint8_t rounded = 0;
  StoreRounded<std::uint8_t>([&rounded](std::uint8_t value) { rounded = value; })(QStringLiteral("12.7"));
  EXPECT_EQ(rounded, 13);
  double duration = 0;
  StoreNumber([&duration](double value) { duration = value; })(QStringLiteral("0.25"));
  EXPECT_EQ(duration, 0.25);
  EXPECT_THROW(StoreNumber([](double) {})(QString(400, QLatin1Char('9'))), OverflowError);
}

}  // namespace
}  // namespace zelmar
