#include "shell/dialog_wait.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/widgets/spacing.h"
#include "shell/loaded_forms.h"
#include "shell/main_frame.h"
#include "shell/marquee.h"
#include "store/database_wait.h"

namespace zelmar {

namespace {

constexpr int kSelfClosingCount = 1000;

QPointer<DialogWait>& TheDialogWait() {
  static QPointer<DialogWait> window;
  return window;
}

}  // namespace

DialogWait* DialogWait::Instance() {
  if (!TheDialogWait()) TheDialogWait() = new DialogWait;
  return TheDialogWait();
}

void DialogWait::ShowUntilItCloses(const QString& caption) {
  DialogWait* const window = Instance();
  window->SetCaption(caption);
  window->SetSelfClosing(true);
  window->exec();
}

void DialogWait::Unload() {
  DialogWait* const window = TheDialogWait();
  if (window == nullptr) return;
  window->held_ = false;
  TheDialogWait().clear();
  RemoveLoadedForm(window);
  window->close();
}

DialogWait::DialogWait() : QDialog(OwnerOfNewWindow()) {
  setObjectName(QStringLiteral("DialogWait"));
  setAttribute(Qt::WA_DeleteOnClose);
  AddLoadedForm(this);
  // Closed windows are not taken up again.
  connect(this, &QDialog::finished, this, [this] {
    RemoveLoadedForm(this);
    TheDialogWait().clear();
  });
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(spacing::kWide, spacing::kWide, spacing::kWide, spacing::kWide);
  column->setSpacing(spacing::kLarge);
  lblCaption_ = new QLabel(this);
  lblCaption_->setObjectName(QStringLiteral("lblCaption"));
  lblCaption_->setTextFormat(Qt::PlainText);
  lblCaption_->setWordWrap(true);
  lblCaption_->setMinimumWidth(300);
  txtWait_ = new MarqueeLabel(this);
  txtWait_->setObjectName(QStringLiteral("txtWait"));
  column->addWidget(lblCaption_);
  column->addWidget(txtWait_, 0, Qt::AlignHCenter);
  lblHeld_ = new QLabel(tr("Another program holds the database. Waiting until it is done."), this);
  lblHeld_->setObjectName(QStringLiteral("lblHeld"));
  lblHeld_->setWordWrap(true);
  lblHeld_->hide();
  cmdCancel_ = new QPushButton(tr("&Cancel"), this);
  cmdCancel_->setObjectName(QStringLiteral("cmdCancel"));
  cmdCancel_->setToolTip(tr("Wait no longer (Esc)"));
  cmdCancel_->hide();
  connect(cmdCancel_, &QPushButton::clicked, this, &DialogWait::reject);
  column->addWidget(lblHeld_);
  column->addWidget(cmdCancel_, 0, Qt::AlignHCenter);
  Timer1_ = new QTimer(this);
  Timer1_->setObjectName(QStringLiteral("Timer1"));
  Timer1_->setInterval(Marquee::kIntervalMilliseconds);
  connect(Timer1_, &QTimer::timeout, this, &DialogWait::Timer1_Timer);
}

void DialogWait::SetCaption(const QString& caption) {
  setWindowTitle(caption);
  lblCaption_->setText(caption);
}

void DialogWait::SetHeld(bool held) {
  held_ = held;
  lblHeld_->setVisible(held);
  cmdCancel_->setVisible(held);
  adjustSize();
  if (!held) return;
  cmdCancel_->setFocus();
  raise();
  activateWindow();
}

void DialogWait::reject() {
  if (held_)
    CancelDatabaseWaits();
  else
    QDialog::reject();
}

void DialogWait::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  tick_count_ = 0;
  Timer1_->start();
}

void DialogWait::Timer1_Timer() {
  txtWait_->Step();
  if (!self_closing_ || held_) return;
  tick_count_ += Timer1_->interval();
  if (tick_count_ >= kSelfClosingCount) Unload();
}

}  // namespace zelmar
