// What the tune and the eye find after a press or a release: notes in order, the staff painted anew.
#include <algorithm>
#include <cmath>
#include <utility>

#include "notation/staff_hand.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr int kG4 = 3;  // steps on a treble staff
constexpr int kB4 = 5;
constexpr int kC5 = 6;

// A note of the first beat that stands behind the others, as one does that was put in out of order.
class NotesOutOfOrder : public StaffHand {
 protected:
  NotesOutOfOrder() {
    AddNote(QStringLiteral("B4"), 4);
    AddNote(QStringLiteral("G4"), 2);
    late_ = AddNote(QStringLiteral("E4"), 3);
    late_->SetBeat(1);
    late_->SetTick(0);
  }

  QList<int> Beats() const {
    QList<int> beats;
    for (const auto& note : Notes()) beats.append(note->Beat());
    return beats;
  }

  std::shared_ptr<Tone> late_;
};

TEST_F(NotesOutOfOrder, EveryRowOfTheRightButtonPutsThemInOrder) {
  const std::pair<Qt::KeyboardModifiers, QList<int>> rows[] = {
      {Qt::NoModifier, {1, 2, 4}}, {Qt::ShiftModifier, {1, 2, 4}}, {Qt::ControlModifier, {1, 4}}};
  Show();
  for (const auto& [modifiers, ordered] : rows) {
    SCOPED_TRACE(modifiers);
    // Out of order, again: the first note goes behind the others.
    const auto jumbled = std::make_shared<Tones>();
    auto notes = Notes();
    std::rotate(notes.begin(), notes.begin() + 1, notes.end());
    for (const auto& note : notes) jumbled->Add(note);
    tune_->SetTones(jumbled);
    const QList<int> beats = Beats();
    ASSERT_FALSE(std::is_sorted(beats.begin(), beats.end()));
    Press(Pixel(2, kG4), Qt::RightButton, modifiers);
    EXPECT_EQ(Beats(), ordered);
  }
}

TEST_F(NotesOutOfOrder, TheLeftButtonLeavesThemToTheRelease) {
  const QList<int> mixed = Beats();
  ASSERT_NE(mixed, QList<int>({1, 2, 4}));
  Show();
  Press(Pixel(2, kG4));
  EXPECT_EQ(Beats(), mixed);
  Release(Pixel(2, kG4));
  EXPECT_EQ(Beats(), QList<int>({1, 2, 4}));
}

TEST_F(NotesOutOfOrder, AReleaseWithNothingInTheHandPutsThemInOrder) {
  Show();
  Press(Pixel(3, kB4), Qt::LeftButton, Qt::ControlModifier);
  ASSERT_FALSE(staff_->DraggingNote());
  ASSERT_NE(Beats(), QList<int>({1, 2, 4}));
  Release(Pixel(3, kB4));
  EXPECT_EQ(Beats(), QList<int>({1, 2, 4}));
}

class SeenOnTheStaff : public StaffHand {
 protected:
  std::vector<Primitive> Drawn(Role role) const {
    std::vector<Primitive> found;
    for (const Primitive& primitive : staff_->StaffDrawing().Primitives())
      if (primitive.role == role) found.push_back(primitive);
    return found;
  }
  std::size_t Heads() const { return Drawn(Role::kNoteHead).size(); }
};

TEST_F(SeenOnTheStaff, ADoubledNoteIsSeenAtOnce) {
  AddNote(QStringLiteral("G4"), 2, 0, 1.0);
  Show();
  ASSERT_TRUE(Drawn(Role::kNoteHead).at(0).filled);
  Press(Pixel(2, kG4), Qt::RightButton, Qt::ShiftModifier);
  ASSERT_EQ(Heads(), 1U);
  EXPECT_FALSE(Drawn(Role::kNoteHead)[0].filled) << "a minim";
}

TEST_F(SeenOnTheStaff, WhatTheDialogueDidIsSeenAfterIt) {
  const auto note = AddNote(QStringLiteral("G4"), 2, 0, 1.0);
  Show();
  dialogue_.on_show = [&] { note->SetDuration(2.0); };
  Press(Pixel(2, kG4), Qt::RightButton);
  ASSERT_EQ(Heads(), 1U);
  EXPECT_FALSE(Drawn(Role::kNoteHead)[0].filled);
}

TEST_F(SeenOnTheStaff, ARemovalIsToldBeforeTheStaffIsPainted) {
  AddNote(QStringLiteral("G4"), 2);
  AddNote(QStringLiteral("B4"), 3);
  Show();
  std::size_t heads_when_told = 0;
  QObject::connect(staff_, &CtlQuilStaff::ChangedBarNumbers, staff_, [&] { heads_when_told = Heads(); });
  Press(Pixel(2, kG4), Qt::RightButton, Qt::ControlModifier);
  EXPECT_EQ(heads_when_told, 2U);
  EXPECT_EQ(Heads(), 1U);
}

TEST_F(SeenOnTheStaff, ANewNoteIsPaintedThenToldThenHeard) {
  Show();
  std::size_t heads_when_told = 0;
  std::size_t sent_when_told = 9;
  QObject::connect(staff_, &CtlQuilStaff::NoteAdded, staff_, [&] {
    heads_when_told = Heads();
    sent_when_told = Sent().size();
  });
  Press(Pixel(3, kB4));
  EXPECT_EQ(heads_when_told, 1U);
  EXPECT_EQ(sent_when_told, 0U);
  EXPECT_EQ(Sent().size(), 2U);
}

TEST_F(SeenOnTheStaff, ADropIsSeenAtOnceAndStandsInOrderAfterwards) {
  AddNote(QStringLiteral("B4"), 2);
  const auto carried = AddNote(QStringLiteral("G4"), 3);
  Show();
  Press(Pixel(3, kG4), Qt::LeftButton, Qt::ControlModifier);
  ASSERT_TRUE(staff_->DraggingNote());
  Release(Pixel(1, kC5));
  EXPECT_EQ(Notes()[0], carried);
  const auto heads = Drawn(Role::kNoteHead);
  EXPECT_TRUE(std::any_of(heads.begin(), heads.end(), [&](const Primitive& head) {
    return std::abs(head.from.x() - staff_->NotesLeft()) < 1.0 &&
           std::abs(head.from.y() - staff_->YOfStep(kC5)) < 1.0;
  }));
  EXPECT_EQ(heads.size(), 2U);
}

}  // namespace
}  // namespace zelmar
