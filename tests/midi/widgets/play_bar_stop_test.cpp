// Stop takes every bar of the tune to its first beat, whichever of them it was clicked on.
#include "midi/widgets/play_bar_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class PlayBarStop : public PlayBarTest {
 protected:
  PlayBarStop() {
    Attach(TuneOfBars(8));
    second_.SetTune(tune_);
  }

  void ExpectAtTheStart(const PlayBar& bar) {
    EXPECT_EQ(bar.StartBar(), 1);
    EXPECT_EQ(TextOf(bar, "lblMyBar"), QStringLiteral("1"));
    EXPECT_EQ(TextOf(bar, "lblMyBeat"), QStringLiteral("1"));
    EXPECT_EQ(Find<QSlider>(bar, "PlaySlider").value(), 1);
    EXPECT_TRUE(IsEnabled(bar, "cmdPlay"));
    EXPECT_FALSE(IsEnabled(bar, "cmdStop"));
  }

  PlayBar second_;
};

TEST_F(PlayBarStop, OfOneBarTakesAllBarsToTheFirstBeat) {
  AtBeat(3, 2, [this] { Click(*bar_, "cmdStop"); });
  bar_->Play();
  ExpectAtTheStart(*bar_);
  ExpectAtTheStart(second_);
  EXPECT_EQ(tune_->BarNumber(), 1);
  EXPECT_EQ(tune_->BeatWithinBar(), 1);
}

TEST_F(PlayBarStop, OfABarThatDidNotStartThePlayingDoesSoToo) {
  AtBeat(3, 2, [this] { second_.StopPlay(); });
  bar_->Play();
  ExpectAtTheStart(*bar_);
  ExpectAtTheStart(second_);
}

TEST_F(PlayBarStop, OfATuneThatCannotBeStoppedTakesItsBarToTheStartAllTheSame) {
  bool failed = false;
  AtBeat(3, 2, [&] {
    const QMetaObject::Connection failure =
        QObject::connect(tune_.get(), &Tune::Finished, &context_, [&failed] {
          failed = true;
          throw OverflowError();
        });
    EXPECT_NO_THROW(bar_->StopPlay());
    QObject::disconnect(failure);
  });
  bar_->Play();
  EXPECT_TRUE(failed);
  EXPECT_FALSE(tune_->Playing());
  ExpectAtTheStart(*bar_);
}

TEST_F(PlayBarStop, FromTheQueueDoesSoToo) {
  platform_.events->on_serve = [this](int) {
    if (tune_->Playing() && tune_->BarNumber() == 4) second_.StopPlay();
  };
  bar_->Play();
  ExpectAtTheStart(*bar_);
  ExpectAtTheStart(second_);
}

TEST_F(PlayBarStop, OfAPausedTuneForgetsThePauseOfAllBars) {
  AtBeat(3, 2, [this] { second_.Pause(); });
  second_.SetPlayStatus(true);
  bar_->Play();
  ASSERT_EQ(second_.StartBar(), 3);
  bar_->StopPlay();
  ExpectAtTheStart(*bar_);
  ExpectAtTheStart(second_);
}

TEST_F(PlayBarStop, AfterAJumpTellsOfThatFirst) {
  QList<int> told;
  QObject::connect(bar_.get(), &PlayBar::OtherButtonClicked, &context_,
                   [&told](std::int16_t bar) { told.append(bar); });
  AtBeat(3, 2, [this] { bar_->Forward(); });
  AtBeat(5, 2, [this] { Click(*bar_, "cmdStop"); });
  bar_->Play();
  EXPECT_EQ(told, (QList<int>{4}));
  ExpectAtTheStart(*bar_);
}

TEST_F(PlayBarStop, TheEndOfTheTuneResetsNothing) {
  bar_->Play();
  EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("8"));
  EXPECT_EQ(TextOf(second_, "lblMyBar"), QStringLiteral("8"));
  EXPECT_EQ(PlaySlider().value(), 32);
}

TEST_F(PlayBarStop, OfAnotherTuneLeavesABarWhereItIs) {
  bar_->SetTune(TuneOfBars(4));
  Find<QSlider>(second_, "PlaySlider").setValue(9);
  bar_->StopPlay();
  EXPECT_EQ(second_.StartBar(), 3);
}

}  // namespace
}  // namespace zelmar
