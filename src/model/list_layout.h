// A printed list laid out on pages, as lines with their places; all lengths are points.
//
// Pages are laid out one after another, so that the first is there at once. The head of a group stands with
// its first row at least and again on each page that the group goes on to. A row stays on one page unless it
// is longer than one. Long texts are wrapped in their column.
#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "model/printed_list.h"

namespace zelmar {

enum class PrintedStyle {
  kTitle,
  kUnderTitle,  // database and date
  kPreface,
  kRunningHead,  // title and date on the pages after the first
  kColumnHead,
  kGroupHead,
  kRow,
  kClosing,
  kFooter,
};
inline constexpr int kPrintedStyleCount = static_cast<int>(PrintedStyle::kFooter) + 1;

// How much room texts take.
class TextMeasure {
 public:
  virtual ~TextMeasure() = default;
  virtual double Width(PrintedStyle style, const QString& text) const = 0;
  virtual double LineHeight(PrintedStyle style) const = 0;
};

struct PrintedPiece {
  double left = 0.0;
  double width = 0.0;
  QString text = {};
  bool at_right = false;  // of its width
};

struct PrintedLine {
  PrintedStyle style = PrintedStyle::kRow;
  double top = 0.0;
  double height = 0.0;
  std::vector<PrintedPiece> pieces = {};
  bool goes_on = false;  // a further line of the text or row above it
};

using PrintedPage = std::vector<PrintedLine>;

class ListLayout {
 public:
  // Pages with so much room between their margins.
  ListLayout(std::shared_ptr<const PrintedList> list, std::shared_ptr<const TextMeasure> measure,
             double width, double height);

  bool Finished() const { return finished_; }
  // Lays out one page more; nothing when it is finished.
  void AddPage();
  void Finish();
  // How much is done, in percent.
  int Percent() const;

  int PageCount() const { return static_cast<int>(pages_.size()); }
  // A page from 1 on, its footer included; the footer tells the number of pages once all are there. Throws
  // SubscriptError for another page.
  PrintedPage Page(int page) const;

 private:
  // Lines that stay together, from a top of 0 on.
  struct Block {
    std::vector<PrintedLine> lines;
    double height = 0.0;
    double space_above = 0.0;
  };

  void Add(Block& block, PrintedLine line) const;
  PrintedLine LineOf(PrintedStyle style, const QString& text, const QString& at_right = {}) const;
  void AddWrapped(Block& block, PrintedStyle style, const QString& text) const;
  void AddCells(Block& block, PrintedStyle style, const QStringList& cells) const;

  Block Heading() const;
  Block NextBlock(bool begins_page) const;
  void GoOn();
  bool IsAtEnd() const;
  double Bottom() const;
  // Puts the lines that fit on the page, one at least; those left wait for the next.
  void PlaceInParts(PrintedPage& page, double& y, std::vector<PrintedLine> lines);

  std::shared_ptr<const PrintedList> list_;
  std::shared_ptr<const TextMeasure> measure_;
  double width_;
  double height_;
  double indent_ = 0.0;  // of rows under the heads of groups
  QStringList headings_;
  QStringList closing_;
  std::size_t row_count_ = 0;

  std::vector<PrintedPage> pages_;
  std::size_t group_ = 0;  // what comes next
  std::size_t row_ = 0;
  std::size_t rows_done_ = 0;
  bool closing_done_ = false;
  std::vector<PrintedLine> waiting_;
  bool finished_ = false;
};

// The text in lines of that width: between words where it can be, within one where it must be.
QStringList Wrapped(const QString& text, PrintedStyle style, double width, const TextMeasure& measure);

}  // namespace zelmar
