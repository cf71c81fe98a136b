#include "platform/widgets/page_printing.h"

#include <QBuffer>
#include <QLocale>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <algorithm>

#include "platform/services.h"
#include "platform/whole_file.h"
#include "platform/widgets/printing.h"

namespace zelmar {

namespace {

constexpr double kPointsToTheInch = 72.0;
constexpr int kPdfDotsToTheInch = 1200;
constexpr QMarginsF kMargins(15.0, 15.0, 15.0, 15.0);  // millimetres

struct PageRange {
  int first;
  int last;
};

// Page numbers of 0 stand for all pages.
PageRange ChosenPages(const QPrinter& printer, int count) {
  if (printer.fromPage() == 0) return {1, count};
  const int first = std::clamp(printer.fromPage(), 1, count);
  return {first, std::clamp(printer.toPage(), first, count)};
}

// `turn_page` begins a new page on the painter's device; false when it cannot.
template <typename TurnPage>
bool PaintPages(PrintedPages& pages, PageRange range, int dots_to_the_inch, QPainter& painter,
                TurnPage turn_page) {
  for (int page = range.first; page <= range.last; ++page) {
    if (page > range.first && !turn_page()) return false;
    painter.save();
    painter.scale(dots_to_the_inch / kPointsToTheInch, dots_to_the_inch / kPointsToTheInch);
    pages.Paint(page, painter);
    painter.restore();
  }
  return true;
}

}  // namespace

QPageLayout UsualPaper() {
  const bool letter = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
  return QPageLayout(QPageSize(letter ? QPageSize::Letter : QPageSize::A4), QPageLayout::Portrait, kMargins,
                     QPageLayout::Millimeter);
}

void PrintPagesOn(PrintedPages& pages, QPrinter& printer) {
  printer.setPageMargins(kMargins, QPageLayout::Millimeter);
  printer.setDocName(pages.Title());
  const QSizeF room = printer.pageLayout().paintRect(QPageLayout::Point).size();
  const int count = pages.LayOut(room.width(), room.height());
  QPainter painter;
  if (!painter.begin(&printer)) FailToPrint(printer);
  const bool painted = PaintPages(pages, ChosenPages(printer, count), printer.resolution(), painter,
                                  [&printer] { return printer.newPage(); });
  if (!painter.end() || !painted || printer.printerState() == QPrinter::Error) FailToPrint(printer);
}

void WritePdf(PrintedPages& pages, const QString& path) {
  // The writer does not see a disk that is full, so the file is made once all is there.
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setResolution(kPdfDotsToTheInch);
  writer.setPageLayout(UsualPaper());
  writer.setTitle(pages.Title());
  const QSizeF room = writer.pageLayout().paintRect(QPageLayout::Point).size();
  const int count = pages.LayOut(room.width(), room.height());
  QPainter painter(&writer);
  PaintPages(pages, {1, count}, kPdfDotsToTheInch, painter, [&writer] { return writer.newPage(); });
  painter.end();
  WriteWholeFile(path, bytes);
}

}  // namespace zelmar
