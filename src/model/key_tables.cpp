#include "model/key_tables.h"

#include "platform/failure.h"

namespace zelmar {

std::array<std::int16_t, kKeyNameCount> MajorKeySharps{};
std::array<std::int16_t, kKeyNameCount> MinorKeySharps{};
std::array<QString, kKeyNameCount> MajorKeyNames;
std::array<QString, kKeyNameCount> MinorKeyNames;
std::array<QString, kEventTypeCount> ControllerNames;

namespace {

struct KeyRow {
  const char* name;
  std::int16_t major;
  std::int16_t minor;
};

constexpr KeyRow kKeys[kKeyNameCount] = {
    {"C", 0, -3},   {"C#", 7, 4},          {"Db", -5, kNoSuchKey}, {"D", 2, -1}, {"D#", kNoSuchKey, 6},
    {"Eb", -3, -6}, {"E", 4, 1},           {"F", -1, -4},          {"F#", 6, 3}, {"Gb", -6, kNoSuchKey},
    {"G", 1, -2},   {"G#", kNoSuchKey, 5}, {"Ab", -4, -7},         {"A", 3, 0},  {"A#", kNoSuchKey, 7},
    {"Bb", -2, -5}, {"B", 5, 2},           {"Cb", -7, kNoSuchKey},
};

struct ControllerRow {
  EventType code;
  const char* name;
};

constexpr ControllerRow kControllers[] = {
    {BANK_SELECT_MSB_0, "BANK_SELECT_MSB_0"},
    {MOD_WHEEL, "MOD WHEEL"},
    {BREATH_CONTROLLER, "BREATH_CONTROLLER"},
    {FOOT_CONTROLLER, "FOOT_CONTROLLER"},
    {PORTAMENTO_TIME, "PORTAMENTO_TIME"},
    {MAIN_VOLUME, "MAIN_VOLUME"},
    {BALANCE, "BALANCE"},
    {PAN, "PAN"},
    {EXPRESS_CONTROLLER, "EXPRESS_CONTROLLER"},
    {BANK_SELECT_LSB_32, "BANK_SELECT_LSB_32"},
    {DAMPER_PEDAL, "DAMPER_PEDAL"},
    {PORTAMENTO, "PORTAMENTO"},
    {SOSTENUTO, "SOSTENUTO"},
    {SOFT_PEDAL, "SOFT_PEDAL"},
    {HOLD_2, "HOLD_2"},
    {PORTAMENTO_CONTROL, "PORTAMENTO_CONTROL"},
    {EXTERNAL_FX_DEPTH, "EXTERNAL_FX_DEPTH"},
    {TREMELO_DEPTH, "TREMELO_DEPTH"},
    {CHORUS_DEPTH, "CHORUS_DEPTH"},
    {DETUNE_DEPTH, "DETUNE_DEPTH"},
    {PHASER_DEPTH, "PHASER_DEPTH"},
    {DATA_INCREMENT, "DATA_INCREMENT"},
    {DATA_DECREMENT, "DATA_DECREMENT"},
    {ALL_SOUNDS_OFF, "ALL_SOUNDS_OFF"},
    {RESET_ALL_CONTROLLERS, "RESET_ALL_CONTROLLERS"},
    {ALL_NOTES_OFF, "ALL_NOTES_OFF"},
    {MUSIC_NOTE, "MUSIC_NOTE"},
    {POLY_KEY_PRESSURE, "POLY_KEY_PRESSURE"},
    {CHANNEL_PRESSURE, "CHANNEL_PRESSURE"},
    {PITCH_BEND, "PITCH_BEND"},
    {DUMMY_NOTE, "DUMMY_NOTE"},
    {TEMPO_CHANGE, "TEMPO_CHANGE"},
    {MUSIC_NOTE_OFF, "MUSIC_NOTE_OFF"},
};

}  // namespace

void LoadPitchNameTables() {
  for (std::size_t i = 0; i < kKeyNameCount; ++i) {
    MajorKeyNames[i] = MinorKeyNames[i] = QString::fromLatin1(kKeys[i].name);
    MajorKeySharps[i] = kKeys[i].major;
    MinorKeySharps[i] = kKeys[i].minor;
  }
}

void LoadControllerNames() {
  ControllerNames.fill({});
  for (const ControllerRow& row : kControllers)
    ControllerNames[static_cast<std::size_t>(row.code)] = QString::fromLatin1(row.name);
}

QString KeyNameFromSharps(std::int16_t sharps, std::uint8_t minor) {
  const auto& signatures = minor != 0 ? MinorKeySharps : MajorKeySharps;
  const auto& names = minor != 0 ? MinorKeyNames : MajorKeyNames;
  for (std::size_t i = 0; i < kKeyNameCount; ++i)
    if (signatures[i] == sharps) return names[i];
  throw SubscriptError();
}

}  // namespace zelmar
