// The members of Tune that read its key and spell its notes, that find its rests, and that build small tunes
// from lists of pitches and durations.

#include <algorithm>
#include <array>
#include <cmath>

#include "model/note_names.h"
#include "model/pulses.h"
#include "model/tune.h"
#include "platform/numbers.h"

namespace zelmar {

namespace {

// --- Keys ---

constexpr int kFewestSharps = -7;
constexpr int kSignatureCount = 15;
constexpr std::array<const char*, kSignatureCount> kMajorTonics = {
    "Cb", "Gb", "Db", "Ab", "Eb", "Bb", "F", "C", "G", "D", "A", "E", "B", "F#", "C#"};
constexpr std::array<const char*, kSignatureCount> kMinorTonics = {
    "Ab", "Eb", "Bb", "F", "C", "G", "D", "A", "E", "B", "F#", "C#", "G#", "D#", "A#"};

// The place of a signature in the tables, -1 for one outside them.
int SignatureIndex(std::int16_t signature) {
  const int index = signature - kFewestSharps;
  return index >= 0 && index < kSignatureCount ? index : -1;
}

// --- Spelling ---

constexpr int kMany = 32767;

// A canonical note that is spelled otherwise in the keys from `fewest_sharps` to `most_sharps`.
struct Respelling {
  const char16_t* note;
  int fewest_sharps;
  int most_sharps;
  const char16_t* mark;
};

constexpr Respelling kSignatureRules[] = {
    {u"Eb", 1, kMany, u"#"},        // D#
    {u"Ab", 1, kMany, u"#"},        // G#
    {u"Bb", 1, kMany, u"#"},        // A#
    {u"C#", -kMany - 1, -1, u"b"},  // Db
    {u"F#", -kMany - 1, -1, u"b"},  // Gb
    {u"C", 7, kMany, u"#"},         // B#
    {u"B", -kMany - 1, -6, u"b"},   // Cb
    {u"F", 6, kMany, u"#"},         // E#
    {u"E", -7, -7, u"b"},           // Fb
};

// In a minor key the raised seventh is the leading note, and is written one step below the tonic.
constexpr Respelling kLeadingNoteRules[] = {
    {u"F#", -2, -2, u" "},  // F# in G minor
    {u"C#", -1, -1, u" "},  // C# in D minor
    {u"Ab", 0, 0, u"#"},    // G# in A minor
    {u"Eb", 1, 1, u"#"},    // D# in E minor
    {u"Bb", 2, 2, u"#"},    // A# in B minor
    {u"F", 3, 3, u"#"},     // E# in F# minor
    {u"C", 4, 4, u"#"},     // B# in C# minor
};

constexpr int kPitchClasses = 12;
using Marks = std::array<QString, kPitchClasses>;  // by pitch class; null where the mark stays as it is

template <std::size_t kCount>
void ApplyRules(const Respelling (&rules)[kCount], std::int16_t signature, Marks& marks) {
  for (const Respelling& rule : rules)
    if (signature >= rule.fewest_sharps && signature <= rule.most_sharps)
      marks[static_cast<std::size_t>(NoteNames().indexOf(QString::fromUtf16(rule.note)))] =
          QString::fromUtf16(rule.mark);
}

std::size_t PitchClass(const Tone& tone) {
  return static_cast<std::size_t>((tone.Number() % kPitchClasses + kPitchClasses) % kPitchClasses);
}

// --- Rests ---

// Rests up to a tenth of a crotchet are too short to draw.
constexpr double kShortestRest = 0.1 * kPulsesPerCrotchet;
// Durations that come from single precision miss a whole number of pulses by less than this.
constexpr double kPulseTolerance = 1e-4;

// Walks along the bars of one track and writes down its silences. Places are held as pulses within a bar, in
// which whole ticks stay whole numbers.
class GapFinder {
 public:
  GapFinder(Rests& rests, std::int16_t beats_per_bar, std::uint8_t beat_length)
      : rests_(rests),
        pulses_per_beat_(Quotient(kPulsesPerSemibreve, beat_length)),
        bar_end_(beats_per_bar * pulses_per_beat_) {}

  // Takes the next note of the track.
  void Meet(const Tone& note) {
    CompleteBarsBefore(note.Bar());
    const double start = (note.Beat() - 1) * pulses_per_beat_ + note.Tick();
    AddRestUpTo(start);
    position_ = start + note.Duration() * kPulsesPerCrotchet;
  }

  // Fills up the bar at hand and every further one before `bar`, each from where its last note ended.
  void CompleteBarsBefore(std::int32_t bar) {
    for (; bar_ < bar; ++bar_) {
      AddRestUpTo(bar_end_);
      position_ = 0.0;
    }
  }

 private:
  void AddRestUpTo(double end) {
    const double length = end - position_;
    if (length <= kShortestRest + kPulseTolerance) return;
    const double beats_before = std::floor((position_ + kPulseTolerance) / pulses_per_beat_);
    const double tick = std::max(0.0, position_ + kPulseTolerance - beats_before * pulses_per_beat_);
    rests_.Add(length / kPulsesPerCrotchet, Narrow<std::int16_t>(bar_),
               RoundHalfEven<std::int16_t>(beats_before + 1), IntegerPart<std::int16_t>(tick));
  }

  Rests& rests_;
  const double pulses_per_beat_;
  const double bar_end_;
  std::int32_t bar_ = 1;
  double position_ = 0.0;  // where the last note of the bar ended
};

// --- Tunes from lists ---

// Gives the tone the place that lies `total` crotchets from the start of the tune.
void PlaceAfter(Tone& tone, float total, std::int16_t beats_per_bar, std::uint8_t beat_length) {
  if (beats_per_bar == 0) throw DivisionError();
  const auto pulses_per_beat = RoundHalfEven<std::int32_t>(Quotient(kPulsesPerSemibreve, beat_length));
  const double beats = total / Quotient(4.0, beat_length);
  const auto beat_number = CheckedAdd<std::int32_t>(IntegerPart<std::int32_t>(beats), 1);
  const auto beat = beat_number % beats_per_bar;
  tone.SetBar(IntegerPart<std::int16_t>((beats_per_bar + beat_number - 1.0) / beats_per_bar));
  tone.SetBeat(beat == 0 ? beats_per_bar : Narrow<std::int16_t>(beat));
  tone.SetTick(IntegerPart<std::int16_t>((beats - beat_number + 1) * pulses_per_beat));
}

}  // namespace

QString Tune::key() const {
  const int index = SignatureIndex(KeySignature());
  if (index < 0 || KeyMode() > 1) throw SubscriptError();
  const auto place = static_cast<std::size_t>(index);
  return KeyMode() == 0 ? QLatin1String(kMajorTonics[place]) + QStringLiteral(" Major")
                        : QLatin1String(kMinorTonics[place]) + QStringLiteral(" Minor");
}

QString Tune::EquivMajorKey() const {
  const int index = SignatureIndex(KeySignature());
  return index < 0 ? QString() : QString::fromLatin1(kMajorTonics[static_cast<std::size_t>(index)]);
}

void Tune::SetEquivMajorKey(const QString& name) {
  for (int index = 0; index < kSignatureCount; ++index)
    if (name == QLatin1String(kMajorTonics[static_cast<std::size_t>(index)]))
      SetKeySignature(static_cast<std::int16_t>(kFewestSharps + index));
  SetChangedSinceLastSaved(true);
}

void Tune::CalcEnharmonics() {
  Marks marks;
  ApplyRules(kSignatureRules, KeySignature(), marks);
  if (KeyMode() == 1) ApplyRules(kLeadingNoteRules, KeySignature(), marks);
  tones_->ForEach([&marks](Tone& tone) {
    const QString& mark = marks[PitchClass(tone)];
    if (!mark.isNull()) tone.SetEnHarmonic(mark);
  });
}

void Tune::CalcGaps(std::uint8_t track_number) {
  const std::shared_ptr<Track> track = tracks_->Item(QString::number(track_number));
  const std::shared_ptr<Rests> rests = track->Rests();
  GapFinder finder(*rests, BeatsPerBar(), BeatLength());
  rests->Clear();
  std::int16_t last_bar = 0;
  std::int16_t last_note_off = 0;  // its bar
  tones_->ForEach([&](const Tone& tone) {
    std::int16_t& last = tone.EventType() == MUSIC_NOTE_OFF ? last_note_off : last_bar;
    last = std::max(last, tone.Bar());
    if (tone.Track() == track_number && tone.EventType() == MUSIC_NOTE) finder.Meet(tone);
  });
  // Whether a bar counts that note-offs alone stand in, BarCount says; it costs another walk.
  if (last_note_off > last_bar) last_bar = BarCount();
  finder.CompleteBarsBefore(last_bar + 1);
}

void Tune::CreateMelody(std::uint8_t instrument, std::uint8_t volume, std::uint8_t channel,
                        const QStringList& pitches) {
  CreateMelodyArray(instrument, volume, channel, QStringList(QString()) + pitches,
                    Narrow<std::int32_t>(pitches.size()));
}

void Tune::CreateMelodyArray(std::uint8_t instrument, std::uint8_t volume, std::uint8_t channel,
                             const QStringList& pitches, std::int32_t count) {
  tracks_->Add(QStringLiteral("One Only Track"), 1, 1, 0, false, 0, 0);
  const std::int16_t beats_per_bar = BeatsPerBar();
  const double duration = Quotient(4.0, BeatLength());
  for (std::int32_t i = 1; i <= count; ++i) {
    if (i >= pitches.size()) throw SubscriptError();
    if (beats_per_bar == 0) throw DivisionError();
    auto tone = std::make_shared<Tone>();
    tone->SetPitch(pitches[i]);
    tone->SetAbsRef(2 * i - 1);
    tone->SetChannel(channel);
    tone->SetBar(Narrow<std::int16_t>((i - 1) / beats_per_bar + 1));
    const auto beat = static_cast<std::int16_t>(i % beats_per_bar);
    tone->SetBeat(beat == 0 ? beats_per_bar : beat);
    tone->SetInstrument(instrument);
    tone->SetVolume(volume);
    tone->SetDuration(duration);
    tone->SetTrack(1);
    Add(std::move(tone));
  }
}

void Tune::CreateRhythm(const QList<double>& durations) {
  if (BeatLength() == 0) throw DivisionError();
  // Single precision, in which three thirds of a beat make a whole one.
  float total = 0.0F;
  for (qsizetype i = 1; i <= durations.size(); ++i) {
    const std::shared_ptr<Tone> tone = Item(i);
    tone->SetBeatLength(BeatLength());
    tone->SetDuration(durations[i - 1]);
    PlaceAfter(*tone, total, BeatsPerBar(), BeatLength());
    total = static_cast<float>(total + durations[i - 1]);
  }
}

void Tune::CreateRhythmArray(const QList<float>& durations) {
  if (BeatLength() == 0) throw DivisionError();
  constexpr float kRestMark = 100.0F;
  float total = 0.0F;
  qsizetype next = 1;
  for (qsizetype i = 1; i < durations.size() && durations[i] > 0.0F; ++i) {
    const float value = durations[i];
    if (value > kRestMark) {
      total += value - kRestMark;
      continue;
    }
    const std::shared_ptr<Tone> tone = Item(next++);
    tone->SetBeatLength(BeatLength());
    tone->SetDuration(value);
    PlaceAfter(*tone, total, BeatsPerBar(), BeatLength());
    total += value;
  }
}

}  // namespace zelmar
