#include "app/card_button.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>

#include "platform/widgets/icons.h"
#include "platform/widgets/spacing.h"

namespace zelmar {

namespace {

constexpr int kPicture = 30;
constexpr int kDisc = 48;
constexpr int kSmallDisc = 40;
constexpr int kRadius = 10;
constexpr int kFocusWidth = 3;
constexpr int kTitleFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextShowMnemonic;
constexpr int kDescriptionFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;

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

void CardButton::SetDimmed(bool dimmed) {
  if (dimmed_ == dimmed) return;
  dimmed_ = dimmed;
  update();
}

QFont CardButton::TitleFont() const {
  QFont title = font();
  title.setPointSizeF(title.pointSizeF() * 1.1);
  title.setWeight(QFont::DemiBold);
  return title;
}

int CardButton::FullHeight() const {
  if (full_height_ == 0) {
    const int text = QFontMetrics(TitleFont()).height() + 2 * fontMetrics().height() + spacing::kTight;
    full_height_ = 3 * spacing::kLarge + kDisc + text;
  }
  return full_height_;
}

QSize CardButton::sizeHint() const {
  return {220, FullHeight()};
}

QSize CardButton::minimumSizeHint() const {
  if (smallest_.isValid()) return smallest_;
  const QFontMetrics title(TitleFont());
  int widest_word = 0;
  for (const QString& word : text().remove(QLatin1Char('&')).split(QLatin1Char(' ')))
    widest_word = std::max(widest_word, title.horizontalAdvance(word) + 1);
  const int width = 3 * spacing::kSmall + kSmallDisc + widest_word;
  const QRect words = title.boundingRect(QRect(0, 0, widest_word, QWIDGETSIZE_MAX), kTitleFlags, text());
  smallest_ = {width, 2 * spacing::kSmall + std::max(kSmallDisc, words.height())};
  return smallest_;
}

void CardButton::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    smallest_ = QSize();
    full_height_ = 0;
  }
  QAbstractButton::changeEvent(event);
}

QColor CardButton::Colour(QPalette::ColorRole role) const {
  return palette().color(dimmed_ || !isEnabled() ? QPalette::Disabled : QPalette::Active, role);
}

void CardButton::PaintPicture(QPainter& painter, const QRect& disc) const {
  QColor tint = Colour(QPalette::Highlight);
  tint.setAlphaF(dimmed_ ? 0.3F : 0.14F);
  painter.setPen(Qt::NoPen);
  painter.setBrush(tint);
  painter.drawRoundedRect(disc, kRadius, kRadius);
  const int margin = (disc.width() - kPicture) / 2;
  icon().paint(&painter, disc.adjusted(margin, margin, -margin, -margin), Qt::AlignCenter,
               dimmed_ ? QIcon::Disabled : QIcon::Normal);
}

void CardButton::PaintWords(QPainter& painter, QRect place, Qt::Alignment where) const {
  const QFont title = TitleFont();
  const int title_height = QFontMetrics(title).boundingRect(place, kTitleFlags, text()).height();
  const int gap = spacing::kTight;
  const int description_height = fontMetrics().boundingRect(place, kDescriptionFlags, description_).height();
  const bool whole = title_height + gap + description_height <= place.height();
  const int used = whole ? title_height + gap + description_height : title_height;
  if (where == Qt::AlignVCenter) place.setTop(place.top() + std::max(0, (place.height() - used) / 2));
  painter.setPen(Colour(QPalette::ButtonText));
  painter.setFont(title);
  painter.drawText(place, kTitleFlags, text());
  if (!whole) return;
  painter.setFont(font());
  painter.setPen(dimmed_ ? Colour(QPalette::ButtonText) : palette().color(QPalette::PlaceholderText));
  painter.drawText(place.adjusted(0, title_height + gap, 0, 0), kDescriptionFlags, description_);
}

void CardButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QPalette& colours = palette();
  const bool under_mouse = underMouse() && isEnabled();
  const double border = hasFocus() ? kFocusWidth : 1;
  painter.setPen(QPen(colours.color(hasFocus() ? QPalette::Highlight : QPalette::Mid), border));
  painter.setBrush(colours.color(isDown()      ? QPalette::Mid
                                 : under_mouse ? QPalette::Midlight
                                               : QPalette::Base));
  const double inset = std::max(1.0, border / 2);
  painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), kRadius, kRadius);

  if (height() >= FullHeight()) {
    const QRect inside =
        rect().adjusted(spacing::kLarge, spacing::kLarge, -spacing::kLarge, -spacing::kLarge);
    const QRect disc(inside.topLeft(), QSize(kDisc, kDisc));
    PaintPicture(painter, disc);
    PaintWords(painter, inside.adjusted(0, kDisc + spacing::kLarge, 0, 0), Qt::AlignTop);
    return;
  }
  const QRect inside = rect().adjusted(spacing::kSmall, spacing::kSmall, -spacing::kSmall, -spacing::kSmall);
  PaintPicture(painter,
               QRect(inside.left(), inside.center().y() - kSmallDisc / 2 + 1, kSmallDisc, kSmallDisc));
  PaintWords(painter, inside.adjusted(kSmallDisc + spacing::kSmall, 0, 0, 0), Qt::AlignVCenter);
}

}  // namespace zelmar
