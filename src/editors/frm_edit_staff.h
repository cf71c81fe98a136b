// The staff view: the melody of the tune in memory on a strip of staves, over a transport bar.
//
// The strip follows the playback; presses and keys on it edit the tune. The tune is fetched anew whenever the
// window comes to the front and after each load.
#pragma once

#include <cstdint>

#include "shell/tune_window.h"

class QLabel;

namespace zelmar {

class TrackStaff;

class FrmEditStaff : public TuneWindow {
  Q_OBJECT

 public:
  FrmEditStaff();

  TrackStaff* MyTrackStaff() const { return strip_; }
  void ShowTitleOfTune() override;

 protected:
  QString CaptionFor(const Tune* tune) const override;
  void ShowTune(const std::shared_ptr<Tune>& tune) override;

 private:
  void ShowBar(std::int16_t bar);
  // Shows the bar that plays where the strip stands elsewhere.
  void CatchUp();
  void MyTrackStaff_TuneChanged();

  TrackStaff* strip_;
  QLabel* lblNoTune_;
};

}  // namespace zelmar
