// The places of a growing list that are gaps, such as deleted rows that keep their place. Places count from
// 0.
//
// Every call takes as many steps as the number of places has binary digits, however many gaps there are.
#pragma once

#include <cstddef>
#include <vector>

namespace zelmar {

class Gaps {
 public:
  // `place` must not be a gap already.
  void Add(std::size_t place);
  void Clear() { sums_.clear(); }

  std::size_t Count() const { return sums_.empty() ? 0 : sums_.back(); }
  // The gaps before `place`.
  std::size_t Before(std::size_t place) const;
  // The place that has `filled` filled places before it and is filled itself.
  std::size_t Filled(std::size_t filled) const;

 private:
  std::size_t Capacity() const { return sums_.empty() ? 0 : sums_.size() - 1; }

  // A binary indexed tree: sums_[i] counts the gaps of the places i - (lowest bit of i) to i - 1. The last
  // index is a power of two, so that the last sum is that of all.
  std::vector<std::size_t> sums_;
};

}  // namespace zelmar
