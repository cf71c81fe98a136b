// What the built-in synthesiser makes audible: notes are played in real time into a sound file, and the file
// is measured.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QThread>

#include "midi/mode_commands.h"
#include "midi/quil_sounds_module.h"
#include "midi/sound_card.h"
#include "midi/system_midi_output.h"
#include "support/scripted_services.h"
#include "support/sound_file.h"

namespace zelmar {
namespace {

using testing_support::ScopedVariable;
using testing_support::ScriptedPlatform;
using testing_support::SoundFile;

// A semitone is 5.9 %.
constexpr double kPitchTolerance = 0.01;
// Sending and measuring both have a grain of a few milliseconds; the rest is for a busy machine.
constexpr double kTimeTolerance = 0.08;
constexpr double kAudible = 0.004;
constexpr double kSilent = 0.0005;

constexpr int kSquareLead = 80;
constexpr int kPiano = 0;
constexpr int kDrawbarOrgan = 16;

class SynthSound : public ::testing::Test {
 protected:
  void SetUp() override {
    Platform().midi = MakeSystemMidiOutput();
    std::int16_t result = -1;
    QElapsedTimer opening;
    opening.start();
    card_.OpenCard(0, result);
    std::printf("synthesiser opened in %.1f ms\n", static_cast<double>(opening.nsecsElapsed()) / 1e6);
    ASSERT_EQ(result, 0) << Platform().midi->ErrorText(result).toStdString();
    since_open_.start();
  }
  void TearDown() override { card_.CloseCard(); }

  double Now() const { return static_cast<double>(since_open_.nsecsElapsed()) / 1e9; }
  void SoundFor(double seconds) { QThread::usleep(static_cast<unsigned long>(seconds * 1e6)); }
  SoundFile Close() {
    card_.CloseCard();
    return SoundFile(path_);
  }

  ScriptedPlatform platform_;
  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("sound.wav"));
  ScopedVariable driver_{"ZELMAR_AUDIO_DRIVER", QStringLiteral("file")};
  ScopedVariable file_{"ZELMAR_AUDIO_FILE", path_};
  SoundCard card_;
  QElapsedTimer since_open_;
};

TEST_F(SynthSound, NotesSoundAtTheirPitchAndTheirTime) {
  struct Note {
    int pitch;
    double hertz;
    double sent = 0.0;
    double onset = 0.0;
  };
  std::vector<Note> notes = {{60, 261.626}, {69, 440.0}, {76, 659.255}};
  SendProgramChange(kSquareLead, 1);
  SoundFor(0.1);
  for (Note& note : notes) {
    note.sent = Now();
    SendNoteOn(note.pitch, 1, 100);
    SoundFor(0.25);
    SendNoteOn(note.pitch, 1, 0);
    SoundFor(0.2);
  }
  const double last = Now();
  const SoundFile sound = Close();
  ASSERT_FALSE(sound.Empty());
  EXPECT_NEAR(sound.Seconds(), last, kTimeTolerance);

  double from = 0.0;
  for (Note& note : notes) {
    note.onset = sound.OnsetAfter(from, kAudible);
    ASSERT_GE(note.onset, 0.0);
    const double hertz = sound.Pitch(note.onset + 0.05);
    std::printf("note %d: sent at %.3f s, heard at %.3f s, %.2f Hz (%.2f Hz)\n", note.pitch, note.sent,
                note.onset, hertz, note.hertz);
    EXPECT_NEAR(hertz, note.hertz, note.hertz * kPitchTolerance);
    EXPECT_NEAR(note.onset - notes[0].onset, note.sent - notes[0].sent, kTimeTolerance);
    EXPECT_NEAR(note.onset, note.sent, kTimeTolerance);
    from = sound.SilenceAfter(note.onset + 0.15, kAudible / 4);
    ASSERT_GE(from, 0.0) << "the note does not end";
  }
}

TEST_F(SynthSound, ResetSilencesHeldNotesPedalAndEchoAtOnce) {
  SendProgramChange(kDrawbarOrgan, 1);
  SendController(91, 1, 127);
  SendController(93, 1, 127);
  SendController(64, 1, 127);
  SendNoteOn(60, 1, 110);
  SendNoteOn(67, 1, 110);
  SendNoteOn(60, 1, 0);  // held by the pedal alone
  SoundFor(0.4);
  const double reset = Now();
  card_.MidiReset();
  SoundFor(0.4);
  const double again = Now();
  SendNoteOn(69, 1, 110);
  SoundFor(0.15);
  SendNoteOn(69, 1, 0);
  SoundFor(0.3);
  const SoundFile sound = Close();

  EXPECT_GT(sound.Level(reset - 0.2, reset - 0.1), 4 * kAudible);
  const double silence = sound.SilenceAfter(reset - kTimeTolerance, kSilent);
  std::printf("reset at %.3f s, silence from %.3f s, level before %.4f, after %.6f\n", reset, silence,
              sound.Level(reset - 0.2, reset - 0.1), sound.Level(silence, silence + 0.2));
  ASSERT_GE(silence, 0.0);
  EXPECT_NEAR(silence, reset, kTimeTolerance);
  EXPECT_LT(sound.Level(silence, again - kTimeTolerance), kSilent);
  // The pedal is up again, the channel still plays, and its echo is back.
  EXPECT_NEAR(sound.OnsetAfter(silence, kAudible), again, kTimeTolerance);
  const double end = again + 0.15;
  EXPECT_LT(sound.Level(end + 0.2, end + 0.3), 0.5 * sound.Level(again + 0.05, again + 0.14));
  EXPECT_GT(sound.Level(end + 0.1, end + 0.2), kSilent);
}

TEST_F(SynthSound, TheEndOfANoteBringsNoHeldEchoBack) {
  SendProgramChange(kDrawbarOrgan, 1);
  SendController(91, 1, 127);
  SendController(93, 1, 127);
  SendNoteOn(60, 1, 110);
  SendNoteOn(67, 1, 110);
  SoundFor(0.4);
  const double reset = Now();
  card_.MidiReset();
  SendNoteOn(60, 1, 0);
  SendNoteOn(67, 1, 0);
  SoundFor(0.4);
  const double end = Now();
  const SoundFile sound = Close();

  EXPECT_GT(sound.Level(reset - 0.2, reset - 0.1), 4 * kAudible);
  const double silence = sound.SilenceAfter(reset - kTimeTolerance, kSilent);
  std::printf("reset at %.3f s, silence from %.3f s, level after %.6f\n", reset, silence,
              sound.Level(silence, end - kTimeTolerance));
  ASSERT_GE(silence, 0.0);
  EXPECT_NEAR(silence, reset, kTimeTolerance);
  EXPECT_LT(sound.Level(silence, end - kTimeTolerance), kSilent);
}

TEST_F(SynthSound, EachModeMessageGivesAMutedChannelItsVolumeBack) {
  std::vector<double> muted;
  std::vector<double> restored;
  const auto strike = [this](std::vector<double>& times) {
    times.push_back(Now());
    SendNoteOn(72, 1, 120);
    SoundFor(0.2);
    SendNoteOn(72, 1, 0);
  };
  for (const QString& message : {GMModeMessage(), GSModeMessage(), XGModeMessage()}) {
    SendController(7, 1, 0);
    strike(muted);
    SendSystemExclusive(message);
    strike(restored);
    MidiOutReset();
  }
  const SoundFile sound = Close();
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_LT(sound.Level(muted[i] + 0.09, muted[i] + 0.11), kAudible / 2) << i;
    EXPECT_GT(sound.Level(restored[i] + 0.09, restored[i] + 0.11), 2 * kAudible) << i;
    std::printf("level muted %.5f, after the message %.5f\n", sound.Level(muted[i] + 0.09, muted[i] + 0.11),
                sound.Level(restored[i] + 0.09, restored[i] + 0.11));
  }
}

TEST_F(SynthSound, AChordOfTenNotesAtFullVolumeDoesNotClip) {
  ResetChannels(ChannelReset::kStart);
  for (const int patch : {kPiano, kDrawbarOrgan}) {
    SendProgramChange(patch, 1);
    for (const int pitch : {48, 52, 55, 60, 64, 67, 72, 76, 79, 84}) SendNoteOn(pitch, 1, 127);
    SoundFor(0.3);
    MidiOutReset();
    SoundFor(0.05);
  }
  const SoundFile sound = Close();
  std::printf("peak of ten notes %.3f\n", sound.Peak());
  EXPECT_GT(sound.Peak(), 0.1);
  EXPECT_LT(sound.Peak(), 0.99);
}

TEST_F(SynthSound, ChannelTenIsDrumsAndIllegalDataIsHarmless) {
  SendNoteOn(128, 1, 100);
  SendNoteOn(60, 1, 128);
  SendProgramChange(200, 1);
  SendPitchBend(1, 128, 128);
  SendSystemExclusive(QString(QChar(0xF0)) + QChar(0xF7));
  SendSystemExclusive(QString());
  SoundFor(0.1);
  const double drum = Now();
  SendNoteOn(38, 10, 127);
  SoundFor(0.15);
  const SoundFile sound = Close();
  EXPECT_LT(sound.Level(0.0, drum - kTimeTolerance), kSilent);
  EXPECT_NEAR(sound.OnsetAfter(0.0, kAudible), drum, kTimeTolerance);
}

}  // namespace
}  // namespace zelmar
