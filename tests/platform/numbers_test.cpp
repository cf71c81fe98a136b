#include "platform/numbers.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zelmar {
namespace {

TEST(Numbers, RoundHalfEvenSendsAHalfToTheEvenNeighbour) {
  EXPECT_EQ(RoundHalfEven<std::int32_t>(0.5), 0);
  EXPECT_EQ(RoundHalfEven<std::int32_t>(1.5), 2);
  EXPECT_EQ(RoundHalfEven<std::int32_t>(2.5), 2);
  EXPECT_EQ(RoundHalfEven<std::int32_t>(-0.5), 0);
  EXPECT_EQ(RoundHalfEven<std::int32_t>(-1.5), -2);
  EXPECT_EQ(RoundHalfEven<std::int32_t>(2.5001), 3);
}

TEST(Numbers, RoundHalfEvenRefusesWhatDoesNotFit) {
  EXPECT_EQ(RoundHalfEven<std::int16_t>(32767.4), 32767);
  EXPECT_THROW(RoundHalfEven<std::int16_t>(32767.5), OverflowError);
  EXPECT_EQ(RoundHalfEven<std::int16_t>(-32768.5), -32768);
  EXPECT_THROW(RoundHalfEven<std::int16_t>(-32769.0), OverflowError);
  EXPECT_EQ(RoundHalfEven<std::int32_t>(2147483647.0), 2147483647);
  EXPECT_THROW(RoundHalfEven<std::int32_t>(2147483648.0), OverflowError);
  EXPECT_THROW(RoundHalfEven<std::uint8_t>(-1.0), OverflowError);
  EXPECT_THROW(RoundHalfEven<std::int32_t>(std::nan("")), OverflowError);
  EXPECT_THROW(RoundHalfEven<std::int32_t>(INFINITY), OverflowError);
}

TEST(Numbers, IntegerPartIsTheLargestWholeNumberNotAbove) {
  EXPECT_EQ(IntegerPart<std::int32_t>(2.999), 2);
  EXPECT_EQ(IntegerPart<std::int32_t>(-0.25), -1);
  EXPECT_THROW(IntegerPart<std::int16_t>(32768.0), OverflowError);
}

TEST(Numbers, NarrowNeverWraps) {
  EXPECT_EQ(Narrow<std::uint8_t>(255), 255);
  EXPECT_THROW(Narrow<std::uint8_t>(256), OverflowError);
  EXPECT_THROW(Narrow<std::uint8_t>(-1), OverflowError);
  EXPECT_THROW(Narrow<std::int16_t>(40000), OverflowError);
  EXPECT_THROW(Narrow<std::int32_t>(std::size_t{1} << 40), OverflowError);
}

TEST(Numbers, CheckedArithmeticRefusesOverflow) {
  EXPECT_EQ(CheckedMultiply<std::int16_t>(181, 181), 32761);
  EXPECT_THROW(CheckedMultiply<std::int16_t>(182, 182), OverflowError);
  EXPECT_THROW(CheckedAdd<std::int32_t>(2147483647, 1), OverflowError);
  EXPECT_THROW(CheckedSubtract<std::int16_t>(-32768, 1), OverflowError);
}

TEST(Numbers, QuotientByZeroIsADivisionFailure) {
  EXPECT_DOUBLE_EQ(Quotient(480, 8), 60.0);
  EXPECT_THROW(Quotient(1, 0), DivisionError);
}

TEST(Numbers, FailuresCarryTheNumbersThatCallersTest) {
  EXPECT_EQ(OverflowError().Number(), error_number::kOverflow);
  EXPECT_EQ(DivisionError().Number(), error_number::kDivisionByZero);
  EXPECT_EQ(SubscriptError().Number(), error_number::kSubscript);
  EXPECT_EQ(DuplicateKeyError(QStringLiteral("7")).Number(), error_number::kKeyInUse);
  EXPECT_TRUE(DuplicateKeyError(QStringLiteral("7")).Description().contains(QStringLiteral("(7)")));
}

}  // namespace
}  // namespace zelmar
