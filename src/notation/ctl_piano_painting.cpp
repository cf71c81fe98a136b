// How the piano keyboard looks.

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "notation/ctl_piano.h"

namespace zelmar {

namespace {

constexpr QColor kWhiteTop(232, 232, 230);
constexpr QColor kWhiteMiddle(252, 252, 250);
constexpr QColor kWhiteFoot(224, 224, 221);
constexpr QColor kBlackTop(66, 68, 74);
constexpr QColor kBlackFoot(22, 23, 26);
constexpr QColor kCrack(120, 122, 128);
constexpr QColor kNameOnBlack(0xFF, 0xFF, 0xFF);
constexpr QColor kNameOnWhite(0xFF, 0, 0);

QColor Mixed(const QColor& first, const QColor& second, float share_of_second) {
  const float share = 1.0F - share_of_second;
  return QColor::fromRgbF(first.redF() * share + second.redF() * share_of_second,
                          first.greenF() * share + second.greenF() * share_of_second,
                          first.blueF() * share + second.blueF() * share_of_second);
}

// A key's outline: square at the top, round at the foot.
QPainterPath KeyShape(const QRectF& key, double radius) {
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  path.addRoundedRect(key, radius, radius);
  path.addRect(QRectF(key.topLeft(), QSizeF(key.width(), std::max(0.0, key.height() - radius))));
  return path.simplified();
}

}  // namespace

void CtlPiano::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), kCrack);
  const QRectF dirty(event->rect());
  for (const bool black : {false, true})
    for (int index = 0; index < KeyCount(); ++index)
      if (IsBlackPianoKey(index) == black && IsKeyVisible(index) && KeyRect(index).intersects(dirty))
        PaintKey(painter, index);
  if (!hasFocus()) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(palette().color(QPalette::Highlight), 3));
  painter.drawRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5));
}

void CtlPiano::PaintKey(QPainter& painter, int index) const {
  const bool black = IsBlackPianoKey(index);
  const bool down = IsKeyDown(index);
  const double pixel = 1.0 / devicePixelRatioF();
  // A hair of the ground shows between two white keys.
  const QRectF key = KeyRect(index).adjusted(0, 0, black ? 0 : -pixel, 0);
  if (key.width() <= 0 || key.height() <= 0) return;
  const double radius = std::min(4.0, key.width() / 5);
  const QColor accent = palette().color(QPalette::Highlight);

  QLinearGradient fill(key.topLeft(), key.bottomLeft());
  if (black) {
    // Dark enough under white letters in either colour scheme.
    const QColor lit = Mixed(accent, Qt::black, accent.lightness() > 150 ? 0.45F : 0.1F);
    fill.setColorAt(0, down ? Mixed(lit, Qt::black, 0.35F) : kBlackTop);
    fill.setColorAt(1, down ? lit : kBlackFoot);
  } else {
    fill.setColorAt(0, down ? Mixed(kWhiteTop, accent, 0.25F) : kWhiteTop);
    fill.setColorAt(0.1, down ? Mixed(kWhiteMiddle, accent, 0.2F) : kWhiteMiddle);
    fill.setColorAt(0.9, down ? Mixed(kWhiteMiddle, accent, 0.5F) : kWhiteMiddle);
    fill.setColorAt(1, down ? Mixed(kWhiteFoot, accent, 0.65F) : kWhiteFoot);
  }
  painter.setPen(Qt::NoPen);
  if (black) {
    painter.setBrush(QColor(0, 0, 0, 60));
    painter.drawPath(KeyShape(key.adjusted(-pixel, 0, 2 * pixel, down ? pixel : 3 * pixel), radius));
  }
  painter.setBrush(fill);
  painter.drawPath(KeyShape(key, radius));
  if (black && !down && key.width() > 6) {
    // The light on the top of a key that is up.
    const double rim = key.width() / 7;
    QLinearGradient light(key.topLeft(), key.bottomLeft());
    light.setColorAt(0, QColor(255, 255, 255, 18));
    light.setColorAt(1, QColor(255, 255, 255, 60));
    painter.setBrush(light);
    painter.drawPath(KeyShape(key.adjusted(rim, 0, -rim, -key.height() / 9), radius / 2));
  }

  const QString name = KeyText(index);
  const QString letter = hasFocus() ? LetterOf(index) : QString();
  QFont small = font();
  small.setPixelSize(std::clamp(static_cast<int>(key.width() * (black ? 0.62 : 0.5)), 6, 15));
  painter.setFont(small);
  const QRectF room = key.adjusted(-2, 0, 2, -key.height() / (black ? 9 : 18));
  if (!name.isEmpty()) {
    small.setBold(true);
    painter.setFont(small);
    painter.setPen(black ? kNameOnBlack : kNameOnWhite);
    painter.drawText(room, Qt::AlignHCenter | Qt::AlignBottom, name);
  } else if (!letter.isEmpty()) {
    painter.setPen(black ? QColor(255, 255, 255, 170) : QColor(0, 0, 0, 120));
    painter.drawText(room, Qt::AlignHCenter | Qt::AlignBottom, letter);
  }
}

}  // namespace zelmar
