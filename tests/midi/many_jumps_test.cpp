// Jumps within a playing, at the tune itself: it goes on, on one stack, with what each bar asks for.
#include "midi/playback_fixture.h"
#include "support/dice.h"
#include "support/stack_depth.h"

namespace zelmar {
namespace {

using testing_support::Dice;

class ManyJumps : public Playback {
 protected:
  void AddBars(int bars) {
    for (int bar = 1; bar <= bars; ++bar)
      for (int beat = 1; beat <= 4; ++beat)
        Add(MUSIC_NOTE, static_cast<std::int16_t>(bar), static_cast<std::int16_t>(beat), 0, "C4", 0.5)
            ->SetVolume(static_cast<std::uint8_t>(bar * 4 + beat));
    for (const auto& tone : *tune_) tone->SetOldVolume(tone->Volume());
  }
  void JumpTo(int bar) {
    tune_->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
    tune_->JumpTo(static_cast<std::int16_t>(bar));
  }
};

TEST_F(ManyJumps, AreAllTakenOnOneStackAndTheLastPlaysToTheEnd) {
  AddBars(5);
  Prepare();
  Dice dice(2);
  QObject context;
  testing_support::StackDepth depth;
  int jumps = 0, finished = 0, wanted_bar = 1;
  bool just_jumped = true;
  QObject::connect(tune_.get(), &Tune::Finished, &context, [&] { ++finished; });
  QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
    if (just_jumped) {
      EXPECT_EQ(tune_->BarNumber(), wanted_bar);
      EXPECT_EQ(tune_->BeatWithinBar(), 1);
    }
    just_jumped = false;
    if (jumps == 500 || dice(3) != 0) return;
    ++jumps;
    depth.Look();
    wanted_bar = 1 + dice(5);
    JumpTo(wanted_bar);
    EXPECT_TRUE(tune_->Playing());
    just_jumped = true;
  });
  while (jumps < 500) {
    platform_.clock->SetSeconds(36000.0);
    wanted_bar = 1;
    just_jumped = true;
    PlayFrom(1);
    EXPECT_FALSE(tune_->Playing());
  }
  EXPECT_LT(depth.Span(), 60000U);
  EXPECT_GE(finished, 1);
}

TEST_F(ManyJumps, LeadIntoTheNotesOfTheirBar) {
  AddBars(6);
  const auto slow = Add(TEMPO_CHANGE, 4, 1);
  slow->SetVolume(0);
  slow->SetInstrument(60);
  Prepare();
  for (int from = 1; from <= 6; ++from)
    for (int to = 1; to <= 6; ++to) {
      SCOPED_TRACE(from * 10 + to);
      platform_.clock->SetSeconds(36000.0);
      QObject context;
      std::vector<int> heard;
      int ticks = 0;
      QObject::connect(tune_.get(), &Tune::NoteStarted, &context,
                       [&](Tone& tone) { heard.push_back(tone.Volume()); });
      double jumped_at = 0, second_beat_at = 0;
      QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
        ++ticks;
        if (ticks == 2) {
          heard.clear();
          jumped_at = SecondsSinceMidnight();
          JumpTo(to);
        } else if (ticks == 3) {
          EXPECT_EQ(tune_->BarNumber(), to);
          EXPECT_EQ(tune_->TempoCurrent(), to >= 4 ? 60 : 120);
        } else if (ticks == 4) {
          second_beat_at = SecondsSinceMidnight();
        }
      });
      PlayFrom(static_cast<std::int16_t>(from));
      ASSERT_EQ(heard.size(), static_cast<std::size_t>((7 - to) * 4));
      for (std::size_t i = 0; i < heard.size(); ++i) EXPECT_EQ(heard[i], to * 4 + 1 + static_cast<int>(i));
      EXPECT_NEAR(second_beat_at - jumped_at, to >= 4 ? 1.0 : 0.5, 0.001);
    }
}

TEST_F(ManyJumps, FindTheControllersThatStandBeforeTheirBar) {
  AddBars(4);
  Add(7, 1, 1)->SetVolume(33);
  Add(7, 3, 1)->SetVolume(44);
  Prepare();
  QObject context;
  int ticks = 0;
  QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
    if (++ticks != 10) return;
    platform_.midi->sent.clear();
    JumpTo(2);
  });
  PlayFrom(1);
  std::vector<int> volumes;
  for (const Timed& sent : Sent(0))
    if ((sent.word & 0xFFFF) == 0x07B0) volumes.push_back(static_cast<int>(sent.word >> 16));
  EXPECT_EQ(volumes, std::vector<int>({127, 33, 44}));
}

TEST_F(ManyJumps, EndWithStop) {
  AddBars(4);
  Prepare();
  QObject context;
  int ticks = 0, after_stop = 0;
  QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
    ++ticks;
    if (ticks > 6) ++after_stop;
    if (ticks % 2 == 0 && ticks < 6) JumpTo(2);
    if (ticks == 6) tune_->Stopit();
  });
  PlayFrom(1);
  EXPECT_EQ(ticks, 6);
  EXPECT_EQ(after_stop, 0);
  EXPECT_FALSE(tune_->Playing());
}

}  // namespace
}  // namespace zelmar
