// The controls of a walk through records: to the first, the previous, the next and the last one, with the
// position between them; and the button that unlocks the records.
#pragma once

#include <QPushButton>
#include <QWidget>

class QLabel;

namespace zelmar {

class RecordCursor;

// cmdFirst, cmdPrevious, txtPosition, cmdNext, cmdLast. The cursor must outlive it.
class RecordBar : public QWidget {
  Q_OBJECT

 public:
  explicit RecordBar(RecordCursor* cursor, QWidget* parent = nullptr);

 private:
  QWidget* Button(const char* name, const char* icon, const QString& hint, const QKeySequence& key,
                  void (RecordCursor::*move)());
  void ShowPosition();

  RecordCursor* cursor_;
  QLabel* txtPosition_;
};

// cmdUnLock: "Unlock Editing" while the records are locked, "Prevent Editing" while they are not.
class UnlockButton : public QPushButton {
  Q_OBJECT

 public:
  explicit UnlockButton(RecordCursor* cursor, QWidget* parent = nullptr);
};

}  // namespace zelmar
