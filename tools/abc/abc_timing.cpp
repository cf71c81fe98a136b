#include "abc/abc_timing.h"

#include <algorithm>
#include <map>
#include <optional>

#include "model/tone.h"

namespace zelmar {

namespace {

[[noreturn]] void Fail(TextPosition position, const QString& sentence) {
  throw TextError(position, sentence);
}

constexpr int kMostBars = 9999;

// Times are crotchets from the head of bar 1.
struct TimedEvent {
  AbcEvent event;
  Fraction start;
  Fraction duration;
  TextPosition position;
};

struct TimedWord {
  Fraction start;
  QString text;
};

struct TimedTempo {
  Fraction start;
  int tempo = 120;
  TextPosition position;
};

QString Text(const Fraction& crotchets, const AbcMetre& metre) {
  const Fraction beats = crotchets * Fraction(metre.length, 4);
  if (beats.Denominator() == 1) return QStringLiteral("%1/%2").arg(beats.Numerator()).arg(metre.length);
  const Fraction whole = crotchets * Fraction(1, 4);
  return QStringLiteral("%1/%2").arg(whole.Numerator()).arg(whole.Denominator());
}

// Lays one voice out in time.
class VoiceTimer {
 public:
  VoiceTimer(const AbcVoice& voice, const AbcMetre& metre, const AbcPlayOrder& order)
      : voice_(voice),
        metre_(metre),
        bar_(metre.BarCrotchets()),
        played_(PlayInOrder(voice, order)),
        track_(voice.track),
        instrument_(voice.track.instrument) {}

  void Run() {
    pickup_ = Pickup();
    if (pickup_ > Fraction()) lead_in_ = bar_ - pickup_;
    now_ = lead_in_;
    DropLinesBehindTheMusic();
    for (const AbcPlayed& played : played_) {
      const AbcItem& item = voice_.items[played.item];
      switch (item.kind) {
        case AbcItemKind::kSound:
          Sound(item, played.pass);
          break;
        case AbcItemKind::kBarRest:
          BarRest(item);
          break;
        case AbcItemKind::kBarLine:
          BarLine(item);
          break;
        case AbcItemKind::kTempo:
          tempos.push_back({now_, item.value, item.position});
          break;
        case AbcItemKind::kLoudness:
          steps_ = item.value;
          break;
        case AbcItemKind::kControl:
          Control(item);
          break;
        case AbcItemKind::kProgram:
          Program(item.value);
          break;
        case AbcItemKind::kPart:
          break;
      }
      if (now_ > bar_ * Fraction(kMostBars))
        Fail(item.position, QStringLiteral("A tune has at most 9999 bars."));
    }
    End();
  }

  // The track, with the instrument of its first note.
  const AbcTrack& Track() const { return track_; }
  const Fraction& LeadIn() const { return lead_in_; }
  const Fraction& Length() const { return now_; }

  std::vector<TimedEvent> events;
  std::vector<TimedWord> words;
  std::vector<TimedTempo> tempos;

 private:
  // The length of the first bar when it is short, else 0.
  Fraction Pickup() const {
    Fraction length;
    for (const AbcPlayed& played : played_) {
      const AbcItem& item = voice_.items[played.item];
      if (item.kind == AbcItemKind::kBarLine && !(length == Fraction()))
        return length < bar_ ? length : Fraction();
      length = length + item.duration;
      if (length > bar_) break;
    }
    return {};
  }

  // The last bar is judged by itself, whatever line closes it.
  void DropLinesBehindTheMusic() {
    while (!played_.empty() && voice_.items[played_.back().item].kind == AbcItemKind::kBarLine)
      played_.pop_back();
  }

  Fraction InBar() const { return now_ - bar_start_; }

  void Sound(const AbcItem& item, int pass) {
    if (!bar_position_) bar_position_ = item.position;
    std::map<int, std::pair<std::size_t, TextPosition>> ties = std::move(ties_);
    ties_.clear();
    for (const AbcNote& note : item.notes) {
      std::size_t index = events.size();
      const auto tie = ties.find(note.number);
      if (tie != ties.end() && events[tie->second.first].start + events[tie->second.first].duration == now_) {
        index = tie->second.first;
        events[index].duration = events[index].duration + note.duration;
        ties.erase(tie);
      } else {
        AddNote(note);
      }
      if (note.tied) ties_[note.number] = {index, note.position};
    }
    if (!ties.empty())
      Fail(ties.begin()->second.second, QStringLiteral("This tie leads to no note of the same pitch."));
    const qsizetype verse = std::min<qsizetype>(pass, item.verses.size()) - 1;
    if (verse >= 0 && !item.verses[verse].isNull()) words.push_back({now_, item.verses[verse]});
    now_ = now_ + item.duration;
  }

  TimedEvent& AddEvent(TextPosition position) {
    TimedEvent& timed = events.emplace_back();
    timed.start = now_;
    timed.position = position;
    timed.event.track = track_.number;
    return timed;
  }

  void AddNote(const AbcNote& note) {
    TimedEvent& timed = AddEvent(note.position);
    timed.duration = note.duration;
    Tone tone;
    tone.SetNumber(static_cast<std::int16_t>(note.number));
    timed.event.pitch = tone.Pitch();
    timed.event.enharmonic = note.enharmonic;
    timed.event.instrument = instrument_;
    timed.event.volume = std::clamp(track_.base_volume + steps_, 1, 127);
    sounds_ = true;
  }

  void Control(const AbcItem& item) {
    TimedEvent& timed = AddEvent(item.position);
    timed.duration = Fraction(1);
    timed.event.event_type = item.control.event_type;
    timed.event.instrument = item.control.instrument;
    timed.event.volume = item.control.volume;
  }

  void Program(int instrument) {
    instrument_ = instrument;
    if (!sounds_) track_.instrument = instrument;
  }

  void BarRest(const AbcItem& item) {
    if (!(InBar() == Fraction()))
      Fail(item.position, QStringLiteral("A rest of whole bars begins at the head of a bar."));
    FailOpenTies();
    now_ = bar_start_ = now_ + item.duration;
  }

  void BarLine(const AbcItem& item) {
    const Fraction length = InBar();
    // The silence before a pickup is no bar by itself.
    if (length == Fraction() || (!bar_position_ && now_ == lead_in_)) return;
    const bool is_pickup = bar_start_ == Fraction() && lead_in_ > Fraction();
    if (length == bar_) {
      if (broken_part_ > Fraction()) later_parts_.push_back(bar_ - broken_part_);
      bar_start_ = now_;
      broken_part_ = Fraction();
      bar_position_.reset();
      return;
    }
    if (length < bar_ && item.bar_line.MayBreakBar()) {
      broken_part_ = length;
      return;
    }
    FailBar(is_pickup ? length - lead_in_ : length);
  }

  void End() {
    FailOpenTies();
    // It would begin a bar of its own.
    if (!events.empty() && events.back().start == now_)
      Fail(events.back().position,
           QStringLiteral("Nothing is played behind this command; put a rest behind it."));
    const Fraction length = InBar();
    if (length == Fraction() || length == bar_) return;
    if (length > bar_) FailBar(length);
    const auto completes = [this, &length](const Fraction& part) { return length + part == bar_; };
    if (length < bar_ &&
        ((pickup_ > Fraction() && completes(pickup_)) || std::ranges::any_of(later_parts_, completes)))
      return;
    Fail(BarPosition(), QStringLiteral("The last bar adds up to %1 and completes neither a bar nor a pickup.")
                            .arg(Text(length, metre_)));
  }

  TextPosition BarPosition() const { return bar_position_.value_or(voice_.position); }

  [[noreturn]] void FailBar(const Fraction& length) const {
    Fail(BarPosition(), QStringLiteral("This bar adds up to %1 and not to %2.")
                            .arg(Text(length, metre_), Text(bar_, metre_)));
  }

  void FailOpenTies() const {
    if (!ties_.empty())
      Fail(ties_.begin()->second.second, QStringLiteral("This tie leads to no note of the same pitch."));
  }

  const AbcVoice& voice_;
  AbcMetre metre_;
  Fraction bar_;
  std::vector<AbcPlayed> played_;
  Fraction pickup_;
  Fraction lead_in_;
  Fraction now_;
  Fraction bar_start_;
  Fraction broken_part_;               // of a bar that a repeat breaks in two, the first part
  std::vector<Fraction> later_parts_;  // the second parts of such bars
  std::optional<TextPosition> bar_position_;
  AbcTrack track_;
  int instrument_;       // of the notes to come
  bool sounds_ = false;  // a note has been met
  int steps_ = 0;
  std::map<int, std::pair<std::size_t, TextPosition>> ties_;  // by note number: the event to lengthen
};

// Places times on the grid of bars, beats and ticks.
class Grid {
 public:
  explicit Grid(const AbcMetre& metre) : beats_(metre.beats), pulses_per_beat_(480 / metre.length) {}

  static int Pulse(const Fraction& crotchets) {
    return RoundHalfEven<std::int32_t>((crotchets * Fraction(120)).Value());
  }
  template <typename Placed>
  void Place(const Fraction& start, Placed& placed) const {
    const int pulse = Pulse(start);
    const int beats = pulse / pulses_per_beat_;
    placed.bar = beats / beats_ + 1;
    placed.beat = beats % beats_ + 1;
    placed.tick = pulse % pulses_per_beat_;
  }

 private:
  int beats_;
  int pulses_per_beat_;
};

std::vector<TimedEvent> TempoEvents(std::vector<TimedTempo> tempos, int melody_track) {
  std::ranges::stable_sort(tempos,
                           [](const TimedTempo& a, const TimedTempo& b) { return a.start < b.start; });
  std::vector<TimedEvent> events;
  for (std::size_t i = 0; i < tempos.size(); ++i) {
    if (i > 0 && tempos[i].start == tempos[i - 1].start) {
      if (tempos[i].tempo != tempos[i - 1].tempo)
        Fail(tempos[i].position, QStringLiteral("Two tempos begin at the same moment."));
      continue;
    }
    TimedEvent& timed = events.emplace_back();
    timed.start = tempos[i].start;
    timed.duration = Fraction(1);
    timed.event.event_type = TEMPO_CHANGE;
    timed.event.track = melody_track;
    timed.event.volume = tempos[i].tempo / 128;
    timed.event.instrument = tempos[i].tempo % 128;
  }
  return events;
}

}  // namespace

void TimeVoices(const std::deque<AbcVoice>& voices, const AbcMetre& metre, const AbcPlayOrder& order,
                AbcTune& tune) {
  const Grid grid(metre);
  std::vector<TimedTempo> tempos;
  std::vector<TimedEvent> played;
  std::vector<TimedWord> words;
  int words_track = 0;
  std::optional<VoiceTimer> first;
  for (const AbcVoice& voice : voices) {
    VoiceTimer timer(voice, metre, order);
    timer.Run();
    if (first && !(timer.LeadIn() == first->LeadIn()))
      Fail(voice.position, QStringLiteral("The pickup of voice %1 is not as long as that of the first voice.")
                               .arg(voice.track.id));
    if (first && !(timer.Length() == first->Length()))
      Fail(voice.position,
           QStringLiteral("Voice %1 is not as long as the first voice: %2 against %3 crotchets.")
               .arg(voice.track.id)
               .arg(timer.Length().Value())
               .arg(first->Length().Value()));
    tune.tracks.push_back(timer.Track());
    played.insert(played.end(), timer.events.begin(), timer.events.end());
    tempos.insert(tempos.end(), timer.tempos.begin(), timer.tempos.end());
    // The words are those of the melody, or of the first voice that has any.
    if (!timer.words.empty() && (words_track == 0 || voice.track.number == tune.melody_track)) {
      words = timer.words;
      words_track = voice.track.number;
    }
    if (!first) first.emplace(std::move(timer));
  }

  // Changes of tempo and controllers go before the notes of their moment.
  std::vector<TimedEvent> events = TempoEvents(std::move(tempos), tune.melody_track);
  events.insert(events.end(), played.begin(), played.end());
  const auto is_note = [](const TimedEvent& timed) { return timed.event.event_type == MUSIC_NOTE; };
  std::ranges::stable_sort(events, [&is_note](const TimedEvent& a, const TimedEvent& b) {
    return a.start == b.start ? is_note(a) < is_note(b) : a.start < b.start;
  });
  for (TimedEvent& timed : events) {
    grid.Place(timed.start, timed.event);
    timed.event.duration = timed.duration.Value();
    timed.event.abs_ref = static_cast<int>(tune.events.size()) + 1;
    for (const AbcTrack& track : tune.tracks)
      if (track.number == timed.event.track) timed.event.channel = track.channel;
    tune.events.push_back(timed.event);
  }
  for (const TimedWord& word : words) {
    AbcWord placed;
    grid.Place(word.start, placed);
    placed.text = word.text;
    tune.words.push_back(placed);
  }
  if (first) {
    tune.lead_in_pulses = Grid::Pulse(first->LeadIn());
    const Fraction bars = first->Length() * Fraction(metre.length, 4 * metre.beats);
    tune.bar_count = static_cast<int>((bars.Numerator() + bars.Denominator() - 1) / bars.Denominator());
  }
}

}  // namespace zelmar
