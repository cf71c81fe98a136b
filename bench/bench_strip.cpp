// A strip of five staves: what turning its page costs in a long tune beside a short one, the processor time
// while it follows a four-track tune, and how late messages leave meanwhile.
//
// bench_strip [seconds]

#include <QWidget>

#include "app/zelmar_application.h"
#include "midi/sound_card.h"
#include "model/main_window_link.h"
#include "moments.h"
#include "notation/track_staff.h"
#include "processor.h"
#include "sample_tune.h"
#include "store/tune_loader.h"

namespace {

using namespace zelmar;

constexpr int kStaves = 5;
constexpr int kNotesInABar = 64;

std::shared_ptr<Tune> Load(bench::SampleDatabase& database, const char* code_name, int notes) {
  QString name = QLatin1String(code_name);
  database.AddTune(name, notes);
  TuneLoader loader;
  loader.DoLoad(name);
  return TheMainWindow().MyTune();
}

// A strip in a window of its own, on show.
class StripWindow {
 public:
  explicit StripWindow(const std::shared_ptr<Tune>& tune)
      : strip_(&window_), last_page_(static_cast<std::int16_t>((tune->BarCount() / kStaves - 1) * kStaves)) {
    window_.resize(1000, 200);
    strip_.resize(1000, 100);
    strip_.SetTune(tune);
    strip_.SetBarsAcross(kStaves);
    strip_.SetShowRests(true);
    strip_.LoadBarsAcross(QStringLiteral("Best"));
    window_.show();
    ServeEvents();
  }

  // The page that the last bars of the tune stand on, as the first beat of its first bar turns it, up to the
  // last pixel.
  double MillisecondsOfATurn(Tune& tune) {
    tune.SetBarNumber(last_page_);
    tune.SetBeatWithinBar(1);
    return bench::MillisecondsOf([this] {
      for (CtlQuilStaff* staff : strip_.MyStaff()) staff->ThisTune_Ticked();
      ServeEvents();
    });
  }

  double MillisecondsOfARefresh() {
    return bench::MillisecondsOf([this] {
      strip_.RefreshAllStaffs(last_page_);
      ServeEvents();
    });
  }

  bool ShowsNotes() const {
    const auto& drawn = strip_.MyStaff().back()->StaffDrawing().Primitives();
    return std::any_of(drawn.begin(), drawn.end(), [](const auto& p) { return p.role == Role::kNoteHead; });
  }

 private:
  QWidget window_;
  TrackStaff strip_;
  std::int16_t last_page_;
};

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  ZelmarApplication application(argc, argv);
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 40;
  const auto keeper = std::make_shared<bench::MomentKeeper>();
  Platform().midi = keeper;
  TheSoundCard() = std::make_shared<SoundCard>();
  bench::SampleDatabase database;
  bench::PrintHeading();

  {
    const auto large = Load(database, "large", 100000);
    const auto small = Load(database, "small", 1024);
    StripWindow large_strip(large), small_strip(small);
    constexpr int kRounds = 60;
    const auto turn = bench::RunInTurns(
        kRounds, [&] { return large_strip.MillisecondsOfATurn(*large); },
        [&] { return small_strip.MillisecondsOfATurn(*small); });
    const auto refresh = bench::RunInTurns(
        kRounds, [&] { return large_strip.MillisecondsOfARefresh(); },
        [&] { return small_strip.MillisecondsOfARefresh(); });
    if (!large_strip.ShowsNotes() || !small_strip.ShowsNotes()) {
      std::fprintf(stderr, "the last page is empty\n");
      return 1;
    }
    bench::PrintFigure("turning the page, 100,000 events beside 1,000", turn.measured, turn.yardstick, "ms",
                       turn.measured / turn.yardstick, 1.5);
    bench::PrintFigure("showing another page, the tune read anew", refresh.measured, refresh.yardstick, "ms",
                       refresh.measured / refresh.yardstick, bench::kNoLimit);
  }

  const auto tune = Load(database, "four", seconds / 2 * kNotesInABar);
  const auto play = [&tune] {
    tune->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
    tune->Play();
  };
  const StripWindow strip(tune);
  const double percent = bench::PercentOfACore(play);
  if (tune->PlayIndex() <= tune->Count()) {
    std::fprintf(stderr, "the tune was not played to its end\n");
    return 1;
  }
  bench::PrintFigure("processor time while a strip follows a tune", percent, 0.0, "%", percent, 10.0);

  const bench::Lateness lateness = bench::LatenessOf(*tune, *keeper, play);
  if (lateness.messages.empty()) return 1;
  bench::PrintLateness("lateness with the strip, median, above the bare loop", lateness, 0.5, 1.0);
  bench::PrintLateness("lateness with the strip, 99th percentile, above it", lateness, 0.99, 3.0);
  return bench::over_limit ? 3 : 0;
}
