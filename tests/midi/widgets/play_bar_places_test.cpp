// The transport bar jumps: by a bar, to either end, to a chosen bar, by its slider.
#include "midi/widgets/play_bar_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

TEST_F(PlayBarTest, ForwardGoesOnBySingleBarsUpToTheLast) {
  Attach(TuneOfBars(3));
  QSignalSpy jumped(bar_.get(), &PlayBar::OtherButtonClicked);
  Click(*bar_, "cmdForward");
  EXPECT_EQ(bar_->StartBar(), 2);
  EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("2"));
  EXPECT_EQ(PlaySlider().value(), 5);
  Click(*bar_, "cmdForward");
  EXPECT_EQ(bar_->StartBar(), 3);
  ASSERT_EQ(jumped.count(), 2);
  EXPECT_EQ(jumped.last().first().value<std::int16_t>(), 3);
  Click(*bar_, "cmdForward");
  EXPECT_EQ(bar_->StartBar(), 3);
  EXPECT_EQ(jumped.count(), 2);
}

TEST_F(PlayBarTest, BackStopsAtBar1) {
  Attach(TuneOfBars(3));
  bar_->SetStartBar(2);
  QSignalSpy jumped(bar_.get(), &PlayBar::OtherButtonClicked);
  Click(*bar_, "cmdBack");
  EXPECT_EQ(bar_->StartBar(), 1);
  EXPECT_EQ(PlaySlider().value(), 1);
  Click(*bar_, "cmdBack");
  EXPECT_EQ(bar_->StartBar(), 1);
  EXPECT_EQ(jumped.count(), 1);
}

TEST_F(PlayBarTest, ForwardWhilePlayingGoesOnPlayingFromTheNextBar) {
  Attach(TuneOfBars(5));
  QList<int> starts;
  AtBeat(1, 2, [this] { Click(*bar_, "cmdForward"); });
  QObject::connect(tune_.get(), &Tune::Ticked, &context_, [this, &starts] {
    if (starts.isEmpty() || starts.last() != tune_->PlayStartBar()) starts.append(tune_->PlayStartBar());
    if (tune_->PlayStartBar() == 2 && tune_->Playing()) ExpectButtons(false, true, true);
  });
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(starts, (QList<int>{1, 2}));
  ExpectButtons(true, false, false);
}

TEST_F(PlayBarTest, BackWhilePlayingLeavesTheBarThatSounds) {
  Attach(TuneOfBars(5));
  AtBeat(4, 2, [this] { Click(*bar_, "cmdBack"); });
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(tune_->PlayStartBar(), 3);
}

TEST_F(PlayBarTest, RewindStopsAtBar1AndDoesNotPlay) {
  Attach(TuneOfBars(4));
  QSignalSpy jumped(bar_.get(), &PlayBar::OtherButtonClicked);
  AtBeat(3, 1, [this] { Click(*bar_, "cmdRewind"); });
  Click(*bar_, "cmdPlay");
  EXPECT_FALSE(tune_->Playing());
  EXPECT_EQ(bar_->StartBar(), 1);
  EXPECT_EQ(PlaySlider().value(), 1);
  EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("1"));
  EXPECT_EQ(jumped.count(), 1);
}

TEST_F(PlayBarTest, GoToEndStandsAtTheFirstBeatOfTheLastBar) {
  Attach(TuneOfBars(4));
  QSignalSpy jumped(bar_.get(), &PlayBar::OtherButtonClicked);
  Click(*bar_, "cmdEnd");
  EXPECT_EQ(bar_->StartBar(), 4);
  EXPECT_EQ(PlaySlider().value(), 3 * 4 + 1);
  EXPECT_FALSE(tune_->Playing());
  EXPECT_EQ(jumped.count(), 1);
  // The last bar has notes, and not only the end of one.
  int notes = 0;
  QObject::connect(tune_.get(), &Tune::NoteStarted, &context_, [&notes] { ++notes; });
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(notes, 4);
}

TEST_F(PlayBarTest, ATuneAttachedAnewStaysOnItsLastBar) {
  Attach(TuneOfBars(6));
  Click(*bar_, "cmdEnd");
  Attach(tune_);
  EXPECT_EQ(bar_->StartBar(), 6);
  EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("6"));
  EXPECT_EQ(TextOf(*bar_, "lblMyBeat"), QStringLiteral("1"));
  EXPECT_EQ(PlaySlider().value(), 21);
  Attach(TuneOfBars(6));
  EXPECT_EQ(bar_->StartBar(), 6) << "another tune has that bar too";
  Attach(TuneOfBars(5));
  EXPECT_EQ(bar_->StartBar(), 1);
}

TEST_F(PlayBarTest, ATuneThatComesHasItsSliderWhereTheBarSays) {
  Attach(TuneOfBars(6));
  Click(*bar_, "cmdEnd");
  bar_->SetStartBar(1);
  QSignalSpy moved(bar_.get(), &PlayBar::SliderMoved);
  Attach(TuneOfBars(7));
  EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("1"));
  EXPECT_EQ(PlaySlider().value(), 1);
  bar_->SetStartBar(3);
  Attach(TuneOfBars(7));
  EXPECT_EQ(PlaySlider().value(), 9);
  EXPECT_EQ(moved.count(), 0);
}

TEST_F(PlayBarTest, FromTheLastBarNothingLeadsForwardAndATuneIsPlayedToItsEnd) {
  Attach(TuneOfBars(6));
  Click(*bar_, "cmdEnd");
  QSignalSpy jumped(bar_.get(), &PlayBar::OtherButtonClicked);
  int beats = 0;
  QObject::connect(tune_.get(), &Tune::Ticked, &context_, [&] {
    ++beats;
    EXPECT_EQ(tune_->PlayStartBar(), 6);
    EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("6"));
    Click(*bar_, "cmdForward");
    EXPECT_TRUE(tune_->Playing());
  });
  Click(*bar_, "cmdPlay");
  EXPECT_GE(beats, 4);
  EXPECT_EQ(PlaySlider().value(), 24);
  Click(*bar_, "cmdForward");
  EXPECT_EQ(bar_->StartBar(), 6);
  EXPECT_EQ(jumped.count(), 0);
  Click(*bar_, "cmdBack");
  EXPECT_EQ(bar_->StartBar(), 5);
  EXPECT_EQ(PlaySlider().value(), 17);
  EXPECT_EQ(jumped.count(), 1);
}

TEST_F(PlayBarTest, GoToAsksAndJumps) {
  Attach(TuneOfBars(4));
  tune_->SetBarNumber(2);
  platform_.input->answers = {QStringLiteral("3")};
  QSignalSpy jumped(bar_.get(), &PlayBar::OtherButtonClicked);
  Click(*bar_, "cmdGoTo");
  ASSERT_EQ(platform_.input->shown.size(), 1);
  EXPECT_EQ(platform_.input->shown[0].prompt, QStringLiteral("Jump to a new bar"));
  EXPECT_EQ(platform_.input->shown[0].title, QStringLiteral("Which Bar?"));
  EXPECT_EQ(platform_.input->shown[0].default_text, QStringLiteral("2"));
  EXPECT_EQ(bar_->StartBar(), 3);
  EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("3"));
  EXPECT_EQ(TextOf(*bar_, "lblMyBeat"), QStringLiteral("1"));
  EXPECT_EQ(PlaySlider().value(), 8);
  EXPECT_EQ(jumped.count(), 1);
}

TEST_F(PlayBarTest, GoToStopsATuneThatPlays) {
  Attach(TuneOfBars(4));
  AtBeat(2, 1, [this] { Click(*bar_, "cmdGoTo"); });
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(tune_->BarNumber(), 2);
  EXPECT_EQ(platform_.input->shown.size(), 1);
}

TEST_F(PlayBarTest, GoToWithoutAnAnswerChangesNothing) {
  Attach(TuneOfBars(4));
  platform_.input->answers = {QString()};
  Click(*bar_, "cmdGoTo");
  EXPECT_EQ(bar_->StartBar(), 1);
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(PlayBarTest, GoToRefusesWhatIsNoNumber) {
  Attach(TuneOfBars(4));
  platform_.input->answers = {QStringLiteral("three")};
  Click(*bar_, "cmdGoTo");
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  const ShownMessage& box = platform_.messages->shown[0];
  EXPECT_EQ(box.text, QStringLiteral("Please use only numerical digits for bar numbers"));
  EXPECT_EQ(box.title, QStringLiteral("New bar must be a numeric"));
  EXPECT_EQ(box.icon, MessageIcon::kExclamation);
  EXPECT_EQ(bar_->StartBar(), 1);
}

TEST_F(PlayBarTest, GoToRefusesBarsOutsideTheTune) {
  Attach(TuneOfBars(4));
  platform_.input->answers = {QStringLiteral("0"), QStringLiteral("5"), QStringLiteral("1e300")};
  for (int i = 0; i < 3; ++i) Click(*bar_, "cmdGoTo");
  ASSERT_EQ(platform_.messages->shown.size(), 3);
  for (const ShownMessage& box : platform_.messages->shown) {
    EXPECT_EQ(box.text, QStringLiteral("Bar number must be between 1 and 4"));
    EXPECT_EQ(box.icon, MessageIcon::kExclamation);
  }
  EXPECT_EQ(bar_->StartBar(), 1);
}

TEST_F(PlayBarTest, TheSliderGivesBarAndBeat) {
  Attach(TuneOfBars(4));
  QSignalSpy moved(bar_.get(), &PlayBar::SliderMoved);
  PlaySlider().setValue(7);
  EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("2"));
  EXPECT_EQ(TextOf(*bar_, "lblMyBeat"), QStringLiteral("3"));
  EXPECT_EQ(bar_->StartBar(), 2);
  ASSERT_EQ(moved.count(), 1);
  EXPECT_EQ(moved[0][0].value<std::int16_t>(), 2);
  EXPECT_EQ(moved[0][1].value<std::int16_t>(), 3);
  PlaySlider().setValue(8);
  EXPECT_EQ(TextOf(*bar_, "lblMyBeat"), QStringLiteral("4"));
}

TEST_F(PlayBarTest, AFollowedTuneDoesNotCountAsAMovedSlider) {
  Attach(TuneOfBars(2));
  QSignalSpy moved(bar_.get(), &PlayBar::SliderMoved);
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(moved.count(), 0);
}

TEST_F(PlayBarTest, TheTempoInForceIsThatOfTheLastChangeAtOrBeforeThePlace) {
  Attach(TuneOfBars(5));
  tune_->TempoChanges()->Add(2, 3, 0, 80, 0);
  tune_->TempoChanges()->Add(4, 1, 0, 60, 0);
  PlaySlider().setValue(6);  // bar 2 beat 2
  EXPECT_EQ(TextOf(*bar_, "lblMyTempo"), QStringLiteral("120"));
  PlaySlider().setValue(7);
  EXPECT_EQ(TextOf(*bar_, "lblMyTempo"), QStringLiteral("80"));
  PlaySlider().setValue(12);
  EXPECT_EQ(TextOf(*bar_, "lblMyTempo"), QStringLiteral("80"));
  Click(*bar_, "cmdForward");
  EXPECT_EQ(TextOf(*bar_, "lblMyTempo"), QStringLiteral("60"));
}

}  // namespace
}  // namespace zelmar
