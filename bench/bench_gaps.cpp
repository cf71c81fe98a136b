// CalcGaps of one track of a tune of 100,000 events against the barest walk over the events that there is.

#include <QCoreApplication>
#include <cstdlib>

#include "figure.h"
#include "model/tune.h"
#include "platform/memory.h"

namespace {

using namespace zelmar;

constexpr int kEvents = 100000;
constexpr int kTracks = 4;
// One after every eighth note of a track, and one that completes the last bar.
constexpr int kRests = kEvents / 2 / kTracks / 8 + 1;

// Half of the events are notes on four tracks, with a silence after every eighth of them, and half are their
// note-offs.
std::shared_ptr<Tune> MakeTune() {
  auto tune = std::make_shared<Tune>();
  for (int track = 2; track <= kTracks; ++track)
    tune->Tracks()->Add(QStringLiteral("Track"), static_cast<std::uint8_t>(track), 1, 0, false, 0, 0,
                        QString::number(track));
  for (int i = 0; i < kEvents / 2; ++i) {
    auto tone = std::make_shared<Tone>();
    const int place = i / kTracks;
    tone->SetAbsRef(i + 1);
    tone->SetTrack(static_cast<std::uint8_t>(1 + i % kTracks));
    tone->SetBar(static_cast<std::int16_t>(1 + place / 16));
    tone->SetBeat(static_cast<std::int16_t>(1 + place / 4 % 4));
    tone->SetTick(static_cast<std::int16_t>(30 * (place % 4)));
    tone->SetDuration(place % 8 == 3 ? 0.125 : 0.25);
    tune->Add(tone);
  }
  tune->CalcNotesOff();
  tune->SortStartTimes();
  return tune;
}

double FindGaps(Tune& tune) {
  const double time = bench::MillisecondsOf([&tune] { tune.CalcGaps(1); });
  if (tune.Tracks()->Item(1)->Rests()->Count() != kRests) {
    std::fprintf(stderr, "the rests of the track were not found\n");
    std::exit(1);
  }
  return time;
}

double Walk(const Tune& tune) {
  int bars = 0;
  const double time = bench::MillisecondsOf(
      [&] { tune.Tones()->ForEach([&bars](const Tone& tone) { bars += tone.Bar(); }); });
  if (bars == 0) std::exit(1);
  return time;
}

}  // namespace

int main(int argc, char** argv) {
  KeepFreedMemory();
  const QCoreApplication application(argc, argv);
  const auto tune = MakeTune();
  bench::PrintHeading();
  const auto pair = bench::RunInTurns(
      31, [&tune] { return FindGaps(*tune); }, [&tune] { return Walk(*tune); });
  bench::PrintFigure("CalcGaps of one track, 100,000 events / bare walk", pair.measured, pair.yardstick, "ms",
                     pair.measured / pair.yardstick, 3.0);
  return bench::over_limit ? 3 : 0;
}
