// The Windows menu, and the keys that go from window to window.

#include "app/frm_front.h"
#include "app/menu_commands.h"
#include "app/menu_rows.h"

namespace zelmar {

std::span<const CommandRow> WindowRows() {
  using enum CommandRow::Kind;
  static const CommandRow rows[] = {
      {.name = "mnuWindowsTitle", .kind = kMenu, .caption = "&Windows"},
      {.name = "mnuWindows", .index = 1, .menu = "mnuWindowsTitle", .caption = "Cascade", .act = &Cascade},
      {.name = "mnuWindows",
       .index = 2,
       .menu = "mnuWindowsTitle",
       .caption = "Vertical Tile",
       .act = &TileSideBySide},
      {.name = "mnuWindows",
       .index = 3,
       .menu = "mnuWindowsTitle",
       .caption = "Horizontal Tile",
       .act = &TileAboveEachOther},
      {.name = "mnuWindows",
       .index = 4,
       .menu = "mnuWindowsTitle",
       .caption = "Show Front Screen",
       .help_context = 100,
       .help_page = "FrontScreen.htm",
       .window = "frmFront",
       .make = &MakeWindow<FrmFront>},
      {.name = "mnuWindows", .index = 5, .kind = kSeparator, .menu = "mnuWindowsTitle", .caption = "-"},

      // Without an item.
      {.name = "NextWindow", .shortcut = "Ctrl+F6", .act = &ShowNextWindow},
      {.name = "PreviousWindow", .shortcut = "Ctrl+Shift+F6", .act = &ShowPreviousWindow},
  };
  return rows;
}

}  // namespace zelmar
