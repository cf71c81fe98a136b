// Events for tests of the order of a tune, and what stands where in it.
#pragma once

#include <QStringList>
#include <memory>

#include "model/tune.h"

namespace zelmar::testing_support {

inline std::shared_ptr<Tone> EventAt(EventType type, std::int32_t abs_ref, std::int16_t bar,
                                     std::int16_t beat = 1, std::int16_t tick = 0, double duration = 1.0) {
  auto tone = std::make_shared<Tone>();
  tone->SetEventType(type);
  tone->SetAbsRef(abs_ref);
  tone->SetBar(bar);
  tone->SetBeat(beat);
  tone->SetTick(tick);
  tone->SetDuration(duration);
  return tone;
}

// Adds a note under the next free number.
inline std::shared_ptr<Tone> AddNote(Tune& tune, std::int16_t bar, std::int16_t beat, double duration,
                                     const char* pitch = "C4", std::uint8_t track = 1) {
  auto note = EventAt(MUSIC_NOTE, tune.LastAbsRef() + 1, bar, beat, 0, duration);
  note->SetPitch(QString::fromLatin1(pitch));
  note->SetTrack(track);
  note->SetBeatLength(tune.BeatLength());
  return tune.Add(note);
}

// The AbsRefs in order: "3 1 2".
inline QString NumbersOf(const Tones& tones) {
  QStringList numbers;
  for (const auto& tone : tones) numbers.append(QString::number(tone->AbsRef()));
  return numbers.join(QLatin1Char(' '));
}

// What stands in the tune, in order: "C4 -C4 7 E4" are a note, an end, a controller and another note.
inline QString EventsOf(const Tune& tune) {
  QStringList events;
  for (const auto& tone : tune) {
    switch (tone->EventType()) {
      case MUSIC_NOTE:
        events.append(tone->Pitch());
        break;
      case MUSIC_NOTE_OFF:
        events.append(QLatin1Char('-') + tone->Pitch());
        break;
      default:
        events.append(QString::number(tone->EventType()));
    }
  }
  return events.join(QLatin1Char(' '));
}

}  // namespace zelmar::testing_support
