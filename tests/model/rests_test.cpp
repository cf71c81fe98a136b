// The rests that CalcGaps finds between the notes of a track.
#include <gtest/gtest.h>

#include <QRandomGenerator>
#include <cmath>
#include <tuple>

#include "model/tune.h"
#include "platform/failure.h"

namespace zelmar {
namespace {

// Bar, beat, tick and duration in crotchets.
using Place = std::tuple<int, int, int, double>;

std::vector<Place> RestsOf(const Tune& tune, std::uint8_t track = 1) {
  std::vector<Place> places;
  for (const auto& rest : *tune.Tracks()->Item(QString::number(track))->Rests())
    places.emplace_back(rest->Bar(), rest->Beat(), rest->Tick(), rest->Duration());
  return places;
}

class CalcGaps : public testing::Test {
 protected:
  void AddEvent(EventType type, int bar, int beat, int tick, double duration, int track = 1) {
    auto tone = std::make_shared<Tone>();
    tone->SetEventType(type);
    tone->SetAbsRef(++abs_ref_);
    tone->SetBar(static_cast<std::int16_t>(bar));
    tone->SetBeat(static_cast<std::int16_t>(beat));
    tone->SetTick(static_cast<std::int16_t>(tick));
    tone->SetDuration(duration);
    tone->SetTrack(static_cast<std::uint8_t>(track));
    tune_.Add(tone);
  }
  void AddNote(int bar, int beat, int tick, double duration, int track = 1) {
    AddEvent(MUSIC_NOTE, bar, beat, tick, duration, track);
  }
  std::vector<Place> Rests(std::uint8_t track = 1) {
    tune_.CalcGaps(track);
    return RestsOf(tune_, track);
  }

  Tune tune_;
  std::int32_t abs_ref_ = 0;
};

TEST_F(CalcGaps, AFullBarHasNoRest) {
  for (int beat = 1; beat <= 4; ++beat) AddNote(1, beat, 0, 1.0);
  EXPECT_EQ(Rests(), std::vector<Place>());
}

TEST_F(CalcGaps, FillsBeforeBetweenAndAfterTheNotesOfABar) {
  AddNote(1, 2, 0, 0.5);
  AddNote(1, 3, 60, 0.5);
  EXPECT_EQ(Rests(), (std::vector<Place>{{1, 1, 0, 1.0}, {1, 2, 60, 1.0}, {1, 4, 0, 1.0}}));
}

TEST_F(CalcGaps, ABarWithoutNotesInTheMiddleIsOneRestOfTheWholeBar) {
  AddNote(1, 1, 0, 4.0);
  AddNote(3, 1, 0, 4.0);
  EXPECT_EQ(Rests(), (std::vector<Place>{{2, 1, 0, 4.0}}));

  Tune jig;
  jig.SetBeatLength(8);
  jig.SetBeatsPerBar(6);
  for (const std::int16_t bar : std::initializer_list<std::int16_t>{1, 4}) {
    auto note = std::make_shared<Tone>();
    note->SetAbsRef(bar);
    note->SetBar(bar);
    note->SetDuration(3.0);
    jig.Add(note);
  }
  jig.CalcGaps(1);
  EXPECT_EQ(RestsOf(jig), (std::vector<Place>{{2, 1, 0, 3.0}, {3, 1, 0, 3.0}}));
}

TEST_F(CalcGaps, BarsBeforeTheFirstNoteAreWholeBarRests) {
  AddNote(3, 2, 0, 3.0);
  EXPECT_EQ(Rests(), (std::vector<Place>{{1, 1, 0, 4.0}, {2, 1, 0, 4.0}, {3, 1, 0, 1.0}}));
}

TEST_F(CalcGaps, AGapOfATenthOfACrotchetIsNoRestAndOneOfElevenHundredthsIs) {
  AddNote(1, 1, 0, 0.9);
  AddNote(1, 2, 0, 0.89);
  AddNote(1, 3, 0, 2.0);
  const auto rests = Rests();
  ASSERT_EQ(rests.size(), 1U);
  EXPECT_EQ(std::get<1>(rests[0]), 2);
  EXPECT_EQ(std::get<2>(rests[0]), 106);
  EXPECT_NEAR(std::get<3>(rests[0]), 0.11, 1e-9);
}

TEST_F(CalcGaps, TheThresholdHoldsOnEveryBeatAndInTicks) {
  for (int bar = 1; bar <= 2; ++bar) {
    for (int beat = 1; beat <= 4; ++beat) {
      Tune tune;
      auto note = std::make_shared<Tone>();
      note->SetBar(1);
      note->SetDuration((beat - 1) + (bar == 1 ? 0.0 : static_cast<double>(0.9F) - 1.0));
      tune.Add(note);
      auto next = std::make_shared<Tone>();
      next->SetAbsRef(1);
      next->SetBeat(static_cast<std::int16_t>(beat));
      next->SetTick(bar == 1 ? 12 : 0);
      next->SetDuration(9.0);
      tune.Add(next);
      tune.CalcGaps(1);
      EXPECT_EQ(RestsOf(tune), std::vector<Place>()) << bar << " " << beat;
    }
  }
}

TEST_F(CalcGaps, ARestBeginsOnTheTickWhereTheNoteEnds) {
  // 1 + 10 / 120 has no exact fraction: the tick is 10 all the same.
  for (int tick = 0; tick < 100; ++tick) {
    Tune tune;
    auto note = std::make_shared<Tone>();
    note->SetTick(static_cast<std::int16_t>(tick));
    note->SetDuration(1.0);
    tune.Add(note);
    tune.CalcGaps(1);
    const auto rests = RestsOf(tune);
    EXPECT_EQ(std::get<1>(rests.back()), 2);
    EXPECT_EQ(std::get<2>(rests.back()), tick);
  }
}

TEST_F(CalcGaps, ANoteThatRunsPastTheBarLineLeavesNoRestAfterIt) {
  AddNote(1, 3, 0, 4.0);
  AddNote(2, 3, 0, 2.0);
  EXPECT_EQ(Rests(), (std::vector<Place>{{1, 1, 0, 2.0}, {2, 1, 0, 2.0}}));
}

TEST_F(CalcGaps, ATrackThatEndsEarlyRestsUpToTheLastBarOfTheTune) {
  tune_.Tracks()->Add(QStringLiteral("Two"), 2, 2, 0, false, 0, 0, QStringLiteral("2"));
  AddNote(1, 1, 0, 1.0);
  AddNote(1, 2, 0, 1.0, 2);
  AddNote(3, 1, 0, 1.0, 2);
  EXPECT_EQ(Rests(), (std::vector<Place>{{1, 2, 0, 3.0}, {2, 1, 0, 4.0}, {3, 1, 0, 4.0}}));
}

TEST_F(CalcGaps, AnEmptyTrackRestsInEveryBar) {
  tune_.Tracks()->Add(QStringLiteral("Two"), 2, 2, 0, false, 0, 0, QStringLiteral("2"));
  AddNote(1, 1, 0, 4.0);
  AddNote(2, 1, 0, 4.0);
  EXPECT_EQ(Rests(2), (std::vector<Place>{{1, 1, 0, 4.0}, {2, 1, 0, 4.0}}));
}

TEST_F(CalcGaps, ATuneWithoutBarsHasNoRest) {
  EXPECT_EQ(Rests(), std::vector<Place>());
}

TEST_F(CalcGaps, ANoteOffInTheBarOfItsNoteLeavesNoBarUnfilled) {
  AddNote(1, 1, 0, 1.0);
  AddEvent(MUSIC_NOTE_OFF, 1, 2, 0, 1.0);
  AddNote(3, 4, 0, 1.0);
  AddEvent(MUSIC_NOTE_OFF, 3, 4, 60, 1.0);
  EXPECT_EQ(Rests(), (std::vector<Place>{{1, 2, 0, 3.0}, {2, 1, 0, 4.0}, {3, 1, 0, 3.0}}));
}

TEST_F(CalcGaps, ANoteOffInALaterBarIsNoNoteOfThatBar) {
  AddNote(1, 3, 0, 2.0);
  AddEvent(MUSIC_NOTE_OFF, 2, 1, 0, 1.0);
  AddNote(2, 2, 0, 3.0);
  EXPECT_EQ(Rests(), (std::vector<Place>{{1, 1, 0, 2.0}, {2, 1, 0, 1.0}}));
}

TEST_F(CalcGaps, TheNoteOffsOfATuneChangeNoRest) {
  for (int bar = 1; bar <= 8; ++bar)
    if (bar % 3 != 0) AddNote(bar, 1 + bar % 4, 30 * (bar % 3), 0.25 * (1 + bar % 5));
  AddNote(8, 4, 0, 1.0);
  const auto without = Rests();
  tune_.CalcNotesOff();
  tune_.SortStartTimes();
  const auto with = Rests();
  // The last note-off may open a bar of its own; up to there nothing differs.
  ASSERT_GE(with.size(), without.size());
  EXPECT_EQ(std::vector<Place>(with.begin(), with.begin() + static_cast<std::ptrdiff_t>(without.size())),
            without);
  EXPECT_LE(with.size(), without.size() + 1);
}

TEST_F(CalcGaps, OtherEventsAreNoNotesAndTheirBarsRest) {
  AddEvent(TEMPO_CHANGE, 1, 1, 0, 1.0);
  AddEvent(DUMMY_NOTE, 2, 2, 0, 1.0);
  AddNote(3, 1, 0, 2.0);
  AddEvent(EXPRESS_CONTROLLER, 3, 4, 0, 1.0);
  AddEvent(EXPRESS_CONTROLLER, 4, 1, 0, 1.0);
  EXPECT_EQ(Rests(), (std::vector<Place>{{1, 1, 0, 4.0}, {2, 1, 0, 4.0}, {3, 3, 0, 2.0}, {4, 1, 0, 4.0}}));
}

TEST_F(CalcGaps, ReplacesTheRestsOfItsTrackAlone) {
  tune_.Tracks()->Add(QStringLiteral("Two"), 2, 2, 0, false, 0, 0, QStringLiteral("2"));
  tune_.Tracks()->Item(1)->Rests()->Add(1.0, 9, 9, 9);
  tune_.Tracks()->Item(2)->Rests()->Add(1.0, 8, 8, 8);
  AddNote(1, 1, 0, 3.0);
  EXPECT_EQ(Rests(), (std::vector<Place>{{1, 4, 0, 1.0}}));
  EXPECT_EQ(Rests(), (std::vector<Place>{{1, 4, 0, 1.0}}));
  EXPECT_EQ(RestsOf(tune_, 2), (std::vector<Place>{{8, 8, 8, 1.0}}));
}

TEST_F(CalcGaps, FindsTheTrackByTheKeyOfItsNumber) {
  // A track without a key is not found, though it has the number.
  tune_.Tracks()->Add(QStringLiteral("Two"), 2, 2, 0, false, 0, 0);
  EXPECT_THROW(tune_.CalcGaps(2), SubscriptError);
  EXPECT_THROW(tune_.CalcGaps(3), SubscriptError);
}

TEST_F(CalcGaps, ABeatLengthOfZeroIsADivisionFailure) {
  AddNote(1, 1, 0, 1.0);
  tune_.SetBeatLength(0);
  EXPECT_THROW(tune_.CalcGaps(1), DivisionError);
}

// --- Tunes of all kinds ---

// The rests of one track by a walk over all events for every bar of the tune.
std::vector<Place> RestsBarByBar(Tune& tune, std::uint8_t track) {
  std::vector<Place> rests;
  const double pulses = 480.0 / tune.BeatLength();
  const int bars = tune.BarCount();
  for (int bar = 1; bar <= bars; ++bar) {
    double position = 1.0;
    const auto add = [&](double end) {
      const double length = (end - position) * pulses / 120.0;
      if (length <= 0.1) return;
      const double whole = std::floor(position);
      rests.emplace_back(bar, static_cast<int>(whole), static_cast<int>((position - whole) * pulses), length);
    };
    for (const auto& note : tune) {
      if (note->EventType() != MUSIC_NOTE || note->Track() != track || note->Bar() != bar) continue;
      const double start = note->Beat() + note->Tick() / pulses;
      add(start);
      position = start + note->Duration() * 120.0 / pulses;
    }
    add(tune.BeatsPerBar() + 1);
  }
  return rests;
}

std::shared_ptr<Tone> EventAt(EventType type, int reference, int track, int pulse, const Tune& tune) {
  const int pulses_per_beat = 480 / tune.BeatLength();
  const int beat = pulse / pulses_per_beat;
  auto tone = std::make_shared<Tone>();
  tone->SetEventType(type);
  tone->SetAbsRef(reference);
  tone->SetTrack(static_cast<std::uint8_t>(track));
  tone->SetBar(static_cast<std::int16_t>(beat / tune.BeatsPerBar() + 1));
  tone->SetBeat(static_cast<std::int16_t>(beat % tune.BeatsPerBar() + 1));
  tone->SetTick(static_cast<std::int16_t>(pulse % pulses_per_beat));
  return tone;
}

constexpr int kVoices = 3;
constexpr std::uint8_t kEmptyTrack = 4;
constexpr int kSemiquaver = 30;  // pulses

// Voices of one note at a time with silences of every length between them, controllers anywhere, and a track
// without any event.
std::shared_ptr<Tune> RandomVoices(QRandomGenerator& random) {
  auto tune = std::make_shared<Tune>();
  tune->SetBeatLength(random.bounded(2) == 0 ? 4 : 8);
  tune->SetBeatsPerBar(static_cast<std::int16_t>(random.bounded(2, 7)));
  for (int track = 2; track <= kEmptyTrack; ++track)
    tune->Tracks()->Add(QStringLiteral("Track"), static_cast<std::uint8_t>(track), 1, 0, false, 0, 0,
                        QString::number(track));
  int reference = 0;
  for (int track = 1; track <= kVoices; ++track) {
    int pulse = kSemiquaver * random.bounded(40);
    for (int note = random.bounded(40); note > 0; --note) {
      const int length = kSemiquaver * random.bounded(1, 20);
      auto tone = EventAt(MUSIC_NOTE, ++reference, track, pulse, *tune);
      tone->SetDuration(length / 120.0);
      tune->Add(tone);
      pulse += length + (random.bounded(2) == 0 ? 0 : kSemiquaver * random.bounded(60));
    }
    for (int controller = random.bounded(4); controller > 0; --controller)
      tune->Add(EventAt(EXPRESS_CONTROLLER, ++reference, track, random.bounded(pulse + 1), *tune));
  }
  return tune;
}

// Which pulses of each bar the notes and rests of a track sound or are silent in.
std::vector<std::vector<int>> Covered(Tune& tune, std::uint8_t track) {
  const int pulses_per_beat = 480 / tune.BeatLength();
  const int bar_length = tune.BeatsPerBar() * pulses_per_beat;
  std::vector<std::vector<int>> bars(static_cast<std::size_t>(tune.BarCount()),
                                     std::vector<int>(static_cast<std::size_t>(bar_length), 0));
  const auto cover = [&](int bar, int beat, int tick, double duration) {
    const int first = (beat - 1) * pulses_per_beat + tick;
    const int last = std::min(bar_length, first + static_cast<int>(std::lround(duration * 120.0)));
    for (int pulse = first; pulse < last; ++pulse)
      ++bars.at(static_cast<std::size_t>(bar) - 1).at(static_cast<std::size_t>(pulse));
  };
  for (const auto& tone : tune)
    if (tone->EventType() == MUSIC_NOTE && tone->Track() == track)
      cover(tone->Bar(), tone->Beat(), tone->Tick(), tone->Duration());
  for (const auto& [bar, beat, tick, duration] : RestsOf(tune, track)) cover(bar, beat, tick, duration);
  return bars;
}

TEST_F(CalcGaps, NotesAndRestsTogetherFillEveryBarOfEveryTrackOnce) {
  QRandomGenerator random(7);
  for (int round = 0; round < 300; ++round) {
    const auto tune = RandomVoices(random);
    if (round % 2 == 0) tune->CalcNotesOff();
    tune->SortStartTimes();
    for (std::uint8_t track = 1; track <= kEmptyTrack; ++track) {
      SCOPED_TRACE(testing::Message() << "round " << round << " track " << int{track});
      tune->CalcGaps(track);
      int bar = 0;
      for (const auto& pulses : Covered(*tune, track)) {
        ++bar;
        for (const int times : pulses) ASSERT_EQ(times, 1) << "bar " << bar;
      }
    }
  }
}

TEST_F(CalcGaps, GivesWhatAWalkForEveryBarGives) {
  QRandomGenerator random(11);
  for (int round = 0; round < 300; ++round) {
    const auto tune = RandomVoices(random);
    // Chords and notes across each other, too.
    for (int more = random.bounded(10); more > 0; --more) {
      auto tone = EventAt(MUSIC_NOTE, tune->LastAbsRef() + 1, 1, 15 * random.bounded(200), *tune);
      tone->SetDuration(0.125 * random.bounded(1, 24));
      tune->Add(tone);
    }
    if (round % 2 == 0) tune->CalcNotesOff();
    tune->SortStartTimes();
    for (std::uint8_t track = 1; track <= kEmptyTrack; ++track) {
      tune->CalcGaps(track);
      EXPECT_EQ(RestsOf(*tune, track), RestsBarByBar(*tune, track)) << "round " << round;
    }
  }
}

}  // namespace
}  // namespace zelmar
