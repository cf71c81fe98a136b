// The free procedures that pack channel messages and hand them to the one open output device. Channels are 1
// to 16; data bytes go out as they are. Results of the device are ignored.
#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>

namespace zelmar {

// A note; velocity 0 ends it. There is no note-off message in the system.
void SendNoteOn(std::int32_t pitch, std::int32_t channel, std::int32_t velocity);
void SendProgramChange(std::int32_t patch, std::int32_t channel);
// Controllers 0 and 32 are dropped while SuppressBankMessages is set. Throws OverflowError for a controller
// of 128 or more.
void SendController(std::uint8_t controller, std::int32_t channel, std::int32_t value);
void SendPitchBend(std::int32_t channel, std::int32_t lsb, std::int32_t msb);
void SendChannelPressure(std::int32_t channel, std::int32_t pressure);

// One system exclusive message; each character of the text stands for one byte.
void SendSystemExclusive(const QString& message);

// Opens the device and gives the platform's result: 0, 2 for a number that no device has (nothing is shown),
// or another code, which a message box puts into words.
std::int32_t OpenMidiOut(std::int16_t device);
void CloseMidiOut();
// Silences everything that sounds.
void MidiOutReset();

// A box with the operation and the words for the code.
void ShowMMErr(const QString& operation, std::int32_t code);

// The system exclusive messages that put a synthesiser into a mode, as SendSystemExclusive takes them.
QString GMModeMessage();
QString GSModeMessage();
QString XGModeMessage();

}  // namespace zelmar
