// Saving the settings for the next run.
#pragma once

#include "model/path_file.h"

namespace zelmar {

// Writes the path file of the application directory from the globals. A file that cannot be written is told
// of; the settings then hold for this run.
void SaveSettings(PathFileWriter writer);

}  // namespace zelmar
