// The MIDI output of the running program: device 0 is the built-in synthesiser, the ports of the machine
// follow.
#pragma once

#include <memory>

#include "midi/port_output.h"
#include "midi/synth_output.h"
#include "platform/services.h"

namespace zelmar {

class SystemMidiOutput : public MidiOutput {
 public:
  // The first asks for ports anew.
  int DeviceCount() override;
  QString DeviceName(int device) override;
  // Closes what is open first. Ports are looked for only when the device is not the synthesiser.
  int Open(int device) override;
  void Close() override;
  void Reset() override;
  void ShortMessage(std::uint32_t packed) override;
  void LongMessage(const QByteArray& bytes) override;
  QString ErrorText(int code) override;

  // For a window that sets its properties.
  SynthOutput& Synthesiser() { return synth_; }
  // The synthesiser while it is the open device, else null.
  const SynthOutput* OpenSynthesiser() const { return open_ == &synth_ ? &synth_ : nullptr; }

 private:
  SynthOutput synth_;
  PortOutput ports_;
  MidiOutput* open_ = nullptr;        // one of the two, null while closed
  MidiOutput* asked_last_ = &synth_;  // whose words explain a code
};

// When the instruments of the synthesiser are loaded.
enum class SynthesiserLoading { kAtOpen, kAhead };

std::shared_ptr<MidiOutput> MakeSystemMidiOutput(SynthesiserLoading loading = SynthesiserLoading::kAtOpen);

}  // namespace zelmar
