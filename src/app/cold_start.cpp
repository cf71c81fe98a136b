#include "app/cold_start.h"

#include <QApplication>
#include <QDir>
#include <QSqlDatabase>
#include <QStringList>
#include <QTimer>

#include "app/frm_front.h"
#include "app/frm_splash.h"
#include "app/mdi_parent.h"
#include "midi/bank_messages.h"
#include "midi/mode_commands.h"
#include "midi/play_from_now.h"
#include "midi/sound_card.h"
#include "model/globals.h"
#include "model/path_file.h"
#include "model/tune.h"
#include "platform/failure.h"
#include "platform/ignoring_failures.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "shell/loaded_forms.h"
#include "shell/window_menu.h"
#include "store/database_info.h"
#include "store/reference_tables.h"

namespace zelmar {

namespace {

constexpr std::int16_t kStartUpTempo = 450;
constexpr std::uint8_t kStartUpInstrument = 40;
constexpr std::uint8_t kStartUpVolume = 127;
constexpr std::uint8_t kStartUpChannel = 1;
constexpr std::int16_t kUnknownDevice = 2;

std::shared_ptr<Tune> StartUpTune() {
  const auto tune = std::make_shared<Tune>();
  tune->SetBeatsPerBar(4);
  tune->SetBeatLength(4);
  tune->SetTempo(kStartUpTempo);
  const QStringList pitches = {QStringLiteral("E5"), QStringLiteral("D5"), QStringLiteral("C5"),
                               QStringLiteral("E5"), QStringLiteral("G5"), QStringLiteral("A5"),
                               QStringLiteral("G5")};
  tune->CreateMelody(kStartUpInstrument, kStartUpVolume, kStartUpChannel, pitches);
  tune->CalcNotesOff();
  return tune;
}

void OpenOutput() {
  std::int16_t result = 0;
  TheSoundCard()->OpenCard(Global().MidiDeviceNumber, result);
  if (result != kUnknownDevice) return;
  Global().MidiDeviceNumber = 0;
  TheSoundCard()->OpenCard(Global().MidiDeviceNumber, result);
}

// False when the settings cannot be read.
bool ReadSettings() {
  const QString path = ApplicationDirectory() + QLatin1Char('/') + kPathFileName;
  try {
    ReadPathFileIntoGlobals(path);
    Global().SuppressBankMessages = KeptBankSuppression();
    return true;
  } catch (const Failure& failure) {
    ShowMessage(MessageIcon::kCritical,
                QStringLiteral("Zelmar cannot start without its settings. ") + failure.Description());
    return false;
  }
}

// The engine behind the tune database is a plug-in, which is loaded with its first connection.
void LoadDatabaseEngine() {
  const QString name = QStringLiteral("engine");
  QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
  QSqlDatabase::removeDatabase(name);
}

// Has fonts, styles and the front page's drawings made once while the tune plays, so that they are ready when
// the main window asks for them.
void WarmUp() {
  FrmFront page;
  page.resize(1000, 690);
  page.grab();
}

}  // namespace

StartResult ColdStart() {
  StartResult start;
  auto splash = std::make_unique<FrmSplash>();
  splash->show();
  splash->repaint();

  Globals& globals = Global();
  globals.MidiDeviceNumber = 0;
  globals.MidiDeviceName = QStringLiteral("First output device after midi mapper");
  QDir::setCurrent(ApplicationDirectory());
  globals.HelpPath = ApplicationDirectory() + QStringLiteral("\\Help");
  globals.HelpFile = globals.HelpPath + QStringLiteral("\\ZelmarHelp\\ZelmarHelp.chm");
  if (!ReadSettings()) return start;

  // From here on a step that fails is passed over and the start goes on.
  TheSoundCard() = std::make_shared<SoundCard>();
  std::shared_ptr<Tune> tune;
  IgnoringFailures([&tune] { tune = StartUpTune(); });
  // The synthesiser still loads: what needs no sound is made ready meanwhile.
  IgnoringFailures(LoadDatabaseEngine);
  start.main_window = std::make_unique<MDIParent>();
  IgnoringFailures(OpenOutput);
  IgnoringFailures(ServeEvents);
  IgnoringFailures(StartModeCommand);
  IgnoringFailures([] { ResetChannels(ChannelReset::kStart); });
  const double before_tune = SecondsSinceMidnight();
  QTimer::singleShot(0, qApp, [] { IgnoringFailures(WarmUp); });
  IgnoringFailures([&tune] {
    if (!tune) return;
    PlayFromNow(*tune);
  });
  start.tune_seconds = SecondsSinceMidnight() - before_tune;
  IgnoringFailures(ServeEvents);
  IgnoringFailures([&start] { start.main_window->Load(); });
  tune.reset();
  if (!globals.DatabaseFailed) {
    IgnoringFailures([] { FindDBInfo(); });
    IgnoringFailures([] { RebuildWindowMenu(); });
    IgnoringFailures([] { LoadInstrumentTable(); });
    IgnoringFailures([] { LoadToneBank(); });
  }
  start.main_window->show();
  splash.reset();
  return start;
}

}  // namespace zelmar
