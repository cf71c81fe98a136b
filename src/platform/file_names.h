// Names that come from data, as the names of files.
#pragma once

#include <QString>
#include <optional>

namespace zelmar {

// True when `name` names a file of its folder on every system: no separator of either kind, no "..", no
// control character, no drive, no name that a system keeps for a device ("nul.htm", "con"), at most 255
// bytes.
bool IsPlainFileName(const QString& name);

// The file `name` in `folder`, which need not be there yet. Nothing when the name is not plain or is a link
// that leads out of the folder.
std::optional<QString> PlaceInFolder(const QString& folder, const QString& name);

}  // namespace zelmar
