// Finds the last change of tempo before a pulse, in whatever order the changes stand.
//
// For each change it keeps the lowest pulse of that change and all behind it. These never fall from one
// change to the next, so a binary search finds what a walk from the last change to the first would stop at.
#pragma once

#include <QtGlobal>
#include <cstdint>
#include <optional>
#include <vector>

namespace zelmar {

class TempoIndex {
 public:
  // All that the index was made from: it is good while this stays the same.
  struct Origin {
    std::uint64_t revision;
    std::uint64_t moves;
    std::int16_t beats_per_bar;
    std::uint8_t beat_length;
    bool operator==(const Origin&) const = default;
  };

  bool IsOf(const Origin& origin) const { return origin_ == origin; }
  // `pulses` of the changes, in their order.
  void Make(std::vector<std::int64_t> pulses, const Origin& origin);
  // Place from 1, 0 when no change lies before the pulse.
  qsizetype LastBefore(std::int64_t pulse) const;

 private:
  std::optional<Origin> origin_;
  std::vector<std::int64_t> lowest_from_;
};

}  // namespace zelmar
