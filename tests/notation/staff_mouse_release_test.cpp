// Notes that are dragged, and what the release of a button ends.
#include "midi/quil_sounds_module.h"
#include "model/globals.h"
#include "notation/staff_hand.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr int kG4 = 3;  // steps on a treble staff
constexpr int kB4 = 5;

using StaffMouse = StaffHand;

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

TEST_F(StaffMouse, AStaffThatGoesWhileANoteSoundsEndsIt) {
  AddNote(QStringLiteral("G4"), 2);
  Show();
  Press(Pixel(2, kG4));
  delete staff_;
  EXPECT_EQ(Sent(), Words({Patch(73), NoteOn(67, 100), NoteOn(67, 0)}));
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

}  // namespace
}  // namespace zelmar
