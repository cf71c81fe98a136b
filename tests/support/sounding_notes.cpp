#include "support/sounding_notes.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

namespace zelmar::testing_support {

namespace {

using Voice = std::pair<int, int>;

// Pulses of 120 to the crotchet from the start of the tune.
double StartPulse(const Tune& tune, const Tone& tone) {
  const double beats = (tone.Bar() - 1.0) * tune.BeatsPerBar() + tone.Beat() - 1.0;
  return beats * 480.0 / tune.BeatLength() + tone.Tick();
}

double MillisecondsAt(const Tune& tune, double pulse) {
  const auto whole = static_cast<int>(std::lround(pulse));
  const int per_beat = 480 / tune.BeatLength();
  const int beats = whole / per_beat;
  return tune.TimeFromPulse(static_cast<std::int16_t>(beats / tune.BeatsPerBar() + 1),
                            static_cast<std::int16_t>(beats % tune.BeatsPerBar() + 1),
                            static_cast<std::int16_t>(whole % per_beat), tune.BeatsPerBar(),
                            tune.BeatLength());
}

}  // namespace

std::vector<HeardNote> HeardNotes(const std::vector<SentMessage>& sent, double start_seconds) {
  std::vector<HeardNote> heard;
  std::map<Voice, double> sounding;
  for (const SentMessage& message : sent) {
    if (message.kind != SentMessage::Kind::kShort || (message.packed & 0xF0U) != 0x90U) continue;
    const Voice voice(static_cast<int>(message.packed & 0x0FU) + 1,
                      static_cast<int>((message.packed >> 8U) & 0x7FU));
    const double now = (message.seconds - start_seconds) * 1000.0;
    if (const auto note = sounding.find(voice); note != sounding.end()) {
      heard.push_back({voice.first, voice.second, note->second, now});
      sounding.erase(note);
    }
    if (((message.packed >> 16U) & 0x7FU) > 0) sounding[voice] = now;
  }
  std::stable_sort(heard.begin(), heard.end(),
                   [](const HeardNote& a, const HeardNote& b) { return a.start < b.start; });
  return heard;
}

std::vector<WrittenNote> WrittenNotes(const Tune& tune) {
  std::map<double, int> events_at;
  for (const auto& tone : tune) ++events_at[StartPulse(tune, *tone)];
  std::vector<WrittenNote> written;
  for (const auto& tone : tune) {
    if (tone->EventType() != MUSIC_NOTE) continue;
    const double start = StartPulse(tune, *tone);
    written.push_back({{tone->Channel(), tone->Number(), MillisecondsAt(tune, start),
                        MillisecondsAt(tune, start + tone->Duration() * 120.0)},
                       events_at[start]});
  }
  std::stable_sort(written.begin(), written.end(),
                   [](const HeardNote& a, const HeardNote& b) { return a.start < b.start; });
  return written;
}

double AllowedLoss(const WrittenNote& note, const Tune& tune) {
  return static_cast<double>(tune.TimerInterval()) * note.events_at_start;
}

std::vector<HeardNote> HeardFor(const std::vector<WrittenNote>& written, std::vector<HeardNote> heard) {
  if (heard.size() != written.size()) return {};
  std::map<Voice, std::vector<HeardNote>> by_voice;
  for (auto note = heard.rbegin(); note != heard.rend(); ++note)
    by_voice[{note->channel, note->pitch}].push_back(*note);
  std::vector<HeardNote> found;
  for (const WrittenNote& note : written) {
    auto& of_voice = by_voice[{note.channel, note.pitch}];
    if (of_voice.empty()) return {};
    found.push_back(of_voice.back());
    of_voice.pop_back();
  }
  return found;
}

}  // namespace zelmar::testing_support
