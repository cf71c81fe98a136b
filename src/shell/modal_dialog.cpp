#include "shell/modal_dialog.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "platform/widgets/spacing.h"
#include "shell/button_keys.h"
#include "shell/checked_field.h"
#include "shell/command_table.h"
#include "shell/field_check.h"
#include "shell/help.h"
#include "shell/loaded_forms.h"
#include "shell/main_frame.h"

namespace zelmar {

namespace {

constexpr int kLinesOfText = 3;

// Moved as far as is needed; the upper left corner, with its title, has the last word.
QRect WithinRoom(QRect place, const QRect& room) {
  place.moveLeft(std::max(std::min(place.left(), room.right() + 1 - place.width()), room.left()));
  place.moveTop(std::max(std::min(place.top(), room.bottom() + 1 - place.height()), room.top()));
  return place;
}

}  // namespace

bool RaiseModalDialog(const QString& system_name) {
  QWidget* const open = FindLoadedForm(system_name);
  if (open == nullptr) return false;
  open->raise();
  open->activateWindow();
  return true;
}

QWidget* ParentOfDialogs() {
  MainFrame* const frame = TheMainFrame();
  return frame != nullptr ? frame->Window() : nullptr;
}

ModalDialog::ModalDialog(const QString& system_name, const QString& caption, QWidget* parent)
    : QDialog(parent) {
  setObjectName(system_name);
  setWindowTitle(caption);
  setModal(true);
  AddLoadedForm(this);
  // A window that is closed is not found any more.
  connect(this, &QDialog::finished, this, [this] { RemoveLoadedForm(this); });
}

void ModalDialog::ShowModally() {
  setAttribute(Qt::WA_DeleteOnClose);
  show();
}

QLineEdit* ModalDialog::MakeField(const char* name, Access access) {
  auto* field = new QLineEdit(this);
  field->setObjectName(QLatin1String(name));
  if (access == Access::kShown) {
    field->setReadOnly(true);
    field->setFocusPolicy(Qt::ClickFocus);
  }
  return field;
}

CheckedField* ModalDialog::MakeCheckedField(const char* name) {
  auto* field = new CheckedField(this);
  field->setObjectName(QLatin1String(name));
  return field;
}

QPlainTextEdit* ModalDialog::MakeTextBox(const char* name) {
  auto* box = new QPlainTextEdit(this);
  box->setObjectName(QLatin1String(name));
  box->setTabChangesFocus(true);
  box->setFixedHeight(box->fontMetrics().lineSpacing() * kLinesOfText + 2 * spacing::kSmall);
  return box;
}

QLabel* ModalDialog::MakeLabel(const QString& words, QWidget* field) {
  auto* label = new QLabel(words, this);
  label->setBuddy(field);
  return label;
}

QGridLayout* ModalDialog::MakeForm() {
  auto* form = new QGridLayout;
  form->setHorizontalSpacing(spacing::kMedium);
  form->setVerticalSpacing(spacing::kSmall);
  form->setColumnStretch(1, 1);
  return form;
}

void ModalDialog::AddRow(QGridLayout* form, QLabel* label, QWidget* field) {
  const int row = form->rowCount();
  // The label of a box of several lines stands beside its first one.
  const bool tall = qobject_cast<QPlainTextEdit*>(field) != nullptr;
  if (tall) label->setContentsMargins(0, spacing::kSmall, 0, 0);
  if (label != nullptr) form->addWidget(label, row, 0, tall ? Qt::AlignTop : Qt::AlignVCenter);
  form->addWidget(field, row, 1);
}

void ModalDialog::AddRow(QGridLayout* form, QLabel* label, QLayout* fields) {
  const int row = form->rowCount();
  form->addWidget(label, row, 0, Qt::AlignVCenter);
  form->addLayout(fields, row, 1);
}

QPushButton* ModalDialog::MakeButton(const char* name, const QString& caption, const QString& tooltip) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(QLatin1String(name));
  button->setToolTip(tooltip);
  button->setAutoDefault(false);
  return button;
}

QBoxLayout* ModalDialog::MakeButtonRow(QPushButton* main_button) {
  return MakeButtonRow(main_button, {},
                       {"cmdBack", QStringLiteral("&Back  (Cancel)"), tr("Close without saving (Esc)")});
}

QBoxLayout* ModalDialog::MakeButtonRow(QPushButton* main_button, const QList<QPushButton*>& others,
                                       const WayOut& way_out) {
  auto* row = new QHBoxLayout;
  row->setSpacing(spacing::kSmall);
  auto* help = MakeButton("cmdHelp", QStringLiteral("&Help"), tr("What this window is for (F1)"));
  SetLeaving(*help, Leaving::kFree);
  connect(help, &QPushButton::clicked, this, &ModalDialog::ShowHelp);
  row->addWidget(help);
  row->addStretch(1);
  // Tab goes from the fields to the buttons that act, and to Help at last.
  QList<QPushButton*> acting = others;
  if (way_out.name != nullptr) {
    auto* back = MakeButton(way_out.name, way_out.caption, way_out.hint);
    SetLeaving(*back, Leaving::kGivesUp);
    connect(back, &QPushButton::clicked, this, &ModalDialog::reject);
    acting.append(back);
  }
  acting.append(main_button);
  main_button->setDefault(true);
  for (qsizetype i = 0; i < acting.size(); ++i) {
    row->addWidget(acting[i]);
    setTabOrder(acting[i], i + 1 < acting.size() ? acting[i + 1] : help);
  }
  return row;
}

void ModalDialog::SetHelpPage(const QString& page, const QString& title) {
  help_page_ = page;
  help_title_ = title;
}

void ModalDialog::ShowHelp() {
  if (help_page_.isEmpty())
    ShowHelpContext(HelpContextOf(objectName()), HelpPlace::kModalWindow);
  else
    ShowHelpPage(help_page_, HelpPlace::kModalWindow, help_title_);
}

void ModalDialog::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1)
    ShowHelp();
  else if (!PressesButton(*this, *event))
    QDialog::keyPressEvent(event);
}

void ModalDialog::SetPlace(const QPoint& top_left) {
  place_ = top_left;
}

void ModalDialog::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (event->spontaneous()) return;
  MainFrame* const frame = TheMainFrame();
  QRect place = frameGeometry();
  if (place_) {
    place.moveTopLeft(*place_);
    const QScreen* const there = QGuiApplication::screenAt(place.center());
    place = WithinRoom(place, (there != nullptr ? there : screen())->availableGeometry());
  } else if (frame != nullptr && frame->Window()->isVisible()) {
    const QMdiArea* const area = frame->Area();
    place.moveCenter(area->mapToGlobal(area->rect().center()));
  } else {
    return;
  }
  move(place.topLeft());
}

}  // namespace zelmar
