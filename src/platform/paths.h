// Where files lie: the application directory, and the one rule by which written paths name places in it.
#pragma once

#include <QString>

namespace zelmar {

// The folder that holds frmPath.txt, the databases and Help, without a separator at the end.
QString ApplicationDirectory();

// Sets the folder for this process, for a start option or a test. An empty text returns to the default.
void SetApplicationDirectory(const QString& directory);

// The user's own folder for what outlives a run and is no setting, for an application directory that takes
// no files. It may not exist yet.
QString StateDirectory();

// The place that `path` names: "\" and "/" are the same, and each component is found without regard to case
// where the exact spelling is not there. Components that do not exist stay as written. A relative path is
// taken from the application directory.
QString ResolvePath(const QString& path);

// True when `name`, taken inside `folder`, stays inside it: no absolute path, no "..", no link that leads
// out.
bool StaysInside(const QString& folder, const QString& name);

}  // namespace zelmar
