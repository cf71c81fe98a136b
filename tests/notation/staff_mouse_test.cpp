// What the buttons of the mouse do to a note of a staff, and its dialogue.
#include <algorithm>

#include "notation/staff_hand.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr int kG4 = 3;  // steps on a treble staff
constexpr int kB4 = 5;

using StaffMouse = StaffHand;

// --- The rows of buttons, with a note found ---

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

// --- The dialogue ---

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

}  // namespace
}  // namespace zelmar
