#include "shell/field_check.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "platform/failure.h"

namespace zelmar {

namespace {

constexpr char kLeavingProperty[] = "zelmarLeaving";

Leaving LeavingTo(const QWidget& widget) {
  return static_cast<Leaving>(widget.property(kLeavingProperty).toInt());
}

// What counts as one window: a child window of the main window's area, else the window itself.
QWidget* WindowAround(QWidget* widget) {
  while (!widget->isWindow() && qobject_cast<QMdiSubWindow*>(widget->parentWidget()) == nullptr)
    widget = widget->parentWidget();
  return widget;
}

// Takes away the press that is on its way to what was to have the keyboard. Gone once events are handled
// again, so that no press is meant but that one.
class PressTaker : public QObject {
 public:
  PressTaker() {
    qApp->installEventFilter(this);
    QTimer::singleShot(0, this, &PressTaker::End);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool press =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (!press || !watched->isWidgetType()) return false;
    event->accept();
    End();
    return true;
  }

 private:
  // A box may be shown before what is deleted later goes.
  void End() {
    qApp->removeEventFilter(this);
    deleteLater();
  }
};

}  // namespace

void SetLeaving(QWidget& button, Leaving leaving) {
  button.setProperty(kLeavingProperty, static_cast<int>(leaving));
}

bool SettleFields(QWidget& window) {
  // What one of them stores may end others.
  QList<QPointer<FieldCheck>> checks;
  for (FieldCheck* check : window.findChildren<FieldCheck*>()) checks.append(check);
  return std::all_of(checks.begin(), checks.end(),
                     [](const auto& check) { return !check || check->Settle(); });
}

bool SettleFieldsInFocus() {
  QWidget* const focus = QApplication::focusWidget();
  return focus == nullptr || SettleFields(*WindowAround(focus));
}

FieldCheck::FieldCheck(QWidget* control, QLineEdit* line)
    : QObject(control), control_(control), line_(line), accepted_(line->text()) {
  control_->installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, this, &FieldCheck::FocusMoved);
  // The program sets a text that counts as accepted; the line knows a person's changes from it.
  connect(line_, &QLineEdit::textChanged, this, [this](const QString& text) {
    if (!line_->isModified()) before_ = std::exchange(accepted_, text);
  });
  connect(line_, &QLineEdit::textEdited, this, [this] { WindowAround(control_)->installEventFilter(this); });
}

void FieldCheck::Stop() {
  disconnect(qApp, nullptr, this, nullptr);
  control_->removeEventFilter(this);
  MarkAccepted();
  busy_ = true;
}

bool FieldCheck::IsChanged() const {
  return line_->isModified() && line_->text() != accepted_;
}

void FieldCheck::MarkAccepted() {
  accepted_ = line_->text();
  line_->setModified(false);
}

std::optional<Refusal> FieldCheck::WhyNot() const {
  return FirstRefusal(rules_, line_->text());
}

bool FieldCheck::Settle() {
  const bool waits = IsChanged() && !given_up_ && control_->isVisible() && control_->isEnabled();
  return !waits || Run();
}

bool FieldCheck::Test() {
  return Run();
}

bool FieldCheck::Run() {
  // A box of the same text stands already, or is about to.
  if (busy_ || box_waits_) return false;
  const QPointer<FieldCheck> self(this);
  const std::vector<Refusal> refusals = Attempt();
  if (!self) return false;
  if (refusals.empty()) {
    AskLater();
    return true;
  }
  Show(refusals);
  return false;
}

void FieldCheck::TakeChoice() {
  if (busy_ || box_waits_) return;
  const QPointer<FieldCheck> self(this);
  std::vector<Refusal> refusals = Attempt();
  if (!self) return;
  if (refusals.empty()) {
    AskLater();
    return;
  }
  // The control set the text by itself; it is as open as one that was typed.
  accepted_ = before_;
  line_->setModified(true);
  ShowLater(std::move(refusals));
}

std::vector<Refusal> FieldCheck::Attempt() {
  const QPointer<FieldCheck> self(this);
  const QString text = line_->text();
  std::vector<Refusal> refusals;
  if (std::optional<Refusal> own = FirstRefusal(rules_, text)) {
    refusals.push_back(*own);
    if (own->after == AfterFailure::kStop) return refusals;
  } else if (store_) {
    // A copy, since the hook may end the field.
    const FieldStore store = store_;
    busy_ = true;
    try {
      store(text);
    } catch (const Failure& failure) {
      refusals.push_back({MessageIcon::kCritical, {}, failure.Description()});
    } catch (...) {
      if (self) busy_ = false;
      throw;
    }
    if (!self) return {};
    busy_ = false;
    if (!refusals.empty()) return refusals;
  }
  if (const auto between = between_) {
    if (std::optional<Refusal> other = between()) refusals.push_back(std::move(*other));
    if (!self) return {};
  }
  if (refusals.empty()) {
    MarkAccepted();
    Q_EMIT Accepted();
  }
  return refusals;
}

void FieldCheck::SetAfterStore(std::function<void()> ask) {
  after_store_ = std::move(ask);
  stored_in_passing_ = !after_store_;
}

void FieldCheck::AskLater() {
  if (!after_store_) return;
  QTimer::singleShot(0, this, [this] {
    if (WindowAround(control_)->isVisible()) after_store_();
  });
}

// --- The way of the keyboard ---

bool FieldCheck::Holds(const QWidget* widget) const {
  // Through the parents, since the list of a combo box is a window of its own.
  for (const QObject* part = widget; part != nullptr; part = part->parent())
    if (part == control_) return true;
  return false;
}

bool FieldCheck::IsPartOfDialogue() const {
  return qobject_cast<QDialog*>(control_->window()) != nullptr;
}

void FieldCheck::FocusMoved(QWidget* old, QWidget* now) {
  if (busy_) return;
  if (Holds(now)) {
    away_ = given_up_ = false;
    return;
  }
  if (!Holds(old) && !away_) return;
  away_ = true;
  // Another program is in front.
  if (now == nullptr) return;
  if (!control_->isVisible() || !control_->isEnabled()) {
    away_ = false;
    return;
  }
  const Leaving leaving = LeavingTo(*now);
  if (WindowAround(now) != WindowAround(control_)) {
    if (stored_in_passing_) StoreWhatPasses();
  } else if (leaving == Leaving::kFree) {
    StoreWhatPasses();
  } else if (leaving == Leaving::kGivesUp) {
    given_up_ = true;
  } else {
    away_ = given_up_ = false;
    Leave();
  }
}

void FieldCheck::Leave() {
  if (!box_waits_ && !IsChanged()) {
    Q_EMIT Left();
    return;
  }
  std::vector<Refusal> refusals;
  if (!box_waits_) {
    const QPointer<FieldCheck> self(this);
    refusals = Attempt();
    if (!self) return;
    if (refusals.empty()) {
      AskLater();
      Q_EMIT Left();
      return;
    }
  }
  new PressTaker;
  if (fallback_)
    TakeFallback();
  else
    control_->setFocus(Qt::OtherFocusReason);
  if (!refusals.empty()) ShowLater(std::move(refusals));
}

void FieldCheck::StoreWhatPasses() {
  if (!IsChanged()) return;
  const QPointer<FieldCheck> self(this);
  if (Attempt().empty() && self) AskLater();
}

// --- Boxes ---

// A box inside the event that moves the keyboard would let that event go on behind it, in a window that may
// be gone.
void FieldCheck::ShowLater(std::vector<Refusal> refusals) {
  box_waits_ = true;
  QTimer::singleShot(0, this, [this, refusals = std::move(refusals)] {
    box_waits_ = false;
    if (!busy_ && control_->isVisible()) Show(refusals);
  });
}

void FieldCheck::Show(const std::vector<Refusal>& refusals) {
  const QPointer<FieldCheck> self(this);
  if (fallback_) TakeFallback();
  busy_ = true;
  for (const Refusal& refusal : refusals) {
    ShowMessage(refusal.icon, refusal.text, refusal.title);
    if (!self) return;
  }
  busy_ = false;
  if (!fallback_) HoldKeyboard();
}

void FieldCheck::TakeFallback() {
  line_->setText(fallback_());
  MarkAccepted();
}

// Where no window manager is at work, a box that closes leaves no window in front.
void FieldCheck::HoldKeyboard() {
  control_->activateWindow();
  control_->setFocus(Qt::OtherFocusReason);
  line_->selectAll();
}

// --- Keys, and the end of the window ---

bool FieldCheck::eventFilter(QObject* watched, QEvent* event) {
  if (watched != control_) {
    if (event->type() == QEvent::Close && !busy_ && !given_up_ && !IsPartOfDialogue() &&
        control_->isVisible())
      StoreWhatPasses();
    return false;
  }
  if (event->type() != QEvent::KeyPress) return false;
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key == Qt::Key_Return || key == Qt::Key_Enter) return !Settle();
  if (key != Qt::Key_Escape || !IsChanged() || IsPartOfDialogue()) return false;
  line_->setText(accepted_);
  line_->selectAll();
  return true;
}

}  // namespace zelmar
