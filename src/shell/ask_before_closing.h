// A window that may be kept open.
#pragma once

#include <functional>

class QWidget;

namespace zelmar {

// `may_close` is asked whenever the window is told to close; false keeps it open.
void AskBeforeClosing(QWidget& window, std::function<bool()> may_close);

}  // namespace zelmar
