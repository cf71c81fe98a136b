// The members of Tune and Tone that sound: one event at a time is played when its moment has come.

#include <algorithm>

#include "midi/played_events.h"
#include "midi/prior_controls.h"
#include "midi/quil_sounds_module.h"
#include "midi/quil_timer.h"
#include "midi/running_tunes.h"
#include "model/globals.h"
#include "model/pulses.h"
#include "model/tune.h"
#include "platform/numbers.h"
#include "platform/services.h"

namespace zelmar {

namespace {

constexpr std::uint8_t kMainVolume = 7;
constexpr std::uint8_t kMetronomeChannel = 10;

// Milliseconds. A beat that is later than this belongs to a start that was never set: beats then follow one
// another by Pulse.
constexpr double kLongestDelay = 60000.0;

bool WaitsForItsMoment(EventType type) {
  return type == MUSIC_NOTE || type == MUSIC_NOTE_OFF || type == PITCH_BEND || type == CHANNEL_PRESSURE ||
         IsPlayedController(type);
}

// Length of a beat in milliseconds, rounded.
std::int16_t BeatPeriod(double ms_per_crotchet, std::uint8_t beat_length) {
  return RoundHalfEven<std::int16_t>(Quotient(ms_per_crotchet * 4.0, beat_length));
}

}  // namespace

void Tone::Play() {
  if (SendPatch()) SendProgramChange(Instrument(), Channel());
  SendNoteOn(Number(), Channel(), Volume());
}

void Tune::Play() {
  std::int16_t start_bar = 1;
  Play(start_bar);
}

void Tune::Play(std::int16_t& start_bar) {
  if (tones_->Count() == 0) return;
  // The window that holds the tune may let go of it while it plays; this holds it until the call returns.
  const std::shared_ptr<Tune> self = weak_from_this().lock();

  if (start_bar == 0) start_bar = 1;
  if (PrepareToPlay(start_bar)) PlayWhatWaits();
}

void Tune::JumpTo(std::int16_t start_bar) {
  if (!RunsInnermost(*this)) {
    Play(start_bar);
    return;
  }
  // The loop that runs takes what waits as soon as the handler that led here has returned.
  if (tones_->Count() > 0) PrepareToPlay(start_bar == 0 ? std::int16_t{1} : start_bar);
}

bool Tune::PrepareToPlay(std::int16_t start_bar) {
  const auto beats_before =
      CheckedMultiply<std::int16_t>(CheckedSubtract<std::int16_t>(start_bar, 1), BeatsPerBar());
  EndReplacedPlayback();
  const auto timer = std::make_shared<QuilTimer>();
  timer_ = timer;
  waiting_ = timer;
  try {
    timer->SetInterval(TimerInterval());
    if (!Sorted()) SortStartTimes();
    // Whoever heard of the sort may have ended this playing, begun another or taken all events away.
    if (waiting_ != timer) return false;
    if (tones_->Count() == 0) {
      waiting_.reset();
      if (Playing()) Stopit();
      return false;
    }
    play_start_bar_ = start_bar;
    beat_number_ = beats_before;
    MakeTempoMap();
    AdoptTempoOfStart(start_bar);
    beat_clock_ = BeatClock(start_bar);
    advance_cursor_ = false;
    PlaceCursor(start_bar);
    current_tone_ = tones_->Item(play_index_);
  } catch (...) {
    if (timer_ == timer) {
      waiting_.reset();
      if (Playing()) Stopit();
    }
    throw;
  }
  SetBarNumber(start_bar);
  SetBeatWithinBar(1);
  SetPlaying(true);
  connect(timer.get(), &QuilTimer::Bang, this, &Tune::TuneQuilTimer_bang);
  connect(timer.get(), &QuilTimer::NewBeat, this, [this, beats = timer.get()] {
    // The first beat follows the first bang, which may have ended it all.
    if (beats->Enabled()) TuneQuilTimer_NewBeat();
  });
  return true;
}

void Tune::EndReplacedPlayback() {
  if (!timer_) return;
  // A playback that this one replaces ends when this one has; its notes end now.
  if (timer_->Enabled()) MidiOutReset();
  timer_->SetEnabled(false);
  timer_->disconnect(this);
}

void Tune::PlaceCursor(std::int16_t start_bar) {
  if (start_bar == 1) {
    play_index_ = 1;
    return;
  }
  std::int32_t index = 0;
  for (const auto& tone : *tones_) {
    ++index;
    if (tone->Bar() < start_bar) continue;
    play_index_ = index;
    return;
  }
}

void Tune::PlayWhatWaits() {
  try {
    const RunningTune running(*this);
    while (const std::shared_ptr<QuilTimer> timer = waiting_) {
      SendPreparation(play_start_bar_);
      // A listener may have ended this playing or begun another.
      if (waiting_ != timer) continue;
      waiting_.reset();
      timer->Fire();
    }
  } catch (...) {
    // What cannot go on leaves no note sounding and no button dead.
    waiting_.reset();
    if (Playing() || timer_->Enabled()) Stopit();
    throw;
  }
}

void Tune::SendPreparation(std::int16_t start_bar) {
  const std::shared_ptr<QuilTimer> timer = waiting_;
  for (int channel = 1; channel <= kChannelCount; ++channel) {
    SendController(kMainVolume, channel, 127);
    SendController(EXPRESS_CONTROLLER, channel, 127);
  }
  SendMode();
  for (const auto& track : *tracks_) {
    SendController(BANK_SELECT_MSB_0, track->Channel(), track->BankMSB0());
    SendController(BANK_SELECT_LSB_32, track->Channel(), track->BankLSB32());
  }
  if (start_bar == 1) return;
  for (const std::shared_ptr<Tone>& tone : PriorControls(*tones_, start_bar)) {
    SendControl(*tone);
    if (waiting_ != timer) return;
  }
}

void Tune::SendMode() {
  const QString& mode = MIDIMode();
  if (mode == QLatin1String("XG"))
    SendSystemExclusive(XGModeMessage());
  else if (mode == QLatin1String("GS"))
    SendSystemExclusive(GSModeMessage());
  else if (mode == QLatin1String("GM2"))
    SendSystemExclusive(GMModeMessage());
  else
    return;
  Global().MidiMode = mode;
}

bool Tune::IsDue(const Tone& tone, double elapsed_ms) const {
  const std::int32_t position =
      TimeFromPulse(tone.Bar(), tone.Beat(), tone.Tick(), BeatsPerBar(), BeatLength());
  const std::int32_t start_offset = TimeFromPulse(play_start_bar_, 1, 0, BeatsPerBar(), BeatLength());
  return elapsed_ms >= static_cast<double>(position) - start_offset;
}

void Tune::MelodyTest() {
  const std::shared_ptr<QuilTimer> timer = timer_;
  Q_EMIT MelodyTested();
  // A listener may have stopped the tune or started it anew.
  if (!current_tone_ || timer_ != timer || (timer && !timer->Enabled())) return;
  const double elapsed_ms = (SecondsSinceMidnight() - MelodyStartTime()) * 1000.0;
  // Forgotten at each step, so that every note is preceded by its program change.
  std::fill(std::begin(last_patch_), std::end(last_patch_), std::uint8_t{255});

  if (!WaitsForItsMoment(current_tone_->EventType()))
    advance_cursor_ = true;
  else if (IsDue(*current_tone_, elapsed_ms))
    HandleDueEvent();
  // A listener may have started the tune anew; the cursor is then no longer this run's.
  if (timer_ != timer) return;

  if (advance_cursor_) {
    ++play_index_;
    if (play_index_ <= tones_->Count()) {
      current_tone_ = tones_->Item(play_index_);
      advance_cursor_ = false;
    }
  }
  if (play_index_ > tones_->Count()) EndNaturally();
}

void Tune::HandleDueEvent() {
  const std::shared_ptr<Tone> tone = current_tone_;
  const std::uint8_t channel = tone->Channel();
  advance_cursor_ = true;
  switch (tone->EventType()) {
    case MUSIC_NOTE: {
      if (channel < 1 || channel > kChannelCount) throw SubscriptError();
      std::uint8_t& last_patch = last_patch_[channel - 1];
      if (tone->Instrument() != last_patch) {
        tone->SetSendPatch(true);
        last_patch = tone->Instrument();
      }
      tone->Play();
      Q_EMIT NoteStarted(*tone);
      break;
    }
    case MUSIC_NOTE_OFF:
      tone->Play();
      Q_EMIT NoteStopped(*tone);
      break;
    case CHANNEL_PRESSURE:
      SendChannelPressure(channel, tone->Volume());
      break;
    default:
      SendControl(*tone);
  }
}

void Tune::SendControl(Tone& tone) {
  if (tone.EventType() == PITCH_BEND) {
    SendPitchBend(tone.Channel(), tone.Instrument(), tone.Volume());
    return;
  }
  SendController(tone.EventType(), tone.Channel(), tone.Volume());
  Q_EMIT ControlEvent(tone);
}

void Tune::EndNaturally() {
  const std::shared_ptr<QuilTimer> timer = timer_;
  if (timer) timer->SetEnabled(false);
  SetPlaying(false);
  const auto restore = [this, &timer] {
    tones_->ForEach([](Tone& tone) {
      if (tone.EventType() == MUSIC_NOTE) tone.SetVolume(Narrow<std::uint8_t>(tone.OldVolume()));
    });
    if (timer_ == timer) current_tone_.reset();
  };
  try {
    Q_EMIT Finished();
  } catch (...) {
    // A listener that fails takes nothing from the tune.
    restore();
    throw;
  }
  restore();
}

void Tune::WorkOutBarAndBeat() {
  if (BeatsPerBar() == 0) throw DivisionError();
  SetBarNumber(
      IntegerPart<std::int16_t>((static_cast<double>(BeatsPerBar()) + beat_number_ - 1) / BeatsPerBar()));
  SetBeatWithinBar(Narrow<std::int16_t>(beat_number_ - (BarNumber() - 1) * BeatsPerBar()));
}

void Tune::TuneQuilTimer_NewBeat() {
  const std::shared_ptr<QuilTimer> timer = timer_;
  beat_number_ = CheckedAdd<std::int32_t>(beat_number_, 1);
  WorkOutBarAndBeat();
  if (BarNumber() > bar_count_) {
    // The counters stand still on the last beat while the last notes die away.
    --beat_number_;
    WorkOutBarAndBeat();
  }
  if (HearTick() != 0) SendNoteOn(TickSound(), kMetronomeChannel, MetroVolume());
  Q_EMIT Ticked();
  // A listener may have begun another playing, whose tempo and beats are its own.
  if (timer_ != timer) return;
  AdoptTempoInForce();
  if (!timer) return;
  const double due = static_cast<double>(MelodyStartTime()) * 1000.0 + beat_clock_.Next(*this);
  if (due > SecondsSinceMidnight() * 1000.0 - kLongestDelay) timer->SetNextBeat(due);
}

void Tune::AdoptTempo(std::int16_t tempo) {
  const double ms_per_crotchet = Quotient(60000.0, tempo);
  if (timer_) timer_->SetPulse(BeatPeriod(ms_per_crotchet, beat_length_));
  ms_per_crotchet_ = static_cast<float>(ms_per_crotchet);
  tempo_current_ = tempo;
}

void Tune::AdoptTempoOfStart(std::int16_t start_bar) {
  const std::int32_t start = PulseFromBarBeatTick(start_bar, 1, 0, BeatsPerBar(), BeatLength());
  // What stands at the very start is in force there too.
  const TempoChange* const change =
      TempoChanges()->LastBefore(std::int64_t{start} + 1, BeatsPerBar(), BeatLength());
  AdoptTempo(change != nullptr ? change->NewTempo() : tempo_);
}

void Tune::AdoptTempoInForce() {
  tempo_current_ = tempo_;
  if (!tempo_changes_) return;
  for (qsizetype i = tempo_changes_->Count(); i >= 1; --i) {
    const TempoChange& change = *tempo_changes_->Item(i);
    const bool later =
        change.Bar() > BarNumber() || (change.Bar() == BarNumber() && change.Beat() > BeatWithinBar());
    if (later) continue;
    AdoptTempo(change.NewTempo());
    return;
  }
}

void Tune::Stopit() {
  waiting_.reset();
  if (tones_->Count() > 0) {
    if (timer_) timer_->SetEnabled(false);
    MidiOutReset();
  }
  SetPlaying(false);
  Q_EMIT Finished();
}

}  // namespace zelmar
