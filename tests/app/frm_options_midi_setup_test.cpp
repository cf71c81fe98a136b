// MIDI setup: the list of devices, what OK and Back do, and the SoundFont of the built-in synthesiser.
#include "app/options/frm_options_midi_setup.h"

#include <QMdiArea>

#include "app/cold_start.h"
#include "app/option_windows_fixture.h"
#include "midi/bank_messages.h"
#include "midi/sound_font.h"

namespace zelmar {
namespace {

using namespace testing_support;

class MidiSetup : public OptionWindowTest {
 protected:
  MidiSetup() {
    Start();
    platform_.midi->device_names = {QStringLiteral("Recorder"), QStringLiteral("Port one"),
                                    QStringLiteral("Port two")};
    std::int16_t result = 0;
    TheSoundCard()->OpenCard(0, result);
    platform_.midi->sent.clear();
  }

  FrmOptionsMidiSetup& Open() { return Opened<FrmOptionsMidiSetup>("mnuOptionsMidiSetup"); }
  // As a person chooses an entry of the list.
  static void Choose(FrmOptionsMidiSetup& window, int index) {
    auto& combo = Find<QComboBox>(window, "ComboMidiOut");
    combo.setCurrentIndex(index);
    Q_EMIT combo.activated(index);
  }
  QList<SentMessage::Kind> Kinds() const {
    QList<SentMessage::Kind> kinds;
    for (const SentMessage& message : platform_.midi->sent) kinds.append(message.kind);
    return kinds;
  }
  static bool IsShown() { return IsOpen("frmOptionsMidiSetup"); }

  // Another name of the installed SoundFont.
  QString OtherFont() const {
    const QString path = In(QStringLiteral("Other.sf2"));
    QFile::link(InstalledSoundFont(), path);
    return path;
  }
};

TEST_F(MidiSetup, HasItsWordsOneByOne) {
  const auto& window = Open();
  EXPECT_EQ(window.windowTitle(), QStringLiteral("MIDI Setup. Select MIDI output device."));
  EXPECT_EQ(Words(TextOf(window, "lblMidiOut")), QStringLiteral("MIDI Out Device"));
  const std::pair<const char*, const char*> words[] = {
      {"chkSupressBank", "Supress Bank Controller Messages"},
      {"cmdXGReset", "XG (Yamaha)"},
      {"cmdGMTurnOn", "GM /GM2 General MIDI"},
      {"cmdGSReset", "GS (Roland)"},
      {"cmdOK", "OK, Save these settings"},
  };
  for (const auto& [name, text] : words)
    EXPECT_EQ(Words(Find<QAbstractButton>(window, name).text()), QLatin1String(text)) << name;
}

TEST_F(MidiSetup, IsCentredInTheAreaOfTheMainWindow) {
  const auto& window = Open();
  const QMdiArea* const area = main_->Area();
  const QPoint centre = area->mapToGlobal(area->rect().center());
  EXPECT_LE((window.frameGeometry().center() - centre).manhattanLength(), 2);
}

TEST_F(MidiSetup, ShowsTheDeviceTheModeAndTheSuppression) {
  Global().MidiDeviceNumber = 2;
  Global().MidiDeviceName = QStringLiteral("Port two");
  Global().SuppressBankMessages = true;
  const auto& window = Open();
  EXPECT_EQ(FieldText(window, "txtOutputDeviceID"), QStringLiteral("2"));
  EXPECT_EQ(FieldText(window, "txtOutputDeviceName"), QStringLiteral("Port two"));
  EXPECT_EQ(FieldText(window, "txtMidiMode"), QStringLiteral("GS"));
  EXPECT_TRUE(Find<QCheckBox>(window, "chkSupressBank").isChecked());
  EXPECT_EQ(Find<QComboBox>(window, "ComboMidiOut").currentIndex(), 2);
}

TEST_F(MidiSetup, AnUntickedSuppressionIsShownSo) {
  EXPECT_FALSE(Find<QCheckBox>(Open(), "chkSupressBank").isChecked());
}

TEST_F(MidiSetup, ListsTheDevicesByNumber) {
  const auto& combo = Find<QComboBox>(Open(), "ComboMidiOut");
  ASSERT_EQ(combo.count(), 3);
  EXPECT_EQ(combo.itemText(0), QStringLiteral("Recorder"));
  EXPECT_EQ(combo.itemText(1), QStringLiteral("Port one"));
  EXPECT_EQ(combo.itemText(2), QStringLiteral("Port two"));
  EXPECT_EQ(combo.currentIndex(), 0);
}

TEST_F(MidiSetup, WithoutDevicesTheListIsEmptyAndOKFailsQuietly) {
  platform_.midi->device_names.clear();
  auto& window = Open();
  const QByteArray before = BytesOf(PathFile());
  EXPECT_EQ(TextOf(window, "lblMidiOut"), QStringLiteral("No MIDI output devices"));
  EXPECT_EQ(Find<QComboBox>(window, "ComboMidiOut").count(), 0);
  Click(window, "cmdOK");
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_TRUE(platform_.midi->sent.empty());
  EXPECT_EQ(Global().MidiDeviceName, QStringLiteral("Recorder"));
  EXPECT_EQ(BytesOf(PathFile()), before);
  EXPECT_TRUE(window.isVisible());
}

TEST_F(MidiSetup, AStoredNumberOutsideTheListSelectsTheFirstDevice) {
  for (const int stored : {3, 99, -1}) {
    Global().MidiDeviceNumber = static_cast<std::int16_t>(stored);
    auto& window = Open();
    EXPECT_EQ(Find<QComboBox>(window, "ComboMidiOut").currentIndex(), 0) << stored;
    window.reject();
    LetClosedWindowsGo();
  }
}

TEST_F(MidiSetup, TheFieldsShowWhatTheListShowsWhenTheStoredDeviceIsGone) {
  for (const int stored : {7, -1}) {
    Global().MidiDeviceNumber = static_cast<std::int16_t>(stored);
    Global().MidiDeviceName = QStringLiteral("Gone");
    auto& window = Open();
    EXPECT_EQ(Find<QComboBox>(window, "ComboMidiOut").currentText(), QStringLiteral("Recorder"));
    EXPECT_EQ(FieldText(window, "txtOutputDeviceID"), QStringLiteral("0"));
    EXPECT_EQ(FieldText(window, "txtOutputDeviceName"), QStringLiteral("Recorder"));
    Click(window, "cmdBack");
    LetClosedWindowsGo();
    EXPECT_EQ(Global().MidiDeviceNumber, stored);
    EXPECT_EQ(Global().MidiDeviceName, QStringLiteral("Gone"));
  }
}

TEST_F(MidiSetup, TheFieldsShowTheDeviceThatHasTheStoredNumberNow) {
  Global().MidiDeviceNumber = 1;
  Global().MidiDeviceName = QStringLiteral("A name of old");
  const auto& window = Open();
  EXPECT_EQ(Find<QComboBox>(window, "ComboMidiOut").currentText(), QStringLiteral("Port one"));
  EXPECT_EQ(FieldText(window, "txtOutputDeviceID"), QStringLiteral("1"));
  EXPECT_EQ(FieldText(window, "txtOutputDeviceName"), QStringLiteral("Port one"));
}

TEST_F(MidiSetup, WithoutDevicesTheFieldsShowTheStoredOne) {
  platform_.midi->device_names.clear();
  Global().MidiDeviceNumber = 2;
  Global().MidiDeviceName = QStringLiteral("Gone");
  const auto& window = Open();
  EXPECT_EQ(FieldText(window, "txtOutputDeviceID"), QStringLiteral("2"));
  EXPECT_EQ(FieldText(window, "txtOutputDeviceName"), QStringLiteral("Gone"));
}

TEST_F(MidiSetup, ChoosingTakesNameAndNumberAtOnceAndOpensNothing) {
  auto& window = Open();
  Choose(window, 2);
  EXPECT_EQ(Global().MidiDeviceNumber, 2);
  EXPECT_EQ(Global().MidiDeviceName, QStringLiteral("Port two"));
  EXPECT_EQ(FieldText(window, "txtOutputDeviceID"), QStringLiteral("2"));
  EXPECT_EQ(FieldText(window, "txtOutputDeviceName"), QStringLiteral("Port two"));
  EXPECT_TRUE(platform_.midi->sent.empty());
}

TEST_F(MidiSetup, OKClosesTheOldDeviceOpensTheNewOneAndCloses) {
  auto& window = Open();
  Choose(window, 1);
  Find<QCheckBox>(window, "chkSupressBank").setChecked(true);
  Click(window, "cmdOK");
  EXPECT_EQ(Kinds(), (QList<SentMessage::Kind>{SentMessage::Kind::kClose, SentMessage::Kind::kOpen}));
  EXPECT_EQ(platform_.midi->opened_device, 1);
  EXPECT_TRUE(TheSoundCard()->Opened());
  EXPECT_TRUE(Global().SuppressBankMessages);
  EXPECT_FALSE(IsShown());
}

TEST_F(MidiSetup, OKTakesTheSelectedDeviceAlsoWhenNoneWasChosen) {
  Global().MidiDeviceNumber = 9;
  Global().MidiDeviceName = QStringLiteral("Gone");
  Click(Open(), "cmdOK");
  EXPECT_EQ(Global().MidiDeviceNumber, 0);
  EXPECT_EQ(Global().MidiDeviceName, QStringLiteral("Recorder"));
}

TEST_F(MidiSetup, OKRewritesThePathFileWithAllItsRecords) {
  auto& window = Open();
  Choose(window, 2);
  Global().MediaPlayerInstalled = true;
  Click(window, "cmdOK");
  const auto records = Records();
  ASSERT_EQ(records.size(), 4);
  EXPECT_EQ(records[0], '"' + database_.Path().toUtf8() + "\",#2026-03-04#,#10:20:30#,\"Ann\",\"First one\"");
  EXPECT_EQ(records[1], "\"Midi output device\",2,\"Port two\"");
  EXPECT_EQ(records[2], "\"Media Player\",#TRUE#");
  EXPECT_EQ(records[3], "\"MIDI Mode\",\"GS\"");
}

TEST_F(MidiSetup, TheChoiceIsThereAtTheNextStart) {
  auto& window = Open();
  Choose(window, 1);
  Click(window, "cmdXGReset");
  Click(window, "cmdOK");
  ResetGlobals();
  ReadPathFileIntoGlobals(PathFile());
  EXPECT_EQ(Global().MidiDeviceNumber, 1);
  EXPECT_EQ(Global().MidiDeviceName, QStringLiteral("Port one"));
  EXPECT_EQ(Global().MidiMode, QStringLiteral("XG"));
}

// --- Bank controller messages ---

TEST_F(MidiSetup, OKKeepsTheTickForBankMessagesWithoutThePathFile) {
  Click(Open(), "cmdOK");
  const QByteArray before = BytesOf(PathFile());
  for (const bool ticked : {true, false}) {
    LetClosedWindowsGo();
    auto& window = Open();
    Find<QCheckBox>(window, "chkSupressBank").setChecked(ticked);
    Click(window, "cmdOK");
    EXPECT_EQ(KeptBankSuppression(), ticked);
    EXPECT_EQ(BytesOf(PathFile()), before);
  }
}

TEST_F(MidiSetup, TheTickForBankMessagesIsThereAtTheNextStart) {
  Global().DatabasePath = database_.Path();
  auto& window = Open();
  Find<QCheckBox>(window, "chkSupressBank").setChecked(true);
  Click(window, "cmdOK");
  main_->close();
  main_.reset();
  ForgetTheEnd();
  ResetGlobals();
  ASSERT_FALSE(Global().SuppressBankMessages);
  platform_.midi->sent.clear();
  StartResult start = ColdStart();
  EXPECT_TRUE(Global().SuppressBankMessages);
  // The first tune of all goes by it.
  for (const std::uint32_t word : platform_.midi->ShortMessages()) {
    const std::uint32_t controller = (word >> 8U) & 0x7FU;
    EXPECT_FALSE((word & 0xF0U) == 0xB0U && (controller == 0 || controller == 32));
  }
  EXPECT_FALSE(platform_.midi->ShortMessages().empty());
  start.main_window.reset();
}

TEST_F(MidiSetup, BackForgetsTheTickForBankMessages) {
  auto& window = Open();
  Find<QCheckBox>(window, "chkSupressBank").setChecked(true);
  Click(window, "cmdBack");
  EXPECT_FALSE(Global().SuppressBankMessages);
  EXPECT_FALSE(KeptBankSuppression());
}

TEST_F(MidiSetup, ATickForBankMessagesThatCannotBeSavedIsTold) {
  auto& window = Open();
  Find<QCheckBox>(window, "chkSupressBank").setChecked(true);
  QFile::remove(In(QStringLiteral("Zelmar.ini")));
  QDir().mkdir(In(QStringLiteral("Zelmar.ini")));
  Click(window, "cmdOK");
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("Settings not saved"));
  EXPECT_EQ(Boxes()[0].text,
            QStringLiteral("The tick for bank messages could not be saved. It holds until Zelmar ends."));
  EXPECT_TRUE(Global().SuppressBankMessages);
}

// --- Leaving ---

TEST_F(MidiSetup, BackAndEscapeLeaveTheDeviceThatIsOpen) {
  const QByteArray before = BytesOf(PathFile());
  for (const bool by_key : {false, true}) {
    auto& window = Open();
    Choose(window, 1);
    if (by_key)
      QTest::keyClick(&window, Qt::Key_Escape);
    else
      Click(window, "cmdBack");
    EXPECT_FALSE(IsShown());
    EXPECT_EQ(Global().MidiDeviceNumber, 0);
    EXPECT_EQ(Global().MidiDeviceName, QStringLiteral("Recorder"));
    LetClosedWindowsGo();
  }
  EXPECT_TRUE(platform_.midi->sent.empty());
  EXPECT_EQ(BytesOf(PathFile()), before);
}

TEST_F(MidiSetup, ADeviceThatFailsLeavesTheWindowOpenToAnotherChoice) {
  platform_.midi->open_results = {MidiOutput::kSuccess, MidiOutput::kAllocated};
  const QByteArray before = BytesOf(PathFile());
  auto& window = Open();
  Choose(window, 1);
  Click(window, "cmdOK");
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_TRUE(Boxes()[0].text.startsWith(QStringLiteral("midiOUT_Open\r\nerror 4 ")));
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(BytesOf(PathFile()), before);

  Choose(window, 2);
  Click(window, "cmdOK");
  EXPECT_EQ(platform_.midi->opened_device, 2);
  EXPECT_FALSE(IsShown());
  EXPECT_EQ(Records()[1], "\"Midi output device\",2,\"Port two\"");
}

TEST_F(MidiSetup, BackAfterADeviceThatFailedOpensTheOldOneAgain) {
  platform_.midi->open_results = {MidiOutput::kSuccess, MidiOutput::kAllocated};
  auto& window = Open();
  Choose(window, 1);
  Click(window, "cmdOK");
  EXPECT_FALSE(TheSoundCard()->Opened());
  Click(window, "cmdBack");
  EXPECT_TRUE(TheSoundCard()->Opened());
  EXPECT_EQ(platform_.midi->opened_device, 0);
  EXPECT_EQ(Global().MidiDeviceNumber, 0);
}

TEST_F(MidiSetup, ADeviceThatWentAwaySinceItWasListedIsTold) {
  auto& window = Open();
  Choose(window, 2);
  platform_.midi->device_names.removeLast();
  Click(window, "cmdOK");
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_TRUE(Boxes()[0].text.startsWith(QStringLiteral("midiOUT_Open\r\nerror 2 ")));
  EXPECT_TRUE(window.isVisible());
}

struct ModeButton {
  const char* button;
  const char* bytes;
  const char* mode;
};
constexpr ModeButton kModeButtons[] = {
    {"cmdXGReset", "f043104c00007e00f7", "XG"},
    {"cmdGMTurnOn", "f07e7f0901f7", "GM2"},
    {"cmdGSReset", "f04110421240007f0041f7", "GS"},
};

TEST_F(MidiSetup, EachModeButtonSendsItsMessageAndShowsTheMode) {
  auto& window = Open();
  for (const ModeButton& row : kModeButtons) {
    platform_.midi->sent.clear();
    Click(window, row.button);
    ASSERT_EQ(platform_.midi->sent.size(), 1U) << row.button;
    EXPECT_EQ(platform_.midi->sent[0].bytes, QByteArray::fromHex(row.bytes));
    EXPECT_EQ(FieldText(window, "txtMidiMode"), QLatin1String(row.mode));
    EXPECT_EQ(Global().MidiMode, QLatin1String(row.mode));
  }
}

TEST_F(MidiSetup, ATuneGoesOnWhileTheWindowIsOpen) {
  LoadTune();
  bool opened = false;
  QObject::connect(main_->MyTune().get(), &Tune::Ticked, main_.get(), [&] {
    if (main_->MyTune()->BarNumber() != 2 || opened) return;
    opened = true;
    EXPECT_TRUE(Open().isModal());
  });
  Bar().Play();
  EXPECT_TRUE(opened);
  EXPECT_EQ(PitchesOn().size(), 12U);
  EXPECT_TRUE(IsShown());
}

TEST_F(MidiSetup, OKWhileATunePlaysEndsItWithNoNoteLeft) {
  LoadTune();
  bool chosen = false;
  std::size_t at_close = 0;
  QObject::connect(main_->MyTune().get(), &Tune::Ticked, main_.get(), [&] {
    if (main_->MyTune()->BarNumber() != 2 || chosen) return;
    chosen = true;
    auto& window = Open();
    Choose(window, 1);
    Click(window, "cmdOK");
    at_close = platform_.midi->sent.size();
    EXPECT_FALSE(main_->MyTune()->Playing());
  });
  Bar().Play();
  EXPECT_TRUE(chosen);
  EXPECT_TRUE(Sounding().empty());
  EXPECT_EQ(platform_.midi->opened_device, 1);
  // The old device falls silent while it is still open.
  const auto& sent = platform_.midi->sent;
  const auto closing = std::find_if(sent.begin(), sent.end(), [](const SentMessage& message) {
    return message.kind == SentMessage::Kind::kClose;
  });
  ASSERT_NE(closing, sent.end());
  const auto last_reset =
      std::find_if(std::make_reverse_iterator(closing), sent.rend(),
                   [](const SentMessage& message) { return message.kind == SentMessage::Kind::kReset; });
  ASSERT_NE(last_reset, sent.rend());
  for (auto message = last_reset.base(); message != closing; ++message)
    EXPECT_NE(message->kind, SentMessage::Kind::kShort);
  for (std::size_t i = at_close; i < sent.size(); ++i) EXPECT_NE(sent[i].kind, SentMessage::Kind::kShort);
  EXPECT_TRUE(IsEnabled(Bar(), "cmdPlay"));
}

TEST_F(MidiSetup, APathFileThatCannotBeWrittenIsToldAndTheDeviceIsInUse) {
  auto& window = Open();
  Choose(window, 1);
  QFile::remove(PathFile());
  QDir().mkdir(PathFile());
  Click(window, "cmdOK");
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kExclamation);
  EXPECT_TRUE(Boxes()[0].text.contains(PathFile()));
  EXPECT_TRUE(Boxes()[0].text.endsWith(
      QStringLiteral("The settings hold until Zelmar ends, and the next start does not know them.")));
  EXPECT_EQ(platform_.midi->opened_device, 1);
}

// --- The SoundFont ---

TEST_F(MidiSetup, TheStandardSoundFontIsShownWhereNoneWasChosen) {
  const auto& window = Open();
  ASSERT_FALSE(InstalledSoundFont().isEmpty());
  EXPECT_EQ(FieldText(window, "txtSoundFont"), InstalledSoundFont());
  EXPECT_FALSE(IsEnabled(window, "cmdStandardSoundFont"));
}

TEST_F(MidiSetup, AChosenSoundFontCountsFromOKOnAndIsKept) {
  const QString font = OtherFont();
  platform_.files->answers = {font};
  auto& window = Open();
  Click(window, "cmdChooseSoundFont");
  ASSERT_EQ(platform_.files->shown.size(), 1);
  EXPECT_EQ(platform_.files->shown[0].purpose, FileChoice::kOpen);
  EXPECT_EQ(platform_.files->shown[0].current, InstalledSoundFont());
  EXPECT_EQ(FieldText(window, "txtSoundFont"), font);
  EXPECT_EQ(SoundFontInUse(), InstalledSoundFont());
  const QByteArray before = BytesOf(PathFile());
  Click(window, "cmdOK");
  EXPECT_EQ(SoundFontInUse(), font);
  EXPECT_EQ(BytesOf(PathFile()).count('\n'), before.count('\n'));
  LetClosedWindowsGo();
  EXPECT_EQ(FieldText(Open(), "txtSoundFont"), font);
}

TEST_F(MidiSetup, BackForgetsAChosenSoundFont) {
  platform_.files->answers = {OtherFont()};
  auto& window = Open();
  Click(window, "cmdChooseSoundFont");
  Click(window, "cmdBack");
  EXPECT_EQ(SoundFontInUse(), InstalledSoundFont());
}

TEST_F(MidiSetup, TheWayBackToTheStandardSoundFont) {
  SetChosenSoundFont(OtherFont());
  auto& window = Open();
  EXPECT_EQ(FieldText(window, "txtSoundFont"), OtherFont());
  Click(window, "cmdStandardSoundFont");
  EXPECT_EQ(FieldText(window, "txtSoundFont"), InstalledSoundFont());
  EXPECT_EQ(SoundFontInUse(), OtherFont());
  Click(window, "cmdOK");
  EXPECT_EQ(SoundFontInUse(), InstalledSoundFont());
  EXPECT_EQ(ChosenSoundFont(), QString());
}

TEST_F(MidiSetup, ASoundFontThatIsNotChosenAfterAllChangesNothing) {
  auto& window = Open();
  Click(window, "cmdChooseSoundFont");
  EXPECT_EQ(FieldText(window, "txtSoundFont"), InstalledSoundFont());
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(MidiSetup, AFileThatIsNotASoundFontIsToldAndTheOldOneStays) {
  const QString other = In(QStringLiteral("letter.sf2"));
  WriteBytes(other, QByteArray(5000, 'x'));
  platform_.files->answers = {other};
  auto& window = Open();
  Click(window, "cmdChooseSoundFont");
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("SoundFont not changed"));
  EXPECT_EQ(Boxes()[0].text,
            QStringLiteral("The file \"%1\" is not a SoundFont. The instruments stay those of \"%2\".")
                .arg(other, InstalledSoundFont()));
  EXPECT_EQ(FieldText(window, "txtSoundFont"), InstalledSoundFont());
  Click(window, "cmdOK");
  EXPECT_EQ(SoundFontInUse(), InstalledSoundFont());
}

TEST_F(MidiSetup, AChosenSoundFontThatIsGoneGivesWayToTheStandardOne) {
  SetChosenSoundFont(In(QStringLiteral("gone.sf2")));
  const auto& window = Open();
  EXPECT_EQ(FieldText(window, "txtSoundFont"), InstalledSoundFont());
  EXPECT_TRUE(IsEnabled(window, "cmdStandardSoundFont"));
}

// --- What is kept although no device opens ---

TEST_F(MidiSetup, ADeviceThatFailsTakesNothingFromTickAndSoundFont) {
  platform_.midi->open_results = {MidiOutput::kNotEnabled};
  const QString font = OtherFont();
  platform_.files->answers = {font};
  const QByteArray before = BytesOf(PathFile());
  auto& window = Open();
  Find<QCheckBox>(window, "chkSupressBank").setChecked(true);
  Click(window, "cmdChooseSoundFont");
  Click(window, "cmdOK");
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(Boxes().size(), 1);
  EXPECT_TRUE(KeptBankSuppression());
  EXPECT_EQ(SoundFontInUse(), font);
  EXPECT_EQ(BytesOf(PathFile()), before);

  // They stay kept when the window is left, and are in use.
  Click(window, "cmdBack");
  EXPECT_TRUE(Global().SuppressBankMessages);
  EXPECT_TRUE(KeptBankSuppression());
  EXPECT_EQ(SoundFontInUse(), font);
}

TEST_F(MidiSetup, WithoutDevicesOKKeepsTickAndSoundFontQuietly) {
  platform_.midi->device_names.clear();
  const QString font = OtherFont();
  platform_.files->answers = {font};
  auto& window = Open();
  Find<QCheckBox>(window, "chkSupressBank").setChecked(true);
  Click(window, "cmdChooseSoundFont");
  Click(window, "cmdOK");
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_TRUE(platform_.midi->sent.empty());
  EXPECT_TRUE(Global().SuppressBankMessages);
  EXPECT_TRUE(KeptBankSuppression());
  EXPECT_EQ(SoundFontInUse(), font);
}

TEST_F(MidiSetup, ATickThatIsTakenBackAfterAFailureIsTakenBack) {
  platform_.midi->open_results = {MidiOutput::kNotEnabled};
  auto& window = Open();
  auto& tick = Find<QCheckBox>(window, "chkSupressBank");
  tick.setChecked(true);
  Click(window, "cmdOK");
  tick.setChecked(false);
  Choose(window, 1);
  Click(window, "cmdOK");
  EXPECT_FALSE(Global().SuppressBankMessages);
  EXPECT_FALSE(KeptBankSuppression());
  EXPECT_EQ(platform_.midi->opened_device, 1);
}

TEST_F(MidiSetup, AFailedDeviceAndATickThatCannotBeSavedAreBothTold) {
  platform_.midi->open_results = {MidiOutput::kNotEnabled};
  auto& window = Open();
  Find<QCheckBox>(window, "chkSupressBank").setChecked(true);
  QFile::remove(In(QStringLiteral("Zelmar.ini")));
  QDir().mkdir(In(QStringLiteral("Zelmar.ini")));
  Click(window, "cmdOK");
  ASSERT_EQ(Boxes().size(), 2);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("Settings not saved"));
  EXPECT_TRUE(Boxes()[1].text.startsWith(QStringLiteral("midiOUT_Open")));
}

}  // namespace
}  // namespace zelmar
