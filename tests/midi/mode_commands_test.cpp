// The mode commands and the resets of the channels: what is sent, in which order, and what follows from it.
#include "midi/mode_commands.h"

#include <gtest/gtest.h>

#include "model/globals.h"
#include "model/main_window_link.h"
#include "support/sample_database.h"
#include "support/scripted_services.h"

namespace zelmar {
namespace {

using testing_support::SampleDatabase;
using testing_support::ScriptedPlatform;
using testing_support::SentMessage;

// Notes what was done before and after it is woken.
class WatchingLink : public MainWindowLink {
 public:
  explicit WatchingLink(const ScriptedPlatform& platform) : platform_(platform) {}
  void WakeUpPlayBar() override {
    modes_seen.append(Global().MidiMode);
    messages_before.append(static_cast<int>(platform_.midi->sent.size()));
    banks_before.append(Global().TheToneBanks->Count());
  }

  QStringList modes_seen;
  QList<int> messages_before;
  QList<qsizetype> banks_before;

 private:
  const ScriptedPlatform& platform_;
};

class ModeCommands : public ::testing::Test {
 protected:
  ModeCommands() : link_(platform_) {
    SetMainWindowLink(&link_);
    const auto row = [](const char* name) { return QVariantList{4, 8, 0, QString::fromLatin1(name)}; };
    database_.AddRow(QStringLiteral("tblGM2ToneBank"), row("Tremolo"));
    database_.AddRow(QStringLiteral("tblGSToneBank"), row("Square"));
    database_.AddRow(QStringLiteral("tblXGToneBank"), row("Chorused"));
  }

  QByteArray OnlyMessage() const {
    EXPECT_EQ(platform_.midi->sent.size(), 1U);
    if (platform_.midi->sent.empty()) return {};
    EXPECT_EQ(platform_.midi->sent[0].kind, SentMessage::Kind::kLong);
    return platform_.midi->sent[0].bytes.toHex(' ');
  }

  QString OnlyBank() const {
    EXPECT_EQ(Global().TheToneBanks->Count(), 1);
    return Global().TheToneBanks->Count() == 1 ? Global().TheToneBanks->Item(1)->BankName() : QString();
  }

  ScriptedPlatform platform_;
  SampleDatabase database_;
  WatchingLink link_;
};

constexpr const char* kGmBytes = "f0 7e 7f 09 01 f7";
constexpr const char* kGsBytes = "f0 41 10 42 12 40 00 7f 00 41 f7";
constexpr const char* kXgBytes = "f0 43 10 4c 00 00 7e 00 f7";

TEST_F(ModeCommands, GmSendsGeneralMidiOnAndStoresGm2) {
  GMModeCommand();
  EXPECT_EQ(OnlyMessage(), kGmBytes);
  EXPECT_EQ(Global().MidiMode, QStringLiteral("GM2"));
  EXPECT_EQ(OnlyBank(), QStringLiteral("Tremolo"));
}

TEST_F(ModeCommands, GsSendsTheGsReset) {
  GSModeCommand();
  EXPECT_EQ(OnlyMessage(), kGsBytes);
  EXPECT_EQ(Global().MidiMode, QStringLiteral("GS"));
  EXPECT_EQ(OnlyBank(), QStringLiteral("Square"));
}

TEST_F(ModeCommands, XgSendsTheXgReset) {
  XGModeCommand();
  EXPECT_EQ(OnlyMessage(), kXgBytes);
  EXPECT_EQ(Global().MidiMode, QStringLiteral("XG"));
  EXPECT_EQ(OnlyBank(), QStringLiteral("Chorused"));
}

TEST_F(ModeCommands, TheTransportBarWakesBetweenTheModeAndTheToneBank) {
  GSModeCommand();
  XGModeCommand();
  EXPECT_EQ(link_.modes_seen, (QStringList{QStringLiteral("GS"), QStringLiteral("XG")}));
  EXPECT_EQ(link_.messages_before, (QList<int>{1, 2}));
  EXPECT_EQ(link_.banks_before[0], 0);
}

TEST_F(ModeCommands, AToneBankIsReplacedAndNotAddedTo) {
  GSModeCommand();
  GSModeCommand();
  EXPECT_EQ(OnlyBank(), QStringLiteral("Square"));
}

TEST_F(ModeCommands, TheSameModeIsSentAgainForGmGsAndXg) {
  const QList<std::pair<const char*, const char*>> cases = {
      {"GM", kGmBytes}, {"GS", kGsBytes}, {"XG", kXgBytes}};
  for (const auto& [mode, bytes] : cases) {
    platform_.midi->sent.clear();
    Global().MidiMode = QString::fromLatin1(mode);
    RepeatModeCommand();
    EXPECT_EQ(OnlyMessage(), bytes) << mode;
  }
}

TEST_F(ModeCommands, AfterTheGmCommandNothingIsSentAgain) {
  GMModeCommand();
  platform_.midi->sent.clear();
  RepeatModeCommand();
  EXPECT_TRUE(platform_.midi->sent.empty());
  EXPECT_EQ(Global().MidiMode, QStringLiteral("GM2"));
  EXPECT_EQ(link_.modes_seen.size(), 1);
}

TEST_F(ModeCommands, AnUnknownModeIsNotSentAgain) {
  for (const char* const mode : {"", "gm", "gs", "MT32"}) {
    Global().MidiMode = QString::fromLatin1(mode);
    RepeatModeCommand();
  }
  EXPECT_TRUE(platform_.midi->sent.empty());
}

TEST_F(ModeCommands, TheStartTurnsEveryOtherModeIntoGm2) {
  const QList<std::array<const char*, 3>> cases = {{"XG", kXgBytes, "XG"},  {"GS", kGsBytes, "GS"},
                                                   {"GM", kGmBytes, "GM2"}, {"GM2", kGmBytes, "GM2"},
                                                   {"", kGmBytes, "GM2"},   {"xg", kGmBytes, "GM2"}};
  for (const auto& [mode, bytes, stored] : cases) {
    platform_.midi->sent.clear();
    Global().MidiMode = QString::fromLatin1(mode);
    StartModeCommand();
    EXPECT_EQ(OnlyMessage(), bytes) << mode;
    EXPECT_EQ(Global().MidiMode, QString::fromLatin1(stored)) << mode;
  }
}

using Settings = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

std::vector<std::uint32_t> OnAllChannels(const Settings& settings) {
  std::vector<std::uint32_t> words;
  for (std::uint32_t channel = 0; channel < 16; ++channel)
    for (const auto& [controller, value] : settings)
      words.push_back((0xB0U + channel) | (controller << 8U) | (value << 16U));
  return words;
}

TEST_F(ModeCommands, TheStartResetSetsSixControllersChannelByChannel) {
  ResetChannels(ChannelReset::kStart);
  EXPECT_EQ(platform_.midi->ShortMessages(),
            OnAllChannels({{121, 0}, {93, 0}, {91, 0}, {7, 127}, {10, 64}, {1, 0}}));
}

TEST_F(ModeCommands, TheResetAfterALoadLeavesModulationAlone) {
  ResetChannels(ChannelReset::kAfterLoad);
  EXPECT_EQ(platform_.midi->ShortMessages(), OnAllChannels({{121, 0}, {93, 0}, {91, 0}, {7, 127}, {10, 64}}));
}

TEST_F(ModeCommands, TheControllersResetSetsNine) {
  ResetChannels(ChannelReset::kControllers);
  EXPECT_EQ(
      platform_.midi->ShortMessages(),
      OnAllChannels({{121, 0}, {93, 0}, {91, 0}, {7, 127}, {10, 64}, {1, 0}, {11, 127}, {64, 0}, {65, 0}}));
}

TEST_F(ModeCommands, ResetsAreTheSameWhileBankMessagesAreDropped) {
  Global().SuppressBankMessages = true;
  ResetChannels(ChannelReset::kStart);
  EXPECT_EQ(platform_.midi->ShortMessages().size(), 96U);
}

}  // namespace
}  // namespace zelmar
