#include "notation/ctl_quil_staff.h"

#include <QEvent>
#include <QTimer>

#include "notation/staff_alignment.h"
#include "notation/staff_cursor.h"
#include "platform/ignoring_failures.h"
#include "platform/numbers.h"

namespace zelmar {

namespace {

constexpr int kWordsHeight = 22;  // pixels
constexpr int kMinimumWidth = 120;
constexpr int kMinimumHeight = 60;
constexpr int kUsualWidth = 420;
constexpr int kUsualHeight = 130;

}  // namespace

CtlQuilStaff::CtlQuilStaff(QWidget* parent)
    : QWidget(parent),
      picBox_(new StaffSurface("picBox", StaffSurfaceDrawing(), this)),
      picWords_(new StaffSurface("picWords", WordsSurfaceDrawing(), this)),
      BeatMarker_(new StaffItem("BeatMarker", StaffItem::Look::kBlock, picBox_)),
      GuideLine_{new StaffItem("GuideLine", StaffItem::Look::kLine, picBox_)},
      cursor_(new StaffCursor(picBox_)),
      ring_(new FocusRing(this)) {
  setObjectName(QStringLiteral("ctlQuilStaff"));
  setFocusPolicy(Qt::StrongFocus);
  last_track_.SetDefaultVolume(0);
  picWords_->hide();
}

CtlQuilStaff::~CtlQuilStaff() {
  // A note that was held down ends with its staff.
  IgnoringFailures([this] { EndSound(); });
  // A tune that plays goes on without its staff.
  if (ThisTune()) ThisTune()->disconnect(this);
}

QSize CtlQuilStaff::sizeHint() const {
  return {kUsualWidth, kUsualHeight};
}

QSize CtlQuilStaff::minimumSizeHint() const {
  return {kMinimumWidth, kMinimumHeight};
}

void CtlQuilStaff::Setup(std::shared_ptr<Tune> tune) {
  const std::int16_t bar_count = tune ? tune->BarCount() : std::int16_t{0};
  Setup(std::move(tune), bar_count);
}

void CtlQuilStaff::Setup(std::shared_ptr<Tune> tune, std::int16_t bar_count) {
  if (ThisTune() != tune) {
    if (ThisTune()) ThisTune()->disconnect(this);
    if (tune) {
      connect(tune.get(), &Tune::Ticked, this, &CtlQuilStaff::ThisTune_Ticked);
      connect(tune.get(), &Tune::Rewound, this, &CtlQuilStaff::ThisTune_Rewound);
    }
    ThisTone_.reset();
    MatchIndex_ = 0;
    DraggingNote_ = false;
  }
  Attach(std::move(tune), bar_count);
  LoadGuideLines();
  SizeSurfaces();
  PaintSoon();
}

void CtlQuilStaff::ClearStaff() {
  BarDrawing::ClearStaff();
  BeatMarker_->hide();
  for (StaffItem* line : GuideLine_) line->hide();
}

void CtlQuilStaff::DisplayBar(std::int16_t bar, std::int16_t track, std::int32_t red_index,
                              std::int32_t blue_index) {
  // Whoever has a bar drawn wants to see that one.
  paint_due_ = false;
  const QPointer<CtlQuilStaff> here(this);
  BarDrawing::DisplayBar(bar, track, red_index, blue_index);
  if (here) PlaceGuideLines();
}

void CtlQuilStaff::RePaint() {
  paint_due_ = false;
  // A message about the bar may be on show, and whatever that lays bare asks for a repaint.
  if (painting_) return;
  painting_ = true;
  const QPointer<CtlQuilStaff> here(this);
  try {
    SizeSurfaces();
    DisplayBar(CurrentBar(), SelectedTrack(), NoteColour1(), NoteColour2());
    if (here && ShowRests()) DisplayRests(CurrentBar(), SelectedTrack());
  } catch (...) {
    if (here) painting_ = false;
    throw;
  }
  if (here) painting_ = false;
}

void CtlQuilStaff::PerformAlign() {
  const std::shared_ptr<Tune> tune = ThisTune();
  if (!tune) return;
  for (const auto& tone : *tune) {
    if (tone->EventType() != MUSIC_NOTE || tone->Track() != SelectedTrack()) continue;
    AlignNote(*tone, SaveDurations(), AlignBoundaries());
  }
  if (SaveDurations() || AlignBoundaries()) {
    // Notes that moved stand out of order, and every bar is found by the order.
    tune->SetChangedSinceLastSaved(true);
    tune->CalcNotesOff();
    tune->SortStartTimes();
  }
  Setup(tune);
}

void CtlQuilStaff::resizeEvent(QResizeEvent*) {
  SizeSurfaces();
  ring_->FitParent();
  if (cursor_->isVisibleTo(this)) ShowCursor();
  PaintSoon();
}

void CtlQuilStaff::showEvent(QShowEvent*) {
  if (paint_due_) RePaint();
}

void CtlQuilStaff::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) PaintSoon();
}

InkColour CtlQuilStaff::SystemColour(std::uint32_t) const {
  // The paper is light in every theme, so a light text colour would vanish on it.
  const QColor text = palette().color(QPalette::ButtonText);
  if (text.lightness() > 127) return kBlackInk;
  return static_cast<InkColour>(text.red() | text.green() << 8 | text.blue() << 16);
}

void CtlQuilStaff::SizeSurfaces() {
  const int words = ShowWords() ? std::min(kWordsHeight, height()) : 0;
  picWords_->setVisible(ShowWords());
  picBox_->setGeometry(0, 0, width(), height() - words);
  picWords_->setGeometry(0, height() - words, width(), words);
  SetSurfaceSize(picBox_->Width(), picBox_->Height(), height() * kTwipsPerPixel);
}

void CtlQuilStaff::LoadGuideLines() {
  const auto wanted = static_cast<std::size_t>(std::max<int>(BeatsPerBar(), 1));
  while (GuideLine_.size() > wanted) {
    delete GuideLine_.back();
    GuideLine_.pop_back();
  }
  while (GuideLine_.size() < wanted)
    GuideLine_.push_back(new StaffItem("GuideLine", StaffItem::Look::kLine, picBox_));
}

void CtlQuilStaff::PlaceGuideLines() {
  const bool shown = ShowBeatLines() && ThisTune();
  for (std::size_t i = 0; i < GuideLine_.size(); ++i) {
    StaffItem& line = *GuideLine_[i];
    line.SetPlace({XOf(static_cast<std::int16_t>(i + 1), 0), 3.0 * LineGap(), 0.0, 6.0 * LineGap()});
    line.setVisible(shown);
  }
}

void CtlQuilStaff::PaintSoon() {
  if (paint_due_) return;
  paint_due_ = true;
  QTimer::singleShot(0, this, [this] {
    if (paint_due_) RePaint();
  });
}

}  // namespace zelmar
