// A printed list on the screen: its pages, with moves, sizes and a search, and the ways out of it: the
// printer, a PDF file, a file of comma-separated values.
//
// The first page is there at once; the others come while events are served.
#pragma once

#include <QTimer>
#include <QWidget>
#include <memory>
#include <vector>

#include "model/list_search.h"

class QComboBox;
class QHBoxLayout;
class QLabel;
class QSpinBox;
class QToolButton;

namespace zelmar {

class FindBar;
class ListLettering;
class PageCanvas;

class ListPreview : public QWidget {
  Q_OBJECT

 public:
  explicit ListPreview(PrintedList list, QWidget* parent = nullptr);
  ~ListPreview() override;

  const ListLayout& Layout() const { return *layout_; }
  PageCanvas& Canvas() { return *canvas_; }

  // Asks for a printer and prints. Throws Failure.
  void Print();
  // Each asks for a file, and before it replaces one that was not named in full. Throws Failure.
  void SavePdf();
  void SaveCommaSeparated();

 Q_SIGNALS:
  // How much of the list is laid out, in percent; 100 is the end.
  void LaidOut(int percent);

 private:
  void LayOutMore();
  QHBoxLayout* MakeMoves();
  QHBoxLayout* MakeSizes();
  QHBoxLayout* MakeWaysOut();
  QToolButton* Button(const char* name, const char* icon, const QString& text, const QString& hint);
  void ShowPageNumber();
  void ShowSize();
  void ChooseSize(int choice);
  void Find();
  // An empty text when none was chosen.
  QString AskForFile(const QString& title, const QString& filter, const QString& ending) const;

  std::shared_ptr<const PrintedList> list_;
  std::shared_ptr<const ListLettering> lettering_;
  std::unique_ptr<ListLayout> layout_;
  QTimer more_;
  PageCanvas* canvas_;
  FindBar* find_;
  QToolButton *cmdPreviousPage_ = nullptr, *cmdNextPage_ = nullptr;
  QSpinBox* numPage_ = nullptr;
  QLabel* lblPages_ = nullptr;
  QComboBox* cboZoom_ = nullptr;
};

}  // namespace zelmar
