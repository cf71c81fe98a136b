// A whole short tune on the real clock, as another program hears it.
#include <gtest/gtest.h>

#include "midi/sound_card.h"
#include "midi/system_midi_output.h"
#include "model/tune.h"
#include "platform/real_clock.h"
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

void Add(Tune& tune, EventType type, std::int16_t beat, const char* pitch, double crotchets, int volume,
         int instrument = 0) {
  auto tone = std::make_shared<Tone>();
  tone->SetEventType(type);
  tone->SetAbsRef(tune.LastAbsRef() + 1);
  tone->SetBar(static_cast<std::int16_t>(1 + (beat - 1) / 4));
  tone->SetBeat(static_cast<std::int16_t>(1 + (beat - 1) % 4));
  tone->SetPitch(QString::fromLatin1(pitch));
  tone->SetDuration(crotchets);
  tone->SetVolume(static_cast<std::uint8_t>(volume));
  tone->SetInstrument(static_cast<std::uint8_t>(instrument));
  tone->SetChannel(3);
  tune.Add(tone);
}

TEST(TuneWire, AWholeTuneArrivesAtAnotherProgramByteForByte) {
  ScriptedPlatform platform;
  const auto output = MakeSystemMidiOutput();
  Platform().clock = std::make_shared<RealClock>();
  Platform().events = std::make_shared<RealEventService>();
  Platform().midi = output;
  const DummySoundServer server;
  const MidiMonitor monitor(server);
  ASSERT_TRUE(monitor.Listening()) << monitor.Trouble().toStdString();
  const int device = PortDeviceOf(*output, monitor.PortName());
  ASSERT_GT(device, 0);
  SoundCard card;
  std::int16_t result = -1;
  card.OpenCard(static_cast<std::int16_t>(device), result);
  ASSERT_EQ(result, 0);

  const auto tune = std::make_shared<Tune>();
  tune->SetTempo(600);
  tune->SetMIDIMode(QStringLiteral("GM2"));
  tune->Tracks()->Item(1)->SetChannel(3);
  tune->Tracks()->Item(1)->SetBankMSB0(1);
  // Half-beat notes, so that no two events fall together and the order on the wire is one only.
  Add(*tune, MUSIC_NOTE, 1, "C4", 0.5, 100, 73);
  Add(*tune, MUSIC_NOTE, 2, "E4", 0.5, 90, 73);
  Add(*tune, 64, 3, "C4", 0.5, 127);
  Add(*tune, PITCH_BEND, 4, "C4", 0.5, 80, 5);
  Add(*tune, CHANNEL_PRESSURE, 5, "C4", 0.5, 33);
  Add(*tune, MUSIC_NOTE, 6, "Ab5", 0.5, 1, 40);
  Add(*tune, 64, 8, "C4", 0.5, 0);
  tune->CalcNotesOff();
  tune->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  tune->Play();

  std::vector<QByteArray> expected;
  for (int channel = 0; channel < 16; ++channel)
    for (const int controller : {7, 11}) {
      QByteArray message(3, '\0');
      message[0] = static_cast<char>(0xB0 + channel);
      message[1] = static_cast<char>(controller);
      message[2] = 127;
      expected.push_back(message);
    }
  for (const char* const hex :
       {"f07e7f0901f7", "b20001", "b22000", "c249", "923c64", "923c00", "c249", "92405a", "924000", "b2407f",
        "e20550", "d221", "c228", "925001", "925000", "b24000"})
    expected.push_back(Bytes(hex));
  EXPECT_TRUE(monitor.WaitForMessages(expected.size())) << monitor.Printed().toStdString();
  EXPECT_EQ(monitor.Messages(), expected);
  card.CloseCard();
}

}  // namespace
}  // namespace zelmar
