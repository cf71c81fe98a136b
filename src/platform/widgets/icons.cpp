#include "platform/widgets/icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

// Outside any namespace, where the resource of a static library has to be named.
static void InitialiseIconResource() {
  Q_INIT_RESOURCE(icons);
}

namespace zelmar {

namespace {

class LineDrawingEngine : public QIconEngine {
 public:
  LineDrawingEngine(QByteArray drawing, IconTone tone) : drawing_(std::move(drawing)), tone_(tone) {}

  QIconEngine* clone() const override { return new LineDrawingEngine(*this); }

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    painter->drawPixmap(rect, Picture(rect.size() * painter->device()->devicePixelRatioF(), mode));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override { return Picture(size, mode); }

 private:
  // The drawing in pixels. Drawn once for each size and colour, and kept for the next one who asks.
  QPixmap Picture(const QSize& pixels, QIcon::Mode mode) const {
    QByteArray coloured = drawing_;
    coloured.replace("currentColor", ColourFor(mode).name().toLatin1());
    coloured.replace("contrastColor", ContrastFor(mode).name().toLatin1());
    const QString key =
        QStringLiteral("icon %1 %2 %3").arg(qHash(coloured)).arg(pixels.width()).arg(pixels.height());
    QPixmap picture;
    if (QPixmapCache::find(key, &picture)) return picture;
    picture = QPixmap(pixels);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(coloured).render(&painter, QRectF(QPointF(), QSizeF(pixels)));
    painter.end();
    QPixmapCache::insert(key, picture);
    return picture;
  }

  QColor ColourFor(QIcon::Mode mode) const {
    const QPalette palette = QApplication::palette();
    if (mode == QIcon::Disabled) return palette.color(QPalette::Disabled, QPalette::ButtonText);
    if (mode == QIcon::Selected) return palette.color(QPalette::HighlightedText);
    return palette.color(tone_ == IconTone::kAccent ? QPalette::Highlight : QPalette::ButtonText);
  }

  static QColor ContrastFor(QIcon::Mode mode) {
    const QPalette palette = QApplication::palette();
    return palette.color(mode == QIcon::Disabled ? QPalette::Window : QPalette::HighlightedText);
  }

  QByteArray drawing_;
  IconTone tone_;
};

}  // namespace

void InitialiseIcons() {
  InitialiseIconResource();
}

QIcon IconOf(const QString& name, IconTone tone) {
  InitialiseIconResource();
  QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QIcon(new LineDrawingEngine(file.readAll(), tone));
}

}  // namespace zelmar
