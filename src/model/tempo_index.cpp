#include "model/tempo_index.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace zelmar {

void TempoIndex::Make(std::vector<std::int64_t> pulses, const Origin& origin) {
  lowest_from_ = std::move(pulses);
  std::int64_t lowest = std::numeric_limits<std::int64_t>::max();
  for (auto pulse = lowest_from_.rbegin(); pulse != lowest_from_.rend(); ++pulse)
    *pulse = lowest = std::min(lowest, *pulse);
  origin_ = origin;
}

qsizetype TempoIndex::LastBefore(std::int64_t pulse) const {
  return std::lower_bound(lowest_from_.begin(), lowest_from_.end(), pulse) - lowest_from_.begin();
}

}  // namespace zelmar
