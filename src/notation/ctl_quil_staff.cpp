#include "notation/ctl_quil_staff.h"

#include <QEvent>
#include <QTimer>

#include "notation/staff_alignment.h"
#include "notation/staff_cursor.h"
#include "notation/told_chords.h"
#include "platform/ignoring_failures.h"
#include "platform/numbers.h"
#include "platform/services.h"

namespace zelmar {

namespace {

constexpr double kWordsShare = 2.0 / 14.0;  // of the control: two line gaps, beside the twelve of the staff
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
      cursor_(new StaffCursor(picBox_)) {
  setObjectName(QStringLiteral("ctlQuilStaff"));
  setFocusPolicy(Qt::StrongFocus);
  TellName();
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
    shown_bar_ = 0;
  }
  const bool another = ThisTune() != tune;
  Attach(std::move(tune), bar_count);
  if (another) TellName();
  LoadGuideLines();
  SizeSurfaces();
  PaintSoon();
}

void CtlQuilStaff::ClearStaff() {
  BarDrawing::ClearStaff();
  BeatMarker_->hide();
  for (StaffItem* line : GuideLine_) line->hide();
  shown_bar_ = 0;
}

std::vector<ChordPlace> CtlQuilStaff::ShowBar(std::int16_t bar, std::int16_t track, std::int32_t red_index,
                                              std::int32_t blue_index) {
  // Whoever has a bar drawn wants to see that one.
  paint_due_ = false;
  auto large_chords = BarDrawing::DisplayBar(bar, track, red_index, blue_index);
  shown_bar_ = ThisTune() ? bar : std::int16_t{0};
  PlaceGuideLines();
  TellName();
  if (cursor_->isVisibleTo(this)) TellCursor();
  return large_chords;
}

void CtlQuilStaff::DisplayBar(std::int16_t bar, std::int16_t track, std::int32_t red_index,
                              std::int32_t blue_index) {
  const auto large_chords = ShowBar(bar, track, red_index, blue_index);
  TellOfLargeChords(large_chords);
}

void CtlQuilStaff::TellOfLargeChords(const std::vector<ChordPlace>& chords) {
  const QPointer<CtlQuilStaff> self(this);
  const std::shared_ptr<Tune> tune = ThisTune();
  for (const ChordPlace& chord : chords) {
    if (!self) return;
    if (ToldChords::AreNews(*tune, chord))
      ShowMessage(MessageIcon::kCritical, QStringLiteral("More than 20 notes in this chord"),
                  QStringLiteral("Not supported"));
  }
}

void CtlQuilStaff::RePaint() {
  SizeSurfaces();
  const auto large_chords = ShowBar(CurrentBar(), SelectedTrack(), NoteColour1(), NoteColour2());
  if (ShowRests()) DisplayRests(CurrentBar(), SelectedTrack());
  // Last, as whatever a box lays bare asks for a repaint, and the staff may go while it stands.
  TellOfLargeChords(large_chords);
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
  const int words = ShowWords() ? qRound(height() * kWordsShare) : 0;
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
