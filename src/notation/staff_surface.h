// The surfaces of a staff control and the items laid over them.
#pragma once

#include <QRectF>
#include <QWidget>

#include "notation/drawing.h"

namespace zelmar {

// Shows a recorded drawing on paper. Mouse presses pass on to the parent.
class StaffSurface : public QWidget {
  Q_OBJECT

 public:
  // The drawing must outlive the surface.
  StaffSurface(const char* name, Drawing& drawing, QWidget* parent);

  // Size in twips.
  double Width() const { return width() * kTwipsPerPixel; }
  double Height() const { return height() * kTwipsPerPixel; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Drawing& drawing_;
};

// A transparent item on a surface, placed in twips: a line, or a tinted block. Mouse presses pass through it.
class StaffItem : public QWidget {
  Q_OBJECT

 public:
  enum class Look { kLine, kBlock };

  StaffItem(const char* name, Look look, QWidget* parent);

  const QRectF& Place() const { return place_; }
  void SetPlace(const QRectF& place);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Look look_;
  QRectF place_;
};

}  // namespace zelmar
