#include "store/tune_tree_model.h"

#include <QPointer>
#include <algorithm>

#include "model/search_text.h"
#include "store/database_error.h"
#include "store/record_source.h"
#include "store/recordset.h"
#include "store/row_format.h"

namespace zelmar {

struct TuneTreeModel::Node {
  QString text;
  QString key;
  QString value;
  Node* above = nullptr;
  int row = 0;
  const std::vector<TreeLevel>* levels = nullptr;  // of its children
  bool is_built = true;
  std::vector<std::unique_ptr<Node>> children = {};
};

namespace {

bool StandsBelow(const TreeLevel& level, const QString& value) {
  if (!level.only_below.isNull() && level.only_below != value) return false;
  return level.not_below.isNull() || level.not_below != value;
}

bool LeadsOn(const std::vector<TreeLevel>& levels, const QString& value) {
  return std::any_of(levels.begin(), levels.end(),
                     [&value](const TreeLevel& level) { return StandsBelow(level, value); });
}

}  // namespace

TuneTreeModel::TuneTreeModel(QObject* parent) : QAbstractItemModel(parent), top_(std::make_unique<Node>()) {}

TuneTreeModel::~TuneTreeModel() = default;

void TuneTreeModel::Begin(const QString& root_key, const QString& root_text, std::vector<TreeBranch> branches,
                          std::shared_ptr<Connection> connection) {
  beginResetModel();
  ++beginnings_;
  top_ = std::make_unique<Node>();
  by_key_.clear();
  branches_ = std::make_shared<const std::vector<TreeBranch>>(std::move(branches));
  connection_ = std::move(connection);
  endResetModel();
  Add({}, root_text, root_key);
  for (const TreeBranch& branch : *branches_) {
    Node& node = *NodeOf(Add(root_key, branch.text, branch.key));
    node.levels = &branch.below;
    node.is_built = !LeadsOn(branch.below, {});
  }
}

QModelIndex TuneTreeModel::Add(const QString& parent_key, const QString& text, const QString& key) {
  Node* above = parent_key.isEmpty() ? top_.get() : by_key_.value(parent_key);
  if (above == nullptr)
    throw SubscriptError(QStringLiteral("No node of the tree has the key %1").arg(parent_key));
  std::vector<std::unique_ptr<Node>> one;
  one.push_back(std::make_unique<Node>(Node{text, key, {}}));
  Append(*above, std::move(one));
  return PlaceOf(*above->children.back());
}

void TuneTreeModel::Append(Node& node, std::vector<std::unique_ptr<Node>> children) {
  if (children.empty()) return;
  TakeKeys(children);
  const auto first = static_cast<int>(node.children.size());
  beginInsertRows(PlaceOf(node), first, first + static_cast<int>(children.size()) - 1);
  for (std::unique_ptr<Node>& child : children) {
    child->above = &node;
    child->row = static_cast<int>(node.children.size());
    node.children.push_back(std::move(child));
  }
  endInsertRows();
}

void TuneTreeModel::TakeKeys(const std::vector<std::unique_ptr<Node>>& nodes) {
  for (auto node = nodes.begin(); node != nodes.end(); ++node) {
    Node*& taken = by_key_[(*node)->key];
    if (taken == nullptr) {
      taken = node->get();
      continue;
    }
    for (auto before = nodes.begin(); before != node; ++before) by_key_.remove((*before)->key);
    throw DuplicateKeyError((*node)->key);
  }
}

// --- Building from the database ---

std::vector<std::unique_ptr<TuneTreeModel::Node>> TuneTreeModel::ReadLevel(
    const std::shared_ptr<Connection>& connection, const TreeLevel& level, const QString& value_above) {
  if (!connection) throw DatabaseError(database_error::kOther, QStringLiteral("The tree has no database."));
  QString statement = level.statement;
  statement.replace(QStringLiteral("{parent}"), InStatement(value_above));
  const auto rows = Recordset::OpenStatement(connection, statement);
  const RowFormat text(level.text, *rows);
  const RowFormat key(level.key, *rows);
  const int value = level.value.isEmpty() ? -1 : rows->Field(level.value);
  std::vector<std::unique_ptr<Node>> nodes;
  for (; !rows->Eof(); rows->MoveNext()) {
    auto node = std::make_unique<Node>(Node{text.Of(*rows), key.Of(*rows), {}});
    if (value >= 0) node->value = rows->Value(value).toString();
    node->levels = &level.below;
    node->is_built = !LeadsOn(level.below, node->value);
    nodes.push_back(std::move(node));
  }
  return nodes;
}

std::function<bool()> TuneTreeModel::Lasting() {
  return [self = QPointer<TuneTreeModel>(this), beginning = beginnings_] {
    return self && self->beginnings_ == beginning;
  };
}

bool TuneTreeModel::BuildChildren(Node& node) {
  // Whatever comes of it, it is not tried at every look of a view.
  node.is_built = true;
  // The database may serve events while it waits: what is read is held here until the tree is known to last.
  const auto lasts = Lasting();
  const auto branches = branches_;
  const auto connection = connection_;
  const QString value = node.value;
  std::vector<std::unique_ptr<Node>> children;
  for (const TreeLevel& level : *node.levels) {
    if (!StandsBelow(level, value)) continue;
    auto nodes = ReadLevel(connection, level, value);
    if (!lasts()) return false;
    std::move(nodes.begin(), nodes.end(), std::back_inserter(children));
  }
  Append(node, std::move(children));
  return true;
}

void TuneTreeModel::BuildAll(const std::function<void(int percent)>& progress) {
  const auto lasts = Lasting();
  for (std::size_t root = 0; root < top_->children.size(); ++root) {
    Node& node = *top_->children[root];
    if (!node.is_built && !BuildChildren(node)) return;
    for (std::size_t branch = 0; branch < node.children.size(); ++branch) {
      if (!BuildBelow(*node.children[branch])) return;
      if (progress) progress(static_cast<int>(100 * (branch + 1) / node.children.size()));
      if (!lasts()) return;
    }
  }
}

bool TuneTreeModel::BuildBelow(Node& node) {
  if (!node.is_built && !BuildChildren(node)) return false;
  for (std::size_t i = 0; i < node.children.size(); ++i)
    if (!BuildBelow(*node.children[i])) return false;
  return true;
}

// --- Looking at it ---

TuneTreeModel::Node* TuneTreeModel::NodeOf(const QModelIndex& place) const {
  return place.isValid() ? static_cast<Node*>(place.internalPointer()) : top_.get();
}

QModelIndex TuneTreeModel::PlaceOf(const Node& node) const {
  return &node == top_.get() ? QModelIndex() : createIndex(node.row, 0, const_cast<Node*>(&node));
}

QModelIndex TuneTreeModel::IndexOf(const QString& key) const {
  const Node* node = by_key_.value(key);
  return node == nullptr ? QModelIndex() : PlaceOf(*node);
}

std::vector<QModelIndex> TuneTreeModel::Matches(const QString& typed) const {
  std::vector<QModelIndex> places;
  const QString wanted = SearchForm(typed);
  if (wanted.isEmpty()) return places;
  const std::function<void(const Node&)> look = [&](const Node& node) {
    for (const auto& child : node.children) {
      if (HoldsEveryWord(SearchForm(child->text), wanted)) places.push_back(PlaceOf(*child));
      look(*child);
    }
  };
  look(*top_);
  return places;
}

QModelIndex TuneTreeModel::index(int row, int column, const QModelIndex& parent) const {
  const Node& node = *NodeOf(parent);
  if (column != 0 || row < 0 || static_cast<std::size_t>(row) >= node.children.size()) return {};
  return PlaceOf(*node.children[static_cast<std::size_t>(row)]);
}

QModelIndex TuneTreeModel::parent(const QModelIndex& place) const {
  if (!place.isValid()) return {};
  return PlaceOf(*NodeOf(place)->above);
}

int TuneTreeModel::rowCount(const QModelIndex& parent) const {
  return static_cast<int>(NodeOf(parent)->children.size());
}

QVariant TuneTreeModel::data(const QModelIndex& place, int role) const {
  if (!place.isValid()) return {};
  const Node& node = *NodeOf(place);
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return node.text;
  return role == kKeyRole ? QVariant(node.key) : QVariant();
}

bool TuneTreeModel::hasChildren(const QModelIndex& parent) const {
  const Node& node = *NodeOf(parent);
  return !node.children.empty() || !node.is_built;
}

bool TuneTreeModel::canFetchMore(const QModelIndex& parent) const {
  return !NodeOf(parent)->is_built;
}

void TuneTreeModel::fetchMore(const QModelIndex& parent) {
  Node& node = *NodeOf(parent);
  if (node.is_built) return;
  try {
    BuildChildren(node);
  } catch (const Failure& failure) {
    Q_EMIT Failed(failure.Description());
  }
}

}  // namespace zelmar
