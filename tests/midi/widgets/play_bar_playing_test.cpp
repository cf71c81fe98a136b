// The transport bar plays: start, pause, stop, the end, and the tempo that the next start takes.
#include <QStyleOptionSlider>

#include "midi/widgets/now_listening.h"
#include "midi/widgets/play_bar_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

TEST_F(PlayBarTest, PlayTakesTheStepsInOrderAndReturnsAtTheEnd) {
  Attach(TuneOfBars(2));
  Global().MidiMode = QStringLiteral("XG");
  QSignalSpy clicked(bar_.get(), &PlayBar::PlayClicked);
  AtBeat(2, 3, [this] {
    ExpectButtons(false, true, true);
    EXPECT_TRUE(tune_->Playing());
    EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("2"));
    EXPECT_EQ(TextOf(*bar_, "lblMyBeat"), QStringLiteral("3"));
    EXPECT_EQ(PlaySlider().value(), 7);
    EXPECT_EQ(TextOf(*bar_, "lblMidiMode"), QStringLiteral("XG"));
  });
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(clicked.count(), 1);
  EXPECT_FALSE(tune_->Playing());
  ExpectButtons(true, false, false);
  EXPECT_EQ(bar_->StartBar(), 1);
}

TEST_F(PlayBarTest, PlayOfATuneThatPlaysStartsNoSecondRun) {
  Attach(TuneOfBars(2));
  QSignalSpy clicked(bar_.get(), &PlayBar::PlayClicked);
  AtBeat(1, 3, [this] { bar_->Play(); });
  bar_->Play();
  EXPECT_EQ(clicked.count(), 1);
}

TEST_F(PlayBarTest, PlayRunsWhileTheButtonIsOffButTheTuneIsStill) {
  Attach(TuneOfBars(1));
  bar_->SetPlayStatus(true);
  QSignalSpy finished(tune_.get(), &Tune::Finished);
  bar_->Play();
  EXPECT_EQ(finished.count(), 1);
}

TEST_F(PlayBarTest, PauseDoesNothingWhileItsButtonIsOff) {
  Attach(TuneOfBars(8));
  Find<QSlider>(*bar_, "PlaySlider").setValue(17);
  ASSERT_EQ(bar_->StartBar(), 5);
  bar_->Pause();
  EXPECT_EQ(bar_->StartBar(), 5);
  ExpectButtons(true, false, false);
}

TEST_F(PlayBarTest, ATuneWithoutEventsLeavesTheBarReady) {
  Attach(std::make_shared<Tune>());
  Click(*bar_, "cmdPlay");
  ExpectButtons(true, false, false);
}

TEST_F(PlayBarTest, TheShownTempoHoldsForAPlayFromTheTopOnly) {
  Attach(TuneOfBars(3));
  Find<QLabel>(*bar_, "lblMyTempo").setText(QStringLiteral("151.9"));
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(tune_->Tempo(), 151);
  bar_->SetStartBar(2);
  Find<QLabel>(*bar_, "lblMyTempo").setText(QStringLiteral("99"));
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(tune_->Tempo(), 151);
}

TEST_F(PlayBarTest, PauseRemembersTheBarAndPlayGoesOnAtItsHead) {
  Attach(TuneOfBars(4));
  AtBeat(3, 2, [this] { Click(*bar_, "cmdPause"); });
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(bar_->StartBar(), 3);
  ExpectButtons(true, false, true);
  std::int16_t first_bar = 0;
  QObject::connect(tune_.get(), &Tune::NoteStarted, &context_, [&first_bar](Tone& tone) {
    if (first_bar == 0) first_bar = tone.Bar();
  });
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(first_bar, 3);
  EXPECT_EQ(tune_->PlayStartBar(), 3);
}

TEST_F(PlayBarTest, StopShowsBar1Beat1) {
  Attach(TuneOfBars(4));
  AtBeat(3, 2, [this] { Click(*bar_, "cmdStop"); });
  bar_->SetStartBar(2);
  Click(*bar_, "cmdPlay");
  EXPECT_FALSE(tune_->Playing());
  EXPECT_EQ(bar_->StartBar(), 1);
  EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("1"));
  EXPECT_EQ(TextOf(*bar_, "lblMyBeat"), QStringLiteral("1"));
  EXPECT_EQ(PlaySlider().value(), 1);
  ExpectButtons(true, false, false);
}

TEST_F(PlayBarTest, StopAndTheEndSendTheModeAgainButNotGM2) {
  for (const auto& [mode, messages] : {std::pair{"GM", 1}, {"XG", 1}, {"GS", 1}, {"GM2", 0}}) {
    Attach(TuneOfBars(1));
    Global().MidiMode = QLatin1String(mode);
    platform_.midi->sent.clear();
    Click(*bar_, "cmdPlay");
    EXPECT_EQ(LongMessages(), messages) << "at the end, " << mode;
    Global().MidiMode = QLatin1String(mode);
    platform_.midi->sent.clear();
    tune_->disconnect(bar_.get());
    bar_->StopPlay();
    EXPECT_EQ(LongMessages(), messages) << "on stop, " << mode;
  }
}

TEST_F(PlayBarTest, TheModeLabelFollowsTheModeAfterTheEnd) {
  Attach(TuneOfBars(1));
  Global().MidiMode = QStringLiteral("GM");
  Click(*bar_, "cmdPlay");
  // The GM command stores the word "GM2".
  EXPECT_EQ(TextOf(*bar_, "lblMidiMode"), QStringLiteral("GM2"));
}

TEST_F(PlayBarTest, StopHidesTheWindowThatTellsWhatPlays) {
  int hidden = 0;
  SetNowListeningHider([&hidden] { ++hidden; });
  Attach(TuneOfBars(1));
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(hidden, 0);
  bar_->StopPlay();
  EXPECT_EQ(hidden, 1);
  SetNowListeningHider({});
  bar_->StopPlay();
  EXPECT_EQ(hidden, 1);
}

TEST_F(PlayBarTest, TheEndLeavesTheStartBarAlone) {
  Attach(TuneOfBars(3));
  bar_->SetStartBar(2);
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(bar_->StartBar(), 2);
}

TEST_F(PlayBarTest, TheBarMayGoWhileItsTunePlays) {
  Attach(TuneOfBars(3));
  const QPointer<PlayBar> bar(bar_.get());
  AtBeat(2, 1, [this] { bar_.release()->deleteLater(); });
  int ticks_after = 0;
  QObject::connect(tune_.get(), &Tune::Ticked, &context_, [&] { ticks_after += bar.isNull() ? 1 : 0; });
  platform_.events->on_serve = [](int) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  };
  bar->Play();
  EXPECT_TRUE(bar.isNull());
  EXPECT_GT(ticks_after, 0);
  EXPECT_FALSE(tune_->Playing());
}

TEST_F(PlayBarTest, TheTuneMayBeLetGoWhileItPlays) {
  Attach(TuneOfBars(3));
  const std::weak_ptr<Tune> watched = tune_;
  AtBeat(2, 1, [this] {
    bar_->SetTune(nullptr);
    tune_.reset();
  });
  bar_->Play();
  EXPECT_TRUE(watched.expired());
  EXPECT_EQ(TextOf(*bar_, "lblTitle"), QStringLiteral("No tune loaded."));
}

// The tune of Attach with a tempo of 30 in force from its last bar on.
class SlowingTune : public PlayBarTest {
 protected:
  SlowingTune() {
    Attach(TuneOfBars(4));
    Tone change;
    change.SetEventType(TEMPO_CHANGE);
    change.SetBar(4);
    change.SetBeat(1);
    change.SetInstrument(30);
    change.SetVolume(0);
    tune_->Add(std::make_shared<Tone>(change));
    tune_->SetSorted(false);
  }

  // Seconds that a click on Play takes.
  double LengthOfPlay() {
    const double start = SecondsSinceMidnight();
    Click(*bar_, "cmdPlay");
    return SecondsSinceMidnight() - start;
  }
};

TEST_F(SlowingTune, TakesTheSameTimeAtEveryPlayFromTheTop) {
  bool slow = false;
  AtBeat(4, 3, [&] { slow = TextOf(*bar_, "lblMyTempo") == QStringLiteral("30"); });
  const double first = LengthOfPlay();
  EXPECT_TRUE(slow);
  EXPECT_EQ(TextOf(*bar_, "lblMyTempo"), QStringLiteral("120"));
  EXPECT_EQ(TempoSlider().value(), 120);
  EXPECT_NEAR(LengthOfPlay(), first, 0.01);
  EXPECT_EQ(tune_->Tempo(), 120);
}

TEST_F(SlowingTune, AStopInItsSlowBarsGoesBackToTheTempoOfTheTop) {
  const double whole = LengthOfPlay();
  AtBeat(4, 2, [this] { Click(*bar_, "cmdStop"); });
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(TextOf(*bar_, "lblMyTempo"), QStringLiteral("120"));
  EXPECT_EQ(TempoSlider().value(), 120);
  EXPECT_EQ(tune_->Tempo(), 120);
  EXPECT_NEAR(LengthOfPlay(), whole, 0.01);
}

TEST_F(SlowingTune, APauseInItsSlowBarsShowsTheTempoThere) {
  AtBeat(4, 2, [this] { Click(*bar_, "cmdPause"); });
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(bar_->StartBar(), 4);
  EXPECT_EQ(TextOf(*bar_, "lblMyTempo"), QStringLiteral("30"));
  EXPECT_EQ(tune_->Tempo(), 120);
}

TEST_F(SlowingTune, FollowedSlidersLeaveTheTempoOfTheTuneAlone) {
  QList<int> tempos;
  QObject::connect(tune_.get(), &Tune::Ticked, &context_, [&] { tempos.append(tune_->Tempo()); });
  Click(*bar_, "cmdPlay");
  ASSERT_FALSE(tempos.isEmpty());
  EXPECT_EQ(tempos.count(120), tempos.size());
}

// Where a hand takes hold of the slider.
QPoint HandleOf(QSlider& slider) {
  QStyleOptionSlider option;
  option.initFrom(&slider);
  option.orientation = slider.orientation();
  option.minimum = slider.minimum();
  option.maximum = slider.maximum();
  option.sliderPosition = slider.sliderPosition();
  option.sliderValue = slider.value();
  return slider.style()
      ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &slider)
      .center();
}

TEST_F(PlayBarTest, AHeldPositionStaysUnderTheHandWhileTheTuneMovesOn) {
  Attach(TuneOfBars(4));
  QSignalSpy moved(bar_.get(), &PlayBar::SliderMoved);
  QPoint held;
  AtBeat(1, 3, [&] {
    EXPECT_EQ(PlaySlider().value(), 3);
    held = HandleOf(PlaySlider());
    QTest::mousePress(&PlaySlider(), Qt::LeftButton, {}, held);
    EXPECT_TRUE(PlaySlider().isSliderDown());
  });
  AtBeat(2, 2, [&] {
    EXPECT_EQ(PlaySlider().value(), 3);
    EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("2")) << "the read-outs go on";
    EXPECT_EQ(TextOf(*bar_, "lblMyBeat"), QStringLiteral("2"));
  });
  AtBeat(3, 1, [&] {
    EXPECT_EQ(PlaySlider().value(), 3);
    QTest::mouseRelease(&PlaySlider(), Qt::LeftButton, {}, held);
  });
  AtBeat(3, 2, [&] { EXPECT_EQ(PlaySlider().value(), 10) << "let go, it follows again"; });
  Click(*bar_, "cmdPlay");
  EXPECT_FALSE(held.isNull());
  EXPECT_EQ(PlaySlider().value(), 16);
  EXPECT_EQ(moved.count(), 0);
}

TEST_F(SlowingTune, AHeldTempoStaysUnderTheHandWhileTheTempoOfTheTuneChanges) {
  QPoint held;
  AtBeat(1, 2, [&] {
    held = HandleOf(TempoSlider());
    QTest::mousePress(&TempoSlider(), Qt::LeftButton, {}, held);
    EXPECT_TRUE(TempoSlider().isSliderDown());
  });
  AtBeat(4, 2, [&] {
    EXPECT_EQ(TempoSlider().value(), 120);
    EXPECT_EQ(TextOf(*bar_, "lblMyTempo"), QStringLiteral("30"));
    QTest::mouseRelease(&TempoSlider(), Qt::LeftButton, {}, held);
  });
  AtBeat(4, 3, [&] { EXPECT_EQ(TempoSlider().value(), 30); });
  Click(*bar_, "cmdPlay");
  EXPECT_FALSE(held.isNull());
  EXPECT_EQ(tune_->Tempo(), 120);
}

TEST_F(PlayBarTest, ATempoSetWhilePlayingHoldsForTheNextPlay) {
  Attach(TuneOfBars(2));
  AtBeat(2, 1, [this] { TempoSlider().setValue(200); });
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(TextOf(*bar_, "lblMyTempo"), QStringLiteral("200"));
  EXPECT_EQ(tune_->Tempo(), 200);
}

TEST_F(PlayBarTest, AnotherTuneThatPlaysIsStoppedFirst) {
  const auto other = TuneOfBars(3);
  Attach(TuneOfBars(1));
  int other_beats_after = 0;
  QSignalSpy other_finished(other.get(), &Tune::Finished);
  bool started = false;
  QObject::connect(other.get(), &Tune::Ticked, &context_, [&] {
    if (started) {
      ++other_beats_after;
      return;
    }
    started = true;
    bar_->Play();
  });
  other->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  other->Play();
  EXPECT_TRUE(started);
  EXPECT_EQ(other_finished.count(), 1);
  EXPECT_EQ(other_beats_after, 0);
}

TEST_F(PlayBarTest, NothingStartsOnceTheProgramCloses) {
  Attach(TuneOfBars(2));
  QObject::connect(bar_.get(), &PlayBar::PlayClicked, &context_, [] { Global().MainFormLoaded = true; });
  platform_.midi->sent.clear();
  Click(*bar_, "cmdPlay");
  EXPECT_TRUE(platform_.midi->sent.empty());
  EXPECT_FALSE(tune_->Playing());
}

TEST_F(PlayBarTest, AShorterTuneThanTheStartBarBeginsAtItsTop) {
  Attach(TuneOfBars(6));
  bar_->SetStartBar(5);
  Attach(TuneOfBars(2));
  EXPECT_EQ(bar_->StartBar(), 1);
  EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("1"));
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(tune_->PlayStartBar(), 1);
}

}  // namespace
}  // namespace zelmar
