// Notes that are snapped, against the plain table of written values.
#include <gtest/gtest.h>

#include "notation/staff_alignment.h"
#include "support/dice.h"

namespace zelmar {
namespace {

using testing_support::Dice;

void PlainBoundary(Tone& tone, int pulses_per_beat, int beats_per_bar, int grid) {
  const int rest = tone.Tick() % grid;
  int tick = rest * 2 >= grid ? tone.Tick() - rest + grid : tone.Tick() - rest;
  if (tick == pulses_per_beat) {
    tick = 0;
    tone.SetBeat(static_cast<std::int16_t>(tone.Beat() + 1));
    if (tone.Beat() > beats_per_bar) {
      tone.SetBar(static_cast<std::int16_t>(tone.Bar() + 1));
      tone.SetBeat(1);
    }
  }
  tone.SetTick(static_cast<std::int16_t>(tick));
}

void PlainAlign(Tone& tone, int pulses_per_beat, int beats_per_bar, bool durations, bool boundaries) {
  struct Row {
    double from, to;
    bool with_end;
    double duration;
    int grid;  // 0 for the move by half a bar
  };
  static const Row kRows[] = {
      {4.5, 1e9, true, 0, 0},         {3.125, 4.5, false, 4, 0},      {2.126, 3.125, false, 3, 120},
      {1.876, 2.125, true, 2, 120},   {1.126, 1.875, false, 1.5, 60}, {0.876, 1.125, false, 1, 60},
      {0.626, 0.875, true, 0.75, 30}, {0.376, 0.625, false, 0.5, 30}, {0.126, 0.375, false, 0.25, 30}};
  double duration = 0;
  int grid = 30;
  for (const Row& row : kRows)
    if (tone.Duration() >= row.from &&
        (tone.Duration() < row.to || (row.with_end && tone.Duration() == row.to))) {
      duration = row.duration;
      grid = row.grid;
      break;
    }
  if (durations && duration > 0) tone.SetDuration(duration);
  if (!boundaries) return;
  if (grid > 0) {
    PlainBoundary(tone, pulses_per_beat, beats_per_bar, grid);
    return;
  }
  if (tone.Beat() == 2) tone.SetBeat(3);
  if (tone.Beat() == 4) {
    tone.SetBeat(1);
    tone.SetBar(static_cast<std::int16_t>(tone.Bar() + 1));
  }
  tone.SetTick(0);
}

TEST(SnappedNotes, GoWhereThePlainTablePutsThem) {
  Dice dice(3);
  static const double kEnds[] = {4.5,   3.125, 2.126, 2.125, 1.876, 1.875, 1.126, 1.125,
                                 0.876, 0.875, 0.626, 0.625, 0.376, 0.375, 0.126, 0.1255};
  for (int i = 0; i < 4000; ++i) {
    const int beats = 2 + dice(5), pulses = dice(2) ? 120 : 60;
    Tone tone, wanted;
    for (Tone* const one : {&tone, &wanted}) one->SetBar(3);
    const int beat = 1 + dice(beats), tick = dice(pulses);
    const double duration = dice(3) == 0 ? kEnds[dice(16)] : dice(5500) / 1000.0;
    for (Tone* const one : {&tone, &wanted}) {
      one->SetBeat(static_cast<std::int16_t>(beat));
      one->SetTick(static_cast<std::int16_t>(tick));
      one->SetDuration(duration);
    }
    const bool durations = dice(2) == 0, boundaries = dice(2) == 0;
    AlignNote(tone, {static_cast<std::int16_t>(pulses), static_cast<std::int16_t>(beats)}, durations,
              boundaries);
    PlainAlign(wanted, pulses, beats, durations, boundaries);
    EXPECT_EQ(tone.Duration(), wanted.Duration()) << duration;
    EXPECT_EQ(tone.Bar(), wanted.Bar()) << duration << " at " << beat << '.' << tick;
    EXPECT_EQ(tone.Beat(), wanted.Beat()) << duration << " at " << beat << '.' << tick;
    EXPECT_EQ(tone.Tick(), wanted.Tick()) << duration << " at " << beat << '.' << tick;
  }
}

}  // namespace
}  // namespace zelmar
