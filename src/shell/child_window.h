// The base of every window that lives in the main window's area.
//
// A window is created on first use and deleted when it is closed: hold it by QPointer. Its system name is its
// objectName; its transport bar, where it has one, is the child named MyPlayBar. Its topic in the help is
// that of its row in the table of commands.
#pragma once

#include <QWidget>

namespace zelmar {

class PlayBar;

class ChildWindow : public QWidget {
  Q_OBJECT

 public:
  explicit ChildWindow(const QString& system_name);

  // Shows the window in front of the others.
  void ShowOnTop();
  void ShowMaximisedOnTop();
  // Closes the window, which ends it.
  void Unload();
  // Called whenever the window comes to the front.
  void Activate();

  // Called when the tune in memory has another title.
  virtual void ShowTitleOfTune();

  PlayBar* MyPlayBar() const;
  // The window's topic number in the help, 0 for none.
  int HelpContext() const;

 protected:
  // What the window does when it comes to the front; the menu's list of windows follows.
  virtual void Activated() {}
  // Enter presses the button that has the keyboard; other keys that nothing else took are the transport
  // bar's.
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  // F1 is the window's own where the help has a topic for it.
  bool event(QEvent* event) override;

 private:
  QWidget* Frame();
};

}  // namespace zelmar
