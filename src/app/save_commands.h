// The commands that save the tune in memory, with what was typed last: a field that the person is in is tested
// first, and nothing is saved where that refuses its text. They do nothing while no tune is loaded.
#pragma once

namespace zelmar {

// Saves under the names that the tune has. Throws NoTuneInMemory when there is none in spite of the flag, and
// what SaveTune throws.
void SaveTuneInMemory();

// Asks for a name and saves a copy under it, which is then the tune in memory. Throws as SaveTuneInMemory
// does.
void SaveTuneAs();

}  // namespace zelmar
