// How the process keeps memory.
#pragma once

namespace zelmar {

// Keeps freed memory for the next tune instead of giving large blocks back to the system, which would have to
// be asked for them, page by page, at the next load. Call once at start; does nothing where the system has no
// such choice.
void KeepFreedMemory();

// Tells the processor that the memory at `address` will be read soon.
inline void PrefetchForReading(const void* address) {
#if defined(__GNUC__) || defined(__clang__)
  __builtin_prefetch(address);
#else
  static_cast<void>(address);
#endif
}

}  // namespace zelmar
