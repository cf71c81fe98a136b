#include "model/note_ends.h"

#include <cmath>

#include "model/pulses.h"
#include "platform/numbers.h"

namespace zelmar {

namespace {

// Pulses from the start of the tune to the note, a whole number. Not finite when the note's beat length is 0.
double StartPulse(const Tone& note) {
  const double beats_before_bar = (note.Bar() - 1.0) * note.BeatsPerBar();
  return std::nearbyint(beats_before_bar * double{kPulsesPerSemibreve} / note.BeatLength() +
                        (note.Beat() - 1) * double{kPulsesPerSemibreve} / note.BeatLength() + note.Tick());
}

std::int32_t EndPulse(const Tone& note) {
  // The beats before a bar are counted in 16 bits, wherever they are counted.
  CheckedMultiply<std::int16_t>(CheckedSubtract<std::int16_t>(note.Bar(), 1), note.BeatsPerBar());
  return RoundHalfEven<std::int32_t>(StartPulse(note) + note.Duration() * kPulsesPerCrotchet);
}

}  // namespace

Tone NoteOffOf(const Tone& note, std::int32_t abs_ref) {
  const auto pulses_per_beat =
      RoundHalfEven<std::int32_t>(Quotient(double{kPulsesPerSemibreve}, note.BeatLength()));
  if (pulses_per_beat == 0 || note.BeatsPerBar() == 0) throw DivisionError();
  const std::int32_t end = EndPulse(note);
  const std::int32_t beats = end / pulses_per_beat;

  Tone off;
  off.SetEventType(MUSIC_NOTE_OFF);
  off.SetChannel(note.Channel());
  off.SetTrack(note.Track());
  off.SetNumber(note.Number());
  off.SetVolume(0);
  off.SetOldVolume(0);
  off.SetBeatsPerBar(note.BeatsPerBar());
  off.SetBeatLength(note.BeatLength());
  off.SetBar(Narrow<std::int16_t>(beats / note.BeatsPerBar() + 1));
  off.SetBeat(Narrow<std::int16_t>(beats % note.BeatsPerBar() + 1));
  off.SetTick(Narrow<std::int16_t>(end % pulses_per_beat));
  off.SetAbsRef(abs_ref);
  return off;
}

bool HasNoLength(const Tone& note) {
  // Half a pulse is the most that rounds away.
  if (std::abs(note.Duration()) * kPulsesPerCrotchet > 0.5 || note.BeatLength() == 0) return false;
  const double start = StartPulse(note);
  return std::nearbyint(start + note.Duration() * kPulsesPerCrotchet) == start;
}

}  // namespace zelmar
