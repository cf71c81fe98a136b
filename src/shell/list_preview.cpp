#include "shell/list_preview.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStandardPaths>
#include <QToolButton>
#include <cmath>

#include "platform/file_names.h"
#include "platform/services.h"
#include "platform/whole_file.h"
#include "platform/widgets/icons.h"
#include "platform/widgets/page_printing.h"
#include "platform/widgets/spacing.h"
#include "shell/find_bar.h"
#include "shell/list_painting.h"
#include "shell/page_canvas.h"

namespace zelmar {

namespace {

constexpr double kSliceSeconds = 0.02;  // of laying out between two looks at the queue
constexpr int kIconSize = 20;
constexpr int kZoomStep = 25;  // percent

// The sizes to choose from; those without a percentage fit the page to the window.
struct SizeChoice {
  const char* text;
  PageCanvas::Fit fit;
  int percent;
};
constexpr SizeChoice kSizes[] = {
    {"Page width", PageCanvas::Fit::kPageWidth, 0}, {"Whole page", PageCanvas::Fit::kWholePage, 0},
    {"50%", PageCanvas::Fit::kPercent, 50},         {"75%", PageCanvas::Fit::kPercent, 75},
    {"100%", PageCanvas::Fit::kPercent, 100},       {"125%", PageCanvas::Fit::kPercent, 125},
    {"150%", PageCanvas::Fit::kPercent, 150},       {"200%", PageCanvas::Fit::kPercent, 200},
};

QHBoxLayout* Row(std::initializer_list<QWidget*> widgets) {
  auto* row = new QHBoxLayout;
  row->setSpacing(spacing::kTight);
  for (QWidget* widget : widgets) row->addWidget(widget);
  return row;
}

}  // namespace

ListPreview::ListPreview(PrintedList list, QWidget* parent)
    : QWidget(parent),
      list_(std::make_shared<PrintedList>(std::move(list))),
      lettering_(std::make_shared<ListLettering>(list_->point_size)) {
  const QPageLayout paper = UsualPaper();
  const QSizeF room = paper.paintRect(QPageLayout::Point).size();
  layout_ = std::make_unique<ListLayout>(list_, lettering_, room.width(), room.height());
  canvas_ = new PageCanvas(layout_.get(), lettering_, paper, this);
  canvas_->setObjectName(QStringLiteral("picPages"));
  find_ = new FindBar(tr("Find in the list"), this);

  auto* bar = new QHBoxLayout;
  bar->setSpacing(spacing::kMedium);
  bar->addLayout(MakeMoves());
  bar->addLayout(MakeSizes());
  bar->addWidget(find_, 1);
  bar->addLayout(MakeWaysOut());
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(spacing::kMedium, spacing::kSmall, spacing::kMedium, spacing::kMedium);
  column->setSpacing(spacing::kSmall);
  column->addLayout(bar);
  column->addWidget(canvas_, 1);
  setFocusProxy(canvas_);

  connect(canvas_, &PageCanvas::PageChanged, this, &ListPreview::ShowPageNumber);
  connect(canvas_, &PageCanvas::PercentChanged, this, &ListPreview::ShowSize);
  connect(find_, &FindBar::Typed, this, &ListPreview::Find);
  connect(find_, &FindBar::MatchWanted, canvas_, &PageCanvas::ShowHit);
  connect(&more_, &QTimer::timeout, this, &ListPreview::LayOutMore);
  layout_->AddPage();
  canvas_->TakePages();
  ShowPageNumber();
  ShowSize();
  if (!layout_->Finished()) more_.start(0);
}

ListPreview::~ListPreview() = default;

// --- The pages ---

void ListPreview::LayOutMore() {
  const double start = SecondsSinceMidnight();
  do layout_->AddPage();
  while (!layout_->Finished() && std::abs(SecondsSinceMidnight() - start) < kSliceSeconds);
  if (layout_->Finished()) more_.stop();
  canvas_->TakePages();
  ShowPageNumber();
  if (layout_->Finished() && !find_->Text().isEmpty()) Find();
  Q_EMIT LaidOut(layout_->Percent());
}

void ListPreview::ShowPageNumber() {
  const QSignalBlocker quiet(numPage_);
  const int count = layout_->PageCount();
  const int page = canvas_->CurrentPage();
  numPage_->setRange(1, count);
  numPage_->setValue(page);
  lblPages_->setText(layout_->Finished() ? tr("of %1").arg(count) : tr("of %1...").arg(count));
  cmdPreviousPage_->setEnabled(page > 1);
  cmdNextPage_->setEnabled(page < count);
}

QToolButton* ListPreview::Button(const char* name, const char* icon, const QString& text,
                                 const QString& hint) {
  auto* button = new QToolButton(this);
  button->setObjectName(QLatin1String(name));
  if (icon != nullptr) button->setIcon(IconOf(QLatin1String(icon)));
  button->setIconSize(QSize(kIconSize, kIconSize));
  button->setText(text);
  button->setToolButtonStyle(text.isEmpty()    ? Qt::ToolButtonIconOnly
                             : icon == nullptr ? Qt::ToolButtonTextOnly
                                               : Qt::ToolButtonTextBesideIcon);
  button->setToolTip(hint);
  button->setAccessibleName(hint);
  button->setFocusPolicy(Qt::StrongFocus);
  return button;
}

QHBoxLayout* ListPreview::MakeMoves() {
  QToolButton* const first = Button("cmdFirstPage", "first", {}, tr("First page"));
  cmdPreviousPage_ = Button("cmdPreviousPage", "arrow_left", {}, tr("Previous page"));
  cmdNextPage_ = Button("cmdNextPage", "arrow_right", {}, tr("Next page"));
  QToolButton* const last = Button("cmdLastPage", "last", {}, tr("Last page"));
  numPage_ = new QSpinBox(this);
  numPage_->setObjectName(QStringLiteral("numPage"));
  numPage_->setAccessibleName(tr("Page"));
  numPage_->setButtonSymbols(QAbstractSpinBox::NoButtons);
  numPage_->setAlignment(Qt::AlignRight);
  numPage_->setKeyboardTracking(false);
  numPage_->setFixedWidth(spacing::kHuge + spacing::kMedium);
  lblPages_ = new QLabel(this);
  lblPages_->setObjectName(QStringLiteral("lblPages"));
  lblPages_->setMinimumWidth(lblPages_->fontMetrics().horizontalAdvance(tr("of %1...").arg(999)));
  connect(first, &QToolButton::clicked, canvas_, [this] { canvas_->ShowPage(1); });
  connect(cmdPreviousPage_, &QToolButton::clicked, canvas_,
          [this] { canvas_->ShowPage(canvas_->CurrentPage() - 1); });
  connect(cmdNextPage_, &QToolButton::clicked, canvas_,
          [this] { canvas_->ShowPage(canvas_->CurrentPage() + 1); });
  connect(last, &QToolButton::clicked, canvas_, [this] { canvas_->ShowPage(layout_->PageCount()); });
  connect(numPage_, &QSpinBox::valueChanged, canvas_, &PageCanvas::ShowPage);
  return Row({first, cmdPreviousPage_, numPage_, lblPages_, cmdNextPage_, last});
}

// --- Sizes ---

QHBoxLayout* ListPreview::MakeSizes() {
  QToolButton* const out = Button("cmdZoomOut", "zoom_out", {}, tr("Smaller"));
  QToolButton* const in = Button("cmdZoomIn", "zoom_in", {}, tr("Larger"));
  connect(out, &QToolButton::clicked, canvas_,
          [this] { canvas_->SetPercent(canvas_->Percent() - kZoomStep); });
  connect(in, &QToolButton::clicked, canvas_,
          [this] { canvas_->SetPercent(canvas_->Percent() + kZoomStep); });
  cboZoom_ = new QComboBox(this);
  cboZoom_->setObjectName(QStringLiteral("cboZoom"));
  cboZoom_->setAccessibleName(tr("Size of the pages"));
  for (const SizeChoice& size : kSizes) cboZoom_->addItem(tr(size.text));
  connect(cboZoom_, &QComboBox::activated, this, &ListPreview::ChooseSize);
  return Row({out, cboZoom_, in});
}

void ListPreview::ChooseSize(int choice) {
  const SizeChoice& size = kSizes[choice];
  if (size.fit == PageCanvas::Fit::kPercent)
    canvas_->SetPercent(size.percent);
  else
    canvas_->SetFit(size.fit);
  ShowSize();
}

void ListPreview::ShowSize() {
  int choice = -1;
  for (int i = 0; i < static_cast<int>(std::size(kSizes)); ++i)
    if (kSizes[i].fit == canvas_->HowItFits() &&
        (kSizes[i].fit != PageCanvas::Fit::kPercent || kSizes[i].percent == canvas_->Percent()))
      choice = i;
  cboZoom_->setPlaceholderText(QStringLiteral("%1%").arg(canvas_->Percent()));
  cboZoom_->setCurrentIndex(choice);
}

// --- Searching ---

void ListPreview::Find() {
  std::vector<ListHit> hits;
  for (int page = 1; page <= layout_->PageCount(); ++page)
    for (FoundPlace& place : FindOnPage(layout_->Page(page), find_->Text()))
      hits.push_back({page, std::move(place)});
  const std::size_t count = hits.size();
  canvas_->SetHits(std::move(hits));
  find_->SetMatches(count);
}

// --- Ways out ---

QHBoxLayout* ListPreview::MakeWaysOut() {
  QToolButton* const print = Button("cmdPrint", "print", tr("Print..."), tr("Print the list"));
  QToolButton* const pdf = Button("cmdSavePdf", nullptr, tr("PDF..."), tr("Save the list as a PDF file"));
  QToolButton* const csv = Button("cmdSaveCsv", nullptr, tr("CSV..."),
                                  tr("Save the rows as comma-separated values, for a spreadsheet"));
  connect(print, &QToolButton::clicked, this, &ListPreview::Print);
  connect(pdf, &QToolButton::clicked, this, &ListPreview::SavePdf);
  connect(csv, &QToolButton::clicked, this, &ListPreview::SaveCommaSeparated);
  return Row({print, pdf, csv});
}

void ListPreview::Print() {
  ListPages pages(list_);
  if (const auto printer = Platform().printer) printer->PrintPages(pages);
}

QString ListPreview::AskForFile(const QString& title, const QString& filter, const QString& ending) const {
  const QString name = list_->title + ending;
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  const QString proposed = folder + u'/' + (IsPlainFileName(name) ? name : QStringLiteral("List") + ending);
  QString path = ChooseFile(FileChoice::kSave, title, filter, proposed);
  if (path.isEmpty() || !QFileInfo(path).suffix().isEmpty()) return path;
  // The chooser asked about the file as it was named.
  path += ending;
  if (!QFileInfo::exists(path)) return path;
  const MessageAnswer answer = ShowMessage(
      MessageIcon::kQuestion, QStringLiteral("There is a file %1 already. Shall it be replaced?").arg(path),
      title, MessageButtons::kYesNo, MessageAnswer::kNo);
  return answer == MessageAnswer::kYes ? path : QString();
}

void ListPreview::SavePdf() {
  // The list may outlive its window while the chooser is open.
  const auto list = list_;
  const QString path =
      AskForFile(tr("Save as PDF"), QStringLiteral("PDF files (*.PDF)|*.PDF"), QStringLiteral(".pdf"));
  if (path.isEmpty()) return;
  ListPages pages(list);
  WritePdf(pages, path);
}

void ListPreview::SaveCommaSeparated() {
  const auto list = list_;
  const QString path =
      AskForFile(tr("Save as comma-separated values"), QStringLiteral("Comma-separated values (*.CSV)|*.CSV"),
                 QStringLiteral(".csv"));
  if (!path.isEmpty()) WriteWholeFile(path, CommaSeparated(*list));
}

}  // namespace zelmar
