#include "notation/staff_alignment.h"

#include <array>

#include "platform/numbers.h"

namespace zelmar {

namespace {

// The grid of a half bar: not a number of pulses, but the two half-bar beats.
constexpr std::int16_t kHalfBar = 0;
constexpr std::int16_t kFinestGrid = 30;

struct WrittenValue {
  double from;  // crotchets
  double to;
  bool to_included;
  double duration;
  std::int16_t grid;  // pulses
};

//                        from   to     incl.  duration grid
constexpr std::array<WrittenValue, 8> kWrittenValues = {{
    {3.125, 4.5, false, 4.0, kHalfBar},
    {2.126, 3.125, false, 3.0, 120},
    {1.876, 2.125, true, 2.0, 120},
    {1.126, 1.875, false, 1.5, 60},
    {0.876, 1.125, false, 1.0, 60},
    {0.626, 0.875, true, 0.75, 30},
    {0.376, 0.625, false, 0.5, 30},
    {0.126, 0.375, false, 0.25, 30},
}};
constexpr double kLongest = 4.5;  // from here on the duration stays

const WrittenValue* WrittenValueOf(double duration) {
  for (const WrittenValue& value : kWrittenValues)
    if (duration >= value.from && (duration < value.to || (value.to_included && duration == value.to)))
      return &value;
  return nullptr;
}

void MoveToHalfBar(Tone& tone) {
  if (tone.Beat() == 2) tone.SetBeat(3);
  if (tone.Beat() == 4) {
    tone.SetBeat(1);
    tone.SetBar(CheckedAdd<std::int16_t>(tone.Bar(), 1));
  }
  tone.SetTick(0);
}

}  // namespace

void RoundBoundary(Tone& tone, const BarMeasure& measure, std::int16_t grid) {
  const auto rest = static_cast<std::int16_t>(tone.Tick() % grid);
  auto tick = static_cast<std::int16_t>(tone.Tick() - rest);
  if (rest >= grid / 2) tick = CheckedAdd(tick, grid);
  if (tick == measure.pulses_per_beat) {
    tick = 0;
    tone.SetBeat(CheckedAdd<std::int16_t>(tone.Beat(), 1));
    if (tone.Beat() > measure.beats_per_bar) {
      tone.SetBar(CheckedAdd<std::int16_t>(tone.Bar(), 1));
      tone.SetBeat(1);
    }
  }
  tone.SetTick(tick);
}

void AlignNote(Tone& tone, const BarMeasure& measure, bool save_durations, bool align_boundaries) {
  const double duration = tone.Duration();
  const WrittenValue* const value = WrittenValueOf(duration);
  if (save_durations && value != nullptr) tone.SetDuration(value->duration);
  if (!align_boundaries) return;
  if (duration >= kLongest || (value != nullptr && value->grid == kHalfBar))
    MoveToHalfBar(tone);
  else
    RoundBoundary(tone, measure, value != nullptr ? value->grid : kFinestGrid);
}

}  // namespace zelmar
