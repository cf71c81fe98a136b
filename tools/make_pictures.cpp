// make_pictures <folder of SVG files> <output folder>: each drawing as a JPEG of the same name, at its own
// size.

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  if (argc != 3) {
    std::fprintf(stderr, "usage: make_pictures <folder of SVG files> <output folder>\n");
    return 2;
  }
  const QDir source(QString::fromLocal8Bit(argv[1]));
  const QDir target(QString::fromLocal8Bit(argv[2]));
  QDir().mkpath(target.path());
  for (const QString& name : source.entryList({QStringLiteral("*.svg")}, QDir::Files)) {
    QSvgRenderer renderer(source.filePath(name));
    QImage image(renderer.defaultSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    const QString file = target.filePath(QFileInfo(name).completeBaseName() + QStringLiteral(".jpg"));
    if (!renderer.isValid() || !image.save(file, "JPG", 92)) {
      std::fprintf(stderr, "make_pictures: %s cannot be drawn into %s\n", qPrintable(name), qPrintable(file));
      return 1;
    }
  }
  return 0;
}
