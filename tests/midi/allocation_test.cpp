// A short message is on the path of the playback tick: it must not allocate.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "midi/mode_commands.h"
#include "midi/quil_sounds_module.h"
#include "model/tune.h"
#include "support/scripted_services.h"

namespace {

thread_local int allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
  ++allocations;
  if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  ++allocations;
  return std::malloc(size == 0 ? 1 : size);
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace zelmar {
namespace {

class CountingOutput : public MidiOutput {
 public:
  int DeviceCount() override { return 1; }
  QString DeviceName(int) override { return {}; }
  int Open(int) override { return kSuccess; }
  void Close() override {}
  void Reset() override {}
  void ShortMessage(std::uint32_t) override { ++calls; }
  void LongMessage(const QByteArray&) override {}
  QString ErrorText(int) override { return {}; }

  int calls = 0;
};

TEST(ShortMessages, AreOneCallEachAndAllocateNothing) {
  testing_support::ScriptedPlatform platform;
  const auto output = std::make_shared<CountingOutput>();
  Platform().midi = output;
  const int before = allocations;
  SendNoteOn(60, 1, 100);
  SendProgramChange(40, 10);
  SendController(7, 5, 3);
  SendPitchBend(1, 0, 64);
  SendChannelPressure(1, 64);
  EXPECT_EQ(allocations, before);
  EXPECT_EQ(output->calls, 5);
  ResetChannels(ChannelReset::kControllers);
  EXPECT_EQ(allocations, before);
  EXPECT_EQ(output->calls, 5 + 144);
}

TEST(MelodyTest, AllocatesNothingHoweverManyChangesOfTempoThereAre) {
  testing_support::ScriptedPlatform platform;
  platform.events->step_microseconds = 0;
  Platform().midi = std::make_shared<CountingOutput>();
  const auto tune = std::make_shared<Tune>();
  const auto add = [&tune](EventType type, std::int16_t bar, std::int16_t beat) {
    auto tone = std::make_shared<Tone>();
    tone->SetEventType(type);
    tone->SetAbsRef(tune->LastAbsRef() + 1);
    tone->SetBar(bar);
    tone->SetBeat(beat);
    tone->SetVolume(1);
    tune->Add(tone);
  };
  // All of them before the first note, as each takes one step.
  for (std::int16_t bar = 1; bar <= 250; ++bar)
    for (std::int16_t beat = 1; beat <= 4; ++beat) add(TEMPO_CHANGE, bar, beat);
  add(MUSIC_NOTE, 251, 2);
  tune->CalcNotesOff();
  tune->SortStartTimes();
  tune->BarCount();
  int steps = 0;
  platform.events->on_serve = [&](int) {
    if (++steps == 1000) tune->Stopit();
    if (steps >= 1000) return;
    const int before = allocations;
    tune->MelodyTest();
    ASSERT_EQ(allocations, before);
  };
  std::int16_t bar = 251;
  tune->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  tune->Play(bar);
  EXPECT_GE(steps, 400);
}

TEST(MelodyTest, AllocatesNothingAsItGoesFromEventToEvent) {
  testing_support::ScriptedPlatform platform;
  platform.events->step_microseconds = 0;
  Platform().midi = std::make_shared<CountingOutput>();
  const auto tune = std::make_shared<Tune>();
  constexpr int kEvents = 1000;
  for (int i = 0; i < kEvents; ++i) {
    auto tone = std::make_shared<Tone>();
    tone->SetEventType(i % 2 == 0 ? MUSIC_NOTE : MAIN_VOLUME);
    tone->SetAbsRef(tune->LastAbsRef() + 1);
    tune->Add(tone);
  }
  tune->SetSorted(true);
  tune->BarCount();
  int steps = 0;
  platform.events->on_serve = [&](int) {
    if (!tune->Playing()) return;
    ++steps;
    const std::int32_t place = tune->PlayIndex();
    const int before = allocations;
    tune->MelodyTest();
    ASSERT_EQ(allocations, before);
    ASSERT_EQ(tune->PlayIndex(), place + 1);
    if (place > kEvents - 10) tune->Stopit();
  };
  tune->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  tune->Play();
  EXPECT_GE(steps, kEvents / 3);
}

TEST(ShortMessages, TheCountOfAllocationsWorks) {
  const int before = allocations;
  const auto something = std::make_unique<std::vector<int>>(10);
  EXPECT_GE(allocations, before + 2) << something->size();
}

}  // namespace
}  // namespace zelmar
