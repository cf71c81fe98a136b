// The beats of a playing lie where the time model has them.
#include "model/beat_clock.h"

#include <gtest/gtest.h>

#include "model/tones_of_a_tune.h"
#include "platform/failure.h"

namespace zelmar {
namespace {

using namespace testing_support;

TEST(BeatClock, CountsFromTheHeadOfTheFirstBar) {
  Tune tune;
  tune.SetBeatsPerBar(3);
  BeatClock clock(3);
  for (int beat = 1; beat <= 10; ++beat) EXPECT_DOUBLE_EQ(clock.Next(tune), 500.0 * beat);
}

TEST(BeatClock, DoesNotDriftFromTheNotesWhereABeatIsNoWholeMillisecond) {
  Tune tune;
  tune.SetTempo(140);  // 429 ms to the crotchet, 214.5 to the quaver
  tune.SetBeatLength(8);
  tune.SetBeatsPerBar(6);
  BeatClock clock(1);
  double at = 0.0;
  for (int beat = 1; beat <= 840; ++beat) at = clock.Next(tune);
  EXPECT_DOUBLE_EQ(at, 840 * 214.5);
  EXPECT_DOUBLE_EQ(at, tune.TimeFromPulse(141, 1, 0, 6, 8));
}

TEST(BeatClock, FollowsTheTempoMapAlsoWithinABeat) {
  Tune tune;
  tune.TempoChanges()->Add(2, 2, 60, 60, 2750);
  BeatClock clock(2);
  EXPECT_DOUBLE_EQ(clock.Next(tune), 500.0);
  EXPECT_DOUBLE_EQ(clock.Next(tune), 500.0 + 250.0 + 500.0);
  EXPECT_DOUBLE_EQ(clock.Next(tune), 2250.0);
}

TEST(BeatClock, GoesOnBeyondTheLastBarThatCanBeCounted) {
  Tune tune;
  tune.SetBeatsPerBar(16383);
  BeatClock clock(2);
  double at = 0.0;
  for (int beat = 1; beat <= 40000; ++beat) {
    const double before = at;
    at = clock.Next(tune);
    ASSERT_DOUBLE_EQ(at - before, 500.0) << beat;
  }
  tune.SetBeatsPerBar(1);
  BeatClock late(32766);
  for (int beat = 1; beat <= 4; ++beat) EXPECT_DOUBLE_EQ(late.Next(tune), 500.0 * beat);
}

TEST(BeatClock, ABarOfNoBeatsIsADivisionFailure) {
  Tune tune;
  tune.SetBeatsPerBar(0);
  EXPECT_THROW(BeatClock(1).Next(tune), DivisionError);
}

}  // namespace
}  // namespace zelmar
