#include "shell/tune_tree.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QVBoxLayout>

#include "platform/failure.h"
#include "platform/services.h"
#include "platform/widgets/icons.h"
#include "platform/widgets/spacing.h"
#include "shell/find_bar.h"

namespace zelmar {

namespace {

constexpr int kIconSize = 16;

// Puts a note before each tune.
class TuneDelegate : public QStyledItemDelegate {
 public:
  TuneDelegate(const TuneKeys& keys, QObject* parent)
      : QStyledItemDelegate(parent), keys_(keys), icon_(IconOf(QStringLiteral("note"))) {}

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& place) const override {
    QStyledItemDelegate::initStyleOption(option, place);
    if (!keys_.IsTune(place.data(TuneTreeModel::kKeyRole).toString())) return;
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->icon = icon_;
    option->decorationSize = QSize(kIconSize, kIconSize);
  }

 private:
  const TuneKeys& keys_;
  QIcon icon_;
};

}  // namespace

class TuneTree::View : public QTreeView {
 public:
  explicit View(TuneTree* owner) : QTreeView(owner), owner_(owner) {}

  // Letters that are typed into the tree begin a search.
  void keyboardSearch(const QString& typed) override {
    owner_->find_->setFocus();
    owner_->find_->Type(typed);
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
      owner_->Choose(currentIndex());
    else
      QTreeView::keyPressEvent(event);
  }

 private:
  TuneTree* owner_;
};

TuneTree::TuneTree(const QString& tree_name, QWidget* parent)
    : QWidget(parent),
      model_(new TuneTreeModel(this)),
      find_(new FindBar(tr("Type a part of a title or a name"), this)),
      tree_(new View(this)) {
  connect(find_, &FindBar::Typed, this, &TuneTree::Find);
  connect(find_, &FindBar::MatchWanted, this, &TuneTree::ShowMatch);
  connect(find_, &FindBar::LeftDownward, tree_, [this] { tree_->setFocus(); });

  tree_->setObjectName(tree_name);
  tree_->setAccessibleName(tr("Tunes"));
  tree_->setHeaderHidden(true);
  tree_->setUniformRowHeights(true);
  tree_->setExpandsOnDoubleClick(false);
  tree_->setModel(model_);
  tree_->setItemDelegate(new TuneDelegate(keys_, tree_));
  connect(tree_, &QTreeView::clicked, this, &TuneTree::Choose);
  connect(model_, &TuneTreeModel::Failed, this, &TuneTree::TellFailure, Qt::QueuedConnection);
  connect(model_, &QAbstractItemModel::modelReset, this, [this] {
    matches_.clear();
    find_->SetMatches(0);
  });
  setFocusProxy(tree_);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(spacing::kSmall);
  column->addWidget(find_);
  column->addWidget(tree_, 1);
}

void TuneTree::Choose(const QModelIndex& place) {
  if (!place.isValid()) return;
  const QString key = model_->KeyOf(place);
  if (keys_.IsTune(key))
    Q_EMIT TuneChosen(keys_.CodeNameOf(key));
  else
    tree_->expand(place);
}

// A view asks for nodes in its own work, where a message cannot be shown.
void TuneTree::TellFailure(const QString& description) {
  ShowMessage(MessageIcon::kExclamation, description);
}

// --- The top ---

void TuneTree::ExpandRoot() {
  for (int root = 0; root < model_->rowCount(); ++root) tree_->expand(model_->index(root, 0));
}

void TuneTree::ExpandTop() {
  ExpandRoot();
  for (int root = 0; root < model_->rowCount(); ++root) {
    const QModelIndex place = model_->index(root, 0);
    for (int branch = 0; branch < model_->rowCount(place); ++branch)
      tree_->expand(model_->index(branch, 0, place));
  }
}

void TuneTree::ContractTop() {
  for (int root = 0; root < model_->rowCount(); ++root) {
    const QModelIndex place = model_->index(root, 0);
    for (int branch = 0; branch < model_->rowCount(place); ++branch)
      tree_->collapse(model_->index(branch, 0, place));
    tree_->collapse(place);
  }
}

void TuneTree::Attach(QAbstractButton* button, const QString& expand_caption,
                      const QString& contract_caption) {
  top_button_ = button;
  expand_caption_ = expand_caption;
  contract_caption_ = contract_caption;
  button->setText(expand_caption);
  connect(button, &QAbstractButton::clicked, this, [this] {
    top_is_expanded_ = !top_is_expanded_;
    if (top_is_expanded_)
      ExpandTop();
    else
      ContractTop();
    if (top_button_) top_button_->setText(top_is_expanded_ ? contract_caption_ : expand_caption_);
  });
}

// --- Searching ---

void TuneTree::BuildAll() {
  const QPointer<TuneTree> self(this);
  try {
    model_->BuildAll([self](int percent) {
      if (self) Q_EMIT self->Building(percent);
    });
  } catch (const Failure& failure) {
    if (self) TellFailure(failure.Description());
  }
}

void TuneTree::Find(const QString& typed) {
  const QPointer<TuneTree> self(this);
  if (!typed.trimmed().isEmpty()) BuildAll();
  // Who listens to Building may let more be typed.
  if (!self || typed != find_->Text()) return;
  matches_ = model_->Matches(typed);
  find_->SetMatches(matches_.size());
}

void TuneTree::ShowMatch(std::size_t match) {
  tree_->setCurrentIndex(matches_[match]);
  tree_->scrollTo(matches_[match], QAbstractItemView::PositionAtCenter);
}

}  // namespace zelmar
