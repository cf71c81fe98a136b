// Notes that a press of the mouse adds.
#include <QMap>
#include <algorithm>
#include <cstdlib>

#include "notation/staff_hand.h"
#include "notation/staff_steps.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr int kB4 = 5;  // steps on a treble staff

using StaffMouse = StaffHand;

TEST_F(StaffMouse, APlainLeftPressAddsANoteWhereNoneIs) {
  AddNote(QStringLiteral("G4"), 1);
  Show();
  QSignalSpy added(staff_, &CtlQuilStaff::NoteAdded);
  const std::int32_t last = tune_->LastAbsRef();
  Press(Pixel(3.5, kB4));
  ASSERT_EQ(Notes().size(), 2);
  const Tone& note = *Notes()[1];
  EXPECT_EQ(note.Pitch(), QStringLiteral("B4"));
  EXPECT_EQ(note.Bar(), 1);
  EXPECT_EQ(note.Beat(), 3);
  EXPECT_EQ(note.Tick(), 60);
  EXPECT_DOUBLE_EQ(note.Duration(), 1.0);
  EXPECT_EQ(note.Track(), 1);
  EXPECT_EQ(note.Channel(), 3);
  EXPECT_EQ(note.Instrument(), 73);
  EXPECT_EQ(note.Volume(), 90);
  EXPECT_EQ(note.OldVolume(), 90);
  EXPECT_EQ(note.AbsRef(), last + 1);
  EXPECT_EQ(note.BeatLength(), 4);
  EXPECT_EQ(note.BeatsPerBar(), 4);
  EXPECT_TRUE(note.SendPatch());
  EXPECT_TRUE(tune_->ChangedSinceLastSaved());
  EXPECT_EQ(NotesOff(), 2);
  ASSERT_EQ(added.count(), 1);
  EXPECT_EQ(added[0][0].toInt(), 1);
  EXPECT_EQ(Sent(), Words({Patch(73), NoteOn(71, 90)}));
  EXPECT_EQ(staff_->ThisTone(), Notes()[1]);
}

TEST_F(StaffMouse, ANewNoteIsDrawnAtOnce) {
  Show();
  const auto heads = [&] {
    const auto& drawn = staff_->StaffDrawing().Primitives();
    return std::count_if(drawn.begin(), drawn.end(), [](const auto& p) { return p.role == Role::kNoteHead; });
  };
  EXPECT_EQ(heads(), 0);
  Press(Pixel(3, kB4));
  EXPECT_EQ(heads(), 1);
}

TEST_F(StaffMouse, ANewNoteStandsInTheBarOnShow) {
  AddNote(QStringLiteral("G4"), 1);
  Show();
  staff_->SetCurrentBar(7);
  Press(Pixel(1, kB4));
  ASSERT_EQ(Notes().size(), 2);
  EXPECT_EQ(Notes()[1]->Bar(), 7);
}

TEST_F(StaffMouse, EveryStepOfBothClefsGivesItsNaturalPitch) {
  Show();
  const char* const kTreble[] = {"G3", "A3", "B3", "C4", "D4", "E4", "F4", "G4", "A4", "B4",
                                 "C5", "D5", "E5", "F5", "G5", "A5", "B5", "C6", "D6"};
  const char* const kBass[] = {"B1", "C2", "D2", "E2", "F2", "G2", "A2", "B2", "C3", "D3",
                               "E3", "F3", "G3", "A3", "B3", "C4", "D4", "E4", "F4"};
  for (const char* clef : {"Treble", "Bass"}) {
    staff_->SetClef(QLatin1String(clef));
    for (int step = kLowestStep; step <= kHighestStep; ++step) {
      Press(Pixel(2, step));
      ASSERT_FALSE(Notes().isEmpty());
      const auto pitches = clef[0] == 'T' ? kTreble : kBass;
      EXPECT_EQ(staff_->ThisTone()->Pitch(), QLatin1String(pitches[step - kLowestStep])) << clef << step;
      tune_->SetTones(std::make_shared<Tones>());
    }
  }
}

// The note that each of the seven letters becomes, C first, under each key: F sharp for F in one sharp. A
// rule meets the note as the rules before it have left it, and the names of notes are of mixed spelling.
struct SignatureRow {
  int signature;
  const char* pitches[7];
};

TEST_F(StaffMouse, TheKeySignatureActsOnNewNotes) {
  const SignatureRow rows[] = {
      {-7, {"B3", "C4", "Eb4", "E4", "F4", "Ab4", "Bb4"}},
      {-6, {"B3", "C4", "Eb4", "F4", "F#4", "Ab4", "Bb4"}},
      {-5, {"C4", "C#4", "Eb4", "F4", "F#4", "Ab4", "Bb4"}},
      {-4, {"C4", "C#4", "Eb4", "F4", "G4", "Ab4", "Bb4"}},
      {-3, {"C4", "D4", "Eb4", "F4", "G4", "Ab4", "Bb4"}},
      {-2, {"C4", "D4", "Eb4", "F4", "G4", "A4", "Bb4"}},
      {-1, {"C4", "D4", "E4", "F4", "G4", "A4", "Bb4"}},
      {0, {"C4", "D4", "E4", "F4", "G4", "A4", "B4"}},
      {1, {"C4", "D4", "E4", "F#4", "G4", "A4", "B4"}},
      {2, {"C#4", "D4", "E4", "F#4", "G4", "A4", "B4"}},
      {3, {"C#4", "D4", "E4", "F#4", "Ab4", "A4", "B4"}},
      {4, {"C#4", "Eb4", "E4", "F#4", "Ab4", "A4", "B4"}},
      {5, {"C#4", "Eb4", "E4", "F#4", "A4", "Bb4", "B4"}},
      {6, {"C#4", "E4", "F4", "F#4", "A4", "Bb4", "B4"}},
      {7, {"C#4", "E4", "F4", "F#4", "A4", "B4", "C5"}},
  };
  Show();
  for (const SignatureRow& row : rows) {
    tune_->SetKeySignature(static_cast<std::int16_t>(row.signature));
    for (int letter = 0; letter < 7; ++letter) {
      tune_->SetTones(std::make_shared<Tones>());
      staff_->Setup(tune_);
      staff_->MeasureHead();
      Press(Pixel(2, letter - 1));
      ASSERT_EQ(Notes().size(), 1);
      EXPECT_EQ(Notes()[0]->Pitch(), QLatin1String(row.pitches[letter])) << row.signature << " " << letter;
    }
  }
}

// --- What the key gives to a step is shown on it, without a sign ---

class StaffKeys : public StaffHand, public ::testing::WithParamInterface<int> {
 protected:
  // The step of the note on show, and the strokes of all signs.
  double StepOfHead() const {
    for (const Primitive& drawn : staff_->StaffDrawing().Primitives())
      if (drawn.role == Role::kNoteHead) return (8.5 - drawn.from.y() / staff_->LineGap()) * 2.0;
    return -100.0;
  }
  std::ptrdiff_t StrokesOfSigns() const {
    const auto& drawn = staff_->StaffDrawing().Primitives();
    return std::count_if(drawn.begin(), drawn.end(), [](const Primitive& p) {
      return p.role == Role::kSharp || p.role == Role::kFlat || p.role == Role::kNatural;
    });
  }
  static bool IsInKey(int letter, int signature) {
    const QString order = signature < 0 ? QStringLiteral("BEADGCF") : QStringLiteral("FCGDAEB");
    return order.left(std::abs(signature)).contains(QLatin1Char("CDEFGAB"[letter]));
  }
  // Two rules move these: the names of notes are of mixed spelling.
  static bool IsMovedTwice(int letter, int signature) {
    const QMap<int, QString> twice = {{-7, QStringLiteral("DG")},
                                      {-6, QStringLiteral("D")},
                                      {5, QStringLiteral("G")},
                                      {6, QStringLiteral("DG")},
                                      {7, QStringLiteral("DGA")}};
    return twice.value(signature).contains(QLatin1Char("CDEFGAB"[letter]));
  }
};

TEST_P(StaffKeys, ANoteWithoutASignHasThePitchThatTheKeyGivesToItsStep) {
  const int signature = GetParam();
  constexpr int kNaturals[] = {72, 74, 76, 77, 79, 81, 83};  // C5 to B5
  constexpr int kC5 = 6;
  Show();
  for (int letter = 0; letter < 7; ++letter) {
    SCOPED_TRACE(letter);
    tune_->SetKeySignature(static_cast<std::int16_t>(signature));
    tune_->SetTones(std::make_shared<Tones>());
    staff_->Setup(tune_);
    staff_->MeasureHead();
    const int step = kC5 + letter;
    staff_->RePaint();
    const std::ptrdiff_t signs_of_key = StrokesOfSigns();
    Press(Pixel(2, step));
    ASSERT_EQ(Notes().size(), 1);
    if (IsMovedTwice(letter, signature)) {
      EXPECT_EQ(Notes()[0]->EnHarmonic(), QStringLiteral(" "));
      continue;
    }
    const int altered = !IsInKey(letter, signature) ? 0 : signature < 0 ? -1 : 1;
    EXPECT_EQ(Notes()[0]->Number(), kNaturals[letter] + altered);
    EXPECT_NEAR(StepOfHead(), step, 0.01);
    EXPECT_EQ(StrokesOfSigns(), signs_of_key);
    // It is the note of that line: a second press hears it.
    Press(Pixel(2, step));
    EXPECT_EQ(Notes().size(), 1);
    EXPECT_EQ(staff_->ThisTone(), Notes()[0]);
  }
}

INSTANTIATE_TEST_SUITE_P(AllKeys, StaffKeys, ::testing::Range(-7, 8));

TEST_F(StaffMouse, ANoteIsFoundWhereItIsShownBeforeOneThatItsPitchNames) {
  AddNote(QStringLiteral("C#5"), 1)->SetEnHarmonic(QStringLiteral("b"));  // D flat
  const auto c = AddNote(QStringLiteral("C5"), 1);
  AddNote(QStringLiteral("C#5"), 2)->SetEnHarmonic(QStringLiteral("b"));
  Show();
  std::int32_t index = 0;
  staff_->FindMatchingNote(72, 1.0, index);
  EXPECT_EQ(staff_->ThisTone(), c);
  staff_->FindMatchingNote(74, 1.0, index);
  EXPECT_EQ(staff_->ThisTone()->EnharmonicName(), QStringLiteral("Db5"));
  // Where nothing is shown the letter of the pitch decides.
  staff_->FindMatchingNote(72, 2.0, index);
  ASSERT_NE(index, 0);
  EXPECT_EQ(staff_->ThisTone()->EnharmonicName(), QStringLiteral("Db5"));
}

TEST_F(StaffMouse, ANoteThatIsDraggedIsSpeltAsTheLineWhereItIsDropped) {
  tune_->SetKeySignature(-6);
  Show();
  Press(Pixel(2, 6));
  ASSERT_EQ(Notes().size(), 1);
  ASSERT_EQ(Notes()[0]->EnharmonicName(), QStringLiteral("Cb5"));
  Press(Pixel(2, 6), Qt::LeftButton, Qt::ControlModifier);
  Release(Pixel(3, 8));
  EXPECT_EQ(Notes()[0]->Pitch(), QStringLiteral("E5"));
  EXPECT_EQ(Notes()[0]->EnharmonicName(), QStringLiteral("E5"));
  EXPECT_EQ(Notes()[0]->EnHarmonic(), QStringLiteral(" "));
}

TEST_F(StaffMouse, WithoutATrackTheSoundOfTheLastOneIsTaken) {
  Show();
  Press(Pixel(1, kB4));
  tune_->Tracks()->Clear();
  Press(Pixel(2, kB4));
  ASSERT_EQ(Notes().size(), 2);
  EXPECT_EQ(Notes()[1]->Channel(), 3);
  EXPECT_EQ(Notes()[1]->Instrument(), 73);
  EXPECT_EQ(Notes()[1]->Volume(), 90);
}

TEST_F(StaffMouse, ASignatureBeyondSevenHasNoSeventhRule) {
  // The last rule of each row asks for its very signature: the rules before it act as in six.
  const SignatureRow rows[] = {
      {8, {"C#4", "E4", "F4", "F#4", "A4", "Bb4", "B4"}},
      {9, {"C#4", "E4", "F4", "F#4", "A4", "Bb4", "B4"}},
      {-8, {"B3", "C4", "Eb4", "F4", "F#4", "Ab4", "Bb4"}},
      {-9, {"B3", "C4", "Eb4", "F4", "F#4", "Ab4", "Bb4"}},
  };
  Show(1200, 200);
  for (const SignatureRow& row : rows) {
    tune_->SetKeySignature(static_cast<std::int16_t>(row.signature));
    for (int letter = 0; letter < 7; ++letter) {
      tune_->SetTones(std::make_shared<Tones>());
      staff_->Setup(tune_);
      staff_->MeasureHead();
      Press(Pixel(2, letter - 1));
      ASSERT_EQ(Notes().size(), 1);
      EXPECT_EQ(Notes()[0]->Pitch(), QLatin1String(row.pitches[letter])) << row.signature << " " << letter;
    }
  }
}

TEST_F(StaffMouse, ASignatureThatLeavesNoRoomForNotesTakesNone) {
  AddNote(QStringLiteral("G4"), 2);
  Show();
  for (const std::int16_t signature : {std::int16_t{100}, std::int16_t{-100}}) {
    tune_->SetKeySignature(signature);
    staff_->Setup(tune_);
    staff_->RePaint();
    ASSERT_GT(staff_->NotesLeft(), staff_->StaffWidth());
    for (int x = 0; x < 600; x += 7) {
      Press(QPoint(x, 100));
      Press(QPoint(x, 100), Qt::RightButton, Qt::ControlModifier);
      Release(QPoint(x, 100));
    }
    EXPECT_EQ(Notes().size(), 1);
    EXPECT_TRUE(Sent().empty());
  }
}

}  // namespace
}  // namespace zelmar
