// Snapping notes to written values and to the grid of the bar.
#include "notation/staff_alignment.h"

#include <gtest/gtest.h>

#include "platform/failure.h"

namespace zelmar {
namespace {

Tone ToneAt(std::int16_t bar, std::int16_t beat, std::int16_t tick, double duration = 1.0) {
  Tone tone;
  tone.SetBar(bar);
  tone.SetBeat(beat);
  tone.SetTick(tick);
  tone.SetDuration(duration);
  return tone;
}

struct Place {
  std::int16_t bar;
  std::int16_t beat;
  std::int16_t tick;
  bool operator==(const Place&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Place& place) {
  return out << place.bar << ":" << place.beat << ":" << place.tick;
}

Place PlaceOf(const Tone& tone) {
  return {tone.Bar(), tone.Beat(), tone.Tick()};
}

constexpr int kHalfBar = 0;

struct ValueRow {
  double duration;
  double snapped;
  int grid;
};

constexpr ValueRow kValueRows[] = {
    // both ends of every range, and the gaps between
    {100.0, 100.0, kHalfBar}, {4.5, 4.5, kHalfBar}, {4.4999, 4.0, kHalfBar}, {3.125, 4.0, kHalfBar},
    {3.1249, 3.0, 120},       {2.126, 3.0, 120},    {2.1255, 2.1255, 30},    {2.125, 2.0, 120},
    {1.876, 2.0, 120},        {1.8755, 1.8755, 30}, {1.875, 1.875, 30},      {1.8749, 1.5, 60},
    {1.126, 1.5, 60},         {1.1255, 1.1255, 30}, {1.125, 1.125, 30},      {1.1249, 1.0, 60},
    {0.876, 1.0, 60},         {0.8755, 0.8755, 30}, {0.875, 0.75, 30},       {0.626, 0.75, 30},
    {0.6255, 0.6255, 30},     {0.625, 0.625, 30},   {0.6249, 0.5, 30},       {0.376, 0.5, 30},
    {0.3755, 0.3755, 30},     {0.375, 0.375, 30},   {0.3749, 0.25, 30},      {0.126, 0.25, 30},
    {0.1259, 0.1259, 30},     {0.0, 0.0, 30},       {-2.0, -2.0, 30},
};

TEST(AlignNote, DurationsGoToTheNearestWrittenValue) {
  for (const ValueRow& row : kValueRows) {
    SCOPED_TRACE(row.duration);
    Tone tone = ToneAt(1, 1, 47, row.duration);
    AlignNote(tone, {}, true, false);
    EXPECT_EQ(tone.Duration(), row.snapped);
    EXPECT_EQ(PlaceOf(tone), (Place{1, 1, 47}));
  }
}

TEST(AlignNote, StartsGoToTheGridOfTheirValue) {
  for (const ValueRow& row : kValueRows) {
    SCOPED_TRACE(row.duration);
    // 47 is nearest to 0, 60 and 60 on the grids of 120, 60 and 30; 76 to 120, 60 and 90.
    for (const std::int16_t tick : {std::int16_t{47}, std::int16_t{76}}) {
      Tone tone = ToneAt(1, 1, tick, row.duration);
      AlignNote(tone, {}, false, true);
      EXPECT_EQ(tone.Duration(), row.duration);
      Place expected{1, 1, 0};
      if (row.grid == 60) expected.tick = 60;
      if (row.grid == 30) expected.tick = tick == 47 ? 60 : 90;
      if (row.grid == 120 && tick == 76) expected = {1, 2, 0};
      EXPECT_EQ(PlaceOf(tone), expected) << tick;
    }
  }
}

TEST(AlignNote, TheGridIsThatOfTheDurationBeforeItWasSnapped) {
  Tone tone = ToneAt(1, 1, 76, 3.2);
  AlignNote(tone, {}, true, true);
  EXPECT_EQ(tone.Duration(), 4.0);
  EXPECT_EQ(PlaceOf(tone), (Place{1, 1, 0}));
}

TEST(AlignNote, ALongNoteGoesToAHalfBar) {
  for (const auto& [beat, expected] :
       {std::pair(1, Place{7, 1, 0}), std::pair(2, Place{7, 3, 0}), std::pair(3, Place{7, 3, 0}),
        std::pair(4, Place{8, 1, 0}), std::pair(5, Place{7, 5, 0})}) {
    Tone tone = ToneAt(7, static_cast<std::int16_t>(beat), 100, 4.0);
    AlignNote(tone, {}, false, true);
    EXPECT_EQ(PlaceOf(tone), expected);
  }
}

TEST(AlignNote, NothingIsChangedUnlessAsked) {
  Tone tone = ToneAt(1, 2, 47, 1.1);
  AlignNote(tone, {}, false, false);
  EXPECT_EQ(PlaceOf(tone), (Place{1, 2, 47}));
  EXPECT_EQ(tone.Duration(), 1.1);
}

struct BoundaryRow {
  Place from;
  std::int16_t grid;
  Place to;
};

TEST(RoundBoundary, TheStartGoesToTheNearestMultiple) {
  constexpr BoundaryRow kRows[] = {
      {{1, 1, 0}, 30, {1, 1, 0}},    {{1, 1, 14}, 30, {1, 1, 0}},   {{1, 1, 15}, 30, {1, 1, 30}},
      {{1, 1, 29}, 30, {1, 1, 30}},  {{1, 1, 104}, 30, {1, 1, 90}}, {{1, 1, 105}, 30, {1, 2, 0}},
      {{1, 1, 29}, 60, {1, 1, 0}},   {{1, 1, 30}, 60, {1, 1, 60}},  {{1, 4, 89}, 60, {1, 4, 60}},
      {{1, 4, 90}, 60, {2, 1, 0}},   {{1, 1, 59}, 120, {1, 1, 0}},  {{1, 1, 60}, 120, {1, 2, 0}},
      {{9, 4, 60}, 120, {10, 1, 0}},
  };
  for (const BoundaryRow& row : kRows) {
    Tone tone = ToneAt(row.from.bar, row.from.beat, row.from.tick);
    RoundBoundary(tone, {}, row.grid);
    EXPECT_EQ(PlaceOf(tone), row.to) << row.from << " on " << row.grid;
  }
}

TEST(RoundBoundary, TheBeatEndsWhereItsPulsesDo) {
  Tone tone = ToneAt(1, 6, 50);
  RoundBoundary(tone, {60, 6}, 30);
  EXPECT_EQ(PlaceOf(tone), (Place{2, 1, 0}));
  tone = ToneAt(1, 5, 50);
  RoundBoundary(tone, {60, 6}, 30);
  EXPECT_EQ(PlaceOf(tone), (Place{1, 6, 0}));
}

TEST(RoundBoundary, TheLastBarThatCountsIsNotPassed) {
  Tone tone = ToneAt(32767, 4, 119);
  EXPECT_THROW(RoundBoundary(tone, {}, 30), OverflowError);
}

}  // namespace
}  // namespace zelmar
