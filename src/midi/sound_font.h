// Where the instruments of the built-in synthesiser are.
#pragma once

#include <QString>

namespace zelmar {

// Full path of the best General MIDI SoundFont that is installed, empty when there is none.
QString InstalledSoundFont();

// The file that the person chose instead, kept from run to run; empty for the standard one. Nothing is known
// of it before there is an application object. Setting it gives false when the choice cannot be saved.
QString ChosenSoundFont();
bool SetChosenSoundFont(const QString& path);

// The file that the next opening of the synthesiser takes: that of the environment (ZELMAR_SOUNDFONT), else
// the chosen one where it is still there, else the installed one.
QString SoundFontInUse();

// Empty when the file is a SoundFont that can be played; else what is wrong with it, as a sentence.
QString WhyNotASoundFont(const QString& path);

}  // namespace zelmar
