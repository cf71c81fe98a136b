// What the free procedures put on the wire, bit for bit.
#include "midi/quil_sounds_module.h"

#include <gtest/gtest.h>

#include "model/globals.h"
#include "model/pulses.h"
#include "platform/failure.h"
#include "support/scripted_services.h"

namespace zelmar {
namespace {

using testing_support::ScriptedPlatform;
using testing_support::SentMessage;

class QuilSoundsModule : public ::testing::Test {
 protected:
  std::vector<std::uint32_t> Sent() const { return platform_.midi->ShortMessages(); }
  std::uint32_t Only() const {
    const auto words = Sent();
    EXPECT_EQ(words.size(), 1U);
    return words.empty() ? 0 : words.front();
  }

  ScriptedPlatform platform_;
};

TEST_F(QuilSoundsModule, NoteOnIsStatusPitchVelocity) {
  SendNoteOn(60, 1, 100);
  EXPECT_EQ(Only(), 0x00643C90U);
}

TEST_F(QuilSoundsModule, ANoteEndsWithVelocityZeroAndTheSameStatus) {
  SendNoteOn(60, 16, 0);
  EXPECT_EQ(Only(), 0x00003C9FU);
}

TEST_F(QuilSoundsModule, ProgramChangeSendsThePatchAsStored) {
  SendProgramChange(40, 10);
  EXPECT_EQ(Only(), 0x000028C9U);
}

TEST_F(QuilSoundsModule, ControllerIsStatusControllerValue) {
  SendController(7, 5, 3);
  EXPECT_EQ(Only(), 0x000307B4U);
}

TEST_F(QuilSoundsModule, PitchBendSendsTheLowBitsFirst) {
  SendPitchBend(3, 1, 64);
  EXPECT_EQ(Only(), 0x004001E2U);
}

TEST_F(QuilSoundsModule, ChannelPressureHasOneDataByte) {
  SendChannelPressure(2, 99);
  EXPECT_EQ(Only(), 0x000063D1U);
}

TEST_F(QuilSoundsModule, ChannelsOneToSixteenBecomeZeroToFifteen) {
  for (int channel = 1; channel <= 16; ++channel) SendNoteOn(0, channel, 0);
  const auto words = Sent();
  ASSERT_EQ(words.size(), 16U);
  for (std::uint32_t i = 0; i < 16; ++i) EXPECT_EQ(words[i], 0x90U + i);
}

TEST_F(QuilSoundsModule, TheStatusIsASumAndIsNotMasked) {
  SendNoteOn(1, 17, 2);
  EXPECT_EQ(Only(), 0x000201A0U);
}

TEST_F(QuilSoundsModule, DataAbove127GoesOutAsItIs) {
  SendNoteOn(128, 1, 200);
  EXPECT_EQ(Only(), 0x00C88090U);
}

TEST_F(QuilSoundsModule, DataAbove255SpillsIntoTheNextByte) {
  SendProgramChange(300, 1);
  EXPECT_EQ(Only(), 0x00012CC0U);
}

TEST_F(QuilSoundsModule, AControllerOf128OverflowsAndSendsNothing) {
  EXPECT_THROW(SendController(128, 1, 0), OverflowError);
  EXPECT_THROW(SendController(255, 1, 0), OverflowError);
  EXPECT_TRUE(Sent().empty());
  SendController(127, 1, 0);
  EXPECT_EQ(Only(), 0x00007FB0U);
}

TEST_F(QuilSoundsModule, AWordBeyond32BitsOverflows) {
  EXPECT_THROW(SendNoteOn(60, 1, 32768), OverflowError);
  EXPECT_TRUE(Sent().empty());
  SendNoteOn(60, 1, 32767);
  EXPECT_EQ(Only(), 0x7FFF3C90U);
}

TEST_F(QuilSoundsModule, BankMessagesAreDroppedOnDemandAndNoOthers) {
  Global().SuppressBankMessages = true;
  SendController(0, 5, 3);
  SendController(32, 5, 3);
  EXPECT_TRUE(Sent().empty());
  SendController(7, 5, 3);
  EXPECT_EQ(Only(), 0x000307B4U);
}

TEST_F(QuilSoundsModule, BankMessagesGoOutOtherwise) {
  SendController(0, 5, 3);
  SendController(32, 5, 4);
  EXPECT_EQ(Sent(), (std::vector<std::uint32_t>{0x000300B4U, 0x000420B4U}));
}

TEST_F(QuilSoundsModule, SystemExclusiveKeepsEachByte) {
  QString message;
  QByteArray bytes;
  for (int byte = 0; byte < 256; ++byte) {
    message.append(QChar(byte));
    bytes.append(static_cast<char>(byte));
  }
  SendSystemExclusive(message);
  ASSERT_EQ(platform_.midi->sent.size(), 1U);
  EXPECT_EQ(platform_.midi->sent[0].kind, SentMessage::Kind::kLong);
  EXPECT_EQ(platform_.midi->sent[0].bytes, bytes);
}

TEST_F(QuilSoundsModule, ModeMessagesAreTheResetsOfTheThreeSystems) {
  for (const QString& message : {GMModeMessage(), GSModeMessage(), XGModeMessage()})
    SendSystemExclusive(message);
  const auto& sent = platform_.midi->sent;
  ASSERT_EQ(sent.size(), 3U);
  EXPECT_EQ(sent[0].bytes.toHex(' '), "f0 7e 7f 09 01 f7");
  EXPECT_EQ(sent[1].bytes.toHex(' '), "f0 41 10 42 12 40 00 7f 00 41 f7");
  EXPECT_EQ(sent[2].bytes.toHex(' '), "f0 43 10 4c 00 00 7e 00 f7");
}

TEST_F(QuilSoundsModule, SendsWithoutAnyOutputAreSilent) {
  Platform().midi.reset();
  SendNoteOn(60, 1, 100);
  SendSystemExclusive(GMModeMessage());
  MidiOutReset();
  CloseMidiOut();
  EXPECT_TRUE(platform_.midi->sent.empty());
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(QuilSoundsModule, TheErrorBoxShowsOperationAndUntrimmedWords) {
  ShowMMErr(QStringLiteral("midiOUT_Open"), 3);
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  const auto& box = platform_.messages->shown[0];
  const QString words = QStringLiteral("error 3");
  EXPECT_EQ(box.text, QStringLiteral("midiOUT_Open\r\n") + words +
                          QString(255 - words.size(), QLatin1Char(' ')) + QStringLiteral("\r\n"));
  EXPECT_EQ(box.buttons, MessageButtons::kOk);
  EXPECT_EQ(box.icon, MessageIcon::kNone);
}

TEST_F(QuilSoundsModule, PositionsAreCountedAt120PulsesToTheCrotchet) {
  EXPECT_EQ(PulseFromBarBeatTick(1, 1, 0, 4, 4), 0);
  EXPECT_EQ(PulseFromBarBeatTick(2, 1, 0, 3, 8), 180);
  EXPECT_EQ(PulseFromBarBeatTick(1, 2, 30, 4, 4), 150);
}

TEST_F(QuilSoundsModule, APositionBeyond32767BeatsOverflows) {
  EXPECT_NO_THROW(PulseFromBarBeatTick(8192, 1, 0, 4, 4));
  EXPECT_THROW(PulseFromBarBeatTick(8193, 1, 0, 4, 4), OverflowError);
}

}  // namespace
}  // namespace zelmar
