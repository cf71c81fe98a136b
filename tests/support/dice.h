// Numbers as they fall, and always the same ones for the same seed.
#pragma once

#include <random>

namespace zelmar::testing_support {

class Dice {
 public:
  explicit Dice(unsigned seed) : series_(seed) {}

  // From 0 to `sides` - 1.
  int operator()(int sides) { return static_cast<int>(series_() % static_cast<unsigned long>(sides)); }

 private:
  std::mt19937 series_;
};

}  // namespace zelmar::testing_support
