#include "shell/record_search.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QSignalBlocker>

#include "model/search_text.h"
#include "store/record_cursor.h"

namespace zelmar {

RecordSearch::RecordSearch(RecordCursor* cursor, QWidget* parent) : QComboBox(parent), cursor_(cursor) {
  setEditable(true);
  setInsertPolicy(QComboBox::NoInsert);
  setMaxVisibleItems(20);
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(16);
  lineEdit()->setPlaceholderText(tr("Find by name"));
  connect(cursor_, &RecordCursor::KeysChanged, this, &RecordSearch::FillList);
  connect(cursor_, &RecordCursor::Moved, this, &RecordSearch::ShowRecord);
  connect(this, &QComboBox::activated, this, [this](int item) { Find(itemText(item)); });
  FillList();
}

void RecordSearch::FillList() {
  const QSignalBlocker quiet(this);
  clear();
  addItems(cursor_->Keys());
  ShowRecord();
}

void RecordSearch::ShowRecord() {
  const QSignalBlocker quiet(this);
  setCurrentIndex(static_cast<int>(cursor_->Position()) - 1);
  setEditText(cursor_->Key().toString());
}

void RecordSearch::Find(const QString& key) {
  const QPointer<RecordSearch> self(this);
  cursor_->Find(key);
  // One that is held, or was not found, is still the current one.
  if (self) ShowRecord();
}

void RecordSearch::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Down:
      showPopup();
      return;
    case Qt::Key_Return:
    case Qt::Key_Enter: {
      QStringList keys;
      for (int i = 0; i < count(); ++i) keys.append(itemText(i));
      if (const auto key = ValueTyped(keys, currentText())) Find(*key);
      return;
    }
    default:
      QComboBox::keyPressEvent(event);
  }
}

}  // namespace zelmar
