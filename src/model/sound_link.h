// What the model asks of the engine that makes it heard. The engine puts its own link in place at start;
// without one nothing sounds: a Play returns at once, and Stopit only tells of the end.
#pragma once

#include <memory>

#include "model/tune_playback.h"

namespace zelmar {

class Tune;

class SoundLink {
 public:
  virtual ~SoundLink() = default;
  // Sounds the tone at once, after a program change when it asks for one.
  virtual void Sound(const Tone&) {}
  // A player for a tune that is being made: nothing of the tune may be used yet. Never null.
  virtual std::unique_ptr<TunePlayback> PlaybackOf(Tune& tune);
};

// The link in use.
SoundLink& TheSoundLink();

// Puts another link in place for the tunes that are made from here on, not owned; null returns to the silent
// one.
void SetSoundLink(SoundLink* link);

}  // namespace zelmar
