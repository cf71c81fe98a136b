#include "editors/frm_edit_staff.h"

#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

#include "midi/widgets/play_bar.h"
#include "model/tune.h"
#include "model/tune_text.h"
#include "notation/track_staff.h"
#include "platform/numbers.h"
#include "platform/widgets/icons.h"
#include "platform/widgets/spacing.h"
#include "platform/widgets/widget_services.h"
#include "shell/command_table.h"
#include "shell/window_catalogue.h"

namespace zelmar {

FrmEditStaff::FrmEditStaff()
    : TuneWindow(QStringLiteral("frmEditStaff")),
      strip_(new TrackStaff(this)),
      lblNoTune_(new QLabel(tr("No tune loaded. Press Ctrl+O to open one."), this)) {
  setWindowTitle(FrmEditStaff::CaptionFor(nullptr));
  setWindowIcon(IconOf(QStringLiteral("note"), IconTone::kAccent));
  strip_->setObjectName(QStringLiteral("MyTrackStaff(0)"));
  connect(strip_, &TrackStaff::TuneChanged, this, &FrmEditStaff::MyTrackStaff_TuneChanged);
  lblNoTune_->setObjectName(QStringLiteral("lblNoTune"));
  lblNoTune_->setAlignment(Qt::AlignCenter);
  const QString right_button =
      IsMissing(QStringLiteral("dialogEditNote"))
          ? tr("Right button with Shift: double it.  With Ctrl: delete it.  F1 tells the keys.")
          : tr("Right button: edit the note.  With Shift: double it.  With Ctrl: delete it.  F1 tells the "
               "keys.");
  auto* const hint = new QLabel(
      tr("Click a line or space to add a note, or a note to hear it.  Shift: halve it.  Ctrl: drag it.\n") +
          right_button,
      this);
  hint->setObjectName(QStringLiteral("lblHint"));
  hint->setAlignment(Qt::AlignCenter);
  hint->setForegroundRole(QPalette::PlaceholderText);
  hint->setWordWrap(true);

  // The staves lie on a sheet of paper, light in either colour scheme.
  auto* const paper = new QFrame(this);
  paper->setObjectName(QStringLiteral("Paper"));
  paper->setStyleSheet(QStringLiteral(
      "QFrame#Paper { background: white; border: 1px solid palette(mid); border-radius: 8px; }"));
  auto* const sheet = new QVBoxLayout(paper);
  sheet->setContentsMargins(spacing::kMedium, spacing::kMedium, spacing::kMedium, spacing::kMedium);
  sheet->addWidget(strip_);

  auto* const page = new QVBoxLayout;
  page->setContentsMargins(spacing::kLarge, spacing::kLarge, spacing::kLarge, spacing::kLarge);
  page->setSpacing(spacing::kMedium);
  page->addStretch(1);
  page->addWidget(lblNoTune_);
  page->addWidget(paper);
  page->addWidget(hint);
  page->addStretch(2);
  SetPage(page);
  connect(Bar(), &PlayBar::PlayClicked, this, [this] { ShowBar(Bar()->StartBar()); });
  connect(Bar(), &PlayBar::OtherButtonClicked, this, &FrmEditStaff::ShowBar);
  connect(Bar(), &PlayBar::SliderMoved, this, &FrmEditStaff::ShowBar);
}

QString FrmEditStaff::CaptionFor(const Tune* tune) const {
  const QString window = QString(kApplicationTitle) + QStringLiteral(" - Staff view");
  return tune == nullptr ? window : window + QStringLiteral(" of ") + NameInWindows(*tune);
}

void FrmEditStaff::ShowTune(const std::shared_ptr<Tune>& tune) {
  lblNoTune_->hide();
  const std::shared_ptr<Tune> before = strip_->Tune();
  if (before == tune) {
    strip_->RefreshAllStaffs(strip_->LeftMostbar());
    return;
  }
  if (before) before->disconnect(this);
  // Behind the staves, whichever of them hears of a beat later.
  connect(tune.get(), &Tune::Ticked, this, &FrmEditStaff::CatchUp, Qt::QueuedConnection);
  strip_->SetTune(tune);
  strip_->SetTrackNumber(tune->MelodyTrack());
  strip_->LoadBarsAcross(QStringLiteral("Best"));
}

void FrmEditStaff::ShowTitleOfTune() {
  TuneWindow::ShowTitleOfTune();
  // The title stands at the head of the staff too.
  if (strip_->Tune()) strip_->RefreshAllStaffs(strip_->LeftMostbar());
}

void FrmEditStaff::ShowBar(std::int16_t bar) {
  const auto& tune = strip_->Tune();
  // What plays shows its own bar.
  if (tune && !tune->Playing()) strip_->RefreshAllStaffs(bar);
}

void FrmEditStaff::CatchUp() {
  const auto& tune = strip_->Tune();
  if (!tune || !tune->Playing()) return;
  const int behind = tune->BarNumber() - strip_->LeftMostbar();
  if (behind < 0 || behind >= static_cast<int>(strip_->MyStaff().size()))
    strip_->RefreshAllStaffs(tune->BarNumber());
}

// The tune may have grown by bars that the transport bar does not know yet.
void FrmEditStaff::MyTrackStaff_TuneChanged() {
  if (const auto& tune = strip_->Tune(); tune && !tune->Playing()) Bar()->SetTune(tune);
}

}  // namespace zelmar
