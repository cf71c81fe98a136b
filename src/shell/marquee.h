// The running text of the windows that ask for patience, in seven colours.
#pragma once

#include <QLabel>
#include <QString>
#include <array>

namespace zelmar {

class Marquee {
 public:
  static constexpr int kIntervalMilliseconds = 150;

  // One step on. The text is what is to be shown now.
  QString Step();
  QColor Colour() const;
  void Restart() { *this = Marquee(); }

 private:
  int position_ = 0;
  std::size_t colour_ = 0;
};

// A dark strip that shows a marquee, so that all seven colours can be read on it.
class MarqueeLabel : public QLabel {
  Q_OBJECT

 public:
  explicit MarqueeLabel(QWidget* parent = nullptr);
  void Step();
  void Restart();

 private:
  Marquee marquee_;
};

}  // namespace zelmar
