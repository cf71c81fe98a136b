// The order in which the parts of a tune are played: "P:A2(BC)3" in the header, "P:A" where a part begins.
#pragma once

#include <vector>

#include "abc/abc_cursor.h"
#include "abc/abc_unroll.h"
#include "abc/abc_voice.h"

namespace zelmar {

// One step of the order, and where it is written.
struct AbcPart {
  QChar name;
  TextPosition position;
};

using AbcPlayOrder = std::vector<AbcPart>;

// The value of the header's P: field: capital letters and groups in brackets, each with a number of times
// behind it if wished; dots and blanks only make it easier to read. Throws TextError, also for an order of
// more than 1000 parts.
AbcPlayOrder ReadPlayOrder(AbcCursor& cursor);

// The items of the voice as they are played. What stands before the first label is played once, then the
// parts in their order, each with its own repeats. Without an order all is played as it is written, and
// labels mean nothing. Throws TextError for a part that the voice does not have or has twice, for labels that
// are no capital letters, and as UnrollRepeats does.
std::vector<AbcPlayed> PlayInOrder(const AbcVoice& voice, const AbcPlayOrder& order);

}  // namespace zelmar
