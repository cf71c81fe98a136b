// CalcNotesOff and SortStartTimes of n notes against a library sort of the same keys; SortStartTimes alone of
// events in orders that are hard on a sort.

#include <QCoreApplication>
#include <algorithm>
#include <numeric>
#include <random>

#include "figure.h"
#include "model/tune.h"
#include "platform/memory.h"

namespace {

using namespace zelmar;

constexpr int kLong = 100000;
constexpr int kShort = 10000;

// Notes as they are stored: track after track, each in time order, with chords and syncopation.
std::shared_ptr<Tune> MakeTune(int notes) {
  auto tune = std::make_shared<Tune>();
  constexpr int kTracks = 4;
  for (int i = 0; i < notes; ++i) {
    auto tone = std::make_shared<Tone>();
    const int place = i % (notes / kTracks);
    tone->SetAbsRef(i + 1);
    tone->SetTrack(static_cast<std::uint8_t>(1 + i / (notes / kTracks)));
    tone->SetBar(static_cast<std::int16_t>(1 + place / 16));
    tone->SetBeat(static_cast<std::int16_t>(1 + place / 4 % 4));
    tone->SetTick(static_cast<std::int16_t>(30 * (place % 4)));
    tone->SetDuration(0.25 * (1 + i % 5));
    tone->SetNumber(static_cast<std::int16_t>(40 + i % 40));
    tune->Add(tone);
  }
  return tune;
}

std::vector<std::int32_t> KeysOf(const Tune& tune) {
  std::vector<std::int32_t> keys;
  for (const auto& tone : tune)
    keys.push_back(tone->Bar() * tune.BeatsPerBar() * 240 + tone->Beat() * 240 + tone->Tick());
  return keys;
}

double PrepareToPlay(Tune& tune) {
  return bench::MillisecondsOf([&tune] {
    tune.CalcNotesOff();
    tune.SortStartTimes();
  });
}

double TimeOfLongTune() {
  return PrepareToPlay(*MakeTune(kLong));
}

// The mean of as many short tunes as hold the notes of the long one, all made beforehand: neither size finds
// its notes in the cache of the processor.
double TimeOfShortTune() {
  std::vector<std::shared_ptr<Tune>> tunes;
  for (int i = 0; i < kLong / kShort; ++i) tunes.push_back(MakeTune(kShort));
  double sum = 0.0;
  for (const auto& tune : tunes) sum += PrepareToPlay(*tune);
  return sum / static_cast<double>(tunes.size());
}

// Notes at the given places in time, four to the crotchet, stored in this order.
std::shared_ptr<Tune> TuneOfPlaces(const std::vector<int>& places) {
  constexpr int kPerBar = 32;  // half a million notes in bars of 16 bits
  auto tune = std::make_shared<Tune>();
  tune->SetBeatsPerBar(kPerBar / 4);
  tune->Tones()->Reserve(static_cast<qsizetype>(places.size()));
  std::int32_t abs_ref = 0;
  for (const int place : places) {
    auto tone = std::make_shared<Tone>();
    tone->SetAbsRef(++abs_ref);
    tone->SetBar(static_cast<std::int16_t>(1 + place / kPerBar));
    tone->SetBeat(static_cast<std::int16_t>(1 + place / 4 % (kPerBar / 4)));
    tone->SetTick(static_cast<std::int16_t>(30 * (place % 4)));
    tune->Add(tone);
  }
  return tune;
}

// One event of each voice in turn, the second voice beginning where the first one ends.
std::vector<int> TwoVoices(int events) {
  std::vector<int> places;
  for (int i = 0; i < events; ++i) places.push_back(i / 2 + (i % 2) * (events / 2));
  return places;
}

std::vector<int> Shuffled(int events) {
  std::vector<int> places(static_cast<std::size_t>(events));
  std::iota(places.begin(), places.end(), 0);
  std::shuffle(places.begin(), places.end(), std::mt19937(1));
  return places;
}

void PrintSort(const char* what, const std::vector<int>& places) {
  const auto pair = bench::RunInTurns(
      7,
      [&places] {
        const auto tune = TuneOfPlaces(places);
        return bench::MillisecondsOf([&tune] { tune->SortStartTimes(); });
      },
      [keys = KeysOf(*TuneOfPlaces(places))] {
        auto copy = keys;
        return bench::MillisecondsOf([&copy] { std::sort(copy.begin(), copy.end()); });
      });
  bench::PrintFigure(what, pair.measured, pair.yardstick, "ms", pair.measured / pair.yardstick, 5.0);
}

}  // namespace

int main(int argc, char** argv) {
  KeepFreedMemory();
  const QCoreApplication application(argc, argv);
  const auto unsorted = MakeTune(kLong);
  unsorted->CalcNotesOff();
  const std::vector<std::int32_t> keys = KeysOf(*unsorted);

  bench::PrintHeading();
  const auto large = bench::RunInTurns(15, TimeOfLongTune, [&keys] {
    auto copy = keys;
    return bench::MillisecondsOf([&copy] { std::sort(copy.begin(), copy.end()); });
  });
  bench::PrintFigure("CalcNotesOff and SortStartTimes, 100,000 notes, / sort", large.measured,
                     large.yardstick, "ms", large.measured / large.yardstick, 5.0);
  const auto growth = bench::RunInTurns(31, TimeOfLongTune, TimeOfShortTune);
  bench::PrintFigure("the same, 100,000 notes / 10,000 notes", growth.measured, growth.yardstick, "ms",
                     growth.measured / growth.yardstick, 15.0);
  PrintSort("SortStartTimes, 131,072 events of two voices in turn, / sort", TwoVoices(131072));
  PrintSort("SortStartTimes, 524,288 events of two voices in turn, / sort", TwoVoices(524288));
  PrintSort("SortStartTimes, 131,072 events in random order, / sort", Shuffled(131072));
  PrintSort("SortStartTimes, 524,288 events in random order, / sort", Shuffled(524288));
  return bench::over_limit ? 3 : 0;
}
