#include "shell/bound_fields.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include "platform/failure.h"
#include "platform/services.h"
#include "store/failure_words.h"
#include "store/record_cursor.h"

namespace zelmar {

namespace {

// What is stored for what was typed; nothing where the column does not take it.
std::optional<QVariant> Storable(const QVariant& typed, bool is_number) {
  if (!is_number || typed.typeId() == QMetaType::Bool) return typed;
  const QString text = typed.toString().trimmed();
  if (text.isEmpty()) return QVariant();
  bool ok = false;
  const int number = text.toInt(&ok);
  return ok ? std::optional<QVariant>(number) : std::nullopt;
}

}  // namespace

BoundFields::BoundFields(RecordCursor* cursor, QObject* parent) : QObject(parent), cursor_(cursor) {
  connect(cursor_, &RecordCursor::Moved, this, &BoundFields::ShowAll);
  connect(cursor_, &RecordCursor::LockChanged, this, &BoundFields::ShowAll);
  cursor_->BeforeLeaving([self = QPointer<BoundFields>(this)] { return !self || self->StoreChanges(); });
}

void BoundFields::Bind(QLineEdit* field, const QString& column, Kind kind) {
  Add({field, column, kind, [field] { return QVariant(field->text()); },
       [field](const QVariant& value) {
         field->setText(value.toString());
         field->setCursorPosition(0);
       },
       [field](bool writable) { field->setReadOnly(!writable); }});
  connect(field, &QLineEdit::editingFinished, this, [this, field] { StoreOf(field); });
}

void BoundFields::Bind(QPlainTextEdit* field, const QString& column) {
  Add({field, column, Kind::kText, [field] { return QVariant(field->toPlainText()); },
       [field](const QVariant& value) { field->setPlainText(value.toString()); },
       [field](bool writable) { field->setReadOnly(!writable); }});
  field->installEventFilter(this);
}

void BoundFields::Bind(QCheckBox* field, const QString& column) {
  Add({field, column, Kind::kText, [field] { return QVariant(field->isChecked()); },
       [this, field, column](const QVariant&) { field->setChecked(cursor_->YesNo(column)); },
       [field](bool writable) { field->setEnabled(writable); }});
  connect(field, &QCheckBox::clicked, this, [this, field] { StoreOf(field); });
}

void BoundFields::Bind(QComboBox* field, const QString& column, Kind kind) {
  Add({field, column, kind,
       [field] {
         return QVariant(field->isEditable() || field->currentIndex() >= 0 ? field->currentText()
                                                                           : field->placeholderText());
       },
       [field](const QVariant& value) {
         const QString text = value.toString();
         field->setCurrentIndex(field->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
         if (field->isEditable())
           field->setEditText(text);
         else  // without one, a box shows its first item
           field->setPlaceholderText(text.isEmpty() ? QStringLiteral(" ") : text);
       },
       [field](bool writable) { field->setEnabled(writable); }});
  connect(field, &QComboBox::activated, this, [this, field] { StoreOf(field); });
  if (field->isEditable())
    connect(field->lineEdit(), &QLineEdit::editingFinished, this, [this, field] { StoreOf(field); });
}

void BoundFields::Add(Field field) {
  fields_.push_back(std::move(field));
  Show(fields_.back());
}

void BoundFields::ShowAll() {
  for (Field& field : fields_)
    if (field.control) Show(field);
}

void BoundFields::Show(Field& field) {
  const QSignalBlocker quiet(field.control);
  field.show(cursor_->Value(field.column));
  field.shown = field.read();
  field.set_writable(cursor_->HasRecord() && !cursor_->Locked());
}

bool BoundFields::eventFilter(QObject* watched, QEvent* event) {
  // A field keeps its text while a menu or another window is in front.
  if (event->type() == QEvent::FocusOut) {
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
      StoreOf(static_cast<QWidget*>(watched));
  }
  return QObject::eventFilter(watched, event);
}

void BoundFields::StoreOf(const QWidget* control) {
  for (Field& field : fields_)
    if (field.control == control) {
      Store(field);
      return;
    }
}

bool BoundFields::StoreChanges() {
  const QPointer<BoundFields> self(this);
  for (std::size_t i = 0; self && i < fields_.size(); ++i)
    if (fields_[i].control && !Store(fields_[i])) return false;
  return true;
}

bool BoundFields::Store(Field& field) {
  if (!cursor_->HasRecord() || cursor_->Locked()) return true;
  const QVariant typed = field.read();
  if (typed == field.shown) return true;
  const auto value = Storable(typed, field.kind == Kind::kWholeNumber);
  // A box takes the focus, and what loses it is left: the control shows the record's value by then.
  const QPointer<BoundFields> self(this);
  QString trouble;
  if (!value) {
    trouble = QStringLiteral("\"%1\" is not a whole number.").arg(typed.toString());
  } else {
    field.shown = typed;
    try {
      cursor_->Store(field.column, *value);
      return true;
    } catch (const Failure& failure) {
      trouble = WordsForPerson(failure);
    }
  }
  if (self) ShowAll();
  ShowMessage(MessageIcon::kExclamation, trouble);
  return false;
}

}  // namespace zelmar
