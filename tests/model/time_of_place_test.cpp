// TimeFromPulse gives what a walk through the changes of tempo, from the last to the first, gives.
#include <gtest/gtest.h>

#include <QString>
#include <optional>
#include <random>

#include "model/pulses.h"
#include "model/tune.h"
#include "platform/failure.h"
#include "platform/numbers.h"

namespace zelmar {
namespace {

struct Place {
  std::int16_t bar, beat, tick, beats_per_bar;
  std::uint8_t beat_length;
};

std::int32_t PulseOf(const Place& place) {
  return PulseFromBarBeatTick(place.bar, place.beat, place.tick, place.beats_per_bar, place.beat_length);
}

std::int32_t ByWalking(Tune& tune, const Place& place) {
  std::int32_t base = 0;
  auto crotchet = RoundHalfEven<std::int32_t>(Quotient(60000.0, tune.Tempo()));
  std::int32_t pulses = PulseOf(place);
  const TempoChanges& changes = *tune.TempoChanges();
  for (qsizetype i = changes.Count(); i >= 1; --i) {
    const TempoChange& change = *changes.Item(i);
    const std::int32_t pulse =
        PulseOf({change.Bar(), change.Beat(), change.Tick(), place.beats_per_bar, place.beat_length});
    if (pulse >= pulses) continue;
    base = change.MillesecondCumTime();
    crotchet = RoundHalfEven<std::int32_t>(Quotient(60000.0, change.NewTempo()));
    pulses -= pulse;
    break;
  }
  return RoundHalfEven<std::int32_t>(static_cast<double>(pulses) * crotchet / kPulsesPerCrotchet + base);
}

// The answer or the words of the failure.
template <typename Function>
QString Outcome(Function function) {
  try {
    return QString::number(function());
  } catch (const Failure& failure) {
    return failure.Description();
  }
}

void ExpectTheSame(Tune& tune, const Place& place) {
  const QString walked = Outcome([&] { return ByWalking(tune, place); });
  const QString found = Outcome([&] {
    return tune.TimeFromPulse(place.bar, place.beat, place.tick, place.beats_per_bar, place.beat_length);
  });
  ASSERT_EQ(found, walked) << place.bar << '/' << place.beat << '/' << place.tick << " in "
                           << place.beats_per_bar << '/' << int{place.beat_length};
}

class Chance {
 public:
  explicit Chance(unsigned seed) : random_(seed) {}
  std::int16_t Between(int low, int high) {
    return static_cast<std::int16_t>(std::uniform_int_distribution(low, high)(random_));
  }

 private:
  std::mt19937 random_;
};

void AddChange(Tune& tune, Chance& chance) {
  tune.TempoChanges()->Add(chance.Between(1, 12), chance.Between(1, 4), chance.Between(0, 1) * 60,
                           chance.Between(20, 300), chance.Between(0, 30000));
}

void ExpectTheSameEverywhere(Tune& tune) {
  for (std::int16_t bar = 1; bar <= 13; ++bar)
    for (std::int16_t beat = 1; beat <= 4; ++beat)
      for (const std::int16_t tick : std::initializer_list<std::int16_t>{0, 59, 60, 61})
        ExpectTheSame(tune, {bar, beat, tick, 4, 4});
}

TEST(TimeOfPlaces, IsThatOfTheWalkForChangesInAnyOrder) {
  for (unsigned seed = 1; seed <= 30; ++seed) {
    Chance chance(seed);
    Tune tune;
    for (unsigned i = 0; i < seed; ++i) AddChange(tune, chance);
    ExpectTheSameEverywhere(tune);
  }
}

TEST(TimeOfPlaces, FollowsEveryEditOfTheChanges) {
  Chance chance(7);
  Tune tune;
  for (int i = 0; i < 20; ++i) AddChange(tune, chance);
  for (int round = 0; round < 300; ++round) {
    TempoChanges& changes = *tune.TempoChanges();
    const auto any = [&] { return changes.Item(chance.Between(1, static_cast<int>(changes.Count()))); };
    switch (round % 8) {
      case 0:
        AddChange(tune, chance);
        break;
      case 1:
        changes.Remove(qsizetype{chance.Between(1, static_cast<int>(changes.Count()))});
        break;
      case 2:
        any()->SetBar(chance.Between(1, 12));
        break;
      case 3:
        any()->SetBeat(chance.Between(1, 4));
        break;
      case 4:
        any()->SetTick(chance.Between(0, 119));
        break;
      case 5:
        any()->SetNewTempo(chance.Between(20, 300));
        break;
      case 6:
        any()->SetMillesecondCumTime(chance.Between(0, 30000));
        break;
      default: {
        auto others = std::make_shared<TempoChanges>();
        for (const auto& change : changes)
          others->Add(change->Bar(), change->Beat(), change->Tick(), change->NewTempo(),
                      change->MillesecondCumTime());
        tune.SetTempoChanges(others);
      }
    }
    for (int i = 0; i < 20; ++i)
      ExpectTheSame(tune, {chance.Between(1, 13), chance.Between(1, 4), chance.Between(0, 119), 4, 4});
  }
  tune.TempoChanges()->Clear();
  ExpectTheSameEverywhere(tune);
}

TEST(TimeOfPlaces, IsWorkedOutInTheMetreThatIsAskedFor) {
  Chance chance(3);
  Tune tune;
  for (int i = 0; i < 30; ++i) AddChange(tune, chance);
  for (int round = 0; round < 500; ++round)
    ExpectTheSame(tune, {chance.Between(1, 13), chance.Between(1, 4), chance.Between(0, 119),
                         chance.Between(1, 7), static_cast<std::uint8_t>(1 << chance.Between(0, 6))});
}

TEST(TimeOfPlaces, FailsWhereTheWalkFails) {
  Tune tune;
  TempoChanges& changes = *tune.TempoChanges();
  changes.Add(1, 1, 0, 100, 0);
  changes.Add(20000, 1, 0, 100, 500);  // more beats than can be counted
  changes.Add(3, 1, 0, 0, 1000);       // a tempo of 0
  changes.Add(5, 1, 0, 60, 3000);
  for (std::int16_t bar = 1; bar <= 6; ++bar) {
    ExpectTheSame(tune, {bar, 1, 0, 4, 4});
    ExpectTheSame(tune, {bar, 2, 0, 4, 4});
    ExpectTheSame(tune, {bar, 2, 0, 4, 0});
    ExpectTheSame(tune, {bar, 2, 0, 32767, 4});
  }
  EXPECT_THROW(tune.TimeFromPulse(4, 1, 0, 4, 4), DivisionError);
  EXPECT_THROW(tune.TimeFromPulse(2, 1, 0, 4, 4), OverflowError);
  EXPECT_EQ(tune.TimeFromPulse(6, 1, 0, 4, 4), 3000 + 4 * 1000);
}

TEST(TimeOfPlaces, KeepsToTheChangesOfAMapThatIsMadeAnew) {
  Tune tune;
  auto event = std::make_shared<Tone>();
  event->SetEventType(TEMPO_CHANGE);
  event->SetBar(2);
  event->SetVolume(0);
  event->SetInstrument(60);
  tune.Add(event);
  tune.MakeTempoMap();
  EXPECT_EQ(tune.TimeFromPulse(3, 1, 0, 4, 4), 2000 + 4000);
  event->SetInstrument(30);
  tune.MakeTempoMap();
  EXPECT_EQ(tune.TimeFromPulse(3, 1, 0, 4, 4), 2000 + 8000);
}

TEST(TimeOfPlaces, AChangeThatOutlivesItsTuneMayBeMoved) {
  std::shared_ptr<TempoChange> change;
  {
    Tune tune;
    change = tune.TempoChanges()->Add(2, 1, 0, 60, 2000);
    EXPECT_EQ(tune.TimeFromPulse(2, 2, 0, 4, 4), 3000);
  }
  change->SetBar(7);
  EXPECT_EQ(change->Bar(), 7);
}

}  // namespace
}  // namespace zelmar
