// A strip: a row of staves that show one track of one tune, bar after bar.
//
// The owner sets the members and calls LoadBarsAcross, which builds the row; a member that is changed later
// reaches the staves with the next RefreshAllStaffs. The strip gives itself its height.
#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>
#include <vector>

#include "model/property.h"
#include "model/tune.h"
#include "notation/ctl_quil_staff.h"

namespace zelmar {

class TrackStaff : public QWidget {
  Q_OBJECT

 public:
  explicit TrackStaff(QWidget* parent = nullptr);

  const std::shared_ptr<zelmar::Tune>& Tune() const { return tune_; }
  void SetTune(std::shared_ptr<zelmar::Tune> tune);

  // Builds the row. `clef_name` is a clef's word, or "Best" for the one that suits the track. Does nothing
  // without a tune.
  void LoadBarsAcross(const QString& clef_name);
  // Shows `bar` on the first staff and its successors on the others.
  void RefreshAllStaffs(std::int16_t bar);
  // Both go to each staff.
  void DisplayRests();
  void PerformAlign();

  // CurrentBar of the first staff.
  std::int16_t LeftMostbar() const { return MyStaff_.front()->CurrentBar(); }
  // Item 0 is always there.
  const std::vector<CtlQuilStaff*>& MyStaff() const { return MyStaff_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void ClefChanged();
  void ChangeRequested();
  void FocusRequested();
  void TuneChanged(std::int16_t bar);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  int StaffCount() const;
  int StaffHeight() const;
  CtlQuilStaff* MakeStaff(int item);
  void KeepKeyboard();
  void UnloadStaffs();
  void PassOn(CtlQuilStaff& staff, std::int16_t bar_count);
  void PlaceStaffs();
  QString BestClef() const;
  // What a screen reader tells: "Staff of track 1, Violin, bar 5 to 7".
  void TellName();

  std::shared_ptr<zelmar::Tune> tune_;
  std::vector<CtlQuilStaff*> MyStaff_;

  ZELMAR_PROPERTY(std::int16_t, TrackNumber, 1)
  ZELMAR_PROPERTY(std::int16_t, BarsAcross, 3)  // staves in the row; less than one counts as one
  ZELMAR_PROPERTY(bool, ShowWords, false)
  ZELMAR_PROPERTY(bool, ShowRests, false)
  ZELMAR_PROPERTY(bool, BeamingOn, true)
  ZELMAR_PROPERTY(bool, AllowEdits, true)
  ZELMAR_PROPERTY(bool, ShowDescription, false)  // the first staff's, like ShowTrack
  ZELMAR_PROPERTY(bool, ShowTrack, true)
  ZELMAR_PROPERTY(bool, ShowBeatLines, false)
  ZELMAR_PROPERTY(bool, SaveDurations, false)
  ZELMAR_PROPERTY(bool, AlignBoundaries, false)
  ZELMAR_PROPERTY(std::int32_t, NoteColour1, 0)
  ZELMAR_PROPERTY(std::int32_t, NoteColour2, 0)
};

}  // namespace zelmar
