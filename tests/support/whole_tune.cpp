#include "support/whole_tune.h"

#include <bit>
#include <limits>
#include <random>
#include <stdexcept>

#include "store/packed_tune.h"

namespace zelmar::testing_support {

namespace {

QString Text(const QString& text) {
  return text.isNull() ? QStringLiteral("null") : u'"' + text + u'"';
}

// The fields of one thing.
class Line {
 public:
  explicit Line(const char* thing) : text_(QString::fromLatin1(thing)) {}
  Line& Field(const char* name, const QString& value) {
    text_ += QStringLiteral(" %1=%2").arg(QString::fromLatin1(name), Text(value));
    return *this;
  }
  Line& Field(const char* name, qint64 value) {
    text_ += QStringLiteral(" %1=%2").arg(QString::fromLatin1(name)).arg(value);
    return *this;
  }
  operator QString() const { return text_; }  // NOLINT: a line is its text

 private:
  QString text_;
};

QString LineOf(const Tone& tone) {
  return Line("tone")
      .Field("AbsRef", tone.AbsRef())
      .Field("EventType", tone.EventType())
      .Field("Bar", tone.Bar())
      .Field("Beat", tone.Beat())
      .Field("Tick", tone.Tick())
      .Field("Duration", std::bit_cast<qint64>(tone.Duration()))
      .Field("Number", tone.Number())
      .Field("EnHarmonic", tone.EnHarmonic())
      .Field("Volume", tone.Volume())
      .Field("OldVolume", tone.OldVolume())
      .Field("Instrument", tone.Instrument())
      .Field("Track", tone.Track())
      .Field("Channel", tone.Channel())
      .Field("BeatsPerBar", tone.BeatsPerBar())
      .Field("BeatLength", tone.BeatLength())
      .Field("SendPatch", tone.SendPatch());
}

QString LineOf(const Track& track, bool keyed) {
  return Line("track")
      .Field("TrackNumber", track.TrackNumber())
      .Field("Description", track.Description())
      .Field("Channel", track.Channel())
      .Field("Instrument", track.Instrument())
      .Field("Muted", track.Muted())
      .Field("BankMSB0", track.BankMSB0())
      .Field("BankLSB32", track.BankLSB32())
      .Field("DefaultVolume", track.DefaultVolume())
      .Field("found by its number", keyed);
}

QString LineOf(const Word& word) {
  return Line("word")
      .Field("Bar", word.Bar())
      .Field("Beat", word.Beat())
      .Field("Tick", word.Tick())
      .Field("WordText", word.WordText());
}

QString LineOf(const Theme& theme) {
  return Line("theme")
      .Field("ThemeNo", theme.ThemeNo())
      .Field("ThemeStartBar", theme.ThemeStartBar())
      .Field("ThemeEndBar", theme.ThemeEndBar())
      .Field("ThemeNotes", theme.ThemeNotes())
      .Field("TrackNumber", theme.TrackNumber())
      .Field("Rank", theme.Rank());
}

QString LineOfCatalogue(const Tune& tune) {
  return Line("tune")
      .Field("Title", tune.Title())
      .Field("FileName", tune.FileName())
      .Field("Description", tune.Description())
      .Field("Composer", tune.Composer())
      .Field("Category", tune.Category())
      .Field("SoloInstrument", tune.SoloInstrument())
      .Field("Ensemble", tune.Ensemble())
      .Field("Style", tune.Style())
      .Field("Country", tune.Country())
      .Field("Length", tune.Length())
      .Field("Rank", tune.Rank())
      .Field("Tempo", tune.Tempo())
      .Field("MIDIMode", tune.MIDIMode())
      .Field("BeatsPerBar", tune.BeatsPerBar())
      .Field("BeatLength", tune.BeatLength())
      .Field("PulsesPerBeat", tune.PulsesPerBeat())
      .Field("KeySignature", tune.KeySignature())
      .Field("KeyMode", tune.KeyMode())
      .Field("MelodyTrack", tune.MelodyTrack())
      .Field("AccompPattern", tune.AccompPattern())
      .Field("LastAbsRef", tune.LastAbsRef())
      .Field("TrackFilterOn", tune.TrackFilterOn())
      .Field("Sorted", tune.Sorted())
      .Field("ChangedSinceLastSaved", tune.ChangedSinceLastSaved())
      .Field("SavedFileName", tune.SavedFileName());
}

class Chance {
 public:
  explicit Chance(unsigned seed) : engine_(seed) {}

  template <typename T>
  T Any() {
    return Between(std::numeric_limits<T>::min(), std::numeric_limits<T>::max());
  }
  template <typename T>
  T Between(T low, T high) {
    return static_cast<T>(std::uniform_int_distribution<qint64>(low, high)(engine_));
  }
  bool Flip() { return Between(0, 1) == 1; }
  QString Text() {
    if (Between(0, 9) == 0) return {};
    // Characters of all kinds, halves of pairs too.
    QString text = QStringLiteral("");
    for (int left = Between(0, 12); left > 0; --left) text += QChar(Any<char16_t>());
    return text;
  }
  double Duration() { return std::bit_cast<double>(Any<std::int64_t>()); }

 private:
  std::mt19937 engine_;
};

void AddRandomEvents(Tune& tune, Chance& chance) {
  const QStringList marks = {QStringLiteral(" "), QStringLiteral("#"), QStringLiteral("b"), QString(),
                             chance.Text()};
  const auto tones = std::make_shared<Tones>();
  std::int32_t abs_ref = chance.Between(-5, 100);
  for (int left = chance.Between(0, 60); left > 0; --left) {
    auto tone = std::make_shared<Tone>();
    tone->SetAbsRef(abs_ref += chance.Between(1, 3));
    tone->SetEventType(chance.Any<std::uint8_t>());
    tone->SetBar(chance.Any<std::int16_t>());
    tone->SetBeat(chance.Any<std::int16_t>());
    tone->SetTick(chance.Any<std::int16_t>());
    tone->SetDuration(chance.Duration());
    tone->SetNumber(chance.Between<std::int16_t>(0, 127));
    tone->SetEnHarmonic(marks[chance.Between<qsizetype>(0, marks.size() - 1)]);
    tone->SetVolume(chance.Any<std::uint8_t>());
    tone->SetOldVolume(chance.Any<std::int32_t>());
    tone->SetInstrument(chance.Any<std::uint8_t>());
    tone->SetTrack(chance.Any<std::uint8_t>());
    tone->SetChannel(chance.Any<std::uint8_t>());
    tone->SetBeatsPerBar(chance.Any<std::int16_t>());
    tone->SetBeatLength(chance.Any<std::uint8_t>());
    tone->SetSendPatch(chance.Flip());
    tones->Add(std::move(tone));
  }
  tune.SetTones(tones);
}

}  // namespace

QStringList Everything(Tune& tune) {
  QStringList lines = {LineOfCatalogue(tune)};
  for (const auto& track : *tune.Tracks()) {
    const QString key = QString::number(track->TrackNumber());
    lines.append(LineOf(*track, tune.Tracks()->Holds(key) && tune.Tracks()->Item(key) == track));
  }
  for (const auto& word : *tune.Words()) lines.append(LineOf(*word));
  for (const auto& theme : *tune.Themes()) lines.append(LineOf(*theme));
  for (const auto& tone : tune) lines.append(LineOf(*tone));
  return lines;
}

QByteArray PackedWhole(Tune& tune) {
  // Not owned: the tune may lie on the stack.
  TunePacker packer(std::shared_ptr<Tune>(std::shared_ptr<Tune>(), &tune));
  if (!packer.Advance(TunePacker::kAllEvents)) throw std::runtime_error("the tune was not packed at once");
  return packer.Head() + packer.Events();
}

std::shared_ptr<Tune> TuneWithEverything() {
  auto tune = std::make_shared<Tune>();
  tune->SetFileName(QStringLiteral("Ode"));
  tune->SetChangedSinceLastSaved(false);
  tune->SetTitle(QStringLiteral("Ode „an die Freude“ 𝄞"));
  tune->SetDescription(QStringLiteral("Two\nlines"));
  tune->SetComposer(QStringLiteral("Beethoven"));
  tune->SetCategory(QStringLiteral("Choral"));
  tune->SetSoloInstrument(QStringLiteral("Voice"));
  tune->SetEnsemble(QStringLiteral("Choir"));
  tune->SetStyle(QStringLiteral("Classical"));
  tune->SetCountry(QStringLiteral("Germany"));
  tune->SetLength(QStringLiteral("Full"));
  tune->SetRank(-7);
  tune->SetTempo(96);
  tune->SetMIDIMode(QStringLiteral("XG"));
  tune->SetBeatsPerBar(3);
  tune->SetBeatLength(8);
  tune->SetKeySignature(-2);
  tune->SetKeyMode(1);
  tune->SetMelodyTrack(2);
  tune->SetAccompPattern(7);
  tune->SetTrackFilterOn(true);
  tune->Tracks()->Item(QStringLiteral("1"))->SetDescription(QString());
  tune->Tracks()
      ->Add(QStringLiteral("Pedal"), 2, 16, 19, true, 8, 9, QStringLiteral("2"))
      ->SetDefaultVolume(99);
  // A second one of its number is found by its place alone.
  tune->Tracks()->Add(QStringLiteral("Twin"), 2, 3, 4, false, 5, 6);
  tune->Words()->Add(60, 2, 1, QStringLiteral("Freu-"));
  tune->Words()->Add(0, 3, 1, QStringLiteral(""));
  tune->Themes()->Add(1, 2, 3, QStringLiteral("first"), 2, 10);
  tune->Themes()->Add(2, 4, 5, QString(), 1, 11);
  for (const int type : {128, 11, 131, 132, 133, 0}) {
    auto tone = std::make_shared<Tone>();
    const std::int32_t abs_ref = 40 + type;
    tone->SetAbsRef(abs_ref);
    tone->SetEventType(static_cast<EventType>(type));
    tone->SetBar(static_cast<std::int16_t>(1 + type % 5));
    tone->SetBeat(3);
    tone->SetTick(41);
    tone->SetDuration(1.0 / 3.0);
    tone->SetPitch(QStringLiteral("Ab7"));
    tone->SetEnHarmonic(QStringLiteral("#"));
    tone->SetVolume(91);
    tone->SetOldVolume(70000);
    tone->SetInstrument(23);
    tone->SetTrack(2);
    tone->SetChannel(16);
    tone->SetBeatLength(8);
    tone->SetSendPatch(true);
    tune->Add(std::move(tone));
  }
  tune->CalcNotesOff();
  tune->SortStartTimes();
  return tune;
}

std::shared_ptr<Tune> RandomTune(unsigned seed) {
  Chance chance(seed);
  auto tune = std::make_shared<Tune>();
  tune->SetFileName(chance.Text());
  if (chance.Flip()) tune->SetChangedSinceLastSaved(false);
  for (const auto set :
       {&Tune::SetTitle, &Tune::SetFileName, &Tune::SetDescription, &Tune::SetComposer, &Tune::SetCategory,
        &Tune::SetSoloInstrument, &Tune::SetEnsemble, &Tune::SetStyle, &Tune::SetCountry, &Tune::SetLength})
    (*tune.*set)(chance.Text());
  tune->SetRank(chance.Any<std::int16_t>());
  tune->SetTempo(chance.Between<std::int16_t>(1, 500));
  tune->SetMIDIMode(QStringLiteral("GS"));
  tune->SetBeatsPerBar(chance.Any<std::int16_t>());
  tune->SetBeatLength(chance.Any<std::uint8_t>());
  tune->SetKeySignature(chance.Any<std::int16_t>());
  tune->SetKeyMode(chance.Any<std::uint8_t>());
  tune->SetMelodyTrack(chance.Any<std::uint8_t>());
  tune->SetAccompPattern(chance.Any<std::uint8_t>());
  tune->SetTrackFilterOn(chance.Flip());
  tune->SetSorted(chance.Flip());
  for (int left = chance.Between(0, 9); left > 0; --left) {
    const auto number = chance.Any<std::uint8_t>();
    const QString key = QString::number(number);
    tune->Tracks()
        ->Add(chance.Text(), number, chance.Any<std::uint8_t>(), chance.Any<std::uint8_t>(), chance.Flip(),
              chance.Any<std::uint8_t>(), chance.Any<std::uint8_t>(),
              tune->Tracks()->Holds(key) ? QString() : key)
        ->SetDefaultVolume(chance.Any<std::uint8_t>());
  }
  for (int left = chance.Between(0, 9); left > 0; --left)
    tune->Words()->Add(chance.Any<std::int16_t>(), chance.Any<std::int16_t>(), chance.Any<std::int16_t>(),
                       chance.Text());
  for (int left = chance.Between(0, 9); left > 0; --left)
    tune->Themes()->Add(chance.Any<std::uint8_t>(), chance.Any<std::int16_t>(), chance.Any<std::int16_t>(),
                        chance.Text(), chance.Any<std::uint8_t>(), chance.Any<std::int16_t>());
  AddRandomEvents(*tune, chance);
  tune->SetLastAbsRef(chance.Any<std::int32_t>());
  return tune;
}

}  // namespace zelmar::testing_support
