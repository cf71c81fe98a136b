// Watches a field: what was typed is tested when the field is left and on Enter, and handed on when it
// passes.
//
// The rules are tried in order; the box of the first that fails is shown, and the keyboard stays in the field
// with its text selected. A field that was not changed is not tested. These ways out never trap a person:
//
// - A button that SetLeaving marks: Help and the Back of a window (kFree; what passes is stored, without a
//   box), and Cancel (kGivesUp; nothing is stored). The field is tested again once the keyboard goes on from
//   there to another control of the window.
// - Another window of the program, the window's own end, another program: no box. What passes is stored in
//   the first two cases (not when a dialogue ends); with another program in front nothing happens.
// - A field that is hidden or disabled.
//
// Escape puts back what stood there, unless the field is part of a dialogue, which Escape closes.
//
// A press of the mouse that meant to leave and was refused does nothing else, so no command runs on a text
// that failed. Shortcuts, menus and mnemonics do not move the keyboard: their commands call
// SettleFieldsInFocus first.
#pragma once

#include <QObject>
#include <functional>
#include <optional>
#include <vector>

#include "model/field_rules.h"

class QLineEdit;
class QWidget;

namespace zelmar {

enum class Leaving { kTested, kFree, kGivesUp };

// What it means for a field that the keyboard goes to this button.
void SetLeaving(QWidget& button, Leaving leaving);

// Settles every field of the window that was changed and is not given up; false at the first that is refused.
bool SettleFields(QWidget& window);
// Those of the window that has the keyboard: for a command of the menu.
bool SettleFieldsInFocus();

class FieldCheck : public QObject {
  Q_OBJECT

 public:
  // `line` is the control itself, or the line of a combo box that takes typing. Lives as long as the control;
  // a class that owns both deletes the check first.
  FieldCheck(QWidget* control, QLineEdit* line);

  void SetRules(std::vector<FieldRule> rules) { rules_ = std::move(rules); }
  // Takes the text that has passed. It shows no box: what is to be asked belongs into SetAfterStore. A
  // Failure that it throws is shown, and the keyboard stays.
  void SetStore(FieldStore store) { store_ = std::move(store); }
  // Called when the text is stored and the event that led to it is over, unless the window is hidden by then.
  // A text that leads to a question is not stored in passing.
  void SetAfterStore(std::function<void()> ask);
  // Whether what passes is stored when another window of the program gets the keyboard.
  void SetStoredInPassing(bool stored) { stored_in_passing_ = stored; }
  // A rule between this field and others, tried after the text is stored: what is wrong, or nothing.
  void SetRuleBetweenFields(std::function<std::optional<Refusal>()> rule) { between_ = std::move(rule); }
  // Instead of keeping the keyboard after a failure, the field takes this text. A press that left the field
  // does nothing else then, either: the person is to see the text first.
  void SetFallback(std::function<QString()> text) { fallback_ = std::move(text); }

  // True when a person has changed the text since it was set or accepted.
  bool IsChanged() const;
  // The text as it stands is the accepted one; nothing is stored.
  void MarkAccepted();
  // What the rules of the field say of its text as it stands, changed or not. Shows nothing.
  std::optional<Refusal> WhyNot() const;

  // Tests and stores the text when it was changed. When it fails, shows the box, and false.
  bool Settle();
  // As Settle, for a text that was not changed too: what an OK button calls for a field that is required.
  bool Test();
  // As Test, with the box behind the event that is at work: for a choice that takes the place of typing.
  void TakeChoice();
  // Watches no longer.
  void Stop();

 Q_SIGNALS:
  // A text has passed and is stored.
  void Accepted();
  // The keyboard has gone on within the window, and the text is in order.
  void Left();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void FocusMoved(QWidget* old, QWidget* now);
  void Leave();
  void StoreWhatPasses();
  bool Holds(const QWidget* widget) const;
  bool IsPartOfDialogue() const;
  bool Run();
  // Tests, stores, and tests between fields: what has failed, in the order of the boxes.
  std::vector<Refusal> Attempt();
  void AskLater();
  void ShowLater(std::vector<Refusal> refusals);
  void Show(const std::vector<Refusal>& refusals);
  void TakeFallback();
  void HoldKeyboard();

  QWidget* control_;
  QLineEdit* line_;
  QString accepted_;
  QString before_;  // what was accepted before the program set another text
  std::vector<FieldRule> rules_;
  FieldStore store_;
  std::function<void()> after_store_;
  std::function<std::optional<Refusal>()> between_;
  std::function<QString()> fallback_;
  bool away_ = false;      // the keyboard has gone by a way that is not tested, and the text waits
  bool given_up_ = false;  // it has gone to a button that gives up
  bool busy_ = false;      // a box of its own or a hook is at work
  bool stored_in_passing_ = true;
  bool box_waits_ = false;  // a box is shown as soon as the event that led to it is over
};

}  // namespace zelmar
