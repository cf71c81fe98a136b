// The mouse on a staff: the areas of the first staff of a row, and what each button does to a note.

#include <QMouseEvent>
#include <array>
#include <cmath>

#include "midi/mode_commands.h"
#include "midi/quil_sounds_module.h"
#include "notation/ctl_quil_staff.h"
#include "notation/note_dialogue.h"
#include "notation/staff_cursor.h"
#include "platform/numbers.h"

namespace zelmar {

namespace {

// Lengths in twips.
constexpr float kCornerSize = 200.0F;
constexpr float kRoomBeforeNotes = 80.0F;

int ButtonNumber(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton:
      return CtlQuilStaff::kLeftButton;
    case Qt::RightButton:
      return CtlQuilStaff::kRightButton;
    default:
      return 4;
  }
}

int ShiftNumber(Qt::KeyboardModifiers modifiers) {
  int shift = 0;
  if (modifiers.testFlag(Qt::ShiftModifier)) shift |= CtlQuilStaff::kShift;
  if (modifiers.testFlag(Qt::ControlModifier)) shift |= CtlQuilStaff::kCtrl;
  if (modifiers.testFlag(Qt::AltModifier)) shift |= 4;
  return shift;
}

}  // namespace

double NearestQuarterBeat(double position) {
  const double quarters = position * 4.0;
  const double whole = std::floor(quarters);
  return (quarters - whole > 0.5 ? whole + 1.0 : whole) / 4.0;
}

std::optional<double> CtlQuilStaff::BeatPositionAt(float x) const {
  const double room = static_cast<double>(StaffWidth()) - static_cast<double>(NotesLeft());
  if (!(room > 0.0)) return std::nullopt;
  const double beats = BeatsPerBar();
  const double position = NearestQuarterBeat((static_cast<double>(x) - NotesLeft()) / room * beats + 1.0);
  if (position < 1.0 || position >= beats + 1.0) return std::nullopt;
  return position;
}

std::optional<CtlQuilStaff::NotePlace> CtlQuilStaff::PlaceAt(float x, float y) const {
  constexpr std::int16_t kNoPitch = -1;
  NotePlace place{.pitch = kNoPitch, .position = 0.0};
  FindPitch(x, y, place.pitch);
  const auto position = BeatPositionAt(x);
  if (place.pitch == kNoPitch || !position) return std::nullopt;
  place.position = *position;
  return place;
}

// --- Pressing and releasing ---

void CtlQuilStaff::picBox_MouseDown(int button, int shift, float x, float y) {
  MeasureHead();
  if (PressedHead(x, y)) return;
  if (!AllowEdits() || !ThisTune()) return;
  const auto place = PlaceAt(x, y);
  if (!place) return;
  // What was taken up and dropped beside the staff is let go of.
  DraggingNote_ = false;

  if (NoteDialogue* const dialogue = TheNoteDialogue()) {
    dialogue->SetDataBasePath(DataBasePath());
    dialogue->SetHelpPath(HelpPath());
    dialogue->SetThisTune(ThisTune());
  }
  FindMatchingNote(place->pitch, place->position, MatchIndex_);
  if (MatchIndex_ == 0) {
    if (button == kLeftButton && shift == 0) AddNote(*place);
    return;
  }

  struct Row {
    int button;
    int shift;
    void (CtlQuilStaff::*act)(float x, float y);
  };
  static constexpr std::array kRows = {
      Row{kLeftButton, 0, &CtlQuilStaff::HearNote},
      Row{kLeftButton, kShift, &CtlQuilStaff::HalveNote},
      Row{kLeftButton, kCtrl, &CtlQuilStaff::TakeUpNote},
      Row{kRightButton, 0, &CtlQuilStaff::EditNote},
      Row{kRightButton, kShift, &CtlQuilStaff::DoubleNote},
      Row{kRightButton, kCtrl, &CtlQuilStaff::RemoveNote},
  };
  for (const Row& row : kRows) {
    if (row.button != button || row.shift != shift) continue;
    // The note's own window may close this one.
    const std::shared_ptr<Tune> tune = ThisTune();
    (this->*row.act)(x, y);
    if (button != kRightButton) return;
    tune->CalcNotesOff();
    tune->SortStartTimes();
    return;
  }
}

bool CtlQuilStaff::PressedHead(float x, float y) {
  if (BarOffset() != 0) return false;
  if (x < kCornerSize && y < kCornerSize) {
    Q_EMIT ClickedTopCorner(x, y);
    return true;
  }
  if (x < ClefWidth()) {
    SetClef(Clef() == u"Treble" ? QStringLiteral("Bass") : QStringLiteral("Treble"));
    PaintSoon();
    Q_EMIT ClickedClef(x, y);
    return true;
  }
  if (x < NotesLeft() - kRoomBeforeNotes) {
    Q_EMIT ClickedSignature(x, y);
    return true;
  }
  return false;
}

void CtlQuilStaff::picBox_MouseUp(int button, int, float x, float y) {
  MeasureHead();
  EndSound();
  RepeatModeCommand();
  unsetCursor();
  const auto place = PlaceAt(x, y);
  if (!place || !ThisTune()) return;
  const std::shared_ptr<Tune> tune = ThisTune();
  if (button == kLeftButton && DraggingNote_) DropNote(*place);
  tune->CalcNotesOff();
  tune->SortStartTimes();
}

void CtlQuilStaff::DropNote(const NotePlace& place) {
  DraggingNote_ = false;
  if (!ThisTone_) return;
  ThisTone_->SetNumber(place.pitch);
  // A spelling that belonged to the pitch before would show another line.
  ThisTone_->SetEnHarmonic(Tone().EnHarmonic());
  PutAt(*ThisTone_, place.position);
  ThisTune()->SetChangedSinceLastSaved(true);
  RePaint();
}

// The device may have no reset that would end it: a note that sounds ends when the button rises.
void CtlQuilStaff::EndSound() {
  if (sounding_pitch_ == 0) return;
  SendNoteOn(sounding_pitch_, sounding_channel_, 0);
  sounding_pitch_ = 0;
}

// --- Events of the window system ---

void CtlQuilStaff::mousePressEvent(QMouseEvent* event) {
  // What stands below is the words.
  if (!picBox_->geometry().contains(event->position().toPoint())) {
    event->ignore();
    return;
  }
  MeasureHead();
  CancelCarrying();
  cursor_->hide();
  const QPointF twips = event->position() * kTwipsPerPixel;
  const auto x = static_cast<float>(twips.x());
  const auto y = static_cast<float>(twips.y());
  if (const auto place = PlaceAt(x, y)) MoveCursorTo(place->position, y);
  picBox_MouseDown(ButtonNumber(event->button()), ShiftNumber(event->modifiers()), x, y);
}

void CtlQuilStaff::mouseReleaseEvent(QMouseEvent* event) {
  const QPointF twips = event->position() * kTwipsPerPixel;
  picBox_MouseUp(ButtonNumber(event->button()), ShiftNumber(event->modifiers()),
                 static_cast<float>(twips.x()), static_cast<float>(twips.y()));
}

// A second press in quick succession is a press like the first.
void CtlQuilStaff::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
}

// Taken, so that a drag moves neither the window nor anything else.
void CtlQuilStaff::mouseMoveEvent(QMouseEvent* event) {
  event->accept();
}

}  // namespace zelmar
