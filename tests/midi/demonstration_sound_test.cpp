// The demonstrations as the built-in synthesiser sounds them: played in real time, faster than they are
// stored, into a sound file, and measured.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QThread>
#include <cmath>

#include "midi/mode_commands.h"
#include "midi/sound_card.h"
#include "midi/system_midi_output.h"
#include "model/main_window_link.h"
#include "model/tune.h"
#include "platform/real_clock.h"
#include "store/tune_loader.h"
#include "support/scripted_services.h"
#include "support/small_sound_font.h"
#include "support/sound_file.h"
#include "support/template_database.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr double kAudible = 0.002;

class DemonstrationSound : public ::testing::Test {
 protected:
  // Plays a demonstration at `tempo` crotchets a minute, from the head of a bar to its end or to `last_bar`.
  SoundFile Play(const char* code_name, std::int16_t tempo, std::int16_t first_bar = 1,
                 std::int16_t last_bar = 9999) {
    QString name = QString::fromLatin1(code_name);
    TuneLoader().DoLoad(name);
    const auto tune = TheMainWindow().MyTune();
    EXPECT_TRUE(tune) << code_name;
    if (!tune) return SoundFile({});
    tune->SetTempo(tempo);
    tune->BarCount();  // the counters stand still at the last bar that was counted
    crotchet_ = 60.0 / tempo;

    Platform().clock = std::make_shared<RealClock>();
    Platform().events = std::make_shared<RealEventService>();
    Platform().midi = MakeSystemMidiOutput();
    SoundCard card;
    std::int16_t result = -1;
    card.OpenCard(0, result);
    EXPECT_EQ(result, 0) << Platform().midi->ErrorText(result).toStdString();
    QElapsedTimer since_open;
    since_open.start();
    ResetChannels(ChannelReset::kControllers);
    QObject::connect(tune.get(), &Tune::Ticked, tune.get(), [&tune, last_bar] {
      if (tune->BarNumber() > last_bar) tune->Stopit();
    });
    begun_ = static_cast<double>(since_open.nsecsElapsed()) / 1e9;
    tune->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
    tune->Play(first_bar);
    QThread::msleep(50);
    card.CloseCard();
    return SoundFile(path_);
  }

  // Seconds in the file at which a crotchet of the played part begins.
  double At(double crotchets) const { return begun_ + crotchets * crotchet_; }

  ScriptedPlatform platform_;
  TemplateDatabase library_{QStringLiteral(ZELMAR_BUILD_DIRECTORY "/ZelmarTemplate.mdb")};
  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("sound.wav"));
  ScopedVariable driver_{"ZELMAR_AUDIO_DRIVER", QStringLiteral("file")};
  ScopedVariable file_{"ZELMAR_AUDIO_FILE", path_};
  double begun_ = 0.0;
  double crotchet_ = 0.0;
};

TEST_F(DemonstrationSound, TheHeldNoteGrowsLouder) {
  const SoundFile sound = Play("demoExpression", 480);
  std::vector<double> levels;
  for (const double crotchets : {3.0, 6.0, 9.0, 12.0, 15.0})
    levels.push_back(sound.Level(At(crotchets), At(crotchets + 1)));
  for (const double level : levels) std::printf("level %.4f\n", level);
  for (std::size_t i = 1; i < levels.size(); ++i) EXPECT_GT(levels[i], 1.2 * levels[i - 1]);
  EXPECT_GT(levels.back(), kAudible);
}

TEST_F(DemonstrationSound, TheScaleMovesFromLeftToRight) {
  const SoundFile sound = Play("StereoDemo", 240);
  std::vector<double> shares;  // of the right side
  for (int note = 0; note < 8; ++note) {
    const double from = At(note + 0.3), to = At(note + 0.9);
    const double left = sound.LeftLevel(from, to), right = sound.RightLevel(from, to);
    EXPECT_GT(std::max(left, right), kAudible) << note;
    shares.push_back(right / (left + right));
    std::printf("note %d: left %.4f, right %.4f\n", note, left, right);
  }
  EXPECT_LT(shares.front(), 0.2);
  EXPECT_GT(shares.back(), 0.8);
  for (std::size_t i = 1; i < shares.size(); ++i) EXPECT_GT(shares[i], shares[i - 1]);
}

TEST_F(DemonstrationSound, TheTromboneStepsFirstAndSlidesThen) {
  constexpr double kC3 = 130.81, kF3 = 174.61;
  // Two crotchets of C3, then F3.
  const SoundFile step = Play("DemoPortamento", 120, 1, 1);
  std::printf("step: %.1f Hz, %.1f Hz\n", step.Pitch(At(1)), step.Pitch(At(2.4)));
  EXPECT_NEAR(step.Pitch(At(1)), kC3, 2.0);
  EXPECT_NEAR(step.Pitch(At(2.4)), kF3, 3.0);

  const SoundFile slide = Play("DemoPortamento", 120, 3);
  std::vector<double> pitches;
  for (const double later : {2.2, 2.8, 3.4, 5.0}) pitches.push_back(slide.Pitch(At(later)));
  std::printf("slide: %.1f Hz", slide.Pitch(At(1)));
  for (const double pitch : pitches) std::printf(", %.1f Hz", pitch);
  std::printf("\n");
  EXPECT_NEAR(slide.Pitch(At(1)), kC3, 2.0);
  EXPECT_LT(pitches[0], kC3 + 20.0);
  for (std::size_t i = 1; i < pitches.size(); ++i) EXPECT_GT(pitches[i], pitches[i - 1] + 3.0);
  EXPECT_NEAR(pitches.back(), kF3, 3.0);
}

TEST_F(DemonstrationSound, TheEchoStaysBehindTheChordOnlyTheSecondTime) {
  // From a quarter of a second behind the chord on; some of it is the choir's own breath.
  const auto echo = [this](const SoundFile& sound, double head) {
    EXPECT_GT(sound.Level(At(head + 1), At(head + 2)), 10 * kAudible);
    return sound.Level(At(head + 2.5), At(head + 3.1));
  };
  const double dry = echo(Play("DemoReverb", 120, 1, 1), 0);
  const double wet = echo(Play("DemoReverb", 120, 4, 5), 4);
  std::printf("behind the chord: dry %.5f, wet %.5f\n", dry, wet);
  EXPECT_GT(wet, 1.6 * dry);
}

// How far apart the two sides of the sound are: a chorus spreads what is in the middle without it.
TEST_F(DemonstrationSound, TheChorusSpreadsTheViolin) {
  const auto spread = [this](const SoundFile& sound, double from) {
    double apart = 0.0, together = 0.0;
    for (double at = At(from); at < At(from + 6); at += 0.01) {
      const double left = sound.LeftLevel(at, at + 0.01), right = sound.RightLevel(at, at + 0.01);
      apart += std::abs(left - right);
      together += left + right;
    }
    return apart / together;
  };
  const double without = spread(Play("DemoChorus", 300, 1, 2), 0);
  const double with = spread(Play("DemoChorus", 300, 5, 7), 4);
  std::printf("sides apart: without %.4f, with %.4f\n", without, with);
  EXPECT_GT(with, 2 * without);
}

TEST_F(DemonstrationSound, TheModulationMakesTheNotesWaver) {
  const auto waver = [this](const SoundFile& sound) {
    double lowest = 1e9, highest = 0;
    for (double at = At(0.6); at < At(1.7); at += 0.02) {
      const double pitch = sound.Pitch(at);
      lowest = std::min(lowest, pitch);
      highest = std::max(highest, pitch);
    }
    return 1200 * std::log2(highest / lowest);
  };
  const double with = waver(Play("DemoModulation", 100, 1, 1));
  const double without = waver(Play("DemoModulation", 100, 6, 6));
  std::printf("cents: with %.1f, without %.1f\n", with, without);
  EXPECT_GT(with, 2 * without);
}

// With a SoundFont that has the variations: each of them sounds an octave above its instrument here.
TEST_F(DemonstrationSound, EachSecondNoteOfTheScaleComesFromTheOtherBank) {
  std::vector<SmallPreset> presets = {{128, 0, 0}};
  const int programs[] = {4, 6, 14, 16, 19, 24, 80, 107};
  for (const int program : programs) {
    presets.push_back({0, program, 0});
    presets.push_back({8, program, 12});
  }
  const QString font = folder_.filePath(QStringLiteral("small.sf2"));
  ASSERT_TRUE(WriteSmallSoundFont(font, presets));
  const ScopedVariable font_variable("ZELMAR_SOUNDFONT", font);
  const SoundFile sound = Play("DemoBankSelect", 400);
  const double scale[] = {261.63, 293.66, 329.63, 349.23, 392.00, 440.00, 493.88, 523.25};
  for (int note = 0; note < 8; ++note) {
    const double plain = sound.Pitch(At(4 * note + 0.5)), other = sound.Pitch(At(4 * note + 2.5));
    EXPECT_NEAR(plain, scale[note], 0.02 * scale[note]) << note;
    EXPECT_NEAR(other, 2 * scale[note], 0.04 * scale[note]) << note;
  }
}

}  // namespace
}  // namespace zelmar
