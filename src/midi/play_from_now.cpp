#include "midi/play_from_now.h"

#include "model/tune.h"
#include "platform/services.h"

namespace zelmar {

namespace {

void StartNow(Tune& tune) {
  tune.SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
}

}  // namespace

void PlayFromNow(Tune& tune, std::int16_t bar) {
  StartNow(tune);
  tune.Play(bar);
}

void JumpFromNow(Tune& tune, std::int16_t bar) {
  StartNow(tune);
  tune.JumpTo(bar);
}

}  // namespace zelmar
