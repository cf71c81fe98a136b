// The order in which the events of a tune stand: by time and, at one time, ends of notes first, then
// controllers, changes of tempo and all else, then notes, each as they stood before. So a note is heard that
// begins where another of its pitch ends.
//
// A note without length would be ended before it began: its own end stands right behind it, and both stand
// before a note of the same pitch and channel that does have length.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "model/tones.h"

namespace zelmar {

// The place from 1 to Count + 1 at which `tone` goes into `tones`, which are in order, in a tune of that
// metre: behind all events that come before it and those that are level with it. Throws OverflowError for a
// time that does not fit.
qsizetype PlaceInOrder(const Tones& tones, const Tone& tone, std::int16_t beats_per_bar);

// The tones of a collection in a new one, in order. The steps that it takes grow with the number of tones,
// however they stand. Throws OverflowError for a time that does not fit, DuplicateKeyError when an AbsRef
// stands twice.
std::shared_ptr<Tones> InOrder(const std::shared_ptr<Tones>& tones, std::int16_t beats_per_bar);

// The same in steps between which the caller may tell of its progress, and whoever hears of it may change the
// events.
class EventSort {
 public:
  EventSort(std::shared_ptr<Tones> tones, std::int16_t beats_per_bar);

  // Looks at the times of the next `events` events.
  void Read(qsizetype events);
  void Sort();
  // Null when an event has come or gone meanwhile.
  std::shared_ptr<Tones> Sorted();
  // False when an event has come, gone or moved since it was read, or when `tones` are others or in another
  // metre.
  bool StillHolds(const std::shared_ptr<Tones>& tones, std::int16_t beats_per_bar) const;

 private:
  bool IsStale() const { return tones_->Revision() != revision_; }
  const Tone& ToneAt(std::int32_t position) const { return *tones_->Item(position); }
  std::int64_t OrderAt(std::int32_t position) const {
    return orders_[static_cast<std::size_t>(position - 1)];
  }
  void PutEndsBehind(std::span<std::int32_t> level) const;

  std::shared_ptr<Tones> tones_;
  std::int16_t beats_per_bar_;
  std::uint64_t revision_;
  std::int32_t count_;
  std::vector<std::int64_t> orders_;     // time and, behind it, the rank at one time; by position
  std::vector<std::int32_t> positions_;  // in order
  bool lengthless_ = false;              // a note without length is among them
};

}  // namespace zelmar
