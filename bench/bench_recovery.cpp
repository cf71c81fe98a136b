// How long the event queue is held up while an unsaved tune of 100,000 notes is put into its recovery file,
// against the 20 ms that a person does not notice, and what packing the events costs beside a bare loop that
// copies them, and what the start pays for a look for such files. The time that counts is what the interface
// thread works between two turns of the queue; on the wall it waits for other programs too.

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTimer>
#include <ctime>

#include "figure.h"
#include "model/globals.h"
#include "model/main_window_link.h"
#include "platform/paths.h"
#include "sample_tune.h"
#include "shell/recovery_keeper.h"
#include "store/packed_tune.h"
#include "store/recovery_file.h"
#include "store/tune_loader.h"

namespace {

using namespace zelmar;

constexpr int kNotes = 100000;
constexpr int kRounds = 21;
constexpr int kFilesBeside = 20;
constexpr double kUnnoticed = 20.0;  // milliseconds

std::shared_ptr<Tune> Load(const QString& code_name) {
  TuneLoader loader;
  QString name = code_name;
  loader.DoLoad(name);
  if (!loader.LoadedOk()) std::exit(1);
  return TheMainWindow().MyTune();
}

// Milliseconds that this thread has worked.
double Worked() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

struct Standstill {
  double work = 0.0;
  double wall = 0.0;
};

// The longest work, and the longest time, between two ticks of a timer that ticks as often as it can, until
// `begin` has had its job done and quits the loop.
template <typename Begin>
Standstill LongestStandstill(Begin begin) {
  QTimer ticks;
  QElapsedTimer since_tick;
  double worked = Worked();
  Standstill longest;
  ticks.callOnTimeout([&] {
    longest.wall = std::max(longest.wall, 1e-6 * static_cast<double>(since_tick.nsecsElapsed()));
    longest.work = std::max(longest.work, Worked() - worked);
    since_tick.restart();
    worked = Worked();
  });
  QEventLoop loop;
  ticks.start(0);
  since_tick.start();
  QTimer::singleShot(5, &loop, [&] { begin(loop); });
  loop.exec();
  return longest;
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  bench::SampleDatabase database;
  database.AddTune(QStringLiteral("long"), kNotes);
  QTemporaryDir folder;
  SetApplicationDirectory(folder.path());
  const auto tune = Load(QStringLiteral("long"));
  RecoveryKeeper keeper;

  bench::PrintHeading();
  std::vector<double> work, wall, idle_wall;
  for (int round = 0; round < kRounds; ++round) {
    const Standstill idle =
        LongestStandstill([](QEventLoop& loop) { QTimer::singleShot(50, &loop, &QEventLoop::quit); });
    const Standstill kept = LongestStandstill([&](QEventLoop& loop) {
      QObject::connect(&keeper, &RecoveryKeeper::Kept, &loop, &QEventLoop::quit);
      tune->SetChangedSinceLastSaved(true);
      keeper.Check();
    });
    work.push_back(kept.work);
    wall.push_back(kept.wall);
    idle_wall.push_back(idle.wall);
  }
  const double worst = *std::max_element(work.begin(), work.end());
  bench::PrintFigure("queue held up, 100,000 notes kept, worst of 21 / 20 ms", worst, kUnnoticed, "ms",
                     worst / kUnnoticed, 1.0);
  bench::PrintFigure("for information: on the wall, median / with nothing kept", bench::Median(wall),
                     bench::Median(idle_wall), "ms", bench::Median(wall) / bench::Median(idle_wall),
                     bench::kNoLimit);
  const auto pair = bench::RunInTurns(
      kRounds,
      [&] { return bench::MillisecondsOf([&] { TunePacker(tune).Advance(TunePacker::kAllEvents); }); },
      [&] {
        return bench::MillisecondsOf([&] {
          std::vector<Tone> copies;
          copies.reserve(static_cast<std::size_t>(tune->Count()));
          tune->Tones()->ForEach([&](const Tone& tone) { copies.push_back(tone); });
        });
      });
  bench::PrintFigure("packing 100,000 notes and their ends / copying them", pair.measured, pair.yardstick,
                     "ms", pair.measured / pair.yardstick, 4.0);

  // What a start without such a file pays, after its window stands, in a folder as full as that of the
  // program.
  tune->SetChangedSinceLastSaved(false);
  keeper.KeepNow();
  for (int i = 0; i < kFilesBeside; ++i) {
    QFile file(folder.filePath(QStringLiteral("file %1").arg(i)));
    if (!file.open(QIODevice::WriteOnly)) return 1;
  }
  const auto look = bench::RunInTurns(
      kRounds, [] { return bench::MillisecondsOf([] { LeftRecoveries(RecoveryFolders()); }); },
      [&] { return bench::MillisecondsOf([&] { QDir(folder.path()).entryList(); }); });
  bench::PrintFigure("look for files of other programs, none there / 1 ms", look.measured, 1.0, "ms",
                     look.measured, 1.0);
  bench::PrintFigure("for information: the same / bare list of the folder", look.measured, look.yardstick,
                     "ms", look.measured / look.yardstick, bench::kNoLimit);
  SetApplicationDirectory({});
  return bench::over_limit ? 3 : 0;
}
