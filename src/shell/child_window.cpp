#include "shell/child_window.h"

#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include "midi/widgets/play_bar.h"
#include "platform/widgets/spacing.h"
#include "shell/button_keys.h"
#include "shell/command_table.h"
#include "shell/help_topics.h"
#include "shell/loaded_forms.h"
#include "shell/main_frame.h"

namespace zelmar {

namespace {

// The menu of a window's frame takes Ctrl+W for its Close on some systems, which the main menu needs: two
// takers of a key are none.
void KeepKeysOfMainMenu(QMdiSubWindow& frame) {
  if (frame.systemMenu() == nullptr) return;
  for (QAction* action : frame.systemMenu()->actions())
    if (action->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::Key_W)))
      action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_F4));
}

}  // namespace

ChildWindow::ChildWindow(const QString& system_name) {
  setObjectName(system_name);
  setAttribute(Qt::WA_DeleteOnClose);
  AddLoadedForm(this);
}

QWidget* ChildWindow::Frame() {
  if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget())) return frame;
  MainFrame* const main = TheMainFrame();
  if (main == nullptr) return this;
  QMdiSubWindow* const frame = main->Area()->addSubWindow(this);
  frame->setAttribute(Qt::WA_DeleteOnClose);
  KeepKeysOfMainMenu(*frame);
  // What is not maximised stands within the main window, with room to be moved.
  frame->resize(
      frame->sizeHint().boundedTo(main->Window()->size() - QSize(spacing::kHuge, 2 * spacing::kHuge)));
  return frame;
}

void ChildWindow::ShowOnTop() {
  QWidget* const frame = Frame();
  if (frame->isMinimized()) frame->showNormal();
  show();
  frame->show();
  frame->raise();
  if (auto* sub_window = qobject_cast<QMdiSubWindow*>(frame))
    sub_window->mdiArea()->setActiveSubWindow(sub_window);
}

void ChildWindow::ShowMaximisedOnTop() {
  ShowOnTop();
  Frame()->showMaximized();
}

void ChildWindow::Unload() {
  if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget()))
    frame->close();
  else
    close();
}

void ChildWindow::Activate() {
  Activated();
  TellFormsChanged();
}

void ChildWindow::ShowTitleOfTune() {
  if (PlayBar* const bar = MyPlayBar()) bar->ShowTitle();
}

int ChildWindow::HelpContext() const {
  return HelpContextOf(objectName());
}

PlayBar* ChildWindow::MyPlayBar() const {
  return findChild<PlayBar*>(QStringLiteral("MyPlayBar"));
}

bool ChildWindow::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_F1 && key->modifiers() == Qt::NoModifier && HasHelpContext(HelpContext())) {
      event->accept();
      return true;
    }
  }
  return QWidget::event(event);
}

void ChildWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1 && HasHelpContext(HelpContext())) {
    ShowHelpContext(HelpContext());
    return;
  }
  if (PressesButton(*this, *event)) return;
  PlayBar* const bar = MyPlayBar();
  if (bar == nullptr || event->modifiers() != Qt::NoModifier || !bar->HandleKey(event->key()))
    QWidget::keyPressEvent(event);
}

void ChildWindow::closeEvent(QCloseEvent* event) {
  QWidget::closeEvent(event);
  if (!event->isAccepted()) return;
  RemoveLoadedForm(this);
}

void ChildWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::WindowTitleChange) TellFormsChanged();
}

}  // namespace zelmar
