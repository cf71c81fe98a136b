// The window that stands over the start.
#pragma once

#include <QWidget>

namespace zelmar {

class FrmSplash : public QWidget {
  Q_OBJECT

 public:
  FrmSplash();

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace zelmar
