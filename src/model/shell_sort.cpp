#include "model/shell_sort.h"

#include "platform/failure.h"

namespace zelmar {

void ShellSortByKey(std::vector<SortColumn>& columns, std::int32_t count) {
  if (count > static_cast<std::int64_t>(columns.size())) throw SubscriptError();
  SortColumn* const column = columns.data();
  for (std::int32_t gap = count / 2; gap >= 1; gap /= 2) {
    for (std::int32_t i = gap; i < count; ++i) {
      // Most columns stand right already once the wide gaps are done.
      if (column[i - gap].key <= column[i].key) continue;
      const SortColumn moving = column[i];
      std::int32_t place = i;
      do {
        column[place] = column[place - gap];
        place -= gap;
      } while (place >= gap && column[place - gap].key > moving.key);
      column[place] = moving;
    }
  }
}

}  // namespace zelmar
