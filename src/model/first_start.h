// Filling an application directory: the template database, the help tree, a starter database and a path file.
#pragma once

#include <QString>

namespace zelmar {

// Brings `directory` up to date from `source`, a folder with ZelmarTemplate.mdb and perhaps Help. The
// template and the help tree are renewed when theirs are newer; a database or a path file that is there is
// never touched. Throws Failure when a file cannot be made.
void FillApplicationDirectory(const QString& directory, const QString& source);

}  // namespace zelmar
