#include "shell/window_menu.h"

#include <QMenu>

#include "model/globals.h"
#include "shell/child_window.h"
#include "shell/loaded_forms.h"
#include "shell/main_frame.h"

namespace zelmar {

namespace {

constexpr int kFirstRecentTune = 2;

// Menu items are numbered: the number stands in the item's name and in its property "index".
void RemoveItems(QMenu* menu, const QString& prefix, int from) {
  const auto actions = menu->actions();
  for (QAction* action : actions) {
    if (!action->objectName().startsWith(prefix) || action->property("index").toInt() < from) continue;
    menu->removeAction(action);
    // An item may be rebuilt from within its own click, and waits for its end as long as a tune plays: the
    // name is free for its successor at once.
    action->setObjectName(QString());
    action->deleteLater();
  }
}

// By its position among the loaded ones.
void ShowListedWindow(qsizetype position) {
  QWidget* const form = LoadedForms().value(position);
  if (auto* child = qobject_cast<ChildWindow*>(form)) {
    child->ShowMaximisedOnTop();
  } else if (form != nullptr) {
    form->showMaximized();
    form->raise();
  }
}

QAction* MakeItem(QMenu* menu, const QString& prefix, int index, const QString& caption) {
  // A single "&" in a caption is part of it and no mnemonic.
  auto* action = new QAction(QString(caption).replace(QLatin1String("&"), QLatin1String("&&")), menu);
  action->setObjectName(QStringLiteral("%1(%2)").arg(prefix).arg(index));
  action->setProperty("index", index);
  return action;
}

}  // namespace

void RebuildWindowMenu() {
  MainFrame* const frame = TheMainFrame();
  if (frame == nullptr || frame->WindowsMenu() == nullptr) return;
  QMenu* const menu = frame->WindowsMenu();
  const QString prefix = QStringLiteral("mnuWindows");
  RemoveItems(menu, prefix, kFirstListedWindow);
  const QList<QWidget*> forms = LoadedForms();
  int index = kFirstListedWindow;
  for (qsizetype position = 0; position < forms.size(); ++position) {
    QWidget* const form = forms[position];
    if (form == frame->Window() || !form->isVisible()) continue;
    QAction* const item = MakeItem(menu, prefix, index, form->windowTitle());
    item->setData(static_cast<int>(position));
    item->setCheckable(true);
    item->setChecked(form == frame->ActiveChild());
    QObject::connect(item, &QAction::triggered, menu, [position] { ShowListedWindow(position); });
    menu->addAction(item);
    ++index;
  }
}

void RebuildRecentTunesMenu() {
  MainFrame* const frame = TheMainFrame();
  const Globals& globals = Global();
  if (frame == nullptr || frame->FileMenu() == nullptr || globals.RecentCodeNames[0].isEmpty()) return;
  QMenu* const menu = frame->FileMenu();
  const QString prefix = QStringLiteral("mnuRecentTunes");
  RemoveItems(menu, prefix, kFirstRecentTune);
  QAction* const behind = menu->findChild<QAction*>(QStringLiteral("mnuBlankExit"));
  for (std::size_t i = 0; i < globals.RecentCodeNames.size(); ++i) {
    if (globals.RecentCodeNames[i].isEmpty()) break;
    const int index = kFirstRecentTune + static_cast<int>(i);
    QAction* const item = MakeItem(menu, prefix, index, globals.RecentCaptions[i]);
    item->setData(globals.RecentCodeNames[i]);
    QObject::connect(item, &QAction::triggered, menu, [index] {
      if (TheMainFrame() != nullptr) TheMainFrame()->mnuRecentTunes_Click(index);
    });
    menu->insertAction(behind, item);
  }
}

}  // namespace zelmar
