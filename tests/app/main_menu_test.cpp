// The main menu: every item in its order, with its words, its key and its topic, and where it leads.
#include <QMdiArea>
#include <QMdiSubWindow>

#include "app/main_window_fixture.h"
#include "shell/window_menu.h"

namespace zelmar {
namespace {

using namespace testing_support;

struct ExpectedItem {
  const char* name;
  const char* caption;
  const char* shortcut;
  int help_context;
  int index;
};

constexpr ExpectedItem kExpected[] = {
    {"mnuFile", "&File", "", 0, 0},
    {"mnuFileNew", "New Tune", "Ctrl+N", 1800, 0},
    {"mnuFileOpen", "Open Tune", "Ctrl+O", 3100, 0},
    {"mnuFileSave", "Save Tune", "Ctrl+S", 5400, 0},
    {"mnuFileSaveAs", "Save Tune as...", "Ctrl+A", 5400, 0},
    {"mnuFilePrint", "Print Screen", "", 0, 0},
    {"mnuFileFind", "Find Tune from catalog", "Ctrl+F", 1500, 0},
    {"mnuFileIdentify", "Identify Tune on staff", "Ctrl+I", 1800, 0},
    {"mnuFileReseach", "Pick tune on piano", "Ctrl+P", 3900, 0},
    {"mnuFileImport", "MIDI file import", "Ctrl+M", 300, 0},
    {"mnuFileExport", "Export MIDI file", "Ctrl+E", 1400, 0},
    {"mnuBlank", "-", "", 0, 0},
    {"mnuFileReports", "Reports", "", 0, 0},
    {"mnuFileReportsMusicList", "Music List by Composer", "", 0, 0},
    {"mnuFileReportsMusicByCategory", "Music List by Category", "", 0, 0},
    {"mnuFileReportsMusicByPeriod", "Music list by Period", "", 0, 0},
    {"mnuFileReportsMusicByEnsemble", "Music List by Ensemble", "", 0, 0},
    {"mnuFileReportsMusicByInstrument", "Music List by Instrument", "", 0, 0},
    {"mnuFileDBMissingTunes", "Missing Tune Tables Report", "", 4100, 0},
    {"mnuFileDBOrphans", "Orphaned Tunes Report", "", 4200, 0},
    {"mnuRecentTunes", "-", "", 0, 1},
    {"mnuBlankExit", "-", "", 0, 0},
    {"mnuFileExit", "Exit", "Ctrl+X", 0, 0},
    {"mnuEdit", "&Edit/View", "", 0, 0},
    {"mnuEditMelodyData", "Tune catalogue view", "", 1700, 0},
    {"mnuEditTrackData", "Tracks view", "Ctrl+T", 2000, 0},
    {"mnuEditStaff", "Staff notation view", "Ctrl+V", 1800, 0},
    {"mnuEditMixer", "Mixer and MIDI effects view", "Ctrl+Z", 4000, 0},
    {"mnuEditKeyboardInput", "Piano keyboard input", "Ctrl+K", 3900, 0},
    {"mnuEditExpression", "Expression (Tempo and Dynamics)", "Ctrl+Y", 1600, 0},
    {"mnuEditControllers", "Controllers View", "Ctrl+L", 200, 0},
    {"mnuEditWords", "Words View", "Ctrl+W", 2100, 0},
    {"mnuEditTrackFilter", "Track Filter", "", 1900, 0},
    {"mnuPlay", "&Play", "", 0, 0},
    {"mnuPlayPlayTune", "Play tune", "F2", 0, 0},
    {"mnuPlayStop", "Stop tune", "F3", 0, 0},
    {"mnuPlayPause", "Pause playing", "F4", 0, 0},
    {"mnuPlayGoTo", "Go to bar number", "F5", 0, 0},
    {"mnuPlayRewind", "Rewind tune", "F6", 0, 0},
    {"mnuPlayMetronome", "Metronome", "", 0, 0},
    {"mnuPlayMIDIReset", "Emergency MIDI reset", "F12", 0, 0},
    {"mnuBlanl3", "-", "", 0, 0},
    {"mnuPlayJukeBox", "Themes Juke Box", "Ctrl+J", 5100, 0},
    {"mnuPlayHits", "Classical Hit Parade", "Ctrl+H", 4900, 0},
    {"mnuPlayDictionary", "Dictionary of Themes", "Ctrl+D", 4800, 0},
    {"mnuPlayTuneQuiz", "Tune Quiz", "Ctrl+Q", 3300, 0},
    {"mnuPlayInstrumentQuiz", "Instrument Quiz", "", 5000, 0},
    {"mnuMidi", "&Options", "", 0, 0},
    {"mnuOptionsMidiSetup", "Setup Midi Devices", "F7", 2800, 0},
    {"mnuOptionsGSReset", "GS Reset", "F8", 0, 0},
    {"mnuOptionsXGReset", "XG Reset", "F9", 0, 0},
    {"mnuOptionsMidiControllersReset", "Controllers Reset", "F11", 0, 0},
    {"mnuOptionsMidiReset", "Reset Midi (all notes off)                  F12", "", 0, 0},
    {"mnuOptionsGMReset", "Turn on GM/GM2", "Ctrl+G", 0, 0},
    {"mnuOptionsMidiTests", "Test Midi Setup", "", 2900, 0},
    {"mnuOptionsConnectDB", "Connect database", "", 4500, 0},
    {"mnuOptionsCreateNewDB", "Create new database", "", 4600, 0},
    {"mnuOptionsMediaPlayer", "Media Player Support", "", 4700, 0},
    {"mnuBiblio", "&Musicology", "", 0, 0},
    {"mnuComposers", "Composers and their works", "", 1200, 0},
    {"mnuStyles", "Periods/styles of music", "", 3600, 0},
    {"mnuCategories", "Categories of music", "", 1100, 0},
    {"mnuEnsembles", "Ensembles", "", 1300, 0},
    {"mnuInstruments", "Instruments", "", 2400, 0},
    {"mnuMusicologyEuropeMap", "Musical Map of Europe", "", 4300, 0},
    {"mnuMusicologyCountries", "Countries - Musical Geography", "", 800, 0},
    {"mnuMusicologyHistory", "Musical history time-line", "", 3000, 0},
    {"mnuInstrumentsOrchestra", "Layout of the Orchestra", "", 2600, 0},
    {"mnuInstrumentsDemonstration", "Popular Instruments and their sounds", "", 2500, 0},
    {"mnuEmergency", "Emergency(F12)", "", 0, 0},
    {"mnuWindowsTitle", "&Windows", "", 0, 0},
    {"mnuWindows", "Cascade", "", 0, 1},
    {"mnuWindows", "Vertical Tile", "", 0, 2},
    {"mnuWindows", "Horizontal Tile", "", 0, 3},
    {"mnuWindows", "Show Front Screen", "", 100, 4},
    {"mnuWindows", "-", "", 0, 5},
    {"mnuHelp", "&Help", "", 0, 0},
    {"mnuHelpContents", "Help Topics", "F1", 0, 0},
    {"mnuHelpShortcuts", "Keyboard shortcuts", "", 0, 0},
    {"mnuHelpWebSite", "Themes Web Site", "", 0, 0},
    {"mnuHelpAbout", "About Zelmar", "", 3700, 0},
};

// Menus and items as a reader meets them, submenus where they stand.
void Collect(const QList<QAction*>& actions, QList<const QObject*>* found) {
  for (const QAction* action : actions) {
    if (action->menu() == nullptr) {
      found->append(action);
      continue;
    }
    found->append(action->menu());
    Collect(action->menu()->actions(), found);
  }
}

TEST_F(MainWindowTest, TheMenuHasItsItemsInOrder) {
  main_ = std::make_unique<MDIParent>();
  QList<const QObject*> found;
  Collect(main_->menuBar()->actions(), &found);
  ASSERT_EQ(found.size(), static_cast<qsizetype>(std::size(kExpected)));
  for (qsizetype i = 0; i < found.size(); ++i) {
    const ExpectedItem& expected = kExpected[i];
    const QString name = expected.index == 0
                             ? QString(QLatin1String(expected.name))
                             : QStringLiteral("%1(%2)").arg(QLatin1String(expected.name)).arg(expected.index);
    EXPECT_EQ(found[i]->objectName(), name);
    if (const auto* menu = qobject_cast<const QMenu*>(found[i])) {
      EXPECT_EQ(menu->title(), QLatin1String(expected.caption));
      continue;
    }
    const auto* action = qobject_cast<const QAction*>(found[i]);
    EXPECT_EQ(action->text(), QLatin1String(expected.caption));
    EXPECT_EQ(action->shortcut().toString(), QLatin1String(expected.shortcut)) << qPrintable(name);
    EXPECT_EQ(action->property("helpContext").toInt(), expected.help_context) << qPrintable(name);
    EXPECT_EQ(action->isSeparator(), QLatin1String(expected.caption) == QLatin1String("-"));
  }
}

TEST_F(MainWindowTest, EveryWindowThatIsNotThereYetSaysSo) {
  Start();
  Global().TuneLoadedFlag = true;
  const QStringList working = {
      QStringLiteral("mnuFileSave"),           QStringLiteral("mnuFileSaveAs"),
      QStringLiteral("mnuFileOpen"),           QStringLiteral("mnuFilePrint"),
      QStringLiteral("mnuFileExit"),           QStringLiteral("mnuPlayPlayTune"),
      QStringLiteral("mnuPlayStop"),           QStringLiteral("mnuPlayPause"),
      QStringLiteral("mnuPlayGoTo"),           QStringLiteral("mnuPlayRewind"),
      QStringLiteral("mnuPlayMIDIReset"),      QStringLiteral("mnuOptionsGSReset"),
      QStringLiteral("mnuOptionsXGReset"),     QStringLiteral("mnuOptionsMidiControllersReset"),
      QStringLiteral("mnuOptionsMidiReset"),   QStringLiteral("mnuOptionsGMReset"),
      QStringLiteral("mnuOptionsMidiSetup"),   QStringLiteral("mnuOptionsMidiTests"),
      QStringLiteral("mnuOptionsConnectDB"),   QStringLiteral("mnuOptionsCreateNewDB"),
      QStringLiteral("mnuOptionsMediaPlayer"), QStringLiteral("mnuEmergency"),
      QStringLiteral("mnuWindows(1)"),         QStringLiteral("mnuWindows(2)"),
      QStringLiteral("mnuWindows(3)"),         QStringLiteral("mnuWindows(4)"),
      QStringLiteral("mnuHelpContents"),       QStringLiteral("mnuHelpShortcuts"),
      QStringLiteral("mnuHelpWebSite"),        QStringLiteral("mnuHelpAbout"),
      QStringLiteral("mnuEditStaff")};
  int tried = 0;
  for (QAction* action : main_->menuBar()->findChildren<QAction*>()) {
    const QString name = action->objectName();
    if (!name.startsWith(QLatin1String("mnu")) || action->isSeparator() || working.contains(name) ||
        action->property("index").toInt() >= 6)
      continue;
    platform_.messages->shown.clear();
    action->trigger();
    ASSERT_EQ(Boxes().size(), 1) << qPrintable(name);
    EXPECT_EQ(Boxes()[0].text, QStringLiteral("This window is not part of this version yet."));
    ++tried;
  }
  EXPECT_EQ(tried, 37);
}

TEST_F(MainWindowTest, ItemsThatNeedATuneSaySoWithoutOne) {
  Start();
  for (const char* name : {"mnuEditMelodyData", "mnuEditTrackData"}) {
    platform_.messages->shown.clear();
    Item(name).trigger();
    ASSERT_EQ(Boxes().size(), 1);
    EXPECT_EQ(Boxes()[0].icon, MessageIcon::kInformation);
    EXPECT_EQ(Boxes()[0].text,
              QStringLiteral("No melody loaded yet into memory, so use File Load melody, then try again."));
  }
  platform_.messages->shown.clear();
  Item("mnuEditTrackFilter").trigger();
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].text,
            QStringLiteral("Unable to apply any track filter because no melody has been loaded into memory. "
                           "Use File Load Melody to load a melody, then try again."));
}

TEST_F(MainWindowTest, PrintScreenPrintsTheWindowInFront) {
  Start();
  Item("mnuFilePrint").trigger();
  EXPECT_EQ(platform_.printer->printed, QList<QWidget*>{&Front()});
}

TEST_F(MainWindowTest, TheWindowMenuListsTheOpenWindowsAndChecksTheOneInFront) {
  Start();
  ChildWindow* const bare = OpenBareWindow();
  auto items = Listed("mnuWindowsTitle", "mnuWindows", 6);
  ASSERT_EQ(items.size(), 2);
  EXPECT_EQ(items[0]->text(), Front().windowTitle());
  EXPECT_EQ(items[0]->objectName(), QStringLiteral("mnuWindows(6)"));
  EXPECT_FALSE(items[0]->isChecked());
  EXPECT_EQ(items[1]->text(), QStringLiteral("Bare && simple"));
  EXPECT_TRUE(items[1]->isChecked());
  EXPECT_EQ(LoadedForms().value(items[1]->data().toInt()), bare);

  items[0]->trigger();
  QCoreApplication::processEvents();
  EXPECT_EQ(main_->ActiveChild(), &Front());
  EXPECT_TRUE(main_->Area()->activeSubWindow()->isMaximized());
  items = Listed("mnuWindowsTitle", "mnuWindows", 6);
  EXPECT_TRUE(items[0]->isChecked());

  bare->Unload();
  LetClosedWindowsGo();
  EXPECT_EQ(Listed("mnuWindowsTitle", "mnuWindows", 6).size(), 1);
}

TEST_F(MainWindowTest, AWindowThatGoesTakesItsEntryAndMovesTheOthers) {
  Start();
  auto passing = std::make_unique<QWidget>();
  passing->setWindowTitle(QStringLiteral("Passing"));
  AddLoadedForm(passing.get());
  passing->show();
  ChildWindow* const bare = OpenBareWindow();
  ASSERT_EQ(Listed("mnuWindowsTitle", "mnuWindows", 6).size(), 3);
  passing.reset();
  const auto items = Listed("mnuWindowsTitle", "mnuWindows", 6);
  ASSERT_EQ(items.size(), 2);
  EXPECT_EQ(LoadedForms().value(items[0]->data().toInt()), &Front());
  EXPECT_EQ(LoadedForms().value(items[1]->data().toInt()), bare);
}

TEST_F(MainWindowTest, AnEntryLeadsToItsWindowWhileATunePlays) {
  Start();
  LoadTune();
  QWidget passing;
  AddLoadedForm(&passing);
  bool chosen = false;
  QObject::connect(main_->MyTune().get(), &Tune::Ticked, main_.get(), [&] {
    if (main_->MyTune()->BarNumber() != 2 || chosen) return;
    chosen = true;
    // Listed at first and then out of sight: the number of its entry goes to another window.
    passing.show();
    RebuildWindowMenu();
    passing.hide();
    ChildWindow* const bare = OpenBareWindow();
    Front().ShowOnTop();
    const auto items = Listed("mnuWindowsTitle", "mnuWindows", 6);
    ASSERT_EQ(items.size(), 2);
    items[1]->trigger();
    EXPECT_EQ(main_->ActiveChild(), bare);
    EXPECT_TRUE(main_->Area()->activeSubWindow()->isMaximized());
  });
  Bar().Play();
  EXPECT_TRUE(chosen);
}

TEST_F(MainWindowTest, TheKeyboardShortcutsAreShownModally) {
  Start();
  int modal = 0;
  QTimer closer;
  closer.callOnTimeout([&modal] {
    QWidget* const page = FindLoadedForm(QStringLiteral("frmHelpModal"));
    if (page == nullptr || !page->isVisible()) return;
    modal += page->isModal() ? 1 : 0;
    page->close();
  });
  closer.start(1);
  Item("mnuHelpShortcuts").trigger();
  EXPECT_EQ(modal, 1);
  Click(Front(), "cmdKeyboardShortcuts");
  EXPECT_EQ(modal, 2);
}

TEST_F(MainWindowTest, WindowsTileSideBySideOrAboveEachOther) {
  Start();
  OpenBareWindow();
  Item("mnuWindows(2)").trigger();
  auto windows = main_->Area()->subWindowList();
  ASSERT_EQ(windows.size(), 2);
  EXPECT_EQ(windows[0]->y(), windows[1]->y());
  EXPECT_NE(windows[0]->x(), windows[1]->x());
  Item("mnuWindows(3)").trigger();
  EXPECT_EQ(windows[0]->x(), windows[1]->x());
  EXPECT_NE(windows[0]->y(), windows[1]->y());
  Item("mnuWindows(1)").trigger();
  EXPECT_NE(windows[0]->pos(), windows[1]->pos());
  EXPECT_FALSE(windows[0]->isMaximized());
}

TEST_F(MainWindowTest, TheFrontScreenComesBackAfterItWasClosed) {
  Start();
  Front().Unload();
  LetClosedWindowsGo();
  EXPECT_EQ(FindLoadedForm(QStringLiteral("frmFront")), nullptr);
  EXPECT_EQ(main_->ActiveChild(), nullptr);
  Item("mnuWindows(4)").trigger();
  QCoreApplication::processEvents();
  EXPECT_EQ(main_->ActiveChild(), &Front());
}

TEST_F(MainWindowTest, TheWebSiteOpensOutside) {
  Start();
  Item("mnuHelpWebSite").trigger();
  EXPECT_EQ(platform_.pages->opened.size(), 1);
}

}  // namespace
}  // namespace zelmar
