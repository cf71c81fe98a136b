// Commands in the middle of a tune that plays: nothing goes on sounding, and nothing falls over.
#include "app/failing_output.h"
#include "app/main_window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class Nested : public MainWindowTest {
 protected:
  // Runs `act` once, when the tune that plays has reached its second bar.
  void InBar2(std::function<void()> act) {
    const auto tune = main_->MyTune();
    QObject::connect(tune.get(), &Tune::Ticked, &context_, [=, this] {
      if (acted_ > 0 || tune->BarNumber() != 2) return;
      ++acted_;
      act();
    });
  }

  // Notes that were begun and neither ended nor silenced by a reset of the device.
  int SoundingNotes() const {
    QMap<std::uint32_t, int> sounding;
    for (const auto& message : platform_.midi->sent) {
      if (message.kind == SentMessage::Kind::kReset) sounding.clear();
      if (message.kind != SentMessage::Kind::kShort) continue;
      const std::uint32_t note = (message.packed & 0x0FU) | (message.packed & 0x7F00U);
      const bool loud = ((message.packed >> 16U) & 0x7FU) > 0;
      if ((message.packed & 0xF0U) == 0x90U && loud)
        sounding[note] = 1;
      else if ((message.packed & 0xE0U) == 0x80U)
        sounding.remove(note);
    }
    return static_cast<int>(sounding.size());
  }

  // What the tune has sent since a moment, notes that begin only.
  int NotesBegunSince(std::size_t first) const {
    int begun = 0;
    for (std::size_t i = first; i < platform_.midi->sent.size(); ++i) {
      const auto& message = platform_.midi->sent[i];
      if (message.kind == SentMessage::Kind::kShort && (message.packed & 0xF0U) == 0x90U &&
          ((message.packed >> 16U) & 0x7FU) > 0)
        ++begun;
    }
    return begun;
  }

  QObject context_;
  int acted_ = 0;
};

TEST_F(Nested, AStopFromWithinATickLeavesNoSound) {
  Start();
  LoadTune();
  InBar2([this] { Click(Bar(), "cmdStop"); });
  Click(Bar(), "cmdPlay");
  EXPECT_EQ(acted_, 1);
  EXPECT_EQ(SoundingNotes(), 0);
}

TEST_F(Nested, AnEmergencyResetInTheMiddleOfAPlayEndsItInSilence) {
  Start();
  LoadTune();
  std::size_t after_reset = 0;
  InBar2([this, &after_reset] {
    QTest::keyClick(main_.get(), Qt::Key_F12);
    after_reset = platform_.midi->sent.size();
    EXPECT_EQ(SoundingNotes(), 0);
  });
  Click(Bar(), "cmdPlay");
  EXPECT_EQ(acted_, 1);
  EXPECT_EQ(SoundingNotes(), 0);
  EXPECT_EQ(NotesBegunSince(after_reset), 0);
  EXPECT_FALSE(main_->MyTune()->Playing());
  EXPECT_TRUE(IsEnabled(Bar(), "cmdPlay"));
}

TEST_F(Nested, AnEmergencyResetThatFailsHalfwayStillSendsTheMode) {
  Start();
  LoadTune();
  Global().MidiMode = QStringLiteral("GS");
  const auto output =
      std::make_shared<FailingOutput>(std::initializer_list<SentMessage::Kind>{SentMessage::Kind::kReset});
  Platform().midi = output;
  EXPECT_NO_THROW(Item("mnuPlayMIDIReset").trigger());
  EXPECT_EQ(output->failures, 2) << "the tune's stop and the reset";
  EXPECT_EQ(output->CountOf(SentMessage::Kind::kLong), 1);
}

TEST_F(Nested, AModeCommandInTheMiddleOfAPlayLetsItGoOn) {
  Start();
  LoadTune();
  std::size_t after_command = 0;
  InBar2([this, &after_command] {
    QTest::keyClick(main_.get(), Qt::Key_F9);
    after_command = platform_.midi->sent.size();
    EXPECT_FALSE(IsEnabled(Bar(), "cmdPlay"));
    EXPECT_TRUE(IsEnabled(Bar(), "cmdPause"));
  });
  Click(Bar(), "cmdPlay");
  EXPECT_EQ(Global().MidiMode, QStringLiteral("XG"));
  EXPECT_GT(NotesBegunSince(after_command), 0);
  EXPECT_EQ(SoundingNotes(), 0);
}

TEST_F(Nested, APlayFromWithinTheEndOfAPlayRunsWholeAndLeavesNoSound) {
  Start();
  LoadTune();
  const auto tune = main_->MyTune();
  int ends = 0;
  int begun_before = 0;
  QObject::connect(tune.get(), &Tune::Finished, &context_, [&] {
    if (++ends > 1) return;
    begun_before = NotesBegunSince(0);
    Bar().Play();
  });
  Click(Bar(), "cmdPlay");
  EXPECT_EQ(ends, 2);
  EXPECT_EQ(NotesBegunSince(0), 2 * begun_before);
  EXPECT_EQ(SoundingNotes(), 0);
  EXPECT_FALSE(tune->Playing());
  EXPECT_TRUE(IsEnabled(Bar(), "cmdPlay"));
}

TEST_F(Nested, AWindowThatClosesWhileItsTunePlaysLeavesATuneThatCanBeStopped) {
  Start();
  LoadTune();
  InBar2([this] {
    Front().Unload();
    LetClosedWindowsGo();
  });
  Click(Bar(), "cmdPlay");
  EXPECT_EQ(acted_, 1);
  EXPECT_EQ(FindLoadedForm(QStringLiteral("frmFront")), nullptr);
  EXPECT_EQ(SoundingNotes(), 0);
  Item("mnuWindows(4)").trigger();
  EXPECT_TRUE(IsEnabled(Bar(), "cmdPlay"));
}

TEST_F(Nested, TheProgramThatClosesWhileATunePlaysLeavesNoSound) {
  Start();
  LoadTune();
  InBar2([this] { Item("mnuFileExit").trigger(); });
  Click(Bar(), "cmdPlay");
  EXPECT_EQ(acted_, 1);
  EXPECT_FALSE(main_->isVisible());
  EXPECT_EQ(SoundingNotes(), 0);
  EXPECT_FALSE(TheSoundCard()->Opened());
}

TEST_F(Nested, AnotherWindowInFrontTakesTheKeysWithoutHarm) {
  Start();
  LoadTune();
  InBar2([this] {
    ChildWindow* const bare = OpenBareWindow();
    for (const Qt::Key key : {Qt::Key_F2, Qt::Key_F3, Qt::Key_F4, Qt::Key_F5, Qt::Key_F6})
      QTest::keyClick(main_.get(), key);
    EXPECT_TRUE(main_->MyTune()->Playing());
    bare->Unload();
  });
  Click(Bar(), "cmdPlay");
  EXPECT_EQ(acted_, 1);
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_EQ(SoundingNotes(), 0);
}

}  // namespace
}  // namespace zelmar
