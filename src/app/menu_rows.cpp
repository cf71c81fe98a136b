#include "app/menu_rows.h"

namespace zelmar {

void AddMenuRows() {
  for (const auto rows :
       {FileRows(), EditRows(), PlayRows(), OptionRows(), MusicologyRows(), WindowRows(), HelpRows()})
    AddCommands(rows);
}

}  // namespace zelmar
