// Chance itself.
#pragma once

#include <random>

#include "platform/services.h"

namespace zelmar {

// Seeded anew at its making. The same seed gives the same series on every machine.
class RandomChance : public Chance {
 public:
  RandomChance();
  void Seed(std::uint32_t seed) override;
  void SeedAnew() override;
  double Rnd() override;

 private:
  std::mt19937 draws_;
};

}  // namespace zelmar
