#include "shell/list_preview_window.h"

#include <QVBoxLayout>

#include "platform/widgets/widget_services.h"
#include "shell/list_preview.h"

namespace zelmar {

ListPreviewWindow::ListPreviewWindow(const QString& system_name, PrintedList list)
    : ChildWindow(system_name) {
  setWindowTitle(QString(kApplicationTitle) + QStringLiteral(" - ") + list.title);
  preview_ = new ListPreview(std::move(list), this);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(preview_);
  setFocusProxy(preview_);
}

}  // namespace zelmar
