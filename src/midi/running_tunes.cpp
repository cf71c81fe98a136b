#include "midi/running_tunes.h"

#include <QPointer>
#include <vector>

#include "model/tune.h"
#include "platform/ignoring_failures.h"

namespace zelmar {

namespace {

// A run within another one stands behind it.
std::vector<QPointer<Tune>>& Runs() {
  static std::vector<QPointer<Tune>> runs;
  return runs;
}

}  // namespace

RunningTune::RunningTune(Tune& tune) {
  Runs().emplace_back(&tune);
}

RunningTune::~RunningTune() {
  Runs().pop_back();
}

bool RunsInnermost(const Tune& tune) {
  const auto& runs = Runs();
  for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
    if (*run == &tune) return true;
    if (*run && (*run)->Playing()) return false;
  }
  return false;
}

void StopRunningTunes() {
  // The listeners of a tune that stops may let go of another, or start one.
  const auto runs = Runs();
  for (const QPointer<Tune>& tune : runs)
    if (tune && tune->Playing()) IgnoringFailures([&tune] { tune->Stopit(); });
}

}  // namespace zelmar
