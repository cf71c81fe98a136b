// Jumps while the tune plays: however many there are they follow one another, and each is told of once its
// own playing is over or replaced.
#include "midi/running_tunes.h"
#include "midi/widgets/play_bar_fixture.h"
#include "support/stack_depth.h"

namespace zelmar {
namespace {

using namespace testing_support;

class PlayBarJumps : public PlayBarTest {
 protected:
  PlayBarJumps() {
    platform_.events->step_microseconds = 0;
    Attach(TuneOfBars(8));
    QObject::connect(bar_.get(), &PlayBar::OtherButtonClicked, &context_,
                     [this](std::int16_t bar) { told_.append(bar); });
  }

  // Runs `act` at each beat with the number of the beat in this playing of the test.
  template <typename Act>
  void AtEachBeat(Act act) {
    QObject::connect(tune_.get(), &Tune::Ticked, &context_, [act, beat = 0]() mutable { act(++beat); });
  }

  QList<int> told_;  // bars of OtherButtonClicked
};

TEST_F(PlayBarJumps, TenThousandInOnePlayingNeedNoMoreStackThanOne) {
  constexpr int kJumps = 10000;
  StackDepth depth;
  int jumps = 0;
  bool over = false;
  AtEachBeat([&](int) {
    depth.Look();
    EXPECT_FALSE(over);
    // The one before is told of by the time that the next one begins, and never while its own playing runs.
    ASSERT_EQ(told_.size(), std::max(jumps - 1, 0));
    if (jumps == kJumps) return;
    ++jumps;
    if (tune_->BarNumber() >= 5 || (tune_->BarNumber() > 1 && jumps % 3 == 0))
      bar_->Back();
    else
      bar_->Forward();
    ASSERT_TRUE(tune_->Playing());
  });
  bar_->Play();
  over = true;
  EXPECT_EQ(jumps, kJumps);
  EXPECT_EQ(told_.size(), kJumps);
  EXPECT_FALSE(tune_->Playing());
  EXPECT_LT(depth.Span(), 4096U);
  ExpectButtons(true, false, false);
}

TEST_F(PlayBarJumps, TenThousandKeysFromTheQueueNeedNoMoreEither) {
  constexpr int kJumps = 10000;
  StackDepth depth;
  int jumps = 0;
  platform_.events->on_serve = [&](int) {
    if (!tune_->Playing() || jumps == kJumps) return;
    depth.Look();
    bar_->HandleKey(++jumps % 2 == 1 ? Qt::Key_PageDown : Qt::Key_PageUp);
  };
  bar_->Play();
  EXPECT_EQ(jumps, kJumps);
  EXPECT_EQ(told_.size(), kJumps);
  EXPECT_LT(depth.Span(), 4096U);
}

TEST_F(PlayBarJumps, TwoInOneMomentMoveTwoBars) {
  AtEachBeat([this](int beat) {
    if (beat != 2) return;
    bar_->Forward();
    bar_->Forward();
    EXPECT_EQ(tune_->PlayStartBar(), 3);
    // The first of them is over; both tell of the bar where the next playing starts.
    EXPECT_EQ(told_, (QList<int>{3}));
  });
  bar_->Play();
  EXPECT_EQ(told_, (QList<int>{3, 3}));
}

TEST_F(PlayBarJumps, AreToldOfAtTheEndOfTheTune) {
  AtEachBeat([this](int beat) {
    if (beat == 2) bar_->Forward();
    EXPECT_TRUE(told_.isEmpty());
  });
  bar_->Play();
  EXPECT_EQ(told_, (QList<int>{2}));
  EXPECT_EQ(bar_->StartBar(), 2);
}

TEST_F(PlayBarJumps, AreToldOfWhenThePlayingIsStoppedOrPaused) {
  for (const char* button : {"cmdStop", "cmdPause", "cmdRewind", "cmdEnd"}) {
    told_.clear();
    bar_->StopPlay();
    QObject context;
    QObject::connect(tune_.get(), &Tune::Ticked, &context, [this, button, beat = 0]() mutable {
      if (++beat == 2) bar_->Forward();
      if (beat == 4) Click(*bar_, button);
    });
    bar_->Play();
    ASSERT_GE(told_.size(), 1) << button;
    EXPECT_EQ(told_.first(), 2) << button;
    // Rewind and Go to End are told of themselves.
    EXPECT_EQ(told_.size(), button == std::string("cmdRewind") || button == std::string("cmdEnd") ? 2 : 1)
        << button;
  }
}

TEST_F(PlayBarJumps, AreToldOfWhenAnotherPlayingTakesThePlaceOfTheirs) {
  bool replaced = false;
  AtEachBeat([&](int beat) {
    if (beat == 2) bar_->Forward();
    if (beat != 4) return;
    replaced = true;
    tune_->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
    std::int16_t bar = 8;
    tune_->Play(bar);
    EXPECT_EQ(told_, (QList<int>{2}));
  });
  bar_->Play();
  EXPECT_TRUE(replaced);
  EXPECT_EQ(told_, (QList<int>{2}));
}

TEST_F(PlayBarJumps, OfAStillTuneAreToldOfAtOnce) {
  bar_->Forward();
  bar_->Forward();
  bar_->Back();
  EXPECT_EQ(told_, (QList<int>{2, 3, 2}));
  EXPECT_FALSE(tune_->Playing());
}

TEST_F(PlayBarJumps, KeepTheButtonsOfAPlayingTuneAndTheReadOutsOfTheirBar) {
  AtEachBeat([this](int beat) {
    if (beat != 2) return;
    bar_->Forward();
    ExpectButtons(false, true, true);
    EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("2"));
    EXPECT_EQ(TextOf(*bar_, "lblMyBeat"), QStringLiteral("1"));
    EXPECT_EQ(PlaySlider().value(), 5);
  });
  bar_->Play();
}

TEST_F(PlayBarJumps, OfAnotherBarAreTakenByThePlayThatIsUnderWay) {
  PlayBar second;
  second.SetTune(tune_);
  QSignalSpy second_told(&second, &PlayBar::OtherButtonClicked);
  StackDepth depth;
  AtEachBeat([&](int beat) {
    depth.Look();
    if (beat > 1000) return;
    (beat % 2 == 1 ? second : *bar_)
        .HandleKey(beat % 4 == 1 || beat % 4 == 2 ? Qt::Key_PageDown : Qt::Key_PageUp);
  });
  bar_->Play();
  EXPECT_EQ(told_.size() + second_told.count(), 1000);
  EXPECT_LT(depth.Span(), 4096U);
  EXPECT_FALSE(tune_->Playing());
}

TEST_F(PlayBarJumps, GoOnWhenTheirBarCloses) {
  const QPointer<PlayBar> bar(bar_.get());
  int beats_after = 0;
  AtEachBeat([&](int beat) {
    if (beat == 2) bar_->Forward();
    if (beat == 4) bar_.reset();
    if (beat > 4) ++beats_after;
  });
  bar->Play();
  EXPECT_TRUE(bar.isNull());
  EXPECT_TRUE(told_.isEmpty());
  EXPECT_GT(beats_after, 20);
}

TEST_F(PlayBarJumps, AListenerMayCloseTheBarOrJumpAgain) {
  QObject::connect(bar_.get(), &PlayBar::OtherButtonClicked, &context_, [this] {
    if (told_.size() == 1) bar_->Forward();
    if (told_.size() == 3) bar_.release()->deleteLater();
  });
  const QPointer<PlayBar> bar(bar_.get());
  AtEachBeat([&](int beat) {
    if (beat == 2) bar->Forward();
  });
  bar->Play();
  // At the end of the tune the jump is told of, whose listener moves on by a bar of the still tune.
  EXPECT_EQ(told_, (QList<int>{2, 3}));
  EXPECT_EQ(bar_->StartBar(), 3);
}

TEST_F(PlayBarJumps, AreToldOfAlsoWhenTheBarHasGotAnotherTune) {
  const auto first = tune_;
  AtEachBeat([&](int beat) {
    if (beat == 2) bar_->Forward();
    if (beat == 4) bar_->SetTune(TuneOfBars(3));
    EXPECT_TRUE(told_.isEmpty());
  });
  bar_->Play();
  EXPECT_EQ(told_.size(), 1);
  EXPECT_FALSE(first->Playing());
}

TEST_F(PlayBarJumps, AFailureOfAListenerEndsThePlayingAndIsThrownToWhoeverCalledPlay) {
  AtEachBeat([&](int beat) {
    if (beat == 2) bar_->Forward();
    if (beat == 4) throw OverflowError();
  });
  EXPECT_THROW(bar_->Play(), OverflowError);
  EXPECT_FALSE(tune_->Playing());
  EXPECT_EQ(told_, (QList<int>{2}));
  ExpectButtons(true, false, false);
}

TEST_F(PlayBarJumps, AfterAPauseThePlayingBeginsInTheBarOfThePause) {
  // A slow passage from bar 5 on, left by jumps.
  Tone change;
  change.SetEventType(TEMPO_CHANGE);
  change.SetAbsRef(tune_->LastAbsRef() + 1);
  change.SetBar(5);
  change.SetInstrument(30);
  change.SetVolume(0);
  tune_->Add(std::make_shared<Tone>(change));
  tune_->SortStartTimes();
  bar_->SetStartBar(5);
  std::int16_t last_note_bar = 0;
  QObject::connect(tune_.get(), &Tune::NoteStarted, &context_,
                   [&last_note_bar](Tone& tone) { last_note_bar = tone.Bar(); });
  AtEachBeat([&](int beat) {
    if (beat == 2 || beat == 3 || beat == 4) bar_->Back();
    if (beat < 5) return;
    EXPECT_EQ(TextOf(*bar_, "lblMyTempo"), QStringLiteral("120"));
    if (tune_->BarNumber() == 4 && tune_->BeatWithinBar() == 3) bar_->Pause();
  });
  bar_->Play();
  EXPECT_EQ(last_note_bar, 4);
  EXPECT_EQ(bar_->StartBar(), 4);
  last_note_bar = 0;
  QObject::connect(tune_.get(), &Tune::NoteStarted, &context_, [this] { tune_->Stopit(); });
  bar_->Play();
  EXPECT_EQ(last_note_bar, 4);
}

}  // namespace
}  // namespace zelmar
