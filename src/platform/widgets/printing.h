// A window on paper.
#pragma once

#include <QTransform>

class QPrinter;
class QWidget;

namespace zelmar {

// Turns and draws the window on one landscape page, lines and words as such where they can stay so. Throws
// Failure when the printer or the file does not take the page.
void PrintOnLandscapePage(QWidget& window, QPrinter& printer);

// Throws the Failure of a printer, or of the file that stands for one, that does not take a page.
[[noreturn]] void FailToPrint(const QPrinter& printer);

// Brings `window` into the middle of `page`, as large as it goes and in its own proportions.
QTransform FitIntoPage(const QSizeF& window, const QSizeF& page);

}  // namespace zelmar
