#include "midi/system_midi_output.h"

namespace zelmar {

namespace {

constexpr int kSynthesiser = 0;
constexpr int kFirstPort = 1;

}  // namespace

int SystemMidiOutput::DeviceCount() {
  return kFirstPort + ports_.DeviceCount();
}

QString SystemMidiOutput::DeviceName(int device) {
  if (device == kSynthesiser) return synth_.DeviceName(0);
  return device >= kFirstPort ? ports_.DeviceName(device - kFirstPort) : QString();
}

int SystemMidiOutput::Open(int device) {
  Close();
  if (device < 0) return kBadDeviceNumber;
  const bool is_port = device >= kFirstPort;
  asked_last_ = is_port ? static_cast<MidiOutput*>(&ports_) : &synth_;
  const int result = asked_last_->Open(is_port ? device - kFirstPort : 0);
  if (result == kSuccess) open_ = asked_last_;
  return result;
}

void SystemMidiOutput::Close() {
  if (open_ == nullptr) return;
  open_->Close();
  open_ = nullptr;
}

void SystemMidiOutput::Reset() {
  if (open_ != nullptr) open_->Reset();
}

void SystemMidiOutput::ShortMessage(std::uint32_t packed) {
  if (open_ != nullptr) open_->ShortMessage(packed);
}

void SystemMidiOutput::LongMessage(const QByteArray& bytes) {
  if (open_ != nullptr) open_->LongMessage(bytes);
}

QString SystemMidiOutput::ErrorText(int code) {
  return asked_last_->ErrorText(code);
}

std::shared_ptr<MidiOutput> MakeSystemMidiOutput(SynthesiserLoading loading) {
  auto output = std::make_shared<SystemMidiOutput>();
  if (loading == SynthesiserLoading::kAhead) output->Synthesiser().LoadAhead();
  return output;
}

}  // namespace zelmar
