#include "model/globals.h"

#include <gtest/gtest.h>

#include "model/key_tables.h"
#include "platform/failure.h"
#include "support/scripted_services.h"

namespace zelmar {
namespace {

using testing_support::ScriptedPlatform;

TEST(Globals, StartEmpty) {
  const ScriptedPlatform platform;
  EXPECT_EQ(Global().MidiDeviceNumber, 0);
  EXPECT_TRUE(Global().MidiMode.isEmpty());
  EXPECT_FALSE(Global().TuneLoadedFlag);
  EXPECT_FALSE(Global().DatabaseFailed);
  EXPECT_FALSE(Global().MediaPlayerInstalled);
  EXPECT_TRUE(Global().RecentCodeNames[0].isEmpty());
  EXPECT_EQ(Global().TheToneBanks->Count(), 0);
  EXPECT_EQ(Global().InstrumentNames.size(), 129U);
}

TEST(AddRecentTune, PutsTheNewestFirstAndDropsTheSeventh) {
  const ScriptedPlatform platform;
  for (int i = 1; i <= 7; ++i) AddRecentTune(QString::number(i), QStringLiteral("tune %1").arg(i));
  EXPECT_EQ(Global().RecentCodeNames[0], QStringLiteral("7"));
  EXPECT_EQ(Global().RecentCaptions[0], QStringLiteral("tune 7"));
  EXPECT_EQ(Global().RecentCodeNames[5], QStringLiteral("2"));
}

TEST(AddRecentTune, AnEntryOfTheListItselfMayBeAddedAgain) {
  const ScriptedPlatform platform;
  for (int i = 1; i <= 4; ++i) AddRecentTune(QString::number(i), QStringLiteral("tune %1").arg(i));
  AddRecentTune(Global().RecentCodeNames[2], Global().RecentCaptions[2]);
  EXPECT_EQ(Global().RecentCodeNames[0], QStringLiteral("2"));
  EXPECT_EQ(Global().RecentCaptions[0], QStringLiteral("tune 2"));
}

TEST(AddRecentTune, ATuneAtTheHeadGivesTwoEntries) {
  const ScriptedPlatform platform;
  AddRecentTune(QStringLiteral("a"), QStringLiteral("A"));
  AddRecentTune(QStringLiteral("a"), QStringLiteral("A"));
  EXPECT_EQ(Global().RecentCodeNames[0], QStringLiteral("a"));
  EXPECT_EQ(Global().RecentCodeNames[1], QStringLiteral("a"));
  EXPECT_TRUE(Global().RecentCodeNames[2].isEmpty());
}

TEST(SmallTexts, CapitaliseFirstKeepsFirstAndLast) {
  EXPECT_EQ(CapitaliseFirst(QStringLiteral("a")), QStringLiteral("A"));
  EXPECT_EQ(CapitaliseFirst(QStringLiteral("bb")), QStringLiteral("Bb"));
  EXPECT_EQ(CapitaliseFirst(QStringLiteral("f#m")), QStringLiteral("Fm"));
  EXPECT_EQ(CapitaliseFirst(QString()), QString());
}

TEST(SmallTexts, BlanksToUnderscoresReplacesTwo) {
  EXPECT_EQ(BlanksToUnderscores(QStringLiteral("a b c d")), QStringLiteral("a_b_c d"));
  EXPECT_EQ(BlanksToUnderscores(QStringLiteral("ab")), QStringLiteral("ab"));
  EXPECT_EQ(BlanksToUnderscores(QStringLiteral("  ")), QStringLiteral("__"));
}

TEST(SmallNumbers, SmallerOf) {
  EXPECT_EQ(SmallerOf(1, 2), 1);
  EXPECT_EQ(SmallerOf(2, -1), -1);
  EXPECT_EQ(SmallerOf(3, 3), 3);
}

TEST(KeyTables, HoldEveryKey) {
  LoadPitchNameTables();
  const struct {
    const char* name;
    int major, minor;
  } rows[] = {{"C", 0, -3},   {"C#", 7, 4},  {"Db", -5, 99}, {"D", 2, -1},   {"D#", 99, 6}, {"Eb", -3, -6},
              {"E", 4, 1},    {"F", -1, -4}, {"F#", 6, 3},   {"Gb", -6, 99}, {"G", 1, -2},  {"G#", 99, 5},
              {"Ab", -4, -7}, {"A", 3, 0},   {"A#", 99, 7},  {"Bb", -2, -5}, {"B", 5, 2},   {"Cb", -7, 99}};
  for (std::size_t i = 0; i < 18; ++i) {
    EXPECT_EQ(MajorKeyNames[i], QString::fromLatin1(rows[i].name));
    EXPECT_EQ(MinorKeyNames[i], MajorKeyNames[i]);
    EXPECT_EQ(MajorKeySharps[i], rows[i].major);
    EXPECT_EQ(MinorKeySharps[i], rows[i].minor);
  }
}

TEST(KeyTables, NameTheKeyOfASignature) {
  LoadPitchNameTables();
  EXPECT_EQ(KeyNameFromSharps(0, 0), QStringLiteral("C"));
  EXPECT_EQ(KeyNameFromSharps(0, 1), QStringLiteral("A"));
  EXPECT_EQ(KeyNameFromSharps(-7, 0), QStringLiteral("Cb"));
  EXPECT_EQ(KeyNameFromSharps(-7, 1), QStringLiteral("Ab"));
  EXPECT_EQ(KeyNameFromSharps(99, 1), QStringLiteral("Db"));
  EXPECT_THROW(KeyNameFromSharps(8, 0), SubscriptError);
}

TEST(KeyTables, NameTheEventTypes) {
  LoadControllerNames();
  const struct {
    std::size_t code;
    const char* name;
  } rows[] = {{0, "BANK_SELECT_MSB_0"},
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
              {134, "MUSIC_NOTE_OFF"}};
  std::size_t named = 0;
  for (const auto& row : rows) EXPECT_EQ(ControllerNames[row.code], QString::fromLatin1(row.name));
  for (const QString& name : ControllerNames) named += !name.isEmpty();
  EXPECT_EQ(named, std::size(rows));
}

}  // namespace
}  // namespace zelmar
