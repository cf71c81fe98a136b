#include "app/cold_start.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include "app/failing_output.h"
#include "app/mdi_parent.h"
#include "midi/sound_card.h"
#include "model/globals.h"
#include "model/path_file.h"
#include "platform/paths.h"
#include "shell/child_window.h"
#include "shell/loaded_forms.h"
#include "support/sample_database.h"
#include "support/scripted_services.h"

namespace zelmar {
namespace {

using testing_support::FailingOutput;
using testing_support::SampleDatabase;
using testing_support::ScriptedPlatform;
using testing_support::SentMessage;

class ColdStartTest : public ::testing::Test {
 protected:
  ColdStartTest() {
    platform_.events->step_microseconds = 0;
    WriteSettings([](Globals&) {});
  }
  ~ColdStartTest() override {
    TheSoundCard().reset();
    QDir::setCurrent(QDir::rootPath());
  }

  // A path file that leads to the sample database, with what `change` makes of the settings.
  template <typename Change>
  void WriteSettings(Change change) {
    const Globals before = Global();
    Global().DatabasePath = database_.Path();
    Global().DatabaseChangeDate = QDate(2026, 1, 2);
    Global().DatabaseChangeTime = QTime(3, 4, 5);
    Global().MidiDeviceName = QStringLiteral("Recorder");
    change(Global());
    WritePathFile(PathFile(), PathFileWriter::kMidiSetup);
    Global() = before;
  }

  QString PathFile() const { return database_.Directory() + QStringLiteral("/frmPath.txt"); }

  // What went out from message `first` on, as hexadecimal texts; open, close and reset by their names.
  QStringList Sent(std::size_t first, std::size_t count) const {
    QStringList list;
    const auto& sent = platform_.midi->sent;
    for (std::size_t i = first; i < sent.size() && i < first + count; ++i) {
      switch (sent[i].kind) {
        case SentMessage::Kind::kOpen:
          list.append(QStringLiteral("open"));
          break;
        case SentMessage::Kind::kClose:
          list.append(QStringLiteral("close"));
          break;
        case SentMessage::Kind::kReset:
          list.append(QStringLiteral("reset"));
          break;
        default:
          list.append(QString::fromLatin1(sent[i].bytes.toHex()));
      }
    }
    return list;
  }

  ScriptedPlatform platform_;
  SampleDatabase database_;
};

TEST_F(ColdStartTest, OpensResetsAndPlaysInOrder) {
  const StartResult start = ColdStart();
  EXPECT_EQ(Sent(0, 2), (QStringList{QStringLiteral("open"), QStringLiteral("f07e7f0901f7")}));
  std::size_t place = 2;
  const int reset[][2] = {{121, 0}, {93, 0}, {91, 0}, {7, 127}, {10, 64}, {1, 0}};
  for (int channel = 0; channel < 16; ++channel)
    for (const auto& [controller, value] : reset) {
      const auto word = static_cast<std::uint32_t>(0xB0 + channel + controller * 256 + value * 65536);
      ASSERT_EQ(platform_.midi->sent[place++].packed, word)
          << "channel " << channel + 1 << " controller " << controller;
    }
  for (int channel = 0; channel < 16; ++channel) {
    ASSERT_EQ(platform_.midi->sent[place++].packed,
              static_cast<std::uint32_t>(0xB0 + channel + 7 * 256 + 127 * 65536));
    ASSERT_EQ(platform_.midi->sent[place++].packed,
              static_cast<std::uint32_t>(0xB0 + channel + 11 * 256 + 127 * 65536));
  }
  // Two tracks numbered 1, the default one and that of the melody.
  EXPECT_EQ(Sent(place, 4), (QStringList{QStringLiteral("b00000"), QStringLiteral("b02000"),
                                         QStringLiteral("b00000"), QStringLiteral("b02000")}));
  place += 4;
  QList<int> notes;
  for (; place < platform_.midi->sent.size(); ++place) {
    const auto packed = platform_.midi->sent[place].packed;
    if ((packed & 0xFFU) == 0x90U && packed >> 16U != 0) {
      notes.append(static_cast<int>((packed >> 8U) & 0x7FU));
      EXPECT_EQ(packed >> 16U, 127U);
      EXPECT_EQ(platform_.midi->sent[place - 1].packed, 0xC0U + 40 * 256);
    }
  }
  EXPECT_EQ(notes, (QList<int>{76, 74, 72, 76, 79, 81, 79}));
  // Seven beats at 450 a minute.
  EXPECT_NEAR(start.tune_seconds, 7 * 0.133, 0.01);
}

TEST_F(ColdStartTest, EndsWithTheMainWindowAndItsFrontPage) {
  const StartResult start = ColdStart();
  ASSERT_NE(start.main_window, nullptr);
  EXPECT_TRUE(start.main_window->isVisible());
  EXPECT_NE(start.main_window->findChild<QWidget*>(QStringLiteral("frmFront")), nullptr);
  for (const QWidget* const window : QApplication::topLevelWidgets())
    EXPECT_FALSE(window->objectName() == QLatin1String("frmSplash") && window->isVisible());
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(ColdStartTest, TheWindowMenuListsTheFrontPageAloneAndLeadsToIt) {
  const StartResult start = ColdStart();
  QCoreApplication::processEvents();
  QList<QAction*> items;
  for (QAction* const action : start.main_window->WindowsMenu()->actions())
    if (action->property("index").toInt() >= 6) items.append(action);
  ASSERT_EQ(items.size(), 1);
  ChildWindow* const front = start.main_window->ActiveChild();
  ASSERT_NE(front, nullptr);
  EXPECT_EQ(items[0]->text(), front->windowTitle());
  EXPECT_EQ(items[0]->objectName(), QStringLiteral("mnuWindows(6)"));
  EXPECT_TRUE(items[0]->isChecked());
  EXPECT_EQ(LoadedForms().value(items[0]->data().toInt()), front);

  front->parentWidget()->showNormal();
  items[0]->trigger();
  EXPECT_TRUE(start.main_window->Area()->activeSubWindow()->isMaximized());
}

TEST_F(ColdStartTest, TheSplashWindowStandsOverTheTuneWithTheVersion) {
  bool seen = false;
  platform_.events->on_serve = [&seen](int) {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
      if (window->objectName() != QLatin1String("frmSplash") || !window->isVisible()) continue;
      seen = true;
      EXPECT_EQ(window->findChild<QLabel*>(QStringLiteral("lblVersion"))->text(),
                QStringLiteral("Version " ZELMAR_VERSION));
    }
  };
  const StartResult start = ColdStart();
  EXPECT_TRUE(seen);
}

TEST_F(ColdStartTest, SetsTheDirectoriesAndSettings) {
  WriteSettings([](Globals& globals) {
    globals.MidiMode = QStringLiteral("GS");
    globals.MediaPlayerInstalled = true;
  });
  const StartResult start = ColdStart();
  EXPECT_EQ(Global().HelpPath, ApplicationDirectory() + QStringLiteral("\\Help"));
  EXPECT_EQ(QDir::currentPath(), QDir(ApplicationDirectory()).canonicalPath());
  EXPECT_EQ(Global().DatabasePath, database_.Path());
  EXPECT_TRUE(Global().MediaPlayerInstalled);
  EXPECT_EQ(Global().MidiMode, QStringLiteral("GS"));
  EXPECT_EQ(Sent(1, 1), (QStringList{QStringLiteral("f04110421240007f0041f7")}));
}

TEST_F(ColdStartTest, EachStoredModeTakesItsReset) {
  const struct {
    const char* stored;
    const char* message;
    const char* mode;
  } rows[] = {{"XG", "f043104c00007e00f7", "XG"},
              {"GS", "f04110421240007f0041f7", "GS"},
              {"GM", "f07e7f0901f7", "GM2"},
              {"GM2", "f07e7f0901f7", "GM2"},
              {"", "f07e7f0901f7", "GM2"}};
  for (const auto& row : rows) {
    platform_.midi->sent.clear();
    WriteSettings([&row](Globals& globals) { globals.MidiMode = QString::fromLatin1(row.stored); });
    const StartResult start = ColdStart();
    EXPECT_EQ(Sent(1, 1), QStringList{QString::fromLatin1(row.message)}) << row.stored;
    EXPECT_EQ(Global().MidiMode, QString::fromLatin1(row.mode)) << row.stored;
  }
}

TEST_F(ColdStartTest, ADeviceThatIsGoneFallsBackToTheFirstForThisRun) {
  WriteSettings([](Globals& globals) { globals.MidiDeviceNumber = 7; });
  const StartResult start = ColdStart();
  EXPECT_EQ(Sent(0, 3),
            (QStringList{QStringLiteral("open"), QStringLiteral("open"), QStringLiteral("f07e7f0901f7")}));
  EXPECT_EQ(Global().MidiDeviceNumber, 0);
  EXPECT_EQ(platform_.midi->opened_device, 0);
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
  // The file still holds the user's choice.
  ReadPathFileIntoGlobals(PathFile());
  EXPECT_EQ(Global().MidiDeviceNumber, 7);
}

TEST_F(ColdStartTest, WithoutAnyDeviceItSaysSoAndStarts) {
  platform_.midi->open_results = {MidiOutput::kNotEnabled};
  const StartResult start = ColdStart();
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_TRUE(platform_.messages->shown[0].text.startsWith(QStringLiteral("midiOUT_Open\r\n")));
  EXPECT_TRUE(start.main_window->isVisible());
  EXPECT_FALSE(TheSoundCard()->Opened());
}

TEST_F(ColdStartTest, AMissingPathFileIsFatalAndNothingIsWrittenInItsPlace) {
  QFile::remove(PathFile());
  const StartResult start = ColdStart();
  EXPECT_EQ(start.main_window, nullptr);
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_EQ(platform_.messages->shown[0].icon, MessageIcon::kCritical);
  EXPECT_TRUE(platform_.messages->shown[0].text.contains(PathFile()));
  EXPECT_FALSE(QFile::exists(PathFile()));
  EXPECT_TRUE(platform_.midi->sent.empty());
}

TEST_F(ColdStartTest, AMissingDatabaseDoesNotStopTheStart) {
  WriteSettings([](Globals& globals) { globals.DatabasePath = QStringLiteral("/nowhere/Lost.mdb"); });
  // The window where another database is chosen is left without a choice.
  QTimer closer;
  closer.callOnTimeout([] {
    QWidget* const window = FindLoadedForm(QStringLiteral("frmOptionsConnectDB"));
    if (window != nullptr && window->isVisible()) window->close();
  });
  closer.start(1);
  const StartResult start = ColdStart();
  EXPECT_TRUE(Global().DatabaseFailed);
  EXPECT_TRUE(start.main_window->isVisible());
  EXPECT_TRUE(Global().InstrumentNames[0].isEmpty());
  ASSERT_FALSE(platform_.messages->shown.isEmpty());
  EXPECT_TRUE(platform_.messages->shown[0].text.contains(QStringLiteral("/nowhere/Lost.mdb")));
}

TEST_F(ColdStartTest, FillsTheInstrumentTableAndTheTitle) {
  database_.AddRow(QStringLiteral("tblInstruments"), {40, QStringLiteral("Violin"), QStringLiteral("Strings"),
                                                      1, 5, QStringLiteral("E7"), QStringLiteral("G3")});
  database_.Execute(QStringLiteral("delete * from tblDBInfo"));
  database_.AddRow(QStringLiteral("tblDBInfo"), {QStringLiteral("My tunes"), QStringLiteral("All of them")});
  const StartResult start = ColdStart();
  EXPECT_EQ(Global().InstrumentNames[40], QStringLiteral("Violin"));
  EXPECT_EQ(Global().InstrumentFamily[40], QStringLiteral("Strings"));
  EXPECT_TRUE(Global().InstrumentFavourite[40]);
  EXPECT_EQ(Global().InstrumentBestOctave[40], 5);
  EXPECT_EQ(Global().DatabaseTitle, QStringLiteral("My tunes"));
}

// --- Steps that fail ---

TEST_F(ColdStartTest, ADeviceThatFailsAtEverythingDoesNotStopTheStart) {
  using Kind = SentMessage::Kind;
  const auto output = std::make_shared<FailingOutput>(
      std::initializer_list<Kind>{Kind::kOpen, Kind::kClose, Kind::kReset, Kind::kShort, Kind::kLong});
  Platform().midi = output;
  const StartResult start = ColdStart();
  EXPECT_GE(output->failures, 4) << "the opening, the mode, the controllers, the tune";
  ASSERT_NE(start.main_window, nullptr);
  EXPECT_TRUE(start.main_window->isVisible());
}

TEST_F(ColdStartTest, RecentTunesThatCannotBeReadDoNotStopTheStart) {
  for (int i = 0; i < 7; ++i)
    database_.AddRow(QStringLiteral("tblRecentFiles"), {QStringLiteral("ONE"), QStringLiteral("x")});
  database_.Execute(QStringLiteral("delete * from tblDBInfo"));
  database_.AddRow(QStringLiteral("tblDBInfo"), {QStringLiteral("My tunes"), QStringLiteral("All of them")});
  const StartResult start = ColdStart();
  ASSERT_NE(start.main_window, nullptr);
  EXPECT_TRUE(start.main_window->isVisible());
  EXPECT_EQ(Global().DatabaseTitle, QStringLiteral("My tunes")) << "the steps behind it are taken";
}

class ColdStartWithoutATable : public ColdStartTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(ColdStartWithoutATable, TakesAllOtherSteps) {
  const QString missing = QLatin1String(GetParam());
  WriteSettings([](Globals& globals) { globals.MidiMode = QStringLiteral("GS"); });
  database_.AddRow(QStringLiteral("tblInstruments"), {40, QStringLiteral("Violin"), QStringLiteral("Strings"),
                                                      1, 5, QStringLiteral("E7"), QStringLiteral("G3")});
  database_.AddRow(QStringLiteral("tblGSToneBank"), {9, 1, 2, QStringLiteral("Drums")});
  database_.Execute(QStringLiteral("DROP TABLE ") + missing);
  const StartResult start = ColdStart();
  ASSERT_NE(start.main_window, nullptr);
  EXPECT_TRUE(start.main_window->isVisible());
  EXPECT_EQ(Global().InstrumentNames[40].isEmpty(), missing == u"tblInstruments");
  EXPECT_EQ(Global().TheToneBanks->Count(), missing == u"tblGSToneBank" ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(, ColdStartWithoutATable,
                         ::testing::Values("tblDBInfo", "tblInstruments", "tblGSToneBank", "tblRecentFiles"),
                         [](const auto& table) { return std::string(table.param); });

}  // namespace
}  // namespace zelmar
