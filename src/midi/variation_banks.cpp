#include "midi/variation_banks.h"

#include "midi/system_midi_output.h"
#include "model/globals.h"
#include "model/tune.h"

namespace zelmar {

BankSelects BankSelectsNow() {
  if (Global().SuppressBankMessages) return BankSelects::kHeldBack;
  const auto* const output = dynamic_cast<const SystemMidiOutput*>(Platform().midi.get());
  const SynthOutput* const synthesiser = output != nullptr ? output->OpenSynthesiser() : nullptr;
  return synthesiser != nullptr && !synthesiser->HasVariationBanks() ? BankSelects::kNoOtherBanks
                                                                     : BankSelects::kSent;
}

bool SelectsBanks(const Tune& tune) {
  for (const auto& track : *tune.Tracks())
    if (track->BankMSB0() != 0 || track->BankLSB32() != 0) return true;
  for (const auto& tone : tune) {
    const EventType type = tone->EventType();
    if ((type == BANK_SELECT_MSB_0 || type == BANK_SELECT_LSB_32) && tone->Volume() != 0) return true;
  }
  return false;
}

}  // namespace zelmar
