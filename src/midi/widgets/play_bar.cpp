#include "midi/widgets/play_bar.h"

#include <QKeyEvent>
#include <QPointer>
#include <QSignalBlocker>

#include "midi/midi_numbers.h"
#include "midi/mode_commands.h"
#include "midi/play_from_now.h"
#include "midi/running_tunes.h"
#include "midi/widgets/now_listening.h"
#include "model/globals.h"
#include "model/tune_text.h"
#include "platform/ignoring_failures.h"
#include "platform/numbers.h"
#include "platform/services.h"

namespace zelmar {

namespace {

const QString kNoValue = QStringLiteral("–");

}  // namespace

PlayBar::PlayBar(QWidget* parent) : QWidget(parent) {
  MakeControls();
  SetFormName(QStringLiteral("Unknown yet"));
  ClearTune();
}

void PlayBar::ClearTune() {
  for (QWidget* control : std::initializer_list<QWidget*>{
           cmdPlay_, cmdPause_, cmdStop_, cmdBack_, cmdForward_, cmdRewind_, cmdEnd_, cmdGoTo_, cmdNewTune_,
           chkMetronome_, PlaySlider_, TempoSlider_})
    control->setEnabled(false);
  lblTitle_->setText(QStringLiteral("No tune loaded."));
  lblTimeSig_->setText(QStringLiteral("None yet"));
  for (QLabel* label : {lblMyBar_, lblMyBeat_, lblTotalbars_, lblMyTempo_}) label->setText(kNoValue);
  bar_count_ = 0;
  ShowMode();
}

void PlayBar::SetTune(std::shared_ptr<zelmar::Tune> tune) {
  if (tune_) tune_->disconnect(this);
  tune_ = std::move(tune);
  if (!tune_) {
    ClearTune();
    return;
  }
  connect(tune_.get(), &zelmar::Tune::Finished, this, &PlayBar::mvarTune_Finished);
  connect(tune_.get(), &zelmar::Tune::Ticked, this, &PlayBar::MvarTune_Ticked);
  connect(tune_.get(), &zelmar::Tune::Rewound, this, &PlayBar::MvarTune_Rewound);

  for (QWidget* control :
       std::initializer_list<QWidget*>{cmdPlay_, cmdBack_, cmdForward_, cmdRewind_, cmdEnd_, cmdGoTo_,
                                       cmdNewTune_, chkMetronome_, PlaySlider_, TempoSlider_})
    control->setEnabled(true);
  cmdStop_->setEnabled(false);
  cmdPause_->setEnabled(false);

  ShowTitle();
  if (tune_->BeatLength() == 0) tune_->SetBeatLength(4);
  chkMetronome_->setChecked(tune_->HearTick() != 0);
  lblTimeSig_->setText(QStringLiteral("%1/%2").arg(tune_->BeatsPerBar()).arg(tune_->BeatLength()));
  bar_count_ = tune_->BarCount();
  // A place of the tune before that this one does not have.
  if (StartBar() > std::max<int>(bar_count_, 1)) SetStartBar(1);
  lblMyBar_->setText(QString::number(StartBar()));
  lblMyBeat_->setText(QString::number(tune_->Playing() ? tune_->BeatWithinBar() : 1));

  {
    const QSignalBlocker quiet(PlaySlider_);
    PlaySlider_->setRange(1, bar_count_ > 0 ? bar_count_ * tune_->BeatsPerBar() : 2);
    PlaySlider_->setTickInterval(tune_->BeatsPerBar());
    PlaySlider_->setPageStep(tune_->BeatsPerBar());
  }
  SetPlaySlider(tune_->Playing() ? tune_->BeatNumber() : FirstBeatOf(StartBar()));
  lblTotalbars_->setText(QString::number(bar_count_));
  lblMyTempo_->setText(QString::number(tune_->Tempo()));
  SetTempoSlider(tune_->Tempo());
}

void PlayBar::ShowTitle() {
  if (tune_) lblTitle_->setText(NameInWindows(*tune_));
}

void PlayBar::SetBackGround(const QColor& colour) {
  background_ = colour;
  update();
}

void PlayBar::SetFormName(const QString& name) {
  form_name_ = name;
  lblFormName_->setText(name);
}

void PlayBar::WakeUp() {
  ShowMode();
  if (!tune_) return;
  if (tune_->Playing())
    ShowPlaying();
  else
    SetPlayStatus(false);
}

void PlayBar::SetPlayStatus(bool playing) {
  cmdPlay_->setEnabled(!playing);
  cmdPause_->setEnabled(playing);
  // What plays can be stopped, whichever window started it.
  if (playing) cmdStop_->setEnabled(true);
}

void PlayBar::SetNewTuneEnabled(bool enabled) {
  cmdNewTune_->setEnabled(enabled);
}

bool PlayBar::NewTuneButtonStatus() const {
  return cmdNewTune_->isEnabled();
}

void PlayBar::DisableAll() {
  cmdPlay_->setEnabled(false);
  cmdPause_->setEnabled(false);
  cmdNewTune_->setEnabled(false);
}

void PlayBar::ShowPlaying() {
  cmdStop_->setEnabled(true);
  cmdPause_->setEnabled(true);
  cmdPlay_->setEnabled(false);
}

void PlayBar::ShowReady() {
  cmdPlay_->setEnabled(true);
  cmdPause_->setEnabled(false);
  cmdStop_->setEnabled(false);
}

void PlayBar::ShowMode() {
  lblMidiMode_->setText(Global().MidiMode);
}

// --- Playing ---

void PlayBar::LoadNewTune(const QString& parameter, const QString& action) {
  Q_EMIT NewTuneWanted(action, parameter);
}

void PlayBar::Play() {
  if (!tune_ || tune_->Playing()) return;
  const QPointer<PlayBar> self(this);
  ShowMode();
  Q_EMIT PlayClicked();
  if (!self) return;
  ServeEvents();
  if (!self || !tune_ || tune_->Playing()) return;
  if (StartBar() == 1) {
    bool numeric = false;
    const double tempo = lblMyTempo_->text().toDouble(&numeric);
    if (numeric) tune_->SetTempo(IntegerPart<std::int16_t>(tempo));
  }
  Run(Start::kHere);
}

void PlayBar::Run(Start start) {
  const QPointer<PlayBar> self(this);
  const std::shared_ptr<zelmar::Tune> tune = tune_;
  // Another tune that plays would only go on after this one, and one that starts now would hold up the end.
  StopRunningTunes();
  if (!self || tune_ != tune || Global().MainFormLoaded) return;
  if (StartBar() == 0) SetStartBar(1);
  std::int16_t start_bar = StartBar();
  ShowPlaying();
  // A run that never came to its Finished (no events, a failure before the first) leaves the bar ready again.
  const auto settle = [&self, &tune] {
    if (self && self->tune_ == tune && !tune->Playing() && self->cmdPause_->isEnabled()) self->ShowReady();
  };
  try {
    if (start == Start::kHere)
      PlayFromNow(*tune, start_bar);
    else
      JumpFromNow(*tune, start_bar);
  } catch (...) {
    settle();
    throw;
  }
  settle();
}

void PlayBar::Pause() {
  // The key and the menu do what the button does, and that is off while nothing plays.
  if (!tune_ || !cmdPause_->isEnabled()) return;
  ShowMode();
  const QPointer<PlayBar> self(this);
  const std::shared_ptr<zelmar::Tune> tune = tune_;
  SetStartBar(tune->BarNumber());
  tune->Stopit();
  if (!self) return;
  cmdPlay_->setEnabled(true);
  cmdPause_->setEnabled(false);
  cmdStop_->setEnabled(true);
}

void PlayBar::StopPlay() {
  if (!tune_) return;
  const QPointer<PlayBar> self(this);
  const std::shared_ptr<zelmar::Tune> tune = tune_;
  ShowReady();
  // What cannot be stopped is at its end all the same.
  IgnoringFailures([&tune] { tune->Stopit(); });
  if (!self) return;
  MvarTune_Rewound();
  RepeatModeCommand();
  if (!self) return;
  ShowMode();
  HideNowListening();
  // Whatever else shows the tune goes back with this bar.
  tune->Rewind();
}

void PlayBar::mvarTune_Finished() {
  const QPointer<PlayBar> self(this);
  ShowReady();
  ShowTempoOfStart();
  RepeatModeCommand();
  if (self) ShowMode();
}

void PlayBar::MvarTune_Rewound() {
  SetStartBar(1);
  lblMyBar_->setText(QStringLiteral("1"));
  lblMyBeat_->setText(QStringLiteral("1"));
  SetPlaySlider(1);
  ShowTempoOfStart();
}

// The next Play from the top takes its tempo from the read-out, which has followed the tune to its end.
void PlayBar::ShowTempoOfStart() {
  if (!tune_) return;
  const std::int16_t tempo = TempoAt(StartBar(), 1);
  lblMyTempo_->setText(QString::number(tempo));
  SetTempoSlider(tempo);
}

void PlayBar::MvarTune_Ticked() {
  // Another window may have started it.
  if (cmdPlay_->isEnabled() && tune_->Playing()) ShowPlaying();
  lblMyBar_->setText(QString::number(tune_->BarNumber()));
  lblMyBeat_->setText(QString::number(tune_->BeatWithinBar()));
  // The slider stays under a hand that holds it.
  if (!PlaySlider_->isSliderDown()) SetPlaySlider(tune_->BeatNumber());
  lblMyTempo_->setText(QString::number(tune_->TempoCurrent()));
  if (!TempoSlider_->isSliderDown()) SetTempoSlider(tune_->TempoCurrent());
}

// --- Settings ---

void PlayBar::TempoSlider_Change(int tempo) {
  lblMyTempo_->setText(QString::number(tempo));
  if (tune_) tune_->SetTempo(Narrow<std::int16_t>(tempo));
}

void PlayBar::chkMetronome_Click(bool checked) {
  if (!tune_) return;
  tune_->SetHearTick(checked ? 1 : 0);
  tune_->SetMetroVolume(kHighestData);
}

void PlayBar::SetPlaySlider(std::int32_t beats) {
  const QSignalBlocker quiet(PlaySlider_);
  PlaySlider_->setValue(beats);
}

void PlayBar::SetTempoSlider(int tempo) {
  const QSignalBlocker quiet(TempoSlider_);
  TempoSlider_->setValue(tempo);
}

// --- Keys ---

bool PlayBar::HandleKey(int key) {
  switch (key) {
    case Qt::Key_PageUp:
      Back();
      return true;
    case Qt::Key_PageDown:
      Forward();
      return true;
    case Qt::Key_Home:
    case Qt::Key_F6:
      Rewind();
      return true;
    case Qt::Key_End:
      GoToEnd();
      return true;
    case Qt::Key_F2:
      Play();
      return true;
    case Qt::Key_F3:
      StopPlay();
      return true;
    case Qt::Key_F4:
      Pause();
      return true;
    case Qt::Key_F5:
      GoToBar();
      return true;
    default:
      return false;
  }
}

void PlayBar::keyPressEvent(QKeyEvent* event) {
  if (event->modifiers() == Qt::ControlModifier && event->key() == Qt::Key_O) {
    LoadNewTune();
    return;
  }
  if (event->modifiers() != Qt::NoModifier || !HandleKey(event->key())) QWidget::keyPressEvent(event);
}

bool PlayBar::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const auto* const key = static_cast<QKeyEvent*>(event);
  if ((key->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
  switch (key->key()) {
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
      return HandleKey(key->key());
    default:
      return false;
  }
}

}  // namespace zelmar
