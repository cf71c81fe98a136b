// The entry procedure: settings, the MIDI output, the start-up tune, the global tables, the main window.
#pragma once

#include <memory>

namespace zelmar {

class MDIParent;

// Brings the program up and gives its main window, shown. Null when the path file cannot be read, which the
// user has been told; nothing is left open then.
std::unique_ptr<MDIParent> ColdStart();

}  // namespace zelmar
