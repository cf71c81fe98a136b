// The clef of a strip, the pages it turns and the keys of the piano, against plain reckonings.
#include <algorithm>

#include "notation/track_staff.h"
#include "piano_hand.h"
#include "staff_hand.h"
#include "support/dice.h"

namespace zelmar {
namespace {

using testing_support::Dice;

// --- The strip ---

class RandomStrips : public ::testing::Test {
 protected:
  void Add(int number, int bar, int track, EventType type = MUSIC_NOTE) {
    auto tone = std::make_shared<Tone>();
    tone->SetNumber(static_cast<std::int16_t>(number));
    tone->SetBar(static_cast<std::int16_t>(bar));
    tone->SetTrack(static_cast<std::uint8_t>(track));
    tone->SetEventType(type);
    tone->SetAbsRef(tune_->LastAbsRef() + 1);
    tune_->Add(tone);
  }
  QString BestClef() {
    TrackStaff strip;
    strip.resize(900, 220);
    strip.SetTune(tune_);
    strip.LoadBarsAcross(QStringLiteral("Best"));
    return strip.MyStaff().front()->Clef();
  }
  static QString PlainClef(int low, int high) {
    if (low >= 58) return QStringLiteral("Treble");
    if (high < 63) return QStringLiteral("Bass");
    return high - 60 <= 60 - low ? QStringLiteral("Bass") : QStringLiteral("Treble");
  }

  testing_support::ScriptedPlatform platform_;
  std::shared_ptr<Tune> tune_ = std::make_shared<Tune>();
};

TEST_F(RandomStrips, HaveTheClefThatSuitsTheirLowestAndHighestNote) {
  for (unsigned seed = 1; seed <= 25; ++seed) {
    Dice dice(seed);
    tune_ = std::make_shared<Tune>();
    int low = 127, high = 1;
    for (int i = 1 + dice(3); i > 0; --i) {
      const int number = 45 + dice(35);
      Add(number, 1, 1);
      low = std::min(low, number);
      high = std::max(high, number);
    }
    Add(30, 1, 2);
    EXPECT_EQ(BestClef(), PlainClef(low, high)) << low << " to " << high;
  }
  tune_ = std::make_shared<Tune>();
  Add(50, 1, 1);
  Add(70, 1, 1);
  EXPECT_EQ(BestClef(), QStringLiteral("Bass"));
  Add(71, 1, 1, EXPRESS_CONTROLLER);
  EXPECT_EQ(BestClef(), QStringLiteral("Treble"));
}

TEST_F(RandomStrips, ShowABarAndItsSuccessorsWithTheClefOfTheFirst) {
  for (int bar = 1; bar <= 20; ++bar) Add(60, bar, 1);
  for (int across = 1; across <= 5; ++across) {
    TrackStaff strip;
    strip.resize(1000, 300);
    strip.SetTune(tune_);
    strip.SetBarsAcross(static_cast<std::int16_t>(across));
    strip.LoadBarsAcross(QStringLiteral("Bass"));
    ASSERT_EQ(strip.MyStaff().size(), static_cast<std::size_t>(across));
    for (const int bar : {1, 2, 7, 16}) {
      strip.RefreshAllStaffs(static_cast<std::int16_t>(bar));
      EXPECT_EQ(strip.LeftMostbar(), bar);
      for (int i = 0; i < across; ++i) {
        const CtlQuilStaff& staff = *strip.MyStaff()[static_cast<std::size_t>(i)];
        EXPECT_EQ(staff.CurrentBar(), bar + i);
        EXPECT_EQ(staff.BarOffset(), i);
        EXPECT_EQ(staff.Clef(), QStringLiteral("Bass"));
        EXPECT_EQ(staff.ShowClef(), i == 0);
        EXPECT_EQ(staff.SelectedTrack(), 1);
      }
    }
  }
}

class TurnedPages : public StaffHand, public ::testing::WithParamInterface<int> {};

TEST_P(TurnedPages, FollowThePlayingWithTheMarkerOnItsBeat) {
  const int across = GetParam();
  for (int bar = 1; bar <= 12; ++bar)
    for (int beat = 1; beat <= 4; ++beat) AddNote(QStringLiteral("C4"), beat, 0, 1.0, bar);
  Show();
  for (int offset = 0; offset < across; ++offset) {
    staff_->SetBarsAcross(static_cast<std::int16_t>(across));
    staff_->SetBarOffset(static_cast<std::int16_t>(offset));
    staff_->Rewind();
    staff_->RePaint();
    int current = 1 + offset;
    EXPECT_EQ(staff_->CurrentBar(), current);
    for (int bar = 1; bar <= 12; ++bar)
      for (int beat = 1; beat <= 4; ++beat) {
        tune_->SetBarNumber(static_cast<std::int16_t>(bar));
        tune_->SetBeatWithinBar(static_cast<std::int16_t>(beat));
        staff_->ThisTune_Ticked();
        if (beat == 1 && (across == 1 || bar % across == 0)) current = bar + offset;
        ASSERT_EQ(staff_->CurrentBar(), current) << bar << '.' << beat;
        EXPECT_EQ(!staff_->BeatMarker()->isHidden(), bar == current) << bar << '.' << beat;
        if (bar != current) continue;
        const QRectF place = staff_->BeatMarker()->Place();
        const double g = staff_->LineGap(), room = staff_->StaffWidth() - staff_->NotesLeft();
        EXPECT_NEAR(place.left(), (beat - 1) / 4.0 * room + staff_->NotesLeft() + 0.1 * g, 1.0);
        EXPECT_NEAR(place.width(), room / 4.0, 1.0);
        EXPECT_NEAR(place.top(), 0.1 * 12 * g, 1.0);
        EXPECT_NEAR(place.height(), 0.8 * 12 * g, 1.0);
      }
  }
}

INSTANTIATE_TEST_SUITE_P(StavesInARow, TurnedPages, ::testing::Values(1, 2, 3, 4));

// --- The piano ---

TEST(KeysOfAPiano, AreAsManyAsItsWhiteOnesAsk) {
  static const int kExtra[] = {0, 0, 1, 2, 2, 3, 4};
  for (int white = 8; white <= 31; ++white)
    EXPECT_EQ(PianoKeyCount(white), white + 5 * (white / 7) + kExtra[white % 7]) << white;
  EXPECT_EQ(PianoKeyCount(31), kMostPianoKeys);
}

TEST(KeysOfAPiano, LieSideBySideWithTheBlackOnesOverThem) {
  for (int white = 8; white <= 31; ++white) {
    const PianoLayout layout(white, QSizeF(white * 20.0, 140.0));
    int whites = 0;
    for (int index = 0; index < PianoKeyCount(white); ++index) {
      const QRectF key = layout.KeyRect(index);
      const int in_octave = index % 12;
      const bool black =
          in_octave == 1 || in_octave == 3 || in_octave == 6 || in_octave == 8 || in_octave == 10;
      EXPECT_EQ(IsBlackPianoKey(index), black);
      EXPECT_EQ(layout.KeyAt(key.center() - QPointF(0, black ? 0 : -60)), index) << white << ' ' << index;
      EXPECT_NEAR(key.top(), 0.0, 0.5);
      if (black) {
        EXPECT_NEAR(key.width(), 10.0, 1.0);
        EXPECT_NEAR(key.height(), 140.0 * 9 / 14, 1.0);
      } else {
        EXPECT_NEAR(key.left(), whites * 20.0, 1.0);
        EXPECT_NEAR(key.width(), 20.0, 1.0);
        EXPECT_NEAR(key.height(), 140.0, 1.0);
        ++whites;
      }
    }
    EXPECT_EQ(whites, white);
  }
}

TEST_F(PianoHand, BringsItsOctaveAndItsWidthIntoTheirRanges) {
  for (int value = 0; value < 256; ++value) {
    piano_->SetBottomOctave(static_cast<std::uint8_t>(value));
    EXPECT_EQ(piano_->BottomOctave(), value == 0 ? 1 : std::min(value, 7)) << value;
    EXPECT_EQ(piano_->BottomNote(), (piano_->BottomOctave() + 1) * 12);
    piano_->SetWhiteNoteCount(static_cast<std::uint8_t>(value));
    EXPECT_EQ(piano_->WhiteNoteCount(), value < 13 ? 8 : std::min(value, 31)) << value;
  }
}

TEST_F(PianoHand, LightsTheKeyOfEveryNoteItHasAndNamesIt) {
  piano_->SetShowKeyNames(true);
  for (const int octave : {1, 2, 4}) {
    piano_->SetBottomOctave(static_cast<std::uint8_t>(octave));
    piano_->ResetKeysUp();
    for (int number = 0; number < 128; ++number) {
      const Tone tone = ToneOf(number);
      const int index = number - (octave + 1) * 12;
      piano_->DepressKey(tone);
      for (int key = 0; key < piano_->KeyCount(); ++key) EXPECT_EQ(piano_->IsKeyDown(key), key == index);
      if (index >= 0 && index < piano_->KeyCount()) {
        EXPECT_EQ(piano_->KeyText(index), tone.Pitch().chopped(1));
      }
      piano_->ReleaseKey(tone);
      if (index >= 0 && index < piano_->KeyCount()) {
        EXPECT_FALSE(piano_->IsKeyDown(index));
        EXPECT_EQ(piano_->KeyText(index), QString());
      }
    }
  }
}

TEST_F(PianoHand, SoundsEveryKeyOnceAndEndsIt) {
  for (int index = 0; index < piano_->KeyCount(); ++index) {
    if (IsBlackPianoKey(index)) continue;
    platform_.midi->sent.clear();
    pressed_.clear();
    released_.clear();
    Press(index);
    Release(index);
    ASSERT_EQ(pressed_.size(), 1) << index;
    ASSERT_EQ(released_.size(), 1) << index;
    EXPECT_EQ(pressed_[0]->Number(), 36 + index);
    EXPECT_EQ(Sent(), Words({NoteOn(36 + index, 127), NoteOn(36 + index, 0)})) << index;
  }
}

}  // namespace
}  // namespace zelmar
