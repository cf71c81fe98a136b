// The shared progress window: a caption and how far the work has come.
#pragma once

#include <QDialog>

class QLabel;
class QProgressBar;

namespace zelmar {

class FrmProgressBar : public QDialog {
  Q_OBJECT

 public:
  // The one instance, made on first use.
  static FrmProgressBar* Instance();
  // The one instance; null when it is not loaded.
  static FrmProgressBar* Loaded();
  // Closes the one instance, if there is one.
  static void Unload();

  QProgressBar* MyProgressBar() const { return MyProgressBar_; }
  void SetCaption(const QString& caption);

 private:
  FrmProgressBar();

  QLabel* lblCaption_;
  QProgressBar* MyProgressBar_;
};

}  // namespace zelmar
