// The longest time for which the event queue goes unserved while a tune of 100,000 events loads, with its
// sort, and is saved: nothing may make a window feel stuck.

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>

#include "figure.h"
#include "model/main_window_link.h"
#include "platform/memory.h"
#include "platform/real_clock.h"
#include "platform/services.h"
#include "sample_tune.h"
#include "store/tune_loader.h"
#include "store/tune_saver.h"

namespace {

using namespace zelmar;

constexpr int kEvents = 100000;
constexpr double kLimitMilliseconds = 20.0;
constexpr int kRounds = 5;

// The time for which this thread stood ready and other programs had the processors, in milliseconds: no doing
// of this program's. 0 where the system does not tell.
class StolenTime {
 public:
  ~StolenTime() {
    if (file_ >= 0) close(file_);
  }
  double Milliseconds() const {
    char text[128] = {};
    long long run = 0, waited = 0;
    if (file_ < 0 || pread(file_, text, sizeof text - 1, 0) <= 0 ||
        std::sscanf(text, "%lld %lld", &run, &waited) != 2)
      return 0.0;
    return static_cast<double>(waited) * 1e-6;
  }

 private:
  int file_ = open("/proc/thread-self/schedstat", O_RDONLY);
};

// Serves the real queue and keeps the longest time between the end of one serving and the start of the next.
class WatchedEvents : public RealEventService {
 public:
  void Serve() override {
    EndWait();
    RealEventService::Serve();
    BeginWait();
  }

  // The longest wait while `work` runs.
  template <typename Work>
  double LongestWait(Work work) {
    longest_ = 0.0;
    BeginWait();
    work();
    EndWait();
    return longest_;
  }

 private:
  void BeginWait() {
    stolen_ = stolen_time_.Milliseconds();
    last_ = std::chrono::steady_clock::now();
  }

  void EndWait() {
    const std::chrono::duration<double, std::milli> wait = std::chrono::steady_clock::now() - last_;
    longest_ = std::max(longest_, wait.count() - (stolen_time_.Milliseconds() - stolen_));
  }

  StolenTime stolen_time_;
  double stolen_ = 0.0;
  std::chrono::steady_clock::time_point last_;
  double longest_ = 0.0;
};

void Load(const QString& code_name) {
  TuneLoader loader;
  QString name = code_name;
  loader.DoLoad(name);
  if (!loader.LoadedOk()) std::exit(1);
}

void Save(const std::shared_ptr<Tune>& tune) {
  bool failed = false;
  SaveTune(tune, tune->FileName(), failed, SavePortion::kAll);
  if (failed) std::exit(1);
}

void Print(const char* what, const std::vector<double>& waits) {
  const double wait = bench::Median(waits);
  bench::PrintFigure(what, wait, kLimitMilliseconds, "ms", wait / kLimitMilliseconds, 1.0);
}

}  // namespace

int main(int argc, char** argv) {
  KeepFreedMemory();
  const QCoreApplication application(argc, argv);
  const auto events = std::make_shared<WatchedEvents>();
  Platform().events = events;
  const QString name = QStringLiteral("long");
  bench::SampleDatabase database;
  database.AddTune(name, kEvents);
  // The program keeps no connection open between its commands.
  bench::SampleDatabase::Handle().close();

  std::vector<double> loads, saves, first_saves;
  for (int round = 0; round < kRounds; ++round) {
    TheMainWindow().SetMyTune(nullptr);
    loads.push_back(events->LongestWait([&name] { Load(name); }));
    const std::shared_ptr<Tune> tune = TheMainWindow().MyTune();
    saves.push_back(events->LongestWait([&tune] { Save(tune); }));
    const std::shared_ptr<Tune> copy = TheMainWindow().MyTune();
    copy->SetFileName(QStringLiteral("copy %1").arg(round));
    first_saves.push_back(events->LongestWait([&copy] { Save(copy); }));
  }
  bench::PrintHeading();
  Print("longest wait of the queue, load of 100,000 events", loads);
  Print("longest wait of the queue, save over an older one", saves);
  Print("longest wait of the queue, first save", first_saves);
  return bench::over_limit ? 3 : 0;
}
