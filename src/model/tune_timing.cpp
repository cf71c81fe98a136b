// The members of Tune that put its events in order and its places in time.

#include "model/pulses.h"
#include "model/tune.h"
#include "platform/memory.h"
#include "platform/numbers.h"

namespace zelmar {

namespace {

// The sort key counts 240 to a beat whatever the beat length, so it orders and is no time.
constexpr std::int32_t kSortKeyPerBeat = 240;

// Pulses from the start of the tune to the end of a note, by the note's own metre.
std::int32_t EndPulse(const Tone& note) {
  const double beat_length = note.BeatLength();
  const auto beats_before_bar =
      CheckedMultiply<std::int16_t>(CheckedSubtract<std::int16_t>(note.Bar(), 1), note.BeatsPerBar());
  const auto start =
      RoundHalfEven<std::int32_t>(Quotient(beats_before_bar * 480.0, beat_length) +
                                  Quotient((note.Beat() - 1) * 480.0, beat_length) + note.Tick());
  return RoundHalfEven<std::int32_t>(start + note.Duration() * kPulsesPerCrotchet);
}

Tone NoteOffOf(const Tone& note, std::int32_t abs_ref) {
  const std::int32_t end = EndPulse(note);
  const auto pulses_per_beat = RoundHalfEven<std::int32_t>(Quotient(480.0, note.BeatLength()));
  if (pulses_per_beat == 0 || note.BeatsPerBar() == 0) throw DivisionError();
  const std::int32_t beats = end / pulses_per_beat;

  Tone off = note;
  off.SetListener(nullptr);
  off.SetEventType(MUSIC_NOTE_OFF);
  off.SetOldVolume(0);
  off.SetVolume(0);
  off.SetInstrument(0);
  off.SetDuration(1.0);
  off.SetEnHarmonic(Tone().EnHarmonic());
  off.SetSendPatch(false);
  off.SetBar(Narrow<std::int16_t>(beats / note.BeatsPerBar() + 1));
  off.SetBeat(Narrow<std::int16_t>(beats % note.BeatsPerBar() + 1));
  off.SetTick(Narrow<std::int16_t>(end % pulses_per_beat));
  off.SetAbsRef(abs_ref);
  return off;
}

std::int32_t RoundedCrotchet(std::int16_t tempo) {
  return RoundHalfEven<std::int32_t>(Quotient(60000.0, tempo));
}

}  // namespace

void Tune::CalcNotesOff() {
  const auto tones = tones_;
  qsizetype notes = 0;
  tones->RemoveWhere([&notes](const Tone& tone) {
    notes += tone.EventType() == MUSIC_NOTE;
    return tone.EventType() == MUSIC_NOTE_OFF;
  });
  tones->Reserve(tones->Count() + notes);
  // Note-offs come and go as a set, so one block of memory holds them all. The pass meets those that it adds
  // and goes by them. The running number is kept beside the property, which would mark the tune changed.
  const auto block = std::make_shared<std::vector<Tone>>();
  block->reserve(static_cast<std::size_t>(notes));
  tones->ForEach([&](const Tone& tone) {
    if (tone.EventType() != MUSIC_NOTE) return;
    const auto abs_ref = CheckedAdd<std::int32_t>(m_LastAbsRef, 1);
    tones->Add(std::shared_ptr<Tone>(block, &block->emplace_back(NoteOffOf(tone, abs_ref))));
    m_LastAbsRef = abs_ref;
  });
}

void Tune::SortStartTimes() {
  Q_EMIT SortStarted();
  Q_EMIT SortPercent(0);

  const auto old_tones = tones_;
  const auto count = Narrow<std::int32_t>(old_tones->Count());
  sort_columns_.clear();
  sort_columns_.reserve(static_cast<std::size_t>(count));
  const auto per_bar = CheckedMultiply<std::int32_t>(kSortKeyPerBeat, BeatsPerBar());
  const std::int32_t step = count > 60 ? count / 60 : 0;
  std::int32_t position = 0;
  std::int16_t percent = 0;
  old_tones->ForEach([&](const Tone& tone) {
    const auto key = CheckedAdd(CheckedMultiply<std::int32_t>(tone.Bar(), per_bar),
                                tone.Beat() * kSortKeyPerBeat + tone.Tick());
    sort_columns_.push_back({++position, key});
    if (step != 0 && position % step == 0) {
      percent = std::min<std::int16_t>(static_cast<std::int16_t>(percent + 1), 100);
      Q_EMIT SortPercent(percent);
    }
  });

  ShellSortByKey(sort_columns_, position);
  Q_EMIT SortPercent(80);

  auto sorted = std::make_shared<zelmar::Tones>();
  sorted->Reserve(position);
  for (std::size_t i = 0; i < sort_columns_.size(); ++i) {
    // The tones lie all over the memory by now; the one that is needed soon is asked for already.
    constexpr std::size_t kAhead = 12;
    if (i + kAhead < sort_columns_.size())
      PrefetchForReading(old_tones->Item(sort_columns_[i + kAhead].position).get());
    sorted->Add(old_tones->Item(sort_columns_[i].position));
  }
  Q_EMIT SortPercent(99);
  tones_ = std::move(sorted);
  SetSorted(true);
}

void Tune::MakeTempoMap() {
  std::int16_t bar = 1, beat = 1, tick = 0;
  std::int32_t elapsed = 0;
  std::int32_t crotchet = RoundedCrotchet(tempo_);
  play_crotchet_ = crotchet;
  const auto changes = TempoChanges();
  changes->Clear();
  for (const auto& tone : *tones_) {
    if (tone->EventType() != TEMPO_CHANGE) continue;
    const auto tempo = Narrow<std::int16_t>(tone->Volume() * 128 + tone->Instrument());
    const std::int32_t new_crotchet = RoundedCrotchet(tempo);
    const auto pulses = CheckedSubtract(
        PulseFromBarBeatTick(tone->Bar(), tone->Beat(), tone->Tick(), BeatsPerBar(), BeatLength()),
        PulseFromBarBeatTick(bar, beat, tick, BeatsPerBar(), BeatLength()));
    elapsed =
        RoundHalfEven<std::int32_t>(elapsed + static_cast<double>(pulses) * crotchet / kPulsesPerCrotchet);
    changes->Add(tone->Bar(), tone->Beat(), tone->Tick(), tempo, elapsed);
    bar = tone->Bar();
    beat = tone->Beat();
    tick = tone->Tick();
    crotchet = new_crotchet;
  }
}

std::int32_t Tune::TimeFromPulse(std::int16_t bar, std::int16_t beat, std::int16_t tick,
                                 std::int16_t beats_per_bar, std::uint8_t beat_length) const {
  std::int32_t base = 0;
  std::int32_t crotchet = Playing() ? play_crotchet_ : RoundedCrotchet(tempo_);
  std::int32_t pulses = PulseFromBarBeatTick(bar, beat, tick, beats_per_bar, beat_length);
  if (tempo_changes_) {
    for (qsizetype i = tempo_changes_->Count(); i >= 1; --i) {
      const TempoChange& change = *tempo_changes_->Item(i);
      const auto change_pulse =
          PulseFromBarBeatTick(change.Bar(), change.Beat(), change.Tick(), beats_per_bar, beat_length);
      if (change_pulse >= pulses) continue;
      base = change.MillesecondCumTime();
      crotchet = RoundedCrotchet(change.NewTempo());
      pulses -= change_pulse;
      break;
    }
  }
  return RoundHalfEven<std::int32_t>(static_cast<double>(pulses) * crotchet / kPulsesPerCrotchet + base);
}

void Tune::MakeExpressionMap() {
  if (!expression_changes_) expression_changes_ = std::make_shared<zelmar::ExpressionChanges>();
  expression_changes_->Clear();
  for (const auto& tone : *tones_)
    if (tone->EventType() == EXPRESS_CONTROLLER)
      expression_changes_->Add(tone->Bar(), tone->Beat(), tone->Tick(), tone->Track(), tone->Volume(),
                               tone->Instrument() == kAllTracksInstrument);
}

}  // namespace zelmar
