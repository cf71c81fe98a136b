// A button as a card: a picture, a title, and a line that says what is behind it.
//
// Where there is room the picture stands above the words; in a low card it stands beside the title, and the
// line is left out where it does not fit.
#pragma once

#include <QAbstractButton>

namespace zelmar {

class CardButton : public QAbstractButton {
  Q_OBJECT

 public:
  CardButton(const QString& icon, const QString& title, const QString& description,
             QWidget* parent = nullptr);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

  // A dimmed card can still be pressed: it leads to what is not there yet.
  bool Dimmed() const { return dimmed_; }
  void SetDimmed(bool dimmed);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QFont TitleFont() const;
  int FullHeight() const;
  // The colours of the card as it is: of a button that is off where it is dimmed.
  QColor Colour(QPalette::ColorRole role) const;
  void PaintPicture(QPainter& painter, const QRect& disc) const;
  // Writes the title, and the description where both fit, at the top or in the middle of the place.
  void PaintWords(QPainter& painter, QRect place, Qt::Alignment where) const;

  QString description_;
  bool dimmed_ = false;
  // Reckoned when they are asked for first.
  mutable QSize smallest_;
  mutable int full_height_ = 0;
};

}  // namespace zelmar
