// A printed list on the screen, and the ways out of it.
#include "shell/list_preview.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QToolButton>

#include "platform/failure.h"
#include "shell/find_bar.h"
#include "shell/list_painting.h"
#include "shell/list_preview_window.h"
#include "shell/loaded_forms.h"
#include "shell/page_canvas.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

QString Word(const char* text) {
  return QString::fromUtf8(text);
}

// A group for each of so many composers, with ten tunes.
PrintedList Tunes(int groups) {
  PrintedList list;
  list.title = Word("Zelmar database by Composer");
  list.database_title = Word("My Tunes");
  list.date = QDate(2025, 3, 7);
  list.group_heading = Word("Composer");
  list.columns = {{Word("Title"), 3.0}, {Word("Style"), 1.0}};
  for (int i = 1; i <= groups; ++i) {
    PrintedGroup group{QStringLiteral("Composer %1").arg(i)};
    for (int tune = 1; tune <= 10; ++tune)
      group.rows.push_back({QStringLiteral("Tune %1 of %2").arg(tune).arg(i), Word("Baroque")});
    list.groups.push_back(std::move(group));
  }
  return list;
}

class ListPreviews : public ::testing::Test {
 protected:
  explicit ListPreviews(int groups = 60) : preview_(Tunes(groups)) {
    preview_.resize(1000, 700);
    preview_.show();
    QCoreApplication::processEvents();
  }

  void FinishLayout() {
    while (!preview_.Layout().Finished()) QCoreApplication::processEvents();
  }
  int Page() { return Find<QSpinBox>(preview_, "numPage").value(); }
  QString In(const char* name) const { return folder_.filePath(Word(name)); }
  QByteArray Bytes(const char* name) const {
    QFile file(In(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
  }

  ScriptedPlatform platform_;
  QTemporaryDir folder_;
  ListPreview preview_;
};

TEST_F(ListPreviews, TheFirstPageIsThereAtOnceAndTheOthersComeWithTheEvents) {
  ListPreview fresh(Tunes(3000));
  EXPECT_EQ(fresh.Layout().PageCount(), 1);
  EXPECT_EQ(TextOf(fresh, "lblPages"), QStringLiteral("of 1..."));
  QSignalSpy laid_out(&fresh, &ListPreview::LaidOut);
  while (!fresh.Layout().Finished()) QCoreApplication::processEvents();
  EXPECT_GT(fresh.Layout().PageCount(), 100);
  EXPECT_EQ(TextOf(fresh, "lblPages"), QStringLiteral("of %1").arg(fresh.Layout().PageCount()));
  ASSERT_FALSE(laid_out.isEmpty());
  EXPECT_EQ(laid_out.last()[0].toInt(), 100);
}

TEST_F(ListPreviews, PagesAreTurnedByButtonsAndByNumber) {
  FinishLayout();
  const int count = preview_.Layout().PageCount();
  ASSERT_GT(count, 5);
  EXPECT_EQ(Page(), 1);
  EXPECT_FALSE(IsEnabled(preview_, "cmdPreviousPage"));
  Click(preview_, "cmdNextPage");
  EXPECT_EQ(Page(), 2);
  Click(preview_, "cmdLastPage");
  EXPECT_EQ(Page(), count);
  EXPECT_FALSE(IsEnabled(preview_, "cmdNextPage"));
  Click(preview_, "cmdPreviousPage");
  EXPECT_EQ(Page(), count - 1);
  Click(preview_, "cmdFirstPage");
  EXPECT_EQ(Page(), 1);
  Find<QSpinBox>(preview_, "numPage").setValue(4);
  EXPECT_EQ(preview_.Canvas().CurrentPage(), 4);
}

// The dark ground is around the sheets, and the first of them stands at the top.
TEST_F(ListPreviews, EachPageStandsOnASheetOfItsOwnFromTheTopOn) {
  FinishLayout();
  preview_.Canvas().SetFit(PageCanvas::Fit::kWholePage);
  QCoreApplication::processEvents();
  const auto column = [this] {
    const QImage picture = preview_.Canvas().viewport()->grab().toImage();
    QString rows;
    // Beside the words, within the margin of the sheet.
    const int x = picture.width() / 2 - picture.height() / 4;
    for (int y = 0; y < picture.height(); ++y)
      rows.append(picture.pixelColor(x, y) == Qt::white ? u'w' : u'g');
    return rows;
  };
  const QString first = column();
  EXPECT_EQ(first.front(), QLatin1Char('g'));
  EXPECT_LT(first.indexOf(u'w'), first.size() / 10);
  EXPECT_GT(first.lastIndexOf(u'w'), first.size() * 8 / 10);
  preview_.Canvas().ShowPage(2);
  EXPECT_EQ(preview_.Canvas().CurrentPage(), 2);
  EXPECT_LT(column().indexOf(u'w'), first.size() / 10);
}

TEST_F(ListPreviews, TheRoomThatTheButtonsLeaveIsThatOfTheSearch) {
  const auto width = [this] { return preview_.findChild<FindBar*>()->width(); };
  const int before = width();
  preview_.resize(1400, 700);
  QCoreApplication::processEvents();
  EXPECT_EQ(width(), before + 400);
}

TEST_F(ListPreviews, KeysScrollThroughThePages) {
  FinishLayout();
  QTest::keyClick(&preview_.Canvas(), Qt::Key_PageDown);
  EXPECT_GT(preview_.Canvas().verticalScrollBar()->value(), 0);
  QTest::keyClick(&preview_.Canvas(), Qt::Key_End);
  EXPECT_EQ(Page(), preview_.Layout().PageCount());
  QTest::keyClick(&preview_.Canvas(), Qt::Key_Home);
  EXPECT_EQ(Page(), 1);
}

TEST_F(ListPreviews, TheSizeIsChosenAndKeepsThePage) {
  FinishLayout();
  auto& sizes = Find<QComboBox>(preview_, "cboZoom");
  EXPECT_EQ(sizes.currentText(), QStringLiteral("Page width"));
  const int fitted = preview_.Canvas().Percent();
  preview_.Canvas().ShowPage(5);
  Click(preview_, "cmdZoomIn");
  EXPECT_EQ(preview_.Canvas().Percent(), fitted + 25);
  EXPECT_EQ(Page(), 5);
  EXPECT_EQ(sizes.placeholderText(), QStringLiteral("%1%").arg(fitted + 25));
  Click(preview_, "cmdZoomOut");
  EXPECT_EQ(preview_.Canvas().Percent(), fitted);
  Q_EMIT sizes.activated(sizes.findText(QStringLiteral("100%")));
  EXPECT_EQ(preview_.Canvas().Percent(), 100);
  EXPECT_EQ(sizes.currentText(), QStringLiteral("100%"));
  Q_EMIT sizes.activated(sizes.findText(QStringLiteral("Whole page")));
  EXPECT_LT(preview_.Canvas().Percent(), 100);
  EXPECT_EQ(Page(), 5);
}

TEST_F(ListPreviews, TheSizeHasItsLimits) {
  preview_.Canvas().SetPercent(5000);
  EXPECT_EQ(preview_.Canvas().Percent(), PageCanvas::kMostPercent);
  preview_.Canvas().SetPercent(-3);
  EXPECT_EQ(preview_.Canvas().Percent(), PageCanvas::kLeastPercent);
}

TEST_F(ListPreviews, APageFittedToTheWindowFollowsIt) {
  const int wide = preview_.Canvas().Percent();
  preview_.resize(700, 700);
  EXPECT_LT(preview_.Canvas().Percent(), wide);
}

TEST_F(ListPreviews, WhatIsTypedIsFoundOnEveryPageAndBroughtIntoSight) {
  FinishLayout();
  auto& field = Find<QLineEdit>(preview_, "txtFind");
  field.setText(QStringLiteral("tune 7 of 33"));
  EXPECT_EQ(TextOf(preview_, "lblMatches"), QStringLiteral("1 of 1"));
  EXPECT_GT(preview_.Canvas().CurrentPage(), 1);
  field.setText(QStringLiteral("TUNE 7 OF"));
  EXPECT_EQ(TextOf(preview_, "lblMatches"), QStringLiteral("1 of 60"));
  QTest::keyClick(&field, Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(TextOf(preview_, "lblMatches"), QStringLiteral("60 of 60"));
  EXPECT_EQ(Page(), preview_.Layout().PageCount());
  const QImage marked = preview_.Canvas().grab().toImage();
  field.setText(QStringLiteral("nothing like it"));
  EXPECT_EQ(TextOf(preview_, "lblMatches"), QStringLiteral("Not found"));
  EXPECT_NE(preview_.Canvas().grab().toImage(), marked);
}

TEST_F(ListPreviews, ASearchSeesThePagesThatCameAfterIt) {
  ListPreview fresh(Tunes(300));
  auto& field = Find<QLineEdit>(fresh, "txtFind");
  field.setText(QStringLiteral("Composer 299"));
  EXPECT_EQ(TextOf(fresh, "lblMatches"), QStringLiteral("Not found"));
  while (!fresh.Layout().Finished()) QCoreApplication::processEvents();
  EXPECT_EQ(TextOf(fresh, "lblMatches"), QStringLiteral("1 of 1"));
}

TEST_F(ListPreviews, PrintsThroughThePrinterForItsPaper) {
  Click(preview_, "cmdPrint");
  ASSERT_EQ(platform_.printer->jobs.size(), 1);
  EXPECT_EQ(platform_.printer->jobs[0].title, QStringLiteral("Zelmar database by Composer"));
  const int pages = platform_.printer->jobs[0].pages;
  platform_.printer->paper_height = 300.0;
  Click(preview_, "cmdPrint");
  EXPECT_GT(platform_.printer->jobs[1].pages, pages);
  platform_.printer->answer = false;
  Click(preview_, "cmdPrint");
  EXPECT_EQ(platform_.printer->jobs.size(), 2);
}

TEST_F(ListPreviews, APrinterThatFailsIsAFailureOfTheCommand) {
  platform_.printer->failure = QStringLiteral("no paper");
  EXPECT_THROW(preview_.Print(), Failure);
}

TEST_F(ListPreviews, AreSavedAsAPdfFile) {
  platform_.files->answers = {In("list.pdf")};
  Click(preview_, "cmdSavePdf");
  ASSERT_EQ(platform_.files->shown.size(), 1);
  EXPECT_EQ(platform_.files->shown[0].purpose, FileChoice::kSave);
  EXPECT_EQ(platform_.files->shown[0].filter, QStringLiteral("PDF files (*.PDF)|*.PDF"));
  EXPECT_TRUE(platform_.files->shown[0].current.endsWith(QStringLiteral("/Zelmar database by Composer.pdf")));
  FinishLayout();
  EXPECT_EQ(Bytes("list.pdf").count("/Type /Page\n"), preview_.Layout().PageCount());
}

TEST_F(ListPreviews, AreSavedAsCommaSeparatedValues) {
  platform_.files->answers = {In("list.csv")};
  Click(preview_, "cmdSaveCsv");
  const QByteArray csv = Bytes("list.csv");
  EXPECT_TRUE(csv.startsWith("Composer,Title,Style\r\nComposer 1,Tune 1 of 1,Baroque\r\n"));
  EXPECT_EQ(csv.count('\n'), 601);
}

TEST_F(ListPreviews, NothingIsSavedWhereNoFileWasChosen) {
  Click(preview_, "cmdSavePdf");
  Click(preview_, "cmdSaveCsv");
  EXPECT_EQ(platform_.files->shown.size(), 2);
  EXPECT_TRUE(QDir(folder_.path()).isEmpty());
}

TEST_F(ListPreviews, AFileThatWasNotNamedInFullIsReplacedOnlyAfterAQuestion) {
  platform_.files->answers = {In("list")};
  Click(preview_, "cmdSaveCsv");
  EXPECT_TRUE(Bytes("list.csv").startsWith("Composer,"));
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
  {
    QFile file(In("list.csv"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("mine");
  }
  platform_.files->answers = {In("list")};
  Click(preview_, "cmdSaveCsv");
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_EQ(platform_.messages->shown[0].default_button, MessageAnswer::kNo);
  EXPECT_EQ(Bytes("list.csv"), "mine");
  platform_.files->answers = {In("list")};
  platform_.messages->answers = {MessageAnswer::kYes};
  Click(preview_, "cmdSaveCsv");
  EXPECT_TRUE(Bytes("list.csv").startsWith("Composer,"));
}

TEST_F(ListPreviews, ATitleThatIsNoFileNameIsNotProposedAsOne) {
  PrintedList list = Tunes(1);
  list.title = Word("Either/Or");
  ListPreview other(list);
  other.SavePdf();
  EXPECT_TRUE(platform_.files->shown.last().current.endsWith(QStringLiteral("/List.pdf")));
}

TEST_F(ListPreviews, AFileThatCannotBeWrittenIsAFailureOfTheCommand) {
  for (const char* name : {"no/list.csv", "no/list.pdf"}) {
    platform_.files->answers = {In(name)};
    if (QString::fromUtf8(name).endsWith(QStringLiteral("csv")))
      EXPECT_THROW(preview_.SaveCommaSeparated(), Failure);
    else
      EXPECT_THROW(preview_.SavePdf(), Failure);
  }
}

TEST_F(ListPreviews, EveryControlSaysWhatItDoes) {
  for (const QToolButton* button : preview_.findChildren<QToolButton*>()) {
    if (!button->objectName().startsWith(QStringLiteral("cmd"))) continue;
    EXPECT_FALSE(button->accessibleName().isEmpty()) << qPrintable(button->objectName());
    EXPECT_FALSE(button->toolTip().isEmpty()) << qPrintable(button->objectName());
  }
}

TEST_F(ListPreviews, AScreenReaderHearsThePageThatIsShown) {
  EXPECT_TRUE(preview_.Canvas().accessibleDescription().contains(QStringLiteral("Tune 1 of 1, Baroque\n")));
  FinishLayout();
  Click(preview_, "cmdLastPage");
  EXPECT_TRUE(preview_.Canvas().accessibleDescription().contains(QStringLiteral("Tune 10 of 60, Baroque\n")));
}

TEST(ListPreviewWindows, AreNamedAfterTheirListAndHoldItsPages) {
  ScriptedPlatform platform;
  const QPointer<ListPreviewWindow> window = new ListPreviewWindow(QStringLiteral("repMusicList"), Tunes(1));
  EXPECT_EQ(window->objectName(), QStringLiteral("repMusicList"));
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Zelmar - Zelmar database by Composer"));
  EXPECT_EQ(FindLoadedForm(QStringLiteral("repMusicList")), window);
  EXPECT_EQ(window->Preview().Layout().PageCount(), 1);
  window->Unload();
  LetClosedWindowsGo();
  EXPECT_EQ(window, nullptr);
}

// --- Letters ---

TEST(ListLettering, TheWidthOfATextIsThatOfItsPartsWhereverItIsPainted) {
  const ListLettering letters(9.0);
  const double whole = letters.Width(PrintedStyle::kRow, QStringLiteral("Air on the G"));
  EXPECT_GT(whole, 30.0);
  EXPECT_LT(whole, 80.0);
  EXPECT_NEAR(ListLettering(18.0).Width(PrintedStyle::kRow, QStringLiteral("Air on the G")), 2.0 * whole,
              0.5);
  EXPECT_GT(letters.LineHeight(PrintedStyle::kTitle), letters.LineHeight(PrintedStyle::kRow));
  EXPECT_GT(letters.LineHeight(PrintedStyle::kRow), 9.0);
}

TEST(ListLettering, TheRuleStandsBelowTheLastLineOfTheHeadsOfColumns) {
  // Where the middle of a picture of lines has ink: the pieces bear no letters.
  const auto ruled = [](std::initializer_list<bool> goes_on) {
    PrintedPage page;
    for (const bool further : goes_on)
      page.push_back({PrintedStyle::kColumnHead,
                      10.0 + 20.0 * static_cast<double>(page.size()),
                      20.0,
                      {{0.0, 100.0, QString()}},
                      further});
    page.push_back({PrintedStyle::kRow,
                    10.0 + 20.0 * static_cast<double>(page.size()),
                    20.0,
                    {{0.0, 100.0, QString()}}});
    QImage picture(100, 120, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    ListLettering(9.0).Paint(painter, page);
    painter.end();
    QList<int> rows;
    for (int y = 0; y < picture.height(); ++y)
      if (picture.pixelColor(50, y) != Qt::white) rows.append(y / 10 * 10);
    return rows;
  };
  EXPECT_EQ(ruled({false}), QList<int>{30});
  EXPECT_EQ(ruled({false, true}), QList<int>{50});
  EXPECT_EQ(ruled({false, true, true}), QList<int>{70});
  EXPECT_EQ(ruled({false, false}), (QList<int>{30, 50}));
}

TEST(ListLettering, FoundLettersStandWhereTheyArePainted) {
  const ListLettering letters(9.0);
  const PrintedLine line{PrintedStyle::kRow, 40.0, 12.0, {}};
  const PrintedPiece at_left{100.0, 200.0, QStringLiteral("abc def")};
  const QRectF found = letters.PlaceOf(line, at_left, 4, 3);
  EXPECT_NEAR(found.left(), 100.0 + letters.Width(PrintedStyle::kRow, QStringLiteral("abc ")), 1e-6);
  EXPECT_EQ(found.top(), 40.0);
  EXPECT_EQ(found.height(), 12.0);
  PrintedPiece at_right = at_left;
  at_right.at_right = true;
  EXPECT_NEAR(letters.PlaceOf(line, at_right, 0, 7).right(), 300.0, 0.1);
}

}  // namespace
}  // namespace zelmar
