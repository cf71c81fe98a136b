// How late messages leave behind the bang that owes them, on the real clock, while a four-track tune plays
// for a minute; beside it, in the same minute, the lateness of a bare loop that wakes every 2 ms.
//
// bench_lateness [seconds]

#include <QCoreApplication>

#include "midi/sound_card.h"
#include "midi/tune_player.h"
#include "model/main_window_link.h"
#include "moments.h"
#include "sample_tune.h"
#include "store/tune_loader.h"

int main(int argc, char** argv) {
  using namespace zelmar;
  const QCoreApplication application(argc, argv);
  MakeTunesSound();
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 60;
  const auto keeper = std::make_shared<bench::MomentKeeper>();
  Platform().midi = keeper;
  bench::SampleDatabase database;
  // A bar lasts two seconds and holds 16 notes on each of four tracks.
  database.AddTune(QStringLiteral("long"), seconds / 2 * 64);
  TuneLoader loader;
  QString name = QStringLiteral("long");
  loader.DoLoad(name);
  const auto tune = TheMainWindow().MyTune();

  const bench::Lateness lateness = bench::LatenessOf(*tune, *keeper, [&tune] {
    tune->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
    tune->Play();
  });
  if (lateness.messages.empty()) return 1;

  bench::PrintHeading();
  bench::PrintLateness("lateness of a message, median, above the bare loop", lateness, 0.5, 1.0);
  bench::PrintLateness("lateness of a message, 99th percentile, above the bare loop", lateness, 0.99, 1.0);
  return bench::over_limit ? 3 : 0;
}
