// Where notes end: the arithmetic behind the note-offs of a tune.
#pragma once

#include <cstdint>

#include "model/tone.h"

namespace zelmar {

// The note-off of `note`, by the note's own metre, under `abs_ref`. Throws OverflowError when its place does
// not fit, DivisionError when a part of the metre is 0.
Tone NoteOffOf(const Tone& note, std::int32_t abs_ref);

// True for a note whose end falls, once rounded to a pulse, on its own start.
bool HasNoLength(const Tone& note);

}  // namespace zelmar
