// The places in a tune that the transport bar stands at and jumps to.

#include <QLabel>
#include <QPointer>
#include <QSlider>
#include <cmath>

#include "midi/widgets/play_bar.h"
#include "platform/numbers.h"
#include "platform/services.h"

namespace zelmar {

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
  const std::shared_ptr<zelmar::Tune> tune = tune_;
  if (!tune->Playing()) {
    StandAt(bar, FirstBeatOf(bar));
    Q_EMIT OtherButtonClicked(StartBar());
    return;
  }
  const QPointer<PlayBar> self(this);
  // The jump before this one is told of when this one has taken its place.
  const bool takes_the_place_of_another = jump_ != nullptr;
  jump_.reset();
  tune->Stopit();
  if (!self || !tune_) return;
  StandAt(bar, FirstBeatOf(bar));
  Run(Start::kInPlayUnderWay);
  if (!self) return;
  const bool goes_on = tune->Playing();
  if (goes_on) TellOfJumpAfterItsPlaying(tune);
  if (takes_the_place_of_another) Q_EMIT OtherButtonClicked(StartBar());
  if (self && !goes_on) Q_EMIT OtherButtonClicked(StartBar());
}

void PlayBar::TellOfJumpAfterItsPlaying(const std::shared_ptr<zelmar::Tune>& tune) {
  jump_ = std::make_unique<QObject>();
  const auto tell = [this] {
    jump_.reset();
    Q_EMIT OtherButtonClicked(StartBar());
  };
  connect(tune.get(), &zelmar::Tune::Finished, jump_.get(), tell);
  // The tune lives as long as it raises anything.
  connect(tune.get(), &zelmar::Tune::Ticked, jump_.get(),
          [playing = tune.get(), timer = tune->TuneQuilTimer(), tell] {
            if (playing->TuneQuilTimer() != timer) tell();
          });
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

}  // namespace zelmar
