// How a staff keeps in step with the playback of its tune.

#include "notation/ctl_quil_staff.h"
#include "platform/numbers.h"

namespace zelmar {

void CtlQuilStaff::ThisTune_Ticked() {
  const std::shared_ptr<Tune> tune = ThisTune();
  if (!tune) return;
  const QPointer<CtlQuilStaff> self(this);
  if (tune->BeatWithinBar() == 1 && TurnsThePageAt(tune->BarNumber())) {
    SetCurrentBar(CheckedAdd<std::int16_t>(tune->BarNumber(), BarOffset()));
    ShowPage();
    if (!self) return;
  }
  PlaceBeatMarker(tune->BarNumber(), tune->BeatWithinBar());
}

void CtlQuilStaff::ThisTune_Rewound() {
  Rewind();
  ShowPage();
}

// Without the beat marker, which the caller places.
void CtlQuilStaff::ShowPage() {
  if (CurrentBar() <= BarCount()) {
    RePaint();
    return;
  }
  SetScale();
  ClearStaff();
  DrawStaff();
}

bool CtlQuilStaff::TurnsThePageAt(std::int16_t bar) const {
  return BarsAcross() <= 1 || bar % BarsAcross() == 0;
}

void CtlQuilStaff::PlaceBeatMarker(std::int16_t bar, std::int16_t beat) {
  if (!ShowBeatMarker() || bar != CurrentBar()) {
    BeatMarker_->hide();
    return;
  }
  MeasureHead();
  const double room = std::max(0.0, static_cast<double>(StaffWidth()) - NotesLeft());
  const double control_height = height() * kTwipsPerPixel;
  BeatMarker_->SetPlace({(beat - 1.0) / BeatsPerBar() * room + NotesLeft() + 0.1 * LineGap(),
                         0.1 * control_height, room / BeatsPerBar(), 0.8 * control_height});
  BeatMarker_->show();
}

void CtlQuilStaff::Rewind() {
  SetCurrentBar(CheckedAdd<std::int16_t>(1, BarOffset()));
}

void CtlQuilStaff::AddBar() {
  SetBarCount(CheckedAdd<std::int16_t>(BarCount(), 1));
  SetCurrentBar(BarCount());
  RePaint();
}

}  // namespace zelmar
