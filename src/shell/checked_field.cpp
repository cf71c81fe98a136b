#include "shell/checked_field.h"

#include "shell/field_check.h"

namespace zelmar {

CheckedField::CheckedField(QWidget* parent) : QLineEdit(parent), check_(new FieldCheck(this, this)) {}

CheckedField::~CheckedField() {
  // The end of a control moves the keyboard, which must meet no check any more.
  delete check_;
}

bool CheckedField::Enter(const QString& text) {
  if (text == this->text()) return check_->Settle();
  selectAll();
  insert(text);
  setModified(true);
  return check_->Settle();
}

}  // namespace zelmar
