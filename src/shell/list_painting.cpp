#include "shell/list_painting.h"

#include <QPainter>

namespace zelmar {

namespace {

// Letters are set this many times as large and painted so many times smaller: their widths are then the same
// at every resolution.
constexpr double kFineness = 20.0;

constexpr double kLeading = 1.15;    // height of a line beside that of its letters
constexpr double kRulePoints = 0.5;  // thickness

struct StyleOfLetters {
  double size;  // beside that of a row
  QFont::Weight weight;
  const char* colour;
};
// By PrintedStyle.
constexpr StyleOfLetters kStyles[kPrintedStyleCount] = {
    {2.0, QFont::Bold, "#1c2026"},    // title
    {1.0, QFont::Normal, "#5c6572"},  // under the title
    {1.0, QFont::Normal, "#1c2026"},  // preface
    {1.0, QFont::Normal, "#5c6572"},  // running head
    {0.9, QFont::Bold, "#5c6572"},    // heads of columns
    {1.25, QFont::Bold, "#1f3a9e"},   // heads of groups
    {1.0, QFont::Normal, "#1c2026"},  // rows
    {1.0, QFont::Normal, "#1c2026"},  // closing
    {0.9, QFont::Normal, "#5c6572"},  // footer
};

bool HasRuleBelow(PrintedStyle style) {
  return style == PrintedStyle::kColumnHead;
}

bool HasRuleAbove(PrintedStyle style) {
  return style == PrintedStyle::kFooter;
}

void PaintRule(QPainter& painter, const PrintedLine& line, double y) {
  double left = line.pieces.front().left;
  double right = left;
  for (const PrintedPiece& piece : line.pieces) right = std::max(right, piece.left + piece.width);
  painter.setPen(QPen(QColor(QStringLiteral("#b9c0cb")), kRulePoints));
  painter.drawLine(QPointF(left, y), QPointF(right, y));
}

}  // namespace

ListLettering::ListLettering(double point_size) {
  for (const StyleOfLetters& style : kStyles) {
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(static_cast<int>(point_size * style.size * kFineness));
    font.setWeight(style.weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    letters_.push_back({font, QFontMetricsF(font)});
  }
}

double ListLettering::Width(PrintedStyle style, const QString& text) const {
  return Of(style).metrics.horizontalAdvance(text) / kFineness;
}

double ListLettering::LineHeight(PrintedStyle style) const {
  return Of(style).metrics.height() / kFineness * kLeading;
}

QRectF ListLettering::PlaceOf(const PrintedLine& line, const PrintedPiece& piece, qsizetype from,
                              qsizetype count) const {
  const double before = Width(line.style, piece.text.left(from));
  const double set_in = piece.at_right ? piece.width - Width(line.style, piece.text) : 0.0;
  return QRectF(piece.left + set_in + before, line.top, Width(line.style, piece.text.mid(from, count)),
                line.height);
}

void ListLettering::Paint(QPainter& painter, const PrintedPage& page) const {
  for (std::size_t i = 0; i < page.size(); ++i) {
    const PrintedLine& line = page[i];
    const Letters& letters = Of(line.style);
    if (line.pieces.empty()) continue;
    const bool goes_on_below = i + 1 < page.size() && page[i + 1].goes_on;
    if (HasRuleBelow(line.style) && !goes_on_below) PaintRule(painter, line, line.top + line.height);
    if (HasRuleAbove(line.style)) PaintRule(painter, line, line.top - kRulePoints);
    painter.save();
    painter.scale(1.0 / kFineness, 1.0 / kFineness);
    painter.setFont(letters.font);
    painter.setPen(QColor(QLatin1String(kStyles[static_cast<std::size_t>(line.style)].colour)));
    const double baseline = line.top * kFineness +
                            (line.height * kFineness - letters.metrics.height()) / 2.0 +
                            letters.metrics.ascent();
    for (const PrintedPiece& piece : line.pieces) {
      // A tenth of a point is no reason for dots.
      const QString text =
          letters.metrics.elidedText(piece.text, Qt::ElideRight, (piece.width + 0.1) * kFineness);
      const double set_in = piece.at_right ? piece.width - Width(line.style, text) : 0.0;
      painter.drawText(QPointF((piece.left + set_in) * kFineness, baseline), text);
    }
    painter.restore();
  }
}

ListPages::ListPages(std::shared_ptr<const PrintedList> list)
    : list_(std::move(list)), lettering_(std::make_shared<ListLettering>(list_->point_size)) {}

int ListPages::LayOut(double width, double height) {
  layout_ = std::make_unique<ListLayout>(list_, lettering_, width, height);
  layout_->Finish();
  return layout_->PageCount();
}

void ListPages::Paint(int page, QPainter& painter) {
  lettering_->Paint(painter, layout_->Page(page));
}

}  // namespace zelmar
