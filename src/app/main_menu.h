// The main menu as a table: every item with its words, its key, its topic in the help and what it does.
#pragma once

#include <span>

namespace zelmar {

class MDIParent;

struct MenuRow {
  enum class Kind { kMenu, kSubmenu, kItem, kSeparator, kTopLevelItem };

  Kind kind;
  const char* name;
  const char* caption;
  const char* shortcut = "";
  int help_context = 0;
  const char* window =
      "";  // the window that the item leads to; it is shown straight away where no `act` does it
  void (MDIParent::*act)() = nullptr;
  int index = 0;             // number of an item of an array, 0 for any other
  const char* submenu = "";  // the submenu that the item stands in
};

std::span<const MenuRow> MainMenu();

}  // namespace zelmar
