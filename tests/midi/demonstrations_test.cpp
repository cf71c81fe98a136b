// The demonstrations that ship, played whole on the virtual clock: every message at its moment, written down
// here from what the button of each promises.
#include <gtest/gtest.h>

#include <algorithm>

#include "model/main_window_link.h"
#include "model/tune.h"
#include "store/tune_loader.h"
#include "support/scripted_services.h"
#include "support/template_database.h"

namespace zelmar {
namespace {

using testing_support::ScriptedPlatform;
using testing_support::SentMessage;

struct Step {
  double crotchets;  // from the head of the tune
  std::string what;  // "on 60 100", "off 60", "program 40", "11=127", "mode GS"
};

std::string Controller(int number, int value) {
  return std::to_string(number) + "=" + std::to_string(value);
}

// What a message says, as a step says it. All demonstrations play on channel 1.
std::string WordsOf(const SentMessage& message) {
  if (message.kind == SentMessage::Kind::kLong)
    return message.bytes == QByteArray::fromHex("f04110421240007f0041f7") ? "mode GS" : "another mode";
  const std::uint32_t data1 = (message.packed >> 8U) & 0xFFU;
  const std::uint32_t data2 = message.packed >> 16U;
  std::string words;
  switch (message.packed & 0xF0U) {
    case 0x90:
      words = data2 == 0 ? "off " + std::to_string(data1)
                         : "on " + std::to_string(data1) + " " + std::to_string(data2);
      break;
    case 0xB0:
      words = Controller(static_cast<int>(data1), static_cast<int>(data2));
      break;
    case 0xC0:
      words = "program " + std::to_string(data1);
      break;
    default:
      words = "?";
  }
  const std::uint32_t channel = (message.packed & 0x0FU) + 1;
  return channel == 1 ? words : words + " on channel " + std::to_string(channel);
}

// Builds the list of steps of one voice.
class Script {
 public:
  Script(int program, int velocity) : program_(program), velocity_(velocity) {}

  Script& Control(int number, int value) {
    steps_.push_back({now_, Controller(number, value)});
    return *this;
  }
  Script& Program(int program) {
    program_ = program;
    return *this;
  }
  Script& Note(int number, double crotchets) { return Chord({number}, crotchets, crotchets); }
  Script& Chord(std::initializer_list<int> numbers, double sounding, double crotchets) {
    for (const int number : numbers) Begin(number);
    for (const int number : numbers) steps_.push_back({now_ + sounding, "off " + std::to_string(number)});
    return Rest(crotchets);
  }
  Script& Begin(int number) {
    steps_.push_back({now_, "program " + std::to_string(program_)});
    steps_.push_back({now_, "on " + std::to_string(number) + " " + std::to_string(velocity_)});
    return *this;
  }
  Script& End(int number) {
    steps_.push_back({now_, "off " + std::to_string(number)});
    return *this;
  }
  Script& Rest(double crotchets) {
    now_ += crotchets;
    return *this;
  }
  // In order of time, what ends before what begins.
  std::vector<Step> Steps() const {
    std::vector<Step> steps = steps_;
    const auto rank = [](const Step& step) { return step.what.starts_with("off") ? 0 : 1; };
    std::stable_sort(steps.begin(), steps.end(), [&rank](const Step& a, const Step& b) {
      return a.crotchets == b.crotchets ? rank(a) < rank(b) : a.crotchets < b.crotchets;
    });
    return steps;
  }

 private:
  int program_;
  int velocity_;
  double now_ = 0.0;
  std::vector<Step> steps_;
};

class DemonstrationTunes : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(library_.Path().isEmpty()) << "the build made no template database";
    platform_.events->step_microseconds = 0;
  }

  // Plays the tune and holds every message to the script; `mode` names the mode that it asks for.
  void Expect(const char* code_name, double crotchet_ms, const Script& script, const char* mode = nullptr) {
    TuneLoader loader;
    QString name = QString::fromLatin1(code_name);
    loader.DoLoad(name);
    ASSERT_TRUE(loader.LoadedOk());
    const auto tune = TheMainWindow().MyTune();
    EXPECT_EQ(tune->Length(), QStringLiteral("demo"));
    platform_.midi->sent.clear();
    const double start = SecondsSinceMidnight();
    tune->SetMelodyStartTime(static_cast<float>(start));
    tune->Play();

    std::vector<std::string> prelude;
    for (int channel = 1; channel <= 16; ++channel)
      for (const char* reset : {"7=127", "11=127"})
        prelude.push_back(reset + (channel == 1 ? "" : " on channel " + std::to_string(channel)));
    if (mode != nullptr) prelude.push_back(std::string("mode ") + mode);
    prelude.push_back("0=0");
    prelude.push_back("32=0");
    const std::vector<Step> steps = script.Steps();
    const auto& sent = platform_.midi->sent;
    ASSERT_EQ(sent.size(), prelude.size() + steps.size());
    for (std::size_t i = 0; i < prelude.size(); ++i)
      ASSERT_EQ(WordsOf(sent[i]), prelude[i]) << "message " << i;

    // Of one moment one event leaves every two milliseconds.
    constexpr double kLatest = 24.0;
    for (std::size_t first = 0; first < steps.size();) {
      const double at = steps[first].crotchets;
      std::vector<std::string> expected, came;
      for (; first < steps.size() && steps[first].crotchets == at; ++first) {
        const SentMessage& message = sent[prelude.size() + first];
        const double late = (message.seconds - start) * 1000.0 - at * crotchet_ms;
        ASSERT_GE(late, -1.0) << WordsOf(message) << " at " << at;
        ASSERT_LE(late, kLatest) << WordsOf(message) << " at " << at;
        expected.push_back(steps[first].what);
        came.push_back(WordsOf(message));
      }
      ASSERT_EQ(came, expected) << "at " << at;
    }
    EXPECT_TRUE(platform_.messages->shown.isEmpty());
  }

  ScriptedPlatform platform_;
  testing_support::TemplateDatabase library_{QStringLiteral(ZELMAR_BUILD_DIRECTORY "/ZelmarTemplate.mdb")};
};

TEST_F(DemonstrationTunes, ExpressionRisesOnOneHeldNote) {
  constexpr int kStrings = 48, kNote = 67;
  Script script(kStrings, 100);
  script.Control(11, 3).Begin(kNote);
  for (int value = 7; value <= 127; value += 4) script.Rest(0.5).Control(11, value);
  script.Rest(0.5 + 4).End(kNote);
  Expect("demoExpression", 500, script);
}

TEST_F(DemonstrationTunes, TheViolinPlaysWithModulationAndThenWithout) {
  constexpr int kViolin = 40;
  Script script(kViolin, 95);
  const auto tune = [&script] {
    script.Note(78, 2).Note(76, 1).Note(74, 2).Note(71, 1).Note(69, 2).Note(73, 1).Note(74, 3);
  };
  script.Control(1, 100);
  tune();
  script.Rest(2).Control(1, 0).Rest(1);
  tune();
  Expect("DemoModulation", 833, script);
}

TEST_F(DemonstrationTunes, TheViolinPlaysWithoutChorusAndThenWithIt) {
  constexpr int kViolin = 40;
  Script script(kViolin, 95);
  const auto tune = [&script] {
    script.Note(67, 1.5).Note(69, 0.5).Note(71, 1).Note(67, 1).Note(76, 2).Note(74, 1).Note(71, 1);
    script.Note(72, 1.5).Note(71, 0.5).Note(69, 1).Note(71, 1).Note(67, 4);
  };
  script.Control(93, 0);
  tune();
  script.Rest(2).Control(93, 127).Rest(2);
  tune();
  script.Rest(2).Control(93, 0);
  Expect("DemoChorus", 625, script);
}

TEST_F(DemonstrationTunes, TheChoirSingsWithoutEchoAndThenWithAllOfIt) {
  constexpr int kChoir = 52;
  Script script(kChoir, 100);
  const auto chords = [&script] {
    script.Chord({60, 64, 67, 72}, 2, 4).Chord({60, 65, 69, 72}, 2, 4);
    script.Chord({59, 62, 67, 71}, 2, 4).Chord({60, 64, 67, 72}, 2, 3);
  };
  script.Control(91, 0);
  chords();
  script.Control(91, 127).Rest(1);
  chords();
  // The echo of the last chord is left its time.
  script.Rest(3).Control(91, 0);
  Expect("DemoReverb", 652, script);
}

TEST_F(DemonstrationTunes, TheScaleOnVibesStepsFromLeftToRight) {
  constexpr int kVibraphone = 11;
  Script script(kVibraphone, 100);
  const std::pair<int, int> steps[] = {{0, 60},  {18, 62}, {36, 64},  {54, 65},
                                       {73, 67}, {91, 69}, {109, 71}, {127, 72}};
  for (const auto& [pan, number] : steps) script.Control(10, pan).Note(number, 1);
  script.Rest(2).Control(10, 64);
  Expect("StereoDemo", 714, script);
}

TEST_F(DemonstrationTunes, TheTromboneSlidesFromC3ToF3) {
  constexpr int kTrombone = 57, kC3 = 48, kF3 = 53;
  Script script(kTrombone, 100);
  script.Note(kC3, 2).Note(kF3, 2).Rest(4);
  // The slide is made ready while C3 still sounds.
  script.Begin(kC3).Rest(1.5).Control(5, 8).Control(65, 127).Control(84, kC3).Rest(0.5).End(kC3).Note(kF3, 4);
  script.Rest(1).Control(65, 0);
  Expect("DemoPortamento", 833, script);
}

TEST_F(DemonstrationTunes, EachSecondNoteOfTheScaleHasABankSelectedAroundIt) {
  Script script(0, 100);
  const std::pair<int, int> steps[] = {{60, 4},  {62, 6},  {64, 14}, {65, 16},
                                       {67, 19}, {69, 24}, {71, 80}, {72, 107}};
  for (const auto& [number, program] : steps) {
    script.Program(program).Note(number, 1.5).Control(0, 8).Control(32, 0).Rest(0.5);
    script.Note(number, 1.5).Control(0, 0).Control(32, 0).Rest(0.5);
  }
  Expect("DemoBankSelect", 750, script, "GS");
}

TEST_F(DemonstrationTunes, SoundEffectsComeWithoutAndWithABankSelect) {
  constexpr int kC4 = 60;
  Script script(0, 110);
  const std::pair<int, int> effects[] = {{122, 2}, {123, 1}, {124, 2}, {125, 6}, {126, 1}, {127, 3}};
  for (const auto& [program, bank] : effects) {
    script.Program(program).Note(kC4, 3).Control(0, bank).Control(32, 0).Rest(1);
    script.Note(kC4, 3).Control(0, 0).Control(32, 0).Rest(1);
  }
  Expect("DemoSoundEffects", 600, script, "GS");
}

}  // namespace
}  // namespace zelmar
