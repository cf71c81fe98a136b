// How many bars a window shows side by side: a number from 1 to 12 with spin buttons, and two buttons that
// zoom.
//
// A number that is typed counts as soon as it lies within the range. Any other is brought to the nearer end
// when the field is left or on Enter, and an empty field gets its number back.
#pragma once

#include <QWidget>

class QSpinBox;
class QToolButton;

namespace zelmar {

class BarsAcrossRow : public QWidget {
  Q_OBJECT

 public:
  static constexpr int kFewest = 1;
  static constexpr int kMost = 12;

  explicit BarsAcrossRow(QWidget* parent = nullptr);

  int BarsAcross() const;
  // Brought into the range; no signal tells of it.
  void SetBarsAcross(int bars);

 Q_SIGNALS:
  // A person chose another number.
  void Changed(int bars);

 private:
  QToolButton* MakeButton(const char* name, const char* icon, const QString& hint, int step);
  void EnableButtons();

  QSpinBox* UpDownBarsAcross_;
  QToolButton* imgZoomPlus_;
  QToolButton* imgZoomMinus_;
};

}  // namespace zelmar
