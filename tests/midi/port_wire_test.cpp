// What another program hears: a MIDI monitor behind a sound server without a card.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "midi/mode_commands.h"
#include "midi/quil_sounds_module.h"
#include "midi/sound_card.h"
#include "midi/system_midi_output.h"
#include "support/dummy_sound_server.h"
#include "support/scripted_services.h"

namespace zelmar {
namespace {

using testing_support::DummySoundServer;
using testing_support::MidiMonitor;
using testing_support::PortDeviceOf;
using testing_support::ScriptedPlatform;

QByteArray Bytes(const char* hex) {
  return QByteArray::fromHex(hex);
}

class PortWire : public ::testing::Test {
 protected:
  // One server for all of them: each has a monitor of its own.
  static void SetUpTestSuite() { server_ = std::make_unique<DummySoundServer>(); }
  static void TearDownTestSuite() { server_.reset(); }

  void SetUp() override {
    ASSERT_TRUE(monitor_.Listening()) << monitor_.Trouble().toStdString();
    Platform().midi = output_;
    const int device = PortDeviceOf(*output_, monitor_.PortName());
    ASSERT_GT(device, 0) << "the monitor's port is not listed";
    std::int16_t result = -1;
    card_.OpenCard(static_cast<std::int16_t>(device), result);
    ASSERT_EQ(result, 0) << output_->ErrorText(result).toStdString();
  }
  void TearDown() override { card_.CloseCard(); }

  // Sends whatever `send` sends and gives what arrived, `count` messages of it.
  template <typename Send>
  std::vector<QByteArray> Heard(std::size_t count, Send send) {
    send();
    EXPECT_TRUE(monitor_.WaitForMessages(count)) << monitor_.Printed().toStdString();
    return monitor_.Messages();
  }

  ScriptedPlatform platform_;
  static inline std::unique_ptr<DummySoundServer> server_;
  MidiMonitor monitor_{*server_};
  std::shared_ptr<MidiOutput> output_ = MakeSystemMidiOutput();
  SoundCard card_;
};

TEST_F(PortWire, EveryKindOfMessageArrivesByteForByteAndInOrder) {
  const auto heard = Heard(9, [] {
    SendProgramChange(40, 10);
    SendNoteOn(60, 1, 100);
    SendController(7, 5, 3);
    SendPitchBend(16, 1, 64);
    SendChannelPressure(2, 99);
    SendSystemExclusive(GSModeMessage());
    SendSystemExclusive(XGModeMessage());
    SendSystemExclusive(GMModeMessage());
    SendNoteOn(60, 1, 0);
  });
  std::printf("%s", monitor_.Printed().constData());
  const std::vector<QByteArray> expected = {Bytes("c928"),
                                            Bytes("903c64"),
                                            Bytes("b40703"),
                                            Bytes("ef0140"),
                                            Bytes("d163"),
                                            Bytes("f04110421240007f0041f7"),
                                            Bytes("f043104c00007e00f7"),
                                            Bytes("f07e7f0901f7"),
                                            Bytes("903c00")};
  EXPECT_EQ(heard, expected);
}

TEST_F(PortWire, ALongMessageKeepsAllItsBytes) {
  QString message(QChar(0xF0));
  for (int i = 0; i < 200; ++i) message.append(QChar(i % 128));
  message.append(QChar(0xF7));
  const auto heard = Heard(1, [&] { SendSystemExclusive(message); });
  ASSERT_EQ(heard.size(), 1U);
  EXPECT_EQ(heard[0], message.toLatin1());
}

TEST_F(PortWire, ABurstOfAllChannelsLosesNothing) {
  const auto heard = Heard(96, [] { ResetChannels(ChannelReset::kStart); });
  ASSERT_EQ(heard.size(), 96U);
  EXPECT_EQ(heard.front(), Bytes("b07900"));
  EXPECT_EQ(heard[5], Bytes("b00100"));
  EXPECT_EQ(heard.back(), Bytes("bf0100"));
}

TEST_F(PortWire, ALongStreamArrivesWholeAndInOrder) {
  // The monitor takes in 127 messages between two looks at them.
  constexpr int kRounds = 30;
  constexpr int kNotes = 100;
  const auto heard = Heard(kRounds * kNotes, [this] {
    for (int round = 0; round < kRounds; ++round) {
      for (int pitch = 1; pitch <= kNotes; ++pitch) SendNoteOn(pitch, 1 + round % 16, 1 + round);
      EXPECT_TRUE(monitor_.WaitForMessages(static_cast<std::size_t>((round + 1) * kNotes)));
    }
  });
  ASSERT_EQ(heard.size(), static_cast<std::size_t>(kRounds * kNotes));
  for (int i = 0; i < kRounds * kNotes; ++i) {
    const auto& message = heard[static_cast<std::size_t>(i)];
    ASSERT_EQ(static_cast<int>(message[1]), 1 + i % kNotes) << i;
    ASSERT_EQ(static_cast<int>(message[2]), 1 + i / kNotes) << i;
  }
}

TEST_F(PortWire, ResetEndsEachSoundingNoteAndAsksEveryChannelForSilence) {
  SendNoteOn(60, 1, 100);
  SendNoteOn(64, 1, 100);
  SendNoteOn(64, 1, 0);
  SendNoteOn(36, 10, 90);
  ASSERT_TRUE(monitor_.WaitForMessages(4));
  card_.MidiReset();
  ASSERT_TRUE(monitor_.WaitForMessages(4 + 2 + 48)) << monitor_.Printed().toStdString();
  const auto heard = monitor_.Messages();
  const std::vector<QByteArray> first(heard.begin() + 4, heard.begin() + 8);
  EXPECT_EQ(first,
            (std::vector<QByteArray>{Bytes("903c00"), Bytes("b04000"), Bytes("b07b00"), Bytes("b07800")}));
  EXPECT_EQ(std::count(heard.begin() + 4, heard.end(), Bytes("992400")), 1);
  EXPECT_EQ(std::count(heard.begin() + 4, heard.end(), Bytes("904000")), 0);
  for (int channel = 0; channel < 16; ++channel) {
    for (const char controller : {'\x40', '\x7b', '\x78'}) {
      const std::array<char, 3> bytes = {static_cast<char>(0xB0 + channel), controller, '\0'};
      const QByteArray message(bytes.data(), bytes.size());
      EXPECT_EQ(std::count(heard.begin(), heard.end(), message), 1) << message.toHex().constData();
    }
  }
}

TEST_F(PortWire, AfterClosingNothingArrivesAndTheCardOpensAgain) {
  card_.CloseCard();
  SendNoteOn(60, 1, 100);
  std::int16_t result = -1;
  card_.OpenCard(card_.DeviceID(), result);
  ASSERT_EQ(result, 0);
  const auto heard = Heard(1, [] { SendNoteOn(62, 1, 100); });
  EXPECT_EQ(heard, std::vector<QByteArray>{Bytes("903e64")});
}

}  // namespace
}  // namespace zelmar
