// The main menu, built from its table, and what its keys do inside an open menu.

#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

#include "app/main_menu.h"
#include "app/mdi_parent.h"
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
  menuBar()->setObjectName(QStringLiteral("MainMenu"));
  for (const MenuRow& row : MainMenu()) AddMenuRow(row);
  mnuFile_ = menuBar()->findChild<QMenu*>(QStringLiteral("mnuFile"));
  mnuWindowsTitle_ = menuBar()->findChild<QMenu*>(QStringLiteral("mnuWindowsTitle"));
}

void MDIParent::AddMenuRow(const MenuRow& row) {
  const auto add_menu = [this, &row](QMenu* menu) {
    menu->setObjectName(QLatin1String(row.name));
    menu->installEventFilter(this);
    return menu;
  };
  if (row.kind == MenuRow::Kind::kMenu) {
    add_menu(menuBar()->addMenu(QLatin1String(row.caption)));
    return;
  }
  // Rows follow the menu that they stand in.
  QMenu* const menu = menuBar()->actions().constLast()->menu();
  if (row.kind == MenuRow::Kind::kSubmenu) {
    add_menu(menu->addMenu(QLatin1String(row.caption)));
    return;
  }
  const QLatin1String submenu(row.submenu);
  QMenu* const home = submenu.isEmpty() ? menu : menu->findChild<QMenu*>(submenu);
  auto* action = new QAction(QLatin1String(row.caption), home);
  action->setObjectName(NameOf(row));
  if (row.index != 0) action->setProperty("index", row.index);
  if (row.help_context != 0) action->setProperty(kHelpContextProperty, row.help_context);
  if (row.kind == MenuRow::Kind::kSeparator) action->setSeparator(true);
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

// F1 on an item of an open menu tells about that item.
bool MDIParent::eventFilter(QObject* watched, QEvent* event) {
  auto* const menu = qobject_cast<QMenu*>(watched);
  if (menu != nullptr && event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_F1) {
    const QAction* const item = menu->activeAction();
    const int context = item != nullptr ? item->property(kHelpContextProperty).toInt() : 0;
    menu->close();
    ShowHelpContext(context);
    return true;
  }
  return QMainWindow::eventFilter(watched, event);
}

}  // namespace zelmar
