// The main menu, built from its table, and F1 in the menus, in the menu bar and where no window takes it.

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

#include "app/command_menu.h"
#include "app/main_menu.h"
#include "app/main_menu_bar.h"
#include "app/mdi_parent.h"
#include "shell/child_window.h"
#include "shell/help.h"
#include "shell/window_catalogue.h"

namespace zelmar {

namespace {

constexpr char kHelpContextProperty[] = "helpContext";

QString NameOf(const MenuRow& row) {
  const QLatin1String name(row.name);
  return row.index == 0 ? QString(name) : QStringLiteral("%1(%2)").arg(name).arg(row.index);
}

}  // namespace

void MDIParent::BuildMenu() {
  setMenuBar(new MainMenuBar(this));
  menuBar()->setObjectName(QStringLiteral("MainMenu"));
  for (const MenuRow& row : MainMenu()) AddMenuRow(row);
  mnuFile_ = menuBar()->findChild<QMenu*>(QStringLiteral("mnuFile"));
  mnuWindowsTitle_ = menuBar()->findChild<QMenu*>(QStringLiteral("mnuWindowsTitle"));
}

void MDIParent::AddMenuRow(const MenuRow& row) {
  const auto add_menu = [this, &row](auto* home) {
    auto* menu = new CommandMenu(QLatin1String(row.caption), home);
    menu->setObjectName(QLatin1String(row.name));
    menu->installEventFilter(this);
    home->addMenu(menu);
  };
  if (row.kind == MenuRow::Kind::kMenu) {
    add_menu(menuBar());
    return;
  }
  // Rows follow the menu that they stand in.
  QMenu* const menu = menuBar()->actions().constLast()->menu();
  if (row.kind == MenuRow::Kind::kSubmenu) {
    add_menu(menu);
    return;
  }
  const QLatin1String submenu(row.submenu);
  QMenu* const home = submenu.isEmpty() ? menu : menu->findChild<QMenu*>(submenu);
  auto* action = new QAction(QLatin1String(row.caption), home);
  action->setObjectName(NameOf(row));
  if (row.index != 0) action->setProperty("index", row.index);
  if (row.help_context != 0) action->setProperty(kHelpContextProperty, row.help_context);
  if (row.kind == MenuRow::Kind::kSeparator) action->setSeparator(true);
  CommandMenu::LeadsTo(*action, QLatin1String(row.window[0] != '\0' ? row.window : row.name));
  if (row.shortcut[0] != '\0') action->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
  if (row.kind == MenuRow::Kind::kTopLevelItem) {
    action->setParent(menuBar());
    menuBar()->addAction(action);
  } else {
    home->addAction(action);
  }

  if (row.act != nullptr)
    connect(action, &QAction::triggered, this, [this, act = row.act] { (this->*act)(); });
  else if (row.window[0] != '\0')
    connect(action, &QAction::triggered, this,
            [name = QString(QLatin1String(row.window))] { ShowWindow(name); });
  else if (row.index != 0 && row.kind == MenuRow::Kind::kItem)
    connect(action, &QAction::triggered, this, [this, index = row.index] { mnuWindows_Click(index); });
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
