#include "model/tune.h"

#include <algorithm>

#include "model/pulses.h"
#include "model/sound_link.h"
#include "platform/numbers.h"
#include "platform/services.h"

namespace zelmar {

Tune::Tune() : playback_(TheSoundLink().PlaybackOf(*this)) {
  tracks_->Add(QStringLiteral("Default Track"), 1, 1, 0, false, 0, 0, QStringLiteral("1"));
}

Tune::~Tune() = default;

void Tune::SetTones(std::shared_ptr<zelmar::Tones> tones) {
  tones_ = std::move(tones);
  SetChangedSinceLastSaved(true);
}

const std::shared_ptr<Themes>& Tune::Themes() {
  if (!themes_) themes_ = std::make_shared<zelmar::Themes>();
  return themes_;
}

const std::shared_ptr<TempoChanges>& Tune::TempoChanges() {
  if (!tempo_changes_) tempo_changes_ = std::make_shared<zelmar::TempoChanges>();
  return tempo_changes_;
}

void Tune::SetTempoChanges(std::shared_ptr<zelmar::TempoChanges> changes) {
  tempo_changes_ = std::move(changes);
  SetChangedSinceLastSaved(true);
}

const std::shared_ptr<Words>& Tune::Words() {
  if (!words_) words_ = std::make_shared<zelmar::Words>();
  return words_;
}

void Tune::SetWords(std::shared_ptr<zelmar::Words> words) {
  words_ = std::move(words);
  SetChangedSinceLastSaved(true);
}

std::shared_ptr<Tone> Tune::Add(std::shared_ptr<Tone> tone) {
  tone->SetBeatsPerBar(BeatsPerBar());
  tones_->Add(tone);
  if (tone->AbsRef() > LastAbsRef()) SetLastAbsRef(tone->AbsRef());
  SetChangedSinceLastSaved(true);
  return tone;
}

std::int16_t Tune::BarCount() {
  std::int32_t highest = 0;
  tones_->ForEach([&highest](const Tone& tone) {
    // What ends at the head of a bar has filled the bar before and has no part in that one.
    const bool ends_at_head = tone.EventType() == MUSIC_NOTE_OFF && tone.Beat() == 1 && tone.Tick() == 0;
    highest = std::max<std::int32_t>(highest, tone.Bar() - (ends_at_head ? 1 : 0));
  });
  bar_count_ = static_cast<std::int16_t>(highest);
  return bar_count_;
}

std::int16_t Tune::TrackCount() {
  track_count_ = Narrow<std::int16_t>(tracks_->Count());
  return track_count_;
}

void Tune::SetChangedSinceLastSaved(bool changed) {
  changed_since_last_saved_ = changed;
  if (changed) {
    ++changes_;
    return;
  }
  changes_saved_ = changes_;
  saved_file_name_ = FileName();
}

void Tune::SetTempo(std::int16_t tempo) {
  position_.AdoptTempo(tempo);
  tempo_ = tempo;
}

void Tune::SetBeatLength(std::uint8_t beat_length) {
  beat_length_ = beat_length;
  pulses_per_beat_ = beat_length == 0 ? 0 : RoundHalfEven<std::int32_t>(PulsesOfValue(beat_length));
  SetChangedSinceLastSaved(true);
}

void Tune::SetMIDIMode(const QString& mode) {
  static const QStringList known = {QStringLiteral("GM"), QStringLiteral("GM2"), QStringLiteral("GS"),
                                    QStringLiteral("XG")};
  if (known.contains(mode)) {
    midi_mode_ = mode;
    return;
  }
  ShowMessage(MessageIcon::kExclamation, QStringLiteral("MIDI mode can only be GM, GM2, GS or XG"),
              QStringLiteral("Invalid MIDI mode"));
  midi_mode_ = QStringLiteral("GM");
}

// --- Playback ---

// The window that holds the tune may let go of it while it plays or tells of its end: in each order that
// raises events the tune holds itself until the player has returned.

void Tune::Play() {
  std::int16_t start_bar = 1;
  Play(start_bar);
}

void Tune::Play(std::int16_t& start_bar) {
  const std::shared_ptr<Tune> self = weak_from_this().lock();
  playback_->Play(start_bar);
}

void Tune::JumpTo(std::int16_t start_bar) {
  const std::shared_ptr<Tune> self = weak_from_this().lock();
  playback_->JumpTo(start_bar);
}

void Tune::Stopit() {
  const std::shared_ptr<Tune> self = weak_from_this().lock();
  playback_->Stopit();
}

void Tune::MelodyTest() {
  const std::shared_ptr<Tune> self = weak_from_this().lock();
  playback_->MelodyTest();
}

void Tune::TuneQuilTimer_NewBeat() {
  const std::shared_ptr<Tune> self = weak_from_this().lock();
  playback_->NewBeat();
}

void Tune::Rewind() {
  position_.Rewind();
  Q_EMIT Rewound();
}

std::int32_t Tune::PlayIndex() const {
  return playback_->PlayIndex();
}

const std::shared_ptr<Tone>& Tune::CurrentTone() const {
  return playback_->CurrentTone();
}

std::int16_t Tune::PlayStartBar() const {
  return playback_->PlayStartBar();
}

const std::shared_ptr<QuilTimer>& Tune::TuneQuilTimer() const {
  return playback_->Timer();
}

QString GetFirstTenNotes(Tune& tune) {
  // The remainder takes the sign of the signature: -1 gives -7, 5 gives 11.
  const auto shift = CheckedMultiply<std::int16_t>(tune.KeySignature(), 7) % 12;
  const std::uint8_t track = tune.MelodyTrack();
  QString digest;
  constexpr int kNotesOfDigest = 10;
  int notes = 0;
  Tone scratch;
  for (const auto& tone : *tune.Tones()) {
    if (tone->EventType() != MUSIC_NOTE || tone->Track() != track) continue;
    scratch.SetNumber(Narrow<std::int16_t>(tone->Number() - shift));
    digest += scratch.NoteName();
    if (++notes == kNotesOfDigest) break;
  }
  tune.SetKeySignature(0);
  return digest;
}

}  // namespace zelmar
