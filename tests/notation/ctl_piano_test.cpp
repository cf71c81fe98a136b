// The piano keyboard: its keys, what a press and a release do, and the letters that play it.
#include "notation/ctl_piano.h"

#include <QPainter>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <new>

#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr int kMiddleC = 24;  // the key, with the lowest one as it is at first

class CtlPianoTest : public ::testing::Test {
 protected:
  CtlPianoTest() : piano_(std::make_unique<CtlPiano>()) {
    piano_->resize(806, 140);
    piano_->show();
    QObject::connect(piano_.get(), &CtlPiano::KeyPressed, &context_,
                     [this](const std::shared_ptr<Tone>& tone) { pressed_.append(tone); });
    QObject::connect(piano_.get(), &CtlPiano::KeyReleased, &context_,
                     [this](const std::shared_ptr<Tone>& tone) { released_.append(tone); });
  }

  // A place on the key that no black key covers.
  QPoint Place(int index) const {
    const QRectF key = piano_->KeyRect(index);
    return QPointF(key.center().x(), key.bottom() - 4).toPoint();
  }
  void Press(int index) { QTest::mousePress(piano_.get(), Qt::LeftButton, {}, Place(index)); }
  void Release(int index) { QTest::mouseRelease(piano_.get(), Qt::LeftButton, {}, Place(index)); }

  static std::uint32_t NoteOn(int number, int volume, int channel = 1) {
    return static_cast<std::uint32_t>(143 + channel + number * 256 + volume * 65536);
  }
  std::vector<std::uint32_t> Sent() const { return platform_.midi->ShortMessages(); }
  void TakeFocus() {
    piano_->activateWindow();
    QCoreApplication::processEvents();
    piano_->setFocus();
  }
  // An event at that very place; Qt's own helper takes the corner for the middle.
  void Send(QEvent::Type type, QPoint place) {
    QMouseEvent event(type, place, place, Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(piano_.get(), &event);
  }
  using Words = std::vector<std::uint32_t>;

  static Tone ToneOf(int number) {
    Tone tone;
    tone.SetNumber(static_cast<std::int16_t>(number));
    return tone;
  }

  ScriptedPlatform platform_;
  std::unique_ptr<CtlPiano> piano_;
  QList<std::shared_ptr<Tone>> pressed_, released_;
  QObject context_;
};

TEST_F(CtlPianoTest, StandsAsItIsStored) {
  EXPECT_EQ(piano_->BottomOctave(), 2);
  EXPECT_EQ(piano_->WhiteNoteCount(), 31);
  EXPECT_FALSE(piano_->ShowKeyNames());
  EXPECT_EQ(piano_->KeyCount(), 53);
  EXPECT_EQ(piano_->BottomNote(), 36);
}

TEST_F(CtlPianoTest, EveryNumberOfWhiteKeysGivesAWholeKeyboard) {
  for (int asked = 0; asked <= 40; ++asked) {
    piano_->SetWhiteNoteCount(static_cast<std::uint8_t>(asked));
    const int white = asked < 13 ? 8 : std::min(asked, 31);
    EXPECT_EQ(piano_->WhiteNoteCount(), white);
    // Counted off the pattern of the keys, not by the formula: all keys below the next white one.
    int keys = 0;
    for (int seen = 0; seen < white || IsBlackPianoKey(keys); ++keys) seen += IsBlackPianoKey(keys) ? 0 : 1;
    // A black key at the upper end would hang in the air.
    while (IsBlackPianoKey(keys - 1)) --keys;
    EXPECT_EQ(piano_->KeyCount(), keys) << asked;
    for (int key = 0; key < kMostPianoKeys; ++key)
      EXPECT_EQ(piano_->IsKeyVisible(key), key < keys) << asked << " " << key;
    EXPECT_FALSE(IsBlackPianoKey(keys - 1));
    EXPECT_NEAR(piano_->KeyRect(keys - 1).right(), piano_->width(), 0.01) << asked;
    piano_->grab();
  }
}

TEST_F(CtlPianoTest, EveryBottomOctaveIsBroughtIntoItsRange) {
  for (int asked = 0; asked <= 9; ++asked) {
    piano_->SetBottomOctave(static_cast<std::uint8_t>(asked));
    const int octave = std::clamp(asked, 1, 7);
    EXPECT_EQ(piano_->BottomOctave(), octave);
    pressed_.clear();
    Press(0);
    Release(0);
    ASSERT_EQ(pressed_.size(), 1);
    EXPECT_EQ(pressed_[0]->Number(), (octave + 1) * 12);
    piano_->grab();
  }
}

TEST_F(CtlPianoTest, TheLowestKeyOfTheLowestOctaveIsNote24) {
  piano_->SetBottomOctave(0);
  EXPECT_EQ(piano_->BottomNote(), 24);
}

// --- Where the keys lie

TEST_F(CtlPianoTest, WhiteKeysShareTheWidthAndBlackOnesHaveHalfOfIt) {
  for (int index = 0; index < piano_->KeyCount(); ++index) {
    const QRectF key = piano_->KeyRect(index);
    EXPECT_DOUBLE_EQ(key.width(), IsBlackPianoKey(index) ? 13.0 : 26.0) << index;
    EXPECT_DOUBLE_EQ(key.height(), IsBlackPianoKey(index) ? 90.0 : 140.0) << index;
    EXPECT_DOUBLE_EQ(key.top(), 0.0);
  }
}

TEST_F(CtlPianoTest, BlackKeysSpreadOverTheirGroupOfTwoAndOfThree) {
  piano_->resize(31 * 240, 140);
  // Middles, in 240ths of a white key from the C of the octave.
  const std::pair<int, double> middles[] = {{1, 220}, {3, 500}, {6, 930}, {8, 1200}, {10, 1470}};
  for (const auto& [index, middle] : middles)
    for (const int octave : {0, 1, 3})
      EXPECT_NEAR(piano_->KeyRect(index + 12 * octave).center().x(), middle + octave * 7 * 240, 0.51)
          << index;
  // The tails of the white keys behind the black ones are alike within a group.
  EXPECT_NEAR(piano_->KeyRect(1).left(), 160, 0.5);
  EXPECT_NEAR(piano_->KeyRect(3).left() - piano_->KeyRect(1).right(), 160, 0.5);
  EXPECT_NEAR(piano_->KeyRect(5).left() - piano_->KeyRect(3).right(), 160, 0.5);
}

TEST_F(CtlPianoTest, EdgesLieOnPixelsAtEveryScale) {
  for (const double scale : {1.0, 1.5, 2.0})
    for (int width : {403, 806, 997}) {
      const PianoLayout layout(31, QSizeF(width, 137), scale);
      for (int index = 0; index < 53; ++index)
        for (const double edge : {layout.KeyRect(index).left(), layout.KeyRect(index).right()})
          EXPECT_NEAR(edge * scale, std::round(edge * scale), 1e-6);
    }
}

TEST_F(CtlPianoTest, APressFindsTheKeyThatIsSeenThere) {
  for (int index = 0; index < piano_->KeyCount(); ++index) {
    Press(index);
    ASSERT_FALSE(pressed_.isEmpty()) << index;
    EXPECT_EQ(pressed_.last()->Number(), 36 + index);
    Release(index);
  }
  EXPECT_EQ(pressed_.size(), 53);
  EXPECT_EQ(released_.size(), 53);
}

// --- Pressing and releasing

TEST_F(CtlPianoTest, APressSoundsANoteAndItsReleaseEndsIt) {
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

TEST_F(CtlPianoTest, AListenerGivesTheToneItsChannelAndPatchBeforeItSounds) {
  QObject::connect(piano_.get(), &CtlPiano::KeyPressed, &context_, [](const std::shared_ptr<Tone>& tone) {
    tone->SetChannel(5);
    tone->SetVolume(70);
  });
  Press(kMiddleC);
  Release(kMiddleC);
  EXPECT_EQ(Sent(), Words({NoteOn(60, 70, 5), NoteOn(60, 0, 5)}));
}

TEST_F(CtlPianoTest, AKeyThatIsDownIsLeftAlone) {
  piano_->DepressKey(ToneOf(60));
  Press(kMiddleC);
  Release(kMiddleC);
  EXPECT_TRUE(pressed_.isEmpty());
  EXPECT_TRUE(released_.isEmpty());
  EXPECT_TRUE(Sent().empty());
  EXPECT_TRUE(piano_->IsKeyDown(kMiddleC));  // what lit it puts it out
}

TEST_F(CtlPianoTest, AMouseThatIsDraggedOutStillEndsItsNote) {
  Press(kMiddleC);
  QTest::mouseMove(piano_.get(), QPoint(400, 900));
  QTest::mouseRelease(piano_.get(), Qt::LeftButton, {}, QPoint(400, 900));
  EXPECT_EQ(Sent(), Words({NoteOn(60, 127), NoteOn(60, 0)}));
  EXPECT_FALSE(piano_->IsKeyDown(kMiddleC));
}

TEST_F(CtlPianoTest, AReleaseOnAnotherKeyEndsTheNoteThatWasPressed) {
  Press(kMiddleC);
  Release(kMiddleC + 7);
  EXPECT_EQ(Sent(), Words({NoteOn(60, 127), NoteOn(60, 0)}));
}

TEST_F(CtlPianoTest, ADoubleClickSoundsTwice) {
  Press(kMiddleC);
  Release(kMiddleC);
  QTest::mouseDClick(piano_.get(), Qt::LeftButton, {}, Place(kMiddleC));
  Release(kMiddleC);
  EXPECT_EQ(Sent(), Words({NoteOn(60, 127), NoteOn(60, 0), NoteOn(60, 127), NoteOn(60, 0)}));
}

TEST_F(CtlPianoTest, HidingOrClosingTheControlEndsItsNotes) {
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

TEST_F(CtlPianoTest, AListenerMayCloseTheControl) {
  QObject::connect(piano_.get(), &CtlPiano::KeyPressed, &context_, [this] { piano_.reset(); });
  Press(kMiddleC);
  EXPECT_EQ(piano_, nullptr);
  EXPECT_EQ(Sent(), Words({NoteOn(60, 0)}));
}

TEST_F(CtlPianoTest, AChangeOfTheKeyboardEndsItsNotes) {
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

TEST_F(CtlPianoTest, AListenerMayCloseTheControlWhileTheKeyboardChanges) {
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

TEST_F(CtlPianoTest, KeysAboveTheLastNoteOfMidiAreSilent) {
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

// --- Lighting

TEST_F(CtlPianoTest, NotesOutsideTheKeyboardLightNothing) {
  for (const int number : {0, 24, 35, 89, 127}) {
    piano_->DepressKey(ToneOf(number));
    piano_->ReleaseKey(ToneOf(number));
  }
  for (int index = 0; index < kMostPianoKeys; ++index) EXPECT_FALSE(piano_->IsKeyDown(index));
  piano_->DepressKey(ToneOf(36));
  piano_->DepressKey(ToneOf(88));
  EXPECT_TRUE(piano_->IsKeyDown(0));
  EXPECT_TRUE(piano_->IsKeyDown(52));
}

TEST_F(CtlPianoTest, LitKeysCarryTheirNamesWhereTheyAreAskedTo) {
  piano_->DepressKey(ToneOf(63));
  EXPECT_EQ(piano_->KeyText(27), QString());
  piano_->ReleaseKey(ToneOf(63));
  piano_->SetShowKeyNames(true);
  const std::pair<int, const char*> names[] = {{60, "C"}, {61, "C#"}, {63, "Eb"}, {68, "Ab"}, {71, "B"}};
  for (const auto& [number, name] : names) {
    piano_->DepressKey(ToneOf(number));
    EXPECT_EQ(piano_->KeyText(number - 36), QLatin1String(name));
    piano_->ReleaseKey(ToneOf(number));
    EXPECT_EQ(piano_->KeyText(number - 36), QString());
  }
  Press(kMiddleC);
  EXPECT_EQ(piano_->KeyText(kMiddleC), QStringLiteral("C"));
  Release(kMiddleC);
  EXPECT_EQ(piano_->KeyText(kMiddleC), QString());
}

TEST_F(CtlPianoTest, NamesAreRedOnWhiteKeysAndWhiteOnBlackOnes) {
  piano_->SetShowKeyNames(true);
  piano_->DepressKey(ToneOf(60));
  piano_->DepressKey(ToneOf(61));
  const QImage picture = piano_->grab().toImage();
  const auto holds = [&](int index, const QColor& colour) {
    const QRect key = piano_->KeyRect(index).toRect();
    for (int y = key.top() + key.height() / 2; y < key.bottom(); ++y)
      for (int x = key.left() + 1; x < key.right(); ++x)
        if (picture.pixelColor(x, y) == colour) return true;
    return false;
  };
  EXPECT_TRUE(holds(kMiddleC, QColor(255, 0, 0)));
  EXPECT_TRUE(holds(kMiddleC + 1, QColor(255, 255, 255)));
  EXPECT_FALSE(holds(kMiddleC + 2, QColor(255, 0, 0)));
}

TEST_F(CtlPianoTest, ResetKeysUpPutsOutEveryKey) {
  piano_->SetShowKeyNames(true);
  for (int number = 36; number < 89; ++number) piano_->DepressKey(ToneOf(number));
  piano_->ResetKeysUp();
  for (int index = 0; index < kMostPianoKeys; ++index) {
    EXPECT_FALSE(piano_->IsKeyDown(index));
    EXPECT_EQ(piano_->KeyText(index), QString());
  }
}

TEST_F(CtlPianoTest, ALitKeyLooksLitAndAnUnlitOneAsBefore) {
  const QImage before = piano_->grab().toImage();
  piano_->DepressKey(ToneOf(60));
  EXPECT_NE(piano_->grab().toImage(), before);
  piano_->ReleaseKey(ToneOf(60));
  EXPECT_EQ(piano_->grab().toImage(), before);
}

TEST_F(CtlPianoTest, KeysLightWhileATunePlays) {
  const auto tune = TuneOfBars(2);
  QList<int> written;
  int number = 60;
  for (const auto& tone : *tune) {
    if (tone->EventType() != MUSIC_NOTE) continue;
    tone->SetNumber(static_cast<std::int16_t>(number));
    written.append(number);
    number += 3;
  }
  tune->CalcNotesOff();
  tune->SortStartTimes();
  const auto lit = [this] {
    QList<int> numbers;
    for (int index = 0; index < piano_->KeyCount(); ++index)
      if (piano_->IsKeyDown(index)) numbers.append(piano_->BottomNote() + index);
    return numbers;
  };
  QList<int> lit_in_turn, darkened;
  QObject::connect(tune.get(), &Tune::NoteStarted, piano_.get(), [&](Tone& tone) {
    piano_->DepressKey(tone);
    if (lit().contains(tone.Number())) lit_in_turn.append(tone.Number());
  });
  QObject::connect(tune.get(), &Tune::NoteStopped, piano_.get(), [&](Tone& tone) {
    piano_->ReleaseKey(tone);
    if (!lit().contains(tone.Number())) darkened.append(tone.Number());
  });
  tune->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  tune->Play();
  EXPECT_EQ(written.size(), 8);
  EXPECT_EQ(lit_in_turn, written);
  EXPECT_EQ(darkened, written);
  EXPECT_TRUE(lit().isEmpty());
}

// --- The computer's own keyboard

TEST_F(CtlPianoTest, TwoRowsOfLettersPlayTwoOctaves) {
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

TEST_F(CtlPianoTest, LettersMakeChordsAndEachEndsItsOwnNote) {
  for (const auto key : {Qt::Key_Z, Qt::Key_C, Qt::Key_B}) QTest::keyPress(piano_.get(), key);
  EXPECT_EQ(Sent(), Words({NoteOn(60, 127), NoteOn(64, 127), NoteOn(67, 127)}));
  QTest::keyRelease(piano_.get(), Qt::Key_C);
  EXPECT_EQ(Sent().back(), NoteOn(64, 0));
  EXPECT_TRUE(piano_->IsKeyDown(kMiddleC));
  EXPECT_FALSE(piano_->IsKeyDown(kMiddleC + 4));
}

TEST_F(CtlPianoTest, AHeldLetterDoesNotRepeatItsNote) {
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

TEST_F(CtlPianoTest, BracketsMoveTheOctaveWithinTheKeyboard) {
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

TEST_F(CtlPianoTest, LosingTheFocusEndsWhatSounds) {
  TakeFocus();
  ASSERT_TRUE(piano_->hasFocus());
  QTest::keyPress(piano_.get(), Qt::Key_Z);
  piano_->clearFocus();
  EXPECT_EQ(Sent(), Words({NoteOn(60, 127), NoteOn(60, 0)}));
}

TEST_F(CtlPianoTest, FocusShowsARingAndTheLettersOnTheKeys) {
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

TEST_F(CtlPianoTest, OtherKeysGoOnToTheWindow) {
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

// --- Bad input

TEST_F(CtlPianoTest, AControlOfNoSizePaintsAndPressesNothing) {
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

TEST_F(CtlPianoTest, PressesAtTheVeryEdgesFindTheOuterKeysAndNothingBeyond) {
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

}  // namespace
}  // namespace zelmar
