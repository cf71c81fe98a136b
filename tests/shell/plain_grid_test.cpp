// A table to look at: how rows are chosen, sorted and copied, by mouse and by keyboard.
#include "shell/plain_grid.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QImage>
#include <QPushButton>
#include <QSignalSpy>

#include "shell/table_model.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

struct Tune {
  QString title;
  int bars;
};

class PlainGridTest : public ::testing::Test {
 protected:
  PlainGridTest()
      : model_({{QStringLiteral("Title"), [](const Tune& tune) { return tune.title; }, Qt::AlignLeft, 20},
                {QStringLiteral("Bars"), [](const Tune& tune) { return tune.bars; }, Qt::AlignRight, 6}}) {
    auto* const row = new QHBoxLayout(&window_);
    row->addWidget(grid_);
    row->addWidget(after_);
    window_.resize(500, 300);
  }
  void Show(const GridSetup& setup, const std::vector<Tune>& tunes) {
    grid_->SetUp(&model_, setup);
    model_.SetContent(tunes);
    window_.show();
    window_.activateWindow();
    QCoreApplication::processEvents();
    QApplication::setActiveWindow(&window_);
    grid_->setFocus();
  }
  static std::vector<Tune> Tunes() {
    return {{QStringLiteral("Minuet"), 32}, {QStringLiteral("Gavotte"), 8}, {QStringLiteral("Air"), 100}};
  }
  void ClickRow(int place, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(grid_->viewport(), Qt::LeftButton, keys,
                      grid_->visualRect(model_.index(place, 0)).center());
  }
  void ClickHeading(int column) {
    QHeaderView* const heads = grid_->horizontalHeader();
    const QPoint place(heads->sectionViewportPosition(column) + heads->sectionSize(column) / 2,
                       heads->height() / 2);
    QTest::mouseClick(heads->viewport(), Qt::LeftButton, {}, place);
  }
  QString Titles() const {
    QStringList titles;
    for (int place = 0; place < model_.rowCount(); ++place)
      titles.append(model_.index(place, 0).data().toString());
    return titles.join(QLatin1Char(' '));
  }

  QWidget window_;
  RowsModel<Tune> model_;
  PlainGrid* grid_ = new PlainGrid(&window_);
  QPushButton* after_ = new QPushButton(&window_);
};

TEST_F(PlainGridTest, AClickAndEnterChooseARow) {
  Show({}, Tunes());
  QSignalSpy chosen(grid_, &PlainGrid::Chosen);
  ClickRow(1);
  ASSERT_EQ(chosen.count(), 1);
  EXPECT_EQ(chosen[0][0].toInt(), 1);
  EXPECT_EQ(grid_->CurrentRow(), 1);
  QTest::keyClick(grid_, Qt::Key_Down);
  EXPECT_EQ(chosen.count(), 1);
  QTest::keyClick(grid_, Qt::Key_Return);
  ASSERT_EQ(chosen.count(), 2);
  EXPECT_EQ(chosen[1][0].toInt(), 2);
}

TEST_F(PlainGridTest, TheRowThatIsChosenIsToldByItsNumberWhenSorted) {
  Show({}, Tunes());
  ClickHeading(0);
  EXPECT_EQ(Titles(), QStringLiteral("Air Gavotte Minuet"));
  QSignalSpy chosen(grid_, &PlainGrid::Chosen);
  ClickRow(0);
  EXPECT_EQ(chosen[0][0].toInt(), 2);
  grid_->SelectRow(0);
  EXPECT_EQ(grid_->currentIndex().row(), 2);
  EXPECT_EQ(grid_->SelectedRows(), std::vector<int>{0});
}

TEST_F(PlainGridTest, HeadingsSortUpDownAndBack) {
  Show({}, Tunes());
  EXPECT_EQ(Titles(), QStringLiteral("Minuet Gavotte Air"));
  ClickHeading(1);
  EXPECT_EQ(Titles(), QStringLiteral("Gavotte Minuet Air"));
  ClickHeading(1);
  EXPECT_EQ(Titles(), QStringLiteral("Air Minuet Gavotte"));
  ClickHeading(1);
  EXPECT_EQ(Titles(), QStringLiteral("Minuet Gavotte Air"));
}

TEST_F(PlainGridTest, WithoutSortingHeadingsDoNothing) {
  GridSetup setup;
  setup.sorting = Sorting::kOff;
  Show(setup, Tunes());
  ClickHeading(1);
  EXPECT_EQ(Titles(), QStringLiteral("Minuet Gavotte Air"));
}

TEST_F(PlainGridTest, ARangeOfRowsIsSelectedByMouseAndByKeyboard) {
  GridSetup setup;
  setup.selecting = Selecting::kRowRange;
  Show(setup, Tunes());
  ClickRow(2);
  ClickRow(1, Qt::ShiftModifier);
  EXPECT_EQ(grid_->SelectedRows(), (std::vector<int>{1, 2}));
  QTest::keyClick(grid_, Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_EQ(grid_->SelectedRows(), (std::vector<int>{0, 1, 2}));
}

TEST_F(PlainGridTest, OneRowAtATimeWhereOneIsAskedFor) {
  Show({}, Tunes());
  ClickRow(0);
  ClickRow(2, Qt::ShiftModifier);
  EXPECT_EQ(grid_->SelectedRows(), std::vector<int>{2});
}

TEST_F(PlainGridTest, TheCurrentRowIsToldWhenItChanges) {
  Show({}, Tunes());
  QSignalSpy moved(grid_, &PlainGrid::RowChanged);
  grid_->SelectRow(1);
  grid_->SelectRow(1);
  QTest::keyClick(grid_, Qt::Key_Right);
  ASSERT_EQ(moved.count(), 1);
  EXPECT_EQ(moved[0][0].toInt(), 1);
  grid_->SelectRow(99);
  EXPECT_EQ(grid_->CurrentRow(), 1);
  model_.SetContent({});
  EXPECT_EQ(grid_->CurrentRow(), -1);
  EXPECT_TRUE(grid_->SelectedRows().empty());
}

TEST_F(PlainGridTest, ARefreshKeepsPlaceAndSelection) {
  Show({}, Tunes());
  grid_->SelectRow(1);
  model_.Refresh();
  EXPECT_EQ(grid_->CurrentRow(), 1);
  EXPECT_EQ(grid_->SelectedRows(), std::vector<int>{1});
}

// --- Copying ---

TEST_F(PlainGridTest, TheSelectionIsCopiedAsLinesWithTabs) {
  GridSetup setup;
  setup.selecting = Selecting::kRowRange;
  Show(setup,
       {{QStringLiteral("One\ttwo\nthree"), 1}, {QStringLiteral("Air"), 2}, {QStringLiteral("not this"), 3}});
  ClickRow(1);
  ClickRow(0, Qt::ShiftModifier);
  QTest::keyClick(grid_, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("One two three\t1\nAir\t2\n"));
}

TEST_F(PlainGridTest, OneRowIsCopiedWithoutALineEnd) {
  Show({}, Tunes());
  grid_->SelectRow(0);
  EXPECT_EQ(grid_->SelectionAsText(), QStringLiteral("Minuet\t32"));
}

TEST_F(PlainGridTest, WithNothingSelectedCtrlCIsTheMenus) {
  Show({}, Tunes());
  QAction command(&window_);
  command.setShortcut(QKeySequence(QStringLiteral("Ctrl+C")));
  window_.addAction(&command);
  QSignalSpy commands(&command, &QAction::triggered);
  QTest::keyClick(grid_, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(commands.count(), 1);
  grid_->SelectRow(2);
  QApplication::clipboard()->clear();
  QTest::keyClick(grid_, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(commands.count(), 1);
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("Air\t100"));
}

// --- Looks ---

TEST_F(PlainGridTest, ATableWithoutRowsSaysWhy) {
  GridSetup setup;
  setup.when_empty = QStringLiteral("No tunes match.");
  Show(setup, {});
  EXPECT_EQ(grid_->accessibleDescription(), QStringLiteral("No tunes match."));
  const QImage with_words = grid_->grab().toImage();
  model_.SetContent(Tunes());
  EXPECT_TRUE(grid_->accessibleDescription().isEmpty());
  model_.SetContent({});
  EXPECT_EQ(grid_->accessibleDescription(), QStringLiteral("No tunes match."));

  PlainGrid bare(&window_);
  bare.SetUp(&model_, {});
  bare.setGeometry(grid_->geometry());
  bare.show();
  EXPECT_NE(bare.grab().toImage(), with_words);
}

TEST_F(PlainGridTest, HeadingsAreNeverCutOffAndOneColumnTakesTheRest) {
  GridSetup setup;
  setup.stretched = 0;
  Show(setup, Tunes());
  const auto expect_room = [this] {
    const QHeaderView* const heads = grid_->horizontalHeader();
    for (int column = 0; column < 2; ++column)
      EXPECT_GE(heads->sectionSize(column), heads->sectionSizeHint(column)) << column;
    EXPECT_EQ(heads->sectionSize(0) + heads->sectionSize(1), grid_->viewport()->width());
    EXPECT_GE(grid_->rowHeight(0), grid_->fontMetrics().height());
  };
  expect_room();
  QFont large = grid_->font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  grid_->setFont(large);
  grid_->horizontalHeader()->setFont(large);
  expect_room();
}

TEST_F(PlainGridTest, TabLeavesTheTable) {
  Show({}, Tunes());
  grid_->SelectRow(0);
  QTest::keyClick(grid_, Qt::Key_Tab);
  EXPECT_TRUE(after_->hasFocus());
}

TEST_F(PlainGridTest, AScreenReaderHearsCellsUnderTheirHeadings) {
  Show({}, Tunes());
  grid_->setAccessibleName(QStringLiteral("Tunes"));
  QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(grid_);
  ASSERT_NE(reader, nullptr);
  EXPECT_EQ(reader->text(QAccessible::Name), QStringLiteral("Tunes"));
  QAccessibleTableInterface* const table = reader->tableInterface();
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(table->rowCount(), 3);
  EXPECT_EQ(table->columnDescription(1), QStringLiteral("Bars"));
  EXPECT_EQ(table->cellAt(2, 1)->text(QAccessible::Name), QStringLiteral("100"));
}

}  // namespace
}  // namespace zelmar
