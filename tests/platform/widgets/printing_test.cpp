// A window on paper: one landscape page, and what is said when there is none.
#include <QLabel>
#include <QPrinter>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "platform/failure.h"
#include "platform/widgets/printing.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

class Printing : public ::testing::Test {
 protected:
  Printing() {
    window_.resize(800, 300);
    window_.setText(QStringLiteral("Words that stay words"));
    printer_.setOutputFormat(QPrinter::PdfFormat);
    printer_.setOutputFileName(folder_.filePath(QStringLiteral("page.pdf")));
  }

  QByteArray Written() const {
    QFile file(printer_.outputFileName());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  QTemporaryDir folder_;
  QPrinter printer_{QPrinter::HighResolution};
  QLabel window_;
};

TEST_F(Printing, AWindowBecomesOneLandscapePage) {
  printer_.setPageSize(QPageSize(QPageSize::A4));
  PrintOnLandscapePage(window_, printer_);
  const QByteArray pdf = Written();
  ASSERT_TRUE(pdf.startsWith("%PDF"));
  EXPECT_EQ(pdf.count("/Type /Page\n"), 1);
  const QRegularExpression box(QStringLiteral("/MediaBox \\[\\s*0 0 (\\d+)[.\\d]* (\\d+)"));
  const auto found = box.match(QString::fromLatin1(pdf));
  EXPECT_EQ(found.captured(1).toInt(), 842);
  EXPECT_EQ(found.captured(2).toInt(), 595);
}

TEST_F(Printing, WordsArePrintedAsWordsAndNotAsAPicture) {
  PrintOnLandscapePage(window_, printer_);
  const QByteArray pdf = Written();
  EXPECT_TRUE(pdf.contains("/Type /Font"));
  EXPECT_FALSE(pdf.contains("/Subtype /Image"));
}

TEST_F(Printing, AFileThatCannotBeWrittenIsAFailureThatNamesIt) {
  const QString file = folder_.filePath(QStringLiteral("no such folder/page.pdf"));
  printer_.setOutputFileName(file);
  try {
    PrintOnLandscapePage(window_, printer_);
    FAIL() << "nothing was thrown";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Description(), QStringLiteral("The page cannot be written into \"%1\".").arg(file));
  }
}

TEST(FitIntoPage, AWideWindowFillsTheWidthAndStandsInTheMiddle) {
  const QRectF placed = FitIntoPage({800, 200}, {1600, 1000}).mapRect(QRectF(0, 0, 800, 200));
  EXPECT_EQ(placed, QRectF(0, 300, 1600, 400));
}

TEST(FitIntoPage, ATallWindowFillsTheHeightAndStandsInTheMiddle) {
  const QRectF placed = FitIntoPage({200, 400}, {1600, 1000}).mapRect(QRectF(0, 0, 200, 400));
  EXPECT_EQ(placed, QRectF(550, 0, 500, 1000));
}

}  // namespace
}  // namespace zelmar
