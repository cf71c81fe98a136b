// Checked arithmetic: every value that enters a field of fixed width passes through here.
#pragma once

#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <utility>

#include "platform/failure.h"

namespace zelmar {

// `value` in the width of To. Throws OverflowError when it does not fit; never wraps.
template <std::integral To, std::integral From>
constexpr To Narrow(From value) {
  if (!std::in_range<To>(value)) throw OverflowError();
  return static_cast<To>(value);
}

namespace numbers_detail {
template <std::integral To>
To FromWhole(double whole) {
  // Both limits are exact in a double for the widths in use (at most 32 bits).
  static_assert(sizeof(To) <= 4);
  if (!(whole >= static_cast<double>(std::numeric_limits<To>::min()) &&
        whole <= static_cast<double>(std::numeric_limits<To>::max())))
    throw OverflowError();
  return static_cast<To>(whole);
}
}  // namespace numbers_detail

// The nearest whole number, a half going to the even neighbour. Throws OverflowError when it does not fit,
// and for a value that is not a number.
template <std::integral To>
To RoundHalfEven(double value) {
  return numbers_detail::FromWhole<To>(std::nearbyint(value));
}

// The integer part: the largest whole number that is not above `value`. Throws OverflowError when it does not
// fit.
template <std::integral To>
To IntegerPart(double value) {
  return numbers_detail::FromWhole<To>(std::floor(value));
}

template <std::integral T>
constexpr T CheckedAdd(T a, T b) {
  T result{};
  if (__builtin_add_overflow(a, b, &result)) throw OverflowError();
  return result;
}

template <std::integral T>
constexpr T CheckedSubtract(T a, T b) {
  T result{};
  if (__builtin_sub_overflow(a, b, &result)) throw OverflowError();
  return result;
}

template <std::integral T>
constexpr T CheckedMultiply(T a, T b) {
  T result{};
  if (__builtin_mul_overflow(a, b, &result)) throw OverflowError();
  return result;
}

// numerator / denominator in floating point. Throws DivisionError when the denominator is 0.
inline double Quotient(double numerator, double denominator) {
  if (denominator == 0.0) throw DivisionError();
  return numerator / denominator;
}

}  // namespace zelmar
