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

TEST_F(CalcGaps, TheLastNoteOfTheTrackEndsItsBarWhateverFollowsOnOtherTracks) {
  tune_.Tracks()->Add(QStringLiteral("Two"), 2, 2, 0, false, 0, 0, QStringLiteral("2"));
  AddNote(1, 1, 0, 1.0);
  AddNote(1, 2, 0, 1.0, 2);
  AddNote(9, 1, 0, 1.0, 2);
  EXPECT_EQ(Rests(), (std::vector<Place>{{1, 2, 0, 3.0}}));
}

TEST_F(CalcGaps, ANoteOffInTheSameBarKeepsTheBarOpen) {
  // The position then stays where the note ended, and the next bar begins from there.
  AddNote(1, 1, 0, 1.0);
  AddEvent(MUSIC_NOTE_OFF, 1, 2, 0, 1.0);
  AddNote(3, 4, 0, 1.0);
  EXPECT_EQ(Rests(), (std::vector<Place>{{1, 2, 0, 3.0}, {2, 2, 0, 3.0}, {3, 2, 0, 2.0}}));
}

TEST_F(CalcGaps, ANoteOffInALaterBarEndsTheBarOfItsNote) {
  AddNote(1, 3, 0, 2.0);
  AddEvent(MUSIC_NOTE_OFF, 2, 1, 0, 1.0);
  AddNote(2, 2, 0, 3.0);
  EXPECT_EQ(Rests(), (std::vector<Place>{{1, 1, 0, 2.0}, {2, 1, 0, 1.0}}));
}

TEST_F(CalcGaps, OtherEventsOfTheTrackFillNothing) {
  AddEvent(TEMPO_CHANGE, 1, 1, 0, 1.0);
  AddEvent(DUMMY_NOTE, 5, 1, 0, 1.0);
  AddEvent(EXPRESS_CONTROLLER, 6, 1, 0, 1.0);
  EXPECT_EQ(Rests(), std::vector<Place>());
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

// The rests of a track by its rule taken word by word, with a search forward from every note.
std::vector<Place> RestsByTheRule(const Tune& tune, std::uint8_t track) {
  std::vector<Place> rests;
  const double pulses = 480.0 / tune.BeatLength();
  int bar = 1;
  double position = 1.0;
  const auto add = [&](double end) {
    const double length = (end - position) * pulses / 120.0;
    if (length <= 0.1) return;
    const double whole = std::floor(position);
    rests.emplace_back(bar, static_cast<int>(whole), static_cast<int>((position - whole) * pulses), length);
  };
  for (qsizetype i = 1; i <= tune.Count(); ++i) {
    const Tone& note = *tune.Item(i);
    if (note.EventType() != MUSIC_NOTE || note.Track() != track) continue;
    for (; note.Bar() > bar; ++bar) add(tune.BeatsPerBar() + 1);
    add(note.Beat() + note.Tick() / pulses);
    position = note.Beat() + note.Tick() / pulses + note.Duration() * 120.0 / pulses;
    qsizetype next = i + 1;
    while (next <= tune.Count() && tune.Item(next)->Track() != track) ++next;
    if (next > tune.Count() || tune.Item(next)->Bar() > bar) {
      add(tune.BeatsPerBar() + 1);
      ++bar;
      position = 1.0;
    }
  }
  return rests;
}

TEST_F(CalcGaps, GivesWhatTheRuleGivesForTunesOfAllKinds) {
  QRandomGenerator random(7);
  for (int round = 0; round < 300; ++round) {
    Tune tune;
    tune.SetBeatLength(round % 2 == 0 ? 4 : 8);
    tune.SetBeatsPerBar(static_cast<std::int16_t>(random.bounded(2, 7)));
    const int pulses = 480 / tune.BeatLength();
    const int events = random.bounded(0, 60);
    for (int i = 1; i <= events; ++i) {
      constexpr EventType kTypes[] = {MUSIC_NOTE, MUSIC_NOTE, MUSIC_NOTE, TEMPO_CHANGE, EXPRESS_CONTROLLER};
      auto tone = std::make_shared<Tone>();
      tone->SetEventType(kTypes[random.bounded(5)]);
      tone->SetAbsRef(i);
      tone->SetTrack(static_cast<std::uint8_t>(random.bounded(1, 4)));
      tone->SetBar(static_cast<std::int16_t>(random.bounded(1, 20)));
      tone->SetBeat(static_cast<std::int16_t>(random.bounded(1, tune.BeatsPerBar() + 1)));
      tone->SetTick(static_cast<std::int16_t>(random.bounded(4) * pulses / 4));
      tone->SetDuration(0.25 * random.bounded(1, 12));
      tune.Add(tone);
    }
    // Sorted with note-offs as after a load, sorted without them, and as it came.
    if (round % 3 == 0) tune.CalcNotesOff();
    if (round % 3 <= 1) tune.SortStartTimes();
    tune.CalcGaps(1);
    EXPECT_EQ(RestsOf(tune), RestsByTheRule(tune, 1)) << "round " << round;
  }
}

}  // namespace
}  // namespace zelmar
