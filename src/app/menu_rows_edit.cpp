// The Edit/View menu.

#include "app/menu_rows.h"
#include "editors/frm_edit_staff.h"

namespace zelmar {

namespace {

constexpr char kNoMelodyToEdit[] =
    "No melody loaded yet into memory, so use File Load melody, then try again.";
constexpr char kNoMelodyToFilter[] =
    "Unable to apply any track filter because no melody has been loaded into memory. Use File Load Melody to "
    "load a melody, then try again.";

}  // namespace

std::span<const CommandRow> EditRows() {
  using enum CommandRow::Kind;
  static const CommandRow rows[] = {
      {.name = "mnuEdit", .kind = kMenu, .caption = "&Edit/View"},
      {.name = "mnuEditMelodyData",
       .menu = "mnuEdit",
       .caption = "Tune catalogue view",
       .help_context = 1700,
       .without_tune = kNoMelodyToEdit,
       .window = "frmEditMelody"},
      {.name = "mnuEditTrackData",
       .menu = "mnuEdit",
       .caption = "Tracks view",
       .shortcut = "Ctrl+T",
       .help_context = 2000,
       .without_tune = kNoMelodyToEdit,
       .window = "frmEditTracks"},
      {.name = "mnuEditStaff",
       .menu = "mnuEdit",
       .caption = "Staff notation view",
       .shortcut = "Ctrl+V",
       .help_context = 1800,
       .help_page = "StaffView.htm",
       .window = "frmEditStaff",
       .make = &MakeWindow<FrmEditStaff>},
      {.name = "mnuEditMixer",
       .menu = "mnuEdit",
       .caption = "Mixer and MIDI effects view",
       .shortcut = "Ctrl+Z",
       .help_context = 4000,
       .window = "frmEditMidiEffects"},
      {.name = "mnuEditKeyboardInput",
       .menu = "mnuEdit",
       .caption = "Piano keyboard input",
       .shortcut = "Ctrl+K",
       .card = {6, "CmdPiano", "piano", "P&iano", "Pick a tune out on the keys",
                "Identify tunes by picking them out on the piano with your mouse"},
       .help_context = 3900,
       .window = "frmEditKeyboardInput"},
      {.name = "mnuEditExpression",
       .menu = "mnuEdit",
       .caption = "Expression (Tempo and Dynamics)",
       .shortcut = "Ctrl+Y",
       .help_context = 1600,
       .window = "frmEditExpression"},
      {.name = "mnuEditControllers",
       .menu = "mnuEdit",
       .caption = "Controllers View",
       .shortcut = "Ctrl+L",
       .help_context = 200,
       .window = "frmEditControllers"},
      {.name = "mnuEditWords",
       .menu = "mnuEdit",
       .caption = "Words View",
       .shortcut = "Ctrl+W",
       .help_context = 2100,
       .window = "frmEditWords"},
      {.name = "mnuEditTrackFilter",
       .menu = "mnuEdit",
       .caption = "Track Filter",
       .help_context = 1900,
       .without_tune = kNoMelodyToFilter,
       .window = "frmEditTrackFilter"},

      // Without an item.
      {.window = "dialogEditNote"},
  };
  return rows;
}

}  // namespace zelmar
