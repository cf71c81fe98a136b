// Commands for the synthesiser within the music: "%%MIDI control 11 64" on a line of its own, or
// "[I:MIDI control 11 64]" between notes.
#pragma once

#include "abc/abc_cursor.h"

namespace zelmar {

// Whether the word MIDI follows, which is then passed, and the sign of equality that may join it to the
// command.
bool TakeMidiCommand(AbcCursor& cursor);

}  // namespace zelmar
