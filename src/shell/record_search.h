// A box in which a record is found by typing its key or choosing it: it lists the keys of all records and
// shows that of the current one.
//
// Enter goes to the record whose key was typed, in whatever case and without its accents where no other key
// reads the same; anything else it leaves alone. The down key opens the list.
#pragma once

#include <QComboBox>

namespace zelmar {

class RecordCursor;

class RecordSearch : public QComboBox {
  Q_OBJECT

 public:
  // The cursor must outlive it.
  explicit RecordSearch(RecordCursor* cursor, QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void FillList();
  void ShowRecord();
  void Find(const QString& key);

  RecordCursor* cursor_;
};

}  // namespace zelmar
