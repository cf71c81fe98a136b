#include "platform/widgets/read_outs.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QtMath>
#include <algorithm>

#include "platform/mnemonics.h"

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

// Made of the text when it is asked for: a tune that plays changes it with every beat.
class ReadOutForReader : public QAccessibleWidget {
 public:
  explicit ReadOutForReader(ReadOut* read_out) : QAccessibleWidget(read_out, QAccessible::StaticText) {}

  QString text(QAccessible::Text kind) const override {
    const auto* const read_out = static_cast<const ReadOut*>(object());
    if (kind != QAccessible::Name || read_out == nullptr) return QAccessibleWidget::text(kind);
    return QStringLiteral("%1 %2").arg(read_out->Meaning(), read_out->text()).trimmed();
  }
};

QAccessibleInterface* ReaderOf(const QString&, QObject* object) {
  auto* const read_out = qobject_cast<ReadOut*>(object);
  return read_out != nullptr ? new ReadOutForReader(read_out) : nullptr;
}

}  // namespace

ReadOut::ReadOut(int characters, QWidget* parent) : QLabel(parent), characters_(characters) {
  static const bool told = (QAccessible::installFactory(&ReaderOf), true);
  Q_UNUSED(told);
  setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize ReadOut::sizeHint() const {
  if (size_.isValid()) return size_;
  const QFontMetricsF metrics(font());
  size_ = {qCeil(DigitWidth(metrics) * characters_) + 4, qCeil(metrics.height())};
  return size_;
}

void ReadOut::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) size_ = QSize();
  QLabel::changeEvent(event);
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

ElidedButton::ElidedButton(QWidget* parent) : QPushButton(parent) {
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize ElidedButton::minimumSizeHint() const {
  return {QFontMetrics(font()).averageCharWidth() * 12, QPushButton::minimumSizeHint().height()};
}

void ElidedButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  const int room = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this).width();
  option.text = fontMetrics().elidedText(text(), Qt::ElideRight, room, Qt::TextShowMnemonic);
  setToolTip(option.text == text() ? QString() : WithoutMnemonic(text()));
  painter.drawControl(QStyle::CE_PushButton, option);
}

}  // namespace zelmar
