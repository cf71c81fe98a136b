#include "app/options/demonstrations.h"

#include <QStringList>

#include "model/tune.h"

namespace zelmar {

namespace {

constexpr std::int16_t kTempo = 60;
constexpr double kCrotchets = 4.0;  // how long a test sounds: four seconds
constexpr std::uint8_t kDrawbarOrgan = 16;
constexpr std::uint8_t kPiano = 0;

std::shared_ptr<Tune> TestTune(const QString& title, const QString& file_name, std::uint8_t instrument,
                               const QStringList& pitches) {
  auto tune = std::make_shared<Tune>();
  tune->SetTitle(title);
  tune->SetFileName(file_name);
  tune->SetTempo(kTempo);
  std::int32_t key = 0;
  for (const QString& pitch : pitches) {
    auto tone = std::make_shared<Tone>();
    tone->SetPitch(pitch);
    tone->SetDuration(kCrotchets);
    tone->SetInstrument(instrument);
    tone->SetAbsRef(++key);
    tune->Add(std::move(tone));
  }
  tune->SetLastAbsRef(key);
  tune->CalcNotesOff();
  tune->SortStartTimes();
  // There is nothing in it that a person would want to keep.
  tune->SetChangedSinceLastSaved(false);
  return tune;
}

std::shared_ptr<Tune> OrganChord() {
  return TestTune(
      QStringLiteral("Test Organ Chord"), QStringLiteral("TestOrganChord"), kDrawbarOrgan,
      {QStringLiteral("Eb3"), QStringLiteral("G3"), QStringLiteral("Bb3"), QStringLiteral("Eb4")});
}

std::shared_ptr<Tune> PianoNote() {
  return TestTune(QStringLiteral("Test Piano Note"), QStringLiteral("TestPianoNote"), kPiano,
                  {QStringLiteral("C4")});
}

// The letters of the main menu are left to it.
constexpr Demonstration kDemonstrations[] = {
    {"cmdExpression", "Express&ion", "This demonstates how MIDI creates a crescendo on a sustained note.",
     "demoExpression"},
    {"cmdModulation", "Mod&ulation", "Plays a violin tune WITH modulation (vibrato), then again WITHOUT it.",
     "DemoModulation"},
    {"cmdSoundEffects", "Soun&d Effects",
     "Demonstrates some MIDI FX sound effects, with and without some bank selects.", "DemoSoundEffects"},
    {"cmdBankSelect", "Ban&k Select",
     "Plays each note of a scale twice, once without bank selects, then with it, to demonstrate the "
     "different "
     "tones.",
     "DemoBankSelect"},
    {"cmdPortamento", "Port&amento",
     "Uses a trombone to illustrate how portamento simulates sliding the slide up from C3 to F3",
     "DemoPortamento"},
    {"cmdChorus", "&Chorus",
     "Plays a violin tune WITHOUT chorus effect, then again WITH it, to highlight the difference.",
     "DemoChorus"},
    {"cmdReverb", "&Reverb (Echo)",
     "Demonstrates the echo effect with a choir, first no echo, then full reverb", "DemoReverb"},
    {"cmdStereoDemo", "S&tereo Demo (Pan left to right)",
     "Click this button to hear a scale on vibes, panning from left to right", "StereoDemo"},
    {"cmdOrganChord", "Sustai&ned Organ Chord", "Click this button to hear an Eb chord played on the organ.",
     "", &OrganChord},
    {"cmdPianoNote", "Single note on piano (deca&ying sound)",
     "Click this button to hear middle C played on the piano.", "", &PianoNote},
};

}  // namespace

std::span<const Demonstration> Demonstrations() {
  return kDemonstrations;
}

}  // namespace zelmar
