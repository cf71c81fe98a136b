#include "midi/quiet_libraries.h"

#include <fluidsynth.h>

#include <utility>

#ifdef ZELMAR_HAVE_JACK
#include <jack/jack.h>
#endif
#ifdef ZELMAR_HAVE_ALSA
#include <alsa/asoundlib.h>
#endif

namespace zelmar {

namespace {

thread_local std::string synth_complaint;

void KeepSynthComplaint(int level, const char* message, void*) {
  if (level <= FLUID_ERR) synth_complaint = message;
}

#ifdef ZELMAR_HAVE_JACK
void SwallowJack(const char*) {}
#endif

#ifdef ZELMAR_HAVE_ALSA
void SwallowAlsa(const char*, int, const char*, int, const char*, ...) {}
#endif

bool QuietAll() {
#ifdef ZELMAR_HAVE_JACK
  jack_set_error_function(&SwallowJack);
  jack_set_info_function(&SwallowJack);
#endif
#ifdef ZELMAR_HAVE_ALSA
  snd_lib_error_set_handler(&SwallowAlsa);
#endif
  for (const int level : {FLUID_PANIC, FLUID_ERR})
    fluid_set_log_function(level, &KeepSynthComplaint, nullptr);
  // No function, no message: the audio thread must not wait for a console.
  for (const int level : {FLUID_WARN, FLUID_INFO, FLUID_DBG}) fluid_set_log_function(level, nullptr, nullptr);
  return true;
}

}  // namespace

void QuietSoundLibraries() {
  static const bool done = QuietAll();
  static_cast<void>(done);
}

std::string TakeSynthComplaint() {
  return std::exchange(synth_complaint, {});
}

}  // namespace zelmar
