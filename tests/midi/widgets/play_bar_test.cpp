// The transport bar: its words, its read-outs, its buttons by state and its keys.
#include <QVBoxLayout>

#include "midi/widgets/play_bar_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

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
  EXPECT_EQ(TextOf(*bar_, "lblTotalbars"), QStringLiteral("3"));
  EXPECT_EQ(TextOf(*bar_, "lblMyTempo"), QStringLiteral("96"));
  EXPECT_EQ(TempoSlider().value(), 96);
  EXPECT_TRUE(Find<QAbstractButton>(*bar_, "chkMetronome").isChecked());
  EXPECT_EQ(PlaySlider().minimum(), 1);
  EXPECT_EQ(PlaySlider().maximum(), 3 * 4);
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
  EXPECT_EQ(bar_->StartBar(), 4);
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

struct ReadOutRow {
  const char* name;
  const char* narrow;
  const char* wide;
};

TEST_F(PlayBarTest, NothingOfTheBarMovesWhenAReadOutChanges) {
  Attach(TuneOfBars(2));
  QCoreApplication::processEvents();
  const auto places = [this] {
    QStringList all;
    for (const QWidget* control : bar_->findChildren<QWidget*>()) {
      const QRect place = control->geometry();
      all.append(QStringLiteral("%1 %2,%3 %4x%5")
                     .arg(control->objectName())
                     .arg(place.x())
                     .arg(place.y())
                     .arg(place.width())
                     .arg(place.height()));
    }
    return all;
  };
  for (const ReadOutRow& row :
       {ReadOutRow{"lblMyBar", "1", "1234"},
        {"lblMyBeat", "1", "12"},
        {"lblTotalbars", "1", "1234"},
        {"lblMyTempo", "20", "500"},
        {"lblTimeSig", "1/1", "12/16"},
        {"lblMidiMode", "GM", "GM2"},
        {"lblTitle", "A", "A title that is much longer than the bar has room for, by far"}}) {
    auto& label = Find<QLabel>(*bar_, row.name);
    label.setText(QLatin1String(row.narrow));
    QCoreApplication::processEvents();
    const QStringList before = places();
    ASSERT_GT(before.size(), 20);
    label.setText(QLatin1String(row.wide));
    QCoreApplication::processEvents();
    EXPECT_EQ(places(), before) << row.name;
  }
}

TEST_F(PlayBarTest, TheBarFoldsInANarrowWindowAndIsAsHighAsItsRows) {
  QWidget window;
  auto* const column = new QVBoxLayout(&window);
  column->setContentsMargins(0, 0, 0, 0);
  column->addStretch(1);
  column->addWidget(bar_.get());
  window.show();
  const auto resize_to = [&](int width) {
    window.resize(width, 400);
    QCoreApplication::processEvents();
    for (const auto* control : bar_->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
      if (!control->isVisible()) continue;
      EXPECT_TRUE(bar_->rect().contains(control->geometry()))
          << width << ' ' << qPrintable(control->objectName());
      EXPECT_GE(control->width(), control->minimumSizeHint().width())
          << width << ' ' << qPrintable(control->objectName());
    }
    return bar_->height();
  };
  const int wide = resize_to(1000);
  EXPECT_EQ(testing_support::Find<QWidget>(*bar_, "cmdPlay").geometry().center().y(),
            testing_support::Find<QWidget>(*bar_, "TempoSlider").geometry().center().y());
  const int narrow = resize_to(784);
  EXPECT_GT(narrow, wide);
  EXPECT_GT(TempoSlider().y(), testing_support::Find<QWidget>(*bar_, "cmdPlay").geometry().bottom());
  EXPECT_GE(resize_to(500), narrow);
  EXPECT_EQ(resize_to(1000), wide);
  bar_->setParent(nullptr);
}

}  // namespace
}  // namespace zelmar
