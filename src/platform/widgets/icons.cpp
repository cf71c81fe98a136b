#include "platform/widgets/icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
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
    QByteArray coloured = drawing_;
    coloured.replace("currentColor", ColourFor(mode).name().toLatin1());
    coloured.replace("contrastColor", ContrastFor(mode).name().toLatin1());
    QSvgRenderer renderer(coloured);
    painter->setRenderHint(QPainter::Antialiasing);
    renderer.render(painter, rect);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return picture;
  }

 private:
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
