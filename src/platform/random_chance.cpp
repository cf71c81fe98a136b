#include "platform/random_chance.h"

namespace zelmar {

namespace {

constexpr double kDraws = 4294967296.0;  // how many different ones there are: 2 to the power of 32

}  // namespace

RandomChance::RandomChance() {
  SeedAnew();
}

void RandomChance::Seed(std::uint32_t seed) {
  draws_.seed(seed);
}

void RandomChance::SeedAnew() {
  Seed(std::random_device()());
}

double RandomChance::Rnd() {
  return static_cast<double>(draws_()) / kDraws;
}

}  // namespace zelmar
