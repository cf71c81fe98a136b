// What counts as a number in a field, and what it is worth.
#include "model/typed_number.h"

#include <gtest/gtest.h>

#include <QString>
#include <cmath>

namespace zelmar {
namespace {

struct Reading {
  const char16_t* text;
  double value;
  double whole_part;
  bool has_fraction;
};

TEST(TypedNumber, IsDigitsWithOneSignAndOnePointAtMost) {
  constexpr Reading kReadings[] = {
      {u"0", 0, 0, false},
      {u"7", 7, 7, false},
      {u"+7", 7, 7, false},
      {u"-7", -7, -7, false},
      {u"007", 7, 7, false},
      {u"2.5", 2.5, 2, true},
      {u"-2.5", -2.5, -3, true},
      {u".5", 0.5, 0, true},
      {u"-.5", -0.5, -1, true},
      {u"5.", 5, 5, false},
      {u"3.0", 3, 3, false},
      {u"-3.0", -3, -3, false},
      {u"0.25", 0.25, 0, true},
      {u"  4  ", 4, 4, false},
      {u"\t4", 4, 4, false},
      {u"\u00A04", 4, 4, false},
      {u"32768", 32768, 32768, false},
  };
  for (const Reading& row : kReadings) {
    const auto number = ReadNumber(row.text);
    ASSERT_TRUE(number) << qPrintable(QString::fromUtf16(row.text));
    EXPECT_EQ(number->value, row.value) << qPrintable(QString::fromUtf16(row.text));
    EXPECT_EQ(number->whole_part, row.whole_part) << qPrintable(QString::fromUtf16(row.text));
    EXPECT_EQ(number->has_fraction, row.has_fraction) << qPrintable(QString::fromUtf16(row.text));
  }
}

TEST(TypedNumber, IsNothingElse) {
  const QString texts = QStringLiteral(
      "| |x|-|+|.|-.|--1|+-1|1-|- 1|1 "
      "2|1.2.3|1,5|1,000|1e3|1E3|0x10|&H10|$5|(5)|5%|inf|nan|1_0|\u0663|\uFF13|\u00BD"
      "|\u22125");
  for (const QString& text : texts.split(QLatin1Char('|')))
    EXPECT_FALSE(ReadNumber(text)) << qPrintable(text);
  EXPECT_FALSE(ReadNumber(QString(QStringLiteral("1") + QChar(0) + QStringLiteral("2"))));
}

TEST(TypedNumber, OfAnyLengthIsReadWithoutOverflow) {
  const QString digits(5000, QLatin1Char('9'));
  EXPECT_TRUE(std::isinf(ReadNumber(digits)->value));
  EXPECT_LT(ReadNumber(QString(QLatin1Char('-') + digits))->value, 0);
  EXPECT_TRUE(std::isinf(ReadNumber(QString(QLatin1Char('-') + digits))->whole_part));
  const auto small =
      ReadNumber(QString(QStringLiteral("0.") + QString(5000, QLatin1Char('0')) + QLatin1Char('1')));
  ASSERT_TRUE(small);
  EXPECT_EQ(small->value, 0.0);
  EXPECT_TRUE(small->has_fraction);
  EXPECT_EQ(ReadNumber(QString(QString(5000, QLatin1Char('0')) + QLatin1Char('7')))->value, 7.0);
}

// A floating-point number would round these up.
TEST(TypedNumber, HasItsWholePartFromTheDigitsThemselves) {
  const auto number = ReadNumber(u"40.99999999999999999999");
  EXPECT_EQ(number->whole_part, 40.0);
  EXPECT_TRUE(number->has_fraction);
  EXPECT_EQ(ReadNumber(u"-0.00000000000000000000000001")->whole_part, -1.0);
}

TEST(TypedNumber, DoesNotWrapWhereItDoesNotFit) {
  EXPECT_EQ(ReadNumber(u"32767.9")->WholePart<std::int16_t>(), 32767);
  EXPECT_THROW(ReadNumber(u"32768")->WholePart<std::int16_t>(), OverflowError);
  EXPECT_THROW(ReadNumber(u"-0.5")->WholePart<std::uint8_t>(), OverflowError);
  EXPECT_EQ(ReadNumber(u"2.5")->Rounded<std::int16_t>(), 2);
  EXPECT_EQ(ReadNumber(u"3.5")->Rounded<std::int16_t>(), 4);
  EXPECT_THROW(ReadNumber(u"255.6")->Rounded<std::uint8_t>(), OverflowError);
  EXPECT_THROW(ReadNumber(QString(400, QLatin1Char('9')))->Rounded<std::int32_t>(), OverflowError);
}

TEST(TypedNumber, ThatIsRequiredAndMissingIsAFailure) {
  EXPECT_EQ(RequireNumber(u"12").value, 12);
  try {
    RequireNumber(u"twelve");
    ADD_FAILURE() << "nothing was thrown";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), error_number::kTypeMismatch);
  }
}

}  // namespace
}  // namespace zelmar
