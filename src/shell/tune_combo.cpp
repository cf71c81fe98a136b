#include "shell/tune_combo.h"

#include <QAbstractListModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QSortFilterProxyModel>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/folding.h"
#include "platform/widgets/icons.h"
#include "platform/widgets/spacing.h"

namespace zelmar {

namespace {

constexpr int kPageRows = 5;

}  // namespace

class TuneCombo::Titles : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  void SetRowHeight(int height) { row_size_ = QSize(0, height); }
  void Set(std::vector<TuneTitle> titles) {
    beginResetModel();
    titles_ = std::move(titles);
    folded_.clear();
    endResetModel();
  }
  // The title as it is looked for. All are folded when the first is asked for: most who open a tune type
  // nothing.
  const QString& Folded(int row) {
    if (folded_.empty())
      for (const TuneTitle& title : titles_) folded_.push_back(FoldedForSearch(title.title));
    return folded_[static_cast<std::size_t>(row)];
  }
  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(titles_.size());
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid()) return {};
    const TuneTitle& title = titles_[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return title.title;
    if (role == Qt::SizeHintRole) return row_size_;
    return role == Qt::UserRole ? QVariant(title.code_name) : QVariant();
  }
  int RowOf(const QString& code_name) const {
    const auto found = std::find_if(titles_.begin(), titles_.end(), [&code_name](const TuneTitle& title) {
      return title.code_name.compare(code_name, Qt::CaseInsensitive) == 0;
    });
    return found == titles_.end() ? -1 : static_cast<int>(found - titles_.begin());
  }

 private:
  std::vector<TuneTitle> titles_;
  std::vector<QString> folded_;
  QSize row_size_;
};

class TuneCombo::Finder : public QSortFilterProxyModel {
 public:
  Finder(Titles& titles, QObject* parent) : QSortFilterProxyModel(parent), titles_(titles) {
    setSourceModel(&titles);
  }

  void Find(const QString& typed) {
    typed_ = FoldedForSearch(typed);
    words_ = typed_.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    invalidateFilter();
  }
  // The row to begin with: a title that begins with what is typed comes before one that only holds it.
  int BestRow() const {
    for (int row = 0; row < rowCount(); ++row)
      if (titles_.Folded(mapToSource(index(row, 0)).row()).startsWith(typed_)) return row;
    return 0;
  }

 protected:
  bool filterAcceptsRow(int row, const QModelIndex&) const override {
    if (words_.isEmpty()) return true;
    const QString& title = titles_.Folded(row);
    return std::all_of(words_.begin(), words_.end(),
                       [&title](const QString& word) { return title.contains(word); });
  }

 private:
  Titles& titles_;
  QString typed_;
  QStringList words_;
};

TuneCombo::TuneCombo(QWidget* parent)
    : QWidget(parent),
      field_(new QLineEdit(this)),
      list_(new QListView(this)),
      titles_(new Titles(this)),
      finder_(new Finder(*titles_, this)) {
  field_->setObjectName(QStringLiteral("txtFind"));
  field_->setPlaceholderText(tr("Type a part of the title or the composer"));
  field_->setClearButtonEnabled(true);
  field_->addAction(IconOf(QStringLiteral("find")), QLineEdit::LeadingPosition);
  field_->setAccessibleName(tr("Find a tune"));
  list_->setObjectName(QStringLiteral("listMelodies"));
  list_->setAccessibleName(tr("Tunes"));
  list_->setUniformItemSizes(true);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setFocusPolicy(Qt::NoFocus);
  list_->setTextElideMode(Qt::ElideRight);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  titles_->SetRowHeight(list_->fontMetrics().height() + 2 * spacing::kTight + 2);
  list_->setModel(finder_);
  setFocusProxy(field_);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(spacing::kSmall);
  column->addWidget(field_);
  column->addWidget(list_, 1);

  field_->installEventFilter(this);
  connect(field_, &QLineEdit::textEdited, this, &TuneCombo::Narrow);
  // The clear button of the field is no edit.
  connect(field_, &QLineEdit::textChanged, this, [this](const QString& text) {
    if (text.isEmpty()) Narrow(text);
  });
  connect(list_, &QListView::clicked, this, &TuneCombo::Chosen);
  connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this, &TuneCombo::TellSelected);
}

void TuneCombo::SetTitles(std::vector<TuneTitle> titles) {
  titles_->Set(std::move(titles));
  SelectRow(0);
}

int TuneCombo::RowCount() const {
  return finder_->rowCount();
}

QString TuneCombo::SelectedCodeName() const {
  return list_->currentIndex().data(Qt::UserRole).toString();
}

QString TuneCombo::SelectedTitle() const {
  return list_->currentIndex().data().toString();
}

void TuneCombo::Select(const QString& code_name) {
  const int row = titles_->RowOf(code_name);
  SelectRow(row < 0 ? 0 : finder_->mapFromSource(titles_->index(row)).row());
}

// The keyboard stays in the field, so it is the field that tells a screen reader which title is selected.
void TuneCombo::TellSelected() {
  field_->setAccessibleDescription(NothingFits() ? WordsForNothing() : SelectedTitle());
}

void TuneCombo::SelectRow(int row) {
  const QModelIndex index = finder_->index(row, 0);
  list_->setCurrentIndex(index);
  if (index.isValid()) list_->scrollTo(index, QAbstractItemView::PositionAtCenter);
}

void TuneCombo::MoveBy(int rows) {
  if (finder_->rowCount() == 0) return;
  const int row = std::clamp(list_->currentIndex().row() + rows, 0, finder_->rowCount() - 1);
  const QModelIndex index = finder_->index(row, 0);
  list_->setCurrentIndex(index);
  list_->scrollTo(index);
}

void TuneCombo::Narrow(const QString& typed) {
  const QString kept = SelectedCodeName();
  finder_->Find(typed);
  if (typed.isEmpty())
    Select(kept);
  else
    SelectRow(finder_->BestRow());
  // Where there is no row the list has told of none.
  TellSelected();
  Q_EMIT Narrowed();
}

bool TuneCombo::NothingFits() const {
  return finder_->rowCount() == 0 && titles_->rowCount() > 0;
}

QString TuneCombo::WordsForNothing() {
  return tr("No title or composer holds what is typed.");
}

bool TuneCombo::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
      MoveBy(-1);
      return true;
    case Qt::Key_Down:
      MoveBy(1);
      return true;
    case Qt::Key_PageUp:
      MoveBy(-kPageRows);
      return true;
    case Qt::Key_PageDown:
      MoveBy(kPageRows);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Q_EMIT Chosen();
      return true;
    default:
      return QWidget::eventFilter(watched, event);
  }
}

}  // namespace zelmar
