// What a click on the staff makes and finds, for every step, key and place.
#include <cmath>

#include "staff_hand.h"
#include "support/dice.h"

namespace zelmar {
namespace {

using testing_support::Dice;

class ClickedStaff : public StaffHand, public ::testing::WithParamInterface<int> {
 protected:
  float X(double position) const {
    return static_cast<float>(staff_->NotesLeft() + (position - 1.0) / staff_->BeatsPerBar() *
                                                        (staff_->StaffWidth() - staff_->NotesLeft()));
  }
  float Y(int step) const { return staff_->YOfStep(step); }
  void Down(int button, int shift, double position, int step) {
    staff_->picBox_MouseDown(button, shift, X(position), Y(step));
  }
  void Up(int button, int shift, double position, int step) {
    staff_->picBox_MouseUp(button, shift, X(position), Y(step));
  }
  void ClearTune() {
    tune_->Tones()->Clear();
    staff_->RePaint();
  }
};

constexpr int kTreblePitches[] = {55, 57, 59, 60, 62, 64, 65, 67, 69, 71, 72, 74, 76, 77, 79, 81, 83, 84, 86};
constexpr int kBassPitches[] = {35, 36, 38, 40, 41, 43, 45, 47, 48, 50, 52, 53, 55, 57, 59, 60, 62, 64, 65};

// One rule after the other, each on the note as the one before has left it.
int InKey(int number, int key) {
  Tone tone;
  tone.SetNumber(static_cast<std::int16_t>(number));
  const auto is = [&](char letter) { return tone.Pitch().at(0) == QLatin1Char(letter); };
  const auto move = [&](bool applies, char letter, int by) {
    if (applies && is(letter)) tone.SetNumber(static_cast<std::int16_t>(tone.Number() + by));
  };
  if (key < 0) {
    move(key < 0, 'B', -1);
    move(key < -1, 'E', -1);
    move(key < -2, 'A', -1);
    move(key < -3, 'D', -1);
    move(key < -4, 'G', -1);
    move(key < -5, 'C', -1);
    move(key == -7, 'F', -1);
  } else {
    move(key >= 1, 'F', 1);
    move(key >= 2, 'C', 1);
    move(key >= 3, 'G', 1);
    move(key >= 4, 'D', 1);
    move(key >= 5, 'A', 1);
    move(key >= 6, 'E', 1);
    move(key == 7, 'B', 1);
  }
  return tone.Number();
}

TEST_P(ClickedStaff, MakesTheNoteOfTheStepInTheKey) {
  tune_->SetKeySignature(static_cast<std::int16_t>(GetParam()));
  Show();
  for (const bool treble : {true, false}) {
    staff_->SetClef(treble ? QStringLiteral("Treble") : QStringLiteral("Bass"));
    staff_->RePaint();
    for (int step = -4; step <= 14; ++step) {
      ClearTune();
      Down(1, 0, 2.0, step);
      const auto notes = Notes();
      ASSERT_EQ(notes.size(), 1) << step;
      EXPECT_EQ(notes[0]->Number(), InKey((treble ? kTreblePitches : kBassPitches)[step + 4], GetParam()))
          << step;
      EXPECT_EQ(NotesOff(), 1);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Keys, ClickedStaff, ::testing::Range(-7, 8));

class ClicksOnAStaff : public ClickedStaff {};

TEST_P(ClicksOnAStaff, PutNotesOnTheNearestQuarterOfABeat) {
  tune_->SetBeatsPerBar(static_cast<std::int16_t>(GetParam()));
  Show();
  Dice dice(static_cast<unsigned>(GetParam()));
  for (int i = 0; i < 60; ++i) {
    ClearTune();
    const double position = 1.0 + dice(GetParam() * 1000 - 1) / 1000.0;
    const double quarters = (position - 1.0) * 4.0;
    if (std::abs(quarters - std::floor(quarters) - 0.5) < 0.02) continue;  // too near to the middle to tell
    const int nearest = static_cast<int>(std::lround(quarters));
    Down(1, 0, position, 4);
    const auto notes = Notes();
    if (nearest >= GetParam() * 4) {
      EXPECT_TRUE(notes.isEmpty()) << position;
      continue;
    }
    ASSERT_EQ(notes.size(), 1) << position;
    EXPECT_EQ(notes[0]->Bar(), 1);
    EXPECT_EQ(notes[0]->Beat(), nearest / 4 + 1) << position;
    EXPECT_EQ(notes[0]->Tick(), nearest % 4 * 30) << position;
    EXPECT_EQ(notes[0]->Duration(), 1.0);
    EXPECT_EQ(notes[0]->Channel(), 3);
    EXPECT_EQ(notes[0]->Instrument(), 73);
    EXPECT_EQ(notes[0]->Volume(), 90);
    EXPECT_EQ(notes[0]->OldVolume(), 90);
  }
}

INSTANTIATE_TEST_SUITE_P(Metres, ClicksOnAStaff, ::testing::Values(2, 3, 4, 5));

class FoundNotes : public StaffHand {
 protected:
  float X(double position) const {
    return static_cast<float>(staff_->NotesLeft() + (position - 1.0) / staff_->BeatsPerBar() *
                                                        (staff_->StaffWidth() - staff_->NotesLeft()));
  }
  std::int32_t Find(int pitch, double position) {
    std::int32_t index = -1;
    staff_->FindMatchingNote(static_cast<std::int16_t>(pitch), position, index);
    return index;
  }
};

TEST_F(FoundNotes, AreThoseOfAPlainWalk) {
  for (unsigned seed = 1; seed <= 8; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    tune_->Tones()->Clear();
    for (int i = 0; i < 30; ++i) {
      const auto note =
          AddNote(QStringLiteral("C4"), 1 + dice(4), 30 * dice(4), 1.0, 1 + dice(2), 1 + dice(2));
      note->SetNumber(static_cast<std::int16_t>(60 + dice(12)));
      if (dice(5) == 0) note->SetEventType(7);
    }
    tune_->CalcNotesOff();
    tune_->SortStartTimes();
    if (staff_.isNull()) Show();
    staff_->Setup(tune_);
    for (int quarter = 0; quarter < 16; ++quarter)
      for (const int pitch : {60, 62, 64, 65, 67, 69, 71}) {
        const double position = 1.0 + quarter / 4.0;
        Tone scratch;
        scratch.SetNumber(static_cast<std::int16_t>(pitch));
        std::int32_t wanted = 0, place = 0;
        for (const auto& tone : *tune_) {
          ++place;
          if (wanted != 0 || tone->EventType() != MUSIC_NOTE || tone->Bar() != 1 || tone->Track() != 1)
            continue;
          if ((tone->Beat() - 1) * 4 + tone->Tick() / 30 != quarter) continue;
          const QString name = tone->Pitch();
          if (QString(name.front()) + name.back() == scratch.Pitch()) wanted = place;
        }
        ASSERT_EQ(Find(pitch, position), wanted) << pitch << " at " << position;
        if (wanted > 0) {
          EXPECT_EQ(staff_->ThisTone(), tune_->Item(wanted));
        } else {
          EXPECT_EQ(staff_->ThisTone(), nullptr);
        }
      }
  }
}

TEST_F(FoundNotes, MayStandBeyondSixteenBitsOfPlaces) {
  for (int i = 0; i < 33000; ++i) AddNote(QStringLiteral("C4"), 1)->SetEventType(7);
  AddNote(QStringLiteral("E4"), 2);
  Show();
  EXPECT_EQ(Find(64, 2.0), 33001);
  staff_->picBox_MouseDown(1, 0, X(2.0), staff_->YOfStep(1));
  EXPECT_EQ(staff_->MatchIndex(), 33001);
  EXPECT_EQ(Notes().size(), 1);
}

TEST_F(FoundNotes, AreHalvedAndDoubledTakenOutAndMoved) {
  const auto note = AddNote(QStringLiteral("E4"), 2);
  const auto upper = AddNote(QStringLiteral("G4"), 2);
  tune_->CalcNotesOff();
  tune_->SortStartTimes();
  Show();
  staff_->picBox_MouseDown(1, 1, X(2.0), staff_->YOfStep(1));
  EXPECT_EQ(note->Duration(), 0.5);
  staff_->picBox_MouseDown(2, 1, X(2.0), staff_->YOfStep(1));
  EXPECT_EQ(note->Duration(), 1.0);
  staff_->picBox_MouseDown(2, 2, X(2.0), staff_->YOfStep(3));
  EXPECT_EQ(Notes(), QList<std::shared_ptr<Tone>>({note}));
  EXPECT_EQ(NotesOff(), 1);
  EXPECT_EQ(upper.use_count() > 0, true);
  staff_->picBox_MouseDown(1, 2, X(2.0), staff_->YOfStep(1));
  EXPECT_TRUE(staff_->DraggingNote());
  tune_->SetKeySignature(3);
  staff_->picBox_MouseUp(1, 2, X(3.5), staff_->YOfStep(2));
  EXPECT_FALSE(staff_->DraggingNote());
  EXPECT_EQ(note->Number(), 65);  // no sharp of the key
  EXPECT_EQ(note->Beat(), 3);
  EXPECT_EQ(note->Tick(), 60);
  EXPECT_TRUE(tune_->ChangedSinceLastSaved());
  // Its end has moved with it.
  const auto end = tune_->Item(tune_->Count());
  EXPECT_EQ(end->EventType(), MUSIC_NOTE_OFF);
  EXPECT_EQ(end->Beat(), 4);
  EXPECT_EQ(end->Tick(), 60);
}

TEST_F(FoundNotes, AreNotMadeByOtherButtonsAndKeys) {
  Show();
  for (const auto& [button, shift] :
       {std::pair(1, 1), std::pair(1, 2), std::pair(2, 0), std::pair(2, 1), std::pair(2, 2)}) {
    staff_->picBox_MouseDown(button, shift, X(2.0), staff_->YOfStep(1));
    EXPECT_TRUE(Notes().isEmpty()) << button << shift;
    EXPECT_FALSE(staff_->DraggingNote());
  }
}

TEST_F(FoundNotes, AreNeitherMadeNorTakenOutWithoutEdits) {
  AddNote(QStringLiteral("E4"), 2);
  Show();
  staff_->SetAllowEdits(false);
  staff_->picBox_MouseDown(1, 0, X(3.0), staff_->YOfStep(1));
  staff_->picBox_MouseDown(2, 2, X(2.0), staff_->YOfStep(1));
  EXPECT_EQ(Notes().size(), 1);
}

}  // namespace
}  // namespace zelmar
