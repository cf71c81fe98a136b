// Pages that paint themselves: on a printer, and in a PDF file.
#include "platform/widgets/page_printing.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QPrinter>
#include <QTemporaryDir>

#include "platform/failure.h"
#include "platform/services.h"
#include "support/full_disk.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

// Three pages with their numbers.
class ThreePages : public PrintedPages {
 public:
  QString Title() const override { return QStringLiteral("Three pages"); }
  int LayOut(double width, double height) override {
    room = QSizeF(width, height);
    return 3;
  }
  void Paint(int page, QPainter& painter) override {
    painted.append(page);
    // Where the painter stands, and how long a point is there, in inches.
    const double dots = painter.device()->logicalDpiX();
    point_inches = painter.transform().m11() / dots;
    painter.drawText(QPointF(10, 20), QStringLiteral("Page %1").arg(page));
  }

  QSizeF room;
  QList<int> painted;
  double point_inches = 0.0;
};

class PagePrinting : public ::testing::Test {
 protected:
  QString Path() const { return folder_.filePath(QStringLiteral("list.pdf")); }
  QByteArray Written() const {
    QFile file(Path());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  static qsizetype PagesOf(const QByteArray& pdf) { return pdf.count("/Type /Page\n"); }

  QTemporaryDir folder_;
  ThreePages pages_;
};

TEST_F(PagePrinting, APdfFileHasAllPagesAndWordsAsWords) {
  WritePdf(pages_, Path());
  const QByteArray pdf = Written();
  ASSERT_TRUE(pdf.startsWith("%PDF"));
  EXPECT_EQ(PagesOf(pdf), 3);
  EXPECT_TRUE(pdf.contains("/Type /Font"));
  EXPECT_EQ(pages_.painted, QList<int>({1, 2, 3}));
  EXPECT_NEAR(pages_.point_inches, 1.0 / 72.0, 1e-9);
}

TEST_F(PagePrinting, PagesHaveTheRoomBetweenTheMarginsOfTheUsualPaper) {
  WritePdf(pages_, Path());
  const QPageLayout paper = UsualPaper();
  EXPECT_EQ(paper.orientation(), QPageLayout::Portrait);
  EXPECT_NEAR(pages_.room.width(), paper.paintRect(QPageLayout::Point).width(), 1.0);
  EXPECT_NEAR(pages_.room.height(), paper.paintRect(QPageLayout::Point).height(), 1.0);
  EXPECT_NEAR(
      paper.fullRect(QPageLayout::Millimeter).width() - paper.paintRect(QPageLayout::Millimeter).width(),
      30.0, 0.5);
}

TEST_F(PagePrinting, APdfFileIsWholeOrStaysAsItWas) {
  {
    QFile file(Path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("before");
  }
  {
    const testing_support::FullDisk full(100);
    EXPECT_THROW(WritePdf(pages_, Path()), Failure);
  }
  EXPECT_EQ(Written(), "before");
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files).size(), 1);
}

TEST_F(PagePrinting, AFolderThatIsNotThereIsAFailureThatNamesTheFile) {
  const QString path = folder_.filePath(QStringLiteral("no/list.pdf"));
  try {
    WritePdf(pages_, path);
    FAIL() << "nothing was thrown";
  } catch (const Failure& failure) {
    EXPECT_TRUE(
        failure.Description().startsWith(QStringLiteral("The file %1 cannot be written: ").arg(path)));
  }
}

class PagesOnAPrinter : public PagePrinting {
 protected:
  PagesOnAPrinter() {
    printer_.setOutputFormat(QPrinter::PdfFormat);
    printer_.setOutputFileName(Path());
    printer_.setPageSize(QPageSize(QPageSize::A5));
  }

  QPrinter printer_{QPrinter::HighResolution};
};

TEST_F(PagesOnAPrinter, AllOfThemAreForThePaperOfThePrinter) {
  PrintPagesOn(pages_, printer_);
  EXPECT_EQ(PagesOf(Written()), 3);
  EXPECT_NEAR(pages_.point_inches, 1.0 / 72.0, 1e-6);
  EXPECT_LT(pages_.room.width(), 420.0) << "narrower than the paper is";
  EXPECT_GT(pages_.room.width(), 300.0);
}

TEST_F(PagesOnAPrinter, OnlyThoseThatWereChosen) {
  printer_.setFromTo(2, 3);
  PrintPagesOn(pages_, printer_);
  EXPECT_EQ(pages_.painted, QList<int>({2, 3}));
  EXPECT_EQ(PagesOf(Written()), 2);
  pages_.painted.clear();
  printer_.setFromTo(3, 9);
  PrintPagesOn(pages_, printer_);
  EXPECT_EQ(pages_.painted, QList<int>{3});
}

TEST_F(PagesOnAPrinter, OneThatTakesNoPageIsAFailure) {
  printer_.setOutputFileName(folder_.filePath(QStringLiteral("no/list.pdf")));
  EXPECT_THROW(PrintPagesOn(pages_, printer_), Failure);
}

}  // namespace
}  // namespace zelmar
