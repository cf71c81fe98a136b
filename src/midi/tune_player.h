// Plays one tune: sends one event at a time when its moment has come, counts the beats, and raises the
// tune's events. See Tune for what its orders mean.
//
// The call of Play that begins a playing stays on the stack until it has ended; listeners may meanwhile stop
// the tune, play it anew, change its events or let go of it.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "midi/midi_numbers.h"
#include "midi/play_cursor.h"
#include "model/beat_clock.h"
#include "model/tune_playback.h"

namespace zelmar {

class Tune;

class TunePlayer : public TunePlayback {
 public:
  // Nothing of the tune is used before the first order.
  explicit TunePlayer(Tune& tune) : tune_(tune) {}
  ~TunePlayer() override;

  void Play(std::int16_t& start_bar) override;
  void JumpTo(std::int16_t start_bar) override;
  void Stopit() override;
  void MelodyTest() override;
  void NewBeat() override;

  std::int32_t PlayIndex() const override { return cursor_.Place(); }
  std::int16_t PlayStartBar() const override { return start_bar_; }
  const std::shared_ptr<Tone>& CurrentTone() const override { return cursor_.Event(); }
  const std::shared_ptr<QuilTimer>& Timer() const override { return timer_; }

 private:
  // --- Beginning ---
  bool Prepare(std::int16_t start_bar);
  void EndReplacedPlaying();
  void PlayWhatWaits();
  void SendPreparation();
  void SendMode();

  // --- Events ---
  void Handle(Tone& tone);
  void SendControl(Tone& tone);
  bool IsDue(const Tone& tone) const;
  void EndNaturally();

  // --- Beats ---
  void CountTo(std::int32_t beat_number);
  void AdoptTempo(std::int16_t tempo);
  void AdoptTempoOfStart(std::int16_t start_bar);
  void AdoptTempoInForce();

  Tune& tune_;
  std::shared_ptr<QuilTimer> timer_;
  std::shared_ptr<QuilTimer> waiting_;  // of a playing that is ready and has not begun
  BeatClock beat_clock_;
  PlayCursor cursor_;
  std::int16_t start_bar_ = 0;
  std::array<std::uint8_t, kChannelCount> last_patch_{};
};

// Gives every tune that is made from here on a player, and every tone its sound: called once, at the start of
// a program.
void MakeTunesSound();

}  // namespace zelmar
