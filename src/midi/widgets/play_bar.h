// The transport bar that nearly every window carries as MyPlayBar: it drives a tune and follows it.
//
// Play does not return until the tune has ended, and events are served meanwhile: the bar, its window and the
// program may be gone when it does. A jump in the middle of that leaves the playing to the Play under way.
// Tunes are held by shared_ptr, and nothing here touches the bar after a Play without looking whether it
// still exists.
#pragma once

#include <QCheckBox>
#include <QColor>
#include <QLabel>
#include <QSlider>
#include <QToolButton>
#include <QWidget>
#include <memory>

#include "model/property.h"
#include "model/tune.h"

namespace zelmar {

class PlayBar : public QWidget {
  Q_OBJECT

 public:
  explicit PlayBar(QWidget* parent = nullptr);

  // The tune that is driven and followed; null for none.
  const std::shared_ptr<zelmar::Tune>& Tune() const { return tune_; }
  void SetTune(std::shared_ptr<zelmar::Tune> tune);
  // Reads the title of the tune anew, and nothing else of it.
  void ShowTitle();

  // The colour behind the bar: its window's.
  const QColor& BackGround() const { return background_; }
  void SetBackGround(const QColor& colour);
  const QString& FormName() const { return form_name_; }
  void SetFormName(const QString& name);

  // Shows the mode in force, and the buttons as the tune's state asks.
  void WakeUp();
  // Shows the mode in force, and nothing else.
  void ShowMode();
  void SetPlayStatus(bool playing);
  void SetNewTuneEnabled(bool enabled = true);
  bool NewTuneButtonStatus() const;
  void DisableAll();

  // As a click on Load New, with a parameter and an action word of the caller.
  void LoadNewTune(const QString& parameter = QStringLiteral("XX"),
                   const QString& action = QStringLiteral("OpenDialog"));
  void Forward();
  void Back();
  void Rewind();
  void GoToEnd();
  // Returns when the tune has ended; does nothing while it plays.
  void Play();
  void StopPlay();
  void GoToBar();
  void Pause();

  // The keys of the bar, for a window that hands on what it has no use for. True when the key was one.
  bool HandleKey(int key);

 Q_SIGNALS:
  // The owner is asked for a tune; "OpenDialog" asks for the open dialogue.
  void NewTuneWanted(const QString& action, const QString& parameter);
  void PlayClicked();
  void SliderMoved(std::int16_t bar, std::int16_t beat);
  // After a jump that went on playing: once that playing is over.
  void OtherButtonClicked(std::int16_t new_bar);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  // The sliders leave the keys of the places to the bar.
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void MakeControls();
  QToolButton* MakeButton(const char* name, const char* icon, const char* caption, const char* hint,
                          void (PlayBar::*act)());
  QLayout* ReadOutRow();
  QLayout* ButtonRow();

  void ClearTune();
  void mvarTune_Finished();
  void MvarTune_Ticked();
  void MvarTune_Rewound();
  void PlaySlider_Change(int beats);
  void TempoSlider_Change(int tempo);
  void chkMetronome_Click(bool checked);

  // Stands at `bar` with the read-outs and the slider, the latter at `beats` counted from 1.
  void StandAt(std::int16_t bar, std::int32_t beats);
  void JumpAndGoOn(std::int16_t bar);
  // Raises OtherButtonClicked once the playing that a jump has begun is over or another one has taken its
  // place.
  void TellOfJumpAfterItsPlaying(const std::shared_ptr<zelmar::Tune>& tune);
  // Starts the tune at StartBar: here, to return at its end, or in the Play that is under way. The caller
  // looks whether the bar still exists.
  enum class Start { kHere, kInPlayUnderWay };
  void Run(Start start);
  void ShowPlaying();
  void ShowReady();
  void ShowTempoOfStart();
  std::int16_t BarNow() const;
  std::int32_t FirstBeatOf(std::int16_t bar) const;
  std::int16_t TempoAt(std::int16_t bar, std::int16_t beat) const;
  void SetPlaySlider(std::int32_t beats);
  void SetTempoSlider(int tempo);

  std::shared_ptr<zelmar::Tune> tune_;
  std::unique_ptr<QObject> jump_;  // listens for the end of the playing of the last jump
  QColor background_;
  QString form_name_;
  std::int16_t bar_count_ = 0;

  QToolButton* cmdPlay_ = nullptr;
  QToolButton* cmdPause_ = nullptr;
  QToolButton* cmdStop_ = nullptr;
  QToolButton* cmdBack_ = nullptr;
  QToolButton* cmdForward_ = nullptr;
  QToolButton* cmdRewind_ = nullptr;
  QToolButton* cmdEnd_ = nullptr;
  QToolButton* cmdGoTo_ = nullptr;
  QToolButton* cmdNewTune_ = nullptr;
  QCheckBox* chkMetronome_ = nullptr;
  QSlider* TempoSlider_ = nullptr;
  QSlider* PlaySlider_ = nullptr;
  QLabel* lblMidiMode_ = nullptr;
  QLabel* lblMyBar_ = nullptr;
  QLabel* lblMyBeat_ = nullptr;
  QLabel* lblTotalbars_ = nullptr;
  QLabel* lblMyTempo_ = nullptr;
  QLabel* lblTimeSig_ = nullptr;
  QLabel* lblTitle_ = nullptr;
  QLabel* lblFormName_ = nullptr;

  ZELMAR_PROPERTY(std::int16_t, StartBar, 1)  // the bar where the next Play starts
  ZELMAR_PROPERTY(std::int16_t, DeviceID, 0)
};

}  // namespace zelmar
