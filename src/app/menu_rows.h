// Every command of the main window and every window of the program, as rows of the table of commands: a file
// a menu, its rows in the order of the items.
//
// A new window is a row here and a pair of files.
#pragma once

#include <span>

#include "shell/command_table.h"

namespace zelmar {

// Puts all of them into the table.
void AddMenuRows();

// In the order of the menus. What no item leads to stands in the menu that it belongs to by its matter.
std::span<const CommandRow> FileRows();
std::span<const CommandRow> EditRows();
std::span<const CommandRow> PlayRows();
std::span<const CommandRow> OptionRows();
std::span<const CommandRow> MusicologyRows();
std::span<const CommandRow> WindowRows();
std::span<const CommandRow> HelpRows();

// How a row makes its window.
template <typename Window>
ChildWindow* MakeWindow() {
  return new Window;
}

}  // namespace zelmar
