// Shows a person that a command waits for another program, which holds the database, and lets them end the
// wait: in the status window that stands already, else in one of its own, which keeps the other windows from
// taking commands meanwhile.
#pragma once

namespace zelmar {

// From here on every wait is shown. Called when the main window is made.
void ShowDatabaseWaits();
void StopShowingDatabaseWaits();

}  // namespace zelmar
