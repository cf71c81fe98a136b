// What a fresh process has of the platform services.
#include "platform/random_chance.h"
#include "platform/real_clock.h"
#include "platform/services.h"

namespace zelmar {

namespace {

Services FreshServices() {
  Services services;
  services.clock = std::make_shared<RealClock>();
  services.events = std::make_shared<RealEventService>();
  services.chance = std::make_shared<RandomChance>();
  return services;
}

}  // namespace

Services& Platform() {
  static Services services = FreshServices();
  return services;
}

}  // namespace zelmar
