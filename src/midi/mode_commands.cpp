#include "midi/mode_commands.h"

#include <array>
#include <cstdint>

#include "midi/midi_numbers.h"
#include "midi/quil_sounds_module.h"
#include "model/event_type.h"
#include "model/globals.h"
#include "model/main_window_link.h"
#include "store/reference_tables.h"

namespace zelmar {

namespace {

struct ControllerSetting {
  std::uint8_t controller;
  std::int32_t value;
};

// In the order of sending. The shorter resets are beginnings of this list.
constexpr std::array<ControllerSetting, 9> kResetSettings = {{
    {RESET_ALL_CONTROLLERS, 0},
    {CHORUS_DEPTH, 0},
    {EXTERNAL_FX_DEPTH, 0},
    {MAIN_VOLUME, kHighestData},
    {PAN, kMiddleData},
    {MOD_WHEEL, 0},
    {EXPRESS_CONTROLLER, kHighestData},
    {DAMPER_PEDAL, 0},
    {PORTAMENTO, 0},
}};

std::size_t LengthOf(ChannelReset reset) {
  switch (reset) {
    case ChannelReset::kAfterLoad:
      return 5;
    case ChannelReset::kStart:
      return 6;
    case ChannelReset::kControllers:
      break;
  }
  return kResetSettings.size();
}

void ModeCommand(const QString& message, const QString& mode) {
  SendSystemExclusive(message);
  Global().MidiMode = mode;
  TheMainWindow().WakeUpPlayBar();
  LoadToneBank();
}

}  // namespace

void GMModeCommand() {
  ModeCommand(GMModeMessage(), QStringLiteral("GM2"));
}

void GSModeCommand() {
  ModeCommand(GSModeMessage(), QStringLiteral("GS"));
}

void XGModeCommand() {
  ModeCommand(XGModeMessage(), QStringLiteral("XG"));
}

void RepeatModeCommand() {
  const QString mode = Global().MidiMode;
  if (mode == QLatin1String("GM")) GMModeCommand();
  if (mode == QLatin1String("XG")) XGModeCommand();
  if (mode == QLatin1String("GS")) GSModeCommand();
}

void StartModeCommand() {
  const QString mode = Global().MidiMode;
  if (mode == QLatin1String("XG"))
    XGModeCommand();
  else if (mode == QLatin1String("GS"))
    GSModeCommand();
  else
    GMModeCommand();
}

void ResetChannels(ChannelReset reset) {
  const std::size_t length = LengthOf(reset);
  for (int channel = 1; channel <= kChannelCount; ++channel) {
    for (std::size_t i = 0; i < length; ++i)
      SendController(kResetSettings[i].controller, channel, kResetSettings[i].value);
  }
}

}  // namespace zelmar
