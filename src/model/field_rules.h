// What a typed text must satisfy: rows of test, icon, title and text, tried in order.
//
//   {typed::Numeric(), MessageIcon::kExclamation, QStringLiteral("Invalid beat value"),
//    QStringLiteral("beat must be numeric, between 1 and 6.")}
//
// Tests and words that depend on the tune take a function, which is asked whenever the rule is tried.
#pragma once

#include <QString>
#include <QStringList>
#include <concepts>
#include <functional>
#include <optional>
#include <type_traits>
#include <vector>

#include "model/typed_number.h"
#include "platform/services.h"

namespace zelmar {

// True when the text passes.
using FieldTest = std::function<bool(const QString& text)>;

// A value that is fixed, or asked for at the moment when it is needed.
template <typename T>
class Asked {
 public:
  Asked() = default;
  template <typename Fixed>
  requires std::convertible_to<Fixed, T> Asked(const Fixed& value) : value_(value) {}
  template <typename Ask>
  requires(!std::convertible_to<Ask, T> && std::is_invocable_v<Ask> &&
           std::convertible_to<std::invoke_result_t<Ask>, T>) Asked(Ask ask)
      : ask_([ask = std::move(ask)] { return static_cast<T>(ask()); }) {}

  T Now() const { return ask_ ? ask_() : value_; }

 private:
  T value_{};
  std::function<T()> ask_;
};

// What follows on a row that fails: nothing, or the rule between the fields (FieldCheck) all the same.
enum class AfterFailure { kStop, kRuleBetweenFields };

struct FieldRule {
  FieldTest test;
  MessageIcon icon = MessageIcon::kExclamation;
  Asked<QString> title;  // empty for the application's own
  Asked<QString> text;
  AfterFailure after = AfterFailure::kStop;
};

// The box of a rule that failed, in the words of that moment.
struct Refusal {
  MessageIcon icon = MessageIcon::kExclamation;
  QString title;
  QString text;
  AfterFailure after = AfterFailure::kStop;
};

// Nothing when the text passes them all.
std::optional<Refusal> FirstRefusal(const std::vector<FieldRule>& rules, const QString& text);

// Ready-made tests. Those that compare numbers fail for what is no number (see typed_number.h).
namespace typed {

using Bound = Asked<double>;

FieldTest Numeric();
// "3" and "3.0" pass, "3.5" does not.
FieldTest WithoutFraction();
// The number itself; both ends belong to it.
FieldTest Within(Bound from, Bound to);
FieldTest AtLeast(Bound from);
FieldTest AtMost(Bound to);
FieldTest Below(Bound end);
// The whole part: "12.9" lies within 1 to 12.
FieldTest WholePartWithin(Bound from, Bound to);
FieldTest WholePartOneOf(std::vector<int> numbers);
// "2" and "2.0" equal 2, "2.5" does not.
FieldTest EqualToOneOf(Asked<std::vector<int>> numbers);
// Something other than blanks.
FieldTest Required();
// One of these texts, exactly as written.
FieldTest OneOf(Asked<QStringList> texts);
// Passes what any of the tests passes.
FieldTest Either(FieldTest first, FieldTest second);

}  // namespace typed

// What takes an accepted text.
using FieldStore = std::function<void(const QString& text)>;

// Stores that hand on the number, in the width of T. They throw OverflowError for one that does not fit, and
// Failure (kTypeMismatch) for a text that no rule has kept from being no number.
template <std::integral T>
FieldStore StoreWholePart(std::function<void(T)> take) {
  return [take = std::move(take)](const QString& text) { take(RequireNumber(text).WholePart<T>()); };
}
template <std::integral T>
FieldStore StoreRounded(std::function<void(T)> take) {
  return [take = std::move(take)](const QString& text) { take(RequireNumber(text).Rounded<T>()); };
}
FieldStore StoreNumber(std::function<void(double)> take);

}  // namespace zelmar
