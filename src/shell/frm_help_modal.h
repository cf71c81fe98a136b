// A page in a window of its own.
#pragma once

#include <QDialog>

namespace zelmar {

class PageView;

class FrmHelpModal : public QDialog {
  Q_OBJECT

 public:
  // Shows the page in the one instance; with `modal` set, returns when the window is closed.
  static void ShowPage(const QString& page, const QString& caption, bool modal);

 private:
  FrmHelpModal();

  PageView* view_;
};

}  // namespace zelmar
