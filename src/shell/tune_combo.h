// A list of titles with a field to find one by typing: each title stands for a CodeName.
//
// The keyboard stays in the field. Up and Down move by one row, Page Up and Page Down by five; Enter or a
// click on a row chooses. What is typed narrows the list to the titles that hold every word of it, whatever
// their case and accents.
#pragma once

#include <QWidget>
#include <vector>

class QLineEdit;
class QListView;

namespace zelmar {

struct TuneTitle {
  QString title;
  QString code_name;
};

class TuneCombo : public QWidget {
  Q_OBJECT

 public:
  explicit TuneCombo(QWidget* parent = nullptr);

  void SetTitles(std::vector<TuneTitle> titles);
  // The CodeName of the row that is selected; empty when none is.
  QString SelectedCodeName() const;
  // Selects the first row when no title has that CodeName.
  void Select(const QString& code_name);
  QString SelectedTitle() const;
  int RowCount() const;
  // True when there are titles and none of them holds what is typed, and what is told of that.
  bool NothingFits() const;
  static QString WordsForNothing();

 Q_SIGNALS:
  void Chosen();
  // The list shows what fits to what is typed by now.
  void Narrowed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class Titles;
  class Finder;

  void MoveBy(int rows);
  void Narrow(const QString& typed);
  void SelectRow(int row);
  void TellSelected();

  QLineEdit* field_;
  QListView* list_;
  Titles* titles_;
  Finder* finder_;
};

}  // namespace zelmar
