// Where a playing stands among the events of its tune.
//
// The cursor goes from event to event and follows them when they change beneath it: it goes on behind the
// event that was dealt with last, wherever that stands by now, and passes over what was dealt with already. A
// step takes constant time; the first look after a change of the events takes as long as they are many.
//
// An event is dealt with once. One that has been given another time since then is a new one, and so is not
// one that stands in the place of another and is like it: the note ends of a tune are made anew at each edit.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "model/tones.h"

namespace zelmar {

class PlayCursor {
 public:
  // Goes to the first event of `start_bar` or a later one; bar 1 means the very first. Where there is none it
  // stays at the place where it stood. Throws SubscriptError when that is no place of `tones`.
  void Start(const std::shared_ptr<Tones>& tones, std::int16_t start_bar);

  // The place from 1; Count + 1 behind the last event, 0 before the first Start.
  std::int32_t Place() const { return place_; }
  // The event at that place; behind the last event the one that was there before, null after Leave.
  const std::shared_ptr<Tone>& Event() const { return event_; }
  bool IsAtEnd() const { return place_ > tones_->Count(); }

  // Finds the place again if the events are others than they were; `tones` are those of the tune by now.
  void Follow(const std::shared_ptr<Tones>& tones);
  // The event at the place is dealt with from here on.
  void Deal();
  // Goes on to the next event.
  void Advance(const std::shared_ptr<Tones>& tones);

  // Lets go of the event at the place, which stays.
  void Leave() { event_.reset(); }
  // Lets go of the events that were dealt with: nothing is followed until the next Start.
  void Forget();

 private:
  struct Time {
    std::int16_t bar;
    std::int16_t beat;
    std::int16_t tick;
    auto operator<=>(const Time&) const = default;
  };
  struct Dealt {
    std::shared_ptr<Tone> tone;
    Time time;  // as it was then
  };

  // Two events that are alike in this are one, made anew.
  struct Likeness {
    Time time;
    std::int16_t number;
    EventType type;
    std::uint8_t track;
    std::uint8_t channel;
    bool operator==(const Likeness&) const = default;
  };
  struct LikenessHash {
    std::size_t operator()(const Likeness& event) const;
  };

  static Likeness LikenessOf(const Tone& tone, const Time& time);
  static Time TimeOf(const Tone& tone) { return {tone.Bar(), tone.Beat(), tone.Tick()}; }
  bool IsOf(const std::shared_ptr<Tones>& tones) const {
    return tones == tones_ && tones->Revision() == revision_;
  }
  void GoToStart();
  void FindAgain(const std::shared_ptr<Tones>& tones);
  // Marks the events that have been dealt with; the place of the last of them, 0 when none is left.
  std::int32_t FindDealt();
  std::int32_t FirstPlaceFrom(const Time& time) const;
  void Settle();

  std::shared_ptr<Tones> tones_ = std::make_shared<Tones>();
  std::uint64_t revision_ = 0;
  std::int16_t start_bar_ = 1;
  std::int32_t place_ = 0;
  std::shared_ptr<Tone> event_;
  std::vector<Dealt> dealt_;    // in the order of playing
  std::vector<bool> is_dealt_;  // by place less 1; empty while no event has changed
};

}  // namespace zelmar
