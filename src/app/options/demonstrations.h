// The demonstrations of what a sound card can do: tunes of the library, and two that are made in memory.
#pragma once

#include <memory>
#include <span>

namespace zelmar {

class Tune;

struct Demonstration {
  const char* button;
  const char* caption;
  const char* tooltip;
  const char* code_name;                      // of the tune in the library, empty for one made in memory
  std::shared_ptr<Tune> (*make)() = nullptr;  // makes the other ones
};

// In the order of their buttons.
std::span<const Demonstration> Demonstrations();

}  // namespace zelmar
