#include "app/card_button.h"

#include <QPainter>

#include "platform/widgets/icons.h"
#include "platform/widgets/spacing.h"

namespace zelmar {

namespace {

constexpr int kPicture = 30;
constexpr int kDisc = 48;
constexpr int kRadius = 10;

}  // namespace

CardButton::CardButton(const QString& icon, const QString& title, const QString& description, QWidget* parent)
    : QAbstractButton(parent), description_(description) {
  setIcon(IconOf(icon, IconTone::kAccent));
  setText(title);
  setAccessibleDescription(description);
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

QFont CardButton::TitleFont() const {
  QFont title = font();
  title.setPointSizeF(title.pointSizeF() * 1.1);
  title.setWeight(QFont::DemiBold);
  return title;
}

QSize CardButton::sizeHint() const {
  const int text = QFontMetrics(TitleFont()).height() + 2 * fontMetrics().height() + spacing::kTight;
  return {220, 3 * spacing::kLarge + kDisc + text};
}

QSize CardButton::minimumSizeHint() const {
  return {170, sizeHint().height()};
}

void CardButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QPalette& colours = palette();
  const bool under_mouse = underMouse() && isEnabled();
  painter.setPen(QPen(colours.color(hasFocus() ? QPalette::Highlight : QPalette::Mid), hasFocus() ? 2 : 1));
  painter.setBrush(colours.color(isDown()      ? QPalette::Mid
                                 : under_mouse ? QPalette::Midlight
                                               : QPalette::Base));
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kRadius, kRadius);

  const QRect inside = rect().adjusted(spacing::kLarge, spacing::kLarge, -spacing::kLarge, -spacing::kLarge);
  QColor tint = colours.color(QPalette::Highlight);
  tint.setAlphaF(0.14F);
  painter.setPen(Qt::NoPen);
  painter.setBrush(tint);
  const QRect disc(inside.topLeft(), QSize(kDisc, kDisc));
  painter.drawRoundedRect(disc, kRadius, kRadius);
  const int margin = (kDisc - kPicture) / 2;
  icon().paint(&painter, disc.adjusted(margin, margin, -margin, -margin));

  const QFont title = TitleFont();
  const QFontMetrics title_metrics(title);
  QRect line(inside.left(), disc.bottom() + spacing::kLarge, inside.width(), title_metrics.height());
  painter.setPen(colours.color(QPalette::ButtonText));
  painter.setFont(title);
  painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, text());
  painter.setFont(font());
  painter.setPen(colours.color(QPalette::PlaceholderText));
  painter.drawText(QRect(inside.left(), line.bottom() + spacing::kTight, inside.width(),
                         inside.bottom() - line.bottom() - spacing::kTight + 1),
                   Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, description_);
}

}  // namespace zelmar
