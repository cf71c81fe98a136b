// A list of tunes that asks for the one that is chosen by a click or by Enter. Who owns it loads and plays
// the tune and tells when it plays and when it has ended; meanwhile its row is marked.
#pragma once

#include <QTableView>

#include "store/tune_list_model.h"

namespace zelmar {

class TuneList : public QTableView {
  Q_OBJECT

 public:
  // `name` is its system name: "gridMelodies".
  explicit TuneList(const QString& name, QWidget* parent = nullptr);

  // See TuneListModel::Load. Throws DatabaseError.
  void Load(std::shared_ptr<Connection> connection, const QString& statement);
  void Clear() { tunes_->Clear(); }
  const TuneListModel& Tunes() const { return *tunes_; }
  // What stands in the list while it has no rows.
  void SetEmptyText(const QString& text);

  // The tune that plays; an empty name when none does.
  void SetPlaying(const QString& code_name) { tunes_->SetPlaying(code_name); }

 Q_SIGNALS:
  // Whoever answers may play the tune before it returns, and close the window meanwhile.
  void TuneWanted(const QString& code_name, const QString& title);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Choose(const QModelIndex& place);
  // Divides the width among the columns, the most to the title.
  void SetColumnWidths();

  TuneListModel* tunes_;
  QString empty_text_;
};

}  // namespace zelmar
