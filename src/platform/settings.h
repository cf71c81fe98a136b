// The program's own small settings: what a person chose here and that the path file has no record for.
#pragma once

#include <QSettings>

namespace zelmar {

// The settings, kept in one file of text in the application directory; made on the first write. Write as
// `auto settings = Settings();` and let the object go out of scope, which saves it.
QSettings Settings();

}  // namespace zelmar
