// The looks of shared controls, measured in the picture: edges that stand out, and a keyboard that can be
// seen.
#include "shell/theme_controls.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QImage>
#include <QRadioButton>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>
#include <cmath>
#include <functional>

#include "shell/theme.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

constexpr double kContrast = 3.0;

double Luminance(QRgb colour) {
  const auto linear = [](int channel) {
    const double value = channel / 255.0;
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

double Contrast(QRgb first, QRgb second) {
  const double a = Luminance(first), b = Luminance(second);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

struct ControlRow {
  const char* name;
  std::function<QWidget*()> make;
};

const std::vector<ControlRow>& FramedControls() {
  static const std::vector<ControlRow> rows = {
      {"combo box", [] { return new QComboBox; }},
      {"combo box for typing",
       [] {
         auto* const combo = new QComboBox;
         combo->setEditable(true);
         return combo;
       }},
      {"spin box", [] { return new QSpinBox; }},
      {"table", [] { return new QTableView; }},
  };
  return rows;
}

class ThemeControls : public ::testing::TestWithParam<ColourScheme> {
 protected:
  ThemeControls() { ApplyTheme(*qApp, GetParam()); }
  ~ThemeControls() override {
    qApp->setStyleSheet(QString());
    qApp->setPalette(QPalette());
  }

  void Show(QWidget* control) {
    window_ = std::make_unique<QWidget>();
    auto* const column = new QVBoxLayout(window_.get());
    column->addWidget(new QWidget);
    column->addWidget(control);
    control->setFocusPolicy(Qt::StrongFocus);
    window_->resize(300, 200);
    window_->show();
    window_->activateWindow();
    QCoreApplication::processEvents();
    QApplication::setActiveWindow(window_.get());
    control->clearFocus();
  }
  QImage Picture() const { return window_->grab().toImage(); }
  // A pixel of the control, from its left edge in the middle of its height.
  static QRgb At(const QImage& picture, const QWidget& control, int x) {
    return picture.pixel(control.x() + x, control.y() + control.height() / 2);
  }

  std::unique_ptr<QWidget> window_;
};

TEST_P(ThemeControls, EdgesStandOutFromBothSides) {
  std::vector<ControlRow> rows = FramedControls();
  rows.push_back({"group box", [] { return new QGroupBox(QStringLiteral("Group")); }});
  for (const ControlRow& row : rows) {
    QWidget* const control = row.make();
    Show(control);
    const QImage picture = Picture();
    const QRgb edge = At(picture, *control, 0);
    EXPECT_GE(Contrast(edge, At(picture, *control, -2)), kContrast) << row.name;
    EXPECT_GE(Contrast(edge, At(picture, *control, 4)), kContrast) << row.name;
  }
}

TEST_P(ThemeControls, WhatHasTheKeyboardBearsAFrameOfDoubleWidth) {
  for (const ControlRow& row : FramedControls()) {
    QWidget* const control = row.make();
    Show(control);
    const QRgb inside = At(Picture(), *control, 1);
    control->setFocus();
    const QImage picture = Picture();
    for (const int x : {0, 1}) {
      EXPECT_EQ(At(picture, *control, x), qApp->palette().color(QPalette::Highlight).rgb()) << row.name << x;
      EXPECT_GE(Contrast(At(picture, *control, x), inside), kContrast) << row.name << x;
    }
  }
}

TEST_P(ThemeControls, ARadioButtonShowsItsEdgeItsDotAndTheKeyboard) {
  auto* const radio = new QRadioButton(QStringLiteral("All tracks"));
  Show(radio);
  const auto best = [&](QRgb against) {
    double contrast = 0;
    const QImage picture = Picture();
    for (int x = 0; x < 20; ++x) contrast = std::max(contrast, Contrast(At(picture, *radio, x), against));
    return contrast;
  };
  const QRgb around = qApp->palette().color(QPalette::Window).rgb();
  EXPECT_GE(best(around), kContrast);
  const QImage off = Picture();
  const QRgb middle_off = At(off, *radio, 11);
  radio->setChecked(true);
  const QRgb accent = qApp->palette().color(QPalette::Highlight).rgb();
  EXPECT_GE(Contrast(accent, middle_off), kContrast);
  EXPECT_GE(best(accent), kContrast);
  const QImage unfocused = Picture();
  radio->setFocus();
  EXPECT_NE(Picture(), unfocused);
  EXPECT_EQ(At(Picture(), *radio, 0), accent);
}

TEST_P(ThemeControls, TheCurrentCellCanBeSeenInASelectedRow) {
  auto* const table = new QTableView;
  QStandardItemModel model(2, 3);
  table->setModel(&model);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  Show(table);
  table->setFocus();
  table->setCurrentIndex(model.index(0, 1));
  const QImage picture = Picture();
  const auto pixel = [&](int column, int inset) {
    const QRect cell = table->visualRect(model.index(0, column));
    return picture.pixel(
        table->viewport()->mapTo(window_.get(), cell.topLeft() + QPoint(cell.width() / 2, inset)));
  };
  EXPECT_GE(Contrast(pixel(1, 0), pixel(1, 6)), kContrast);
  EXPECT_EQ(pixel(2, 0), pixel(2, 6));
}

TEST_P(ThemeControls, EveryNameOfTheSheetIsFilledIn) {
  const QString sheet = ControlStyles(GetParam());
  EXPECT_FALSE(sheet.contains(QLatin1Char('@')));
  EXPECT_FALSE(sheet.isEmpty());
  for (const QString& part : sheet.split(QStringLiteral("url(")).mid(1))
    EXPECT_TRUE(QFile::exists(part.section(QLatin1Char(')'), 0, 0))) << qPrintable(part.left(40));
}

INSTANTIATE_TEST_SUITE_P(Schemes, ThemeControls, ::testing::Values(ColourScheme::kLight, ColourScheme::kDark),
                         [](const auto& scheme) {
                           return scheme.param == ColourScheme::kDark ? "Dark" : "Light";
                         });

}  // namespace
}  // namespace zelmar
