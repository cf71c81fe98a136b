// TimeFromPulse in a tune of 10,000 changes of tempo, against a walk through the changes from the last to the
// first, whose answers it must give.

#include <QCoreApplication>
#include <random>

#include "figure.h"
#include "model/pulses.h"
#include "model/tune.h"
#include "platform/numbers.h"

namespace {

using namespace zelmar;

constexpr int kChanges = 10000;
constexpr int kPerBar = 4;
constexpr int kPlaces = 200000;
constexpr int kWalks = 2000;

struct Place {
  std::int16_t bar, beat, tick;
};

// A change on each beat, with a few that stand out of order or twice at one place.
std::shared_ptr<Tune> TuneOfChanges() {
  auto tune = std::make_shared<Tune>();
  std::int32_t abs_ref = 0;
  for (int i = 0; i < kChanges; ++i) {
    auto tone = std::make_shared<Tone>();
    const int beat = i % 97 == 5 ? i - 1 : i % 101 == 7 ? i + 20 : i;
    const int tempo = 60 + i * 7 % 120;
    tone->SetEventType(TEMPO_CHANGE);
    tone->SetAbsRef(++abs_ref);
    tone->SetBar(static_cast<std::int16_t>(1 + beat / kPerBar));
    tone->SetBeat(static_cast<std::int16_t>(1 + beat % kPerBar));
    tone->SetVolume(static_cast<std::uint8_t>(tempo / 128));
    tone->SetInstrument(static_cast<std::uint8_t>(tempo % 128));
    tune->Add(tone);
  }
  tune->MakeTempoMap();
  return tune;
}

std::vector<Place> RandomPlaces() {
  std::mt19937 random(1);
  std::vector<Place> places(kPlaces);
  for (Place& place : places)
    place = {static_cast<std::int16_t>(1 + random() % (kChanges / kPerBar)),
             static_cast<std::int16_t>(1 + random() % kPerBar), static_cast<std::int16_t>(random() % 120)};
  return places;
}

std::int32_t ByWalking(const TempoChanges& changes, std::int16_t tempo, const Place& place) {
  std::int32_t base = 0;
  auto crotchet = RoundHalfEven<std::int32_t>(60000.0 / tempo);
  std::int32_t pulses = PulseFromBarBeatTick(place.bar, place.beat, place.tick, kPerBar, 4);
  for (qsizetype i = changes.Count(); i >= 1; --i) {
    const TempoChange& change = *changes.Item(i);
    const std::int32_t pulse = PulseFromBarBeatTick(change.Bar(), change.Beat(), change.Tick(), kPerBar, 4);
    if (pulse >= pulses) continue;
    base = change.MillesecondCumTime();
    crotchet = RoundHalfEven<std::int32_t>(60000.0 / change.NewTempo());
    pulses -= pulse;
    break;
  }
  return RoundHalfEven<std::int32_t>(static_cast<double>(pulses) * crotchet / kPulsesPerCrotchet + base);
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const auto tune = TuneOfChanges();
  const TempoChanges& changes = *tune->TempoChanges();
  const std::vector<Place> places = RandomPlaces();
  const auto found = [&tune](const Place& place) {
    return tune->TimeFromPulse(place.bar, place.beat, place.tick, kPerBar, 4);
  };
  for (int i = 0; i < kWalks; ++i) {
    const Place& place = places[static_cast<std::size_t>(i)];
    if (found(place) == ByWalking(changes, tune->Tempo(), place)) continue;
    std::fprintf(stderr, "another answer than the walk's at %d/%d/%d\n", place.bar, place.beat, place.tick);
    return 1;
  }

  std::int64_t sum = 0;
  const auto pair = bench::RunInTurns(
      9,
      [&] {
        return 1000.0 / kPlaces * bench::MillisecondsOf([&] {
                 for (const Place& place : places) sum += found(place);
               });
      },
      [&] {
        return 1000.0 / kWalks * bench::MillisecondsOf([&] {
                 for (int i = 0; i < kWalks; ++i)
                   sum += ByWalking(changes, tune->Tempo(), places[static_cast<std::size_t>(i)]);
               });
      });
  bench::PrintHeading();
  bench::PrintFigure("TimeFromPulse, 10,000 changes of tempo, microseconds / 1", pair.measured,
                     pair.yardstick, "us", pair.measured, 1.0);
  if (sum == 0) return 1;
  return bench::over_limit ? 3 : 0;
}
