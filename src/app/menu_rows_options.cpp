// The Options menu.

#include "app/menu_commands.h"
#include "app/menu_rows.h"
#include "app/options/frm_options_connect_db.h"
#include "app/options/frm_options_create_new_db.h"
#include "app/options/frm_options_media_player.h"
#include "app/options/frm_options_midi_setup.h"
#include "app/options/frm_options_midi_tests.h"
#include "midi/mode_commands.h"

namespace zelmar {

std::span<const CommandRow> OptionRows() {
  using enum CommandRow::Kind;
  static const CommandRow rows[] = {
      {.name = "mnuMidi", .kind = kMenu, .caption = "&Options"},
      {.name = "mnuOptionsMidiSetup",
       .menu = "mnuMidi",
       .caption = "Setup Midi Devices",
       .shortcut = "F7",
       .help_context = 2800,
       .help_page = "OptionsMidiSetup.htm",
       .window = "frmOptionsMidiSetup",
       .show = &ShowOneDialog<FrmOptionsMidiSetup>,
       .act = &SetUpMidi},
      {.name = "mnuOptionsGSReset",
       .menu = "mnuMidi",
       .caption = "GS Reset",
       .shortcut = "F8",
       .act = &GSModeCommand},
      {.name = "mnuOptionsXGReset",
       .menu = "mnuMidi",
       .caption = "XG Reset",
       .shortcut = "F9",
       .act = &XGModeCommand},
      {.name = "mnuOptionsMidiControllersReset",
       .menu = "mnuMidi",
       .caption = "Controllers Reset",
       .shortcut = "F11",
       .act = &ResetControllers},
      {.name = "mnuOptionsMidiReset",
       .menu = "mnuMidi",
       .caption = "Reset Midi (all notes off)                  F12",
       .act = &ResetMidi},
      {.name = "mnuOptionsGMReset",
       .menu = "mnuMidi",
       .caption = "Turn on GM/GM2",
       .shortcut = "Ctrl+G",
       .act = &GMModeCommand},
      {.name = "mnuOptionsMidiTests",
       .menu = "mnuMidi",
       .caption = "Test Midi Setup",
       .help_context = 2900,
       .help_page = "OptionsMidiTests.htm",
       .window = "frmOptionsMidiTests",
       .make = &MakeWindow<FrmOptionsMidiTests>},
      {.name = "mnuOptionsConnectDB",
       .menu = "mnuMidi",
       .caption = "Connect database",
       .help_context = 4500,
       .help_page = "OptionsConnectDB.htm",
       .window = "frmOptionsConnectDB",
       .show = &ShowOneDialog<FrmOptionsConnectDB>},
      {.name = "mnuOptionsCreateNewDB",
       .menu = "mnuMidi",
       .caption = "Create new database",
       .help_context = 4600,
       .help_page = "OptionsCreateNewDB.htm",
       .window = "frmOptionsCreateNewDB",
       .show = &ShowOneDialog<FrmOptionsCreateNewDB>},
      {.name = "mnuOptionsMediaPlayer",
       .menu = "mnuMidi",
       .caption = "Media Player Support",
       .help_context = 4700,
       .help_page = "OptionsMediaPlayer.htm",
       .window = "frmOptionsMediaPlayer",
       .show = &ShowOneDialog<FrmOptionsMediaPlayer>},
  };
  return rows;
}

}  // namespace zelmar
