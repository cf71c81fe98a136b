#include "shell/tune_window.h"

#include <QPointer>
#include <QVBoxLayout>

#include "midi/widgets/play_bar.h"
#include "model/globals.h"
#include "model/main_window_link.h"
#include "model/tune.h"
#include "shell/window_catalogue.h"

namespace zelmar {

TuneWindow::TuneWindow(const QString& system_name) : ChildWindow(system_name) {}

QVBoxLayout* TuneWindow::ColumnOverBar() {
  bar_ = new PlayBar(this);
  bar_->setObjectName(QStringLiteral("MyPlayBar"));
  bar_->SetNewTuneEnabled();
  connect(bar_, &PlayBar::NewTuneWanted, this, &TuneWindow::NewTuneWanted);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(bar_);
  return column;
}

void TuneWindow::SetPage(QWidget* page) {
  ColumnOverBar()->insertWidget(0, page, 1);
}

void TuneWindow::SetPage(QLayout* page) {
  ColumnOverBar()->insertLayout(0, page, 1);
}

void TuneWindow::Activated() {
  ShowBackGround();
  bar_->SetFormName(objectName());
  bar_->SetDeviceID(Global().MidiDeviceNumber);
  FetchTune();
}

void TuneWindow::FetchTune() {
  const std::shared_ptr<Tune> tune = CurrentTune();
  if (!tune) return;
  setWindowTitle(CaptionFor(tune.get()));
  const QPointer<TuneWindow> self(this);
  ShowTune(tune);
  if (!self) return;
  bar_->SetTune(tune);
  bar_->SetPlayStatus(tune->Playing());
}

void TuneWindow::NewTuneWanted(const QString& action, const QString&) {
  const QPointer<TuneWindow> self(this);
  if (action == QLatin1String("OpenDialog")) ShowWindow(QStringLiteral("frmOpen"));
  if (self) FetchTune();
}

void TuneWindow::ShowTitleOfTune() {
  ChildWindow::ShowTitleOfTune();
  if (const auto tune = CurrentTune()) setWindowTitle(CaptionFor(tune.get()));
}

void TuneWindow::changeEvent(QEvent* event) {
  ChildWindow::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && bar_ != nullptr) ShowBackGround();
}

void TuneWindow::ShowBackGround() {
  bar_->SetBackGround(palette().color(QPalette::Base));
}

}  // namespace zelmar
