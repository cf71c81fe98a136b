// The keys of the piano keyboard: how many there are and where they lie.
#include <algorithm>

#include "notation/piano_hand.h"

namespace zelmar {
namespace {

using namespace testing_support;

using PianoKeys = PianoHand;

TEST_F(PianoKeys, StandsAsItIsStored) {
  EXPECT_EQ(piano_->BottomOctave(), 2);
  EXPECT_EQ(piano_->WhiteNoteCount(), 31);
  EXPECT_FALSE(piano_->ShowKeyNames());
  EXPECT_EQ(piano_->KeyCount(), 53);
  EXPECT_EQ(piano_->BottomNote(), 36);
}

TEST_F(PianoKeys, EveryNumberOfWhiteKeysGivesAWholeKeyboard) {
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

TEST_F(PianoKeys, EveryBottomOctaveIsBroughtIntoItsRange) {
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

TEST_F(PianoKeys, TheLowestKeyOfTheLowestOctaveIsNote24) {
  piano_->SetBottomOctave(0);
  EXPECT_EQ(piano_->BottomNote(), 24);
}

TEST_F(PianoKeys, WhiteKeysShareTheWidthAndBlackOnesHaveHalfOfIt) {
  for (int index = 0; index < piano_->KeyCount(); ++index) {
    const QRectF key = piano_->KeyRect(index);
    EXPECT_DOUBLE_EQ(key.width(), IsBlackPianoKey(index) ? 13.0 : 26.0) << index;
    EXPECT_DOUBLE_EQ(key.height(), IsBlackPianoKey(index) ? 90.0 : 140.0) << index;
    EXPECT_DOUBLE_EQ(key.top(), 0.0);
  }
}

TEST_F(PianoKeys, BlackKeysSpreadOverTheirGroupOfTwoAndOfThree) {
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

TEST_F(PianoKeys, EdgesLieOnPixelsAtEveryScale) {
  for (const double scale : {1.0, 1.5, 2.0})
    for (int width : {403, 806, 997}) {
      const PianoLayout layout(31, QSizeF(width, 137), scale);
      for (int index = 0; index < 53; ++index)
        for (const double edge : {layout.KeyRect(index).left(), layout.KeyRect(index).right()})
          EXPECT_NEAR(edge * scale, std::round(edge * scale), 1e-6);
    }
}

}  // namespace
}  // namespace zelmar
