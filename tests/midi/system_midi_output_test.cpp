// The list of devices, and the output where nothing can sound.
#include "midi/system_midi_output.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "midi/quil_sounds_module.h"
#include "midi/sound_card.h"
#include "midi/sound_font.h"
#include "support/scripted_services.h"
#include "support/sound_file.h"

namespace zelmar {
namespace {

using testing_support::ScopedVariable;
using testing_support::ScriptedPlatform;

class SystemMidiOutputTest : public ::testing::Test {
 protected:
  ScopedVariable no_server_{"JACK_DEFAULT_SERVER", QStringLiteral("zelmar-no-such-server")};
  ScopedVariable no_start_{"JACK_NO_START_SERVER", QStringLiteral("1")};
  SystemMidiOutput output_;
};

// A driver that cannot start on any machine.
class WithoutSoundCard : public SystemMidiOutputTest {
 protected:
  ScopedVariable driver_{"ZELMAR_AUDIO_DRIVER", QStringLiteral("jack")};
};

class IntoFile : public SystemMidiOutputTest {
 protected:
  QTemporaryDir folder_;
  ScopedVariable driver_{"ZELMAR_AUDIO_DRIVER", QStringLiteral("file")};
  ScopedVariable file_{"ZELMAR_AUDIO_FILE", folder_.filePath(QStringLiteral("sound.wav"))};
};

TEST_F(SystemMidiOutputTest, DeviceZeroIsTheSynthesiser) {
  EXPECT_EQ(output_.DeviceName(0), QStringLiteral("Zelmar synthesiser"));
  EXPECT_GE(output_.DeviceCount(), 1);
}

TEST_F(SystemMidiOutputTest, EveryCountedDeviceHasAName) {
  const int count = output_.DeviceCount();
  for (int device = 0; device < count; ++device) EXPECT_FALSE(output_.DeviceName(device).isEmpty()) << device;
  EXPECT_TRUE(output_.DeviceName(count).isEmpty());
  EXPECT_TRUE(output_.DeviceName(-1).isEmpty());
}

TEST_F(SystemMidiOutputTest, NumbersWithoutADeviceGiveTwo) {
  for (const int device : {-32768, -1, 99, 32767})
    EXPECT_EQ(output_.Open(device), MidiOutput::kBadDeviceNumber) << device;
}

TEST_F(SystemMidiOutputTest, AClosedOutputTakesEverythingAndIsSilent) {
  output_.ShortMessage(0x00643C90U);
  output_.LongMessage(QByteArray::fromHex("f07e7f0901f7"));
  output_.Reset();
  output_.Close();
  output_.Close();
  EXPECT_FALSE(output_.ErrorText(MidiOutput::kBadDeviceNumber).isEmpty());
}

TEST_F(SystemMidiOutputTest, LookingForPortsWithoutAnyServerPrintsNothing) {
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  output_.DeviceCount();
  output_.Open(1000);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(WithoutSoundCard, OpeningFailsInPlainWordsAndQuietly) {
  testing::internal::CaptureStderr();
  const int result = output_.Open(0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(result, MidiOutput::kNotEnabled);
  const QString words = output_.ErrorText(result);
  EXPECT_TRUE(words.startsWith(QStringLiteral("The built-in synthesiser could not be started")))
      << words.toStdString();
  EXPECT_LT(words.size(), 255);
}

TEST_F(WithoutSoundCard, TheProgramSaysSoOnceAndRunsInSilence) {
  ScriptedPlatform platform;
  Platform().midi = MakeSystemMidiOutput();
  SoundCard card;
  std::int16_t result = -1;
  card.OpenCard(0, result);
  EXPECT_NE(result, 0);
  EXPECT_NE(result, 2);
  SendNoteOn(60, 1, 100);
  SendSystemExclusive(GMModeMessage());
  card.MidiReset();
  card.CloseCard();
  ASSERT_EQ(platform.messages->shown.size(), 1);
  EXPECT_TRUE(platform.messages->shown[0].text.startsWith(
      QStringLiteral("midiOUT_Open\r\nThe built-in synthesiser could not be started")));
}

TEST_F(WithoutSoundCard, AnUnknownDriverFailsToo) {
  const ScopedVariable driver("ZELMAR_AUDIO_DRIVER", QStringLiteral("no-such-driver"));
  EXPECT_EQ(output_.Open(0), MidiOutput::kNotEnabled);
  EXPECT_TRUE(output_.ErrorText(MidiOutput::kNotEnabled).contains(QStringLiteral("no-such-driver")));
}

TEST_F(IntoFile, ASoundFontThatIsNotThereIsNamed) {
  output_.Synthesiser().SetSoundFont(folder_.filePath(QStringLiteral("none.sf2")));
  EXPECT_EQ(output_.Open(0), MidiOutput::kNotEnabled);
  EXPECT_TRUE(output_.ErrorText(MidiOutput::kNotEnabled).contains(QStringLiteral("none.sf2")));
}

TEST_F(IntoFile, AFileThatIsNoSoundFontIsNamed) {
  QFile file(folder_.filePath(QStringLiteral("text.sf2")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("not a SoundFont");
  file.close();
  output_.Synthesiser().SetSoundFont(file.fileName());
  testing::internal::CaptureStderr();
  EXPECT_EQ(output_.Open(0), MidiOutput::kNotEnabled);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_TRUE(output_.ErrorText(MidiOutput::kNotEnabled).contains(QStringLiteral("text.sf2")));
}

TEST_F(IntoFile, TheSoundFontOfTheEnvironmentComesFirst) {
  const ScopedVariable font("ZELMAR_SOUNDFONT", folder_.filePath(QStringLiteral("other.sf2")));
  output_.Synthesiser().SetSoundFont(InstalledSoundFont());
  EXPECT_EQ(output_.Open(0), MidiOutput::kNotEnabled);
  EXPECT_TRUE(output_.ErrorText(MidiOutput::kNotEnabled).contains(QStringLiteral("other.sf2")));
}

TEST_F(IntoFile, ASoundFontIsInstalledAndOpens) {
  ASSERT_FALSE(InstalledSoundFont().isEmpty());
  EXPECT_EQ(output_.Open(0), 0);
  EXPECT_EQ(output_.Synthesiser().AudioDriver(), QStringLiteral("file"));
  output_.Synthesiser().SetSoundFont(InstalledSoundFont());
  EXPECT_EQ(output_.Open(0), 0);
  output_.Close();
  EXPECT_TRUE(output_.Synthesiser().AudioDriver().isEmpty());
}

TEST_F(IntoFile, OpeningAnotherDeviceClosesTheSynthesiser) {
  ASSERT_EQ(output_.Open(0), 0);
  EXPECT_EQ(output_.Open(500), MidiOutput::kBadDeviceNumber);
  EXPECT_TRUE(output_.Synthesiser().AudioDriver().isEmpty());
}

}  // namespace
}  // namespace zelmar
