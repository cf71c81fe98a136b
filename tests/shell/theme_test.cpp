// The look as it is painted: words, borders, focus and the buttons of frames in the light and in the dark.
#include "shell/theme.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QStyleOptionTitleBar>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeView>

#include "shell/frame_style.h"
#include "support/applied_theme.h"
#include "support/contrast.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class Look : public ::testing::TestWithParam<ColourScheme> {
 protected:
  static QColor Ground(QPalette::ColorRole role) { return QApplication::palette().color(role); }

  // The widget in a window of its own, as it is painted there.
  template <typename Control>
  QImage Picture(Control& control) {
    control.setParent(&page_);
    control.setGeometry(20, 20, 200, 60);
    page_.resize(240, 100);
    page_.show();
    control.show();
    QCoreApplication::processEvents();
    return page_.grab(QRect(10, 10, 220, 80)).toImage();
  }
  // The colour in the middle of the left border of a control pictured so.
  static QColor LeftBorder(const QImage& picture) { return picture.pixelColor(10, 40); }

  const AppliedTheme theme_{GetParam()};
  QWidget page_;
};

TEST_P(Look, AButtonWithTheKeyboardHasOneRimAndNothingInsideItButItsWords) {
  QPushButton push(QStringLiteral("w"));
  QToolButton tool;
  // As the Tab key leaves it.
  page_.setAttribute(Qt::WA_KeyboardFocusChange);
  for (QAbstractButton* const button : std::initializer_list<QAbstractButton*>{&push, &tool}) {
    Picture(*button);
    page_.activateWindow();
    button->setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
    ASSERT_TRUE(button->hasFocus());
    const QImage picture = Picture(*button);
    // From the rim inwards, well beside the word, at half height and along the whole of it.
    const QColor ground = picture.pixelColor(40, 40);
    EXPECT_NE(LeftBorder(picture), ground);
    for (int x = 14; x < 90; ++x) EXPECT_EQ(picture.pixelColor(x, 40), ground) << x;
    for (int y = 14; y < 66; ++y) EXPECT_EQ(picture.pixelColor(60, y), ground) << y;
    button->hide();
    button->setParent(nullptr);
  }
}

TEST_P(Look, TheHandleOfASliderWithTheKeyboardIsWholeInASliderOfItsOwnHeight) {
  QSlider slider(Qt::Horizontal, &page_);
  slider.setRange(0, 10);
  slider.setValue(5);
  slider.setGeometry(20, 20, 200, slider.sizeHint().height());
  page_.resize(240, 100);
  page_.show();
  page_.activateWindow();
  slider.setFocus(Qt::TabFocusReason);
  QCoreApplication::processEvents();
  ASSERT_TRUE(slider.hasFocus());
  const QImage picture = slider.grab().toImage();
  const QColor ground = picture.pixelColor(1, 1);
  int rim = 0;
  for (int x = 0; x < picture.width(); ++x) {
    EXPECT_EQ(picture.pixelColor(x, 0), ground) << x;
    EXPECT_EQ(picture.pixelColor(x, picture.height() - 1), ground) << x;
    for (int y = 0; y < picture.height(); ++y) rim += picture.pixelColor(x, y) == Ground(QPalette::Text);
  }
  EXPECT_GT(rim, 20) << "the handle has its rim";
}

TEST_P(Look, TextStandsOutFourAndAHalfToOne) {
  using Role = QPalette::ColorRole;
  for (const auto& [words, ground] : {std::pair<Role, Role>{QPalette::WindowText, QPalette::Window},
                                      {QPalette::Text, QPalette::Base},
                                      {QPalette::ButtonText, QPalette::Button},
                                      {QPalette::PlaceholderText, QPalette::Base},
                                      {QPalette::PlaceholderText, QPalette::Window},
                                      {QPalette::HighlightedText, QPalette::Highlight},
                                      {QPalette::Link, QPalette::Base},
                                      {QPalette::ToolTipText, QPalette::ToolTipBase}})
    EXPECT_GE(Contrast(Ground(words), Ground(ground)), 4.5) << words << " on " << ground;
}

TEST_P(Look, WhatIsDimmedCanStillBeRead) {
  const QPalette palette = QApplication::palette();
  for (const auto ground : {QPalette::Window, QPalette::Base, QPalette::Button}) {
    const double dimmed =
        Contrast(palette.color(QPalette::Disabled, QPalette::ButtonText), palette.color(ground));
    EXPECT_GE(dimmed, 3.0) << ground;
    EXPECT_LT(dimmed, Contrast(palette.color(QPalette::PlaceholderText), palette.color(ground))) << ground;
  }
}

TEST_P(Look, TheBorderOfEveryFieldStandsOutThreeToOne) {
  QLineEdit line;
  QPlainTextEdit text;
  QComboBox choice;
  QListView list;
  QTreeView tree;
  QTextBrowser page;
  for (QWidget* control : std::initializer_list<QWidget*>{&line, &text, &choice, &list, &tree, &page}) {
    const QImage picture = Picture(*control);
    const QColor border = LeftBorder(picture);
    const QColor outside = picture.pixelColor(4, 40);
    const QColor inside = picture.pixelColor(14, 66);
    EXPECT_GE(Contrast(border, outside), 3.0) << control->metaObject()->className();
    EXPECT_GE(Contrast(border, inside), 3.0) << control->metaObject()->className();
    control->setParent(nullptr);
  }
}

TEST_P(Look, TheBoxOfATickStandsOutThreeToOne) {
  QCheckBox tick;
  const QImage picture = Picture(tick);
  // The box is 15 pixels wide and stands in the middle of its height.
  const QColor outside = picture.pixelColor(4, 40);
  double most = 1.0;
  for (int x = 9; x < 14; ++x) most = std::max(most, Contrast(picture.pixelColor(x, 40), outside));
  EXPECT_GE(most, 3.0);
  tick.setParent(nullptr);
}

TEST_P(Look, TheControlWithTheKeyboardIsSeen) {
  QLineEdit line;
  QPushButton button(QStringLiteral("A"));
  QPushButton main_button(QStringLiteral("B"));
  main_button.setDefault(true);
  QComboBox choice;
  QToolButton tool;
  for (QWidget* control : std::initializer_list<QWidget*>{&line, &button, &main_button, &choice, &tool}) {
    page_.setFocusPolicy(Qt::StrongFocus);
    page_.setFocus();
    const QColor without = LeftBorder(Picture(*control));
    page_.activateWindow();
    control->setFocusPolicy(Qt::StrongFocus);
    control->setFocus();
    QCoreApplication::processEvents();
    ASSERT_TRUE(control->hasFocus()) << control->metaObject()->className();
    const QImage picture = Picture(*control);
    EXPECT_NE(LeftBorder(picture), without) << control->metaObject()->className();
    EXPECT_GE(Contrast(LeftBorder(picture), picture.pixelColor(4, 40)), 3.0)
        << control->metaObject()->className();
    control->setParent(nullptr);
  }
}

TEST_P(Look, ATickWithTheKeyboardIsSeenSetOrNot) {
  for (const bool checked : {false, true}) {
    QCheckBox tick;
    tick.setChecked(checked);
    page_.setFocusPolicy(Qt::StrongFocus);
    page_.setFocus();
    const QImage without = Picture(tick);
    page_.activateWindow();
    tick.setFocus();
    QCoreApplication::processEvents();
    ASSERT_TRUE(tick.hasFocus());
    EXPECT_NE(Picture(tick), without) << checked;
    tick.setParent(nullptr);
  }
}

// --- Frames of child windows ---

class Frames : public Look {
 protected:
  Frames() {
    main_.setCentralWidget(area_);
    main_.resize(700, 500);
    main_.menuBar()->addMenu(QStringLiteral("&File"));
    child_ = area_->addSubWindow(new QWidget);
    child_->setWindowTitle(QStringLiteral("A window"));
    main_.show();
    child_->setGeometry(20, 20, 400, 300);
    child_->show();
    QCoreApplication::processEvents();
  }

  // The strongest contrast of a pixel in the place against its ground, which is that of the corner.
  static double Strongest(const QImage& picture, const QRect& place) {
    const QColor ground = picture.pixelColor(place.topLeft());
    double most = 1.0;
    for (int y = place.top(); y <= place.bottom(); ++y)
      for (int x = place.left(); x <= place.right(); ++x)
        most = std::max(most, Contrast(picture.pixelColor(x, y), ground));
    return most;
  }
  QRect Part(QStyle::SubControl part) {
    QStyleOptionTitleBar option;
    option.initFrom(child_);
    option.rect = QRect(0, 0, child_->width(),
                        child_->style()->pixelMetric(QStyle::PM_TitleBarHeight, &option, child_));
    option.titleBarFlags = child_->windowFlags();
    option.titleBarState = Qt::WindowActive;
    option.text = child_->windowTitle();
    return child_->style()->subControlRect(QStyle::CC_TitleBar, &option, part, child_);
  }

  QMainWindow main_;
  QMdiArea* area_ = new QMdiArea;
  QMdiSubWindow* child_;
};

TEST_P(Frames, TheButtonsAndTheCaptionOfAWindowAreSeenInFrontAndBehind) {
  auto* const other = area_->addSubWindow(new QWidget);
  other->setGeometry(20, 330, 200, 100);
  other->show();
  for (QMdiSubWindow* in_front : {child_, other}) {
    area_->setActiveSubWindow(in_front);
    QCoreApplication::processEvents();
    const QImage picture = child_->grab().toImage();
    for (const auto part : {QStyle::SC_TitleBarMinButton, QStyle::SC_TitleBarMaxButton,
                            QStyle::SC_TitleBarCloseButton, QStyle::SC_TitleBarLabel}) {
      ASSERT_TRUE(Part(part).isValid()) << part;
      EXPECT_GE(Strongest(picture, Part(part)), 3.0)
          << part << (in_front == child_ ? " in front" : " behind");
    }
  }
}

TEST_P(Frames, TheButtonsOfAMaximisedWindowAreSeenInTheMenuBar) {
  child_->showMaximized();
  QCoreApplication::processEvents();
  QWidget* const buttons = main_.menuBar()->cornerWidget(Qt::TopRightCorner);
  ASSERT_NE(buttons, nullptr);
  ASSERT_TRUE(buttons->isVisible());
  const QImage picture = main_.menuBar()->grab(buttons->geometry()).toImage();
  const int each = picture.width() / 3;
  for (int i = 0; i < 3; ++i)
    EXPECT_GE(Strongest(picture, QRect(i * each, 0, each, picture.height())), 3.0) << "button " << i;
}

TEST_P(Frames, AButtonUnderTheMouseIsMarked) {
  child_->showMaximized();
  QCoreApplication::processEvents();
  QWidget* const buttons = main_.menuBar()->cornerWidget(Qt::TopRightCorner);
  const QImage before = buttons->grab().toImage();
  QTest::mouseMove(buttons, QPoint(buttons->width() - 8, buttons->height() / 2));
  QTest::mousePress(buttons, Qt::LeftButton, {}, QPoint(buttons->width() - 8, buttons->height() / 2));
  EXPECT_NE(buttons->grab().toImage(), before);
}

// What belongs to no title bar is drawn by the style below it.
TEST(FrameStyles, ATitleBarWithoutItsOptionIsDrawnByNobody) {
  const FrameStyle style;
  QStyleOptionComplex option;
  option.rect = QRect(0, 0, 40, 20);
  QImage picture(40, 20, QImage::Format_RGB32);
  picture.fill(Qt::white);
  const QImage before = picture;
  QPainter painter(&picture);
  style.drawComplexControl(QStyle::CC_TitleBar, &option, &painter, nullptr);
  painter.end();
  EXPECT_EQ(picture, before);
}

const auto kSchemes = ::testing::Values(ColourScheme::kLight, ColourScheme::kDark);
const auto kNameOf = [](const ::testing::TestParamInfo<ColourScheme>& scheme) {
  return scheme.param == ColourScheme::kLight ? std::string("Light") : std::string("Dark");
};
INSTANTIATE_TEST_SUITE_P(Schemes, Look, kSchemes, kNameOf);
INSTANTIATE_TEST_SUITE_P(Schemes, Frames, kSchemes, kNameOf);

}  // namespace
}  // namespace zelmar
