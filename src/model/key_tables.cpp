#include "model/key_tables.h"

#include "platform/failure.h"

namespace zelmar {

std::array<std::int16_t, kKeyNameCount> MajorKeySharps{};
std::array<std::int16_t, kKeyNameCount> MinorKeySharps{};
std::array<QString, kKeyNameCount> MajorKeyNames;
std::array<QString, kKeyNameCount> MinorKeyNames;
std::array<QString, 135> ControllerNames;

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
  int code;
  const char* name;
};

constexpr ControllerRow kControllers[] = {
    {0, "BANK_SELECT_MSB_0"},
    {1, "MOD WHEEL"},
    {2, "BREATH_CONTROLLER"},
    {4, "FOOT_CONTROLLER"},
    {5, "PORTAMENTO_TIME"},
    {7, "MAIN_VOLUME"},
    {8, "BALANCE"},
    {10, "PAN"},
    {11, "EXPRESS_CONTROLLER"},
    {32, "BANK_SELECT_LSB_32"},
    {64, "DAMPER_PEDAL"},
    {65, "PORTAMENTO"},
    {66, "SOSTENUTO"},
    {67, "SOFT_PEDAL"},
    {69, "HOLD_2"},
    {84, "PORTAMENTO_CONTROL"},
    {91, "EXTERNAL_FX_DEPTH"},
    {92, "TREMELO_DEPTH"},
    {93, "CHORUS_DEPTH"},
    {94, "DETUNE_DEPTH"},
    {95, "PHASER_DEPTH"},
    {96, "DATA_INCREMENT"},
    {97, "DATA_DECREMENT"},
    {120, "ALL_SOUNDS_OFF"},
    {121, "RESET_ALL_CONTROLLERS"},
    {123, "ALL_NOTES_OFF"},
    {128, "MUSIC_NOTE"},
    {129, "POLY_KEY_PRESSURE"},
    {130, "CHANNEL_PRESSURE"},
    {131, "PITCH_BEND"},
    {132, "DUMMY_NOTE"},
    {133, "TEMPO_CHANGE"},
    {134, "MUSIC_NOTE_OFF"},
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
