#include "shell/marquee.h"

#include <QFontDatabase>

namespace zelmar {

namespace {

constexpr int kLastPosition = 14;
constexpr int kShownCharacters = 6;

// Blue in the high byte.
constexpr std::array<int, 7> kColours = {255, 0xFF00FF, 0xFF0000, 0xFFFF00, 65280, 65535, 0xFFFFFF};

}  // namespace

QString Marquee::Step() {
  if (++position_ > kLastPosition) {
    position_ = 1;
    colour_ = (colour_ + 1) % kColours.size();
  }
  return QStringLiteral("Please Wait         ").mid(position_ - 1, kShownCharacters);
}

QColor Marquee::Colour() const {
  const int colour = kColours[colour_];
  return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

MarqueeLabel::MarqueeLabel(QWidget* parent) : QLabel(parent) {
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPointSizeF(font().pointSizeF() * 1.2);
  fixed.setBold(true);
  setFont(fixed);
  setAutoFillBackground(true);
  setMargin(6);
  setMinimumWidth(QFontMetrics(fixed).horizontalAdvance(QLatin1Char('M')) * (kShownCharacters + 2));
  // The scraps that pass by are no words.
  setAccessibleName(tr("Please wait"));
  Restart();
}

void MarqueeLabel::Restart() {
  marquee_.Restart();
  QPalette colours = palette();
  colours.setColor(QPalette::Window, QColor(0x20, 0x22, 0x28));
  colours.setColor(QPalette::WindowText, marquee_.Colour());
  setPalette(colours);
  clear();
}

void MarqueeLabel::Step() {
  setText(marquee_.Step());
  QPalette colours = palette();
  colours.setColor(QPalette::WindowText, marquee_.Colour());
  setPalette(colours);
}

}  // namespace zelmar
