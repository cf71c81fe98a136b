#include "midi/tune_player.h"

#include "midi/played_events.h"
#include "midi/prior_controls.h"
#include "midi/quil_sounds_module.h"
#include "midi/quil_timer.h"
#include "midi/running_tunes.h"
#include "model/globals.h"
#include "model/pulses.h"
#include "model/sound_link.h"
#include "model/tune.h"
#include "platform/numbers.h"
#include "platform/services.h"

namespace zelmar {

namespace {

constexpr std::uint8_t kMetronomeChannel = 10;

// A patch that every instrument differs from.
constexpr std::uint8_t kNoPatch = 255;

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

TunePlayer::~TunePlayer() {
  if (timer_) timer_->disconnect(&tune_);
}

// --- Beginning ---

void TunePlayer::Play(std::int16_t& start_bar) {
  if (tune_.Count() == 0) return;
  if (start_bar == 0) start_bar = 1;
  if (Prepare(start_bar)) PlayWhatWaits();
}

void TunePlayer::JumpTo(std::int16_t start_bar) {
  if (!RunsInnermost(tune_)) {
    Play(start_bar);
    return;
  }
  // The loop that runs takes what waits as soon as the handler that led here has returned.
  if (tune_.Count() > 0) Prepare(start_bar == 0 ? std::int16_t{1} : start_bar);
}

bool TunePlayer::Prepare(std::int16_t start_bar) {
  const auto beats_before =
      CheckedMultiply<std::int16_t>(CheckedSubtract<std::int16_t>(start_bar, 1), tune_.BeatsPerBar());
  EndReplacedPlaying();
  const auto timer = std::make_shared<QuilTimer>();
  timer_ = timer;
  waiting_ = timer;
  try {
    timer->SetInterval(tune_.TimerInterval());
    if (!tune_.Sorted()) tune_.SortStartTimes();
    // Whoever heard of the sort may have ended this playing, begun another or taken all events away.
    if (waiting_ != timer) return false;
    if (tune_.Tones()->Count() == 0) {
      waiting_.reset();
      if (tune_.Playing()) Stopit();
      return false;
    }
    start_bar_ = start_bar;
    tune_.Position().SetBeatNumber(beats_before);
    tune_.MakeTempoMap();
    AdoptTempoOfStart(start_bar);
    beat_clock_ = BeatClock(start_bar);
    cursor_.Start(tune_.Tones(), start_bar);
  } catch (...) {
    if (timer_ == timer) {
      waiting_.reset();
      if (tune_.Playing()) Stopit();
    }
    throw;
  }
  tune_.SetBarNumber(start_bar);
  tune_.SetBeatWithinBar(1);
  tune_.SetPlaying(true);
  QObject::connect(timer.get(), &QuilTimer::Bang, &tune_, &Tune::TuneQuilTimer_bang);
  QObject::connect(timer.get(), &QuilTimer::NewBeat, &tune_, [this, beats = timer.get()] {
    // The first beat follows the first bang, which may have ended it all.
    if (beats->Enabled()) tune_.TuneQuilTimer_NewBeat();
  });
  return true;
}

void TunePlayer::EndReplacedPlaying() {
  if (!timer_) return;
  // A playback that this one replaces ends when this one has; its notes end now.
  if (timer_->Enabled()) MidiOutReset();
  timer_->SetEnabled(false);
  timer_->disconnect(&tune_);
}

void TunePlayer::PlayWhatWaits() {
  try {
    const RunningTune running(tune_);
    while (const std::shared_ptr<QuilTimer> timer = waiting_) {
      SendPreparation();
      // A listener may have ended this playing or begun another.
      if (waiting_ != timer) continue;
      waiting_.reset();
      timer->Fire();
    }
    cursor_.Forget();
  } catch (...) {
    // What cannot go on leaves no note sounding and no button dead.
    waiting_.reset();
    cursor_.Forget();
    if (tune_.Playing() || timer_->Enabled()) Stopit();
    throw;
  }
}

void TunePlayer::SendPreparation() {
  const std::shared_ptr<QuilTimer> timer = waiting_;
  for (int channel = 1; channel <= kChannelCount; ++channel) {
    SendController(MAIN_VOLUME, channel, kHighestData);
    SendController(EXPRESS_CONTROLLER, channel, kHighestData);
  }
  SendMode();
  for (const auto& track : *tune_.Tracks()) {
    SendController(BANK_SELECT_MSB_0, track->Channel(), track->BankMSB0());
    SendController(BANK_SELECT_LSB_32, track->Channel(), track->BankLSB32());
  }
  if (start_bar_ == 1) return;
  for (const std::shared_ptr<Tone>& tone : PriorControls(*tune_.Tones(), start_bar_)) {
    SendControl(*tone);
    if (waiting_ != timer) return;
  }
}

void TunePlayer::SendMode() {
  const QString& mode = tune_.MIDIMode();
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

void TunePlayer::Stopit() {
  waiting_.reset();
  if (tune_.Tones()->Count() > 0) {
    if (timer_) timer_->SetEnabled(false);
    MidiOutReset();
  }
  tune_.SetPlaying(false);
  Q_EMIT tune_.Finished();
}

// --- Events ---

bool TunePlayer::IsDue(const Tone& tone) const {
  if (!WaitsForItsMoment(tone.EventType())) return true;
  const double elapsed_ms = (SecondsSinceMidnight() - tune_.MelodyStartTime()) * 1000.0;
  const std::int32_t position =
      tune_.TimeFromPulse(tone.Bar(), tone.Beat(), tone.Tick(), tune_.BeatsPerBar(), tune_.BeatLength());
  const std::int32_t start_offset =
      tune_.TimeFromPulse(start_bar_, 1, 0, tune_.BeatsPerBar(), tune_.BeatLength());
  return elapsed_ms >= static_cast<double>(position) - start_offset;
}

void TunePlayer::MelodyTest() {
  const std::shared_ptr<QuilTimer> timer = timer_;
  Q_EMIT tune_.MelodyTested();
  // A listener may have stopped the tune or started it anew.
  if (!cursor_.Event() || timer_ != timer || (timer && !timer->Enabled())) return;
  // Forgotten at each step, so that every note is preceded by its program change.
  last_patch_.fill(kNoPatch);

  cursor_.Follow(tune_.Tones());
  if (!cursor_.IsAtEnd()) {
    const std::shared_ptr<Tone> tone = cursor_.Event();
    if (!IsDue(*tone)) return;
    cursor_.Deal();
    Handle(*tone);
    // A listener may have started the tune anew; the cursor is then no longer this run's.
    if (timer_ != timer) return;
    cursor_.Advance(tune_.Tones());
  }
  if (cursor_.IsAtEnd()) EndNaturally();
}

void TunePlayer::Handle(Tone& tone) {
  const std::uint8_t channel = tone.Channel();
  switch (tone.EventType()) {
    case MUSIC_NOTE: {
      if (channel < 1 || channel > kChannelCount) throw SubscriptError();
      std::uint8_t& last_patch = last_patch_[channel - 1];
      if (tone.Instrument() != last_patch) {
        tone.SetSendPatch(true);
        last_patch = tone.Instrument();
      }
      tone.Play();
      Q_EMIT tune_.NoteStarted(tone);
      break;
    }
    case MUSIC_NOTE_OFF:
      tone.Play();
      Q_EMIT tune_.NoteStopped(tone);
      break;
    case CHANNEL_PRESSURE:
      SendChannelPressure(channel, tone.Volume());
      break;
    default:
      if (WaitsForItsMoment(tone.EventType())) SendControl(tone);
  }
}

void TunePlayer::SendControl(Tone& tone) {
  if (tone.EventType() == PITCH_BEND) {
    SendPitchBend(tone.Channel(), tone.Instrument(), tone.Volume());
    return;
  }
  SendController(tone.EventType(), tone.Channel(), tone.Volume());
  Q_EMIT tune_.ControlEvent(tone);
}

void TunePlayer::EndNaturally() {
  const std::shared_ptr<QuilTimer> timer = timer_;
  if (timer) timer->SetEnabled(false);
  tune_.SetPlaying(false);
  const auto restore = [this, &timer] {
    tune_.Tones()->ForEach([](Tone& tone) {
      if (tone.EventType() == MUSIC_NOTE) tone.SetVolume(Narrow<std::uint8_t>(tone.OldVolume()));
    });
    if (timer_ == timer) cursor_.Leave();
  };
  try {
    Q_EMIT tune_.Finished();
  } catch (...) {
    // A listener that fails takes nothing from the tune.
    restore();
    throw;
  }
  restore();
}

// --- Beats ---

void TunePlayer::NewBeat() {
  const std::shared_ptr<QuilTimer> timer = timer_;
  CountTo(CheckedAdd<std::int32_t>(tune_.BeatNumber(), 1));
  // The counters stand still on the last beat while the last notes die away.
  if (tune_.BarNumber() > tune_.BarCountAsRead()) CountTo(tune_.BeatNumber() - 1);
  if (tune_.HearTick() != 0) SendNoteOn(tune_.TickSound(), kMetronomeChannel, tune_.MetroVolume());
  Q_EMIT tune_.Ticked();
  // A listener may have begun another playing, whose tempo and beats are its own.
  if (timer_ != timer) return;
  AdoptTempoInForce();
  if (!timer) return;
  const double due = static_cast<double>(tune_.MelodyStartTime()) * 1000.0 + beat_clock_.Next(tune_);
  if (due > SecondsSinceMidnight() * 1000.0 - kLongestDelay) timer->SetNextBeat(due);
}

void TunePlayer::CountTo(std::int32_t beat_number) {
  tune_.Position().SetBeatNumber(beat_number);
  tune_.Position().WorkOutBarAndBeat(tune_.BeatsPerBar());
}

void TunePlayer::AdoptTempo(std::int16_t tempo) {
  const double ms_per_crotchet = MillisecondsOfCrotchet(tempo);
  if (timer_) timer_->SetPulse(BeatPeriod(ms_per_crotchet, tune_.BeatLength()));
  tune_.Position().AdoptTempo(tempo);
}

void TunePlayer::AdoptTempoOfStart(std::int16_t start_bar) {
  const std::int32_t start = PulseFromBarBeatTick(start_bar, 1, 0, tune_.BeatsPerBar(), tune_.BeatLength());
  // What stands at the very start is in force there too.
  const TempoChange* const change =
      tune_.TempoChanges()->LastBefore(std::int64_t{start} + 1, tune_.BeatsPerBar(), tune_.BeatLength());
  AdoptTempo(change != nullptr ? change->NewTempo() : tune_.Tempo());
}

void TunePlayer::AdoptTempoInForce() {
  tune_.Position().SetTempoCurrent(tune_.Tempo());
  const TempoChanges& changes = *tune_.TempoChanges();
  for (qsizetype i = changes.Count(); i >= 1; --i) {
    const TempoChange& change = *changes.Item(i);
    const bool later = change.Bar() > tune_.BarNumber() ||
                       (change.Bar() == tune_.BarNumber() && change.Beat() > tune_.BeatWithinBar());
    if (later) continue;
    AdoptTempo(change.NewTempo());
    return;
  }
}

// --- The engine ---

namespace {

class Engine : public SoundLink {
 public:
  void Sound(const Tone& tone) override {
    if (tone.SendPatch()) SendProgramChange(tone.Instrument(), tone.Channel());
    SendNoteOn(tone.Number(), tone.Channel(), tone.Volume());
  }
  std::unique_ptr<TunePlayback> PlaybackOf(Tune& tune) override { return std::make_unique<TunePlayer>(tune); }
};

}  // namespace

void MakeTunesSound() {
  static Engine engine;
  SetSoundLink(&engine);
}

}  // namespace zelmar
