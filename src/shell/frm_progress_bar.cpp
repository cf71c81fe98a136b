#include "shell/frm_progress_bar.h"

#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QVBoxLayout>

#include "platform/widgets/spacing.h"
#include "shell/loaded_forms.h"
#include "shell/main_frame.h"

namespace zelmar {

namespace {

QPointer<FrmProgressBar>& TheProgressBar() {
  static QPointer<FrmProgressBar> window;
  return window;
}

}  // namespace

FrmProgressBar* FrmProgressBar::Instance() {
  if (!TheProgressBar()) TheProgressBar() = new FrmProgressBar;
  return TheProgressBar();
}

FrmProgressBar* FrmProgressBar::Loaded() {
  return TheProgressBar();
}

void FrmProgressBar::Unload() {
  QDialog* const window = TheProgressBar();
  if (window == nullptr) return;
  TheProgressBar().clear();
  RemoveLoadedForm(window);
  window->close();
}

FrmProgressBar::FrmProgressBar() : QDialog(TheMainFrame() != nullptr ? TheMainFrame()->Window() : nullptr) {
  setObjectName(QStringLiteral("frmProgressBar"));
  setAttribute(Qt::WA_DeleteOnClose);
  AddLoadedForm(this);
  // Closed windows are not taken up again.
  connect(this, &QDialog::finished, this, [this] {
    RemoveLoadedForm(this);
    TheProgressBar().clear();
  });
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(spacing::kWide, spacing::kWide, spacing::kWide, spacing::kWide);
  column->setSpacing(spacing::kMedium);
  lblCaption_ = new QLabel(this);
  lblCaption_->setObjectName(QStringLiteral("lblCaption"));
  lblCaption_->setTextFormat(Qt::PlainText);
  lblCaption_->setWordWrap(true);
  lblCaption_->setMinimumWidth(420);
  MyProgressBar_ = new QProgressBar(this);
  MyProgressBar_->setObjectName(QStringLiteral("MyProgressBar"));
  MyProgressBar_->setAccessibleName(tr("Progress"));
  MyProgressBar_->setTextVisible(false);
  MyProgressBar_->setRange(0, 100);
  MyProgressBar_->setValue(0);
  column->addWidget(lblCaption_);
  column->addWidget(MyProgressBar_);
}

void FrmProgressBar::SetCaption(const QString& caption) {
  setWindowTitle(caption);
  lblCaption_->setText(caption);
}

}  // namespace zelmar
