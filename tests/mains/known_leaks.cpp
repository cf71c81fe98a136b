// Leaks of other people's libraries, which a build with the address sanitizer passes over.

extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() {
  // RtMidi forgets the buffers of a JACK client that found no server. Qt's own frames let go of nothing when
  // a failure passes through them on its way to the application: what is lost is a few bytes of its guards
  // and events.
  return "leak:jack_ringbuffer_create\n"
         "leak:QtSharedPointer::ExternalRefCountData::getAndRef\n"
         "leak:QMutableEventPoint::detach\n";
}
