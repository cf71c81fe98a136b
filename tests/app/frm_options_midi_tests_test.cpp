// The MIDI tests: ten demonstrations, and what happens when one is ended in the middle.
#include "app/options/frm_options_midi_tests.h"

#include <QMdiArea>
#include <QMdiSubWindow>

#include "app/option_windows_fixture.h"
#include "shell/dialog_wait.h"

namespace zelmar {
namespace {

using namespace testing_support;

struct DemoButton {
  const char* button;
  const char* caption;
  const char* tooltip;
  const char* code_name;  // empty for a tune that is built in memory
};
constexpr DemoButton kButtons[] = {
    {"cmdExpression", "Expression", "This demonstates how MIDI creates a crescendo on a sustained note.",
     "demoExpression"},
    {"cmdModulation", "Modulation", "Plays a violin tune WITH modulation (vibrato), then again WITHOUT it.",
     "DemoModulation"},
    {"cmdSoundEffects", "Sound Effects",
     "Demonstrates some MIDI FX sound effects, with and without some bank selects.", "DemoSoundEffects"},
    {"cmdBankSelect", "Bank Select",
     "Plays each note of a scale twice, once without bank selects, then with it, to demonstrate the "
     "different tones.",
     "DemoBankSelect"},
    {"cmdPortamento", "Portamento",
     "Uses a trombone to illustrate how portamento simulates sliding the slide up from C3 to F3",
     "DemoPortamento"},
    {"cmdChorus", "Chorus",
     "Plays a violin tune WITHOUT chorus effect, then again WITH it, to highlight the difference.",
     "DemoChorus"},
    {"cmdReverb", "Reverb (Echo)",
     "Demonstrates the echo effect with a choir, first no echo, then full reverb", "DemoReverb"},
    {"cmdStereoDemo", "Stereo Demo (Pan left to right)",
     "Click this button to hear a scale on vibes, panning from left to right", "StereoDemo"},
    {"cmdOrganChord", "Sustained Organ Chord", "Click this button to hear an Eb chord played on the organ.",
     ""},
    {"cmdPianoNote", "Single note on piano (decaying sound)",
     "Click this button to hear middle C played on the piano.", ""},
};

// In the order of sending, for each channel.
constexpr std::pair<std::uint32_t, std::uint32_t> kControllers[] = {
    {121, 0}, {93, 0}, {91, 0}, {7, 127}, {10, 64}, {1, 0}, {11, 127}, {64, 0}, {65, 0}};

class MidiTests : public OptionWindowTest {
 protected:
  MidiTests() {
    Start();
    Item("mnuOptionsMidiTests").trigger();
    QCoreApplication::processEvents();
    window_ = qobject_cast<FrmOptionsMidiTests*>(FindLoadedForm(QStringLiteral("frmOptionsMidiTests")));
    platform_.midi->sent.clear();
  }

  void AddDemo(const char* code_name, const QString& mode = QStringLiteral("GM")) {
    SampleTune tune;
    tune.code_name = QLatin1String(code_name);
    tune.title = QStringLiteral("Title of ") + tune.code_name;
    tune.description = QStringLiteral("About ") + tune.code_name;
    tune.midi_mode = mode;
    tune.events = SampleMelody(Pitches());
    database_.AddTune(tune);
  }

  // Calls `act` once while a note of the tune in memory sounds.
  void InTheMiddle(std::function<void()> act) {
    acted_ = false;
    platform_.events->on_serve = [this, act = std::move(act)](int) {
      const auto tune = main_->MyTune();
      if (acted_ || !tune || !tune->Playing() || Sounding().empty()) return;
      acted_ = true;
      act();
    };
  }

  QPointer<FrmOptionsMidiTests> window_;
  bool acted_ = false;
};

TEST_F(MidiTests, HasItsWordsOneByOne) {
  ASSERT_TRUE(window_);
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Midi test your sound card or module."));
  EXPECT_EQ(TextOf(*window_, "lblMode"), QStringLiteral("Mode"));
  for (const DemoButton& row : kButtons) {
    const auto& button = Find<QPushButton>(*window_, row.button);
    EXPECT_EQ(Words(button.text()), QLatin1String(row.caption));
    EXPECT_EQ(button.toolTip(), QLatin1String(row.tooltip));
  }
}

TEST_F(MidiTests, IsNotModalAndComesBackAsTheOneInstance) {
  EXPECT_FALSE(window_->isModal());
  Front().ShowOnTop();
  Item("mnuOptionsMidiTests").trigger();
  QCoreApplication::processEvents();
  EXPECT_EQ(main_->ActiveChild(), window_.data());
}

TEST_F(MidiTests, EachButtonOfTheLibraryLoadsItsTuneAndPlaysIt) {
  for (const DemoButton& row : kButtons) {
    if (row.code_name[0] == '\0') continue;
    AddDemo(row.code_name);
    Global().TuneLoadedFlag = false;
    platform_.midi->sent.clear();
    Click(*window_, row.button);
    EXPECT_EQ(main_->MyTune()->FileName(), QLatin1String(row.code_name));
    EXPECT_TRUE(Global().TuneLoadedFlag);
    EXPECT_EQ(TextOf(*window_, "lblTitle"), QStringLiteral("Title of ") + QLatin1String(row.code_name));
    EXPECT_EQ(TextOf(*window_, "lblDescription"), QStringLiteral("About ") + QLatin1String(row.code_name));
    EXPECT_EQ(PitchesOn().size(), 12U) << row.button;
    EXPECT_TRUE(Sounding().empty());
  }
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(MidiTests, EveryWindowShowsTheTuneThatPlays) {
  LoadTune("ONE");
  ShowWindow(QStringLiteral("frmEditStaff"));
  const ChildWindow& staff = *WindowByName(QStringLiteral("frmEditStaff"));
  Item("mnuOptionsMidiTests").trigger();
  QCoreApplication::processEvents();
  bool can_be_stopped = false;
  InTheMiddle([&] {
    QCoreApplication::processEvents();
    can_be_stopped = IsEnabled(Bar(), "cmdStop") && IsEnabled(*staff.MyPlayBar(), "cmdStop") &&
                     !IsEnabled(Bar(), "cmdPlay");
  });
  Click(*window_, "cmdPianoNote");
  // It has no composer, who would be named before the title.
  EXPECT_EQ(Front().windowTitle(), QStringLiteral("Zelmar - Front Screen - Test Piano Note"));
  EXPECT_EQ(TextOf(Bar(), "lblTitle"), QStringLiteral("Test Piano Note"));
  EXPECT_EQ(staff.windowTitle(), QStringLiteral("Zelmar - Staff view of Test Piano Note"));
  EXPECT_EQ(TextOf(*staff.MyPlayBar(), "lblTitle"), QStringLiteral("Test Piano Note"));
  EXPECT_TRUE(acted_);
  EXPECT_TRUE(can_be_stopped);
  EXPECT_FALSE(IsEnabled(Bar(), "cmdStop"));
  QStringList listed;
  for (const QAction* item : Listed("mnuWindowsTitle", "mnuWindows", 6)) listed.append(item->text());
  EXPECT_TRUE(listed.contains(QStringLiteral("Zelmar - Staff view of Test Piano Note")));
  EXPECT_EQ(main_->ActiveChild(), window_.data());
}

TEST_F(MidiTests, TheTransportBarsOfAllWindowsShowTheModeAtOnce) {
  ShowWindow(QStringLiteral("frmEditStaff"));
  const ChildWindow& staff = *WindowByName(QStringLiteral("frmEditStaff"));
  Item("mnuOptionsMidiTests").trigger();
  QCoreApplication::processEvents();
  for (const auto& [button, mode] : {std::pair("cmdXGReset", "XG"), std::pair("cmdGSReset", "GS")}) {
    Click(*window_, button);
    EXPECT_EQ(TextOf(Bar(), "lblMidiMode"), QLatin1String(mode));
    EXPECT_EQ(TextOf(*staff.MyPlayBar(), "lblMidiMode"), QLatin1String(mode));
  }
}

TEST_F(MidiTests, DemonstrationsAreNotWhatAPersonOpened) {
  LoadTune("ONE");
  AddDemo("DemoChorus");
  Click(*window_, "cmdChorus");
  Click(*window_, "cmdPianoNote");
  EXPECT_EQ(Global().RecentCodeNames[0], QStringLiteral("DemoChorus"));
  Front().Activate();
  const auto& first = Find<QPushButton>(Front(), "cmdRecentTune1");
  EXPECT_EQ(first.accessibleName(), QStringLiteral("Bach - First"));
  EXPECT_FALSE(Find<QPushButton>(Front(), "cmdRecentTune2").isVisibleTo(&Front()));
}

TEST_F(MidiTests, OpensMaximisedOverAMaximisedWindowWithTheKeyboardAtItsFirstButton) {
  window_->Unload();
  LetClosedWindowsGo();
  Front().ShowMaximisedOnTop();
  Find<QPushButton>(Front(), "cmdHelp").setFocus();
  QCoreApplication::processEvents();
  Item("mnuOptionsMidiTests").trigger();
  QCoreApplication::processEvents();
  const QMdiSubWindow* const frame = main_->Area()->currentSubWindow();
  ASSERT_EQ(frame->widget()->objectName(), QLatin1String(FrmOptionsMidiTests::kName));
  EXPECT_TRUE(frame->isMaximized());
  EXPECT_EQ(frame->size(), main_->Area()->viewport()->size());
  EXPECT_EQ(QApplication::focusWidget(), &Find<QPushButton>(*frame, "cmdExpression"));
}

TEST_F(MidiTests, HelpAndBackAreInSightInALowWindow) {
  main_->resize(620, 420);
  window_->ShowMaximisedOnTop();
  QCoreApplication::processEvents();
  for (const char* name : {"cmdHelp", "cmdBack"}) {
    const auto& button = Find<QPushButton>(*window_, name);
    const QRect place(button.mapTo(main_.get(), QPoint(0, 0)), button.size());
    EXPECT_TRUE(main_->rect().contains(place)) << name;
    EXPECT_EQ(button.visibleRegion().boundingRect(), button.rect()) << name;
  }
}

TEST_F(MidiTests, ResetControllersSendsNineControllersChannelByChannel) {
  window_->ResetControllers();
  const auto words = platform_.midi->ShortMessages();
  ASSERT_EQ(words.size(), 16U * 9U);
  std::size_t place = 0;
  for (std::uint32_t channel = 0; channel < 16; ++channel)
    for (const auto& [number, value] : kControllers)
      EXPECT_EQ(words[place++], 0xB0U + channel + number * 256U + value * 65536U);
}

TEST_F(MidiTests, ADemonstrationStopsTheTuneAndResetsBeforeItPlays) {
  LoadTune();
  AddDemo("DemoReverb");
  platform_.midi->sent.clear();
  Click(*window_, "cmdReverb");
  ASSERT_FALSE(platform_.midi->sent.empty());
  EXPECT_EQ(platform_.midi->sent[0].kind, SentMessage::Kind::kReset);
  const auto words = platform_.midi->ShortMessages();
  ASSERT_GT(words.size(), 16U * 9U);
  EXPECT_EQ(words[0], 0xB0U + 121U * 256U);
  EXPECT_EQ(words[16 * 9 - 1], 0xBFU + 65U * 256U);
}

TEST_F(MidiTests, ADemonstrationThatIsNotInTheDatabaseSaysSoAndPlaysNothing) {
  for (const DemoButton& row : kButtons) {
    if (row.code_name[0] == '\0') continue;
    platform_.messages->shown.clear();
    Click(*window_, row.button);
    ASSERT_EQ(Boxes().size(), 1) << row.button;
    EXPECT_EQ(Boxes()[0].title, QLatin1String(row.code_name) + QStringLiteral(" not in Zelmar database."));
    EXPECT_EQ(Boxes()[0].text, QStringLiteral("Sorry, but this tune was not found in the database."));
  }
  EXPECT_TRUE(PitchesOn().empty());
  EXPECT_FALSE(Global().TuneLoadedFlag);
}

TEST_F(MidiTests, ADemonstrationWithoutItsTableGivesTheLoadersMessage) {
  AddDemo("DemoChorus");
  database_.Execute(QStringLiteral("DROP TABLE [DemoChorus]"));
  Click(*window_, "cmdChorus");
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].text, QStringLiteral("This melody table (DemoChorus) not found in database"));
  EXPECT_TRUE(PitchesOn().empty());
}

TEST_F(MidiTests, WithoutADatabaseTheConnectionsMessageIsTheOnlyOne) {
  Global().DatabasePath = In(QStringLiteral("gone.mdb"));
  Click(*window_, "cmdChorus");
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(MidiTests, TheButtonsGoOnAfterALoadThatFailed) {
  AddDemo("DemoChorus");
  database_.Execute(QStringLiteral("DROP TABLE tblWords"));
  QMetaObject::invokeMethod(&Find<QPushButton>(*window_, "cmdChorus"), &QPushButton::click,
                            Qt::QueuedConnection);
  QCoreApplication::processEvents();
  EXPECT_EQ(Boxes().size(), 1);
  Click(*window_, "cmdPianoNote");
  EXPECT_EQ(PitchesOn(), (std::vector<std::uint32_t>{60}));
}

TEST_F(MidiTests, TheOrganChordIsEFlatMajorHeldOnTheOrgan) {
  Click(*window_, "cmdOrganChord");
  const auto tune = main_->MyTune();
  EXPECT_EQ(tune->Title(), QStringLiteral("Test Organ Chord"));
  EXPECT_EQ(tune->FileName(), QStringLiteral("TestOrganChord"));
  EXPECT_EQ(tune->Item(QStringLiteral("1"))->Pitch(), QStringLiteral("Eb3"));
  EXPECT_EQ(tune->Item(QStringLiteral("2"))->Pitch(), QStringLiteral("G3"));
  EXPECT_EQ(tune->Item(QStringLiteral("3"))->Pitch(), QStringLiteral("Bb3"));
  EXPECT_EQ(tune->Item(QStringLiteral("4"))->Pitch(), QStringLiteral("Eb4"));
  EXPECT_EQ(TextOf(*window_, "lblTitle"), QStringLiteral("Test Organ Chord"));
  auto pitches = PitchesOn();
  std::sort(pitches.begin(), pitches.end());
  EXPECT_EQ(pitches, (std::vector<std::uint32_t>{51, 55, 58, 63}));
  for (const std::uint32_t word : platform_.midi->ShortMessages())
    EXPECT_TRUE((word & 0xF0U) != 0xC0U || word >> 8U == 16U) << word;
  EXPECT_TRUE(Sounding().empty());
}

TEST_F(MidiTests, TheChordSoundsAtOnceAndEndsTogether) {
  Click(*window_, "cmdOrganChord");
  std::vector<double> begun, ended;
  for (const SentMessage& message : platform_.midi->sent) {
    if (message.kind != SentMessage::Kind::kShort || (message.packed & 0xF0U) != 0x90U) continue;
    (message.packed >> 16U != 0 ? begun : ended).push_back(message.seconds);
  }
  ASSERT_EQ(begun.size(), 4U);
  ASSERT_EQ(ended.size(), 4U);
  EXPECT_NEAR(begun.front(), begun.back(), 0.05);
  EXPECT_NEAR(ended.front(), ended.back(), 0.05);
  EXPECT_NEAR(ended.front() - begun.front(), 4.0, 0.1);
}

TEST_F(MidiTests, ThePianoNoteIsMiddleC) {
  Click(*window_, "cmdPianoNote");
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Test Piano Note"));
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("TestPianoNote"));
  EXPECT_EQ(PitchesOn(), (std::vector<std::uint32_t>{60}));
  EXPECT_EQ(main_->MyTune()->Item(QStringLiteral("1"))->Instrument(), 0);
  EXPECT_TRUE(Sounding().empty());
}

TEST_F(MidiTests, ATestTuneIsNothingToSave) {
  Global().TuneLoadedFlag = true;
  Click(*window_, "cmdPianoNote");
  main_->close();
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(MidiTests, TheModeOfTheDemonstrationIsShownAfterIt) {
  AddDemo("DemoBankSelect", QStringLiteral("XG"));
  Click(*window_, "cmdBankSelect");
  EXPECT_EQ(FieldText(*window_, "txtMidiMode"), QStringLiteral("XG"));
}

TEST_F(MidiTests, TheModeButtonsShowTheMode) {
  Click(*window_, "cmdGMTurnOn");
  EXPECT_EQ(FieldText(*window_, "txtMidiMode"), QStringLiteral("GM2"));
  Click(*window_, "cmdXGReset");
  EXPECT_EQ(FieldText(*window_, "txtMidiMode"), QStringLiteral("XG"));
  Click(*window_, "cmdGSReset");
  EXPECT_EQ(FieldText(*window_, "txtMidiMode"), QStringLiteral("GS"));
  EXPECT_EQ(platform_.midi->CountOf(SentMessage::Kind::kLong), 3);
}

TEST_F(MidiTests, AModeOfAnotherWindowIsShownOnReturn) {
  Front().ShowOnTop();
  Item("mnuOptionsXGReset").trigger();
  window_->ShowOnTop();
  QCoreApplication::processEvents();
  EXPECT_EQ(FieldText(*window_, "txtMidiMode"), QStringLiteral("XG"));
}

// --- Ended in the middle ---

TEST_F(MidiTests, ClosingTheWindowEndsTheDemonstrationWithNoNoteLeft) {
  AddDemo("DemoReverb");
  for (const char* how : {"Back", "Escape", "close"}) {
    Item("mnuOptionsMidiTests").trigger();
    QPointer<QWidget> window = FindLoadedForm(QStringLiteral("frmOptionsMidiTests"));
    ASSERT_TRUE(window);
    platform_.midi->sent.clear();
    InTheMiddle([&] {
      EXPECT_FALSE(Sounding().empty());
      if (QLatin1String(how) == QLatin1String("Back"))
        Click(*window, "cmdBack");
      else if (QLatin1String(how) == QLatin1String("Escape"))
        QTest::keyClick(window, Qt::Key_Escape);
      else
        main_->Area()->closeActiveSubWindow();
    });
    Click(*window, "cmdReverb");
    EXPECT_TRUE(acted_) << how;
    EXPECT_TRUE(Sounding().empty()) << how;
    EXPECT_LT(PitchesOn().size(), 12U) << how;
    EXPECT_FALSE(main_->MyTune()->Playing());
    LetClosedWindowsGo();
    EXPECT_FALSE(window) << how;
  }
}

TEST_F(MidiTests, AnotherDemonstrationEndsTheOneThatPlays) {
  AddDemo("DemoReverb");
  InTheMiddle([this] { Click(*window_, "cmdOrganChord"); });
  Click(*window_, "cmdReverb");
  EXPECT_TRUE(acted_);
  const auto pitches = PitchesOn();
  EXPECT_LT(pitches.size(), 12U + 4U);
  ASSERT_GE(pitches.size(), 4U);
  EXPECT_EQ(std::count(pitches.end() - 4, pitches.end(), 60U), 0);
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Test Organ Chord"));
  EXPECT_TRUE(Sounding().empty());
  Click(*window_, "cmdPianoNote");
  EXPECT_EQ(PitchesOn().back(), 60U);
}

TEST_F(MidiTests, TheLastOfManyClicksIsTheOneThatPlays) {
  InTheMiddle([this] {
    for (int i = 0; i < 100; ++i) Click(*window_, i % 2 == 0 ? "cmdOrganChord" : "cmdPianoNote");
  });
  Click(*window_, "cmdOrganChord");
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Test Piano Note"));
  EXPECT_LE(PitchesOn().size(), 5U);
  EXPECT_EQ(PitchesOn().back(), 60U);
  EXPECT_TRUE(Sounding().empty());
}

TEST_F(MidiTests, ADemonstrationEndsTheTuneOfTheFrontPage) {
  LoadTune();
  Front().ShowOnTop();
  const auto old = main_->MyTune();
  InTheMiddle([this] { Click(*window_, "cmdPianoNote"); });
  Bar().Play();
  EXPECT_TRUE(acted_);
  EXPECT_FALSE(old->Playing());
  EXPECT_TRUE(Sounding().empty());
  EXPECT_LT(PitchesOn().size(), 13U);
}

TEST_F(MidiTests, AnEmergencyResetInTheMiddleLeavesNoNote) {
  AddDemo("DemoReverb");
  for (const char* button : {"cmdReverb", "cmdOrganChord"}) {
    platform_.midi->sent.clear();
    InTheMiddle([this] {
      QTimer::singleShot(20, main_.get(), [] { DialogWait::Unload(); });
      Item("mnuPlayMIDIReset").trigger();
    });
    Click(*window_, button);
    EXPECT_TRUE(acted_) << button;
    EXPECT_TRUE(Sounding().empty()) << button;
  }
}

TEST_F(MidiTests, AModeResetInTheMiddleLetsTheDemonstrationGoOn) {
  AddDemo("DemoReverb");
  InTheMiddle([this] { Click(*window_, "cmdXGReset"); });
  Click(*window_, "cmdReverb");
  EXPECT_TRUE(acted_);
  EXPECT_EQ(PitchesOn().size(), 12U);
  EXPECT_TRUE(Sounding().empty());
}

TEST_F(MidiTests, TheEndOfTheProgramInTheMiddleEndsTheDemonstration) {
  AddDemo("DemoReverb");
  InTheMiddle([this] { main_->close(); });
  Click(*window_, "cmdReverb");
  EXPECT_TRUE(acted_);
  EXPECT_TRUE(Sounding().empty());
  EXPECT_FALSE(TheSoundCard()->Opened());
}

TEST_F(MidiTests, AWindowThatClosesDuringTheLoadPlaysNothing) {
  AddDemo("DemoReverb");
  QObject::connect(main_->MyLoader().get(), &TuneLoader::PercentCompleted, window_,
                   [this](std::int16_t percent) {
                     if (percent == 100) window_->Unload();
                   });
  Click(*window_, "cmdReverb");
  EXPECT_TRUE(PitchesOn().empty());
}

}  // namespace
}  // namespace zelmar
