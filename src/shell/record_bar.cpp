#include "shell/record_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include "platform/widgets/icons.h"
#include "platform/widgets/spacing.h"
#include "store/record_cursor.h"

namespace zelmar {

RecordBar::RecordBar(RecordCursor* cursor, QWidget* parent)
    : QWidget(parent), cursor_(cursor), txtPosition_(new QLabel(this)) {
  txtPosition_->setObjectName(QStringLiteral("txtPosition"));
  txtPosition_->setAlignment(Qt::AlignCenter);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(spacing::kTight);
  row->addWidget(
      Button("cmdFirst", "first", tr("First record"), Qt::ALT | Qt::Key_Home, &RecordCursor::MoveFirst));
  row->addWidget(Button("cmdPrevious", "arrow_left", tr("Previous record"), Qt::ALT | Qt::Key_PageUp,
                        &RecordCursor::MovePrevious));
  row->addWidget(txtPosition_, 1);
  row->addWidget(Button("cmdNext", "arrow_right", tr("Next record"), Qt::ALT | Qt::Key_PageDown,
                        &RecordCursor::MoveNext));
  row->addWidget(
      Button("cmdLast", "last", tr("Last record"), Qt::ALT | Qt::Key_End, &RecordCursor::MoveLast));
  connect(cursor_, &RecordCursor::Moved, this, &RecordBar::ShowPosition);
  ShowPosition();
}

QWidget* RecordBar::Button(const char* name, const char* icon, const QString& hint, const QKeySequence& key,
                           void (RecordCursor::*move)()) {
  auto* button = new QToolButton(this);
  button->setObjectName(QLatin1String(name));
  button->setIcon(IconOf(QLatin1String(icon)));
  button->setIconSize(QSize(20, 20));
  button->setShortcut(key);
  button->setToolTip(QStringLiteral("%1 (%2)").arg(hint, key.toString(QKeySequence::NativeText)));
  button->setAccessibleName(hint);
  button->setFocusPolicy(Qt::StrongFocus);
  connect(button, &QToolButton::clicked, cursor_, move);
  return button;
}

void RecordBar::ShowPosition() {
  txtPosition_->setText(cursor_->PositionText());
  // Nothing moves while the numbers grow.
  const int width =
      txtPosition_->fontMetrics().horizontalAdvance(txtPosition_->text()) + 2 * spacing::kMedium;
  if (width > txtPosition_->minimumWidth()) txtPosition_->setMinimumWidth(width);
  for (QToolButton* button : findChildren<QToolButton*>()) button->setEnabled(cursor_->HasRecord());
}

UnlockButton::UnlockButton(RecordCursor* cursor, QWidget* parent) : QPushButton(parent) {
  setObjectName(QStringLiteral("cmdUnLock"));
  const auto show = [this, cursor] {
    setText(cursor->Locked() ? tr("Unlock Editing") : tr("Prevent Editing"));
  };
  connect(cursor, &RecordCursor::LockChanged, this, show);
  connect(this, &QPushButton::clicked, cursor, [cursor] {
    if (cursor->Locked())
      cursor->Unlock();
    else
      cursor->Lock();
  });
  show();
}

}  // namespace zelmar
