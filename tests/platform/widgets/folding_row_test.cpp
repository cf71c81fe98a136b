// A row that folds, and sizes that fit a screen.
#include "platform/widgets/folding_row.h"

#include <QHBoxLayout>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>

#include "platform/widgets/screen_place.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

class FoldingRowTest : public ::testing::Test {
 protected:
  // Three groups of 100, 60 and 80 pixels, 10 apart, rows 4 apart.
  FoldingRowTest() : row_(new FoldingRow(10, 4)) {
    row_->AddGroup(Group(100, 20));
    row_->AddGroup(Group(60, 30));
    row_->AddGroup(Group(80, 20));
    auto* column = new QVBoxLayout(&window_);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(row_);
    column->addStretch(1);
  }

  QHBoxLayout* Group(int width, int height) {
    auto* control = new QWidget(&window_);
    control->setFixedSize(width, height);
    controls_.append(control);
    auto* group = new QHBoxLayout;
    group->addWidget(control);
    return group;
  }
  void Show(int width) {
    window_.resize(width, 300);
    window_.show();
    QCoreApplication::processEvents();
  }
  QRect Place(int index) const { return controls_[index]->geometry(); }

  QWidget window_;
  FoldingRow* row_;
  QList<QWidget*> controls_;
};

TEST_F(FoldingRowTest, WhatFitsStandsInOneRowWithTheLastGroupAtItsEnd) {
  Show(300);
  EXPECT_EQ(Place(0).left(), 0);
  EXPECT_EQ(Place(1).left(), 110);
  EXPECT_EQ(Place(2).right(), 299);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Place(i).center().y(), Place(1).center().y());
  EXPECT_EQ(row_->heightForWidth(300), 30);
}

TEST_F(FoldingRowTest, ExactlyEnoughIsEnough) {
  EXPECT_EQ(row_->sizeHint(), QSize(260, 30));
  EXPECT_EQ(row_->heightForWidth(260), 30);
  EXPECT_EQ(row_->heightForWidth(259), 30 + 4 + 20);
}

TEST_F(FoldingRowTest, WhatDoesNotFitBeginsARowBelow) {
  Show(200);
  EXPECT_EQ(Place(0).left(), 0);
  // Only the last group of all stands at the end of its row.
  EXPECT_EQ(Place(1).left(), 110);
  EXPECT_EQ(Place(2).topLeft(), QPoint(0, 34));
}

TEST_F(FoldingRowTest, EachStandsAloneWhereNoTwoFit) {
  Show(120);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Place(i).left(), 0);
  EXPECT_EQ(Place(1).top(), 24);
  EXPECT_EQ(Place(2).top(), 58);
  EXPECT_EQ(row_->heightForWidth(120), 20 + 4 + 30 + 4 + 20);
}

TEST_F(FoldingRowTest, ItsSmallestWidthIsThatOfItsWidestGroup) {
  EXPECT_EQ(row_->minimumSize(), QSize(100, 30));
}

TEST(ScreenPlace, AWindowGetsTheSizeItWantsWhereThereIsRoom) {
  QWidget window;
  ResizeWithinScreen(window, QSize(300, 200));
  EXPECT_EQ(window.size(), QSize(300, 200));
}

TEST(ScreenPlace, AWindowIsNoLargerThanItsScreenWithItsFrame) {
  QWidget window;
  ResizeWithinScreen(window, QSize(30000, 20000));
  const QSize room = window.screen()->availableSize();
  EXPECT_EQ(window.size(), RoomInsideFrame(room));
  EXPECT_LT(window.width(), room.width());
  EXPECT_LT(window.height(), room.height());
  ResizeWithinScreen(window, QSize(200, 20000));
  EXPECT_EQ(window.width(), 200);
}

}  // namespace
}  // namespace zelmar
