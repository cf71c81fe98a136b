// The Help menu.

#include "app/frm_about.h"
#include "app/menu_commands.h"
#include "app/menu_rows.h"
#include "shell/frm_help.h"

namespace zelmar {

std::span<const CommandRow> HelpRows() {
  using enum CommandRow::Kind;
  static const CommandRow rows[] = {
      {.name = "mnuHelp", .kind = kMenu, .caption = "&Help"},
      {.name = "mnuHelpContents",
       .menu = "mnuHelp",
       .caption = "Help Topics",
       .shortcut = "F1",
       .act = &ShowHelpContents},
      {.name = "mnuHelpShortcuts",
       .menu = "mnuHelp",
       .caption = "Keyboard shortcuts",
       .act = &ShowKeyboardShortcuts},
      {.name = "mnuHelpWebSite", .menu = "mnuHelp", .caption = "Themes Web Site", .act = &ShowWebSite},
      {.name = "mnuHelpAbout",
       .menu = "mnuHelp",
       .caption = "About Zelmar",
       .help_context = 3700,
       .help_page = "About.htm",
       .window = "frmAbout",
       .make = &MakeWindow<FrmAbout>},

      // Without an item.
      {.window = "frmHelp", .make = [] { return FrmHelp::Instance(); }},
  };
  return rows;
}

}  // namespace zelmar
