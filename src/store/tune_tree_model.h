// A tree of tunes: nodes with a text and a key, for a tree view and for searching.
//
// Its branches are data. Each level below a node is a statement whose rows become nodes, and so on downward;
// a node is built when it is opened, or all are by BuildAll. Nodes can also be added one by one. No two nodes
// have one key.
#pragma once

#include <QAbstractItemModel>
#include <QHash>
#include <functional>
#include <memory>
#include <vector>

namespace zelmar {

class Connection;

// A level of nodes.
struct TreeLevel {
  // "{parent}" stands for the value of the node above, in the form that a statement takes: "WHERE family =
  // {parent}".
  QString statement;
  QString text;  // formats of a row: see RowFormat
  QString key;
  QString value = {};       // the field that {parent} stands for in the level below
  QString only_below = {};  // for the node above with this value alone
  QString not_below = {};   // for every node above but that with this value
  std::vector<TreeLevel> below = {};
};

struct TreeBranch {
  QString key;
  QString text;
  std::vector<TreeLevel> below;
};

class TuneTreeModel : public QAbstractItemModel {
  Q_OBJECT

 public:
  static constexpr int kKeyRole = Qt::UserRole;

  explicit TuneTreeModel(QObject* parent = nullptr);
  ~TuneTreeModel() override;

  // Begins a tree with a root and its branches, which are built from the database as they are opened.
  void Begin(const QString& root_key, const QString& root_text, std::vector<TreeBranch> branches = {},
             std::shared_ptr<Connection> connection = nullptr);
  // Adds a node below the one with `parent_key`. Throws DuplicateKeyError, or SubscriptError where no node
  // has that key.
  QModelIndex Add(const QString& parent_key, const QString& text, const QString& key);
  // Builds all that is not built yet. `progress` is told the percent of the branches that are done; it may
  // serve events and may end the model. Throws what the database says, and DuplicateKeyError: the node that
  // met it stays without children.
  void BuildAll(const std::function<void(int percent)>& progress = {});

  qsizetype NodeCount() const { return by_key_.size(); }
  QString KeyOf(const QModelIndex& place) const { return place.data(kKeyRole).toString(); }
  // Invalid when no node that is built has the key.
  QModelIndex IndexOf(const QString& key) const;
  // The nodes that are built and whose texts hold every word of what was typed, from the top down.
  std::vector<QModelIndex> Matches(const QString& typed) const;

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& place) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& = {}) const override { return 1; }
  QVariant data(const QModelIndex& place, int role) const override;
  bool hasChildren(const QModelIndex& parent = {}) const override;
  bool canFetchMore(const QModelIndex& parent) const override;
  // A view asks for this in its own work, so a failure is told by Failed.
  void fetchMore(const QModelIndex& parent) override;

 Q_SIGNALS:
  void Failed(const QString& description);

 private:
  struct Node;

  Node* NodeOf(const QModelIndex& place) const;
  QModelIndex PlaceOf(const Node& node) const;
  static std::vector<std::unique_ptr<Node>> ReadLevel(const std::shared_ptr<Connection>& connection,
                                                      const TreeLevel& level, const QString& value_above);
  // True as long as this very tree is there.
  std::function<bool()> Lasting();
  // Throws DuplicateKeyError, and adds none of them, when a key is taken.
  void Append(Node& node, std::vector<std::unique_ptr<Node>> children);
  void TakeKeys(const std::vector<std::unique_ptr<Node>>& nodes);
  // Both give false when the tree ended meanwhile.
  bool BuildChildren(Node& node);
  bool BuildBelow(Node& node);

  std::unique_ptr<Node> top_;  // above the root, never shown
  QHash<QString, Node*> by_key_;
  std::shared_ptr<const std::vector<TreeBranch>> branches_;
  std::shared_ptr<Connection> connection_;
  int beginnings_ = 0;
};

}  // namespace zelmar
