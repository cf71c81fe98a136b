// CalcNotesOff and SortStartTimes of n notes against a library sort of the same keys.

#include <QCoreApplication>
#include <algorithm>

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
  for (const auto& tone : tune) keys.push_back(tone->Bar() * 960 + tone->Beat() * 240 + tone->Tick());
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
  return bench::over_limit ? 3 : 0;
}
