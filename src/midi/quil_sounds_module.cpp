#include "midi/quil_sounds_module.h"

#include <initializer_list>

#include "midi/midi_numbers.h"
#include "model/event_type.h"
#include "model/globals.h"
#include "platform/numbers.h"
#include "platform/services.h"

namespace zelmar {

namespace {

constexpr std::int32_t kFirstChannel = 1;  // of a caller

constexpr std::int32_t kData1Place = 256;
constexpr std::int32_t kData2Place = 65536;

// Length of the text that a device writes its error words into.
constexpr int kErrorTextLength = 255;

void Send(std::int32_t word) {
  const auto& output = Platform().midi;
  if (output) output->ShortMessage(static_cast<std::uint32_t>(word));
}

std::int32_t Status(std::int32_t kind, std::int32_t channel) {
  return CheckedAdd(kind - kFirstChannel, channel);
}

std::int32_t Data1(std::int32_t value) {
  return CheckedMultiply(value, kData1Place);
}

std::int32_t Data2(std::int32_t value) {
  return CheckedMultiply(value, kData2Place);
}

std::int32_t Pack(std::int32_t status, std::int32_t data1, std::int32_t data2 = 0) {
  return CheckedAdd(CheckedAdd(status, data1), data2);
}

QString MessageOf(std::initializer_list<std::uint8_t> bytes) {
  QString text;
  for (const std::uint8_t byte : bytes) text.append(QChar(byte));
  return text;
}

// Never 0, and another one for each open, so that a stale handle can be told from a fresh one.
std::int32_t NextHandle() {
  static std::int32_t last = 0;
  last = last == std::numeric_limits<std::int32_t>::max() ? 1 : last + 1;
  return last;
}

}  // namespace

void SendNoteOn(std::int32_t pitch, std::int32_t channel, std::int32_t velocity) {
  Send(Pack(Status(kNoteOn, channel), Data1(pitch), Data2(velocity)));
}

void SendProgramChange(std::int32_t patch, std::int32_t channel) {
  Send(Pack(Status(kProgramChange, channel), Data1(patch)));
}

void SendController(std::uint8_t controller, std::int32_t channel, std::int32_t value) {
  // For devices that misbehave on bank select.
  const bool selects_bank = controller == BANK_SELECT_MSB_0 || controller == BANK_SELECT_LSB_32;
  if (selects_bank && Global().SuppressBankMessages) return;
  const std::int16_t data1 =
      CheckedMultiply<std::int16_t>(controller, static_cast<std::int16_t>(kData1Place));
  Send(Pack(Status(kController, channel), data1, Data2(value)));
}

void SendPitchBend(std::int32_t channel, std::int32_t lsb, std::int32_t msb) {
  Send(Pack(Status(kPitchBend, channel), Data1(lsb), Data2(msb)));
}

void SendChannelPressure(std::int32_t channel, std::int32_t pressure) {
  Send(Pack(Status(kChannelPressure, channel), Data1(pressure)));
}

void SendSystemExclusive(const QString& message) {
  const auto& output = Platform().midi;
  if (!output) return;
  QByteArray bytes;
  bytes.reserve(message.size());
  for (const QChar character : message) bytes.append(static_cast<char>(character.unicode() & 0xFFU));
  output->LongMessage(bytes);
}

std::int32_t OpenMidiOut(std::int16_t device) {
  Global().MidiOutHandle = 0;
  const auto& output = Platform().midi;
  const std::int32_t result = output ? output->Open(device) : MidiOutput::kUnspecifiedError;
  if (result == MidiOutput::kSuccess)
    Global().MidiOutHandle = NextHandle();
  else if (result == MidiOutput::kBadDeviceNumber)
    ServeEvents();  // the start falls back to the first device
  else
    ShowMMErr(QStringLiteral("midiOUT_Open"), result);
  return result;
}

void CloseMidiOut() {
  if (const auto& output = Platform().midi) output->Close();
}

void MidiOutReset() {
  if (const auto& output = Platform().midi) output->Reset();
}

void ShowMMErr(const QString& operation, std::int32_t code) {
  // The one device layer puts all codes into words; there is no input that could have words of its own.
  const auto& output = Platform().midi;
  const QString words = output ? output->ErrorText(code) : QString();
  const QString buffer = words.leftJustified(kErrorTextLength, QLatin1Char(' '), true);
  const QString line_end = QStringLiteral("\r\n");
  ShowMessage(MessageIcon::kNone, operation + line_end + buffer + line_end);
}

QString GMModeMessage() {
  return MessageOf({0xF0, 0x7E, 0x7F, 0x09, 0x01, 0xF7});
}

QString GSModeMessage() {
  return MessageOf({0xF0, 0x41, 0x10, 0x42, 0x12, 0x40, 0x00, 0x7F, 0x00, 0x41, 0xF7});
}

QString XGModeMessage() {
  return MessageOf({0xF0, 0x43, 0x10, 0x4C, 0x00, 0x00, 0x7E, 0x00, 0xF7});
}

}  // namespace zelmar
