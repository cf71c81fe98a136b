// What a screen reader tells of a staff: which track and bar it shows, and what stands under the cursor.

#include "notation/ctl_quil_staff.h"
#include "notation/staff_cursor.h"

namespace zelmar {

QString CtlQuilStaff::SpokenTrack() const {
  if (!ThisTune()) return {};
  QString spoken = tr("track %1").arg(SelectedTrack());
  for (const auto& track : *ThisTune()->Tracks()) {
    if (track->TrackNumber() != SelectedTrack()) continue;
    if (!track->Description().isEmpty()) spoken += QStringLiteral(", ") + track->Description();
    break;
  }
  return spoken;
}

void CtlQuilStaff::TellName() {
  QString name = tr("Staff without a tune");
  if (ThisTune())
    name = shown_bar_ == 0 ? tr("Staff of %1, no bar").arg(SpokenTrack())
                           : tr("Staff of %1, bar %2").arg(SpokenTrack(), QString::number(shown_bar_));
  if (name != accessibleName()) setAccessibleName(name);
  if (renamed_) renamed_();
}

void CtlQuilStaff::TellCursor() {
  const QPointF middle = CursorPlace();
  const auto place = PlaceAt(static_cast<float>(middle.x()), static_cast<float>(middle.y()));
  if (!place) {
    setAccessibleDescription({});
    return;
  }
  const std::int32_t match = MatchAt(*place);
  Tone line;
  line.SetNumber(place->pitch);
  const QString what = match == 0 ? tr("No note on %1").arg(line.Pitch())
                                  : tr("Note %1").arg(ThisTune()->Item(match)->EnharmonicName());
  const QString description =
      tr("%1, bar %2, beat %3").arg(what, QString::number(CurrentBar()), QString::number(place->position));
  if (description != accessibleDescription()) setAccessibleDescription(description);
}

}  // namespace zelmar
