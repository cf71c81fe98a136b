// How late messages leave behind the bang that owes them, on the real clock, while a four-track tune plays
// for a minute; beside it, in the same minute, the lateness of a bare loop that wakes every 2 ms.
//
// bench_lateness [seconds]

#include <QCoreApplication>
#include <atomic>
#include <cmath>
#include <thread>

#include "figure.h"
#include "midi/sound_card.h"
#include "model/main_window_link.h"
#include "platform/services.h"
#include "sample_tune.h"
#include "store/tune_loader.h"

namespace {

using namespace zelmar;

constexpr double kBangMilliseconds = 2.0;

// Keeps the moment of every note message, in milliseconds of the wall clock.
class MomentKeeper : public MidiOutput {
 public:
  int DeviceCount() override { return 1; }
  QString DeviceName(int) override { return QStringLiteral("moments"); }
  int Open(int) override { return kSuccess; }
  void Close() override {}
  void Reset() override {}
  void ShortMessage(std::uint32_t packed) override {
    if ((packed & 0xF0U) == 0x90U) moments.push_back(SecondsSinceMidnight() * 1000.0);
  }
  void LongMessage(const QByteArray&) override {}
  QString ErrorText(int) override { return {}; }

  std::vector<double> moments;
};

// Lateness of each wake-up behind a grid of 2 ms, until told to stop.
std::vector<double> BareLoop(const std::atomic<bool>& stop) {
  std::vector<double> lateness;
  const auto period = std::chrono::microseconds(2000);
  auto next = std::chrono::steady_clock::now() + period;
  while (!stop) {
    std::this_thread::sleep_until(next);
    lateness.push_back(
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - next).count());
    next += period;
  }
  return lateness;
}

// The bang that owes each note message: the first at or behind its moment, one event to a bang.
std::vector<double> OwedMoments(Tune& tune, double first_bang, double mark, double start) {
  std::vector<double> owed;
  std::int64_t bang = 0;
  for (const auto& tone : tune) {
    const double due = start + tune.TimeFromPulse(tone->Bar(), tone->Beat(), tone->Tick(), tune.BeatsPerBar(),
                                                  tune.BeatLength());
    const auto first_due = static_cast<std::int64_t>(std::ceil((due - mark) / kBangMilliseconds));
    bang = std::max(bang, std::max<std::int64_t>(first_due, 0));
    owed.push_back(bang == 0 ? first_bang : mark + kBangMilliseconds * static_cast<double>(bang));
    ++bang;
  }
  return owed;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 60;
  const auto keeper = std::make_shared<MomentKeeper>();
  Platform().midi = keeper;
  bench::SampleDatabase database;
  // A bar lasts two seconds and holds 16 notes on each of four tracks.
  database.AddTune(QStringLiteral("long"), seconds / 2 * 64);
  TuneLoader loader;
  QString name = QStringLiteral("long");
  loader.DoLoad(name);
  const auto tune = TheMainWindow().MyTune();

  double first_bang = 0.0, mark = 0.0;
  QObject::connect(tune.get(), &Tune::MelodyTested, [&first_bang] {
    if (first_bang == 0.0) first_bang = SecondsSinceMidnight() * 1000.0;
  });
  // The first beat is raised just before the marks are set.
  QObject::connect(tune.get(), &Tune::Ticked, [&mark] {
    if (mark == 0.0) mark = SecondsSinceMidnight() * 1000.0;
  });

  std::atomic<bool> stop = false;
  std::vector<double> bare;
  std::thread loop([&] { bare = BareLoop(stop); });
  tune->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  tune->Play();
  stop = true;
  loop.join();

  const auto owed =
      OwedMoments(*tune, first_bang, mark, static_cast<double>(tune->MelodyStartTime()) * 1000.0);
  if (owed.size() != keeper->moments.size()) {
    std::fprintf(stderr, "%zu messages were owed and %zu came\n", owed.size(), keeper->moments.size());
    return 1;
  }
  std::vector<double> late;
  for (std::size_t i = 0; i < owed.size(); ++i) late.push_back(keeper->moments[i] - owed[i]);

  bench::PrintHeading();
  const auto print = [&](const char* what, double share) {
    const double measured = bench::Percentile(late, share);
    const double yardstick = bench::Percentile(bare, share);
    bench::PrintFigure(what, measured, yardstick, "ms", measured - yardstick, 1.0);
  };
  print("lateness of a message, median, above the bare loop", 0.5);
  print("lateness of a message, 99th percentile, above the bare loop", 0.99);
  return bench::over_limit ? 3 : 0;
}
