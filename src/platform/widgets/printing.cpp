#include "platform/widgets/printing.h"

#include <QPainter>
#include <QPicture>
#include <QPrinter>
#include <QWidget>
#include <algorithm>

#include "platform/failure.h"

namespace zelmar {

void FailToPrint(const QPrinter& printer) {
  const QString file = printer.outputFileName();
  throw Failure(error_number::kFileAccess,
                file.isEmpty()
                    ? QStringLiteral("The printer \"%1\" does not take the page.").arg(printer.printerName())
                    : QStringLiteral("The page cannot be written into \"%1\".").arg(file));
}

QTransform FitIntoPage(const QSizeF& window, const QSizeF& page) {
  const double scale = std::min(page.width() / window.width(), page.height() / window.height());
  return QTransform::fromTranslate((page.width() - window.width() * scale) / 2.0,
                                   (page.height() - window.height() * scale) / 2.0)
      .scale(scale, scale);
}

void PrintOnLandscapePage(QWidget& window, QPrinter& printer) {
  // A widget turns itself into one large image when it meets a printer. Recorded first, its lines and words
  // stay what they are; they are measured in the pixels of the screen, so the page is as well.
  QPicture picture;
  window.render(&picture);
  printer.setResolution(picture.logicalDpiY());
  printer.setPageOrientation(QPageLayout::Landscape);
  printer.setDocName(window.windowTitle());
  QPainter painter;
  if (!painter.begin(&printer)) FailToPrint(printer);
  const QSizeF page = printer.pageLayout().paintRectPixels(printer.resolution()).size();
  painter.setTransform(FitIntoPage(window.size(), page));
  painter.drawPicture(0, 0, picture);
  if (!painter.end() || printer.printerState() == QPrinter::Error) FailToPrint(printer);
}

}  // namespace zelmar
