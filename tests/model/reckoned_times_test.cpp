// Ends of notes, count of bars and times by the tempo map, against plain reckonings of random tunes.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "model/pulses.h"
#include "model/tune.h"
#include "platform/failure.h"
#include "support/dice.h"

namespace zelmar {
namespace {

using testing_support::Dice;

std::shared_ptr<Tone> AddEvent(Tune& tune, EventType type, int bar, int beat, int tick,
                               double duration = 1.0) {
  auto tone = std::make_shared<Tone>();
  tone->SetEventType(type);
  tone->SetBar(static_cast<std::int16_t>(bar));
  tone->SetBeat(static_cast<std::int16_t>(beat));
  tone->SetTick(static_cast<std::int16_t>(tick));
  tone->SetDuration(duration);
  tone->SetBeatLength(tune.BeatLength());
  tone->SetAbsRef(tune.LastAbsRef() + 1);
  return tune.Add(tone);
}

std::shared_ptr<Tone> AddTempo(Tune& tune, int bar, int beat, int tick, int tempo) {
  const auto tone = AddEvent(tune, TEMPO_CHANGE, bar, beat, tick);
  tone->SetVolume(static_cast<std::uint8_t>(tempo / 128));
  tone->SetInstrument(static_cast<std::uint8_t>(tempo % 128));
  return tone;
}

// --- Ends of notes ---

struct Metre {
  int beats_per_bar;
  int beat_length;
};

class EndsOfNotes : public ::testing::TestWithParam<Metre> {};

TEST_P(EndsOfNotes, LieWhereAPlainCountOfPulsesPutsThem) {
  const auto [beats_per_bar, beat_length] = GetParam();
  Dice random(static_cast<unsigned>(beats_per_bar * 100 + beat_length));
  Tune tune;
  tune.SetBeatsPerBar(static_cast<std::int16_t>(beats_per_bar));
  tune.SetBeatLength(static_cast<std::uint8_t>(beat_length));
  const int pulses_per_beat = 480 / beat_length;
  std::vector<std::shared_ptr<Tone>> notes;
  for (int i = 0; i < 60; ++i) {
    const auto note = AddEvent(tune, MUSIC_NOTE, 1 + random(30), 1 + random(beats_per_bar),
                               random(pulses_per_beat), static_cast<double>(random(2000)) / 120.0);
    note->SetNumber(static_cast<std::int16_t>(24 + random(80)));
    note->SetTrack(static_cast<std::uint8_t>(1 + random(9)));
    note->SetChannel(static_cast<std::uint8_t>(1 + random(16)));
    notes.push_back(note);
  }
  const auto last_before = tune.LastAbsRef();
  tune.CalcNotesOff();
  ASSERT_EQ(tune.Count(), 120);
  for (int i = 0; i < 60; ++i) {
    const Tone& note = *notes[static_cast<std::size_t>(i)];
    const Tone& end = *tune.Item(61 + i);
    const int start = ((note.Bar() - 1) * beats_per_bar + note.Beat() - 1) * pulses_per_beat + note.Tick();
    const int stop = start + static_cast<int>(std::lround(note.Duration() * 120));
    const int beats = stop / pulses_per_beat;
    EXPECT_EQ(end.Bar(), beats / beats_per_bar + 1) << i;
    EXPECT_EQ(end.Beat(), beats % beats_per_bar + 1) << i;
    EXPECT_EQ(end.Tick(), stop % pulses_per_beat) << i;
    EXPECT_EQ(end.EventType(), MUSIC_NOTE_OFF);
    EXPECT_EQ(end.Pitch(), note.Pitch());
    EXPECT_EQ(end.Track(), note.Track());
    EXPECT_EQ(end.Channel(), note.Channel());
    EXPECT_EQ(end.BeatsPerBar(), beats_per_bar);
    EXPECT_EQ(end.BeatLength(), beat_length);
    EXPECT_EQ(end.Volume(), 0);
    EXPECT_EQ(end.OldVolume(), 0);
    EXPECT_EQ(end.Instrument(), 0);
    EXPECT_EQ(end.AbsRef(), last_before + 1 + i);
  }
  EXPECT_EQ(tune.LastAbsRef(), last_before + 60);
}

INSTANTIATE_TEST_SUITE_P(Metres, EndsOfNotes,
                         ::testing::Values(Metre{4, 4}, Metre{3, 4}, Metre{6, 8}, Metre{2, 2}, Metre{1, 1},
                                           Metre{7, 8}, Metre{5, 16}, Metre{12, 8}));

TEST(EndsOfNotesAgain, AreMadeAnewAndLeaveOneForEachNote) {
  Tune tune;
  for (int beat = 1; beat <= 4; ++beat) AddEvent(tune, MUSIC_NOTE, 1, beat, 0);
  AddEvent(tune, 7, 1, 1, 0);
  for (int i = 0; i < 4; ++i) tune.CalcNotesOff();
  int ends = 0;
  for (const auto& tone : tune) ends += tone->EventType() == MUSIC_NOTE_OFF;
  EXPECT_EQ(ends, 4);
  EXPECT_EQ(tune.Count(), 9);
}

TEST(EndsOfNotesAgain, AreMadeWithoutMarkingTheEventsAsChanged) {
  Tune tune;
  AddEvent(tune, MUSIC_NOTE, 1, 1, 0);
  AddEvent(tune, MUSIC_NOTE, 1, 2, 0);
  const auto note = tune.Item(1);
  tune.CalcNotesOff();
  EXPECT_EQ(tune.Item(1), note);
  EXPECT_EQ(note->OldVolume(), 127);
  EXPECT_EQ(note->Volume(), 127);
}

// All of the events and the number behind them, for comparing before and after.
struct Standing {
  std::vector<std::shared_ptr<Tone>> tones;
  std::int32_t last;
  explicit Standing(const Tune& tune) : last(tune.LastAbsRef()) {
    for (const auto& tone : tune) tones.push_back(tone);
  }
  bool operator==(const Standing&) const = default;
};

TEST(EndsOfNotesAllOrNothing, ANoteWhoseEndHasNoPlaceLeavesAllAsItWas) {
  for (int bad = 0; bad < 5; ++bad) {
    Tune tune;
    for (int i = 0; i < 5; ++i) AddEvent(tune, MUSIC_NOTE, 1 + i, 1, 0, 0.5);
    tune.CalcNotesOff();
    tune.Item(1 + bad)->SetDuration(1e9);
    const Standing before(tune);
    EXPECT_THROW(tune.CalcNotesOff(), OverflowError) << bad;
    EXPECT_TRUE(Standing(tune) == before) << bad;
  }
}

TEST(EndsOfNotesAllOrNothing, ANoteWhoseEndPassesTheLastBarLeavesAllAsItWas) {
  Tune tune;
  tune.SetBeatsPerBar(1);
  for (const auto& tone : tune) tone->SetBeatsPerBar(1);
  AddEvent(tune, MUSIC_NOTE, 1, 1, 0);
  tune.CalcNotesOff();
  AddEvent(tune, MUSIC_NOTE, 32767, 1, 0, 1.0);
  const Standing before(tune);
  EXPECT_THROW(tune.CalcNotesOff(), OverflowError);
  EXPECT_TRUE(Standing(tune) == before);
}

TEST(EndsOfNotesAllOrNothing, ANumberInUseLeavesAllAsItWas) {
  Tune tune;
  for (int i = 0; i < 4; ++i) AddEvent(tune, MUSIC_NOTE, 1, 1 + i, 0);
  tune.CalcNotesOff();
  const auto far = AddEvent(tune, MUSIC_NOTE, 2, 1, 0);
  const auto high = std::make_shared<Tone>();
  high->SetAbsRef(far->AbsRef() + 4);
  tune.Tones()->Add(high);  // past LastAbsRef, which does not know of it
  const Standing before(tune);
  EXPECT_THROW(tune.CalcNotesOff(), DuplicateKeyError);
  EXPECT_TRUE(Standing(tune) == before);
}

TEST(EndsOfNotesAllOrNothing, ABeatLengthOfZeroLeavesAllAsItWas) {
  Tune tune;
  for (int i = 0; i < 4; ++i) AddEvent(tune, MUSIC_NOTE, 1, 1 + i, 0);
  tune.CalcNotesOff();
  tune.Item(3)->SetBeatLength(0);
  const Standing before(tune);
  EXPECT_THROW(tune.CalcNotesOff(), DivisionError);
  EXPECT_TRUE(Standing(tune) == before);
}

TEST(EndsOfNotesAllOrNothing, TheEndOfTheNumbersLeavesAllAsItWas) {
  Tune tune;
  AddEvent(tune, MUSIC_NOTE, 1, 1, 0);
  AddEvent(tune, MUSIC_NOTE, 1, 2, 0);
  tune.SetLastAbsRef(2147483646);
  const Standing before(tune);
  EXPECT_THROW(tune.CalcNotesOff(), OverflowError);
  EXPECT_TRUE(Standing(tune) == before);
}

// --- Count of bars ---

TEST(CountOfBars, ANoteThatFillsTheLastBarAddsNone) {
  Tune tune;
  AddEvent(tune, MUSIC_NOTE, 3, 1, 0, 4.0);
  tune.CalcNotesOff();
  EXPECT_EQ(tune.BarCount(), 3);
}

TEST(CountOfBars, ANoteThatEndsOnePulseIntoTheNextBarCountsIt) {
  Tune tune;
  AddEvent(tune, MUSIC_NOTE, 3, 1, 0, 4.0 + 1.0 / 120.0);
  tune.CalcNotesOff();
  EXPECT_EQ(tune.BarCount(), 4);
}

TEST(CountOfBars, ANoteHeldOverWholeBarsCountsThoseItFills) {
  Tune tune;
  AddEvent(tune, MUSIC_NOTE, 1, 1, 0, 12.0);
  tune.CalcNotesOff();
  EXPECT_EQ(tune.BarCount(), 3);
}

TEST(CountOfBars, AnyOtherEventAtTheHeadOfABarCountsIt) {
  for (const EventType type : {MUSIC_NOTE, DUMMY_NOTE, TEMPO_CHANGE, PITCH_BEND, EXPRESS_CONTROLLER}) {
    Tune tune;
    AddEvent(tune, MUSIC_NOTE, 1, 1, 0, 1.0);
    AddEvent(tune, type, 5, 1, 0, 1.0);
    EXPECT_EQ(tune.BarCount(), 5) << int{type};
  }
}

TEST(CountOfBars, IsZeroForAnEmptyTune) {
  Tune tune;
  EXPECT_EQ(tune.BarCount(), 0);
}

TEST(CountOfBars, OfRandomTunesIsTheHighestBarThatAnythingFills) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    Dice random(seed);
    Tune tune;
    tune.SetBeatsPerBar(3);
    int highest = 0;
    for (int i = 0; i < 6; ++i) {
      const int bar = 1 + random(6), beat = 1 + random(3);
      const int length = 60 * (1 + random(12));
      AddEvent(tune, MUSIC_NOTE, bar, beat, 0, length / 120.0);
      const int last_pulse = ((bar - 1) * 3 + beat - 1) * 120 + length - 1;
      highest = std::max(highest, last_pulse / 360 + 1);
    }
    tune.CalcNotesOff();
    EXPECT_EQ(tune.BarCount(), highest) << seed;
  }
}

// --- Pulses and times ---

std::int64_t PlainPulse(int bar, int beat, int tick, int beats_per_bar, int beat_length) {
  return std::llrint((bar - 1) * beats_per_bar * 480.0 / beat_length) +
         std::llrint((beat - 1) * 480.0 / beat_length) + tick;
}

// A walk from the last change to the first, as the map is told to be read.
std::int64_t PlainTime(Tune& tune, int bar, int beat, int tick, int beats_per_bar, int beat_length) {
  const auto pulse = PlainPulse(bar, beat, tick, beats_per_bar, beat_length);
  std::int64_t base = 0, pulses = pulse;
  double length = std::nearbyint(60000.0 / tune.Tempo());
  for (qsizetype i = tune.TempoChanges()->Count(); i >= 1; --i) {
    const TempoChange& change = *tune.TempoChanges()->Item(i);
    const auto at = PlainPulse(change.Bar(), change.Beat(), change.Tick(), beats_per_bar, beat_length);
    if (at >= pulse) continue;
    base = change.MillesecondCumTime();
    length = std::nearbyint(60000.0 / change.NewTempo());
    pulses = pulse - at;
    break;
  }
  return std::llrint(static_cast<double>(pulses) * length / 120.0 + static_cast<double>(base));
}

TEST(PulsesOfAPlace, FollowTheThreeTermsForEveryMetre) {
  for (int beat_length : {1, 2, 3, 4, 5, 7, 8, 16, 32, 64, 100, 255})
    for (int beats_per_bar : {1, 2, 3, 4, 5, 6, 7, 9, 12})
      for (int bar : {1, 2, 3, 17, 400})
        for (int beat : {1, 2, 5})
          for (int tick : {0, 1, 119, 240, -3})
            EXPECT_EQ(PulseFromBarBeatTick(static_cast<std::int16_t>(bar), static_cast<std::int16_t>(beat),
                                           static_cast<std::int16_t>(tick),
                                           static_cast<std::int16_t>(beats_per_bar),
                                           static_cast<std::uint8_t>(beat_length)),
                      PlainPulse(bar, beat, tick, beats_per_bar, beat_length))
                << bar << ' ' << beat << ' ' << tick << ' ' << beats_per_bar << '/' << beat_length;
}

TEST(PulsesOfAPlace, RoundEachTermToTheEvenNeighbourByItself) {
  // A beat of 480 / 64 pulses is seven and a half: 7.5 becomes 8, 22.5 becomes 22.
  EXPECT_EQ(PulseFromBarBeatTick(1, 2, 0, 4, 64), 8);
  EXPECT_EQ(PulseFromBarBeatTick(1, 4, 0, 4, 64), 22);
  EXPECT_EQ(PulseFromBarBeatTick(2, 2, 0, 1, 64), 16);
}

TEST(PulsesOfAPlace, EndWithSixteenBitsOfBeats) {
  EXPECT_EQ(PulseFromBarBeatTick(32767, 1, 0, 1, 4), 32766 * 120);
  EXPECT_THROW(PulseFromBarBeatTick(16385, 1, 0, 2, 4), OverflowError);
  EXPECT_THROW(PulseFromBarBeatTick(32767, 1, 0, 4, 4), OverflowError);
  EXPECT_THROW(PulseFromBarBeatTick(1, 1, 0, 4, 0), DivisionError);
}

class TimesByTheMap : public ::testing::TestWithParam<unsigned> {
 protected:
  void ExpectPlainTimes(Tune& tune, Dice& random) {
    for (int i = 0; i < 250; ++i) {
      const auto bar = static_cast<std::int16_t>(1 + random(12));
      const auto beat = static_cast<std::int16_t>(1 + random(tune.BeatsPerBar()));
      const auto tick = static_cast<std::int16_t>(random(2) ? 0 : random(120));
      EXPECT_EQ(tune.TimeFromPulse(bar, beat, tick, tune.BeatsPerBar(), tune.BeatLength()),
                PlainTime(tune, bar, beat, tick, tune.BeatsPerBar(), tune.BeatLength()))
          << bar << ' ' << beat << ' ' << tick;
    }
  }
};

TEST_P(TimesByTheMap, AreThoseOfALinearWalk) {
  Dice random(GetParam());
  Tune tune;
  tune.SetTempo(static_cast<std::int16_t>(20 + random(280)));
  tune.SetBeatsPerBar(static_cast<std::int16_t>(1 + random(7)));
  tune.SetBeatLength(static_cast<std::uint8_t>(1 << (random(5))));
  for (int i = 0; i < 12; ++i)
    AddTempo(tune, 1 + random(10), 1 + random(tune.BeatsPerBar()), 30 * (random(3)), 15 + random(400));
  tune.SortStartTimes();
  tune.MakeTempoMap();
  ASSERT_EQ(tune.TempoChanges()->Count(), 12);
  ExpectPlainTimes(tune, random);
}

TEST_P(TimesByTheMap, AreThoseOfALinearWalkThroughAMapOutOfOrder) {
  Dice random(GetParam() + 50);
  Tune tune;
  tune.SetBeatsPerBar(4);
  for (int i = 0; i < 9; ++i)
    tune.TempoChanges()->Add(static_cast<std::int16_t>(1 + random(10)),
                             static_cast<std::int16_t>(1 + random(4)), static_cast<std::int16_t>(random(120)),
                             static_cast<std::int16_t>(30 + random(300)),
                             static_cast<std::int32_t>(random(100000)));
  ExpectPlainTimes(tune, random);
}

TEST_P(TimesByTheMap, FollowChangesThatComeGoAndMove) {
  Dice random(GetParam() + 90);
  Tune tune;
  for (int i = 0; i < 6; ++i)
    tune.TempoChanges()->Add(static_cast<std::int16_t>(1 + i), 1, 0, static_cast<std::int16_t>(60 + 10 * i),
                             1000 * i);
  ExpectPlainTimes(tune, random);
  tune.TempoChanges()->Remove(3);
  ExpectPlainTimes(tune, random);
  tune.TempoChanges()->Item(2)->SetBar(9);
  ExpectPlainTimes(tune, random);
  tune.TempoChanges()->Item(4)->SetTick(100);
  tune.TempoChanges()->Item(4)->SetBeat(3);
  tune.TempoChanges()->Item(1)->SetNewTempo(33);
  ExpectPlainTimes(tune, random);
  tune.SetBeatsPerBar(3);
  tune.SetBeatLength(8);
  ExpectPlainTimes(tune, random);
  tune.SetTempo(71);
  ExpectPlainTimes(tune, random);
  tune.TempoChanges()->Clear();
  ExpectPlainTimes(tune, random);
}

TEST_P(TimesByTheMap, AreSummedUpInTheMapStepByStep) {
  Dice random(GetParam() + 130);
  Tune tune;
  tune.SetTempo(static_cast<std::int16_t>(30 + random(250)));
  for (int i = 0; i < 10; ++i) AddTempo(tune, 1 + i, 1 + random(4), random(120), 1 + random(1000));
  tune.SortStartTimes();
  tune.MakeTempoMap();
  double length = std::nearbyint(60000.0 / tune.Tempo());
  std::int64_t elapsed = 0, previous = 0;
  for (const auto& change : *tune.TempoChanges()) {
    const auto pulse = PlainPulse(change->Bar(), change->Beat(), change->Tick(), 4, 4);
    elapsed =
        std::llrint(static_cast<double>(elapsed) + static_cast<double>(pulse - previous) * length / 120.0);
    EXPECT_EQ(change->MillesecondCumTime(), elapsed);
    EXPECT_EQ(tune.TimeFromPulse(change->Bar(), change->Beat(), change->Tick(), 4, 4), elapsed);
    previous = pulse;
    length = std::nearbyint(60000.0 / change->NewTempo());
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, TimesByTheMap, ::testing::Range(1U, 7U));

TEST(TimeByTheMap, OfATuneWithoutAMapIsThatOfItsTempo) {
  Tune tune;
  tune.SetTempo(90);  // 666.67 ms become 667
  EXPECT_EQ(tune.TimeFromPulse(2, 1, 0, 4, 4), 4 * 667);
  EXPECT_EQ(tune.TimeFromPulse(1, 1, 60, 4, 4), 334);  // 333.5, to the even neighbour
}

TEST(TimeByTheMap, DoesNotFollowTheTempoInForceWhilePlaying) {
  Tune tune;
  AddTempo(tune, 2, 1, 0, 60);
  tune.MakeTempoMap();
  EXPECT_EQ(tune.TimeFromPulse(2, 1, 0, 4, 4), 2000);
  EXPECT_EQ(tune.TimeFromPulse(3, 1, 0, 4, 4), 6000);
}

TEST(TimeByTheMap, FailsBeyondTheWidthOfATime) {
  Tune tune;
  tune.SetTempo(1);
  EXPECT_THROW(tune.TimeFromPulse(32767, 1, 0, 1, 1), OverflowError);
}

TEST(TempoMap, TakesFourteenBitsOfTempo) {
  Tune tune;
  AddTempo(tune, 1, 1, 0, 128);
  AddTempo(tune, 2, 1, 0, 16383);
  tune.MakeTempoMap();
  EXPECT_EQ(tune.Item(1)->Volume(), 1);
  EXPECT_EQ(tune.Item(1)->Instrument(), 0);
  EXPECT_EQ(tune.TempoChanges()->Item(1)->NewTempo(), 128);
  EXPECT_EQ(tune.TempoChanges()->Item(2)->NewTempo(), 16383);
}

TEST(TempoMap, FailsForATempoOfZero) {
  Tune tune;
  AddTempo(tune, 1, 1, 0, 0);
  EXPECT_THROW(tune.MakeTempoMap(), DivisionError);
  EXPECT_THROW(tune.SetTempo(0), DivisionError);
}

TEST(ExpressionMap, TakesEachExpressionAndKnowsThoseOfAllTracks) {
  Tune tune;
  for (int i = 0; i < 3; ++i) {
    const auto tone = AddEvent(tune, EXPRESS_CONTROLLER, 1 + i, 2, 3);
    tone->SetTrack(static_cast<std::uint8_t>(4 + i));
    tone->SetVolume(static_cast<std::uint8_t>(50 + i));
    tone->SetInstrument(static_cast<std::uint8_t>(98 + i));
  }
  AddEvent(tune, 7, 1, 1, 0);
  tune.MakeExpressionMap();
  tune.MakeExpressionMap();
  ASSERT_EQ(tune.ExpressionChanges()->Count(), 3);
  for (int i = 0; i < 3; ++i) {
    const ExpressionChange& change = *tune.ExpressionChanges()->Item(1 + i);
    EXPECT_EQ(change.Bar(), 1 + i);
    EXPECT_EQ(change.Beat(), 2);
    EXPECT_EQ(change.Tick(), 3);
    EXPECT_EQ(change.Track(), 4 + i);
    EXPECT_EQ(change.Volume(), 50 + i);
    EXPECT_EQ(change.AllTracks(), i == 1);
  }
}

}  // namespace
}  // namespace zelmar
