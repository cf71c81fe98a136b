// A tree of tunes with a field to find one by typing.
//
// A click or Enter on a tune gives its CodeName; on any other node it opens that node. What is typed, in the
// field or into the tree, leads to the first node whose text holds every word of it; Enter leads to the next
// one and Shift+Enter to the one before, and the down key into the tree.
#pragma once

#include <QPointer>
#include <QWidget>
#include <vector>

#include "store/tune_keys.h"
#include "store/tune_tree_model.h"

class QAbstractButton;

namespace zelmar {

class FindBar;

class TuneTree : public QWidget {
  Q_OBJECT

 public:
  // `tree_name` is the system name of the tree itself: "TreeListening". Its field is txtFind.
  explicit TuneTree(const QString& tree_name, QWidget* parent = nullptr);

  TuneTreeModel& Model() { return *model_; }
  // Which keys are tunes.
  void SetTuneKeys(TuneKeys keys) { keys_ = std::move(keys); }

  // The root and the branches right below it.
  void ExpandTop();
  void ContractTop();
  // Opens the root alone.
  void ExpandRoot();
  // A button that expands and contracts the top by turns; its caption says which comes next.
  void Attach(QAbstractButton* button, const QString& expand_caption, const QString& contract_caption);

 Q_SIGNALS:
  // An empty name for a tune whose key has no prefix that leads to one.
  void TuneChosen(const QString& code_name);
  // How far the tree is built for a search, in percent; 100 is the end.
  void Building(int percent);

 private:
  class View;

  void Choose(const QModelIndex& place);
  void Find(const QString& typed);
  void ShowMatch(std::size_t match);
  void BuildAll();
  void TellFailure(const QString& description);

  TuneTreeModel* model_;
  TuneKeys keys_;
  FindBar* find_;
  View* tree_;
  std::vector<QModelIndex> matches_;

  QPointer<QAbstractButton> top_button_;
  QString expand_caption_, contract_caption_;
  bool top_is_expanded_ = false;
};

}  // namespace zelmar
