// The style under the style sheet: frames of child windows, drawn in the colours of the palette.
//
// Title bars and their buttons, and the same buttons in the menu bar, take no style sheet and are drawn for a
// light ground by the style that they come from.
#pragma once

#include <QProxyStyle>

namespace zelmar {

class FrameStyle : public QProxyStyle {
  Q_OBJECT

 public:
  FrameStyle();

  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
};

}  // namespace zelmar
