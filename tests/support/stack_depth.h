// How deep the stack is at the places that a test passes.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace zelmar::testing_support {

class StackDepth {
 public:
  // To be called at the places that are compared. Not inlined, so that its frame is one of its own.
  [[gnu::noinline]] void Look() {
    volatile char here = 0;
    const auto address = reinterpret_cast<std::uintptr_t>(&here);
    lowest_ = std::min(lowest_, address);
    highest_ = std::max(highest_, address);
  }

  // Bytes between the shallowest and the deepest place.
  std::uintptr_t Span() const { return highest_ > lowest_ ? highest_ - lowest_ : 0; }

 private:
  std::uintptr_t lowest_ = std::numeric_limits<std::uintptr_t>::max();
  std::uintptr_t highest_ = 0;
};

}  // namespace zelmar::testing_support
