// The Musicology menu, and the emergency item behind it.

#include "app/menu_commands.h"
#include "app/menu_rows.h"

namespace zelmar {

std::span<const CommandRow> MusicologyRows() {
  using enum CommandRow::Kind;
  static const CommandRow rows[] = {
      {.name = "mnuBiblio", .kind = kMenu, .caption = "&Musicology"},
      {.name = "mnuComposers",
       .menu = "mnuBiblio",
       .caption = "Composers and their works",
       .help_context = 1200,
       .window = "frmComposers"},
      {.name = "mnuStyles",
       .menu = "mnuBiblio",
       .caption = "Periods/styles of music",
       .help_context = 3600,
       .window = "frmStyles"},
      {.name = "mnuCategories",
       .menu = "mnuBiblio",
       .caption = "Categories of music",
       .help_context = 1100,
       .window = "frmCategory"},
      {.name = "mnuEnsembles",
       .menu = "mnuBiblio",
       .caption = "Ensembles",
       .help_context = 1300,
       .window = "frmEnsembles"},
      {.name = "mnuInstruments",
       .menu = "mnuBiblio",
       .caption = "Instruments",
       .help_context = 2400,
       .window = "frmInstruments",
       .act = &ShowInstruments},
      {.name = "mnuMusicologyEuropeMap",
       .menu = "mnuBiblio",
       .caption = "Musical Map of Europe",
       .help_context = 4300,
       .window = "frmMusicologyEuropeMap"},
      {.name = "mnuMusicologyCountries",
       .menu = "mnuBiblio",
       .caption = "Countries - Musical Geography",
       .help_context = 800,
       .window = "frmMusicologyCountries"},
      {.name = "mnuMusicologyHistory",
       .menu = "mnuBiblio",
       .caption = "Musical history time-line",
       .card = {7, "cmdTimeLine", "time_line", "&Time-Line", "Composers beside the events of their days",
                "Click here for a history time-line, comparing composers' life-spans against various "
                "historical events."},
       .help_context = 3000,
       .window = "frmMusicologyHistory"},
      {.name = "mnuInstrumentsOrchestra",
       .menu = "mnuBiblio",
       .caption = "Layout of the Orchestra",
       .help_context = 2600,
       .window = "frmInstrumentsOrchestra"},
      {.name = "mnuInstrumentsDemonstration",
       .menu = "mnuBiblio",
       .caption = "Popular Instruments and their sounds",
       .help_context = 2500,
       .window = "frmInstrumentsDemonstration"},

      {.name = "mnuEmergency", .kind = kTopLevelItem, .caption = "Emergency(F12)", .act = &ResetMidi},

      // Without an item.
      {.window = "frmInstrumentsNoVideo"},
      {.card = {8, "cmdMusicology", "musicology", "M&usicology", "Composers, instruments, countries, styles",
                "Click here to browse composers, instruments, ensembles, music categories, geography of "
                "music, and musical periods or styles."},
       .window = "frmMusicology"},
  };
  return rows;
}

}  // namespace zelmar
