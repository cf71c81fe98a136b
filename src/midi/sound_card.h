// The one output device: closed or opened, by number.
#pragma once

#include <cstdint>
#include <memory>

namespace zelmar {

class SoundCard {
 public:
  // Remembers the number; does no more when a device is open already, and then leaves `result` as it was.
  // Otherwise opens the device and gives the code of OpenMidiOut.
  void OpenCard(std::int16_t device, std::int16_t& result);
  void CloseCard();
  // Silences everything that sounds.
  void MidiReset();

  std::int16_t DeviceID() const { return device_; }
  bool Opened() const { return opened_; }
  // 0 while no device has been opened.
  std::int32_t HandleForMidiOut() const;

 private:
  std::int16_t device_ = 0;
  bool opened_ = false;
};

// The one global instance, created at start; null before.
std::shared_ptr<SoundCard>& TheSoundCard();

}  // namespace zelmar
