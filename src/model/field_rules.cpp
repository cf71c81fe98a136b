#include "model/field_rules.h"

#include <algorithm>
#include <cmath>

namespace zelmar {

std::optional<Refusal> FirstRefusal(const std::vector<FieldRule>& rules, const QString& text) {
  for (const FieldRule& rule : rules)
    if (!rule.test(text)) return Refusal{rule.icon, rule.title.Now(), rule.text.Now(), rule.after};
  return std::nullopt;
}

FieldStore StoreNumber(std::function<void(double)> take) {
  return [take = std::move(take)](const QString& text) {
    const double value = RequireNumber(text).value;
    if (!std::isfinite(value)) throw OverflowError();
    take(value);
  };
}

namespace typed {

namespace {

// A test that only numbers can pass.
template <typename Passes>
FieldTest OfNumber(Passes passes) {
  return [passes = std::move(passes)](const QString& text) {
    const auto number = ReadNumber(text);
    return number && passes(*number);
  };
}

}  // namespace

FieldTest Numeric() {
  return OfNumber([](const TypedNumber&) { return true; });
}

FieldTest WithoutFraction() {
  return OfNumber([](const TypedNumber& number) { return !number.has_fraction; });
}

FieldTest Within(Bound from, Bound to) {
  return OfNumber([from = std::move(from), to = std::move(to)](const TypedNumber& number) {
    return number.value >= from.Now() && number.value <= to.Now();
  });
}

FieldTest AtLeast(Bound from) {
  return OfNumber([from = std::move(from)](const TypedNumber& number) { return number.value >= from.Now(); });
}

FieldTest AtMost(Bound to) {
  return OfNumber([to = std::move(to)](const TypedNumber& number) { return number.value <= to.Now(); });
}

FieldTest Below(Bound end) {
  return OfNumber([end = std::move(end)](const TypedNumber& number) { return number.value < end.Now(); });
}

FieldTest WholePartWithin(Bound from, Bound to) {
  return OfNumber([from = std::move(from), to = std::move(to)](const TypedNumber& number) {
    return number.whole_part >= from.Now() && number.whole_part <= to.Now();
  });
}

FieldTest WholePartOneOf(std::vector<int> numbers) {
  return OfNumber([numbers = std::move(numbers)](const TypedNumber& number) {
    return std::find(numbers.begin(), numbers.end(), number.whole_part) != numbers.end();
  });
}

FieldTest EqualToOneOf(Asked<std::vector<int>> numbers) {
  return OfNumber([numbers = std::move(numbers)](const TypedNumber& number) {
    const std::vector<int> wanted = numbers.Now();
    return !number.has_fraction && std::find(wanted.begin(), wanted.end(), number.value) != wanted.end();
  });
}

FieldTest Required() {
  return [](const QString& text) { return !text.trimmed().isEmpty(); };
}

FieldTest OneOf(Asked<QStringList> texts) {
  return [texts = std::move(texts)](const QString& text) { return texts.Now().contains(text); };
}

FieldTest Either(FieldTest first, FieldTest second) {
  return [first = std::move(first), second = std::move(second)](const QString& text) {
    return first(text) || second(text);
  };
}

}  // namespace typed

}  // namespace zelmar
