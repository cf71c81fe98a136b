// How the process keeps memory.
#pragma once

namespace zelmar {

// Keeps freed memory for the next tune instead of giving large blocks back to the system, which would have to be
// asked for them, page by page, at the next load. Call once at start; does nothing where the system has no such choice.
void KeepFreedMemory();

}  // namespace zelmar
