// Keeps the sound libraries from writing to the console: what they have to say comes back as a code, and is
// put into words by the program.
#pragma once

#include <iostream>
#include <sstream>
#include <string>

namespace zelmar {

// Turns off the messages of JACK, ALSA and FluidSynth for the whole process. Cheap after the first call.
void QuietSoundLibraries();

// What FluidSynth complained about last on this thread, empty when it did not since the last call.
std::string TakeSynthComplaint();

// Swallows what is written to std::cerr during its lifetime: some of RtMidi's warnings come before it can be
// given a callback.
class QuietErrorStream {
 public:
  QuietErrorStream() : before_(std::cerr.rdbuf(swallowed_.rdbuf())) {}
  ~QuietErrorStream() { std::cerr.rdbuf(before_); }
  QuietErrorStream(const QuietErrorStream&) = delete;
  QuietErrorStream& operator=(const QuietErrorStream&) = delete;

 private:
  std::ostringstream swallowed_;
  std::streambuf* before_;
};

}  // namespace zelmar
