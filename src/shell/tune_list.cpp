#include "shell/tune_list.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QStyledItemDelegate>
#include <algorithm>

#include "platform/widgets/icons.h"
#include "platform/widgets/spacing.h"

namespace zelmar {

namespace {

constexpr int kIconSize = 16;
constexpr int kNarrowestColumn = 52;

// How much of the width a field takes beside the others.
struct FieldShare {
  const char16_t* field;
  double share;
};
constexpr FieldShare kShares[] = {{u"title", 3.0}, {u"composer", 1.4}, {u"length", 0.8}, {u"tempo", 0.7}};
constexpr double kOtherShare = 1.2;

double ShareOf(const QString& field) {
  for (const FieldShare& known : kShares)
    if (field.compare(QStringView(known.field), Qt::CaseInsensitive) == 0) return known.share;
  return kOtherShare;
}

// The row of the tune that plays stands out, with a sign before its first field.
class PlayingDelegate : public QStyledItemDelegate {
 public:
  explicit PlayingDelegate(QObject* parent)
      : QStyledItemDelegate(parent), icon_(IconOf(QStringLiteral("play"), IconTone::kAccent)) {}

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& place) const override {
    QStyledItemDelegate::initStyleOption(option, place);
    if (!place.data(TuneListModel::kPlayingRole).toBool()) return;
    option->font.setBold(true);
    if (place.column() > 0) return;
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->icon = icon_;
    option->decorationSize = QSize(kIconSize, kIconSize);
  }

 private:
  QIcon icon_;
};

}  // namespace

TuneList::TuneList(const QString& name, QWidget* parent)
    : QTableView(parent), tunes_(new TuneListModel(this)) {
  setObjectName(name);
  setAccessibleName(tr("Tunes"));
  setModel(tunes_);
  setItemDelegate(new PlayingDelegate(this));
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setTabKeyNavigation(false);
  setShowGrid(false);
  setAlternatingRowColors(true);
  setWordWrap(false);
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 2 * spacing::kTight);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setMinimumHeight(fontMetrics().height() + 2 * spacing::kSmall);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  connect(this, &QTableView::clicked, this, &TuneList::Choose);
}

void TuneList::Load(std::shared_ptr<Connection> connection, const QString& statement) {
  const QPointer<TuneList> self(this);
  tunes_->Load(std::move(connection), statement);
  if (self) SetColumnWidths();
}

void TuneList::SetEmptyText(const QString& text) {
  empty_text_ = text;
  viewport()->update();
}

void TuneList::Choose(const QModelIndex& place) {
  if (place.isValid()) Q_EMIT TuneWanted(tunes_->CodeName(place.row()), tunes_->Title(place.row()));
}

void TuneList::SetColumnWidths() {
  double shares = 0.0;
  for (int column = 0; column < tunes_->columnCount(); ++column) shares += ShareOf(tunes_->FieldOf(column));
  for (int column = 0; column < tunes_->columnCount(); ++column)
    setColumnWidth(
        column, std::max(kNarrowestColumn,
                         static_cast<int>(viewport()->width() * ShareOf(tunes_->FieldOf(column)) / shares)));
}

void TuneList::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    Choose(currentIndex());
  else
    QTableView::keyPressEvent(event);
}

void TuneList::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  SetColumnWidths();
}

void TuneList::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (tunes_->rowCount() > 0 || empty_text_.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(viewport()->rect().adjusted(spacing::kLarge, 0, -spacing::kLarge, 0),
                   Qt::AlignCenter | Qt::TextWordWrap, empty_text_);
}

}  // namespace zelmar
