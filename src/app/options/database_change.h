// What goes with a change of database, whichever window makes it.
#pragma once

namespace zelmar {

// Keeps now, to the second, as the moment of the change.
void NoteDatabaseChange();

// The window in front shows the title of the database anew.
void RenewFrontWindow();

}  // namespace zelmar
