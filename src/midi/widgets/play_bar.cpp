#include "midi/widgets/play_bar.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QSignalBlocker>
#include <cmath>

#include "midi/mode_commands.h"
#include "model/globals.h"
#include "platform/numbers.h"
#include "platform/services.h"

namespace zelmar {

namespace {

const QString kNoValue = QStringLiteral("–");

// The window that tells about the tune that plays goes out of sight with it.
void HideNowListening() {
  for (QWidget* widget : QApplication::allWidgets())
    if (widget->objectName() == QLatin1String("frmNowListening")) widget->hide();
}

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

  for (QWidget* control :
       std::initializer_list<QWidget*>{cmdPlay_, cmdBack_, cmdForward_, cmdRewind_, cmdEnd_, cmdGoTo_,
                                       cmdNewTune_, chkMetronome_, PlaySlider_, TempoSlider_})
    control->setEnabled(true);
  cmdStop_->setEnabled(false);
  cmdPause_->setEnabled(false);

  const QString title = tune_->Title();
  lblTitle_->setText(tune_->Composer() == QLatin1String("Various") ? title
                                                                   : tune_->Composer() + QStringLiteral(" - ") + title);
  if (tune_->BeatLength() == 0) tune_->SetBeatLength(4);
  chkMetronome_->setChecked(tune_->HearTick() != 0);
  lblTimeSig_->setText(QStringLiteral("%1/%2").arg(tune_->BeatsPerBar()).arg(tune_->BeatLength()));
  lblMyBar_->setText(QString::number(StartBar()));
  lblMyBeat_->setText(QString::number(tune_->Playing() ? tune_->BeatWithinBar() : 1));

  bar_count_ = tune_->BarCount();
  {
    const QSignalBlocker quiet(PlaySlider_);
    PlaySlider_->setRange(1, bar_count_ > 0 ? bar_count_ * tune_->BeatsPerBar() : 2);
    PlaySlider_->setTickInterval(tune_->BeatsPerBar());
    PlaySlider_->setPageStep(tune_->BeatsPerBar());
  }
  lblTotalbars_->setText(QString::number(bar_count_));
  lblMyTempo_->setText(QString::number(tune_->Tempo()));
  SetTempoSlider(tune_->Tempo());
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

// --- Playing
// ----------------------------------------------------------------------------------------------------------

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
  Run();
}

void PlayBar::Run() {
  const QPointer<PlayBar> self(this);
  const std::shared_ptr<zelmar::Tune> tune = tune_;
  if (StartBar() == 0) SetStartBar(1);
  std::int16_t start_bar = StartBar();
  ShowPlaying();
  // A run that never came to its Finished (no events, a failure before the first) leaves the bar ready again.
  const auto settle = [&self, &tune] {
    if (self && self->tune_ == tune && !tune->Playing() && self->cmdPause_->isEnabled()) self->ShowReady();
  };
  tune->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  try {
    tune->Play(start_bar);
  } catch (...) {
    settle();
    throw;
  }
  settle();
}

void PlayBar::Pause() {
  ShowMode();
  if (!tune_) return;
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
  try {
    tune->Stopit();
  } catch (const std::exception&) {
    // What cannot be stopped is at its end all the same.
  }
  if (!self) return;
  SetStartBar(1);
  lblMyBar_->setText(QStringLiteral("1"));
  lblMyBeat_->setText(QStringLiteral("1"));
  SetPlaySlider(1);
  RepeatModeCommand();
  if (!self) return;
  ShowMode();
  HideNowListening();
}

void PlayBar::mvarTune_Finished() {
  const QPointer<PlayBar> self(this);
  ShowReady();
  RepeatModeCommand();
  if (self) ShowMode();
}

void PlayBar::MvarTune_Ticked() {
  lblMyBar_->setText(QString::number(tune_->BarNumber()));
  lblMyBeat_->setText(QString::number(tune_->BeatWithinBar()));
  // The slider stays under a hand that holds it.
  if (!PlaySlider_->isSliderDown()) SetPlaySlider(tune_->BeatNumber());
  lblMyTempo_->setText(QString::number(tune_->TempoCurrent()));
  if (!TempoSlider_->isSliderDown()) SetTempoSlider(tune_->TempoCurrent());
}

// --- Places in the tune
// -----------------------------------------------------------------------------------------------------

std::int16_t PlayBar::BarNow() const {
  return tune_->Playing() ? tune_->BarNumber() : StartBar();
}

std::int32_t PlayBar::FirstBeatOf(std::int16_t bar) const {
  return (bar - 1) * tune_->BeatsPerBar() + 1;
}

std::int16_t PlayBar::TempoAt(std::int16_t bar, std::int16_t beat) const {
  std::int16_t tempo = tune_->Tempo();
  for (const auto& change : *tune_->TempoChanges()) {
    if (change->Bar() > bar) break;
    const bool reached =
        change->Bar() < bar || change->Beat() < beat || (change->Beat() == beat && change->Tick() <= 0);
    if (reached) tempo = change->NewTempo();
  }
  return tempo;
}

void PlayBar::StandAt(std::int16_t bar, std::int32_t beats) {
  SetStartBar(bar);
  lblMyBar_->setText(QString::number(bar));
  lblMyBeat_->setText(QStringLiteral("1"));
  SetPlaySlider(beats);
  lblMyTempo_->setText(QString::number(TempoAt(bar, 1)));
}

void PlayBar::JumpAndGoOn(std::int16_t bar) {
  const QPointer<PlayBar> self(this);
  const bool was_playing = tune_->Playing();
  if (was_playing) tune_->Stopit();
  if (!self || !tune_) return;
  StandAt(bar, FirstBeatOf(bar));
  if (was_playing) Run();
  if (self) Q_EMIT OtherButtonClicked(StartBar());
}

void PlayBar::Forward() {
  if (!tune_ || BarNow() >= tune_->BarCount()) return;
  JumpAndGoOn(Narrow<std::int16_t>(BarNow() + 1));
}

void PlayBar::Back() {
  if (!tune_ || BarNow() <= 1) return;
  JumpAndGoOn(Narrow<std::int16_t>(BarNow() - 1));
}

void PlayBar::Rewind() {
  if (!tune_) return;
  const QPointer<PlayBar> self(this);
  tune_->Stopit();
  if (!self || !tune_) return;
  StandAt(1, 1);
  Q_EMIT OtherButtonClicked(StartBar());
}

void PlayBar::GoToEnd() {
  if (!tune_) return;
  const QPointer<PlayBar> self(this);
  tune_->Stopit();
  if (!self || !tune_) return;
  const std::int16_t last = std::max<std::int16_t>(tune_->BarCount(), 1);
  StandAt(last, FirstBeatOf(last));
  Q_EMIT OtherButtonClicked(StartBar());
}

void PlayBar::GoToBar() {
  if (!tune_) return;
  const QPointer<PlayBar> self(this);
  const std::shared_ptr<zelmar::Tune> tune = tune_;
  if (tune->Playing()) tune->Stopit();
  if (!self) return;
  const QString answer = InputBox(QStringLiteral("Jump to a new bar"), QStringLiteral("Which Bar?"),
                                  QString::number(tune->BarNumber()));
  if (!self || answer.isEmpty()) return;
  bool numeric = false;
  const double wanted = answer.trimmed().toDouble(&numeric);
  if (!numeric || !std::isfinite(wanted)) {
    ShowMessage(MessageIcon::kExclamation, QStringLiteral("Please use only numerical digits for bar numbers"),
                QStringLiteral("New bar must be a numeric"));
    return;
  }
  const std::int16_t bars = tune->BarCount();
  if (wanted < 1 || wanted > bars) {
    ShowMessage(MessageIcon::kExclamation,
                QStringLiteral("Bar number must be between 1 and ") + QString::number(bars));
    return;
  }
  if (tune_ != tune) return;
  const auto bar = RoundHalfEven<std::int16_t>(wanted);
  StandAt(bar, FirstBeatOf(bar) - 1);
  Q_EMIT OtherButtonClicked(bar);
}

void PlayBar::PlaySlider_Change(int beats) {
  if (!tune_) return;
  const int per_bar = std::max<int>(tune_->BeatsPerBar(), 1);
  const auto bar = IntegerPart<std::int16_t>((beats + per_bar - 1.0) / per_bar);
  const auto beat = Narrow<std::int16_t>(beats - (bar - 1) * per_bar);
  lblMyBar_->setText(QString::number(bar));
  lblMyBeat_->setText(QString::number(beat));
  SetStartBar(bar);
  lblMyTempo_->setText(QString::number(TempoAt(bar, beat)));
  Q_EMIT SliderMoved(bar, beat);
}

void PlayBar::TempoSlider_Change(int tempo) {
  lblMyTempo_->setText(QString::number(tempo));
  if (tune_) tune_->SetTempo(Narrow<std::int16_t>(tempo));
}

void PlayBar::chkMetronome_Click(bool checked) {
  if (!tune_) return;
  tune_->SetHearTick(checked ? 1 : 0);
  tune_->SetMetroVolume(127);
}

void PlayBar::SetPlaySlider(std::int32_t beats) {
  const QSignalBlocker quiet(PlaySlider_);
  PlaySlider_->setValue(beats);
}

void PlayBar::SetTempoSlider(int tempo) {
  const QSignalBlocker quiet(TempoSlider_);
  TempoSlider_->setValue(tempo);
}

// --- Keys
// -------------------------------------------------------------------------------------------------------------

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

}  // namespace zelmar
