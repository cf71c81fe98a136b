// The transport bar: its words, its buttons by state, and what each control does to the tune.
#include "midi/widgets/play_bar.h"

#include <QApplication>
#include <QPointer>
#include <QSignalSpy>

#include "midi/sound_card.h"
#include "model/globals.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class PlayBarTest : public ::testing::Test {
 protected:
  PlayBarTest() : bar_(std::make_unique<PlayBar>()) {
    bar_->resize(980, 130);
    bar_->show();
  }

  void Attach(std::shared_ptr<Tune> tune) {
    tune_ = std::move(tune);
    bar_->SetTune(tune_);
  }

  // Runs `act` once, when the bar's tune has reached the bar and beat.
  template <typename Act>
  void AtBeat(int bar, int beat, Act act) {
    QObject::connect(tune_.get(), &Tune::Ticked, &context_, [this, bar, beat, act, done = false]() mutable {
      if (done || tune_->BarNumber() != bar || tune_->BeatWithinBar() != beat) return;
      done = true;
      act();
    });
  }

  void ExpectButtons(bool play, bool pause, bool stop) {
    EXPECT_EQ(IsEnabled(*bar_, "cmdPlay"), play);
    EXPECT_EQ(IsEnabled(*bar_, "cmdPause"), pause);
    EXPECT_EQ(IsEnabled(*bar_, "cmdStop"), stop);
  }

  int LongMessages() const { return platform_.midi->CountOf(SentMessage::Kind::kLong); }
  QSlider& PlaySlider() { return Find<QSlider>(*bar_, "PlaySlider"); }
  QSlider& TempoSlider() { return Find<QSlider>(*bar_, "TempoSlider"); }

  ScriptedPlatform platform_;
  std::unique_ptr<PlayBar> bar_;
  std::shared_ptr<Tune> tune_;
  QObject context_;
};

struct Words {
  const char* name;
  const char* caption;
  const char* hint;
};

TEST_F(PlayBarTest, EachButtonHasItsCaptionAndHintWordForWord) {
  const Words table[] = {
      {"cmdPlay", "Play", "Start playing current tune ((F2)"},
      {"cmdPause", "Pause",
       "Pause playing, allowing restart with the play button at the beginning of the current bar."},
      {"cmdBack", "Back", "Go back one bar, then continue playing.(PageUp)"},
      {"cmdForward", "Forward", "Go forward one bar, then continue playing  (PageDn)"},
      {"cmdRewind", "Rewind", "Rewind tune to the begiining (Bar No. 1) ((F6)"},
      {"cmdEnd", "Go to End", "Wind tune forward to the end (Last bar) (End)"},
      {"cmdGoTo", "Go To", "Go to a specified bar number  (F5)"},
      {"cmdNewTune", "Load New", "Open a new tune. (CTRL O)"},
      {"chkMetronome", "Metronome on", ""},
  };
  for (const Words& row : table) {
    const auto& button = Find<QAbstractButton>(*bar_, row.name);
    EXPECT_EQ(button.text(), QLatin1String(row.caption));
    EXPECT_EQ(button.toolTip(), QLatin1String(row.hint));
  }
  EXPECT_EQ(
      Find<QWidget>(*bar_, "cmdStop").toolTip(),
      QStringLiteral("Stop the tune, and reset so next click on Play will start at the beginning. (F3)"));
  EXPECT_EQ(TempoSlider().toolTip(), QStringLiteral("slide right to increase tempo"));
  EXPECT_EQ(PlaySlider().toolTip(), QStringLiteral("Slide to move to any bar - beat within this music."));
}

TEST_F(PlayBarTest, TheTempoSliderRunsFrom20To500InStepsOf10And40) {
  EXPECT_EQ(TempoSlider().minimum(), 20);
  EXPECT_EQ(TempoSlider().maximum(), 500);
  EXPECT_EQ(TempoSlider().singleStep(), 10);
  EXPECT_EQ(TempoSlider().pageStep(), 40);
}

TEST_F(PlayBarTest, ANewBarSaysThatNothingIsLoadedAndAllIsDisabled) {
  EXPECT_EQ(TextOf(*bar_, "lblTitle"), QStringLiteral("No tune loaded."));
  EXPECT_EQ(TextOf(*bar_, "lblTimeSig"), QStringLiteral("None yet"));
  EXPECT_EQ(TextOf(*bar_, "lblFormName"), QStringLiteral("Unknown yet"));
  for (const char* name : {"cmdPlay", "cmdPause", "cmdStop", "cmdBack", "cmdForward", "cmdRewind", "cmdEnd",
                           "cmdGoTo", "cmdNewTune", "chkMetronome"})
    EXPECT_FALSE(IsEnabled(*bar_, name)) << name;
}

TEST_F(PlayBarTest, WithoutATuneNoCommandDoesAnything) {
  for (void (PlayBar::*command)() : {&PlayBar::Play, &PlayBar::Pause, &PlayBar::StopPlay, &PlayBar::Forward,
                                     &PlayBar::Back, &PlayBar::Rewind, &PlayBar::GoToEnd, &PlayBar::GoToBar})
    (*bar_.*command)();
  ExpectButtons(false, false, false);
  EXPECT_TRUE(platform_.midi->sent.empty());
  EXPECT_TRUE(platform_.input->shown.isEmpty());
}

TEST_F(PlayBarTest, AttachingATuneFillsTheReadOuts) {
  auto tune = TuneOfBars(3);
  tune->SetTempo(96);
  tune->SetHearTick(1);
  Attach(tune);
  EXPECT_EQ(TextOf(*bar_, "lblTitle"), QStringLiteral("Bach - A Title"));
  EXPECT_EQ(TextOf(*bar_, "lblTimeSig"), QStringLiteral("4/4"));
  EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("1"));
  EXPECT_EQ(TextOf(*bar_, "lblMyBeat"), QStringLiteral("1"));
  EXPECT_EQ(TextOf(*bar_, "lblTotalbars"), QStringLiteral("4"));  // the last note ends at the head of bar 4
  EXPECT_EQ(TextOf(*bar_, "lblMyTempo"), QStringLiteral("96"));
  EXPECT_EQ(TempoSlider().value(), 96);
  EXPECT_TRUE(Find<QAbstractButton>(*bar_, "chkMetronome").isChecked());
  EXPECT_EQ(PlaySlider().minimum(), 1);
  EXPECT_EQ(PlaySlider().maximum(), 4 * 4);
  EXPECT_EQ(PlaySlider().tickInterval(), 4);
  EXPECT_EQ(PlaySlider().pageStep(), 4);
  ExpectButtons(true, false, false);
  for (const char* name : {"cmdBack", "cmdForward", "cmdRewind", "cmdEnd", "cmdNewTune", "chkMetronome"})
    EXPECT_TRUE(IsEnabled(*bar_, name)) << name;
}

TEST_F(PlayBarTest, AttachingLeavesTheTuneAsItWas) {
  auto tune = TuneOfBars(3);
  tune->SetTempo(600);  // beyond the slider
  tune->SetChangedSinceLastSaved(false);
  Attach(tune);
  EXPECT_EQ(tune->Tempo(), 600);
  EXPECT_EQ(TextOf(*bar_, "lblMyTempo"), QStringLiteral("600"));
  EXPECT_FALSE(tune->ChangedSinceLastSaved());
}

TEST_F(PlayBarTest, AComposerNamedVariousIsNotShown) {
  Attach(TuneOfBars(1, QStringLiteral("Various")));
  EXPECT_EQ(TextOf(*bar_, "lblTitle"), QStringLiteral("A Title"));
}

TEST_F(PlayBarTest, ABeatLengthOf0Becomes4) {
  auto tune = TuneOfBars(1);
  tune->SetBeatLength(0);
  Attach(tune);
  EXPECT_EQ(tune->BeatLength(), 4);
}

TEST_F(PlayBarTest, ATuneWithoutBarsHasASliderOfTwo) {
  Attach(std::make_shared<Tune>());
  EXPECT_EQ(PlaySlider().maximum(), 2);
}

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
  QWidget now_listening;
  now_listening.setObjectName(QStringLiteral("frmNowListening"));
  now_listening.show();
  Attach(TuneOfBars(1));
  bar_->StopPlay();
  EXPECT_FALSE(now_listening.isVisible());
}

TEST_F(PlayBarTest, TheEndLeavesTheStartBarAlone) {
  Attach(TuneOfBars(3));
  bar_->SetStartBar(2);
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(bar_->StartBar(), 2);
}

TEST_F(PlayBarTest, ForwardGoesOnBySingleBarsUpToTheLast) {
  Attach(TuneOfBars(2));
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
  EXPECT_EQ(bar_->StartBar(), 5);
  EXPECT_EQ(PlaySlider().value(), 4 * 4 + 1);
  EXPECT_FALSE(tune_->Playing());
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
  platform_.input->answers = {QStringLiteral("0"), QStringLiteral("6"), QStringLiteral("1e300")};
  for (int i = 0; i < 3; ++i) Click(*bar_, "cmdGoTo");
  ASSERT_EQ(platform_.messages->shown.size(), 3);
  for (const ShownMessage& box : platform_.messages->shown) {
    EXPECT_EQ(box.text, QStringLiteral("Bar number must be between 1 and 5"));
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

TEST_F(PlayBarTest, TheTempoSliderSetsTheTempo) {
  Attach(TuneOfBars(2));
  TempoSlider().setValue(200);
  EXPECT_EQ(tune_->Tempo(), 200);
  EXPECT_EQ(TextOf(*bar_, "lblMyTempo"), QStringLiteral("200"));
}

TEST_F(PlayBarTest, TheMetronomeBoxTurnsTheClicksOnAndOff) {
  Attach(TuneOfBars(2));
  Find<QAbstractButton>(*bar_, "chkMetronome").click();
  EXPECT_NE(tune_->HearTick(), 0);
  EXPECT_EQ(tune_->MetroVolume(), 127);
  Find<QAbstractButton>(*bar_, "chkMetronome").click();
  EXPECT_EQ(tune_->HearTick(), 0);
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

TEST_F(PlayBarTest, TheLoadButtonAsksTheOwner) {
  Attach(TuneOfBars(1));
  QSignalSpy wanted(bar_.get(), &PlayBar::NewTuneWanted);
  Click(*bar_, "cmdNewTune");
  ASSERT_EQ(wanted.count(), 1);
  EXPECT_EQ(wanted[0][0].toString(), QStringLiteral("OpenDialog"));
  EXPECT_EQ(wanted[0][1].toString(), QStringLiteral("XX"));
}

TEST_F(PlayBarTest, PlayStatusSwitchesPlayAndPause) {
  Attach(TuneOfBars(1));
  bar_->SetPlayStatus(true);
  ExpectButtons(false, true, true);
  bar_->SetPlayStatus(false);
  EXPECT_TRUE(IsEnabled(*bar_, "cmdPlay"));
  EXPECT_FALSE(IsEnabled(*bar_, "cmdPause"));
}

TEST_F(PlayBarTest, DisableAllTurnsOffPlayPauseAndLoad) {
  Attach(TuneOfBars(1));
  bar_->DisableAll();
  ExpectButtons(false, false, false);
  EXPECT_FALSE(bar_->NewTuneButtonStatus());
  bar_->SetNewTuneEnabled();
  EXPECT_TRUE(bar_->NewTuneButtonStatus());
}

TEST_F(PlayBarTest, WakeUpShowsTheMode) {
  Global().MidiMode = QStringLiteral("GS");
  bar_->WakeUp();
  EXPECT_EQ(TextOf(*bar_, "lblMidiMode"), QStringLiteral("GS"));
}

TEST_F(PlayBarTest, KeysActAsTheButtons) {
  Attach(TuneOfBars(4));
  bar_->setFocus();
  QTest::keyClick(bar_.get(), Qt::Key_PageDown);
  QTest::keyClick(bar_.get(), Qt::Key_PageDown);
  EXPECT_EQ(bar_->StartBar(), 3);
  QTest::keyClick(bar_.get(), Qt::Key_PageUp);
  EXPECT_EQ(bar_->StartBar(), 2);
  QTest::keyClick(bar_.get(), Qt::Key_End);
  EXPECT_EQ(bar_->StartBar(), 5);
  QTest::keyClick(bar_.get(), Qt::Key_F6);
  EXPECT_EQ(bar_->StartBar(), 1);
  QSignalSpy finished(tune_.get(), &Tune::Finished);
  AtBeat(2, 1, [this] { QTest::keyClick(bar_.get(), Qt::Key_F4); });
  QTest::keyClick(bar_.get(), Qt::Key_F2);
  EXPECT_EQ(bar_->StartBar(), 2);
  QTest::keyClick(bar_.get(), Qt::Key_F3);
  EXPECT_EQ(bar_->StartBar(), 1);
  QTest::keyClick(bar_.get(), Qt::Key_F5);
  EXPECT_EQ(platform_.input->shown.size(), 1);
}

TEST_F(PlayBarTest, ReadOutsKeepTheirWidthWhenNumbersGrow) {
  Attach(TuneOfBars(2));
  QCoreApplication::processEvents();
  auto& label = Find<QLabel>(*bar_, "lblMyBar");
  const QRect before = label.geometry();
  const QRect beat_before = Find<QLabel>(*bar_, "lblMyBeat").geometry();
  label.setText(QStringLiteral("1234"));
  QCoreApplication::processEvents();
  EXPECT_EQ(label.geometry(), before);
  EXPECT_EQ(Find<QLabel>(*bar_, "lblMyBeat").geometry(), beat_before);
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

}  // namespace
}  // namespace zelmar
