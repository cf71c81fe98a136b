// What the keyboard shows on a staff: a cursor, which stands at a quarter beat and a step.
#pragma once

#include <QWidget>

namespace zelmar {

// Lies over the staff's surface; presses pass through it.
class StaffCursor : public QWidget {
  Q_OBJECT

 public:
  explicit StaffCursor(QWidget* parent);

  // Quarter beats from the head of the bar.
  int Quarter() const { return quarter_; }
  int Step() const { return step_; }
  void SetPlace(int quarter, int step);

  // Stands with its middle at a place of the surface. All in twips; `gap` is the distance of two staff lines.
  void StandAt(double x, double y, double gap);
  // With a note taken up the cursor is filled.
  void SetCarrying(bool carrying);
  bool Carrying() const { return carrying_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int quarter_ = 0;
  int step_ = 5;
  QPointF middle_;  // pixels, in the cursor's own place
  double gap_ = 0.0;
  bool carrying_ = false;
};

}  // namespace zelmar
