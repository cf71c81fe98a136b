#include "platform/widgets/read_outs.h"

#include <QPainter>
#include <QtMath>
#include <algorithm>

namespace zelmar {

namespace {

double DigitWidth(const QFontMetricsF& metrics) {
  double widest = 0.0;
  for (char digit = '0'; digit <= '9'; ++digit)
    widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
  return widest;
}

double CellWidth(const QFontMetricsF& metrics, QChar letter) {
  return letter.isDigit() ? DigitWidth(metrics) : metrics.horizontalAdvance(letter);
}

}  // namespace

ReadOut::ReadOut(int characters, QWidget* parent) : QLabel(parent), characters_(characters) {
  setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize ReadOut::sizeHint() const {
  const QFontMetricsF metrics(font());
  return {qCeil(DigitWidth(metrics) * characters_) + 4, qCeil(metrics.height())};
}

double ReadOut::WidthOf(const QFontMetricsF& metrics, QStringView text) const {
  double width = 0.0;
  for (const QChar letter : text) width += CellWidth(metrics, letter);
  return width;
}

void ReadOut::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
  // A text that is wider than was foreseen is drawn smaller, never cut off.
  QFont fitting = font();
  const double natural = WidthOf(QFontMetricsF(fitting), text());
  if (natural > width() && fitting.pointSizeF() > 0)
    fitting.setPointSizeF(std::max(fitting.pointSizeF() * width() / natural - 0.2, 6.0));
  painter.setFont(fitting);
  const QFontMetricsF metrics(fitting);
  double x = (width() - WidthOf(metrics, text())) / 2.0;
  const double baseline = (height() + metrics.ascent() - metrics.descent()) / 2.0;
  for (const QChar letter : text()) {
    const double cell = CellWidth(metrics, letter);
    painter.drawText(QPointF(x + (cell - metrics.horizontalAdvance(letter)) / 2.0, baseline), letter);
    x += cell;
  }
}

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize ElidedLabel::minimumSizeHint() const {
  return {QFontMetrics(font()).averageCharWidth() * 8, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
  setToolTip(shown == text() ? QString() : text());
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(rect(), static_cast<int>(alignment()) | Qt::TextSingleLine, shown);
}

}  // namespace zelmar
