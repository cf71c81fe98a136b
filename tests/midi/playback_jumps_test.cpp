// Playings that follow one another from within: one loop plays them all, and none is left on the stack.
#include <functional>

#include "midi/playback_fixture.h"
#include "midi/running_tunes.h"
#include "support/stack_depth.h"

namespace zelmar {
namespace {

using testing_support::SentMessage;
using testing_support::StackDepth;

class Jumps : public Playback {
 protected:
  Jumps() {
    for (std::int16_t bar = 1; bar <= 8; ++bar)
      for (std::int16_t beat = 1; beat <= 4; ++beat) Add(MUSIC_NOTE, bar, beat);
    Add(7, 1, 2)->SetVolume(90);
    Prepare();
    QObject::connect(tune_.get(), &Tune::Finished, [this] { ++finished_; });
    QObject::connect(tune_.get(), &Tune::NoteStarted, [this](Tone& tone) { bars_.append(tone.Bar()); });
  }

  void JumpTo(std::int16_t bar) {
    tune_->Stopit();
    GoOnFrom(bar);
  }
  void GoOnFrom(std::int16_t bar) {
    tune_->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
    tune_->JumpTo(bar);
  }

  int finished_ = 0;
  QList<int> bars_;  // of the notes that began
};

constexpr int kMany = 10000;
constexpr std::uintptr_t kNoGrowth = 4096;

TEST_F(Jumps, TenThousandInOnePlayingNeedNoMoreStackThanOne) {
  StackDepth depth;
  int jumps = 0;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    depth.Look();
    if (jumps == kMany) return;
    ++jumps;
    JumpTo(static_cast<std::int16_t>(1 + jumps % 8));
  });
  PlayFrom();
  EXPECT_EQ(jumps, kMany);
  EXPECT_EQ(finished_, kMany + 1);
  EXPECT_FALSE(tune_->Playing());
  EXPECT_LT(depth.Span(), kNoGrowth);
  // The last one went to bar 1 and was played whole.
  EXPECT_EQ(bars_.mid(bars_.size() - 32).count(8), 4);
}

TEST_F(Jumps, TenThousandFromTheEventQueueNeedNoMoreEither) {
  StackDepth depth;
  int jumps = 0;
  platform_.events->on_serve = [&](int) {
    depth.Look();
    if (jumps < kMany) JumpTo(static_cast<std::int16_t>(1 + ++jumps % 8));
  };
  PlayFrom();
  EXPECT_EQ(jumps, kMany);
  EXPECT_LT(depth.Span(), kNoGrowth);
}

TEST_F(Jumps, ATuneThatBeginsAnewAtEachEndNeedsNoMoreEither) {
  StackDepth depth;
  int ends = 0;
  QObject::connect(tune_.get(), &Tune::Finished, [&] {
    depth.Look();
    if (++ends < 100) GoOnFrom(8);
  });
  PlayFrom(8);
  EXPECT_EQ(ends, 100);
  EXPECT_EQ(bars_.size(), 4 * 100);
  EXPECT_LT(depth.Span(), kNoGrowth);
}

TEST_F(Jumps, MayComeFromEveryEventOfTheTune) {
  using Listen = std::function<QMetaObject::Connection(std::function<void()>)>;
  const std::pair<const char*, Listen> events[] = {
      {"MelodyTested", [this](auto act) { return QObject::connect(tune_.get(), &Tune::MelodyTested, act); }},
      {"NoteStarted", [this](auto act) { return QObject::connect(tune_.get(), &Tune::NoteStarted, act); }},
      {"NoteStopped", [this](auto act) { return QObject::connect(tune_.get(), &Tune::NoteStopped, act); }},
      {"ControlEvent", [this](auto act) { return QObject::connect(tune_.get(), &Tune::ControlEvent, act); }},
      {"Ticked", [this](auto act) { return QObject::connect(tune_.get(), &Tune::Ticked, act); }},
  };
  for (const auto& [name, listen] : events) {
    bool jumped = false;
    double at = 0.0;
    const auto connection = listen([&] {
      if (jumped) return;
      jumped = true;
      JumpTo(7);
      at = SecondsSinceMidnight();
      bars_.clear();
    });
    PlayFrom();
    QObject::disconnect(connection);
    EXPECT_TRUE(jumped) << name;
    EXPECT_EQ(bars_, (QList<int>{7, 7, 7, 7, 8, 8, 8, 8})) << name;
    EXPECT_NEAR(SecondsSinceMidnight() - at, 4.0, 0.01) << name;
    EXPECT_EQ(tune_->BarNumber(), 8) << name;
  }
}

TEST_F(Jumps, ReturnToTheHandlerOnceAllIsReadyAndPlayAtTheEnd) {
  bool returned = false;
  bool jumped = false;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    EXPECT_FALSE(returned);
    if (jumped) return;
    jumped = true;
    const auto before = platform_.midi->sent.size();
    JumpTo(0);
    EXPECT_TRUE(tune_->Playing());
    EXPECT_EQ(tune_->PlayStartBar(), 1);
    EXPECT_EQ(tune_->BarNumber(), 1);
    EXPECT_EQ(tune_->BeatWithinBar(), 1);
    // Nothing but the reset has gone out: what comes behind in this very moment cannot undo it.
    EXPECT_EQ(platform_.midi->sent.size(), before + 1);
  });
  PlayFrom(4);
  returned = true;
  EXPECT_TRUE(jumped);
  // The first step of the playing from bar 4 ended the note before it, and the jump came on its first beat.
  EXPECT_EQ(bars_.size(), 32);
  EXPECT_EQ(bars_.first(), 1);
}

TEST_F(Jumps, SeveralInOneMomentLeadToTheLast) {
  bool jumped = false;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    if (jumped) return;
    jumped = true;
    for (const std::int16_t bar : std::initializer_list<std::int16_t>{2, 6, 8}) JumpTo(bar);
  });
  PlayFrom();
  EXPECT_EQ(bars_, (QList<int>{1, 8, 8, 8, 8}));
  EXPECT_EQ(finished_, 4);
}

TEST_F(Jumps, AStopBehindAJumpStopsThatToo) {
  bool jumped = false;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    if (jumped) return;
    jumped = true;
    JumpTo(5);
    tune_->Stopit();
  });
  PlayFrom();
  EXPECT_EQ(bars_, (QList<int>{1}));
  EXPECT_FALSE(tune_->Playing());
  EXPECT_EQ(platform_.midi->sent.back().kind, SentMessage::Kind::kReset);
}

TEST_F(Jumps, TheDeviceIsMadeReadyBehindAllThatTheEndSetsOff) {
  // The first listener of the end begins anew, a later one resets the device, as the main window does.
  bool again = false;
  QObject::connect(tune_.get(), &Tune::Finished, [&] {
    if (again) return;
    again = true;
    GoOnFrom(8);
  });
  std::size_t reset_at = 0;
  QObject::connect(tune_.get(), &Tune::Finished, [&] {
    if (reset_at == 0) reset_at = platform_.midi->sent.size();
  });
  PlayFrom(8);
  ASSERT_TRUE(again);
  const auto& sent = platform_.midi->sent;
  // Volume and expression of each channel, and the banks.
  ASSERT_GT(sent.size(), reset_at + 34);
  EXPECT_EQ(sent[reset_at].packed, 0xB0U + 7U * 256U + 127U * 65536U);
}

// --- Failures ---

TEST_F(Jumps, AFailureBehindAJumpEndsThePlayingAndLeavesTheTuneReady) {
  bool failed = false;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    if (failed) return;
    failed = true;
    JumpTo(5);
    throw OverflowError();
  });
  EXPECT_THROW(PlayFrom(), OverflowError);
  EXPECT_FALSE(tune_->Playing());
  EXPECT_EQ(bars_, (QList<int>{1}));
  bars_.clear();
  PlayFrom(8);
  EXPECT_EQ(bars_.size(), 4);
}

TEST_F(Jumps, APlayAtTheEndThatAFailureMakesIsOneOfItsOwn) {
  bool failed = false, again = false;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    if (failed) return;
    failed = true;
    throw OverflowError();
  });
  QObject::connect(tune_.get(), &Tune::Finished, [&] {
    if (again) return;
    again = true;
    bars_.clear();
    GoOnFrom(8);
    EXPECT_FALSE(tune_->Playing());
  });
  EXPECT_THROW(PlayFrom(), OverflowError);
  EXPECT_TRUE(again);
  EXPECT_EQ(bars_.size(), 4);
  EXPECT_FALSE(tune_->Playing());
}

TEST_F(Jumps, OutsideOfAPlayingAreAPlay) {
  GoOnFrom(8);
  EXPECT_EQ(bars_.size(), 4);
  EXPECT_FALSE(tune_->Playing());
  tune_->Tones()->Clear();
  GoOnFrom(1);
  EXPECT_EQ(finished_, 1);
}

TEST_F(Jumps, APlayFromWithinReturnsAtItsEndWhoeverCallsIt) {
  bool again = false;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    if (again) return;
    again = true;
    tune_->Stopit();
    tune_->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
    // A jump in the inner playing is the inner call's.
    bool jumped = false;
    const QObject context;
    QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
      if (jumped) return;
      jumped = true;
      JumpTo(7);
    });
    std::int16_t bar = 5;
    tune_->Play(bar);
    EXPECT_TRUE(jumped);
    EXPECT_FALSE(tune_->Playing());
    EXPECT_EQ(bars_, (QList<int>{1, 7, 7, 7, 7, 8, 8, 8, 8}));
  });
  PlayFrom();
  EXPECT_TRUE(again);
  EXPECT_EQ(bars_.size(), 9);
}

TEST_F(Jumps, ABarThatCannotBePlayedLeavesThePlayingAsItIs) {
  tune_->SetBeatsPerBar(12);
  bool jumped = false;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    if (jumped) return;
    jumped = true;
    std::int16_t bar = 4000;
    EXPECT_THROW(tune_->Play(bar), OverflowError);
    EXPECT_TRUE(tune_->Playing());
    EXPECT_EQ(tune_->PlayStartBar(), 1);
  });
  PlayFrom();
  EXPECT_EQ(bars_.size(), 32);
  EXPECT_EQ(finished_, 1);
}

// --- Other tunes ---

class TwoTunes : public Jumps {
 protected:
  TwoTunes() : other_(std::make_shared<Tune>()) {
    for (std::int16_t beat = 1; beat <= 4; ++beat) {
      auto tone = std::make_shared<Tone>();
      tone->SetAbsRef(other_->LastAbsRef() + 1);
      tone->SetBeat(beat);
      other_->Add(tone);
    }
    other_->CalcNotesOff();
    other_->SortStartTimes();
    QObject::connect(other_.get(), &Tune::NoteStarted, [this] { ++other_notes_; });
  }

  void PlayOther() {
    other_->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
    other_->Play();
  }

  std::shared_ptr<Tune> other_;
  int other_notes_ = 0;
};

TEST_F(TwoTunes, OneThatTakesThePlaceOfAnotherIsPlayedBeforePlayReturns) {
  bool replaced = false;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    if (replaced) return;
    replaced = true;
    StopRunningTunes();
    PlayOther();
    EXPECT_FALSE(other_->Playing());
    EXPECT_EQ(other_notes_, 4);
  });
  PlayFrom();
  EXPECT_TRUE(replaced);
  EXPECT_EQ(bars_, (QList<int>{1}));
}

TEST_F(TwoTunes, AllAreStoppedWhicheverFailsToStop) {
  for (const auto& failing : {tune_, other_}) {
    QObject context;
    bool stopped = false;
    QObject::connect(tune_.get(), &Tune::Ticked, &context, [&] {
      if (!stopped) PlayOther();
    });
    QObject::connect(other_.get(), &Tune::Ticked, &context, [&] {
      if (stopped) return;
      ASSERT_TRUE(tune_->Playing() && other_->Playing());
      const QMetaObject::Connection failure =
          QObject::connect(failing.get(), &Tune::Finished, &context, [] { throw OverflowError(); });
      stopped = true;
      EXPECT_NO_THROW(StopRunningTunes());
      QObject::disconnect(failure);
      EXPECT_FALSE(tune_->Playing());
      EXPECT_FALSE(other_->Playing());
    });
    PlayFrom();
    EXPECT_TRUE(stopped);
  }
  EXPECT_EQ(bars_, (QList<int>{1, 1}));
}

TEST_F(TwoTunes, TakingTurnsNeedsNoMoreStackThanTheFirstTurn) {
  StackDepth depth;
  int turns = 0;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    depth.Look();
    if (++turns > 1000) return;
    StopRunningTunes();
    PlayOther();
  });
  QObject::connect(other_.get(), &Tune::Ticked, [&] {
    StopRunningTunes();
    GoOnFrom(8);
  });
  PlayFrom(8);
  EXPECT_EQ(turns, 1000 + 4 + 1);
  EXPECT_LT(depth.Span(), kNoGrowth);
}

TEST_F(TwoTunes, OneWithinAnotherThatStillPlaysIsPlayedAtOnce) {
  int stage = 0;
  QObject::connect(tune_.get(), &Tune::Ticked, [&] {
    if (stage != 0) return;
    stage = 1;
    PlayOther();
  });
  QObject::connect(other_.get(), &Tune::Ticked, [&] {
    if (stage != 1) return;
    stage = 2;
    bars_.clear();
    GoOnFrom(8);
    EXPECT_EQ(bars_.size(), 4);
    EXPECT_FALSE(tune_->Playing());
    EXPECT_TRUE(other_->Playing());
  });
  PlayFrom();
  EXPECT_EQ(stage, 2);
  EXPECT_EQ(other_notes_, 4);
  EXPECT_EQ(bars_.size(), 4);
}

// --- The sort before a playing ---

class PlayingUnsorted : public Playback {
 protected:
  PlayingUnsorted() {
    for (std::int16_t beat = 4; beat >= 1; --beat) Add(MUSIC_NOTE, 1, beat);
    tune_->CalcNotesOff();
    tune_->BarCount();
    QObject::connect(tune_.get(), &Tune::NoteStarted, [this] { ++notes_; });
    QObject::connect(tune_.get(), &Tune::Finished, [this] { ++finished_; });
  }

  // Runs `act` once, at that percent of the sort.
  template <typename Act>
  void AtPercent(int percent, Act act) {
    QObject::connect(tune_.get(), &Tune::SortPercent, [this, percent, act](std::int16_t told) {
      if (acted_ || told != percent) return;
      acted_ = true;
      act();
    });
  }

  bool acted_ = false;
  int notes_ = 0;
  int finished_ = 0;
};

TEST_F(PlayingUnsorted, IsPlayedOnceWhenAListenerOfTheSortPlaysIt) {
  for (const int percent : {0, 80, 99}) {
    acted_ = false;
    notes_ = finished_ = 0;
    tune_->SetSorted(false);
    AtPercent(percent, [this] {
      tune_->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
      tune_->Play();
      EXPECT_EQ(notes_, 4);
    });
    PlayFrom();
    EXPECT_EQ(notes_, 4) << percent;
    EXPECT_EQ(finished_, 1) << percent;
    EXPECT_FALSE(tune_->Playing());
    EXPECT_EQ(tune_->Count(), 8);
    tune_->disconnect(SIGNAL(SortPercent(std::int16_t)));
  }
}

TEST_F(PlayingUnsorted, IsNotPlayedWhenAListenerOfTheSortStopsIt) {
  AtPercent(80, [this] { tune_->Stopit(); });
  PlayFrom();
  EXPECT_EQ(notes_, 0);
  EXPECT_EQ(finished_, 1);
  EXPECT_TRUE(tune_->Sorted());
}

TEST_F(PlayingUnsorted, IsNotPlayedWhenAListenerOfTheSortTakesAllAway) {
  AtPercent(99, [this] { tune_->Tones()->Clear(); });
  PlayFrom();
  EXPECT_TRUE(acted_);
  EXPECT_FALSE(tune_->Playing());
  EXPECT_EQ(tune_->Count(), 0);
}

TEST_F(PlayingUnsorted, IsPlayedWithWhatAListenerOfTheSortAdds) {
  AtPercent(99, [this] {
    Add(MUSIC_NOTE, 1, 3, 0, "E4");
    tune_->CalcNotesOff();
  });
  PlayFrom();
  EXPECT_EQ(notes_, 5);
}

TEST_F(PlayingUnsorted, HasItsTempoMapFromTheSortedEvents) {
  for (const auto& [bar, tempo] : {std::pair{3, 240}, {2, 60}}) {
    auto change = Add(TEMPO_CHANGE, static_cast<std::int16_t>(bar), 1);
    change->SetVolume(static_cast<std::uint8_t>(tempo / 128));
    change->SetInstrument(static_cast<std::uint8_t>(tempo % 128));
  }
  PlayFrom();
  ASSERT_EQ(tune_->TempoChanges()->Count(), 2);
  EXPECT_EQ(tune_->TempoChanges()->Item(1)->NewTempo(), 60);
  EXPECT_EQ(tune_->TempoChanges()->Item(2)->MillesecondCumTime(), 2000 + 4000);
}

}  // namespace
}  // namespace zelmar
