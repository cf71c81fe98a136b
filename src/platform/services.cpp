#include "platform/services.h"

#include <cmath>

#include "platform/numbers.h"

namespace zelmar {

namespace {

// A queue that waits longer than this makes a window feel stuck.
constexpr double kServingPeriodSeconds = 0.008;

}  // namespace

double SecondsSinceMidnight() {
  return Platform().clock->SecondsSinceMidnight();
}

void ServeEvents() {
  Platform().events->Serve();
}

void WaitUntil(double seconds) {
  Platform().events->WaitUntil(seconds);
}

MessageAnswer ShowMessage(MessageIcon icon, const QString& text, const QString& title, MessageButtons buttons,
                          MessageAnswer default_button) {
  const auto service = Platform().messages;
  if (!service) return default_button;
  return service->Show(icon, text, title, buttons, default_button);
}

QString InputBox(const QString& prompt, const QString& title, const QString& default_text) {
  const auto service = Platform().input;
  return service ? service->Ask(prompt, title, default_text) : QString();
}

QString ChooseFile(FileChoice purpose, const QString& title, const QString& filter, const QString& current) {
  const auto service = Platform().files;
  return service ? service->Choose(purpose, title, filter, current) : QString();
}

void SeedAnew() {
  Platform().chance->SeedAnew();
}

double Rnd() {
  return Platform().chance->Rnd();
}

std::int32_t DrawBelow(std::int32_t count) {
  if (count < 1) throw SubscriptError(QStringLiteral("There is nothing to choose from."));
  return IntegerPart<std::int32_t>(Rnd() * count);
}

void PacedServing::ServeWhenDue() {
  const double now = SecondsSinceMidnight();
  // The absolute value keeps a loop that crosses midnight alive.
  if (last_served_ >= 0.0 && std::abs(now - last_served_) < kServingPeriodSeconds) return;
  ServeEvents();
  last_served_ = SecondsSinceMidnight();
}

}  // namespace zelmar
