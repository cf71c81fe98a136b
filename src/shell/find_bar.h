// A field to find something by typing, and how many matches there are: txtFind and lblMatches.
//
// Who owns it looks for what was typed and tells the number of matches; Enter then wants the next one and
// Shift+Enter the one before, round the ends.
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace zelmar {

class FindBar : public QWidget {
  Q_OBJECT

 public:
  explicit FindBar(const QString& hint, QWidget* parent = nullptr);

  QString Text() const;
  // As if it were typed.
  void Type(const QString& text);
  // Of what stands in the field. The first one is wanted at once.
  void SetMatches(std::size_t count);

 Q_SIGNALS:
  void Typed(const QString& text);
  // Counted from 0.
  void MatchWanted(std::size_t match);
  // The down key was pressed.
  void LeftDownward();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void GoOn(bool forward);
  void Want(std::size_t match);

  QLineEdit* txtFind_;
  QLabel* lblMatches_;
  std::size_t count_ = 0;
  std::size_t match_ = 0;
};

}  // namespace zelmar
