// The row for bars across: buttons, typing, and the ends of the range.
#include "shell/bars_across_row.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QToolButton>
#include <QWheelEvent>

#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class BarsAcrossRowTest : public ::testing::Test {
 protected:
  BarsAcrossRowTest() {
    auto* const row = new QHBoxLayout(&window_);
    row->addWidget(bars_);
    row->addWidget(other_);
    bars_->SetBarsAcross(3);
    window_.show();
    window_.activateWindow();
    QCoreApplication::processEvents();
    QApplication::setActiveWindow(&window_);
  }
  QSpinBox& Spin() { return Find<QSpinBox>(*bars_, "UpDownBarsAcross"); }
  QString Text() { return Find<QLineEdit>(*bars_, "txtBarsAcross").text(); }
  void Type(const char* text) {
    Spin().setFocus();
    Spin().selectAll();
    QTest::keyClicks(&Spin(), QLatin1String(text));
  }
  QList<int> Changes() const {
    QList<int> bars;
    for (const auto& change : changes_) bars.append(change[0].toInt());
    return bars;
  }

  QWidget window_;
  BarsAcrossRow* bars_ = new BarsAcrossRow(&window_);
  QPushButton* other_ = new QPushButton(&window_);
  QSignalSpy changes_{bars_, &BarsAcrossRow::Changed};
};

TEST_F(BarsAcrossRowTest, TheProgramsOwnValueIsNotTold) {
  EXPECT_EQ(bars_->BarsAcross(), 3);
  EXPECT_EQ(Text(), QStringLiteral("3"));
  bars_->SetBarsAcross(99);
  EXPECT_EQ(bars_->BarsAcross(), 12);
  bars_->SetBarsAcross(-1);
  EXPECT_EQ(bars_->BarsAcross(), 1);
  EXPECT_TRUE(Changes().isEmpty());
}

TEST_F(BarsAcrossRowTest, PlusShowsFewerBarsAndMinusShowsMore) {
  EXPECT_EQ(Find<QToolButton>(*bars_, "imgZoomPlus").toolTip(),
            QStringLiteral("Magnify or Zoom in (show fewer bars)"));
  EXPECT_EQ(Find<QToolButton>(*bars_, "imgZoomMinus").toolTip(),
            QStringLiteral("Diminish or zoom out (show more bars)"));
  Click(*bars_, "imgZoomPlus");
  Click(*bars_, "imgZoomMinus");
  Click(*bars_, "imgZoomMinus");
  EXPECT_EQ(Changes(), (QList<int>{2, 3, 4}));
  EXPECT_EQ(Text(), QStringLiteral("4"));
}

TEST_F(BarsAcrossRowTest, EachButtonEndsWithTheRange) {
  bars_->SetBarsAcross(2);
  Click(*bars_, "imgZoomPlus");
  EXPECT_FALSE(IsEnabled(*bars_, "imgZoomPlus"));
  EXPECT_TRUE(IsEnabled(*bars_, "imgZoomMinus"));
  Click(*bars_, "imgZoomPlus");
  EXPECT_EQ(bars_->BarsAcross(), 1);
  bars_->SetBarsAcross(11);
  EXPECT_TRUE(IsEnabled(*bars_, "imgZoomPlus"));
  Click(*bars_, "imgZoomMinus");
  EXPECT_FALSE(IsEnabled(*bars_, "imgZoomMinus"));
  EXPECT_EQ(bars_->BarsAcross(), 12);
}

TEST_F(BarsAcrossRowTest, ArrowKeysStep) {
  Spin().setFocus();
  QTest::keyClick(&Spin(), Qt::Key_Up);
  QTest::keyClick(&Spin(), Qt::Key_Down);
  EXPECT_EQ(Changes(), (QList<int>{4, 3}));
}

TEST_F(BarsAcrossRowTest, ATypedNumberWithinTheRangeCountsAtOnce) {
  Type("5");
  EXPECT_EQ(Changes(), QList<int>{5});
  Type("12");
  EXPECT_EQ(bars_->BarsAcross(), 12);
  other_->setFocus();
  EXPECT_EQ(Text(), QStringLiteral("12"));
}

struct Typed {
  const char* typed;
  int bars;
};

TEST_F(BarsAcrossRowTest, AnyOtherIsBroughtToTheNearerEndWhenTheFieldIsLeftOrOnEnter) {
  for (const Typed& row :
       {Typed{"0", 1}, Typed{"00", 1}, Typed{"13", 12}, Typed{"40", 12}, Typed{"999", 12}}) {
    for (const bool by_enter : {true, false}) {
      bars_->SetBarsAcross(6);
      Type(row.typed);
      EXPECT_EQ(Text(), QLatin1String(row.typed));
      if (by_enter)
        QTest::keyClick(&Spin(), Qt::Key_Return);
      else
        other_->setFocus();
      EXPECT_EQ(bars_->BarsAcross(), row.bars) << row.typed;
      EXPECT_EQ(Text(), QString::number(row.bars)) << row.typed;
      EXPECT_EQ(Changes().last(), row.bars) << row.typed;
    }
  }
}

TEST_F(BarsAcrossRowTest, AnEmptyFieldGetsItsNumberBackAndLettersDoNotGoIn) {
  Spin().setFocus();
  Spin().selectAll();
  QTest::keyClick(&Spin(), Qt::Key_Delete);
  EXPECT_EQ(Text(), QString());
  QTest::keyClicks(&Spin(), QStringLiteral("x-.e"));
  EXPECT_EQ(Text(), QString());
  other_->setFocus();
  EXPECT_EQ(Text(), QStringLiteral("3"));
  EXPECT_TRUE(Changes().isEmpty());
}

TEST_F(BarsAcrossRowTest, TheWheelChangesNothingInPassing) {
  other_->setFocus();
  const QPointF middle = Spin().rect().center();
  QWheelEvent turn(middle, Spin().mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase,
                   false);
  QApplication::sendEvent(&Spin(), &turn);
  EXPECT_EQ(bars_->BarsAcross(), 3);
}

TEST_F(BarsAcrossRowTest, EveryPartIsReachedByTabAndNamed) {
  Spin().setFocus();
  EXPECT_EQ(Spin().accessibleName(), QStringLiteral("Bars across"));
  for (const char* name : {"imgZoomPlus", "imgZoomMinus"}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &Find<QWidget>(*bars_, name));
    EXPECT_FALSE(QApplication::focusWidget()->accessibleName().isEmpty());
  }
}

}  // namespace
}  // namespace zelmar
