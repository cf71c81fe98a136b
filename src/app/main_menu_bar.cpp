#include "app/main_menu_bar.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QShortcutEvent>
#include <QToolButton>

#include "platform/widgets/icons.h"

namespace zelmar {

// A letter that several controls claim is offered to them in turn, and the one that is asked hears that it is
// ambiguous: there the menu takes it.
class MainMenuBar::LetterKeeper : public QObject {
 public:
  explicit LetterKeeper(MainMenuBar& bar) : QObject(&bar), bar_(bar) {}

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Shortcut || !watched->isWidgetType()) return false;
    const auto* const shortcut = static_cast<QShortcutEvent*>(event);
    if (!shortcut->isAmbiguous() || static_cast<QWidget*>(watched)->window() != bar_.window()) return false;
    QAction* const action = bar_.ActionOf(shortcut->key());
    if (action == nullptr) return false;
    bar_.OpenByMnemonic(action, shortcut->key());
    return true;
  }

 private:
  MainMenuBar& bar_;
};

MainMenuBar::MainMenuBar(QWidget* parent)
    : QMenuBar(parent), arrow_(findChild<QToolButton*>(QStringLiteral("qt_menubar_ext_button"))) {
  arrow_->setIcon(IconOf(QStringLiteral("more")));
  arrow_->setToolTip(tr("More menus"));
  arrow_->setAccessibleName(tr("More menus"));
  connect(this, &QMenuBar::hovered, this, &MainMenuBar::ShowWhetherArrowIsInHand);
  qApp->installEventFilter(new LetterKeeper(*this));
}

bool MainMenuBar::IsHidden(QAction* action) const {
  return action != nullptr && arrow_->isVisibleTo(this) && arrow_->menu() != nullptr &&
         arrow_->menu()->actions().contains(action);
}

QAction* MainMenuBar::ActionOf(const QKeySequence& mnemonic) const {
  for (QAction* action : actions())
    if (action->menu() != nullptr && QKeySequence::mnemonic(action->text()) == mnemonic) return action;
  return nullptr;
}

bool MainMenuBar::event(QEvent* event) {
  if (event->type() == QEvent::Shortcut) {
    const QKeySequence& key = static_cast<QShortcutEvent*>(event)->key();
    if (QAction* const action = ActionOf(key); IsHidden(action)) {
      OpenArrow(action);
      return true;
    }
  }
  return QMenuBar::event(event);
}

void MainMenuBar::OpenByMnemonic(QAction* action, const QKeySequence& mnemonic) {
  if (IsHidden(action)) {
    OpenArrow(action);
    return;
  }
  const QKeyCombination key = mnemonic[0];
  QKeyEvent press(QEvent::KeyPress, key.key(), key.keyboardModifiers(), QString(QChar(key.key())).toLower());
  QMenuBar::keyPressEvent(&press);
}

void MainMenuBar::OpenArrow(QAction* at) {
  LeaveBar();
  QMenu* const menu = arrow_->menu();
  menu->popup(arrow_->mapToGlobal(QPoint(arrow_->width() - menu->sizeHint().width(), arrow_->height())));
  menu->setActiveAction(at);
}

void MainMenuBar::LeaveBar() {
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QMenuBar::keyPressEvent(&escape);
  ShowWhetherArrowIsInHand();
}

void MainMenuBar::ShowWhetherArrowIsInHand() {
  arrow_->setDown(IsHidden(activeAction()));
}

void MainMenuBar::keyPressEvent(QKeyEvent* event) {
  QAction* const before = activeAction();
  switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Enter:
    case Qt::Key_Return:
    case Qt::Key_Space:
      if (!IsHidden(before)) break;
      OpenArrow(before);
      return;
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      // The arrow stands for all that is behind it.
      if (!IsHidden(before)) break;
      do QMenuBar::keyPressEvent(event);
      while (IsHidden(activeAction()) && activeAction() != before);
      ShowWhetherArrowIsInHand();
      return;
    default:
      break;
  }
  QMenuBar::keyPressEvent(event);
  ShowWhetherArrowIsInHand();
}

void MainMenuBar::focusOutEvent(QFocusEvent* event) {
  QMenuBar::focusOutEvent(event);
  ShowWhetherArrowIsInHand();
}

void MainMenuBar::resizeEvent(QResizeEvent* event) {
  QMenuBar::resizeEvent(event);
  // The menu behind the arrow is made when it is needed first. Its keys are heard as those of the others are.
  if (QMenu* const menu = arrow_->menu()) menu->installEventFilter(window());
}

// The icon of a maximised child takes the pixels of a sharp screen for its size, and would stand too high.
void MainMenuBar::childEvent(QChildEvent* event) {
  QMenuBar::childEvent(event);
  if (!event->polished() ||
      QLatin1String(event->child()->metaObject()->className()) != QLatin1String("QMdi::ControlLabel"))
    return;
  auto* const icon = static_cast<QWidget*>(event->child());
  icon->setFixedSize(icon->sizeHint());
}

}  // namespace zelmar
