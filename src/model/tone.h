// One timed event of a tune: a note, its end, a controller, a tempo change or a dummy.
//
// A tone stands alone: it holds copies of the tune's beats per bar and beat length and no link to its tune.
// 100,000 of them are no rarity, so its fields are packed.
#pragma once

#include <QString>
#include <cstdint>

#include "model/event_type.h"
#include "model/property.h"

namespace zelmar {

// Why a text was refused as a pitch, in the order in which the checks are made.
enum class PitchRefusal { kLength, kLetter, kOctave, kAccidental, kRange };

// Hears of refused pitches.
class ToneListener {
 public:
  virtual ~ToneListener() = default;
  virtual void PitchRefused(class Tone& tone, PitchRefusal reason) = 0;
};

class Tone {
 public:
  // Note letter, optional accidental and octave digit. Reading gives the canonical name and the octave:
  // "Ab7".
  QString Pitch() const;
  // Accepts "a" to "G", an optional "b" or "#", a digit; at most the pitches of MIDI. Anything else leaves
  // the tone as it was and tells the listener.
  void SetPitch(const QString& text);

  // MIDI note number: 60 for C4. Octaves below 0 are reached only by writing here.
  std::int16_t Number() const;
  void SetNumber(std::int16_t number);

  // Canonical name padded to two characters: "C " or "Ab".
  QString NoteName() const;
  // The pitch as notation spells it, by EnHarmonic: "Db4" for C#4 marked "b".
  QString EnharmonicName() const;

  // The wanted spelling: "#", "b" or one blank for the canonical one.
  const QString& EnHarmonic() const { return *enharmonic_; }
  void SetEnHarmonic(const QString& mark);

  // The stored velocity, which playback restores into Volume at a tune's natural end.
  std::int32_t OldVolume() const { return old_volume_; }
  void SetOldVolume(std::int32_t volume) { old_volume_ = volume; }

  // Sounds the tone at once, after a program change when SendPatch is set. Needs no tune.
  void Play() const;

  // Who hears of refused pitches; not owned, may be null.
  void SetListener(ToneListener* listener) { listener_ = listener; }

 private:
  void Refuse(PitchRefusal reason);

  ToneListener* listener_ = nullptr;
  const QString* enharmonic_ = &Blank();  // interned: a handful of marks serve every tone
  static const QString& Blank();

  ZELMAR_PROPERTY(double, Duration, 1.0)    // crotchets, whatever the beat length
  ZELMAR_PROPERTY(std::int32_t, AbsRef, 0)  // running number, the key in Tones; not a time
  std::int32_t old_volume_ = 127;
  ZELMAR_PROPERTY(std::int16_t, Bar, 1)
  ZELMAR_PROPERTY(std::int16_t, Beat, 1)
  ZELMAR_PROPERTY(std::int16_t, Tick, 0)  // pulses after the beat
  ZELMAR_PROPERTY(std::int16_t, BeatsPerBar, 4)
  std::int16_t octave_ = 4;
  std::uint8_t pitch_class_ = 0;
  ZELMAR_PROPERTY(zelmar::EventType, EventType, MUSIC_NOTE)
  ZELMAR_PROPERTY(std::uint8_t, Volume, 127)    // velocity or controller value
  ZELMAR_PROPERTY(std::uint8_t, Instrument, 0)  // patch number
  ZELMAR_PROPERTY(std::uint8_t, Track, 1)       // number of the owning track
  ZELMAR_PROPERTY(std::uint8_t, Channel, 1)     // 1 to 16
  ZELMAR_PROPERTY(std::uint8_t, BeatLength, 4)  // 4 for a crotchet beat, 8 for a quaver beat
  ZELMAR_PROPERTY(bool, SendPatch, false)       // Play sends a program change first
};

}  // namespace zelmar
