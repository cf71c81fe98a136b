#include "store/gaps.h"

#include <algorithm>

namespace zelmar {

namespace {

constexpr std::size_t LowestBit(std::size_t index) {
  return index & (~index + 1);
}

}  // namespace

void Gaps::Add(std::size_t place) {
  if (sums_.empty()) sums_.assign(2, 0);
  while (place >= Capacity()) {
    const std::size_t all = sums_.back();
    sums_.resize(2 * Capacity() + 1, 0);
    sums_.back() = all;
  }
  for (std::size_t i = place + 1; i < sums_.size(); i += LowestBit(i)) ++sums_[i];
}

std::size_t Gaps::Before(std::size_t place) const {
  std::size_t gaps = 0;
  for (std::size_t i = std::min(place, Capacity()); i > 0; i -= LowestBit(i)) gaps += sums_[i];
  return gaps;
}

std::size_t Gaps::Filled(std::size_t filled) const {
  std::size_t place = 0;
  for (std::size_t width = Capacity(); width > 0; width /= 2) {
    if (place + width > Capacity()) continue;
    const std::size_t filled_here = width - sums_[place + width];
    if (filled_here > filled) continue;
    filled -= filled_here;
    place += width;
  }
  return place + filled;  // something is left only behind the last place that the sums cover
}

}  // namespace zelmar
