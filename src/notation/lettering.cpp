#include "notation/lettering.h"

#include <QHash>
#include <QStringList>
#include <algorithm>

#include "notation/twips.h"

namespace zelmar {

namespace {

// Texts are measured so much larger than on a screen of 96 dots to the inch.
constexpr double kFine = 4.0 / kTwipsPerPixel;

// A face as it is asked for, and those that are as wide, for systems that lack it.
QStringList FamiliesOf(const QString& face) {
  static const QHash<QString, QStringList> families = {
      {QStringLiteral("Ariel"),
       {QStringLiteral("Ariel"), QStringLiteral("Arial"), QStringLiteral("Liberation Sans")}},
      {QStringLiteral("Times New Roman"),
       {QStringLiteral("Times New Roman"), QStringLiteral("Liberation Serif")}},
  };
  return families.value(face, {face});
}

double HeightOf(const Lettering& lettering, double scale) {
  return lettering.points * kTwipsPerPoint * scale;
}

// Fonts come in whole pixels; the rest of the way to the exact height is stretched.
int PixelsOf(const Lettering& lettering, double scale) {
  return std::max(1, qRound(HeightOf(lettering, scale)));
}

// Without hints a text is as wide at one scale as at another.
QFont FontOf(const Lettering& lettering, double scale) {
  QFont font;
  font.setFamilies(FamiliesOf(lettering.face));
  font.setPixelSize(PixelsOf(lettering, scale));
  font.setBold(lettering.bold);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

}  // namespace

WrittenText::WrittenText(const QString& text, const Lettering& lettering, QPointF top_left, double room,
                         double scale)
    : font_(FontOf(lettering, scale)),
      metrics_(font_),
      letters_(text),
      across_(HeightOf(lettering, scale) / PixelsOf(lettering, scale)),
      down_(across_) {
  const auto first =
      std::find_if(letters_.cbegin(), letters_.cend(), [](QChar letter) { return letter != u' '; });
  const qsizetype blanks = first - letters_.cbegin();
  const double indent = metrics_.horizontalAdvance(letters_.first(blanks)) * across_;
  letters_.remove(0, blanks);
  start_ = top_left * scale + QPointF(indent, metrics_.ascent() * down_);
  if (room > 0.0) FitInto(std::max(room * scale - indent, 0.0), lettering.narrowest);
}

void WrittenText::FitInto(double room, double narrowest) {
  constexpr double kRounding = 1e-6;
  const double width = metrics_.horizontalAdvance(letters_) * across_;
  if (width <= room) return;
  across_ *= std::max(narrowest, room / width);
  if (width * narrowest > room + kRounding)
    letters_ = metrics_.elidedText(letters_, Qt::ElideRight, room / across_);
}

QRectF WrittenText::Box() const {
  QString seen = letters_;
  while (seen.endsWith(u' ')) seen.chop(1);
  const QRectF ink = metrics_.tightBoundingRect(seen);
  return {start_.x() + ink.left() * across_, start_.y() + ink.top() * down_, ink.width() * across_,
          ink.height() * down_};
}

double TextWidth(const QString& text, const Lettering& lettering) {
  const QFontMetricsF metrics(FontOf(lettering, kFine));
  return metrics.horizontalAdvance(text) * HeightOf(lettering, 1.0) / PixelsOf(lettering, kFine);
}

QRectF BoxOfText(const QString& text, const Lettering& lettering, QPointF top_left, double room) {
  const QRectF box = WrittenText(text, lettering, top_left, room, kFine).Box();
  return {box.topLeft() / kFine, box.size() / kFine};
}

}  // namespace zelmar
