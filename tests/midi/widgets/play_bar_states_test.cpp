// The table of the transport bar's button states, on every way into each of them; keys as well as buttons.
#include "midi/widgets/play_bar_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class PlayBarStates : public PlayBarTest {
 protected:
  void ExpectNoTune() { ExpectButtons(false, false, false); }
  void ExpectReady() { ExpectButtons(true, false, false); }
  void ExpectPlaying() { ExpectButtons(false, true, true); }
  void ExpectPaused() { ExpectButtons(true, false, true); }

  void PauseInBar2() {
    AtBeat(2, 1, [this] { Click(*bar_, "cmdPause"); });
    Click(*bar_, "cmdPlay");
  }
};

TEST_F(PlayBarStates, WithoutATuneAllThreeAreOff) {
  ExpectNoTune();
  Attach(TuneOfBars(2));
  Attach(nullptr);
  ExpectNoTune();
}

TEST_F(PlayBarStates, AnAttachedTuneIsReadyAndReadyAgainAtItsEnd) {
  Attach(TuneOfBars(2));
  ExpectReady();
  int played = 0;
  AtBeat(2, 3, [this, &played] {
    ExpectPlaying();
    ++played;
  });
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(played, 1);
  ExpectReady();
}

TEST_F(PlayBarStates, APausedTunePlaysOnOrStops) {
  Attach(TuneOfBars(4));
  PauseInBar2();
  ExpectPaused();
  Click(*bar_, "cmdStop");
  ExpectReady();
  PauseInBar2();
  ExpectPaused();
  int played = 0;
  AtBeat(3, 1, [this, &played] {
    ExpectPlaying();
    ++played;
  });
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(played, 1);
  ExpectReady();
}

TEST_F(PlayBarStates, AStopFromWithinATickIsReadyOnceTheTickReturns) {
  Attach(TuneOfBars(4));
  bool stopped = false;
  AtBeat(2, 2, [this, &stopped] {
    Click(*bar_, "cmdStop");
    stopped = true;
    ExpectReady();
  });
  Click(*bar_, "cmdPlay");
  EXPECT_TRUE(stopped);
  ExpectReady();
  EXPECT_FALSE(tune_->Playing());
}

TEST_F(PlayBarStates, JumpsThatGoOnPlayingStayPlayingAndTheOthersAreReady) {
  Attach(TuneOfBars(6));
  int jumps = 0;
  AtBeat(2, 1, [this, &jumps] {
    // The jump plays on within itself, so it is looked at from inside.
    AtBeat(3, 2, [this, &jumps] {
      ExpectPlaying();
      ++jumps;
      Click(*bar_, "cmdRewind");
      ExpectReady();
    });
    Click(*bar_, "cmdForward");
  });
  Click(*bar_, "cmdPlay");
  EXPECT_EQ(jumps, 1);
  ExpectReady();
  EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("1"));
}

struct KeyRow {
  Qt::Key key;
  const char* bar;  // shown afterwards, when pressed in bar 3
};

TEST_F(PlayBarStates, EachKeyOfThePlacesWorksAlsoInTheMiddleOfAPlay) {
  for (const KeyRow& row :
       {KeyRow{Qt::Key_Home, "1"}, {Qt::Key_F6, "1"}, {Qt::Key_End, "5"}, {Qt::Key_F3, "1"}}) {
    Attach(TuneOfBars(5));
    ASSERT_EQ(tune_->BarCount(), 5);
    AtBeat(3, 2, [this, &row] { QTest::keyClick(bar_.get(), row.key); });
    QTest::keyClick(bar_.get(), Qt::Key_F2);
    EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QLatin1String(row.bar)) << row.key;
    EXPECT_FALSE(tune_->Playing());
    ExpectReady();
    bar_->StopPlay();
  }
}

TEST_F(PlayBarStates, PageUpAndPageDownMoveAPlayThatGoesOn) {
  Attach(TuneOfBars(6));
  QStringList bars;
  QObject::connect(tune_.get(), &Tune::Ticked, &context_, [this, &bars] {
    if (tune_->BeatWithinBar() == 1) bars.append(QString::number(tune_->BarNumber()));
  });
  AtBeat(2, 2, [this] { QTest::keyClick(bar_.get(), Qt::Key_PageDown); });
  AtBeat(5, 2, [this] { QTest::keyClick(bar_.get(), Qt::Key_PageUp); });
  QTest::keyClick(bar_.get(), Qt::Key_F2);
  EXPECT_EQ(bars.mid(0, 8).join(QLatin1Char(' ')), QStringLiteral("1 2 3 4 5 4 5 6"));
}

// Page Up goes back and Page Down forward, whichever control of the bar has the keyboard.
TEST_F(PlayBarStates, ASliderWithTheKeyboardLeavesTheKeysOfThePlacesToTheBar) {
  Attach(TuneOfBars(5));
  for (QSlider* const slider : {&PlaySlider(), &TempoSlider()}) {
    bar_->Rewind();
    const int tempo = TempoSlider().value();
    const QString name = slider->objectName();
    slider->setFocus();
    for (const KeyRow& row : {KeyRow{Qt::Key_PageDown, "2"},
                              {Qt::Key_PageDown, "3"},
                              {Qt::Key_PageUp, "2"},
                              {Qt::Key_End, "5"},
                              {Qt::Key_PageUp, "4"},
                              {Qt::Key_Home, "1"}}) {
      QTest::keyClick(slider, row.key);
      EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QLatin1String(row.bar)) << qPrintable(name) << ' ' << row.key;
      EXPECT_EQ(TextOf(*bar_, "lblMyBeat"), QStringLiteral("1"));
    }
    EXPECT_EQ(TempoSlider().value(), tempo) << qPrintable(name);
    QTest::keyClick(slider, Qt::Key_PageDown, Qt::KeypadModifier);
    EXPECT_EQ(TextOf(*bar_, "lblMyBar"), QStringLiteral("2")) << qPrintable(name);
  }
}

TEST_F(PlayBarStates, ASliderWithTheKeyboardKeepsTheArrowKeys) {
  Attach(TuneOfBars(5));
  QTest::keyClick(&PlaySlider(), Qt::Key_Right);
  EXPECT_EQ(PlaySlider().value(), 2);
  EXPECT_EQ(TextOf(*bar_, "lblMyBeat"), QStringLiteral("2"));
  const int tempo = TempoSlider().value();
  QTest::keyClick(&TempoSlider(), Qt::Key_Left);
  EXPECT_EQ(TempoSlider().value(), tempo - 10);
}

}  // namespace
}  // namespace zelmar
