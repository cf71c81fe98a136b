#include "shell/frm_help_modal.h"

#include <QPointer>
#include <QVBoxLayout>

#include "platform/widgets/screen_place.h"
#include "shell/loaded_forms.h"
#include "shell/main_frame.h"
#include "shell/page_view.h"

namespace zelmar {

FrmHelpModal::FrmHelpModal() : QDialog(OwnerOfNewWindow()) {
  setObjectName(QStringLiteral("frmHelpModal"));
  setAttribute(Qt::WA_DeleteOnClose);
  AddLoadedForm(this);
  connect(this, &QDialog::finished, this, [this] { RemoveLoadedForm(this); });
  ResizeWithinScreen(*this, {760, 560});
  view_ = new PageView(this);
  view_->setObjectName(QStringLiteral("WebHelp"));
  view_->setStyleSheet(QStringLiteral("border: none; border-radius: 0"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(view_);
}

void FrmHelpModal::ShowPage(const QString& page, const QString& caption, bool modal) {
  static QPointer<FrmHelpModal> window;
  // A window that is closing is not taken up again.
  if (!window || !window->isVisible()) window = new FrmHelpModal;
  window->setWindowTitle(caption);
  window->view_->ShowPage(page);
  if (modal) {
    window->exec();
    return;
  }
  window->show();
  window->raise();
  window->activateWindow();
}

}  // namespace zelmar
