// The help panel: pages among the other windows, with a way back.
#pragma once

#include "shell/child_window.h"

namespace zelmar {

class PageView;

class FrmHelp : public ChildWindow {
  Q_OBJECT

 public:
  // The one instance, made on first use; it opens on the page UserDefault.htm.
  static FrmHelp* Instance();

  void ShowPage(const QString& page);

 private:
  FrmHelp();

  PageView* view_;
};

}  // namespace zelmar
