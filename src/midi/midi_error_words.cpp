#include "midi/midi_error_words.h"

#include "platform/services.h"

namespace zelmar {

QString MidiErrorWords(int code) {
  switch (code) {
    case MidiOutput::kSuccess:
      return QStringLiteral("The MIDI output works.");
    case MidiOutput::kBadDeviceNumber:
      return QStringLiteral("No MIDI output has this number.");
    case MidiOutput::kNotEnabled:
      return QStringLiteral("The MIDI output could not be started.");
    case MidiOutput::kAllocated:
      return QStringLiteral("The MIDI output is in use by another program.");
    default:
      return QStringLiteral("The MIDI output failed for an unknown reason (code %1).").arg(code);
  }
}

}  // namespace zelmar
