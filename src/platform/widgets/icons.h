// The program's own pictures: line drawings in the colours of the palette, sharp at any size and scale.
#pragma once

#include <QIcon>
#include <QString>

namespace zelmar {

enum class IconTone { kText, kAccent };

// The drawing `name` of the resource folder "icons", in the colour of the text (or of what is highlighted)
// and dimmed where a control is disabled. It follows the palette while the program runs.
QIcon IconOf(const QString& name, IconTone tone = IconTone::kText);

// Makes the drawings known to style sheets, which name them ":/icons/NAME.svg".
void InitialiseIcons();

}  // namespace zelmar
