// A tune on the virtual clock and what it sends: the fixture of the playback tests.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "model/globals.h"
#include "model/tune.h"
#include "platform/failure.h"
#include "support/scripted_services.h"

namespace zelmar {

struct Timed {
  double milliseconds;
  std::uint32_t word;
};

class Playback : public ::testing::Test {
 protected:
  Playback() : tune_(std::make_shared<Tune>()) { platform_.events->step_microseconds = 0; }

  std::shared_ptr<Tone> Add(EventType type, std::int16_t bar, std::int16_t beat, std::int16_t tick = 0,
                            const char* pitch = "C4", double duration = 1.0) {
    auto tone = std::make_shared<Tone>();
    tone->SetEventType(type);
    tone->SetAbsRef(tune_->LastAbsRef() + 1);
    tone->SetBar(bar);
    tone->SetBeat(beat);
    tone->SetTick(tick);
    tone->SetPitch(QString::fromLatin1(pitch));
    tone->SetDuration(duration);
    tone->SetBeatLength(tune_->BeatLength());
    return tune_->Add(tone);
  }

  void Prepare() {
    tune_->CalcNotesOff();
    tune_->SortStartTimes();
    tune_->BarCount();
  }

  void PlayFrom(std::int16_t bar = 1) {
    start_ = SecondsSinceMidnight();
    tune_->SetMelodyStartTime(static_cast<float>(start_));
    platform_.midi->sent.clear();
    tune_->Play(bar);
  }

  // Short messages from the first note or other event on, without the 32 controllers and the bank messages
  // before.
  std::vector<Timed> Sent(std::size_t skip = 34) const {
    std::vector<Timed> result;
    for (const testing_support::SentMessage& message : platform_.midi->sent)
      if (message.kind == testing_support::SentMessage::Kind::kShort) {
        if (skip > 0)
          --skip;
        else
          result.push_back({(message.seconds - start_) * 1000.0, message.packed});
      }
    return result;
  }

  static std::uint32_t NoteOn(int pitch, int channel, int velocity) {
    return static_cast<std::uint32_t>(0x90 + channel - 1 + pitch * 256 + velocity * 65536);
  }
  static std::uint32_t Patch(int patch, int channel) {
    return static_cast<std::uint32_t>(0xC0 + channel - 1 + patch * 256);
  }

  testing_support::ScriptedPlatform platform_;
  std::shared_ptr<Tune> tune_;
  double start_ = 0.0;
};

}  // namespace zelmar
