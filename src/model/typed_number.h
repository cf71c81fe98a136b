// Numbers as a person types them into a field.
//
// A number is one sign or none, then digits from 0 to 9, with one point at most before, between or behind
// them; blanks around it are passed over. It may be of any length. Nothing else is a number: no empty text,
// no comma, no sign or blank inside, no exponent, and no digits of other scripts, since a value is shown,
// printed and stored in these ten and would be read in two ways.
#pragma once

#include <QStringView>
#include <concepts>
#include <optional>

#include "platform/numbers.h"

namespace zelmar {

struct TypedNumber {
  double value = 0.0;         // the nearest there is; infinite beyond the largest
  double whole_part = 0.0;    // the largest whole number that is not above what is typed
  bool has_fraction = false;  // a digit other than 0 stands behind the point

  // Both throw OverflowError when the number does not fit. A half is rounded to the even neighbour.
  template <std::integral T>
  T WholePart() const {
    return IntegerPart<T>(whole_part);
  }
  template <std::integral T>
  T Rounded() const {
    return RoundHalfEven<T>(value);
  }
};

// Nothing when the text is no number.
std::optional<TypedNumber> ReadNumber(QStringView text);

// Throws Failure (kTypeMismatch) when the text is no number.
TypedNumber RequireNumber(QStringView text);

}  // namespace zelmar
