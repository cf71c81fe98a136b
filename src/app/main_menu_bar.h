// The menu bar of the main window.
//
// Menus that find no room stand behind an arrow at its right end, which the keyboard reaches as it reaches a
// menu. A menu's letter belongs to the menu, also where a control of a child window claims the same one.
#pragma once

#include <QMenuBar>

class QToolButton;

namespace zelmar {

class MainMenuBar : public QMenuBar {
  Q_OBJECT

 public:
  explicit MainMenuBar(QWidget* parent);

  // Gives the keyboard back to where it was before it moved into the bar.
  void LeaveBar();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void childEvent(QChildEvent* event) override;

 private:
  class LetterKeeper;

  bool IsHidden(QAction* action) const;
  // The menu of that letter; null when none has it.
  QAction* ActionOf(const QKeySequence& mnemonic) const;
  void OpenByMnemonic(QAction* action, const QKeySequence& mnemonic);
  // Opens what stands behind the arrow, at that menu.
  void OpenArrow(QAction* at);
  void ShowWhetherArrowIsInHand();

  QToolButton* arrow_;
};

}  // namespace zelmar
