#include "platform/memory.h"

#if __has_include(<malloc.h>)
#include <malloc.h>
#endif

namespace zelmar {

void KeepFreedMemory() {
#ifdef M_TRIM_THRESHOLD
  constexpr int kMebibyte = 1024 * 1024;
  mallopt(M_MMAP_THRESHOLD, 32 * kMebibyte);
  mallopt(M_TRIM_THRESHOLD, 256 * kMebibyte);
#endif
}

}  // namespace zelmar
