// Leaks of other people's libraries, which a build with the address sanitizer passes over.

extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() {
  // RtMidi forgets the buffers of a JACK client that found no server.
  return "leak:jack_ringbuffer_create\n";
}
