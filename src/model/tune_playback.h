// The orders that a tune passes on to its player, and what the player tells of itself.
//
// The model knows of no device and no timer: a player is made by the engine that sound_link.h tells of, one
// for each tune, and lives as long as its tune.
#pragma once

#include <cstdint>
#include <memory>

namespace zelmar {

class QuilTimer;
class Tone;

// What the orders mean is said where Tune has them.
class TunePlayback {
 public:
  virtual ~TunePlayback() = default;

  // --- Orders ---

  virtual void Play(std::int16_t& start_bar) = 0;
  virtual void JumpTo(std::int16_t start_bar) = 0;
  virtual void Stopit() = 0;
  virtual void MelodyTest() = 0;
  virtual void NewBeat() = 0;

  // --- The playing under way, or the last one ---

  virtual std::int32_t PlayIndex() const = 0;
  virtual std::int16_t PlayStartBar() const = 0;
  virtual const std::shared_ptr<Tone>& CurrentTone() const = 0;
  virtual const std::shared_ptr<QuilTimer>& Timer() const = 0;
};

}  // namespace zelmar
