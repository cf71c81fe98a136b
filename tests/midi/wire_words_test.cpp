// The word that each message puts on the wire, over all its values.
#include <gtest/gtest.h>

#include "midi/mode_commands.h"
#include "midi/quil_sounds_module.h"
#include "midi/sound_card.h"
#include "model/globals.h"
#include "model/tone.h"
#include "platform/failure.h"
#include "support/scripted_services.h"

namespace zelmar {
namespace {

class WireWords : public ::testing::Test {
 protected:
  std::uint32_t Only() {
    const auto words = platform_.midi->ShortMessages();
    EXPECT_EQ(words.size(), 1U);
    platform_.midi->sent.clear();
    return words.empty() ? 0 : words.back();
  }

  testing_support::ScriptedPlatform platform_;
};

TEST_F(WireWords, OfNotesControllersBendsAndPressureHoldTheirValuesBareOnEveryChannel) {
  for (std::uint32_t channel = 1; channel <= 16; ++channel)
    for (const std::uint32_t value : {0U, 1U, 63U, 64U, 100U, 127U}) {
      const auto data = static_cast<std::int32_t>(value), other = 127 - data,
                 wire = static_cast<std::int32_t>(channel);
      const auto second = static_cast<std::uint32_t>(other);
      SendNoteOn(data, wire, other);
      EXPECT_EQ(Only(), 143 + channel + value * 256 + second * 65536);
      SendController(static_cast<std::uint8_t>(value), wire, other);
      EXPECT_EQ(Only(), 175 + channel + value * 256 + second * 65536);
      SendProgramChange(data, wire);
      EXPECT_EQ(Only(), 191 + channel + value * 256);
      SendChannelPressure(wire, data);
      EXPECT_EQ(Only(), 207 + channel + value * 256);
      SendPitchBend(wire, data, other);
      EXPECT_EQ(Only(), 223 + channel + value * 256 + second * 65536);
    }
}

TEST_F(WireWords, AreThoseOfTheExamples) {
  SendNoteOn(60, 1, 100);
  EXPECT_EQ(Only(), 0x00643C90U);
  SendProgramChange(40, 10);
  EXPECT_EQ(Only(), 0x000028C9U);
  SendController(7, 5, 3);
  EXPECT_EQ(Only(), 0x000307B4U);
}

TEST_F(WireWords, HoldBackBankSelectsAlone) {
  Global().SuppressBankMessages = true;
  for (int controller = 0; controller < 128; ++controller) {
    SendController(static_cast<std::uint8_t>(controller), 3, 1);
    if (controller == 0 || controller == 32)
      EXPECT_TRUE(platform_.midi->sent.empty()) << controller;
    else
      EXPECT_EQ(Only(), static_cast<std::uint32_t>(178 + controller * 256 + 65536));
  }
}

TEST_F(WireWords, TakeNoControllerBeyondSevenBitsButAnyPitch) {
  for (const int controller : {128, 129, 255}) {
    EXPECT_THROW(SendController(static_cast<std::uint8_t>(controller), 1, 0), OverflowError);
    EXPECT_TRUE(platform_.midi->sent.empty());
  }
  SendNoteOn(128, 1, 0);
  EXPECT_EQ(Only(), 0x00008090U);
}

TEST_F(WireWords, OfATonePlayedAloneAreItsPatchAndItsNote) {
  for (std::int16_t number = 0; number < 128; ++number) {
    Tone tone;
    tone.SetNumber(number);
    tone.SetChannel(4);
    tone.SetVolume(77);
    tone.SetInstrument(33);
    tone.Play();
    EXPECT_EQ(Only(), static_cast<std::uint32_t>(0x93 + number * 256 + 77 * 65536));
    tone.SetSendPatch(true);
    tone.Play();
    const std::vector<std::uint32_t> wanted = {0x000021C3U,
                                               static_cast<std::uint32_t>(0x93 + number * 256 + 77 * 65536)};
    EXPECT_EQ(platform_.midi->ShortMessages(), wanted);
    EXPECT_TRUE(tone.SendPatch());
    platform_.midi->sent.clear();
  }
}

TEST_F(WireWords, OfASystemExclusiveMessageAreItsCharactersOneByOne) {
  QString message;
  QByteArray bytes;
  for (int byte = 0; byte < 256; ++byte) {
    message.append(QChar(byte));
    bytes.append(static_cast<char>(byte));
  }
  SendSystemExclusive(message);
  ASSERT_EQ(platform_.midi->sent.size(), 1U);
  EXPECT_EQ(platform_.midi->sent[0].bytes, bytes);
}

TEST_F(WireWords, OfTheModesAreSentAndTheModeIsKept) {
  struct Mode {
    void (*command)();
    const char* bytes;
    const char* name;
  };
  for (const Mode& mode :
       {Mode{&GMModeCommand, "F07E7F0901F7", "GM2"}, Mode{&GSModeCommand, "F04110421240007F0041F7", "GS"},
        Mode{&XGModeCommand, "F043104C00007E00F7", "XG"}}) {
    platform_.midi->sent.clear();
    mode.command();
    ASSERT_EQ(platform_.midi->sent.size(), 1U);
    EXPECT_EQ(platform_.midi->sent[0].bytes, QByteArray::fromHex(mode.bytes));
    EXPECT_EQ(Global().MidiMode, QString::fromLatin1(mode.name));
  }
}

TEST_F(WireWords, OfTheModeAreRepeatedButNotInGM2) {
  const std::pair<const char*, int> kModes[] = {{"GM", 1}, {"GS", 1}, {"XG", 1}, {"GM2", 0}, {"", 0}};
  for (const auto& [mode, count] : kModes) {
    Global().MidiMode = QString::fromLatin1(mode);
    platform_.midi->sent.clear();
    RepeatModeCommand();
    EXPECT_EQ(platform_.midi->CountOf(testing_support::SentMessage::Kind::kLong), count) << mode;
  }
}

TEST_F(WireWords, OfAControllersResetComeChannelByChannel) {
  ResetChannels(ChannelReset::kControllers);
  std::vector<std::uint32_t> wanted;
  static const int kValues[9][2] = {{121, 0}, {93, 0},   {91, 0}, {7, 127}, {10, 64},
                                    {1, 0},   {11, 127}, {64, 0}, {65, 0}};
  for (int channel = 0; channel < 16; ++channel)
    for (const auto& value : kValues)
      wanted.push_back(static_cast<std::uint32_t>(0xB0 + channel + value[0] * 256 + value[1] * 65536));
  EXPECT_EQ(platform_.midi->ShortMessages(), wanted);
}

TEST_F(WireWords, OfAStartResetComeChannelByChannel) {
  ResetChannels(ChannelReset::kStart);
  std::vector<std::uint32_t> wanted;
  static const int kValues[6][2] = {{121, 0}, {93, 0}, {91, 0}, {7, 127}, {10, 64}, {1, 0}};
  for (int channel = 0; channel < 16; ++channel)
    for (const auto& value : kValues)
      wanted.push_back(static_cast<std::uint32_t>(0xB0 + channel + value[0] * 256 + value[1] * 65536));
  EXPECT_EQ(platform_.midi->ShortMessages(), wanted);
}

TEST_F(WireWords, AreSilentForADeviceThatDoesNotExistAndTellOfOneThatCannotBeOpened) {
  SoundCard card;
  std::int16_t result = 77;
  platform_.midi->device_names = {QStringLiteral("One"), QStringLiteral("Two")};
  platform_.midi->open_results = {MidiOutput::kBadDeviceNumber, MidiOutput::kAllocated};
  card.OpenCard(0, result);
  EXPECT_EQ(result, 2);
  EXPECT_FALSE(card.Opened());
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
  card.OpenCard(1, result);
  EXPECT_EQ(result, MidiOutput::kAllocated);
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_TRUE(platform_.messages->shown[0].text.startsWith(QStringLiteral("midiOUT_Open\r\n")));
  EXPECT_TRUE(platform_.messages->shown[0].text.endsWith(QStringLiteral("\r\n")));
  EXPECT_EQ(platform_.messages->shown[0].buttons, MessageButtons::kOk);
  EXPECT_EQ(card.DeviceID(), 1);
}

TEST_F(WireWords, GoToTheDeviceThatIsOpenWhenAnotherIsAskedForWithoutClosing) {
  SoundCard card;
  std::int16_t result = 77;
  card.OpenCard(0, result);
  EXPECT_EQ(result, 0);
  result = 55;
  card.OpenCard(3, result);
  EXPECT_EQ(result, 55);
  EXPECT_EQ(card.DeviceID(), 3);
  EXPECT_EQ(platform_.midi->opened_device, 0);
  card.CloseCard();
  EXPECT_FALSE(card.Opened());
}

}  // namespace
}  // namespace zelmar
