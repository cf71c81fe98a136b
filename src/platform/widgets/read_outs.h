// Labels that keep their size while their text changes: read-outs of numbers, and titles of any length.
#pragma once

#include <QLabel>

namespace zelmar {

// A short text in cells of equal width, so that nothing moves when digits change. Its width is that of its
// widest text, told beforehand.
class ReadOut : public QLabel {
  Q_OBJECT

 public:
  explicit ReadOut(int characters, QWidget* parent = nullptr);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  double WidthOf(const QFontMetricsF& metrics, QStringView text) const;

  int characters_;
};

// One line of text that ends in dots where it is too long; the whole stands in its tooltip then.
class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(QWidget* parent = nullptr);
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace zelmar
