// What the mouse does on a staff: the rows of buttons, the areas before the notes, adding, dragging.
#include <QPainter>

#include "midi/quil_sounds_module.h"
#include "model/globals.h"
#include "notation/staff_hand.h"
#include "notation/staff_steps.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr int kG4 = 3;  // steps on a treble staff
constexpr int kB4 = 5;
constexpr int kC5 = 6;

using StaffMouse = StaffHand;

// --- The rows of buttons, with a note found

TEST_F(StaffMouse, LeftHearsANote) {
  const auto note = AddNote(QStringLiteral("G4"), 2);
  Show();
  Press(Pixel(2, kG4));
  EXPECT_EQ(Sent(), Words({Patch(73), NoteOn(67, 100)}));
  EXPECT_TRUE(note->SendPatch());
  EXPECT_EQ(staff_->ThisTone(), note);
  EXPECT_EQ(staff_->MatchIndex(), 1);
  EXPECT_EQ(Notes().size(), 1);
  EXPECT_FALSE(staff_->DraggingNote());
  EXPECT_FALSE(tune_->ChangedSinceLastSaved());
  EXPECT_EQ(NotesOff(), 0);  // the left button leaves them to the release
  Release(Pixel(2, kG4));
  EXPECT_EQ(NotesOff(), 1);
}

TEST_F(StaffMouse, LeftWithShiftHalvesANote) {
  const auto note = AddNote(QStringLiteral("G4"), 2, 0, 1.0);
  Show();
  Press(Pixel(2, kG4), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_DOUBLE_EQ(note->Duration(), 0.5);
  EXPECT_EQ(Sent(), Words({Patch(73), NoteOn(67, 100)}));
  EXPECT_EQ(NotesOff(), 0);
  EXPECT_TRUE(tune_->ChangedSinceLastSaved());
  const auto& drawn = staff_->StaffDrawing().Primitives();
  EXPECT_TRUE(std::any_of(drawn.begin(), drawn.end(), [](const auto& p) { return p.role == Role::kFlag; }));
}

TEST_F(StaffMouse, LeftWithCtrlTakesANoteUp) {
  AddNote(QStringLiteral("G4"), 2);
  Show();
  Press(Pixel(2, kG4), Qt::LeftButton, Qt::ControlModifier);
  EXPECT_TRUE(staff_->DraggingNote());
  EXPECT_EQ(staff_->cursor().shape(), Qt::CrossCursor);
  EXPECT_EQ(Sent(), Words({Patch(73), NoteOn(67, 100)}));
  EXPECT_EQ(Notes().size(), 1);
}

TEST_F(StaffMouse, RightOpensTheDialogueOfANote) {
  const auto note = AddNote(QStringLiteral("G4"), 2);
  Show();
  staff_->SetDataBasePath(QStringLiteral("base"));
  staff_->SetHelpPath(QStringLiteral("help"));
  QSignalSpy changed(staff_, &CtlQuilStaff::ChangedBarNumbers);
  dialogue_.on_show = [&] {
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(Sent(), Words({Patch(73), NoteOn(67, 100)}));
  };
  const QPoint pixel = Pixel(2, kG4);
  Press(pixel, Qt::RightButton);
  EXPECT_EQ(dialogue_.shown, 1);
  EXPECT_EQ(dialogue_.tone, note);
  EXPECT_EQ(dialogue_.tune, tune_);
  EXPECT_EQ(dialogue_.abs_ref, note->AbsRef());
  EXPECT_EQ(dialogue_.filled_pitch, QStringLiteral("G4"));
  EXPECT_EQ(dialogue_.database_path, QStringLiteral("base"));
  EXPECT_EQ(dialogue_.help_path, QStringLiteral("help"));
  EXPECT_FALSE(dialogue_.word_shown);
  EXPECT_EQ(dialogue_.place, QPointF(pixel.x() * 15 - 1000, pixel.y() * 15 + 300));
  EXPECT_EQ(changed.count(), 1);
  EXPECT_EQ(NotesOff(), 1);
}

TEST_F(StaffMouse, RightWithShiftDoublesANote) {
  const auto note = AddNote(QStringLiteral("G4"), 2, 0, 1.0);
  Show();
  Press(Pixel(2, kG4), Qt::RightButton, Qt::ShiftModifier);
  EXPECT_DOUBLE_EQ(note->Duration(), 2.0);
  EXPECT_EQ(Sent(), Words({Patch(73), NoteOn(67, 100)}));
  EXPECT_EQ(NotesOff(), 1);
  EXPECT_TRUE(tune_->ChangedSinceLastSaved());
}

TEST_F(StaffMouse, RightWithCtrlRemovesANote) {
  AddNote(QStringLiteral("G4"), 2);
  AddNote(QStringLiteral("G4"), 3);
  Show();
  QSignalSpy changed(staff_, &CtlQuilStaff::ChangedBarNumbers);
  Press(Pixel(2, kG4), Qt::RightButton, Qt::ControlModifier);
  ASSERT_EQ(Notes().size(), 1);
  EXPECT_EQ(Notes()[0]->Beat(), 3);
  EXPECT_TRUE(tune_->ChangedSinceLastSaved());
  EXPECT_EQ(changed.count(), 1);
  EXPECT_TRUE(Sent().empty());
  EXPECT_EQ(NotesOff(), 1);
}

TEST_F(StaffMouse, RightWithCtrlRemovesOneNoteOfAChord) {
  AddNote(QStringLiteral("E4"), 2);
  AddNote(QStringLiteral("G4"), 2);
  AddNote(QStringLiteral("B4"), 2);
  Show();
  Press(Pixel(2, kG4), Qt::RightButton, Qt::ControlModifier);
  QStringList left;
  for (const auto& note : Notes()) left.append(note->Pitch());
  EXPECT_EQ(left, QStringList({QStringLiteral("E4"), QStringLiteral("B4")}));
}

struct QuietRow {
  Qt::MouseButton button;
  Qt::KeyboardModifiers modifiers;
};

TEST_F(StaffMouse, OnlyAPlainLeftPressDoesSomethingWhereNoNoteIs) {
  AddNote(QStringLiteral("G4"), 2);
  Show();
  const QuietRow rows[] = {{Qt::LeftButton, Qt::ShiftModifier},
                           {Qt::LeftButton, Qt::ControlModifier},
                           {Qt::RightButton, Qt::NoModifier},
                           {Qt::RightButton, Qt::ShiftModifier},
                           {Qt::RightButton, Qt::ControlModifier}};
  for (const QuietRow& row : rows) {
    Press(Pixel(3, kB4), row.button, row.modifiers);
    EXPECT_EQ(Notes().size(), 1);
    EXPECT_TRUE(Sent().empty());
    EXPECT_FALSE(staff_->DraggingNote());
    EXPECT_EQ(staff_->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(staff_->MatchIndex(), 0);
    EXPECT_EQ(staff_->ThisTone(), nullptr);
    EXPECT_EQ(dialogue_.shown, 0);
    EXPECT_EQ(NotesOff(), 0);
  }
}

TEST_F(StaffMouse, OtherButtonsAndOtherKeysDoNothingToANote) {
  const auto note = AddNote(QStringLiteral("G4"), 2);
  Show();
  Press(Pixel(2, kG4), Qt::MiddleButton);
  Press(Pixel(2, kG4), Qt::LeftButton, Qt::ShiftModifier | Qt::ControlModifier);
  Press(Pixel(2, kG4), Qt::LeftButton, Qt::AltModifier);
  EXPECT_TRUE(Sent().empty());
  EXPECT_DOUBLE_EQ(note->Duration(), 1.0);
  EXPECT_EQ(Notes().size(), 1);
}

TEST_F(StaffMouse, WithoutEditsTheNotesAreLeftAlone) {
  AddNote(QStringLiteral("G4"), 2);
  Show();
  staff_->SetAllowEdits(false);
  for (const auto button : {Qt::LeftButton, Qt::RightButton})
    for (const auto modifier : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}) {
      Press(Pixel(2, kG4), button, modifier);
      Press(Pixel(3, kB4), button, modifier);
    }
  EXPECT_TRUE(Sent().empty());
  EXPECT_EQ(Notes().size(), 1);
  EXPECT_EQ(dialogue_.shown, 0);
}

// --- The areas before the notes

class StaffAreas : public StaffHand {
 protected:
  void Watch() {
    corner_ = std::make_unique<QSignalSpy>(staff_, &CtlQuilStaff::ClickedTopCorner);
    clef_ = std::make_unique<QSignalSpy>(staff_, &CtlQuilStaff::ClickedClef);
    signature_ = std::make_unique<QSignalSpy>(staff_, &CtlQuilStaff::ClickedSignature);
  }
  QList<int> Counts() const {
    return {static_cast<int>(corner_->count()), static_cast<int>(clef_->count()),
            static_cast<int>(signature_->count())};
  }

  std::unique_ptr<QSignalSpy> corner_, clef_, signature_;
};

TEST_F(StaffAreas, TheTopCornerEndsAt200Twips) {
  Show();
  Watch();
  Press(QPoint(0, 0));
  Press(QPoint(13, 13));  // 195 twips
  EXPECT_EQ(Counts(), QList<int>({2, 0, 0}));
  EXPECT_FLOAT_EQ(corner_->at(1).at(0).toFloat(), 195.0F);
  EXPECT_FLOAT_EQ(corner_->at(1).at(1).toFloat(), 195.0F);
  EXPECT_EQ(staff_->Clef(), QStringLiteral("Treble"));
  Press(QPoint(13, 14));  // 210 twips down: the clef
  EXPECT_EQ(Counts(), QList<int>({2, 1, 0}));
  Press(QPoint(14, 13));
  EXPECT_EQ(Counts(), QList<int>({2, 2, 0}));
}

TEST_F(StaffAreas, APressOnTheClefFlipsItBeforeItIsTold) {
  Show();
  Watch();
  QStringList told;
  QObject::connect(staff_, &CtlQuilStaff::ClickedClef, staff_, [&] { told.append(staff_->Clef()); });
  Press(QPoint(38, 100));  // 570 of 575 twips
  Press(QPoint(38, 100));
  EXPECT_EQ(told, QStringList({QStringLiteral("Bass"), QStringLiteral("Treble")}));
  EXPECT_EQ(Counts(), QList<int>({0, 2, 0}));
  Press(QPoint(39, 100));  // 585
  EXPECT_EQ(Counts(), QList<int>({0, 2, 1}));
}

TEST_F(StaffAreas, TheClefIsSeenToFlip) {
  Show();
  ASSERT_TRUE(staff_->imgTreble().visible);
  Press(QPoint(20, 100));
  QCoreApplication::processEvents();
  EXPECT_FALSE(staff_->imgTreble().visible);
  EXPECT_TRUE(staff_->imgBass().visible);
}

TEST_F(StaffAreas, TheSignaturesEnd80TwipsBeforeTheNotes) {
  tune_->SetKeySignature(-3);
  AddNote(QStringLiteral("G4"), 1);
  Show();
  Watch();
  const int edge = static_cast<int>(std::ceil((staff_->NotesLeft() - 80.0F) / 15.0F));
  Press(QPoint(edge - 1, 100));
  EXPECT_EQ(Counts(), QList<int>({0, 0, 1}));
  Press(QPoint(edge, 100));
  EXPECT_EQ(Counts(), QList<int>({0, 0, 1}));
}

TEST_F(StaffAreas, TheyWorkWithoutEditsAndWithoutATune) {
  tune_ = nullptr;
  Show();
  Watch();
  staff_->SetAllowEdits(false);
  Press(QPoint(5, 5));
  Press(QPoint(20, 100));
  Press(QPoint(50, 100));
  EXPECT_EQ(Counts(), QList<int>({1, 1, 1}));
}

TEST_F(StaffAreas, OnlyTheFirstStaffOfARowHasThem) {
  AddNote(QStringLiteral("G4"), 1);
  Show();
  staff_->SetBarOffset(1);
  Watch();
  for (const QPoint place : {QPoint(5, 5), QPoint(20, 100), QPoint(50, 100)}) Press(place);
  EXPECT_EQ(Counts(), QList<int>({0, 0, 0}));
  EXPECT_EQ(staff_->Clef(), QStringLiteral("Treble"));
}

// --- Adding

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

// --- Rounding

TEST_F(StaffMouse, PositionsGoToTheNearestQuarterAndAHalfStaysBelow) {
  const std::pair<double, double> rows[] = {{1.0, 1.0},   {1.1, 1.0},    {1.125, 1.0},  {1.126, 1.25},
                                            {1.25, 1.25}, {2.374, 2.25}, {2.375, 2.25}, {2.376, 2.5},
                                            {4.99, 5.0},  {0.9, 1.0},    {0.87, 0.75},  {-0.1, 0.0}};
  for (const auto& [position, quarter] : rows)
    EXPECT_DOUBLE_EQ(NearestQuarterBeat(position), quarter) << position;
}

TEST_F(StaffMouse, EveryQuarterOfABeatIsReached) {
  Show();
  for (int quarter = 0; quarter < 16; ++quarter) {
    tune_->SetTones(std::make_shared<Tones>());
    Press(Pixel(1 + quarter / 4.0, kB4));
    ASSERT_EQ(Notes().size(), 1) << quarter;
    EXPECT_EQ(Notes()[0]->Beat(), 1 + quarter / 4);
    EXPECT_EQ(Notes()[0]->Tick(), 30 * (quarter % 4));
  }
}

TEST_F(StaffMouse, TheLastQuarterThatRoundsUpToTheNextBarDoesNothing) {
  Show();
  Press(Pixel(4.95, kB4));
  EXPECT_TRUE(Notes().isEmpty());
  Press(Pixel(4.8, kB4));
  ASSERT_EQ(Notes().size(), 1);
  EXPECT_EQ(Notes()[0]->Tick(), 90);
}

TEST_F(StaffMouse, PlacesBesideTheBarAndTheStaffDoNothing) {
  AddNote(QStringLiteral("G4"), 1);
  Show();
  // Before beat 1 but behind the signatures; above and below the steps; both ends of the control.
  Press(QPoint(static_cast<int>((staff_->NotesLeft() - 79) / 15) + 1, 1));
  Press(Pixel(2, kHighestStep + 2));
  Press(Pixel(2, kLowestStep - 2));
  Press(QPoint(599, 0));
  Press(QPoint(599, 199));
  Press(QPoint(599, 100));
  EXPECT_EQ(Notes().size(), 1);
  EXPECT_TRUE(Sent().empty());
}

TEST_F(StaffMouse, QuaverBeatsCount60Pulses) {
  tune_->SetBeatLength(8);
  tune_->SetBeatsPerBar(6);
  Show();
  Press(Pixel(5.5, kB4));
  ASSERT_EQ(Notes().size(), 1);
  EXPECT_EQ(Notes()[0]->Beat(), 5);
  EXPECT_EQ(Notes()[0]->Tick(), 30);
  EXPECT_EQ(Notes()[0]->BeatLength(), 8);
  EXPECT_EQ(Notes()[0]->BeatsPerBar(), 6);
  Press(Pixel(5.5, kB4));
  EXPECT_EQ(Notes().size(), 1);  // found and heard
}

// --- Finding

TEST_F(StaffMouse, LetterAndOctaveDecideAndTheFirstInOrderIsFound) {
  const auto sharp = AddNote(QStringLiteral("C#5"), 2);
  const auto natural = AddNote(QStringLiteral("C5"), 2);
  Show();
  Press(Pixel(2, kC5));
  EXPECT_EQ(staff_->ThisTone(), sharp);
  tune_->Remove(1);
  Press(Pixel(2, kC5));
  EXPECT_EQ(staff_->ThisTone(), natural);
}

TEST_F(StaffMouse, NotesOfOtherTracksBarsAndOctavesAreNotFound) {
  tune_->Tracks()->Add(QStringLiteral("Other"), 2, 4, 1, false, 0, 0, QStringLiteral("2"));
  AddNote(QStringLiteral("C5"), 2, 0, 1.0, 1, 2);
  AddNote(QStringLiteral("C4"), 2);
  AddNote(QStringLiteral("C5"), 2, 0, 1.0, 2);
  Show();
  std::int16_t index = 9;
  staff_->FindMatchingNote(72, 2.0, index);
  EXPECT_EQ(index, 0);
  EXPECT_EQ(staff_->ThisTone(), nullptr);
}

TEST_F(StaffMouse, TheWalkEndsAtTheFirstNoteOfALaterBar) {
  AddNote(QStringLiteral("C5"), 1, 0, 1.0, 2);
  AddNote(QStringLiteral("C5"), 2);
  Show();
  std::int16_t index = 9;
  staff_->FindMatchingNote(72, 2.0, index);
  EXPECT_EQ(index, 0);
}

TEST_F(StaffMouse, EventsThatAreNoNotesAreSkipped) {
  AddNote(QStringLiteral("C5"), 2)->SetEventType(7);
  AddNote(QStringLiteral("C5"), 1, 0, 1.0, 5)->SetEventType(7);
  const auto note = AddNote(QStringLiteral("C5"), 2, 10);
  Show();
  std::int16_t index = 9;
  staff_->FindMatchingNote(72, 2.0, index);
  EXPECT_EQ(index, 3);
  EXPECT_EQ(staff_->ThisTone(), note);
}

// --- Dragging and releasing

TEST_F(StaffMouse, ADraggedNoteTakesTheNaturalPitchWhereItIsDropped) {
  tune_->SetKeySignature(1);
  const auto note = AddNote(QStringLiteral("G4"), 2);
  Show();
  Press(Pixel(2, kG4), Qt::LeftButton, Qt::ControlModifier);
  Release(Pixel(3.25, 2), Qt::LeftButton, Qt::ControlModifier);  // F4
  EXPECT_EQ(note->Pitch(), QStringLiteral("F4"));
  EXPECT_EQ(note->Beat(), 3);
  EXPECT_EQ(note->Tick(), 30);
  EXPECT_EQ(note->Bar(), 1);
  EXPECT_FALSE(staff_->DraggingNote());
  EXPECT_EQ(staff_->cursor().shape(), Qt::ArrowCursor);
  EXPECT_TRUE(tune_->ChangedSinceLastSaved());
  EXPECT_EQ(NotesOff(), 1);
}

TEST_F(StaffMouse, ADropBesideTheStaffMovesNothingNowNorAtTheNextPress) {
  const auto note = AddNote(QStringLiteral("G4"), 2);
  Show();
  Press(Pixel(2, kG4), Qt::LeftButton, Qt::ControlModifier);
  Release(QPoint(300, 900));
  EXPECT_EQ(note->Pitch(), QStringLiteral("G4"));
  EXPECT_EQ(note->Beat(), 2);
  EXPECT_EQ(staff_->cursor().shape(), Qt::ArrowCursor);
  Press(Pixel(2, kG4));
  Release(Pixel(4, kB4));
  EXPECT_EQ(note->Pitch(), QStringLiteral("G4"));
  EXPECT_EQ(note->Beat(), 2);
}

TEST_F(StaffMouse, AReleaseOfTheRightButtonDropsNothing) {
  const auto note = AddNote(QStringLiteral("G4"), 2);
  Show();
  Press(Pixel(2, kG4), Qt::LeftButton, Qt::ControlModifier);
  Release(Pixel(3, kB4), Qt::RightButton);
  EXPECT_EQ(note->Beat(), 2);
  EXPECT_TRUE(staff_->DraggingNote());
}

TEST_F(StaffMouse, AReleaseWithNothingInTheHandStillMakesTheNotesOff) {
  AddNote(QStringLiteral("G4"), 2);
  Show();
  Press(Pixel(4, kB4), Qt::LeftButton, Qt::ControlModifier);
  EXPECT_FALSE(staff_->DraggingNote());
  EXPECT_EQ(NotesOff(), 0);
  Release(Pixel(4, kB4));
  EXPECT_EQ(NotesOff(), 1);
  EXPECT_EQ(Notes()[0]->Beat(), 2);
  EXPECT_FALSE(tune_->ChangedSinceLastSaved());
}

struct ModeRow {
  const char* mode;
  QString message;
};

TEST_F(StaffMouse, AReleaseRepeatsTheModeAndEndsTheNote) {
  AddNote(QStringLiteral("G4"), 2);
  Show();
  const ModeRow rows[] = {
      {"GM", GMModeMessage()}, {"GS", GSModeMessage()}, {"XG", XGModeMessage()}, {"GM2", {}}, {"", {}}};
  for (const auto& row : rows) {
    Global().MidiMode = QLatin1String(row.mode);
    Press(Pixel(2, kG4));
    platform_.midi->sent.clear();
    Release(QPoint(300, 900));  // wherever the button rises
    EXPECT_EQ(Sent(), Words({NoteOn(67, 0)}));
    QList<QByteArray> modes;
    for (const SentMessage& message : platform_.midi->sent)
      if (message.kind == SentMessage::Kind::kLong) modes.append(message.bytes);
    ASSERT_EQ(modes.size(), row.message.isEmpty() ? 0 : 1) << row.mode;
    EXPECT_EQ(modes.value(0), row.message.toLatin1());
  }
}

TEST_F(StaffMouse, ADoubleClickIsTwoPresses) {
  Show();
  Press(Pixel(2, kG4));
  Release(Pixel(2, kG4));
  Send(QEvent::MouseButtonDblClick, Pixel(2, kG4), Qt::LeftButton);
  Release(Pixel(2, kG4));
  EXPECT_EQ(Notes().size(), 1);
  EXPECT_EQ(Sent(),
            Words({Patch(73), NoteOn(67, 90), NoteOn(67, 0), Patch(73), NoteOn(67, 90), NoteOn(67, 0)}));
}

TEST_F(StaffMouse, RealClicksOnTheSurfaceArriveToo) {
  AddNote(QStringLiteral("G4"), 2);
  Show();
  QTest::mouseClick(staff_->picBox(), Qt::LeftButton, {}, Pixel(2, kG4));
  EXPECT_EQ(Sent(), Words({Patch(73), NoteOn(67, 100), NoteOn(67, 0)}));
}

TEST_F(StaffMouse, TheStripOfWordsTakesNoPresses) {
  AddNote(QStringLiteral("G4"), 2);
  Show();
  staff_->SetShowWords(true);
  staff_->RePaint();
  QTest::mouseClick(staff_->picWords(), Qt::LeftButton, {}, QPoint(300, 5));
  Press(QPoint(5, 198));
  EXPECT_EQ(Notes().size(), 1);
  EXPECT_EQ(staff_->Clef(), QStringLiteral("Treble"));
}

// --- The dialogue

TEST_F(StaffMouse, TheDialogueIsGivenTheWordAtTheNote) {
  AddNote(QStringLiteral("G4"), 2, 30);
  tune_->Words()->Add(0, 1, 1, QStringLiteral("other"));
  tune_->Words()->Add(30, 2, 1, QStringLiteral("word"));
  Show();
  Press(Pixel(2.25, kG4), Qt::RightButton);
  EXPECT_TRUE(dialogue_.word_shown);
  EXPECT_EQ(dialogue_.word, QStringLiteral("word"));
  EXPECT_EQ(dialogue_.word_index, 2);
  Notes()[0]->SetTick(31);
  Press(Pixel(2.25, kG4), Qt::RightButton);
  EXPECT_FALSE(dialogue_.word_shown);
}

TEST_F(StaffMouse, TheDialogueMovesByItsOwnWidthForEachStaffBefore) {
  AddNote(QStringLiteral("G4"), 2);
  Show();
  staff_->SetBarOffset(2);
  const QPoint pixel = Pixel(2, kG4);
  Press(pixel, Qt::RightButton);
  EXPECT_EQ(dialogue_.place, QPointF(pixel.x() * 15 - 1000 + 8000, pixel.y() * 15 + 300));
}

TEST_F(StaffMouse, TheDialogueMayCloseTheWindowOfItsStaff) {
  AddNote(QStringLiteral("G4"), 2);
  Show();
  dialogue_.on_show = [this] { delete staff_; };
  const QPoint pixel = Pixel(2, kG4);
  // Straight to the control: Qt itself has no more business with an event of a widget that is gone.
  staff_->picBox_MouseDown(CtlQuilStaff::kRightButton, 0, static_cast<float>(pixel.x() * 15),
                           static_cast<float>(pixel.y() * 15));
  EXPECT_EQ(staff_, nullptr);
  EXPECT_EQ(NotesOff(), 1);
}

TEST_F(StaffMouse, WithoutADialogueTheProgramSaysSo) {
  SetNoteDialogue(nullptr);
  AddNote(QStringLiteral("G4"), 2);
  Show();
  QSignalSpy changed(staff_, &CtlQuilStaff::ChangedBarNumbers);
  Press(Pixel(2, kG4), Qt::RightButton);
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_EQ(platform_.messages->shown[0].text,
            QStringLiteral("This window is not part of this version yet."));
  EXPECT_EQ(changed.count(), 1);
}

// --- Bad input

TEST_F(StaffMouse, WithoutATuneNothingHappens) {
  tune_ = nullptr;
  Show();
  for (const auto button : {Qt::LeftButton, Qt::RightButton})
    for (const auto modifier : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}) {
      Press(Pixel(2, kG4), button, modifier);
      Release(Pixel(2, kG4), button, modifier);
    }
  EXPECT_TRUE(Sent().empty());
  std::int16_t index = 4;
  staff_->FindMatchingNote(60, 1.0, index);
  EXPECT_EQ(index, 0);
  staff_->FillDialogBox(0, 0);
  EXPECT_EQ(dialogue_.shown, 0);
}

TEST_F(StaffMouse, ATuneWithoutTracksTakesNotesOfNoChannel) {
  tune_->Tracks()->Clear();
  Show();
  Press(Pixel(2, kG4));
  Release(Pixel(2, kG4));
  ASSERT_EQ(Notes().size(), 1);
  EXPECT_EQ(Notes()[0]->Channel(), 0);
  EXPECT_EQ(Notes()[0]->Volume(), 0);
}

TEST_F(StaffMouse, ABeatLengthOfNothingIsReadAsFour) {
  tune_->SetBeatLength(0);
  Show();
  Press(Pixel(2.5, kG4));
  Release(Pixel(2.5, kG4));
  ASSERT_EQ(Notes().size(), 1);
  EXPECT_EQ(Notes()[0]->Tick(), 60);
}

TEST_F(StaffMouse, ABarOfNoBeatsIsNoHarm) {
  tune_->SetBeatsPerBar(0);
  Show();
  for (int x = 0; x < 600; x += 7) Press(QPoint(x, 100), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_TRUE(Notes().isEmpty());
}

TEST_F(StaffMouse, AControlOfNoSizeTakesPressesWithoutHarm) {
  AddNote(QStringLiteral("G4"), 2);
  Show();
  staff_->setMinimumSize(0, 0);
  for (const QSize size : {QSize(0, 0), QSize(1, 1), QSize(600, 0), QSize(0, 200), QSize(30, 200)}) {
    staff_->resize(size);
    QCoreApplication::processEvents();
    for (const QPoint place : {QPoint(0, 0), QPoint(size.width(), size.height()), QPoint(29, 100)})
      for (const auto button : {Qt::LeftButton, Qt::RightButton}) {
        Press(place, button);
        staff_->picBox_MouseDown(1, 0, static_cast<float>(place.x() * 15),
                                 static_cast<float>(place.y() * 15));
        Release(place, button);
      }
    QImage picture(10, 10, QImage::Format_ARGB32);
    QPainter painter(&picture);
    staff_->render(&painter);
  }
  EXPECT_EQ(dialogue_.shown, 0);
}

}  // namespace
}  // namespace zelmar
