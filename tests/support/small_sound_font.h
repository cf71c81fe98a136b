// A SoundFont of a few bytes, made for a test: every instrument is the same even tone, tuned by the test, so
// that the pitch of a note tells which instrument played it.
#pragma once

#include <QString>
#include <vector>

namespace zelmar::testing_support {

struct SmallPreset {
  int bank = 0;
  int program = 0;
  int semitones = 0;  // above the pitch of the key
};

// Writes the file; false when that fails.
bool WriteSmallSoundFont(const QString& path, const std::vector<SmallPreset>& presets);

}  // namespace zelmar::testing_support
