#include "midi/sound_card.h"

#include "midi/quil_sounds_module.h"
#include "model/globals.h"
#include "platform/numbers.h"

namespace zelmar {

void SoundCard::OpenCard(std::int16_t device, std::int16_t& result) {
  device_ = device;
  if (opened_) return;
  result = Narrow<std::int16_t>(OpenMidiOut(device));
  if (result == 0) opened_ = true;
}

void SoundCard::CloseCard() {
  CloseMidiOut();
  opened_ = false;
}

void SoundCard::MidiReset() {
  MidiOutReset();
}

std::int32_t SoundCard::HandleForMidiOut() const {
  return Global().MidiOutHandle;
}

std::shared_ptr<SoundCard>& TheSoundCard() {
  static std::shared_ptr<SoundCard> card;
  return card;
}

}  // namespace zelmar
