#include "model/sound_link.h"

namespace zelmar {

namespace {

SoundLink* chosen = nullptr;

}  // namespace

SoundLink& TheSoundLink() {
  static SoundLink silent;
  return chosen != nullptr ? *chosen : silent;
}

void SetSoundLink(SoundLink* link) {
  chosen = link;
}

}  // namespace zelmar
