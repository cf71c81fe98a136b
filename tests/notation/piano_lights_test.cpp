// The lights of the piano keyboard: which keys are lit, what they carry and how they look.
#include "notation/piano_hand.h"

namespace zelmar {
namespace {

using namespace testing_support;

using PianoLights = PianoHand;

TEST_F(PianoLights, NotesOutsideTheKeyboardLightNothing) {
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

TEST_F(PianoLights, LitKeysCarryTheirNamesWhereTheyAreAskedTo) {
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

TEST_F(PianoLights, NamesAreRedOnWhiteKeysAndWhiteOnBlackOnes) {
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

TEST_F(PianoLights, ResetKeysUpPutsOutEveryKey) {
  piano_->SetShowKeyNames(true);
  for (int number = 36; number < 89; ++number) piano_->DepressKey(ToneOf(number));
  piano_->ResetKeysUp();
  for (int index = 0; index < kMostPianoKeys; ++index) {
    EXPECT_FALSE(piano_->IsKeyDown(index));
    EXPECT_EQ(piano_->KeyText(index), QString());
  }
}

TEST_F(PianoLights, ALitKeyLooksLitAndAnUnlitOneAsBefore) {
  const QImage before = piano_->grab().toImage();
  piano_->DepressKey(ToneOf(60));
  EXPECT_NE(piano_->grab().toImage(), before);
  piano_->ReleaseKey(ToneOf(60));
  EXPECT_EQ(piano_->grab().toImage(), before);
}

TEST_F(PianoLights, KeysLightWhileATunePlays) {
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

}  // namespace
}  // namespace zelmar
