// What the database holds under a name.
#pragma once

#include <QString>
#include <optional>

namespace zelmar {

// The title of the tune that a save under `code_name` would write over, names being compared as the database
// does; the name itself where it has notes that no catalogue entry lists. Nothing when the name is free, or
// when there is no database: the user has been told then, and DatabaseFailed is set. Throws DatabaseError,
// also for a name that no tune can have.
std::optional<QString> TitleOfSavedTune(const QString& code_name);

}  // namespace zelmar
