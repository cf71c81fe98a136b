// Shell sort with halving gaps, ascending by key. Not stable: callers must not depend on the order of equal
// keys.
#pragma once

#include <cstdint>
#include <vector>

namespace zelmar {

// A column of the two-row array that is sorted.
struct SortColumn {
  std::int32_t position;  // carried along
  std::int32_t key;
};

// Sorts the first `count` columns. Throws SubscriptError when there are fewer.
void ShellSortByKey(std::vector<SortColumn>& columns, std::int32_t count);

}  // namespace zelmar
