#include "app/options/option_dialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QPlainTextEdit>
#include <QPushButton>

#include "platform/widgets/spacing.h"
#include "shell/button_keys.h"
#include "shell/help.h"
#include "shell/loaded_forms.h"
#include "shell/main_frame.h"

namespace zelmar {

namespace {

constexpr int kLinesOfText = 3;

}  // namespace

QWidget* ParentOfOptions() {
  MainFrame* const frame = TheMainFrame();
  return frame != nullptr ? frame->Window() : nullptr;
}

bool RaiseOptionDialog(const QString& system_name) {
  QWidget* const open = FindLoadedForm(system_name);
  if (open == nullptr) return false;
  open->raise();
  open->activateWindow();
  return true;
}

OptionDialog::OptionDialog(const QString& system_name, const QString& caption, int help_context,
                           QWidget* parent)
    : QDialog(parent), help_context_(help_context) {
  setObjectName(system_name);
  setWindowTitle(caption);
  setModal(true);
  AddLoadedForm(this);
  // A window that is closed is not found any more.
  connect(this, &QDialog::finished, this, [this] { RemoveLoadedForm(this); });
}

void OptionDialog::ShowModally() {
  setAttribute(Qt::WA_DeleteOnClose);
  show();
}

QLineEdit* OptionDialog::MakeField(const char* name, Access access) {
  auto* field = new QLineEdit(this);
  field->setObjectName(QLatin1String(name));
  if (access == Access::kShown) {
    field->setReadOnly(true);
    field->setFocusPolicy(Qt::ClickFocus);
  }
  return field;
}

QPlainTextEdit* OptionDialog::MakeTextBox(const char* name) {
  auto* box = new QPlainTextEdit(this);
  box->setObjectName(QLatin1String(name));
  box->setTabChangesFocus(true);
  box->setFixedHeight(box->fontMetrics().lineSpacing() * kLinesOfText + 2 * spacing::kSmall);
  return box;
}

QLabel* OptionDialog::MakeLabel(const QString& words, QWidget* field) {
  auto* label = new QLabel(words, this);
  label->setBuddy(field);
  return label;
}

QGridLayout* OptionDialog::MakeForm() {
  auto* form = new QGridLayout;
  form->setHorizontalSpacing(spacing::kMedium);
  form->setVerticalSpacing(spacing::kSmall);
  form->setColumnStretch(1, 1);
  return form;
}

void OptionDialog::AddRow(QGridLayout* form, QLabel* label, QWidget* field) {
  const int row = form->rowCount();
  // The label of a box of several lines stands beside its first one.
  const bool tall = qobject_cast<QPlainTextEdit*>(field) != nullptr;
  if (tall) label->setContentsMargins(0, spacing::kSmall, 0, 0);
  if (label != nullptr) form->addWidget(label, row, 0, tall ? Qt::AlignTop : Qt::AlignVCenter);
  form->addWidget(field, row, 1);
}

void OptionDialog::AddRow(QGridLayout* form, QLabel* label, QLayout* fields) {
  const int row = form->rowCount();
  form->addWidget(label, row, 0, Qt::AlignVCenter);
  form->addLayout(fields, row, 1);
}

QPushButton* OptionDialog::MakeButton(const char* name, const QString& caption, const QString& tooltip) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(QLatin1String(name));
  button->setToolTip(tooltip);
  button->setAutoDefault(false);
  return button;
}

QBoxLayout* OptionDialog::MakeButtonRow(QPushButton* main_button) {
  auto* help = MakeButton("cmdHelp", QStringLiteral("&Help"), tr("What this window is for (F1)"));
  auto* back = MakeButton("cmdBack", QStringLiteral("&Back  (Cancel)"), tr("Close without saving (Esc)"));
  connect(help, &QPushButton::clicked, this, &OptionDialog::ShowHelp);
  connect(back, &QPushButton::clicked, this, &OptionDialog::reject);
  main_button->setDefault(true);
  auto* row = new QHBoxLayout;
  row->setSpacing(spacing::kSmall);
  row->addWidget(help);
  row->addStretch(1);
  row->addWidget(back);
  row->addWidget(main_button);
  setTabOrder(back, main_button);
  setTabOrder(main_button, help);
  return row;
}

void OptionDialog::ShowHelp() {
  ShowHelpContext(help_context_, HelpPlace::kModalWindow);
}

void OptionDialog::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1)
    ShowHelp();
  else if (!PressesButton(*this, *event))
    QDialog::keyPressEvent(event);
}

void OptionDialog::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  MainFrame* const frame = TheMainFrame();
  if (event->spontaneous() || frame == nullptr || !frame->Window()->isVisible()) return;
  const QMdiArea* const area = frame->Area();
  QRect place = frameGeometry();
  place.moveCenter(area->mapToGlobal(area->rect().center()));
  move(place.topLeft());
}

}  // namespace zelmar
