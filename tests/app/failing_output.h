// A MIDI output that fails: one whose device was pulled out, or whose driver gave up.
#pragma once

#include <algorithm>
#include <vector>

#include "platform/failure.h"
#include "support/scripted_services.h"

namespace zelmar::testing_support {

// Keeps what it is sent, but for the kinds that fail.
class FailingOutput : public RecordingMidiOutput {
 public:
  using Kind = SentMessage::Kind;

  explicit FailingOutput(std::initializer_list<Kind> kinds) : kinds_(kinds) {}

  int Open(int device) override {
    Try(Kind::kOpen);
    return RecordingMidiOutput::Open(device);
  }
  void Close() override {
    Try(Kind::kClose);
    RecordingMidiOutput::Close();
  }
  void Reset() override {
    Try(Kind::kReset);
    RecordingMidiOutput::Reset();
  }
  void ShortMessage(std::uint32_t packed) override {
    Try(Kind::kShort);
    RecordingMidiOutput::ShortMessage(packed);
  }
  void LongMessage(const QByteArray& bytes) override {
    Try(Kind::kLong);
    RecordingMidiOutput::LongMessage(bytes);
  }

  int failures = 0;

 private:
  void Try(Kind kind) {
    if (std::find(kinds_.begin(), kinds_.end(), kind) == kinds_.end()) return;
    ++failures;
    throw Failure(error_number::kInvalidCall, QStringLiteral("the device is gone"));
  }

  std::vector<Kind> kinds_;
};

}  // namespace zelmar::testing_support
