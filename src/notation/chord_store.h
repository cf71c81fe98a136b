// The chord that is being collected: all notes of one track at exactly one place.
#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "model/tone.h"

namespace zelmar {

// Where a chord stands in its tune.
struct ChordPlace {
  std::uint8_t track = 0;
  std::int16_t bar = 0;
  std::int16_t beat = 0;
  std::int16_t tick = 0;
  auto operator<=>(const ChordPlace&) const = default;
};

inline ChordPlace PlaceOf(const Tone& tone) {
  return {tone.Track(), tone.Bar(), tone.Beat(), tone.Tick()};
}

struct ChordNote {
  std::shared_ptr<Tone> tone;
  QString colour;  // its word
};

class ChordStore {
 public:
  static constexpr std::size_t kLargestChord = 20;

  const std::vector<ChordNote>& Notes() const { return notes_; }
  bool IsTooLarge() const { return notes_.size() > kLargestChord; }
  // Whether the note stands where the others do.
  bool Takes(const Tone& tone) const {
    if (notes_.empty()) return false;
    const Tone& first = *notes_.front().tone;
    return tone.Bar() == first.Bar() && tone.Beat() == first.Beat() && tone.Tick() == first.Tick();
  }
  // Of a chord that has notes.
  ChordPlace Place() const { return PlaceOf(*notes_.front().tone); }

  void Add(const std::shared_ptr<Tone>& tone, const QString& colour) { notes_.push_back({tone, colour}); }
  void Clear() { notes_.clear(); }

 private:
  std::vector<ChordNote> notes_;
};

}  // namespace zelmar
