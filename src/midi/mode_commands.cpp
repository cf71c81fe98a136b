#include "midi/mode_commands.h"

#include <array>
#include <cstdint>

#include "midi/quil_sounds_module.h"
#include "model/globals.h"
#include "model/main_window_link.h"
#include "store/reference_tables.h"

namespace zelmar {

namespace {

constexpr int kChannelCount = 16;

struct ControllerSetting {
  std::uint8_t controller;
  std::int32_t value;
};

// In the order of sending. The shorter resets are beginnings of this list.
constexpr std::array<ControllerSetting, 9> kResetSettings = {{
    {121, 0},   // all controllers
    {93, 0},    // chorus
    {91, 0},    // reverb
    {7, 127},   // volume
    {10, 64},   // pan
    {1, 0},     // modulation
    {11, 127},  // expression
    {64, 0},    // damper pedal
    {65, 0},    // portamento
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
