// The main menu, built from the table of commands, and F1 in the menus, in the menu bar and where no window
// takes it.

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

#include "app/command_menu.h"
#include "app/main_menu_bar.h"
#include "app/mdi_parent.h"
#include "platform/failure.h"
#include "shell/child_window.h"
#include "shell/command_table.h"
#include "shell/help_topics.h"
#include "shell/window_catalogue.h"

namespace zelmar {

namespace {

constexpr char kHelpContextProperty[] = "helpContext";

using enum CommandRow::Kind;

bool StandsInBar(const CommandRow& row) {
  return row.kind == kMenu || row.kind == kTopLevelItem;
}

}  // namespace

void MDIParent::BuildMenu() {
  setMenuBar(new MainMenuBar(this));
  menuBar()->setObjectName(QStringLiteral("MainMenu"));
  const std::vector<const CommandRow*> rows = Commands();
  // Whoever handed an item to the table need not know when its menu came there.
  for (const CommandRow* row : rows)
    if (StandsInBar(*row)) AddToMenu(*row);
  for (const CommandRow* row : rows)
    if (!StandsInBar(*row)) AddToMenu(*row);
  mnuFile_ = menuBar()->findChild<QMenu*>(QStringLiteral("mnuFile"));
  mnuWindowsTitle_ = menuBar()->findChild<QMenu*>(QStringLiteral("mnuWindowsTitle"));
}

// A command in no menu has its key in the main window.
void MDIParent::AddToMenu(const CommandRow& row) {
  const QLatin1String menu(row.menu);
  QWidget* home = menuBar();
  if (!StandsInBar(row))
    home = menu.isEmpty() ? static_cast<QWidget*>(this) : menuBar()->findChild<QMenu*>(menu);
  if (home == nullptr)
    throw Failure(error_number::kInvalidCall, QStringLiteral("There is no menu named %1.").arg(menu));
  if (row.kind == kMenu || row.kind == kSubmenu) {
    auto* made = new CommandMenu(QLatin1String(row.caption), home);
    made->setObjectName(QLatin1String(row.name));
    made->installEventFilter(this);
    home->addAction(made->menuAction());
    return;
  }
  if (home == this && row.shortcut[0] == '\0') return;
  const QString name = NameOf(row);
  auto* action = new QAction(QLatin1String(row.caption), home);
  action->setObjectName(name);
  if (row.index != 0) action->setProperty("index", row.index);
  if (row.help_context != 0) action->setProperty(kHelpContextProperty, row.help_context);
  if (row.shortcut[0] != '\0') action->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
  action->setSeparator(row.kind == kSeparator);
  home->addAction(action);
  if (row.kind == kSeparator) return;
  CommandMenu::LeadsTo(*action, name);
  connect(action, &QAction::triggered, this, [name] { RunCommand(name); });
}

// --- F1 ---

namespace {

bool IsF1(const QEvent& event) {
  const auto& key = static_cast<const QKeyEvent&>(event);
  return key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier;
}

}  // namespace

int MDIParent::HelpContextInFront() {
  const ChildWindow* const child = ActiveChild();
  return child != nullptr && HasHelpContext(child->HelpContext()) ? child->HelpContext() : 0;
}

// Where no window takes the key, the menu bar in hand among them, it asks about the window in front. Without
// one it is the key of the menu's own item.
bool MDIParent::TakesF1(QEvent& event) {
  if (event.type() != QEvent::ShortcutOverride || !IsF1(event) || HelpContextInFront() == 0) return false;
  event.accept();
  return true;
}

void MDIParent::keyPressEvent(QKeyEvent* event) {
  if (!IsF1(*event) || HelpContextInFront() == 0) {
    QMainWindow::keyPressEvent(event);
    return;
  }
  // The window in front has the keyboard again when the help is closed.
  if (menuBar()->hasFocus()) static_cast<MainMenuBar*>(menuBar())->LeaveBar();
  ShowHelpContext(HelpContextInFront());
}

// F1 in an open menu tells about the item that is lit up, or about the window in front where the item has no
// topic.
bool MDIParent::eventFilter(QObject* watched, QEvent* event) {
  auto* const menu = qobject_cast<QMenu*>(watched);
  if (menu == nullptr || event->type() != QEvent::KeyPress || !IsF1(*event))
    return QMainWindow::eventFilter(watched, event);
  const QAction* const item = menu->activeAction();
  const int context = item != nullptr ? item->property(kHelpContextProperty).toInt() : 0;
  while (QWidget* const open = QApplication::activePopupWidget()) open->close();
  ShowHelpContext(HasHelpContext(context) ? context : HelpContextInFront());
  return true;
}

}  // namespace zelmar
