// What a person would lose with the tune in memory.
#pragma once

#include <memory>

namespace zelmar {

class Tune;

// True when the tune holds work that is nowhere else: it was changed since it was loaded or saved, by more
// than the metronome, and it is not merely a new tune without a note.
bool HasUnsavedWork(const Tune& tune);

// The current tune when it has unsaved work; null otherwise.
std::shared_ptr<Tune> UnsavedTune();

}  // namespace zelmar
