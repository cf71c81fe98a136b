#include "app/command_menu.h"

#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>
#include <QRegularExpression>
#include <QStyleOptionMenuItem>
#include <QToolTip>
#include <algorithm>

#include "platform/mnemonics.h"
#include "platform/widgets/spacing.h"
#include "shell/command_table.h"

namespace zelmar {

namespace {

constexpr char kLeadsTo[] = "leadsTo";

// --- What a screen reader is told ---

class ItemForReader : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  ItemForReader(QAction* item, CommandMenu* menu) : item_(item), menu_(menu) {}

  bool isValid() const override { return item_ && menu_; }
  QObject* object() const override { return nullptr; }
  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(menu_); }
  QAccessibleInterface* child(int index) const override {
    return index == 0 && item_ && item_->menu() ? QAccessible::queryAccessibleInterface(item_->menu())
                                                : nullptr;
  }
  int childCount() const override { return item_ && item_->menu() ? 1 : 0; }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child != nullptr && item_ && child->object() == item_->menu() ? 0 : -1;
  }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  QRect rect() const override {
    if (!isValid()) return {};
    const QRect place = menu_->actionGeometry(item_);
    return {menu_->mapToGlobal(place.topLeft()), place.size()};
  }
  QAccessible::Role role() const override {
    return item_ && item_->isSeparator() ? QAccessible::Separator : QAccessible::MenuItem;
  }
  QAccessible::State state() const override {
    QAccessible::State state;
    if (!isValid()) {
      state.invalid = true;
      return state;
    }
    state.focusable = !item_->isSeparator();
    state.disabled = !item_->isEnabled();
    state.invisible = !menu_->isVisible() || !item_->isVisible();
    state.focused = menu_->isVisible() && menu_->activeAction() == item_;
    state.checkable = item_->isCheckable();
    state.checked = item_->isChecked();
    state.hasPopup = item_->menu() != nullptr;
    return state;
  }
  QString text(QAccessible::Text kind) const override {
    if (!item_) return {};
    if (kind == QAccessible::Name) return CommandMenu::SpokenName(*item_);
    return kind == QAccessible::Accelerator ? item_->shortcut().toString(QKeySequence::NativeText)
                                            : QString();
  }
  void setText(QAccessible::Text, const QString&) override {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
  }
  QStringList actionNames() const override {
    return item_ && item_->isSeparator() ? QStringList() : QStringList{pressAction()};
  }
  void doAction(const QString& name) override {
    if (!isValid() || name != pressAction()) return;
    if (item_->menu() != nullptr)
      menu_->setActiveAction(item_);
    else
      item_->trigger();
  }
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
  QPointer<QAction> item_;
  QPointer<CommandMenu> menu_;
};

class MenuForReader : public QAccessibleWidget {
 public:
  explicit MenuForReader(CommandMenu* menu) : QAccessibleWidget(menu, QAccessible::PopupMenu), menu_(menu) {}
  ~MenuForReader() override {
    for (const QAccessible::Id id : std::as_const(items_)) QAccessible::deleteAccessibleInterface(id);
  }

  int childCount() const override { return menu_ ? static_cast<int>(menu_->actions().size()) : 0; }
  QAccessibleInterface* child(int index) const override {
    QAction* const item = menu_ ? menu_->actions().value(index) : nullptr;
    if (item == nullptr) return nullptr;
    const auto known = items_.constFind(item);
    if (known != items_.cend()) {
      if (QAccessibleInterface* const kept = QAccessible::accessibleInterface(*known);
          kept && kept->isValid())
        return kept;
      QAccessible::deleteAccessibleInterface(*known);
    }
    auto* const made = new ItemForReader(item, menu_);
    items_.insert(item, QAccessible::registerAccessibleInterface(made));
    return made;
  }
  int indexOfChild(const QAccessibleInterface* wanted) const override {
    for (int i = 0; i < childCount(); ++i)
      if (child(i) == wanted) return i;
    return -1;
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    QAction* const item = menu_ ? menu_->actionAt(menu_->mapFromGlobal(QPoint(x, y))) : nullptr;
    return item != nullptr ? child(static_cast<int>(menu_->actions().indexOf(item))) : nullptr;
  }
  QAccessibleInterface* focusChild() const override {
    QAction* const item = menu_ ? menu_->activeAction() : nullptr;
    return item != nullptr ? child(static_cast<int>(menu_->actions().indexOf(item))) : nullptr;
  }
  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name && menu_ ? WithoutMnemonic(menu_->title())
                                              : QAccessibleWidget::text(kind);
  }

 private:
  QPointer<CommandMenu> menu_;
  mutable QHash<const QAction*, QAccessible::Id> items_;
};

QAccessibleInterface* ReaderOf(const QString&, QObject* object) {
  auto* const menu = qobject_cast<CommandMenu*>(object);
  return menu != nullptr ? new MenuForReader(menu) : nullptr;
}

}  // namespace

CommandMenu::CommandMenu(const QString& title, QWidget* parent) : QMenu(title, parent) {
  static const bool told = (QAccessible::installFactory(&ReaderOf), true);
  Q_UNUSED(told);
  connect(this, &QMenu::hovered, this, &CommandMenu::ShowHintOf);
  connect(this, &QMenu::aboutToHide, this, [] { QToolTip::hideText(); });
}

void CommandMenu::LeadsTo(QAction& item, const QString& name) {
  item.setProperty(kLeadsTo, name);
}

bool CommandMenu::IsDimmed(const QAction& item) {
  if (const QMenu* const submenu = item.menu()) {
    const QList<QAction*> items = submenu->actions();
    return !items.isEmpty() &&
           std::all_of(items.begin(), items.end(), [](const QAction* below) { return IsDimmed(*below); });
  }
  const QString name = item.property(kLeadsTo).toString();
  return !name.isEmpty() && IsMissing(name);
}

QString CommandMenu::SpokenName(const QAction& item) {
  return IsDimmed(item) ? WordsForMissing(item.text()) : WithoutMnemonic(item.text());
}

void CommandMenu::initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const {
  QMenu::initStyleOption(option, action);
  // A caption that ends with a key of another item stands with the keys.
  static const QRegularExpression named_key(QStringLiteral("\\s{2,}(F\\d+)$"));
  option->text.replace(named_key, QStringLiteral("\t\\1"));
  if (!IsDimmed(*action)) return;
  option->state &= ~QStyle::State_Enabled;
  option->palette.setCurrentColorGroup(QPalette::Disabled);
}

// Beside the item, so that it says so to the keyboard as well as to the mouse.
void CommandMenu::ShowHintOf(const QAction* item) {
  if (!actions().contains(item) || !IsDimmed(*item)) {
    QToolTip::hideText();
    return;
  }
  const QRect place = actionGeometry(const_cast<QAction*>(item));
  QToolTip::showText(mapToGlobal(place.topRight() - QPoint(spacing::kHuge, 0)), SpokenName(*item), this,
                     place);
}

}  // namespace zelmar
