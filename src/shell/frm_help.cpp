#include "shell/frm_help.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "model/globals.h"
#include "platform/widgets/spacing.h"
#include "shell/loaded_forms.h"
#include "shell/page_view.h"

namespace zelmar {

FrmHelp* FrmHelp::Instance() {
  if (auto* loaded = qobject_cast<FrmHelp*>(FindLoadedForm(QStringLiteral("frmHelp")))) return loaded;
  return new FrmHelp;
}

FrmHelp::FrmHelp() : ChildWindow(QStringLiteral("frmHelp")) {
  setWindowTitle(QStringLiteral("Help"));
  resize(720, 520);
  view_ = new PageView(this);
  view_->setObjectName(QStringLiteral("WebHelp"));
  auto* back_one_page = new QPushButton(tr("Pre&vious Page"), this);
  back_one_page->setObjectName(QStringLiteral("cmdGoBack"));
  back_one_page->setToolTip(tr("Go back one page"));
  auto* back = new QPushButton(tr("&Back"), this);
  back->setObjectName(QStringLiteral("cmdBack"));
  back->setToolTip(tr("Close this window"));
  connect(back_one_page, &QPushButton::clicked, view_, &PageView::backward);
  connect(back, &QPushButton::clicked, this, &FrmHelp::Unload);

  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(spacing::kSmall);
  buttons->addWidget(back_one_page);
  buttons->addStretch(1);
  buttons->addWidget(back);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(spacing::kMedium, spacing::kMedium, spacing::kMedium, spacing::kMedium);
  column->setSpacing(spacing::kSmall);
  column->addWidget(view_);
  column->addLayout(buttons);
  ShowPage(Global().HelpPath + QStringLiteral("\\UserDefault.htm"));
}

void FrmHelp::ShowPage(const QString& page) {
  view_->ShowPage(page);
}

}  // namespace zelmar
