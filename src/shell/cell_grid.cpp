#include "shell/cell_grid.h"

#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "platform/failure.h"
#include "shell/checked_field.h"
#include "shell/entry_combo.h"
#include "shell/field_check.h"
#include "shell/table_model.h"

namespace zelmar {

namespace {

// Tells when its list has closed, whether something was chosen or not.
class CellList : public EntryCombo {
 public:
  explicit CellList(QWidget* parent) : EntryCombo(Typing::kNone, parent) {}

  void hidePopup() override {
    EntryCombo::hidePopup();
    // What is chosen is told after the list has closed.
    if (on_closed) QTimer::singleShot(0, this, on_closed);
  }

  std::function<void()> on_closed;
};

}  // namespace

// Makes the editors, and leaves it to the grid when they end.
class CellGrid::Editors : public QStyledItemDelegate {
 public:
  explicit Editors(CellGrid* grid) : QStyledItemDelegate(grid), grid_(grid) {}

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                        const QModelIndex& index) const override {
    return grid_->MakeEditor(parent, index);
  }

  // Called again whenever the row has new values, which must not take what is being typed.
  void setEditorData(QWidget* editor, const QModelIndex& index) const override {
    auto* const line = qobject_cast<QLineEdit*>(editor);
    if (line != nullptr && !line->isModified()) line->setText(index.data().toString());
  }
  void setModelData(QWidget*, QAbstractItemModel*, const QModelIndex&) const override {}

  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex&) const override {
    editor->setGeometry(option.rect);
  }

 protected:
  // Not that of the base, which ends an edit whenever the keyboard goes.
  bool eventFilter(QObject*, QEvent* event) override {
    return event->type() == QEvent::KeyPress && grid_->EditorKey(static_cast<QKeyEvent*>(event));
  }

 private:
  CellGrid* grid_;
};

CellGrid::CellGrid(QWidget* parent) : PlainGrid(parent) {
  setItemDelegate(new Editors(this));
  setEditTriggers(AnyKeyPressed);
  connect(this, &QTableView::clicked, this, &CellGrid::Open);
}

CellGrid::~CellGrid() {
  // The end of an editor moves the keyboard, and the grid is no grid any more by then.
  if (check_) check_->Stop();
}

void CellGrid::SetUp(TableModel* model, GridSetup setup, std::vector<CellColumn> cells) {
  setup.selecting = Selecting::kOneCell;
  setup.sorting = Sorting::kOff;
  cells_ = std::move(cells);
  for (const CellColumn& cell : cells_)
    if (cell.store) model->SetEditable(cell.column);
  PlainGrid::SetUp(model, setup);
}

const CellColumn* CellGrid::CellOf(int column) const {
  const auto found = std::find_if(cells_.begin(), cells_.end(),
                                  [column](const CellColumn& cell) { return cell.column == column; });
  return found == cells_.end() ? nullptr : &*found;
}

bool CellGrid::CanChange(int column) const {
  const CellColumn* const cell = CellOf(column);
  return cell != nullptr && cell->store;
}

// --- Opening ---

void CellGrid::EditCell() {
  Open(currentIndex());
}

void CellGrid::Open(const QModelIndex& index) {
  const CellColumn* const cell = index.isValid() ? CellOf(index.column()) : nullptr;
  if (cell == nullptr || IsEditing()) return;
  if (cell->store) {
    setCurrentIndex(index);
    edit(index);
  } else if (cell->why_not) {
    TellLater(*cell->why_not);
  }
}

// Behind the click, which would go on in a window that may be gone by then.
void CellGrid::TellLater(const Refusal& refusal) {
  if (telling_) return;
  telling_ = true;
  QTimer::singleShot(0, this, [this, refusal] {
    const QPointer<CellGrid> self(this);
    if (isVisible()) ShowMessage(refusal.icon, refusal.text, refusal.title);
    if (!self) return;
    telling_ = false;
    activateWindow();
  });
}

bool CellGrid::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
  if (!PlainGrid::edit(index, trigger, event)) return false;
  if (auto* const list = dynamic_cast<CellList*>(editor_.data())) list->showPopup();
  return true;
}

QWidget* CellGrid::MakeEditor(QWidget* parent, const QModelIndex& index) {
  const CellColumn* const cell = CellOf(index.column());
  if (cell == nullptr || !cell->store) return nullptr;
  editor_ = cell->choice ? MakeList(parent, *cell, index) : MakeLine(parent, *cell, index);
  editor_->setAccessibleName(
      tr("%1, row %2").arg(Rows()->Column(index.column()).heading).arg(Rows()->RowAt(index.row()) + 1));
  return editor_;
}

QWidget* CellGrid::MakeLine(QWidget* parent, const CellColumn& cell, const QModelIndex& index) {
  auto* const line = new CheckedField(parent);
  line->setObjectName(QStringLiteral("txtCell"));
  line->setAlignment(Rows()->Column(index.column()).alignment);
  check_ = &line->Check();
  check_->SetRules(cell.rules);
  check_->SetStore([this, place = QPersistentModelIndex(index)](const QString& text) { Store(place, text); });
  // A question must not come up because another window does.
  check_->SetStoredInPassing(!cell.after_store);
  connect(check_, &FieldCheck::Left, this, &CellGrid::CloseEditor);
  return line;
}

QWidget* CellGrid::MakeList(QWidget* parent, const CellColumn& cell, const QModelIndex& index) {
  auto* const list = new CellList(parent);
  list->setObjectName(QLatin1String(cell.choice->name));
  list->SetEntries(cell.choice->entries());
  list->SelectNumber(cell.choice->number(Rows()->RowAt(index.row())));
  const QPersistentModelIndex place(index);
  connect(list, &EntryCombo::Chosen, this,
          [this, list, place] { StoreChoice(place, list->Number().value_or(0)); });
  list->on_closed = [this, list] {
    if (editor_ == list) GiveUpEdit();
  };
  return list;
}

// --- Storing ---

void CellGrid::Store(const QPersistentModelIndex& place, const QString& text) {
  // Copies, since the hook may end the grid.
  const auto store = CellOf(place.column())->store;
  const auto after_store = CellOf(place.column())->after_store;
  const int row = Rows()->RowAt(place.row());
  const QPointer<CellGrid> self(this);
  store(row, text);
  if (!self) return;
  Rows()->RowChanged(row);
  if (!after_store) return;
  QTimer::singleShot(0, this, [this, after_store, row, text] {
    if (isVisible()) after_store(row, text);
  });
}

void CellGrid::StoreChoice(const QPersistentModelIndex& place, int number) {
  const QPointer<CellGrid> self(this);
  CloseEditor();
  try {
    Store(place, QString::number(number));
  } catch (const Failure& failure) {
    if (self) TellLater({MessageIcon::kCritical, {}, failure.Description()});
  }
}

bool CellGrid::SettleEdit() {
  if (!IsEditing()) return true;
  const QPointer<CellGrid> self(this);
  if (check_ && !check_->Settle()) return false;
  if (self) CloseEditor();
  return !self.isNull();
}

void CellGrid::GiveUpEdit() {
  CloseEditor();
}

void CellGrid::CloseEditor() {
  if (IsEditing()) closeEditor(editor_, QAbstractItemDelegate::NoHint);
}

// The view closes an editor too, when the program makes another cell the current one.
void CellGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  if (editor == editor_) ForgetEditor();
  PlainGrid::closeEditor(editor, hint);
}

void CellGrid::ForgetEditor() {
  // It goes when events are next handled; its name belongs to the next one from here on.
  if (editor_) editor_->setObjectName(QString());
  if (check_) check_->Stop();
  editor_ = nullptr;
  check_ = nullptr;
}

// --- Keys ---

void CellGrid::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
    PlainGrid::keyPressEvent(event);
    return;
  }
  // The default button of a dialogue does not get it too.
  event->accept();
  EditCell();
}

bool CellGrid::EditorKey(QKeyEvent* event) {
  static constexpr std::pair<Qt::Key, Step> kSteps[] = {{Qt::Key_Up, Step::kUp},
                                                        {Qt::Key_Down, Step::kDown},
                                                        {Qt::Key_Tab, Step::kNext},
                                                        {Qt::Key_Backtab, Step::kPrevious}};
  for (const auto& [key, step] : kSteps) {
    if (event->key() != key) continue;
    StoreAndGo(step);
    return true;
  }
  if (event->key() == Qt::Key_Escape) {
    GiveUpEdit();
    return true;
  }
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) return false;
  if (auto* const list = dynamic_cast<CellList*>(editor_.data()))
    list->showPopup();
  else
    SettleEdit();
  return true;
}

void CellGrid::StoreAndGo(Step step) {
  // The numbers, since a store may fill the table anew.
  const int row = currentIndex().row(), column = currentIndex().column();
  if (SettleEdit()) Go(row, column, step);
}

void CellGrid::Go(int row, int column, Step step) {
  const QModelIndex here = Rows()->index(row, column);
  if (here.isValid()) setCurrentIndex(here);
  Open(CellFrom(row, column, step));
}

// The cell to go on to; none at the end of the table.
QModelIndex CellGrid::CellFrom(int row, int column, Step step) const {
  if (step == Step::kUp || step == Step::kDown)
    return Rows()->index(row + (step == Step::kDown ? 1 : -1), column);
  const int columns = Rows()->columnCount();
  const int direction = step == Step::kNext ? 1 : -1;
  const int cells = Rows()->rowCount() * columns;
  for (int cell = row * columns + column + direction; cell >= 0 && cell < cells; cell += direction)
    if (CanChange(cell % columns)) return Rows()->index(cell / columns, cell % columns);
  return {};
}

// --- Rows that change under an edit ---

void CellGrid::reset() {
  const bool edited = IsEditing();
  const bool had_keyboard = edited && editor_->hasFocus();
  ForgetEditor();
  PlainGrid::reset();
  if (had_keyboard) setFocus();
}

void CellGrid::rowsAboutToBeRemoved(const QModelIndex& parent, int start, int end) {
  if (IsEditing() && currentIndex().row() >= start && currentIndex().row() <= end) GiveUpEdit();
  PlainGrid::rowsAboutToBeRemoved(parent, start, end);
}

}  // namespace zelmar
