// The letters of the computer's own keyboard that play the piano.
#include "notation/piano_hand.h"

namespace zelmar {
namespace {

using namespace testing_support;

using PianoLetters = PianoHand;

TEST_F(PianoLetters, TwoRowsOfLettersPlayTwoOctaves) {
  const char letters[] = "ZSXDCVGBHNJMQ2W3ER5T6Y7U";
  EXPECT_EQ(piano_->OctaveInUse(), 2);
  for (int step = 0; step < 24; ++step) {
    const auto key = static_cast<Qt::Key>(letters[step]);
    QTest::keyPress(piano_.get(), key);
    ASSERT_EQ(pressed_.size(), step + 1) << letters[step];
    EXPECT_EQ(pressed_.last()->Number(), 60 + step) << letters[step];
    QTest::keyRelease(piano_.get(), key);
    EXPECT_EQ(released_.size(), step + 1);
  }
  EXPECT_EQ(Sent().size(), 48U);
}

TEST_F(PianoLetters, LettersMakeChordsAndEachEndsItsOwnNote) {
  for (const auto key : {Qt::Key_Z, Qt::Key_C, Qt::Key_B}) QTest::keyPress(piano_.get(), key);
  EXPECT_EQ(Sent(), Words({NoteOn(60, 127), NoteOn(64, 127), NoteOn(67, 127)}));
  QTest::keyRelease(piano_.get(), Qt::Key_C);
  EXPECT_EQ(Sent().back(), NoteOn(64, 0));
  EXPECT_TRUE(piano_->IsKeyDown(kMiddleC));
  EXPECT_FALSE(piano_->IsKeyDown(kMiddleC + 4));
}

TEST_F(PianoLetters, AHeldLetterDoesNotRepeatItsNote) {
  QTest::keyPress(piano_.get(), Qt::Key_Z);
  for (int i = 0; i < 3; ++i) {
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_Z, Qt::NoModifier, QStringLiteral("z"), true);
    QCoreApplication::sendEvent(piano_.get(), &up);
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Z, Qt::NoModifier, QStringLiteral("z"), true);
    QCoreApplication::sendEvent(piano_.get(), &down);
  }
  EXPECT_EQ(pressed_.size(), 1);
  EXPECT_EQ(released_.size(), 0);
}

TEST_F(PianoLetters, BracketsMoveTheOctaveWithinTheKeyboard) {
  QTest::keyPress(piano_.get(), Qt::Key_Z);
  QTest::keyClick(piano_.get(), Qt::Key_BracketRight);
  EXPECT_EQ(piano_->OctaveInUse(), 3);
  QTest::keyRelease(piano_.get(), Qt::Key_Z);
  EXPECT_EQ(released_.value(0)->Number(), 60);  // the note that was pressed
  QTest::keyClick(piano_.get(), Qt::Key_Z);
  EXPECT_EQ(pressed_.last()->Number(), 72);
  for (int i = 0; i < 9; ++i) QTest::keyClick(piano_.get(), Qt::Key_BracketRight);
  EXPECT_EQ(piano_->OctaveInUse(), 4);
  const auto before = pressed_.size();
  QTest::keyClick(piano_.get(), Qt::Key_U);  // beyond the last key
  EXPECT_EQ(pressed_.size(), before);
  for (int i = 0; i < 9; ++i) QTest::keyClick(piano_.get(), Qt::Key_BracketLeft);
  EXPECT_EQ(piano_->OctaveInUse(), 0);
  QTest::keyClick(piano_.get(), Qt::Key_Z);
  EXPECT_EQ(pressed_.last()->Number(), 36);
}

TEST_F(PianoLetters, LosingTheFocusEndsWhatSounds) {
  TakeFocus();
  ASSERT_TRUE(piano_->hasFocus());
  QTest::keyPress(piano_.get(), Qt::Key_Z);
  piano_->clearFocus();
  EXPECT_EQ(Sent(), Words({NoteOn(60, 127), NoteOn(60, 0)}));
}

TEST_F(PianoLetters, FocusShowsARingAndTheLettersOnTheKeys) {
  TakeFocus();
  piano_->clearFocus();
  const QImage without = piano_->grab().toImage();
  TakeFocus();
  ASSERT_TRUE(piano_->hasFocus());
  const QImage with = piano_->grab().toImage();
  EXPECT_EQ(with.pixelColor(1, 70), piano_->palette().color(QPalette::Highlight));
  const QRect foot = piano_->KeyRect(kMiddleC).adjusted(4, 100, -4, -8).toRect();
  EXPECT_NE(with.copy(foot), without.copy(foot));
}

TEST_F(PianoLetters, OtherKeysGoOnToTheWindow) {
  QWidget window;
  auto* piano = new CtlPiano(&window);
  for (const auto key : {Qt::Key_F2, Qt::Key_PageUp, Qt::Key_A, Qt::Key_Escape}) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    event.accept();
    static_cast<QObject*>(piano)->event(&event);
    EXPECT_FALSE(event.isAccepted()) << key;
  }
  QKeyEvent control(QEvent::KeyPress, Qt::Key_Z, Qt::ControlModifier);
  static_cast<QObject*>(piano)->event(&control);
  EXPECT_FALSE(control.isAccepted());
  EXPECT_TRUE(Sent().empty());
}

}  // namespace
}  // namespace zelmar
