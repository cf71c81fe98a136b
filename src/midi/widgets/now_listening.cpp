#include "midi/widgets/now_listening.h"

#include <utility>

namespace zelmar {

namespace {

std::function<void()>& Hider() {
  static std::function<void()> hider;
  return hider;
}

}  // namespace

void SetNowListeningHider(std::function<void()> hide) {
  Hider() = std::move(hide);
}

void HideNowListening() {
  if (const std::function<void()> hide = Hider()) hide();
}

}  // namespace zelmar
