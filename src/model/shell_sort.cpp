#include "model/shell_sort.h"

#include "platform/failure.h"

namespace zelmar {

void ShellSortByKey(std::vector<SortColumn>& columns, std::int32_t count) {
  if (count > static_cast<std::int64_t>(columns.size())) throw SubscriptError();
  SortColumn* const column = columns.data();
  for (std::int32_t gap = count / 2; gap >= 1; gap /= 2) {
    for (std::int32_t i = gap; i < count; ++i) {
      const SortColumn moving = column[i];
      std::int32_t place = i;
      for (; place >= gap && column[place - gap].key > moving.key; place -= gap)
        column[place] = column[place - gap];
      column[place] = moving;
    }
  }
}

}  // namespace zelmar
