#include "model/pulses.h"

#include "platform/numbers.h"

namespace zelmar {

std::int32_t PulseFromBarBeatTick(std::int16_t bar, std::int16_t beat, std::int16_t tick,
                                  std::int16_t beats_per_bar, std::uint8_t beat_length) {
  const auto bars_before = CheckedSubtract<std::int16_t>(bar, 1);
  const auto beats_before_bar = CheckedMultiply<std::int16_t>(bars_before, beats_per_bar);
  const auto beats_before = CheckedSubtract<std::int16_t>(beat, 1);
  const auto bars = RoundHalfEven<std::int32_t>(Quotient(beats_before_bar * 480.0, beat_length));
  const auto beats = RoundHalfEven<std::int32_t>(Quotient(beats_before * 480.0, beat_length));
  return CheckedAdd<std::int32_t>(CheckedAdd(bars, beats), tick);
}

}  // namespace zelmar
