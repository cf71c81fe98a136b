// A table whose cells are changed in place: a line of text, or a list to choose from, lies over the cell at
// work.
//
//   grid->SetUp(&model, setup, {{.column = 1, .rules = {...}, .store = [&](int row, const QString& text)
//   {...}},
//                               {.column = 5, .why_not = Refusal{...}}});
//
// A click on a cell, Enter or typing opens it. Enter stores and closes, Up and Down store and go on to the
// cell above and below, Tab and Shift+Tab to the next and the last one that can be changed; Escape gives the
// edit up. Leaving the cell stores as well, under the rules of FieldCheck: a text that fails is told, and
// stays open under the keyboard. A list stores what is chosen in it; Escape or a click beside it gives it up.
//
// When the model is reset, its row goes, or the program makes another cell the current one, an edit that is
// open is given up. New values of the rows, however, leave what a person is typing alone. The table is not
// sorted, since a row must not run away from under an edit.
#pragma once

#include <QPointer>
#include <functional>
#include <optional>
#include <vector>

#include "model/combo_entries.h"
#include "model/field_rules.h"
#include "shell/plain_grid.h"

namespace zelmar {

class FieldCheck;

// A list to choose from in place of a line.
struct CellChoice {
  std::function<std::vector<ComboEntry>()> entries;
  std::function<int(int row)> number;  // the number of the entry in force
  const char* name = "cboCell";        // the control's system name
};

struct CellColumn {
  int column = 0;
  std::vector<FieldRule> rules = {};
  // Takes a text that has passed (of a list: the number of the entry, as text). None: the cell cannot be
  // changed. It shows no box: what is to be asked belongs into after_store. A Failure that it throws is
  // shown.
  std::function<void(int row, const QString& text)> store = {};
  // Called when the event that led to the storing is over, unless the grid is hidden by then. With it, an
  // edit is not stored while another window of the program has the keyboard.
  std::function<void(int row, const QString& text)> after_store = {};
  // The box that says why the cell cannot be changed.
  std::optional<Refusal> why_not = {};
  std::optional<CellChoice> choice = {};
};

class CellGrid : public PlainGrid {
  Q_OBJECT

 public:
  explicit CellGrid(QWidget* parent = nullptr);
  ~CellGrid() override;

  // Columns that are not named cannot be changed, and say nothing. The selection is always one cell.
  void SetUp(TableModel* model, GridSetup setup, std::vector<CellColumn> cells);

  // Opens the current cell, or says why it cannot be changed.
  void EditCell();
  bool IsEditing() const { return !editor_.isNull(); }
  // Stores the edit that is open, and closes it. False when it was refused: the box has been shown then.
  bool SettleEdit();
  void GiveUpEdit();

  void reset() override;

 protected:
  using PlainGrid::edit;
  bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
  void rowsAboutToBeRemoved(const QModelIndex& parent, int start, int end) override;

 private:
  class Editors;
  enum class Step { kUp, kDown, kNext, kPrevious };

  const CellColumn* CellOf(int column) const;
  bool CanChange(int column) const;
  void Open(const QModelIndex& index);
  void TellLater(const Refusal& refusal);
  QWidget* MakeEditor(QWidget* parent, const QModelIndex& index);
  QWidget* MakeLine(QWidget* parent, const CellColumn& cell, const QModelIndex& index);
  QWidget* MakeList(QWidget* parent, const CellColumn& cell, const QModelIndex& index);
  bool EditorKey(QKeyEvent* event);
  void Store(const QPersistentModelIndex& place, const QString& text);
  void StoreChoice(const QPersistentModelIndex& place, int number);
  void StoreAndGo(Step step);
  void Go(int row, int column, Step step);
  QModelIndex CellFrom(int row, int column, Step step) const;
  void CloseEditor();
  void ForgetEditor();

  std::vector<CellColumn> cells_;
  QPointer<QWidget> editor_;
  QPointer<FieldCheck> check_;
  bool telling_ = false;
};

}  // namespace zelmar
