// The one question before another tune takes the place of the one in memory.
#pragma once

namespace zelmar {

// Asks whether to save a tune with unsaved work, for a command that is about to put another in its place or
// to change the database. True when the command may go on: there was nothing to lose, or it is saved, or the
// person gives it up. False for Cancel, for a save that failed, which the person has been told of, and when
// the program closes meanwhile.
//
// The box and the save serve events: the caller's window may be gone afterwards. A tune that has come into
// memory meanwhile is asked about in its turn. What plays is stopped before the box stands. A command that
// comes while this asks or saves for another one is turned away.
bool MayReplaceTune();

}  // namespace zelmar
