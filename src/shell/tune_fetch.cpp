#include "shell/tune_fetch.h"

#include "model/globals.h"
#include "model/tune.h"
#include "shell/main_frame.h"
#include "store/tune_loader.h"

namespace zelmar {

namespace {

// Where the events are there and are put in order.
constexpr std::int16_t kSortingPercent = 55;

// The loader tells of progress only once it has found the tune in the catalogue, and of all that goes wrong
// after that.
template <typename Load>
Fetched Run(TuneLoader& loader, const FetchProgress& progress, Load load) {
  bool found = false;
  bool done = false;
  const QObject listener;
  QObject::connect(&loader, &TuneLoader::PercentCompleted, &listener, [&](std::int16_t percent) {
    found = true;
    if (progress) progress(percent);
  });
  QObject::connect(&loader, &TuneLoader::Done, &listener, [&done] { done = true; });
  load();
  if (done) return Fetched::kLoaded;
  return found || Global().DatabaseFailed ? Fetched::kFailed : Fetched::kNotInCatalogue;
}

}  // namespace

Fetched FetchTune(QString& code_name, const FetchProgress& progress) {
  MainFrame* const frame = TheMainFrame();
  const auto loader = frame != nullptr ? frame->MyLoader() : std::make_shared<TuneLoader>();
  return Run(*loader, progress, [&] { loader->DoLoad(code_name); });
}

Fetched FetchTuneInto(std::shared_ptr<Tune>& target, QString& code_name, const FetchProgress& progress) {
  TuneLoader loader;
  auto loaded = std::make_shared<Tune>();
  const Fetched outcome = Run(loader, progress, [&] { loader.DoLoad(code_name, loaded); });
  target = outcome == Fetched::kLoaded ? loaded : nullptr;
  return outcome;
}

QString ProgressWords(std::int16_t percent) {
  const QString words = QString::number(percent) + QStringLiteral("% completed. ");
  return percent == kSortingPercent ? words + QStringLiteral(" Sorting in progress.  ") : words;
}

}  // namespace zelmar
