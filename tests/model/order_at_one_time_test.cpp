// The order in which the events of random tunes stand once they are sorted, against a plain stable sort.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "model/tune.h"
#include "platform/failure.h"
#include "support/dice.h"

namespace zelmar {
namespace {

using testing_support::Dice;

std::shared_ptr<Tone> AddEvent(Tune& tune, EventType type, std::int16_t bar, std::int16_t beat,
                               std::int16_t tick, std::uint8_t channel = 1, double duration = 1.0,
                               const char* pitch = "C4") {
  auto tone = std::make_shared<Tone>();
  tone->SetEventType(type);
  tone->SetBar(bar);
  tone->SetBeat(beat);
  tone->SetTick(tick);
  tone->SetChannel(channel);
  tone->SetTrack(channel);
  tone->SetDuration(duration);
  tone->SetPitch(QString::fromLatin1(pitch));
  tone->SetBeatLength(tune.BeatLength());
  tone->SetAbsRef(tune.LastAbsRef() + 1);
  return tune.Add(tone);
}

int RankOf(const Tone& tone) {
  if (tone.EventType() == MUSIC_NOTE_OFF) return 0;
  return tone.EventType() == MUSIC_NOTE ? 2 : 1;
}

std::int64_t TimeKey(const Tone& tone, int beats_per_bar) {
  return std::int64_t{tone.Bar()} * 240 * beats_per_bar + tone.Beat() * 240 + tone.Tick();
}

std::vector<std::int32_t> Refs(const Tune& tune) {
  std::vector<std::int32_t> refs;
  for (const auto& tone : tune) refs.push_back(tone->AbsRef());
  return refs;
}

// Bubbles events of lower time, or of lower rank at one time, to the front: slow, stable and plain.
std::vector<std::int32_t> PlainOrder(const Tune& tune) {
  std::vector<std::shared_ptr<Tone>> tones;
  for (const auto& tone : tune) tones.push_back(tone);
  const auto before = [&](const Tone& a, const Tone& b) {
    const auto time_a = TimeKey(a, tune.BeatsPerBar()), time_b = TimeKey(b, tune.BeatsPerBar());
    return time_a != time_b ? time_a < time_b : RankOf(a) < RankOf(b);
  };
  for (std::size_t i = 1; i < tones.size(); ++i)
    for (std::size_t k = i; k > 0 && before(*tones[k], *tones[k - 1]); --k) std::swap(tones[k], tones[k - 1]);
  std::vector<std::int32_t> refs;
  for (const auto& tone : tones) refs.push_back(tone->AbsRef());
  return refs;
}

const EventType kSomeTypes[] = {MUSIC_NOTE, MUSIC_NOTE,       MUSIC_NOTE,   7,  10, 64,
                                PITCH_BEND, CHANNEL_PRESSURE, TEMPO_CHANGE, 11, 0};

void FillAtRandom(Tune& tune, Dice& random, int count, int bars, int step) {
  static const char* const kPitches[] = {"C4", "E4", "G4", "Bb3", "F#5"};
  for (int i = 0; i < count; ++i) {
    const int ticks = static_cast<int>(tune.PulsesPerBeat()) / step;
    AddEvent(tune, kSomeTypes[random(static_cast<int>(std::size(kSomeTypes)))],
             static_cast<std::int16_t>(1 + random(bars)),
             static_cast<std::int16_t>(1 + random(tune.BeatsPerBar())),
             static_cast<std::int16_t>(step * (random(ticks))), static_cast<std::uint8_t>(1 + random(4)),
             static_cast<double>((1 + random(16)) * 15) / 120.0, kPitches[random(5)]);
  }
}

class RandomTunesInOrder : public ::testing::TestWithParam<unsigned> {};

TEST_P(RandomTunesInOrder, StandAsAPlainStableSortPutsThem) {
  Dice random(GetParam());
  Tune tune;
  tune.SetBeatsPerBar(static_cast<std::int16_t>(2 + random(4)));
  tune.SetBeatLength(random(2) ? 4 : 8);
  FillAtRandom(tune, random, 150, 4, 30);
  tune.CalcNotesOff();
  const auto wanted = PlainOrder(tune);
  tune.SortStartTimes();
  EXPECT_EQ(Refs(tune), wanted);
  EXPECT_TRUE(tune.Sorted());
}

TEST_P(RandomTunesInOrder, StandAsTheyDidWhenTheyAreSortedAgain) {
  Dice random(GetParam() + 100);
  Tune tune;
  FillAtRandom(tune, random, 130, 3, 60);
  tune.CalcNotesOff();
  tune.SortStartTimes();
  const auto once = Refs(tune);
  tune.SortStartTimes();
  EXPECT_EQ(Refs(tune), once);
}

TEST_P(RandomTunesInOrder, EndEachLengthlessNoteBehindItsStart) {
  Dice random(GetParam() + 200);
  Tune tune;
  FillAtRandom(tune, random, 60, 2, 60);
  for (const auto& tone : tune)
    if (tone->EventType() == MUSIC_NOTE && random(3) == 0) tone->SetDuration(random(2) ? 0.0 : 0.004);
  tune.CalcNotesOff();
  tune.SortStartTimes();
  std::int64_t last = 0;
  std::vector<std::shared_ptr<Tone>> tones;
  for (const auto& tone : tune) {
    EXPECT_GE(TimeKey(*tone, tune.BeatsPerBar()), last);
    last = TimeKey(*tone, tune.BeatsPerBar());
    tones.push_back(tone);
  }
  // As many ends of a pitch follow at that time as lengthless notes of it began there.
  for (std::size_t i = 0; i < tones.size(); ++i) {
    if (tones[i]->EventType() != MUSIC_NOTE || tones[i]->Duration() > 0.0041) continue;
    int open = 0;
    const auto time = TimeKey(*tones[i], tune.BeatsPerBar());
    for (std::size_t k = i; k < tones.size() && TimeKey(*tones[k], tune.BeatsPerBar()) == time; ++k) {
      if (tones[k]->Number() != tones[i]->Number() || tones[k]->Channel() != tones[i]->Channel()) continue;
      if (tones[k]->EventType() == MUSIC_NOTE && tones[k]->Duration() < 0.0041) ++open;
      if (tones[k]->EventType() == MUSIC_NOTE_OFF) --open;
    }
    EXPECT_LE(open, 0) << "event " << i << " of seed " << GetParam();
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomTunesInOrder, ::testing::Range(1U, 9U));

TEST(OrderAtOneTime, EndsComeBeforeControllersAndThoseBeforeNotes) {
  Tune tune;
  const auto note = AddEvent(tune, MUSIC_NOTE, 1, 2, 0);
  const auto bend = AddEvent(tune, PITCH_BEND, 1, 2, 0);
  const auto tempo = AddEvent(tune, TEMPO_CHANGE, 1, 2, 0);
  const auto before = AddEvent(tune, MUSIC_NOTE, 1, 1, 0);
  const auto volume = AddEvent(tune, 7, 1, 2, 0);
  tune.CalcNotesOff();
  tune.SortStartTimes();
  ASSERT_EQ(tune.Count(), 7);
  EXPECT_EQ(tune.Item(1), before);
  EXPECT_EQ(tune.Item(2)->EventType(), MUSIC_NOTE_OFF);
  EXPECT_EQ(tune.Item(3), bend);
  EXPECT_EQ(tune.Item(4), tempo);
  EXPECT_EQ(tune.Item(5), volume);
  EXPECT_EQ(tune.Item(6), note);
  EXPECT_EQ(tune.Item(7)->EventType(), MUSIC_NOTE_OFF);
}

TEST(OrderAtOneTime, ARepeatedNoteBeginsAfterItsForerunnerEnded) {
  Tune tune;
  for (std::int16_t beat = 4; beat >= 1; --beat) AddEvent(tune, MUSIC_NOTE, 1, beat, 0);
  tune.CalcNotesOff();
  tune.SortStartTimes();
  ASSERT_EQ(tune.Count(), 8);
  for (qsizetype place = 1; place <= 8; ++place)
    EXPECT_EQ(tune.Item(place)->EventType(), place % 2 == 1 ? MUSIC_NOTE : MUSIC_NOTE_OFF) << place;
}

TEST(OrderAtOneTime, VoicesThatWereEnteredOneAfterTheOtherInterleave) {
  Tune tune;
  std::vector<std::int32_t> upper, lower;
  for (std::int16_t beat = 1; beat <= 4; ++beat)
    upper.push_back(AddEvent(tune, MUSIC_NOTE, 1, beat, 0, 1, 1.0, "C5")->AbsRef());
  for (std::int16_t beat = 1; beat <= 4; ++beat)
    lower.push_back(AddEvent(tune, MUSIC_NOTE, 1, beat, 0, 2, 1.0, "C3")->AbsRef());
  tune.SortStartTimes();
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(tune.Item(static_cast<qsizetype>(2 * i + 1))->AbsRef(), upper[i]);
    EXPECT_EQ(tune.Item(static_cast<qsizetype>(2 * i + 2))->AbsRef(), lower[i]);
  }
}

TEST(OrderAtOneTime, ALengthlessNoteStandsBeforeItsOwnEnd) {
  Tune tune;
  const auto note = AddEvent(tune, MUSIC_NOTE, 1, 1, 0, 1, 0.0);
  tune.CalcNotesOff();
  tune.SortStartTimes();
  ASSERT_EQ(tune.Count(), 2);
  EXPECT_EQ(tune.Item(1), note);
  EXPECT_EQ(tune.Item(2)->EventType(), MUSIC_NOTE_OFF);
}

TEST(OrderAtOneTime, TheEndOfALongNoteComesBeforeALengthlessOneOfItsPitch) {
  Tune tune;
  const auto grace = AddEvent(tune, MUSIC_NOTE, 1, 2, 0, 1, 0.0);
  const auto held = AddEvent(tune, MUSIC_NOTE, 1, 1, 0, 1, 1.0);
  tune.CalcNotesOff();
  tune.SortStartTimes();
  ASSERT_EQ(tune.Count(), 4);
  EXPECT_EQ(tune.Item(1), held);
  EXPECT_EQ(tune.Item(2)->EventType(), MUSIC_NOTE_OFF);
  EXPECT_EQ(tune.Item(3), grace);
  EXPECT_EQ(tune.Item(4)->EventType(), MUSIC_NOTE_OFF);
}

TEST(OrderAtOneTime, ManyEventsOfOneTimeAndKindKeepTheirOrder) {
  Tune tune;
  std::vector<std::int32_t> refs;
  for (int i = 0; i < 500; ++i)
    refs.push_back(AddEvent(tune, MUSIC_NOTE, 7, 3, 11, static_cast<std::uint8_t>(1 + i % 16))->AbsRef());
  tune.SortStartTimes();
  EXPECT_EQ(Refs(tune), refs);
}

TEST(SortingTells, OfItsStartAndThenOfEveryPercent) {
  for (const int count : {0, 1, 60, 61, 119, 120, 121, 600, 1234}) {
    Tune tune;
    for (int i = 0; i < count; ++i)
      AddEvent(tune, MUSIC_NOTE, static_cast<std::int16_t>(1 + (i * 7) % 50), 1, 0);
    std::vector<int> told, wanted = {-1, 0};
    QObject::connect(&tune, &Tune::SortStarted, [&] { told.push_back(-1); });
    QObject::connect(&tune, &Tune::SortPercent, [&](std::int16_t percent) { told.push_back(percent); });
    tune.SortStartTimes();
    if (count > 60)
      for (int event = count / 60, percent = 1; event <= count; event += count / 60, ++percent)
        wanted.push_back(std::min(percent, 100));
    wanted.push_back(80);
    wanted.push_back(99);
    EXPECT_EQ(told, wanted) << count;
  }
}

TEST(SortingTells, NothingIsLostOfAnEmptyTune) {
  Tune tune;
  tune.SortStartTimes();
  EXPECT_EQ(tune.Count(), 0);
  EXPECT_TRUE(tune.Sorted());
}

TEST(SortedTune, FindsEachEventUnderItsNumberAsBefore) {
  Dice random(77);
  Tune tune;
  FillAtRandom(tune, random, 90, 5, 15);
  tune.CalcNotesOff();
  std::vector<std::shared_ptr<Tone>> before;
  for (const auto& tone : tune) before.push_back(tone);
  tune.SortStartTimes();
  for (const auto& tone : before) EXPECT_EQ(tune.Item(QString::number(tone->AbsRef())), tone);
}

}  // namespace
}  // namespace zelmar
