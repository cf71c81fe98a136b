#include "model/tempo_index.h"

#include <algorithm>
#include <limits>

#include "model/companions.h"
#include "model/pulses.h"

namespace zelmar {

namespace {

// Before every pulse when its own cannot be worked out.
std::int64_t PulseOf(const TempoChange& change, std::int16_t beats_per_bar, std::uint8_t beat_length) {
  try {
    return PulseFromBarBeatTick(change.Bar(), change.Beat(), change.Tick(), beats_per_bar, beat_length);
  } catch (const Failure&) {
    return std::numeric_limits<std::int64_t>::min();
  }
}

}  // namespace

void TempoIndex::Make(const TempoChanges& changes, const Origin& origin) {
  origin_.reset();
  lowest_from_.clear();
  lowest_from_.reserve(static_cast<std::size_t>(changes.Count()));
  changes.ForEach([&](const TempoChange& change) {
    lowest_from_.push_back(PulseOf(change, origin.beats_per_bar, origin.beat_length));
  });
  std::int64_t lowest = std::numeric_limits<std::int64_t>::max();
  for (auto pulse = lowest_from_.rbegin(); pulse != lowest_from_.rend(); ++pulse)
    *pulse = lowest = std::min(lowest, *pulse);
  origin_ = origin;
}

qsizetype TempoIndex::LastBefore(std::int64_t pulse) const {
  return std::lower_bound(lowest_from_.begin(), lowest_from_.end(), pulse) - lowest_from_.begin();
}

}  // namespace zelmar
