// The mode of the synthesiser and the three buttons that put it into another.
#pragma once

#include <QWidget>

class QLineEdit;

namespace zelmar {

class ModeRow : public QWidget {
  Q_OBJECT

 public:
  explicit ModeRow(QWidget* parent);

  // Shows the mode in force.
  void ShowMode();

 private:
  void AddButton(const char* name, const char* caption, const QString& tooltip, void (*command)());

  QLineEdit* txtMidiMode_;
};

}  // namespace zelmar
