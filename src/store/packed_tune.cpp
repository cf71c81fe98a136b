#include "store/packed_tune.h"

#include <algorithm>

#include "model/tune.h"
#include "store/byte_stream.h"

namespace zelmar {

namespace {

[[noreturn]] void Refuse(const QString& reason) {
  throw Failure(error_number::kInvalidCall, reason);
}

// --- The head ---

// The texts of a tune, in the order of the bytes.
struct TuneText {
  const QString& (Tune::*get)() const;
  void (Tune::*set)(const QString&);
};
constexpr TuneText kTexts[] = {
    {&Tune::Title, &Tune::SetTitle},
    {&Tune::FileName, &Tune::SetFileName},
    {&Tune::Description, &Tune::SetDescription},
    {&Tune::Composer, &Tune::SetComposer},
    {&Tune::Category, &Tune::SetCategory},
    {&Tune::SoloInstrument, &Tune::SetSoloInstrument},
    {&Tune::Ensemble, &Tune::SetEnsemble},
    {&Tune::Style, &Tune::SetStyle},
    {&Tune::Country, &Tune::SetCountry},
    {&Tune::Length, &Tune::SetLength},
};

void PutCatalogue(ByteWriter& out, const Tune& tune) {
  for (const TuneText& text : kTexts) out.Put((tune.*text.get)());
  out.Put(tune.MIDIMode());
  out.Put(tune.Rank());
  out.Put(tune.Tempo());
  out.Put(tune.BeatsPerBar());
  out.Put(tune.BeatLength());
  out.Put(tune.KeySignature());
  out.Put(tune.KeyMode());
  out.Put(tune.MelodyTrack());
  out.Put(tune.AccompPattern());
  out.Put(tune.LastAbsRef());
  out.Put(std::uint8_t{tune.TrackFilterOn()});
  out.Put(std::uint8_t{tune.Sorted()});
}

void TakeCatalogue(ByteReader& in, Tune& tune) {
  for (const TuneText& text : kTexts) (tune.*text.set)(in.TakeText());
  // A mode or a tempo that no tune can have would show a message or divide by nothing.
  const QString mode = in.TakeText();
  if (!QStringList{QStringLiteral("GM"), QStringLiteral("GM2"), QStringLiteral("GS"), QStringLiteral("XG")}
           .contains(mode))
    Refuse(QStringLiteral("it names a MIDI mode that there is not"));
  tune.SetMIDIMode(mode);
  tune.SetRank(in.Take<std::int16_t>());
  const auto tempo = in.Take<std::int16_t>();
  if (tempo == 0) Refuse(QStringLiteral("its tempo is 0"));
  tune.SetTempo(tempo);
  tune.SetBeatsPerBar(in.Take<std::int16_t>());
  tune.SetBeatLength(in.Take<std::uint8_t>());
  tune.SetKeySignature(in.Take<std::int16_t>());
  tune.SetKeyMode(in.Take<std::uint8_t>());
  tune.SetMelodyTrack(in.Take<std::uint8_t>());
  tune.SetAccompPattern(in.Take<std::uint8_t>());
  tune.SetLastAbsRef(in.Take<std::int32_t>());
  tune.SetTrackFilterOn(in.TakeFlag());
  tune.SetSorted(in.TakeFlag());
}

template <typename Items, typename PutItem>
void PutAll(ByteWriter& out, const Items& items, PutItem put) {
  out.Put(static_cast<std::uint32_t>(items.Count()));
  for (const auto& item : items) put(*item);
}

// A track is found by its number unless another one of that number came first.
bool HasKey(const Tracks& tracks, const Track& track) {
  const QString key = QString::number(track.TrackNumber());
  return tracks.Holds(key) && tracks.Item(key).get() == &track;
}

void PutTracks(ByteWriter& out, const Tracks& tracks) {
  PutAll(out, tracks, [&](const Track& track) {
    out.Put(track.Description());
    out.Put(track.TrackNumber());
    out.Put(track.Channel());
    out.Put(track.Instrument());
    out.Put(std::uint8_t{track.Muted()});
    out.Put(track.BankMSB0());
    out.Put(track.BankLSB32());
    out.Put(track.DefaultVolume());
    out.Put(std::uint8_t{HasKey(tracks, track)});
  });
}

void TakeTracks(ByteReader& in, Tune& tune) {
  tune.SetTracks(std::make_shared<Tracks>());
  constexpr qsizetype kSmallest = 12;
  for (qsizetype left = in.TakeCount(kSmallest); left > 0; --left) {
    const QString description = in.TakeText();
    const auto number = in.Take<std::uint8_t>();
    const auto channel = in.Take<std::uint8_t>();
    const auto instrument = in.Take<std::uint8_t>();
    const bool muted = in.TakeFlag();
    const auto bank_msb = in.Take<std::uint8_t>();
    const auto bank_lsb = in.Take<std::uint8_t>();
    const auto default_volume = in.Take<std::uint8_t>();
    const QString key = in.TakeFlag() ? QString::number(number) : QString();
    tune.Tracks()
        ->Add(description, number, channel, instrument, muted, bank_msb, bank_lsb, key)
        ->SetDefaultVolume(default_volume);
  }
}

void PutWords(ByteWriter& out, const Words& words) {
  PutAll(out, words, [&](const Word& word) {
    out.Put(word.Bar());
    out.Put(word.Beat());
    out.Put(word.Tick());
    out.Put(word.WordText());
  });
}

void TakeWords(ByteReader& in, Tune& tune) {
  constexpr qsizetype kSmallest = 10;
  for (qsizetype left = in.TakeCount(kSmallest); left > 0; --left) {
    const auto bar = in.Take<std::int16_t>();
    const auto beat = in.Take<std::int16_t>();
    const auto tick = in.Take<std::int16_t>();
    tune.Words()->Add(tick, beat, bar, in.TakeText());
  }
}

void PutThemes(ByteWriter& out, const Themes& themes) {
  PutAll(out, themes, [&](const Theme& theme) {
    out.Put(theme.ThemeNo());
    out.Put(theme.ThemeStartBar());
    out.Put(theme.ThemeEndBar());
    out.Put(theme.ThemeNotes());
    out.Put(theme.TrackNumber());
    out.Put(theme.Rank());
  });
}

void TakeThemes(ByteReader& in, Tune& tune) {
  constexpr qsizetype kSmallest = 12;
  for (qsizetype left = in.TakeCount(kSmallest); left > 0; --left) {
    const auto number = in.Take<std::uint8_t>();
    const auto start = in.Take<std::int16_t>();
    const auto end = in.Take<std::int16_t>();
    const QString notes = in.TakeText();
    const auto track = in.Take<std::uint8_t>();
    tune.Themes()->Add(number, start, end, notes, track, in.Take<std::int16_t>());
  }
}

// --- The events ---

constexpr qsizetype kCountBytes = 4;
constexpr qsizetype kEventBytes = 38;

std::shared_ptr<Tone> TakeEvent(ByteReader& in, const QStringList& marks) {
  auto tone = std::make_shared<Tone>();
  tone->SetDuration(in.Take<double>());
  tone->SetAbsRef(in.Take<std::int32_t>());
  tone->SetOldVolume(in.Take<std::int32_t>());
  const auto mark = in.Take<std::uint32_t>();
  if (mark >= marks.size()) Refuse(QStringLiteral("an event has a spelling that there is not"));
  tone->SetEnHarmonic(marks[mark]);
  const auto number = in.Take<std::int16_t>();
  if (number < 0) Refuse(QStringLiteral("an event has a pitch below all octaves"));
  tone->SetNumber(number);
  tone->SetBar(in.Take<std::int16_t>());
  tone->SetBeat(in.Take<std::int16_t>());
  tone->SetTick(in.Take<std::int16_t>());
  tone->SetBeatsPerBar(in.Take<std::int16_t>());
  tone->SetEventType(in.Take<std::uint8_t>());
  tone->SetVolume(in.Take<std::uint8_t>());
  tone->SetInstrument(in.Take<std::uint8_t>());
  tone->SetTrack(in.Take<std::uint8_t>());
  tone->SetChannel(in.Take<std::uint8_t>());
  tone->SetBeatLength(in.Take<std::uint8_t>());
  tone->SetSendPatch(in.TakeFlag());
  in.Take<std::uint8_t>();
  return tone;
}

void TakeEvents(ByteReader& in, Tune& tune) {
  const qsizetype count = in.TakeCount(kEventBytes);
  // The events come first, and their spellings behind them, as they were met.
  ByteReader spellings = in.Behind(count * kEventBytes);
  QStringList marks;
  for (qsizetype left = spellings.TakeCount(4); left > 0; --left) marks.append(spellings.TakeText());
  if (spellings.Left() > 0) Refuse(QStringLiteral("something stands behind its end"));
  auto tones = std::make_shared<Tones>();
  tones->Reserve(count);
  for (qsizetype left = count; left > 0; --left) tones->Add(TakeEvent(in, marks));
  tune.SetTones(std::move(tones));
}

}  // namespace

QByteArray PackTuneHead(Tune& tune) {
  ByteWriter out;
  out.Put(tune.SavedFileName());
  out.Put(std::uint8_t{tune.ChangedSinceLastSaved()});
  PutCatalogue(out, tune);
  PutTracks(out, *tune.Tracks());
  PutWords(out, *tune.Words());
  PutThemes(out, *tune.Themes());
  return out.Bytes();
}

TunePacker::TunePacker(std::shared_ptr<Tune> tune) : tune_(std::move(tune)) {
  Begin();
}

void TunePacker::Begin() {
  ++begun_;
  tones_ = tune_->Tones();
  changes_ = tune_->Changes();
  last_abs_ref_ = tune_->LastAbsRef();
  count_ = tones_->Count();
  packed_ = 0;
  places_.clear();
  marks_.clear();
  last_mark_ = nullptr;
  events_ = QByteArray();
  // With room for the few spellings behind the events.
  constexpr qsizetype kRoomBehind = 256;
  const qsizetype size = kCountBytes + count_ * kEventBytes;
  events_.reserve(size + kRoomBehind);
  events_.resize(size);
  ByteFiller(events_.data()).Put(static_cast<std::uint32_t>(count_));
}

// Note ends that were made anew are no change of the tune, and have other numbers.
bool TunePacker::EventsAreAsTheyWere() const {
  return tune_->Changes() == changes_ && tune_->Tones() == tones_ && tones_->Count() == count_ &&
         tune_->LastAbsRef() == last_abs_ref_;
}

bool TunePacker::Advance(qsizetype events) {
  if (!EventsAreAsTheyWere()) Begin();
  // A tune that does not keep still is not run after for ever.
  constexpr int kPatience = 4;
  if (begun_ > kPatience) events = kAllEvents;
  const qsizetype left = count_ - packed_;
  char* place = events_.data() + kCountBytes + packed_ * kEventBytes;
  for (qsizetype i = std::min(events, left); i > 0; --i, place += kEventBytes)
    Put(*tones_->Item(++packed_), place);
  if (packed_ < count_) return false;
  ByteWriter tail;
  tail.Put(static_cast<std::uint32_t>(marks_.size()));
  for (const QString& mark : marks_) tail.Put(mark);
  events_ += tail.Bytes();
  head_ = PackTuneHead(*tune_);
  return true;
}

std::uint32_t TunePacker::PlaceOf(const QString& mark) {
  if (&mark == last_mark_) return last_place_;
  last_mark_ = &mark;
  const auto known = places_.constFind(&mark);
  if (known != places_.cend()) return last_place_ = *known;
  last_place_ = static_cast<std::uint32_t>(marks_.size());
  places_.insert(&mark, last_place_);
  marks_.append(mark);
  return last_place_;
}

void TunePacker::Put(const Tone& tone, char* place) {
  ByteFiller out(place);
  out.Put(tone.Duration());
  out.Put(tone.AbsRef());
  out.Put(tone.OldVolume());
  out.Put(PlaceOf(tone.EnHarmonic()));
  out.Put(tone.Number());
  out.Put(tone.Bar());
  out.Put(tone.Beat());
  out.Put(tone.Tick());
  out.Put(tone.BeatsPerBar());
  out.Put(tone.EventType());
  out.Put(tone.Volume());
  out.Put(tone.Instrument());
  out.Put(tone.Track());
  out.Put(tone.Channel());
  out.Put(tone.BeatLength());
  out.Put(std::uint8_t{tone.SendPatch()});
  out.Put(std::uint8_t{0});
}

std::shared_ptr<Tune> UnpackTune(const QByteArray& bytes) {
  ByteReader in(bytes);
  auto tune = std::make_shared<Tune>();
  const QString saved_file_name = in.TakeText();
  const bool changed = in.TakeFlag();
  if (!saved_file_name.isNull()) {
    tune->SetFileName(saved_file_name);
    tune->SetChangedSinceLastSaved(false);
  }
  TakeCatalogue(in, *tune);
  TakeTracks(in, *tune);
  TakeWords(in, *tune);
  TakeThemes(in, *tune);
  TakeEvents(in, *tune);
  if (!changed) tune->SetChangedSinceLastSaved(false);
  return tune;
}

}  // namespace zelmar
