#include "shell/frame_style.h"

#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QStyleOptionComplex>
#include <QStyleOptionTitleBar>

#include "platform/widgets/icons.h"
#include "platform/widgets/spacing.h"

namespace zelmar {

namespace {

constexpr int kPicture = 14;
constexpr int kRadius = 4;
constexpr int kArrowWidth = 30;

struct FrameButton {
  QStyle::SubControl control;
  const char* icon;
};

constexpr FrameButton kTitleBarButtons[] = {
    {QStyle::SC_TitleBarMinButton, "frame_minimise"},
    {QStyle::SC_TitleBarMaxButton, "frame_maximise"},
    {QStyle::SC_TitleBarNormalButton, "frame_restore"},
    {QStyle::SC_TitleBarCloseButton, "frame_close"},
};
constexpr FrameButton kMenuBarButtons[] = {
    {QStyle::SC_MdiMinButton, "frame_minimise"},
    {QStyle::SC_MdiNormalButton, "frame_restore"},
    {QStyle::SC_MdiCloseButton, "frame_close"},
};

void DrawButton(const FrameButton& button, const QRect& place, const QStyleOptionComplex& option,
                QPainter& painter) {
  if ((option.activeSubControls & button.control) != 0) {
    const bool pressed = option.state.testFlag(QStyle::State_Sunken);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(option.palette.color(pressed ? QPalette::Mid : QPalette::Midlight));
    painter.drawRoundedRect(place, kRadius, kRadius);
    painter.restore();
  }
  QRect picture(0, 0, kPicture, kPicture);
  picture.moveCenter(place.center());
  IconOf(QLatin1String(button.icon)).paint(&painter, picture);
}

// A window has its buttons as its flags and its state have it: what can be made larger, or small again.
bool IsOffered(const FrameButton& button, const QStyleOptionTitleBar& bar) {
  const bool minimised = (bar.titleBarState & Qt::WindowMinimized) != 0;
  const bool maximised = (bar.titleBarState & Qt::WindowMaximized) != 0;
  switch (button.control) {
    case QStyle::SC_TitleBarMinButton:
      return bar.titleBarFlags.testFlag(Qt::WindowMinimizeButtonHint) && !minimised;
    case QStyle::SC_TitleBarMaxButton:
      return bar.titleBarFlags.testFlag(Qt::WindowMaximizeButtonHint) && !maximised;
    case QStyle::SC_TitleBarNormalButton:
      return (bar.titleBarFlags.testFlag(Qt::WindowMinimizeButtonHint) && minimised) ||
             (bar.titleBarFlags.testFlag(Qt::WindowMaximizeButtonHint) && maximised);
    default:
      return bar.titleBarFlags.testFlag(Qt::WindowSystemMenuHint);
  }
}

}  // namespace

FrameStyle::FrameStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void FrameStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
  if (control == CC_MdiControls) {
    for (const FrameButton& button : kMenuBarButtons)
      if ((option->subControls & button.control) != 0)
        DrawButton(button, proxy()->subControlRect(control, option, button.control, widget), *option,
                   *painter);
    return;
  }
  const auto* const bar = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
  if (control != CC_TitleBar || bar == nullptr) {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    return;
  }
  const bool active = (bar->titleBarState & State_Active) != 0;
  // A child window paints its bar with colours that it mixes for another look.
  const QPalette colours = QApplication::palette();
  painter->fillRect(bar->rect, colours.color(active ? QPalette::Base : QPalette::Window));
  painter->fillRect(QRect(bar->rect.bottomLeft(), QSize(bar->rect.width(), 1)), colours.color(QPalette::Mid));
  const auto place = [&](SubControl part) { return proxy()->subControlRect(control, option, part, widget); };
  if (!bar->icon.isNull()) bar->icon.paint(painter, place(SC_TitleBarSysMenu));
  painter->setPen(colours.color(active ? QPalette::WindowText : QPalette::PlaceholderText));
  const QRect words = place(SC_TitleBarLabel).adjusted(spacing::kTight, 0, -spacing::kTight, 0);
  painter->drawText(words, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                    bar->fontMetrics.elidedText(bar->text, Qt::ElideRight, words.width()));
  for (const FrameButton& button : kTitleBarButtons)
    if (IsOffered(button, *bar)) DrawButton(button, place(button.control), *option, *painter);
}

int FrameStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returned) const {
  // A menu with more items than the screen has room for scrolls: columns would part what belongs together.
  if (hint == SH_Menu_Scrollable) return 1;
  return QProxyStyle::styleHint(hint, option, widget, returned);
}

int FrameStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  // Of the arrow that opens what has no room in the menu bar.
  if (metric == PM_ToolBarExtensionExtent) return kArrowWidth;
  return QProxyStyle::pixelMetric(metric, option, widget);
}

}  // namespace zelmar
