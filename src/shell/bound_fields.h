// Controls that show the columns of the current record and, while the records are unlocked, write what is
// changed in them back when they are left.
//
// A value that cannot be stored is told, and the control shows the record's again; the record is not left
// then. A record is not left either while a field holds what it cannot take.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <functional>
#include <optional>
#include <vector>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QWidget;

namespace zelmar {

class RecordCursor;

class BoundFields : public QObject {
  Q_OBJECT

 public:
  // What a column takes from a control with text. A number that is empty is stored as a null.
  enum class Kind { kText, kWholeNumber };

  // The cursor must outlive it.
  explicit BoundFields(RecordCursor* cursor, QObject* parent = nullptr);

  void Bind(QLineEdit* field, const QString& column, Kind kind = Kind::kText);
  void Bind(QPlainTextEdit* field, const QString& column);
  void Bind(QCheckBox* field, const QString& column);
  // Of a box that is not editable, a value that its list does not have is shown all the same.
  void Bind(QComboBox* field, const QString& column, Kind kind = Kind::kText);

  // Stores what was changed and not left yet. False when that cannot be; it has been told.
  bool StoreChanges();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Field {
    QPointer<QWidget> control;
    QString column;
    Kind kind = Kind::kText;
    std::function<QVariant()> read;
    std::function<void(const QVariant&)> show;
    std::function<void(bool)> set_writable;
    QVariant shown = {};  // what `read` gives while nothing is changed
  };

  void Add(Field field);
  void ShowAll();
  void Show(Field& field);
  // The control `control` was left or chosen in.
  void StoreOf(const QWidget* control);
  bool Store(Field& field);

  RecordCursor* cursor_;
  std::vector<Field> fields_;
};

}  // namespace zelmar
