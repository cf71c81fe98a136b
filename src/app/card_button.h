// A button as a card: a picture, a title, and a line that says what is behind it.
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

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QFont TitleFont() const;

  QString description_;
};

}  // namespace zelmar
