// Where the instruments of the built-in synthesiser are.
#pragma once

#include <QString>

namespace zelmar {

// Full path of the best General MIDI SoundFont that is installed, empty when there is none.
QString InstalledSoundFont();

}  // namespace zelmar
