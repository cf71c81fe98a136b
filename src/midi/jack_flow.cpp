#include "midi/jack_flow.h"

namespace zelmar {

namespace {

// The round under way may have begun before the message came, so only the second one has surely taken it.
constexpr std::uint32_t kRoundsToEmpty = 2;

}  // namespace

bool JackFlow::Admit(std::size_t size, std::uint32_t beats) {
  if (beats - mark_ >= kRoundsToEmpty) {
    before_mark_ = after_mark_;
    after_mark_ = 0;
    mark_ = beats;
  }
  const std::size_t needed = size + kHeader;
  if (before_mark_ + after_mark_ + needed > kRoom) return false;
  after_mark_ += needed;
  return true;
}

}  // namespace zelmar
