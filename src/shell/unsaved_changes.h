// What a person would lose with the tune in memory, and the one question before another tune takes its place.
#pragma once

#include <memory>

namespace zelmar {

class Tune;

// True when the tune holds work that is nowhere else: it was changed since it was loaded or saved, by more
// than the metronome, and it is not merely a new tune without a note.
bool HasUnsavedWork(const Tune& tune);

// The current tune when it has unsaved work; null otherwise.
std::shared_ptr<Tune> UnsavedTune();

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
