#include "notation/track_staff.h"

#include <algorithm>
#include <limits>

#include "model/globals.h"
#include "platform/numbers.h"

namespace zelmar {

namespace {

// In twips. More staves in a row are narrower, and lower for that.
constexpr double kLowestStaff = 1500.0;
constexpr double kHeightOfTheRow = 1500.0;
constexpr int kNarrowestStaff = 90;  // pixels

const QString kUntitled = QStringLiteral("No Title Yet");
const QString kBest = QStringLiteral("Best");

constexpr std::int16_t kMiddleC = 60;
constexpr std::int16_t kHighestNumber = 127;
// A track without a lower note goes on a treble staff, one without a higher note on a bass staff.
constexpr std::int16_t kLowestOfTreble = 58;
constexpr std::int16_t kHighestOfBass = 62;

// A number that no track can have stands for none, which leaves the choice to the staff.
std::uint8_t TrackOf(std::int16_t number) {
  return number < 0 || number > std::numeric_limits<std::uint8_t>::max() ? std::uint8_t{0}
                                                                         : static_cast<std::uint8_t>(number);
}

}  // namespace

TrackStaff::TrackStaff(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  MyStaff_.push_back(MakeStaff(0));
  setFixedHeight(StaffHeight());
  TellName();
}

void TrackStaff::SetTune(std::shared_ptr<zelmar::Tune> tune) {
  tune_ = std::move(tune);
  if (tune_) return;
  // Nothing follows a tune that was taken away.
  for (CtlQuilStaff* staff : MyStaff_) staff->Setup(nullptr);
  TellName();
}

void TrackStaff::TellName() {
  std::int16_t first = 0, last = 0;
  for (const CtlQuilStaff* staff : MyStaff_) {
    const std::int16_t bar = staff->ShownBar();
    if (bar == 0) continue;
    if (first == 0) first = bar;
    last = std::max(last, bar);
  }
  QString name = tr("Staves without a tune");
  if (tune_) {
    name = tr("Staff of %1").arg(MyStaff_.front()->SpokenTrack());
    if (first != 0) name += tr(", bar %1").arg(first);
    if (last > first) name += tr(" to %1").arg(last);
  }
  if (name != accessibleName()) setAccessibleName(name);
}

int TrackStaff::StaffCount() const {
  return std::max<int>(BarsAcross(), 1);
}

int TrackStaff::StaffHeight() const {
  return static_cast<int>((kHeightOfTheRow / StaffCount() + kLowestStaff) / kTwipsPerPixel);
}

QSize TrackStaff::sizeHint() const {
  return {StaffCount() * 3 * kNarrowestStaff, StaffHeight()};
}

QSize TrackStaff::minimumSizeHint() const {
  return {std::min(StaffCount(), 4) * kNarrowestStaff, StaffHeight()};
}

CtlQuilStaff* TrackStaff::MakeStaff(int item) {
  auto* const staff = new CtlQuilStaff(this);
  staff->setObjectName(QStringLiteral("MyStaff(%1)").arg(item));
  staff->SetBarOffset(Narrow<std::int16_t>(item));
  // The last staff of the row is drawn last.
  staff->SetRenamed([this, staff] {
    if (staff == MyStaff_.back()) TellName();
  });
  connect(staff, &CtlQuilStaff::ChangedBarNumbers, this, [this] { RefreshAllStaffs(LeftMostbar()); });
  connect(staff, &CtlQuilStaff::ClickedClef, this, [this] {
    const QPointer<TrackStaff> self(this);
    Q_EMIT ClefChanged();
    if (self) RefreshAllStaffs(LeftMostbar());
  });
  connect(staff, &CtlQuilStaff::ClickedSignature, this, [this] { Q_EMIT ChangeRequested(); });
  connect(staff, &CtlQuilStaff::ClickedTopCorner, this, [this] { Q_EMIT FocusRequested(); });
  connect(staff, &CtlQuilStaff::NoteAdded, this, &TrackStaff::TuneChanged);
  return staff;
}

// A staff that goes would hand the keyboard on to whatever comes next in the window, or in another one.
void TrackStaff::KeepKeyboard() {
  const QWidget* const holder = window()->focusWidget();
  if (holder != nullptr && holder != MyStaff_.front() && isAncestorOf(holder)) MyStaff_.front()->setFocus();
}

void TrackStaff::UnloadStaffs() {
  KeepKeyboard();
  // A staff may be in the middle of the press that led here.
  for (std::size_t item = 1; item < MyStaff_.size(); ++item) {
    CtlQuilStaff* const staff = MyStaff_[item];
    staff->disconnect(this);
    staff->SetRenamed({});
    staff->Setup(nullptr);
    staff->hide();
    staff->setObjectName({});
    staff->deleteLater();
  }
  MyStaff_.resize(1);
}

void TrackStaff::PassOn(CtlQuilStaff& staff, std::int16_t bar_count) {
  const bool first = staff.BarOffset() == 0;
  staff.SetSelectedTrack(TrackOf(TrackNumber()));
  staff.SetBarsAcross(Narrow<std::int16_t>(StaffCount()));
  staff.SetShowBeatMarker(true);
  staff.SetShowClef(first);
  staff.SetShowRests(ShowRests());
  staff.SetBeamingOn(BeamingOn());
  staff.SetAllowEdits(AllowEdits());
  staff.SetShowTuneDescription(first && ShowDescription());
  staff.SetShowTrack(first && ShowTrack());
  staff.SetShowBeatLines(ShowBeatLines());
  staff.SetSaveDurations(SaveDurations());
  staff.SetAlignBoundaries(AlignBoundaries());
  staff.SetNoteColour1(NoteColour1());
  staff.SetNoteColour2(NoteColour2());
  staff.SetHelpPath(Global().HelpPath);
  staff.SetDataBasePath(Global().DatabasePath);
  staff.SetGraphicsPath(Global().HelpPath + QStringLiteral("\\Pictures"));
  staff.SetShowWords(ShowWords() && tune_->Words()->Count() > 0);
  staff.Setup(tune_, bar_count);
}

void TrackStaff::LoadBarsAcross(const QString& clef_name) {
  if (!tune_) return;
  UnloadStaffs();
  const std::int16_t bar_count = tune_->BarCount();
  PassOn(*MyStaff_.front(), bar_count);
  MyStaff_.front()->SetClef(clef_name == kBest ? BestClef() : clef_name);
  for (int item = 1; item < StaffCount(); ++item) {
    CtlQuilStaff* const staff = MakeStaff(item);
    PassOn(*staff, bar_count);
    staff->SetClef(MyStaff_.front()->Clef());
    MyStaff_.push_back(staff);
    staff->show();
    QWidget::setTabOrder(MyStaff_[static_cast<std::size_t>(item) - 1], staff);
  }
  setFixedHeight(StaffHeight());
  PlaceStaffs();
  updateGeometry();
  RefreshAllStaffs(1);
}

void TrackStaff::PlaceStaffs() {
  const int count = static_cast<int>(MyStaff_.size());
  const int each = width() / count;
  for (int item = 0; item < count; ++item)
    MyStaff_[static_cast<std::size_t>(item)]->setGeometry(item * each, 0, each, StaffHeight());
}

void TrackStaff::resizeEvent(QResizeEvent*) {
  PlaceStaffs();
}

QString TrackStaff::BestClef() const {
  const std::uint8_t track = MyStaff_.front()->SelectedTrack();
  std::int16_t high = 1, low = kHighestNumber;
  tune_->Tones()->ForEach([&](const Tone& tone) {
    if (tone.Track() != track) return;
    high = std::max(high, tone.Number());
    low = std::min(low, tone.Number());
  });
  if (low >= kLowestOfTreble) return QStringLiteral("Treble");
  if (high <= kHighestOfBass) return QStringLiteral("Bass");
  return high - kMiddleC <= kMiddleC - low ? QStringLiteral("Bass") : QStringLiteral("Treble");
}

void TrackStaff::RefreshAllStaffs(std::int16_t bar) {
  if (!tune_) return;
  const QPointer<TrackStaff> self(this);
  const auto staffs = MyStaff_;
  const std::int16_t bar_count = tune_->BarCount();
  for (CtlQuilStaff* staff : staffs) {
    const auto on_this = CheckedAdd<std::int16_t>(bar, staff->BarOffset());
    staff->SetCurrentBar(on_this);
    PassOn(*staff, bar_count);
    staff->SetClef(staffs.front()->Clef());
    staff->DisplayBar(on_this, staff->SelectedTrack(), NoteColour1(), NoteColour2());
    // A message about the bar may have closed the window.
    if (!self || MyStaff_ != staffs) return;
  }
  if (tune_->Title() != kUntitled && ShowRests()) DisplayRests();
}

void TrackStaff::DisplayRests() {
  for (CtlQuilStaff* staff : MyStaff_) staff->DisplayRests(staff->CurrentBar(), staff->SelectedTrack());
}

void TrackStaff::PerformAlign() {
  for (CtlQuilStaff* staff : MyStaff_) staff->PerformAlign();
}

}  // namespace zelmar
