#include "app/main_menu.h"

#include "app/mdi_parent.h"

namespace zelmar {

namespace {

using enum MenuRow::Kind;

constexpr MenuRow kMainMenu[] = {

    {kMenu, "mnuFile", "&File"},
    {kItem, "mnuFileNew", "New Tune", "Ctrl+N", 1800, "", &MDIParent::mnuFileNew_Click},
    {kItem, "mnuFileOpen", "Open Tune", "Ctrl+O", 3100, "", &MDIParent::mnuFileOpen_Click},
    {kItem, "mnuFileSave", "Save Tune", "Ctrl+S", 5400, "", &MDIParent::mnuFileSave_Click},
    {kItem, "mnuFileSaveAs", "Save Tune as...", "Ctrl+A", 5400, "", &MDIParent::mnuFileSaveAs_Click},
    {kItem, "mnuFilePrint", "Print Screen", "", 0, "", &MDIParent::mnuFilePrint_Click},
    {kItem, "mnuFileFind", "Find Tune from catalog", "Ctrl+F", 1500, "frmPlayJukeBox"},
    {kItem, "mnuFileIdentify", "Identify Tune on staff", "Ctrl+I", 1800, "",
     &MDIParent::mnuFileIdentify_Click},
    {kItem, "mnuFileReseach", "Pick tune on piano", "Ctrl+P", 3900, "frmEditKeyboardInput",
     &MDIParent::mnuEditKeyboardInput_Click},
    {kItem, "mnuFileImport", "MIDI file import", "Ctrl+M", 300, "frmFileImportMidi"},
    {kItem, "mnuFileExport", "Export MIDI file", "Ctrl+E", 1400, "frmFileExportMidi"},
    {kSeparator, "mnuBlank", "-"},
    {kSubmenu, "mnuFileReports", "Reports"},
    {kItem, "mnuFileReportsMusicList", "Music List by Composer", "", 0, "rptMusicList", nullptr, 0,
     "mnuFileReports"},
    {kItem, "mnuFileReportsMusicByCategory", "Music List by Category", "", 0, "rptMusicByCategory", nullptr,
     0, "mnuFileReports"},
    {kItem, "mnuFileReportsMusicByPeriod", "Music list by Period", "", 0, "rptMusicByPeriod", nullptr, 0,
     "mnuFileReports"},
    {kItem, "mnuFileReportsMusicByEnsemble", "Music List by Ensemble", "", 0, "rptMusicByEnsemble", nullptr,
     0, "mnuFileReports"},
    {kItem, "mnuFileReportsMusicByInstrument", "Music List by Instrument", "", 0, "rptMusicByInstrument",
     nullptr, 0, "mnuFileReports"},
    {kItem, "mnuFileDBMissingTunes", "Missing Tune Tables Report", "", 4100, "frmFileDBMissingTunes"},
    {kItem, "mnuFileDBOrphans", "Orphaned Tunes Report", "", 4200, "frmFileDBOrphans"},
    {kSeparator, "mnuRecentTunes", "-", "", 0, "", nullptr, 1},
    {kSeparator, "mnuBlankExit", "-"},
    {kItem, "mnuFileExit", "Exit", "Ctrl+X", 0, "", &MDIParent::mnuFileExit_Click},

    {kMenu, "mnuEdit", "&Edit/View"},
    {kItem, "mnuEditMelodyData", "Tune catalogue view", "", 1700, "frmEditMelody",
     &MDIParent::mnuEditMelodyData_Click},
    {kItem, "mnuEditTrackData", "Tracks view", "Ctrl+T", 2000, "frmEditTracks",
     &MDIParent::mnuEditTrackData_Click},
    {kItem, "mnuEditStaff", "Staff notation view", "Ctrl+V", 1800, "frmEditStaff"},
    {kItem, "mnuEditMixer", "Mixer and MIDI effects view", "Ctrl+Z", 4000, "frmEditMidiEffects"},
    {kItem, "mnuEditKeyboardInput", "Piano keyboard input", "Ctrl+K", 3900, "frmEditKeyboardInput",
     &MDIParent::mnuEditKeyboardInput_Click},
    {kItem, "mnuEditExpression", "Expression (Tempo and Dynamics)", "Ctrl+Y", 1600, "frmEditExpression"},
    {kItem, "mnuEditControllers", "Controllers View", "Ctrl+L", 200, "frmEditControllers"},
    {kItem, "mnuEditWords", "Words View", "Ctrl+W", 2100, "frmEditWords"},
    {kItem, "mnuEditTrackFilter", "Track Filter", "", 1900, "frmEditTrackFilter",
     &MDIParent::mnuEditTrackFilter_Click},

    {kMenu, "mnuPlay", "&Play"},
    {kItem, "mnuPlayPlayTune", "Play tune", "F2", 0, "", &MDIParent::mnuPlayPlayTune_Click},
    {kItem, "mnuPlayStop", "Stop tune", "F3", 0, "", &MDIParent::mnuPlayStop_Click},
    {kItem, "mnuPlayPause", "Pause playing", "F4", 0, "", &MDIParent::mnuPlayPause_Click},
    {kItem, "mnuPlayGoTo", "Go to bar number", "F5", 0, "", &MDIParent::mnuPlayGoTo_Click},
    {kItem, "mnuPlayRewind", "Rewind tune", "F6", 0, "", &MDIParent::mnuPlayRewind_Click},
    {kItem, "mnuPlayMetronome", "Metronome", "", 0, "frmPlayMetronome"},
    {kItem, "mnuPlayMIDIReset", "Emergency MIDI reset", "F12", 0, "", &MDIParent::ResetMidi},
    {kSeparator, "mnuBlanl3", "-"},
    {kItem, "mnuPlayJukeBox", "Themes Juke Box", "Ctrl+J", 5100, "frmPlayJukeBox",
     &MDIParent::mnuPlayJukeBox_Click},
    {kItem, "mnuPlayHits", "Classical Hit Parade", "Ctrl+H", 4900, "frmPlayHits",
     &MDIParent::mnuPlayHits_Click},
    {kItem, "mnuPlayDictionary", "Dictionary of Themes", "Ctrl+D", 4800, "frmPlayDictionary",
     &MDIParent::mnuPlayDictionary_Click},
    {kItem, "mnuPlayTuneQuiz", "Tune Quiz", "Ctrl+Q", 3300, "frmPlayTuneQuiz",
     &MDIParent::mnuPlayTuneQuiz_Click},
    {kItem, "mnuPlayInstrumentQuiz", "Instrument Quiz", "", 5000, "frmPlayInstrumentQuiz"},

    {kMenu, "mnuMidi", "&Options"},
    {kItem, "mnuOptionsMidiSetup", "Setup Midi Devices", "F7", 2800, "",
     &MDIParent::mnuOptionsMidiSetup_Click},
    {kItem, "mnuOptionsGSReset", "GS Reset", "F8", 0, "", &MDIParent::mnuOptionsGSReset_Click},
    {kItem, "mnuOptionsXGReset", "XG Reset", "F9", 0, "", &MDIParent::mnuOptionsXGReset_Click},
    {kItem, "mnuOptionsMidiControllersReset", "Controllers Reset", "F11", 0, "",
     &MDIParent::mnuOptionsMidiControllersReset_Click},
    {kItem, "mnuOptionsMidiReset", "Reset Midi (all notes off)                  F12", "", 0, "",
     &MDIParent::ResetMidi},
    {kItem, "mnuOptionsGMReset", "Turn on GM/GM2", "Ctrl+G", 0, "", &MDIParent::mnuOptionsGMReset_Click},
    {kItem, "mnuOptionsMidiTests", "Test Midi Setup", "", 2900, "frmOptionsMidiTests"},
    {kItem, "mnuOptionsConnectDB", "Connect database", "", 4500, "", &MDIParent::mnuOptionsConnectDB_Click},
    {kItem, "mnuOptionsCreateNewDB", "Create new database", "", 4600, "",
     &MDIParent::mnuOptionsCreateNewDB_Click},
    {kItem, "mnuOptionsMediaPlayer", "Media Player Support", "", 4700, "",
     &MDIParent::mnuOptionsMediaPlayer_Click},

    {kMenu, "mnuBiblio", "&Musicology"},
    {kItem, "mnuComposers", "Composers and their works", "", 1200, "frmComposers"},
    {kItem, "mnuStyles", "Periods/styles of music", "", 3600, "frmStyles"},
    {kItem, "mnuCategories", "Categories of music", "", 1100, "frmCategory"},
    {kItem, "mnuEnsembles", "Ensembles", "", 1300, "frmEnsembles"},
    {kItem, "mnuInstruments", "Instruments", "", 2400, "frmInstruments", &MDIParent::mnuInstruments_Click},
    {kItem, "mnuMusicologyEuropeMap", "Musical Map of Europe", "", 4300, "frmMusicologyEuropeMap"},
    {kItem, "mnuMusicologyCountries", "Countries - Musical Geography", "", 800, "frmMusicologyCountries"},
    {kItem, "mnuMusicologyHistory", "Musical history time-line", "", 3000, "frmMusicologyHistory",
     &MDIParent::mnuMusicologyHistory_Click},
    {kItem, "mnuInstrumentsOrchestra", "Layout of the Orchestra", "", 2600, "frmInstrumentsOrchestra"},
    {kItem, "mnuInstrumentsDemonstration", "Popular Instruments and their sounds", "", 2500,
     "frmInstrumentsDemonstration"},
    {kTopLevelItem, "mnuEmergency", "Emergency(F12)", "", 0, "", &MDIParent::ResetMidi},

    {kMenu, "mnuWindowsTitle", "&Windows"},
    {kItem, "mnuWindows", "Cascade", "", 0, "", nullptr, 1},
    {kItem, "mnuWindows", "Vertical Tile", "", 0, "", nullptr, 2},
    {kItem, "mnuWindows", "Horizontal Tile", "", 0, "", nullptr, 3},
    {kItem, "mnuWindows", "Show Front Screen", "", 100, "", nullptr, 4},
    {kSeparator, "mnuWindows", "-", "", 0, "", nullptr, 5},

    {kMenu, "mnuHelp", "&Help"},
    {kItem, "mnuHelpContents", "Help Topics", "F1", 0, "", &MDIParent::mnuHelpContents_Click},
    {kItem, "mnuHelpShortcuts", "Keyboard shortcuts", "", 0, "", &MDIParent::mnuHelpShortcuts_Click},
    {kItem, "mnuHelpWebSite", "Themes Web Site", "", 0, "", &MDIParent::mnuHelpWebSite_Click},
    {kItem, "mnuHelpAbout", "About Zelmar", "", 3700, "frmAbout"},
};

}  // namespace

std::span<const MenuRow> MainMenu() {
  return kMainMenu;
}

}  // namespace zelmar
