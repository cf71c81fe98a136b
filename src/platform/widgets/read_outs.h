// Labels and buttons that keep their size while their text changes: read-outs of numbers, and titles of any
// length.
#pragma once

#include <QLabel>
#include <QPushButton>

namespace zelmar {

// A short text in cells of equal width, so that nothing moves when digits change. Its width is that of its
// widest text, told beforehand.
class ReadOut : public QLabel {
  Q_OBJECT

 public:
  explicit ReadOut(int characters, QWidget* parent = nullptr);

  // What is read out, such as "Beat": a screen reader says it before the text.
  const QString& Meaning() const { return meaning_; }
  void SetMeaning(const QString& meaning) { meaning_ = meaning; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  double WidthOf(const QFontMetricsF& metrics, QStringView text) const;

  int characters_;
  QString meaning_;
  mutable QSize size_;  // reckoned when it is asked for first
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

// A button whose caption ends in dots where it is too long; the whole stands in its tooltip then.
class ElidedButton : public QPushButton {
  Q_OBJECT

 public:
  explicit ElidedButton(QWidget* parent = nullptr);
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace zelmar
