#include "model/pulses.h"

#include "platform/numbers.h"

namespace zelmar {

std::int32_t PulseFromBarBeatTick(std::int16_t bar, std::int16_t beat, std::int16_t tick,
                                  std::int16_t beats_per_bar, std::uint8_t beat_length) {
  const auto bars_before = CheckedSubtract<std::int16_t>(bar, 1);
  const auto beats_before_bar = CheckedMultiply<std::int16_t>(bars_before, beats_per_bar);
  const auto beats_before = CheckedSubtract<std::int16_t>(beat, 1);
  const auto bars =
      RoundHalfEven<std::int32_t>(Quotient(beats_before_bar * double{kPulsesPerSemibreve}, beat_length));
  const auto beats =
      RoundHalfEven<std::int32_t>(Quotient(beats_before * double{kPulsesPerSemibreve}, beat_length));
  return CheckedAdd<std::int32_t>(CheckedAdd(bars, beats), tick);
}

double PulsesOfValue(std::uint8_t beat_length) {
  return Quotient(double{kPulsesPerSemibreve}, beat_length);
}

double MillisecondsOfCrotchet(std::int16_t tempo) {
  constexpr double kMillisecondsPerMinute = 60000.0;
  return Quotient(kMillisecondsPerMinute, tempo);
}

}  // namespace zelmar
