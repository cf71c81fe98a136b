// The members of Tune that put its events in order and its places in time.

#include <QMetaMethod>
#include <algorithm>

#include "model/event_order.h"
#include "model/note_ends.h"
#include "model/pulses.h"
#include "model/tune.h"
#include "platform/numbers.h"

namespace zelmar {

namespace {

// A sort of more events than these counts them out in as many shares.
constexpr qsizetype kCountedFrom = 60;

// What the progress of a sort reads when all is read, when it is sorted, and before the last step.
constexpr int kHighestPercent = 100;
constexpr std::int16_t kSortedPercent = 80;
constexpr std::int16_t kCollectedPercent = 99;

// A change of tempo holds its tempo in two data bytes, the high one in its volume.
constexpr int kHighByteOfTempo = 128;

std::int32_t RoundedCrotchet(std::int16_t tempo) {
  return RoundHalfEven<std::int32_t>(MillisecondsOfCrotchet(tempo));
}

}  // namespace

void Tune::CalcNotesOff() {
  const auto tones = tones_;
  const auto is_end = [](const Tone& tone) { return tone.EventType() == MUSIC_NOTE_OFF; };
  std::size_t notes = 0;
  tones->ForEach([&notes](const Tone& tone) { notes += tone.EventType() == MUSIC_NOTE; });

  // Note-offs come and go as a set: one block of memory holds them all, and all that can fail is done before
  // the first of them goes.
  const auto ends = std::make_shared<std::vector<Tone>>();
  ends->reserve(notes);
  std::int32_t abs_ref = LastAbsRef();
  tones->ForEach([&](const Tone& tone) {
    if (tone.EventType() != MUSIC_NOTE) return;
    abs_ref = CheckedAdd<std::int32_t>(abs_ref, 1);
    ends->push_back(NoteOffOf(tone, abs_ref));
    const Tone* const holder = tones->Find(abs_ref);
    if (holder != nullptr && !is_end(*holder)) throw DuplicateKeyError(QString::number(abs_ref));
  });
  tones->Reserve(tones->Count() + static_cast<qsizetype>(notes));

  tones->RemoveWhere(is_end);
  for (Tone& end : *ends) tones->Add(std::shared_ptr<Tone>(ends, &end));
  // Beside the property, which would mark the tune changed.
  LastAbsRef_ = abs_ref;
}

void Tune::SortStartTimes() {
  Q_EMIT SortStarted();
  const bool is_heard = isSignalConnected(QMetaMethod::fromSignal(&Tune::SortPercent));
  Q_EMIT SortPercent(0);
  const qsizetype count = tones_->Count();
  EventSort sort(tones_, BeatsPerBar());
  if (count > kCountedFrom) {
    const qsizetype step = count / kCountedFrom;
    int percent = 0;
    for (qsizetype done = step; done <= count; done += step) {
      sort.Read(step);
      percent = std::min(percent + 1, kHighestPercent);
      Q_EMIT SortPercent(static_cast<std::int16_t>(percent));
    }
  }
  sort.Read(count);
  sort.Sort();
  Q_EMIT SortPercent(kSortedPercent);
  std::shared_ptr<zelmar::Tones> sorted = sort.Sorted();
  Q_EMIT SortPercent(kCollectedPercent);
  // Whoever heard of the progress may have changed the events; then they are taken as they are by now.
  if (is_heard && !(sorted && sort.StillHolds(tones_, BeatsPerBar())))
    sorted = InOrder(tones_, BeatsPerBar());
  tones_ = std::move(sorted);
  SetSorted(true);
}

void Tune::MakeTempoMap() {
  std::int16_t bar = 1, beat = 1, tick = 0;
  std::int32_t elapsed = 0;
  std::int32_t crotchet = RoundedCrotchet(tempo_);
  mapped_crotchet_ = crotchet;
  const auto changes = TempoChanges();
  changes->Clear();
  for (const auto& tone : *tones_) {
    if (tone->EventType() != TEMPO_CHANGE) continue;
    const auto tempo = Narrow<std::int16_t>(tone->Volume() * kHighByteOfTempo + tone->Instrument());
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
  std::int32_t crotchet = Playing() ? mapped_crotchet_ : RoundedCrotchet(tempo_);
  std::int32_t pulses = PulseFromBarBeatTick(bar, beat, tick, beats_per_bar, beat_length);
  const TempoChange* const change =
      tempo_changes_ ? tempo_changes_->LastBefore(pulses, beats_per_bar, beat_length) : nullptr;
  if (change != nullptr) {
    pulses -= PulseFromBarBeatTick(change->Bar(), change->Beat(), change->Tick(), beats_per_bar, beat_length);
    base = change->MillesecondCumTime();
    crotchet = RoundedCrotchet(change->NewTempo());
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
