// The entry procedure: settings, the MIDI output, the start-up tune, the global tables, the main window.
#pragma once

#include <memory>

#include "app/mdi_parent.h"

namespace zelmar {

struct StartResult {
  // Shown; null when the path file cannot be read, which the user has been told.
  std::unique_ptr<MDIParent> main_window;
  // How long the start-up tune took.
  double tune_seconds = 0.0;
};

// Brings the program up.
StartResult ColdStart();

}  // namespace zelmar
