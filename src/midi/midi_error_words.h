// The words for a result of a MIDI output, where the output has none of its own.
#pragma once

#include <QString>

namespace zelmar {

QString MidiErrorWords(int code);

}  // namespace zelmar
