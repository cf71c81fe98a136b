#include "shell/unsaved_work.h"

#include "model/main_window_link.h"
#include "model/tune.h"

namespace zelmar {

namespace {

bool HasNote(const Tune& tune) {
  for (const auto& tone : tune)
    if (tone->EventType() == MUSIC_NOTE) return true;
  return false;
}

}  // namespace

bool HasUnsavedWork(const Tune& tune) {
  if (!tune.ChangedSinceLastSaved() || tune.Changes() == tune.ChangesSaved()) return false;
  return !tune.SavedFileName().isNull() || HasNote(tune);
}

std::shared_ptr<Tune> UnsavedTune() {
  std::shared_ptr<Tune> tune = CurrentTune();
  return tune && HasUnsavedWork(*tune) ? tune : nullptr;
}

}  // namespace zelmar
