// Whether a bank select makes a difference on the device that is open.
#pragma once

namespace zelmar {

class Tune;

enum class BankSelects {
  kSent,          // to a device that may well have other banks
  kNoOtherBanks,  // the built-in synthesiser is open, and its SoundFont has none
  kHeldBack,      // bank messages are suppressed
};

BankSelects BankSelectsNow();

// Whether the tune asks for another bank than the first, for a track or in the middle.
bool SelectsBanks(const Tune& tune);

}  // namespace zelmar
