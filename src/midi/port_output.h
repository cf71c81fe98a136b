// The MIDI output ports of other programs and of devices, as RtMidi finds them, numbered from 0.
//
// Nothing is looked for until a count, a name or a port is asked for. A port or sound server that vanishes
// leaves an output that takes every message and does nothing.
#pragma once

#include <array>
#include <bitset>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "midi/jack_flow.h"
#include "midi/jack_server_watch.h"
#include "midi/midi_numbers.h"
#include "platform/services.h"

class RtMidiOut;

namespace zelmar {

class PortOutput : public MidiOutput {
 public:
  PortOutput();
  ~PortOutput() override;

  // Looks for ports anew.
  int DeviceCount() override;
  QString DeviceName(int device) override;
  // Numbers are those of the last look; the port is found again by its name.
  int Open(int device) override;
  void Close() override;
  // Ends each note by name, lifts the damper pedal, and asks for silence, on every channel.
  void Reset() override;
  void ShortMessage(std::uint32_t packed) override;
  void LongMessage(const QByteArray& bytes) override;
  QString ErrorText(int code) override;

 private:
  struct Port {
    int api;
    std::string name;
  };

  void LookForPorts();
  int OpenPort(const Port& port);
  int Fail(int code, const QString& words);
  void Write(std::span<const unsigned char> bytes);
  bool RoomFor(std::size_t size);
  void KeepNote(std::span<const unsigned char> bytes);

  std::vector<Port> ports_;
  bool looked_ = false;
  std::unique_ptr<JackServerWatch> watch_;  // for a JACK port
  std::unique_ptr<RtMidiOut> open_;
  JackFlow flow_;
  std::array<std::bitset<kDataValues>, kChannelCount>
      sounding_;  // by channel, notes that were begun and not ended
  QString failure_words_;
};

}  // namespace zelmar
