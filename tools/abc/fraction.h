// An exact fraction: lengths and times of music before they become pulses.
#pragma once

#include <cstdint>
#include <numeric>

#include "platform/numbers.h"

namespace zelmar {

// Always in lowest terms with a positive denominator. Throws OverflowError when a result does not fit 64
// bits, DivisionError for a denominator of 0.
class Fraction {
 public:
  constexpr Fraction() = default;
  Fraction(std::int64_t numerator, std::int64_t denominator = 1)
      : numerator_(numerator), denominator_(denominator) {
    if (denominator == 0) throw DivisionError();
    const std::int64_t divisor =
        std::gcd(numerator_, denominator_) * (denominator < 0 ? std::int64_t{-1} : std::int64_t{1});
    numerator_ /= divisor;
    denominator_ /= divisor;
  }

  std::int64_t Numerator() const { return numerator_; }
  std::int64_t Denominator() const { return denominator_; }
  double Value() const { return static_cast<double>(numerator_) / static_cast<double>(denominator_); }

  friend Fraction operator+(const Fraction& a, const Fraction& b) {
    const std::int64_t divisor = std::gcd(a.denominator_, b.denominator_);
    return {CheckedAdd(CheckedMultiply(a.numerator_, b.denominator_ / divisor),
                       CheckedMultiply(b.numerator_, a.denominator_ / divisor)),
            CheckedMultiply(a.denominator_, b.denominator_ / divisor)};
  }
  friend Fraction operator-(const Fraction& a, const Fraction& b) {
    return a + Fraction(-b.numerator_, b.denominator_);
  }
  friend Fraction operator*(const Fraction& a, const Fraction& b) {
    return {CheckedMultiply(a.numerator_, b.numerator_), CheckedMultiply(a.denominator_, b.denominator_)};
  }
  friend bool operator==(const Fraction& a, const Fraction& b) = default;
  friend bool operator<(const Fraction& a, const Fraction& b) { return (a - b).numerator_ < 0; }
  friend bool operator>(const Fraction& a, const Fraction& b) { return b < a; }

 private:
  std::int64_t numerator_ = 0;
  std::int64_t denominator_ = 1;
};

}  // namespace zelmar
