// The small status window of long work: a caption and a running text.
#pragma once

#include <QDialog>
#include <QTimer>

class QLabel;

namespace zelmar {

class MarqueeLabel;

class DialogWait : public QDialog {
  Q_OBJECT

 public:
  // The one instance, made on first use.
  static DialogWait* Instance();
  // Closes the one instance, if there is one.
  static void Unload();

  void SetCaption(const QString& caption);
  // With the flag set the window closes itself after a second.
  void SetSelfClosing(bool self_closing) { self_closing_ = self_closing; }
  bool SelfClosing() const { return self_closing_; }
  int TickCount() const { return tick_count_; }

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  DialogWait();
  void Timer1_Timer();

  QTimer* Timer1_;
  MarqueeLabel* txtWait_;
  QLabel* lblCaption_;
  bool self_closing_ = false;
  int tick_count_ = 0;
};

}  // namespace zelmar
