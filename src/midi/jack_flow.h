// Counts what may still wait in the ring of a JACK port, which has no count that a caller could ask for and
// whose writer spins for as long as the ring is full.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zelmar {

class JackFlow {
 public:
  // Room for this many bytes, headers included, is safe to use: a little less than the ring has.
  static constexpr std::size_t kRoom = 16000;
  static constexpr std::size_t kHeader = sizeof(int);

  // True, and counted as waiting, when a message of `size` bytes fits. `beats` are the rounds of the server
  // so far.
  bool Admit(std::size_t size, std::uint32_t beats);
  // A message that no empty ring could take.
  static bool NeverFits(std::size_t size) { return size + kHeader > kRoom; }

 private:
  std::size_t before_mark_ = 0;
  std::size_t after_mark_ = 0;
  std::uint32_t mark_ = 0;
};

}  // namespace zelmar
