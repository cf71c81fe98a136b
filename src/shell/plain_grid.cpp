#include "shell/plain_grid.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

#include "platform/widgets/spacing.h"
#include "shell/table_model.h"

namespace zelmar {

namespace {

// A cell goes into a line of text as it is, but for what would end the cell or the line.
QString OnOneLine(QString text) {
  return text.replace(QLatin1Char('\t'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
}

QAbstractItemView::SelectionMode ModeOf(Selecting selecting) {
  return selecting == Selecting::kRowRange ? QAbstractItemView::ContiguousSelection
                                           : QAbstractItemView::SingleSelection;
}

// Headings whose arrow points up where the values rise, with room for it behind words at the right.
class GridHeads : public QHeaderView {
 public:
  explicit GridHeads(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) { setHighlightSections(false); }

 protected:
  void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override {
    QHeaderView::initStyleOptionForIndex(option, section);
    if (option->sortIndicator == QStyleOptionHeader::None) return;
    option->sortIndicator = sortIndicatorOrder() == Qt::AscendingOrder ? QStyleOptionHeader::SortUp
                                                                       : QStyleOptionHeader::SortDown;
    // Blanks that break no line count as letters.
    if (option->textAlignment.testFlag(Qt::AlignRight)) option->text += QString(4, QChar::Nbsp);
  }
};

}  // namespace

PlainGrid::PlainGrid(QWidget* parent) : QTableView(parent) {
  setHorizontalHeader(new GridHeads(this));
  setTabKeyNavigation(false);
  setEditTriggers(NoEditTriggers);
  setAlternatingRowColors(true);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setHorizontalScrollMode(ScrollPerPixel);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  connect(this, &QTableView::clicked, this,
          [this](const QModelIndex& index) { Q_EMIT Chosen(rows_->RowAt(index.row())); });
}

void PlainGrid::SetUp(TableModel* model, const GridSetup& setup) {
  rows_ = model;
  when_empty_ = setup.when_empty;
  setModel(model);
  setSelectionBehavior(setup.selecting == Selecting::kOneCell ? SelectItems : SelectRows);
  setSelectionMode(ModeOf(setup.selecting));
  QHeaderView* const heads = horizontalHeader();
  heads->setSortIndicatorClearable(true);
  heads->setSortIndicator(-1, Qt::AscendingOrder);
  setSortingEnabled(setup.sorting == Sorting::kByHeading);
  heads->setSectionsClickable(setup.sorting == Sorting::kByHeading);
  SetSizes();
  if (setup.stretched >= 0) heads->setSectionResizeMode(setup.stretched, QHeaderView::Stretch);
  connect(model, &QAbstractItemModel::modelReset, this, &PlainGrid::TellWhenEmpty);
  connect(model, &QAbstractItemModel::rowsInserted, this, &PlainGrid::TellWhenEmpty);
  connect(model, &QAbstractItemModel::rowsRemoved, this, &PlainGrid::TellWhenEmpty);
  TellWhenEmpty();
}

// In letters of the font, so that a larger one cuts nothing off.
void PlainGrid::SetSizes() {
  const QFontMetrics letters(fontMetrics());
  verticalHeader()->setDefaultSectionSize(letters.height() + spacing::kSmall + spacing::kHair);
  if (rows_ == nullptr) return;
  // Before the first show the headings have no style of their own yet.
  horizontalHeader()->ensurePolished();
  for (int column = 0; column < rows_->columnCount(); ++column) {
    const int told = rows_->Column(column).width * letters.averageCharWidth() + 2 * spacing::kSmall;
    setColumnWidth(column, std::max(told, horizontalHeader()->sectionSizeHint(column)));
  }
}

std::vector<int> PlainGrid::SelectedRows() const {
  std::vector<int> rows;
  if (selectionModel() == nullptr) return rows;
  for (const QItemSelectionRange& range : selectionModel()->selection())
    for (int place = range.top(); place <= range.bottom(); ++place) rows.push_back(rows_->RowAt(place));
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

int PlainGrid::CurrentRow() const {
  return currentIndex().isValid() ? rows_->RowAt(currentIndex().row()) : -1;
}

void PlainGrid::SelectRow(int row) {
  const int place = rows_->PlaceOf(row);
  if (place < 0) return;
  const int column = currentIndex().isValid() ? currentIndex().column() : 0;
  setCurrentIndex(rows_->index(place, column));
}

void PlainGrid::ScrollToTop(int row) {
  const int place = rows_->PlaceOf(row);
  if (place >= 0) scrollTo(rows_->index(place, 0), PositionAtTop);
}

QString PlainGrid::SelectionAsText() const {
  if (selectionModel() == nullptr) return {};
  QList<QItemSelectionRange> ranges = selectionModel()->selection();
  std::sort(ranges.begin(), ranges.end(), [](const auto& a, const auto& b) { return a.top() < b.top(); });
  QString text;
  for (const QItemSelectionRange& range : std::as_const(ranges))
    for (int place = range.top(); place <= range.bottom(); ++place) {
      for (int column = range.left(); column <= range.right(); ++column) {
        if (column > range.left()) text += QLatin1Char('\t');
        text += OnOneLine(rows_->index(place, column).data().toString());
      }
      text += QLatin1Char('\n');
    }
  // One row is a text to go into a line elsewhere.
  return text.count(QLatin1Char('\n')) == 1 ? text.chopped(1) : text;
}

void PlainGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (current.row() != previous.row()) Q_EMIT RowChanged(CurrentRow());
}

// --- Keys ---

bool PlainGrid::event(QEvent* event) {
  // The key of copying is a command of the menu elsewhere.
  if (event->type() == QEvent::ShortcutOverride &&
      static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy) && !SelectedRows().empty()) {
    event->accept();
    return true;
  }
  return QTableView::event(event);
}

void PlainGrid::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy) && !SelectedRows().empty()) {
    QApplication::clipboard()->setText(SelectionAsText());
    return;
  }
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!enter || !currentIndex().isValid()) {
    QTableView::keyPressEvent(event);
    return;
  }
  // The default button of a dialogue does not get it too.
  event->accept();
  Q_EMIT Chosen(CurrentRow());
}

// --- Looks ---

void PlainGrid::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) SetSizes();
}

void PlainGrid::TellWhenEmpty() {
  const bool empty = rows_->rowCount() == 0;
  setAccessibleDescription(empty ? when_empty_ : QString());
  viewport()->update();
}

void PlainGrid::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (rows_ == nullptr || rows_->rowCount() > 0 || when_empty_.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  const QRect room =
      viewport()->rect().adjusted(spacing::kLarge, spacing::kLarge, -spacing::kLarge, -spacing::kLarge);
  painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, when_empty_);
}

bool PlainGrid::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QTableView::viewportEvent(event);
  ShowWholeText(static_cast<QHelpEvent*>(event)->pos());
  return true;
}

void PlainGrid::ShowWholeText(const QPoint& place) {
  const QModelIndex index = indexAt(place);
  const bool cut_off = index.isValid() && sizeHintForIndex(index).width() > visualRect(index).width();
  if (!cut_off) {
    QToolTip::hideText();
    return;
  }
  QToolTip::showText(viewport()->mapToGlobal(place), index.data().toString().toHtmlEscaped(), viewport(),
                     visualRect(index));
}

}  // namespace zelmar
