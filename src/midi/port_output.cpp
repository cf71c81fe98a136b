#include "midi/port_output.h"

#include <rtmidi/RtMidi.h>

#include <thread>

#include "midi/midi_error_words.h"
#include "midi/quiet_libraries.h"

namespace zelmar {

namespace {

using std::chrono::milliseconds;

// How long a message may wait for room at a server that has stopped working, before the server is given up.
constexpr milliseconds kPatience{500};
// A working server has a round within this time.
constexpr milliseconds kLongestRound{250};
constexpr int kRoundsToJoin = 3;

constexpr unsigned char kDamperPedal = 64;
constexpr unsigned char kAllSoundOff = 120;
constexpr unsigned char kAllNotesOff = 123;

// Null when the system behind the interface is not there.
std::unique_ptr<RtMidiOut> MakeClient(RtMidi::Api api) {
  QuietSoundLibraries();
  const QuietErrorStream quiet;
  try {
    auto client = std::make_unique<RtMidiOut>(api, "Zelmar");
    // With a callback, a later error neither throws nor prints.
    client->setErrorCallback([](RtMidiError::Type, const std::string&, void*) {}, nullptr);
    return client;
  } catch (const RtMidiError&) {
    return nullptr;
  }
}

int IndexOf(RtMidiOut& client, const std::string& name) {
  const unsigned count = client.getPortCount();
  for (unsigned i = 0; i < count; ++i)
    if (client.getPortName(i) == name) return static_cast<int>(i);
  return -1;
}

std::size_t LengthOfShort(unsigned char status) {
  const unsigned char kind = status & kKindBits;
  return kind == kProgramChange || kind == kChannelPressure ? 2 : 3;
}

}  // namespace

PortOutput::PortOutput() = default;

PortOutput::~PortOutput() {
  Close();
}

void PortOutput::LookForPorts() {
  looked_ = true;
  ports_.clear();
  std::vector<RtMidi::Api> apis;
  RtMidi::getCompiledApi(apis);
  for (const RtMidi::Api api : apis) {
    if (api == RtMidi::RTMIDI_DUMMY) continue;
    if (api == RtMidi::UNIX_JACK && JackServerWatch::AnyLost()) continue;
    const auto client = MakeClient(api);
    if (!client) continue;
    const unsigned count = client->getPortCount();
    for (unsigned i = 0; i < count; ++i) ports_.push_back({api, client->getPortName(i)});
  }
}

int PortOutput::DeviceCount() {
  LookForPorts();
  return static_cast<int>(ports_.size());
}

QString PortOutput::DeviceName(int device) {
  if (!looked_) LookForPorts();
  if (device < 0 || device >= static_cast<int>(ports_.size())) return {};
  return QString::fromStdString(ports_[static_cast<std::size_t>(device)].name);
}

int PortOutput::Open(int device) {
  Close();
  if (!looked_) LookForPorts();
  if (device < 0 || device >= static_cast<int>(ports_.size())) return kBadDeviceNumber;
  return OpenPort(ports_[static_cast<std::size_t>(device)]);
}

int PortOutput::OpenPort(const Port& port) {
  const QString name = QString::fromStdString(port.name);
  if (port.api == RtMidi::UNIX_JACK) {
    watch_ = JackServerWatch::Start();
    if (!watch_)
      return Fail(kNotEnabled,
                  QStringLiteral("The sound server of the MIDI output \"%1\" does not answer.").arg(name));
  }
  open_ = MakeClient(static_cast<RtMidi::Api>(port.api));
  const int index = open_ ? IndexOf(*open_, port.name) : -1;
  if (index < 0)
    return Fail(kNotEnabled, QStringLiteral("The MIDI output \"%1\" is no longer there.").arg(name));
  open_->openPort(static_cast<unsigned>(index), "out");
  if (!open_->isPortOpen())
    return Fail(kAllocated, QStringLiteral("The MIDI output \"%1\" refuses to be opened. Another program may "
                                           "hold it.")
                                .arg(name));
  flow_ = {};
  // The server joins two ports between two rounds; what is sent before that reaches nobody.
  for (int round = 0; watch_ && round < kRoundsToJoin; ++round) watch_->WaitForBeat(kLongestRound);
  return kSuccess;
}

int PortOutput::Fail(int code, const QString& words) {
  Close();
  failure_words_ = words;
  return code;
}

void PortOutput::Close() {
  for (auto& notes : sounding_) notes.reset();
  if (!watch_ || watch_->WaitForBeat(kLongestRound)) {
    open_.reset();
    watch_.reset();
    return;
  }
  // Closing a client of a server that does not answer takes its time, or for ever while the server is halted;
  // meanwhile no other client is opened.
  watch_->GiveUp();
  std::thread([client = std::move(open_), watch = std::move(watch_)]() mutable {
    client.reset();
    watch.reset();
  }).detach();
}

void PortOutput::Reset() {
  for (unsigned channel = 0; channel < sounding_.size(); ++channel) {
    const auto notes = sounding_[channel];
    for (unsigned pitch = 0; pitch < notes.size(); ++pitch)
      if (notes[pitch]) ShortMessage((kNoteOn + channel) | (pitch << 8U));
    for (const unsigned controller : {kDamperPedal, kAllNotesOff, kAllSoundOff})
      ShortMessage((kController + channel) | (controller << 8U));
  }
}

void PortOutput::ShortMessage(std::uint32_t packed) {
  const std::array<unsigned char, 3> bytes = {static_cast<unsigned char>(packed & 0xFFU),
                                              static_cast<unsigned char>((packed >> 8U) & 0xFFU),
                                              static_cast<unsigned char>((packed >> 16U) & 0xFFU)};
  const std::span<const unsigned char> message(bytes.data(), LengthOfShort(bytes[0]));
  KeepNote(message);
  Write(message);
}

void PortOutput::LongMessage(const QByteArray& bytes) {
  Write({reinterpret_cast<const unsigned char*>(bytes.constData()), static_cast<std::size_t>(bytes.size())});
}

void PortOutput::KeepNote(std::span<const unsigned char> bytes) {
  const unsigned char kind = bytes[0] & kKindBits;
  if ((kind != kNoteOn && kind != kNoteOff) || bytes[1] > kHighestData) return;
  sounding_[bytes[0] & kChannelBits][bytes[1]] = kind == kNoteOn && bytes[2] > 0;
}

void PortOutput::Write(std::span<const unsigned char> bytes) {
  if (!open_ || bytes.empty() || !RoomFor(bytes.size())) return;
  open_->sendMessage(bytes.data(), bytes.size());
}

bool PortOutput::RoomFor(std::size_t size) {
  if (!watch_) return true;
  if (!watch_->Alive() || JackFlow::NeverFits(size)) return false;
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!flow_.Admit(size, watch_->Beats())) {
    if (!watch_->Alive()) return false;
    if (std::chrono::steady_clock::now() >= end) {
      watch_->GiveUp();
      return false;
    }
    std::this_thread::sleep_for(milliseconds(1));
  }
  return true;
}

QString PortOutput::ErrorText(int code) {
  const bool opening = code == kNotEnabled || code == kAllocated;
  return opening && !failure_words_.isEmpty() ? failure_words_ : MidiErrorWords(code);
}

}  // namespace zelmar
