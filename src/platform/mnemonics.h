// The letters that are underlined in captions.
#pragma once

#include <QString>

namespace zelmar {

// The caption as it is read: "&File" is "File", and "Rhythm && Blues" is "Rhythm & Blues".
QString WithoutMnemonic(const QString& caption);

}  // namespace zelmar
