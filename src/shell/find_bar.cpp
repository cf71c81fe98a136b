#include "shell/find_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include "platform/widgets/icons.h"
#include "platform/widgets/spacing.h"

namespace zelmar {

FindBar::FindBar(const QString& hint, QWidget* parent)
    : QWidget(parent), txtFind_(new QLineEdit(this)), lblMatches_(new QLabel(this)) {
  txtFind_->setObjectName(QStringLiteral("txtFind"));
  txtFind_->setPlaceholderText(hint);
  txtFind_->setAccessibleName(hint);
  txtFind_->setToolTip(tr("Enter goes to the next match, Shift+Enter to the one before"));
  txtFind_->setClearButtonEnabled(true);
  txtFind_->addAction(IconOf(QStringLiteral("find")), QLineEdit::LeadingPosition);
  txtFind_->installEventFilter(this);
  connect(txtFind_, &QLineEdit::textChanged, this, &FindBar::Typed);
  lblMatches_->setObjectName(QStringLiteral("lblMatches"));
  lblMatches_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  // Nothing moves while the numbers change.
  lblMatches_->setMinimumWidth(
      lblMatches_->fontMetrics().horizontalAdvance(tr("%1 of %2").arg(9999).arg(9999)));
  setFocusProxy(txtFind_);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(spacing::kTight);
  row->addWidget(txtFind_, 1);
  row->addWidget(lblMatches_);
}

QString FindBar::Text() const {
  return txtFind_->text();
}

void FindBar::Type(const QString& text) {
  txtFind_->setText(text);
}

void FindBar::SetMatches(std::size_t count) {
  count_ = count;
  lblMatches_->setText(count > 0 || Text().trimmed().isEmpty() ? QString() : tr("Not found"));
  if (count > 0) Want(0);
}

void FindBar::Want(std::size_t match) {
  match_ = match;
  lblMatches_->setText(tr("%1 of %2").arg(match + 1).arg(count_));
  Q_EMIT MatchWanted(match);
}

void FindBar::GoOn(bool forward) {
  if (count_ > 0) Want((match_ + (forward ? 1 : count_ - 1)) % count_);
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const auto* key = static_cast<QKeyEvent*>(event);
  switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      GoOn((key->modifiers() & Qt::ShiftModifier) == 0);
      return true;
    case Qt::Key_Down:
      Q_EMIT LeftDownward();
      return true;
    default:
      return QWidget::eventFilter(watched, event);
  }
}

}  // namespace zelmar
