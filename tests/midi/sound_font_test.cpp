// Which SoundFont the built-in synthesiser takes, and which files are none.
#include "midi/sound_font.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "midi/system_midi_output.h"
#include "support/application_directory.h"
#include "support/scripted_services.h"
#include "support/sound_file.h"

namespace zelmar {
namespace {

using testing_support::ScopedVariable;
using testing_support::ScriptedPlatform;
using testing_support::TemporaryApplicationDirectory;

class SoundFontChoice : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_FALSE(InstalledSoundFont().isEmpty()); }

  QByteArray InstalledBytes(qint64 count) const {
    QFile file(InstalledSoundFont());
    return file.open(QIODevice::ReadOnly) ? file.read(count) : QByteArray();
  }
  QString In(const char* name) const { return directory_.In(QLatin1String(name)); }

  ScriptedPlatform platform_;
  TemporaryApplicationDirectory directory_;
  ScopedVariable driver_{"ZELMAR_AUDIO_DRIVER", QStringLiteral("file")};
  ScopedVariable file_{"ZELMAR_AUDIO_FILE", directory_.In(QStringLiteral("sound.wav"))};
};

TEST_F(SoundFontChoice, TheInstalledOneIsGood) {
  EXPECT_EQ(WhyNotASoundFont(InstalledSoundFont()), QString());
}

TEST_F(SoundFontChoice, FilesThatAreNoneAreToldApart) {
  EXPECT_EQ(WhyNotASoundFont(In("gone.sf2")), QStringLiteral("There is no file \"%1\".").arg(In("gone.sf2")));
  EXPECT_EQ(WhyNotASoundFont(directory_.Path()),
            QStringLiteral("There is no file \"%1\".").arg(directory_.Path()));
  for (const QByteArray& bytes :
       {QByteArray(), QByteArray("x"), QByteArray(10000, 'x'), QByteArray("RIFF")}) {
    directory_.Write(QStringLiteral("letter.sf2"), bytes);
    EXPECT_EQ(WhyNotASoundFont(In("letter.sf2")),
              QStringLiteral("The file \"%1\" is not a SoundFont.").arg(In("letter.sf2")));
  }
}

TEST_F(SoundFontChoice, OneThatIsCutOffIsDamaged) {
  directory_.Write(QStringLiteral("half.sf2"), InstalledBytes(100000));
  EXPECT_EQ(WhyNotASoundFont(In("half.sf2")),
            QStringLiteral("The file \"%1\" begins like a SoundFont and is damaged.").arg(In("half.sf2")));
}

TEST_F(SoundFontChoice, TheChoiceOutlivesTheRunAndCanBeTakenBack) {
  directory_.Write(QStringLiteral("mine.sf2"), "x");
  EXPECT_TRUE(SetChosenSoundFont(In("mine.sf2")));
  EXPECT_EQ(ChosenSoundFont(), In("mine.sf2"));
  EXPECT_EQ(SoundFontInUse(), In("mine.sf2"));
  EXPECT_TRUE(directory_.Read(QStringLiteral("Zelmar.ini")).contains("mine.sf2"));
  EXPECT_TRUE(SetChosenSoundFont(QString()));
  EXPECT_EQ(ChosenSoundFont(), QString());
  EXPECT_EQ(SoundFontInUse(), InstalledSoundFont());
}

TEST_F(SoundFontChoice, TheEnvironmentHasTheLastWord) {
  directory_.Write(QStringLiteral("mine.sf2"), "x");
  SetChosenSoundFont(In("mine.sf2"));
  const ScopedVariable wish("ZELMAR_SOUNDFONT", QStringLiteral("/somewhere/else.sf2"));
  EXPECT_EQ(SoundFontInUse(), QStringLiteral("/somewhere/else.sf2"));
}

TEST_F(SoundFontChoice, TheSynthesiserOpensWithTheChosenOne) {
  directory_.Write(QStringLiteral("broken.sf2"), "x");
  SetChosenSoundFont(In("broken.sf2"));
  const auto output = MakeSystemMidiOutput();
  EXPECT_EQ(output->Open(0), MidiOutput::kNotEnabled);
  EXPECT_TRUE(output->ErrorText(MidiOutput::kNotEnabled).contains(In("broken.sf2")));
  ASSERT_TRUE(QFile::copy(InstalledSoundFont(), In("good.sf2")));
  SetChosenSoundFont(In("good.sf2"));
  EXPECT_EQ(output->Open(0), MidiOutput::kSuccess);
  output->Close();
}

TEST_F(SoundFontChoice, AChosenOneThatIsGoneGivesWayToTheInstalledOne) {
  SetChosenSoundFont(In("gone.sf2"));
  EXPECT_EQ(SoundFontInUse(), InstalledSoundFont());
  const auto output = MakeSystemMidiOutput();
  EXPECT_EQ(output->Open(0), MidiOutput::kSuccess);
  output->Close();
}

TEST_F(SoundFontChoice, AChoiceMadeWhileTheStandardOneLoadsAheadIsTaken) {
  const auto output = MakeSystemMidiOutput(SynthesiserLoading::kAhead);
  directory_.Write(QStringLiteral("broken.sf2"), "x");
  SetChosenSoundFont(In("broken.sf2"));
  EXPECT_EQ(output->Open(0), MidiOutput::kNotEnabled);
}

}  // namespace
}  // namespace zelmar
