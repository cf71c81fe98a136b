// The mouse on the piano keyboard: what a press and a release do, and controls that go meanwhile.
#include <QPainter>
#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <new>

#include "notation/piano_hand.h"

namespace zelmar {
namespace {

using namespace testing_support;

using PianoMouse = PianoHand;

TEST_F(PianoMouse, APressFindsTheKeyThatIsSeenThere) {
  for (int index = 0; index < piano_->KeyCount(); ++index) {
    Press(index);
    ASSERT_FALSE(pressed_.isEmpty()) << index;
    EXPECT_EQ(pressed_.last()->Number(), 36 + index);
    Release(index);
  }
  EXPECT_EQ(pressed_.size(), 53);
  EXPECT_EQ(released_.size(), 53);
}

TEST_F(PianoMouse, APressSoundsANoteAndItsReleaseEndsIt) {
  piano_->SetInstrument(19);
  Press(kMiddleC);
  ASSERT_EQ(pressed_.size(), 1);
  EXPECT_EQ(pressed_[0]->Number(), 60);
  EXPECT_EQ(pressed_[0]->Instrument(), 19);
  EXPECT_TRUE(piano_->IsKeyDown(kMiddleC));
  EXPECT_EQ(Sent(), Words({NoteOn(60, 127)}));
  Release(kMiddleC);
  EXPECT_FALSE(piano_->IsKeyDown(kMiddleC));
  ASSERT_EQ(released_.size(), 1);
  EXPECT_EQ(released_[0], pressed_[0]);
  EXPECT_EQ(released_[0]->Volume(), 0);
  EXPECT_EQ(Sent(), Words({NoteOn(60, 127), NoteOn(60, 0)}));
}

TEST_F(PianoMouse, AListenerGivesTheToneItsChannelAndPatchBeforeItSounds) {
  QObject::connect(piano_.get(), &CtlPiano::KeyPressed, &context_, [](const std::shared_ptr<Tone>& tone) {
    tone->SetChannel(5);
    tone->SetVolume(70);
  });
  Press(kMiddleC);
  Release(kMiddleC);
  EXPECT_EQ(Sent(), Words({NoteOn(60, 70, 5), NoteOn(60, 0, 5)}));
}

TEST_F(PianoMouse, AKeyThatIsDownIsLeftAlone) {
  piano_->DepressKey(ToneOf(60));
  Press(kMiddleC);
  Release(kMiddleC);
  EXPECT_TRUE(pressed_.isEmpty());
  EXPECT_TRUE(released_.isEmpty());
  EXPECT_TRUE(Sent().empty());
  EXPECT_TRUE(piano_->IsKeyDown(kMiddleC));  // what lit it puts it out
}

TEST_F(PianoMouse, AMouseThatIsDraggedOutStillEndsItsNote) {
  Press(kMiddleC);
  QTest::mouseMove(piano_.get(), QPoint(400, 900));
  QTest::mouseRelease(piano_.get(), Qt::LeftButton, {}, QPoint(400, 900));
  EXPECT_EQ(Sent(), Words({NoteOn(60, 127), NoteOn(60, 0)}));
  EXPECT_FALSE(piano_->IsKeyDown(kMiddleC));
}

TEST_F(PianoMouse, AReleaseOnAnotherKeyEndsTheNoteThatWasPressed) {
  Press(kMiddleC);
  Release(kMiddleC + 7);
  EXPECT_EQ(Sent(), Words({NoteOn(60, 127), NoteOn(60, 0)}));
}

TEST_F(PianoMouse, ADoubleClickSoundsTwice) {
  Press(kMiddleC);
  Release(kMiddleC);
  QTest::mouseDClick(piano_.get(), Qt::LeftButton, {}, Place(kMiddleC));
  Release(kMiddleC);
  EXPECT_EQ(Sent(), Words({NoteOn(60, 127), NoteOn(60, 0), NoteOn(60, 127), NoteOn(60, 0)}));
}

TEST_F(PianoMouse, HidingOrClosingTheControlEndsItsNotes) {
  Press(kMiddleC);
  piano_->close();
  EXPECT_EQ(Sent(), Words({NoteOn(60, 127), NoteOn(60, 0)}));
  EXPECT_EQ(released_.size(), 1);
  piano_->show();
  Press(kMiddleC + 2);
  platform_.midi->sent.clear();
  piano_.reset();
  EXPECT_EQ(Sent(), Words({NoteOn(62, 0)}));
}

TEST_F(PianoMouse, AListenerMayCloseTheControl) {
  QObject::connect(piano_.get(), &CtlPiano::KeyPressed, &context_, [this] { piano_.reset(); });
  Press(kMiddleC);
  EXPECT_EQ(piano_, nullptr);
  EXPECT_EQ(Sent(), Words({NoteOn(60, 0)}));
}

TEST_F(PianoMouse, AChangeOfTheKeyboardEndsItsNotes) {
  Press(kMiddleC);
  piano_->SetBottomOctave(3);
  EXPECT_EQ(Sent(), Words({NoteOn(60, 127), NoteOn(60, 0)}));
  Press(0);
  piano_->SetWhiteNoteCount(14);
  EXPECT_EQ(Sent().back(), NoteOn(48, 0));
  EXPECT_FALSE(piano_->IsKeyDown(0));
}

// Keeps the place of a control that is gone, so that a touch of it is seen.
class PianoThatGoes {
 public:
  PianoThatGoes() {
    piano_ = new (place_.data()) CtlPiano();
    piano_->resize(806, 140);
    QObject::connect(piano_, &CtlPiano::KeyReleased, &context_, [this] {
      piano_->~CtlPiano();
      place_.fill(kMark);
    });
    QTest::keyPress(piano_, Qt::Key_Z);
  }

  CtlPiano& Piano() { return *piano_; }
  bool IsGoneAndUntouched() const {
    return std::all_of(place_.begin(), place_.end(), [](std::byte byte) { return byte == kMark; });
  }

 private:
  static constexpr std::byte kMark{0xA5};
  alignas(CtlPiano) std::array<std::byte, sizeof(CtlPiano)> place_;
  CtlPiano* piano_;
  QObject context_;
};

TEST_F(PianoMouse, AListenerMayCloseTheControlWhileTheKeyboardChanges) {
  const std::function<void(CtlPiano&)> changes[] = {
      [](CtlPiano& piano) { piano.SetBottomOctave(3); },
      [](CtlPiano& piano) { piano.SetWhiteNoteCount(14); },
      [](CtlPiano& piano) { piano.CreateKeys(); },
  };
  for (const auto& change : changes) {
    PianoThatGoes keyboard;
    change(keyboard.Piano());
    EXPECT_TRUE(keyboard.IsGoneAndUntouched());
  }
}

TEST_F(PianoMouse, KeysAboveTheLastNoteOfMidiAreSilent) {
  piano_->SetBottomOctave(7);
  Press(31);  // 127
  Release(31);
  EXPECT_EQ(Sent(), Words({NoteOn(127, 127), NoteOn(127, 0)}));
  Press(32);
  Release(32);
  EXPECT_EQ(Sent().size(), 2U);
  EXPECT_EQ(pressed_.last()->Number(), 128);
  EXPECT_EQ(released_.size(), 2);
}

TEST_F(PianoMouse, PressesAtTheVeryEdgesFindTheOuterKeysAndNothingBeyond) {
  const QPoint places[] = {{0, 0}, {0, 139}, {805, 0}, {805, 139}};
  const int numbers[] = {36, 36, 88, 88};
  for (int i = 0; i < 4; ++i) {
    Send(QEvent::MouseButtonPress, places[i]);
    Send(QEvent::MouseButtonRelease, places[i]);
    ASSERT_EQ(pressed_.size(), i + 1);
    EXPECT_EQ(pressed_.last()->Number(), numbers[i]);
  }
  for (const QPoint place : {QPoint(-1, 10), QPoint(806, 10), QPoint(10, -1), QPoint(10, 140)})
    Send(QEvent::MouseButtonPress, place);
  EXPECT_EQ(pressed_.size(), 4);
}

TEST_F(PianoMouse, AControlOfNoSizePaintsAndPressesNothing) {
  piano_->setMinimumSize(0, 0);
  for (const QSize size : {QSize(0, 0), QSize(1, 1), QSize(300, 0), QSize(0, 90), QSize(3, 90)}) {
    piano_->resize(size);
    QImage picture(10, 10, QImage::Format_ARGB32);
    QPainter painter(&picture);
    piano_->render(&painter);
    Send(QEvent::MouseButtonPress, QPoint(0, 0));
    Send(QEvent::MouseButtonRelease, QPoint(0, 0));
  }
  EXPECT_EQ(pressed_.size(), released_.size());
}

}  // namespace
}  // namespace zelmar
