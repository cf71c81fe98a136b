// Text as a person types it who looks for something: without case, accents and other marks.
#pragma once

#include <QString>

namespace zelmar {

// "Été" and "ete" give the same text. Letters that are no base letter with a mark become those that stand for
// them on a plain keyboard ("ø" o, "ß" ss, "æ" ae), curved apostrophes and long dashes the plain ones. Every
// other sign stays, "%", "_" and "*" among them.
QString FoldedForSearch(const QString& text);

}  // namespace zelmar
