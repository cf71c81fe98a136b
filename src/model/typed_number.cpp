#include "model/typed_number.h"

#include <charconv>
#include <limits>
#include <string>

#include "platform/failure.h"

namespace zelmar {

namespace {

bool IsDigit(QChar sign) {
  return sign >= u'0' && sign <= u'9';
}

// A text taken apart at its point.
struct Digits {
  bool negative = false;
  std::string whole;
  std::string fraction;
};

std::optional<Digits> TakeApart(QStringView text) {
  text = text.trimmed();
  Digits digits;
  if (text.startsWith(u'-') || text.startsWith(u'+')) {
    digits.negative = text.startsWith(u'-');
    text = text.mid(1);
  }
  bool behind_point = false;
  for (const QChar sign : text) {
    if (sign == u'.' && !behind_point) {
      behind_point = true;
    } else if (IsDigit(sign)) {
      (behind_point ? digits.fraction : digits.whole) += sign.toLatin1();
    } else {
      return std::nullopt;
    }
  }
  if (digits.whole.empty() && digits.fraction.empty()) return std::nullopt;
  return digits;
}

bool HoldsOtherThanZero(const std::string& digits) {
  return digits.find_first_not_of('0') != std::string::npos;
}

// Digits beyond the range of a double: as large as there is, or as small.
double Magnitude(const std::string& digits, bool large) {
  double value = 0.0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (result.ec != std::errc::result_out_of_range) return value;
  return large ? std::numeric_limits<double>::infinity() : 0.0;
}

}  // namespace

std::optional<TypedNumber> ReadNumber(QStringView text) {
  const std::optional<Digits> digits = TakeApart(text);
  if (!digits) return std::nullopt;
  const bool large = HoldsOtherThanZero(digits->whole);
  TypedNumber number;
  number.has_fraction = HoldsOtherThanZero(digits->fraction);
  number.value = Magnitude('0' + digits->whole + '.' + digits->fraction + '0', large);
  number.whole_part = Magnitude('0' + digits->whole, large);
  if (!digits->negative) return number;
  number.value = -number.value;
  number.whole_part = -number.whole_part - (number.has_fraction ? 1.0 : 0.0);
  return number;
}

TypedNumber RequireNumber(QStringView text) {
  const std::optional<TypedNumber> number = ReadNumber(text);
  if (!number) throw Failure(error_number::kTypeMismatch, QStringLiteral("Type mismatch"));
  return *number;
}

}  // namespace zelmar
