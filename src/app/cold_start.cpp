#include "app/cold_start.h"

#include <QApplication>
#include <QDir>
#include <QStringList>
#include <QTimer>

#include "app/card_button.h"
#include "app/frm_splash.h"
#include "app/mdi_parent.h"
#include "midi/mode_commands.h"
#include "midi/sound_card.h"
#include "midi/widgets/play_bar.h"
#include "model/globals.h"
#include "model/path_file.h"
#include "model/tune.h"
#include "platform/failure.h"
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

// Once the settings are read, a step that fails is passed over and the start goes on.
template <typename Step>
void Guarded(Step step) {
  try {
    step();
  } catch (const std::exception&) {
  }
}

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
    return true;
  } catch (const Failure& failure) {
    ShowMessage(MessageIcon::kCritical,
                QStringLiteral("Zelmar cannot start without its settings. ") + failure.Description());
    return false;
  }
}

// Has fonts, icons and styles loaded and drawn once while the tune plays, so that the main window finds them
// ready.
void WarmUp() {
  PlayBar bar;
  bar.resize(1000, 120);
  bar.grab();
  CardButton card(QStringLiteral("note"), QStringLiteral("Zelmar"), QStringLiteral("Zelmar"), nullptr);
  card.grab();
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

  TheSoundCard() = std::make_shared<SoundCard>();
  std::shared_ptr<Tune> tune;
  Guarded([&tune] { tune = StartUpTune(); });
  Guarded(OpenOutput);
  Guarded(ServeEvents);
  Guarded(StartModeCommand);
  Guarded([] { ResetChannels(ChannelReset::kStart); });
  const double before_tune = SecondsSinceMidnight();
  QTimer::singleShot(0, qApp, [] { Guarded(WarmUp); });
  Guarded([&tune] {
    if (!tune) return;
    tune->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
    tune->Play();
  });
  start.tune_seconds = SecondsSinceMidnight() - before_tune;
  Guarded(ServeEvents);
  start.main_window = std::make_unique<MDIParent>();
  Guarded([&start] { start.main_window->Load(); });
  tune.reset();
  if (!globals.DatabaseFailed) {
    Guarded([] { FindDBInfo(); });
    Guarded([] { RebuildWindowMenu(); });
    Guarded([] { LoadInstrumentTable(); });
    Guarded([] { LoadToneBank(); });
  }
  start.main_window->show();
  return start;
}

}  // namespace zelmar
