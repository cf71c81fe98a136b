// The surfaces of a staff control and the items laid over them.
#pragma once

#include <QRectF>
#include <QWidget>

#include "notation/drawing.h"

namespace zelmar {

// Shows a recorded drawing on paper. Beneath its ink lie the lines among the items on it, and the rim that
// tells that its parent has the focus. Mouse presses pass on to the parent.
class StaffSurface : public QWidget {
  Q_OBJECT

 public:
  // The drawing must outlive the surface.
  StaffSurface(const char* name, Drawing& drawing, QWidget* parent);

  // The rim runs along the edges of the parent, as far as the surface covers them.
  void SetFocusRim(bool shown);
  bool FocusRim() const { return focus_rim_; }

  // Size in twips.
  double Width() const { return width() * kTwipsPerPixel; }
  double Height() const { return height() * kTwipsPerPixel; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void PaintFocusRim(QPainter& painter) const;

  Drawing& drawing_;
  bool focus_rim_ = false;
};

// A transparent item on a surface, placed in twips: a line, which lies beneath the ink, or a tinted block
// over it. Mouse presses pass through it.
class StaffItem : public QWidget {
  Q_OBJECT

 public:
  enum class Look { kLine, kBlock };

  StaffItem(const char* name, Look look, QWidget* parent);

  const QRectF& Place() const { return place_; }
  void SetPlace(const QRectF& place);

  bool LiesBeneath() const { return look_ == Look::kLine; }
  // In coordinates of the surface.
  void PaintLine(QPainter& painter) const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Look look_;
  QRectF place_;
};

}  // namespace zelmar
