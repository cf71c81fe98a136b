// The small status window of long work: a caption and a running text. While another program holds the
// database it says so and has a Cancel button, which ends the wait for it, as Escape and closing the window
// do then.
#pragma once

#include <QDialog>
#include <QTimer>

class QLabel;
class QPushButton;

namespace zelmar {

class MarqueeLabel;

class DialogWait : public QDialog {
  Q_OBJECT

 public:
  // The one instance, made on first use.
  static DialogWait* Instance();
  // Shows it and returns when it has closed itself.
  static void ShowUntilItCloses(const QString& caption);
  // Closes the one instance, if there is one.
  static void Unload();

  void SetCaption(const QString& caption);
  // With the flag set the window closes itself after a second.
  void SetSelfClosing(bool self_closing) { self_closing_ = self_closing; }
  bool SelfClosing() const { return self_closing_; }
  int TickCount() const { return tick_count_; }

  // Whether the work waits for another program. A window that closes itself does not do so meanwhile.
  void SetHeld(bool held);

  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  DialogWait();
  void Timer1_Timer();

  QTimer* Timer1_;
  MarqueeLabel* txtWait_;
  QLabel* lblCaption_;
  QLabel* lblHeld_;
  QPushButton* cmdCancel_;
  bool self_closing_ = false;
  bool held_ = false;
  int tick_count_ = 0;
};

}  // namespace zelmar
