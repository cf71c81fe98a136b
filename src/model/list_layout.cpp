#include "model/list_layout.h"

#include <algorithm>
#include <utility>

#include "platform/failure.h"

namespace zelmar {

namespace {

// Points.
constexpr double kIndent = 12.0;
constexpr double kColumnGap = 9.0;
constexpr double kRowGap = 1.5;
constexpr double kGroupGap = 9.0;
constexpr double kHeadGap = 10.0;  // under the heading and above the footer
constexpr double kBodyGap = 4.0;   // above the first line of the body

// How many letters of the word fit, one at least; a letter of two halves stays whole.
qsizetype LettersThatFit(const QString& word, PrintedStyle style, double width, const TextMeasure& measure) {
  qsizetype fits = 1, too_long = word.size();
  while (too_long - fits > 1) {
    const qsizetype middle = (fits + too_long) / 2;
    (measure.Width(style, word.left(middle)) <= width ? fits : too_long) = middle;
  }
  return word[fits - 1].isHighSurrogate() ? fits + 1 : fits;
}

}  // namespace

QStringList Wrapped(const QString& text, PrintedStyle style, double width, const TextMeasure& measure) {
  QString one_line = text;
  one_line.replace(u'\r', u' ').replace(u'\n', u' ');
  if (measure.Width(style, one_line) <= width) return {one_line};
  QStringList lines;
  QString line;
  for (QString word : one_line.split(u' ')) {
    const QString longer = line.isEmpty() ? word : line + u' ' + word;
    if (measure.Width(style, longer) <= width) {
      line = longer;
      continue;
    }
    if (!line.isEmpty()) lines.append(line);
    while (word.size() > 1 && measure.Width(style, word) > width) {
      const qsizetype letters = LettersThatFit(word, style, width, measure);
      lines.append(word.left(letters));
      word = word.mid(letters);
    }
    line = word;
  }
  if (!line.isEmpty()) lines.append(line);
  return lines;
}

ListLayout::ListLayout(std::shared_ptr<const PrintedList> list, std::shared_ptr<const TextMeasure> measure,
                       double width, double height)
    : list_(std::move(list)), measure_(std::move(measure)), width_(width), height_(height) {
  for (const PrintedGroup& group : list_->groups) {
    if (!group.head.isEmpty()) indent_ = kIndent;
    row_count_ += group.rows.size();
  }
  for (const PrintedColumn& column : list_->columns) headings_.append(column.heading);
  closing_ = list_->closing;
  if (list_->groups.empty() && closing_.isEmpty()) closing_ = {QStringLiteral("There is nothing to list.")};
}

// --- Lines ---

void ListLayout::Add(Block& block, PrintedLine line) const {
  line.top = block.height;
  line.height = measure_->LineHeight(line.style);
  block.height += line.height;
  block.lines.push_back(std::move(line));
}

PrintedLine ListLayout::LineOf(PrintedStyle style, const QString& text, const QString& at_right) const {
  PrintedLine line{style};
  const double right_width = at_right.isEmpty() ? 0.0 : measure_->Width(style, at_right);
  // What is too long for its one line is cut off by what stands at its right.
  if (!text.isEmpty())
    line.pieces.push_back({0.0, width_ - (right_width > 0.0 ? right_width + kColumnGap : 0.0), text});
  if (!at_right.isEmpty()) line.pieces.push_back({width_ - right_width, right_width, at_right, true});
  return line;
}

void ListLayout::AddWrapped(Block& block, PrintedStyle style, const QString& text) const {
  bool goes_on = false;
  for (const QString& part : Wrapped(text, style, width_, *measure_)) {
    PrintedLine line = LineOf(style, part);
    line.goes_on = std::exchange(goes_on, true);
    Add(block, std::move(line));
  }
}

void ListLayout::AddCells(Block& block, PrintedStyle style, const QStringList& cells) const {
  const qsizetype columns = static_cast<qsizetype>(list_->columns.size());
  double shares = 0.0;
  for (const PrintedColumn& column : list_->columns) shares += column.share;
  const double room = width_ - indent_ - kColumnGap * static_cast<double>(columns - 1);
  std::vector<PrintedLine> lines(1, PrintedLine{style});
  double left = indent_;
  for (qsizetype i = 0; i < columns; ++i) {
    const double width = room * list_->columns[static_cast<std::size_t>(i)].share / shares;
    const QString cell = cells.value(i);
    if (!cell.isEmpty()) {
      const QStringList parts = Wrapped(cell, style, width, *measure_);
      if (static_cast<std::size_t>(parts.size()) > lines.size())
        lines.resize(static_cast<std::size_t>(parts.size()), PrintedLine{style});
      for (qsizetype part = 0; part < parts.size(); ++part)
        lines[static_cast<std::size_t>(part)].pieces.push_back({left, width, parts[part]});
    }
    left += width + kColumnGap;
  }
  for (std::size_t i = 0; i < lines.size(); ++i) {
    lines[i].goes_on = i > 0;
    Add(block, std::move(lines[i]));
  }
}

// --- Blocks ---

ListLayout::Block ListLayout::Heading() const {
  Block block;
  const QString date = PrintedDate(list_->date);
  if (pages_.empty()) {
    AddWrapped(block, PrintedStyle::kTitle, list_->title);
    if (!list_->database_title.isEmpty() || !date.isEmpty())
      Add(block, LineOf(PrintedStyle::kUnderTitle, list_->database_title, date));
    for (const QString& line : list_->preface) AddWrapped(block, PrintedStyle::kPreface, line);
  } else {
    Add(block, LineOf(PrintedStyle::kRunningHead, list_->title, date));
  }
  block.height += kHeadGap;
  const bool has_headings = std::any_of(headings_.begin(), headings_.end(),
                                        [](const QString& heading) { return !heading.isEmpty(); });
  if (has_headings) AddCells(block, PrintedStyle::kColumnHead, headings_);
  return block;
}

ListLayout::Block ListLayout::NextBlock(bool begins_page) const {
  Block block;
  if (group_ == list_->groups.size()) {
    block.space_above = kGroupGap;
    for (const QString& line : closing_) AddWrapped(block, PrintedStyle::kClosing, line);
    return block;
  }
  const PrintedGroup& group = list_->groups[group_];
  block.space_above = row_ == 0 ? kGroupGap : kRowGap;
  const bool has_head = !group.head.isEmpty();
  if (has_head && row_ == 0) AddWrapped(block, PrintedStyle::kGroupHead, group.head);
  if (has_head && row_ > 0 && begins_page)
    AddWrapped(block, PrintedStyle::kGroupHead, group.head + QStringLiteral(" (continued)"));
  if (row_ < group.rows.size()) {
    if (!block.lines.empty()) block.height += kRowGap;
    AddCells(block, PrintedStyle::kRow, group.rows[row_]);
  }
  return block;
}

void ListLayout::GoOn() {
  if (group_ == list_->groups.size()) {
    closing_done_ = true;
    return;
  }
  const std::size_t rows = list_->groups[group_].rows.size();
  if (row_ < rows) ++rows_done_;
  if (++row_ >= rows) {
    ++group_;
    row_ = 0;
  }
}

bool ListLayout::IsAtEnd() const {
  return waiting_.empty() && group_ == list_->groups.size() && (closing_done_ || closing_.isEmpty());
}

// --- Pages ---

double ListLayout::Bottom() const {
  return height_ - measure_->LineHeight(PrintedStyle::kFooter) - kHeadGap;
}

void ListLayout::PlaceInParts(PrintedPage& page, double& y, std::vector<PrintedLine> lines) {
  std::size_t placed = 0;
  while (placed < lines.size() && (placed == 0 || y + lines[placed].height <= Bottom())) {
    lines[placed].top = y;
    y += lines[placed].height;
    page.push_back(std::move(lines[placed++]));
  }
  lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(placed));
  waiting_ = std::move(lines);
}

void ListLayout::AddPage() {
  if (finished_) return;
  const Block heading = Heading();
  PrintedPage page = heading.lines;
  const std::size_t heading_lines = page.size();
  double y = heading.height + kBodyGap;
  if (!waiting_.empty()) PlaceInParts(page, y, std::move(waiting_));
  while (waiting_.empty() && !IsAtEnd()) {
    const bool begins_page = page.size() == heading_lines;
    Block block = NextBlock(begins_page);
    const double top = y + (begins_page ? 0.0 : block.space_above);
    if (top + block.height > Bottom()) {
      if (!begins_page) break;
      GoOn();
      PlaceInParts(page, y, std::move(block.lines));
      break;
    }
    for (PrintedLine& line : block.lines) {
      line.top += top;
      page.push_back(std::move(line));
    }
    y = top + block.height;
    GoOn();
  }
  pages_.push_back(std::move(page));
  finished_ = IsAtEnd();
}

void ListLayout::Finish() {
  while (!finished_) AddPage();
}

int ListLayout::Percent() const {
  if (finished_ || row_count_ == 0) return finished_ ? 100 : 0;
  return static_cast<int>(100 * rows_done_ / row_count_);
}

PrintedPage ListLayout::Page(int page) const {
  if (page < 1 || page > PageCount())
    throw SubscriptError(QStringLiteral("The list has no page %1.").arg(page));
  PrintedPage lines = pages_[static_cast<std::size_t>(page - 1)];
  QString number = QStringLiteral("Page %1").arg(page);
  if (finished_) number += QStringLiteral(" of %1").arg(PageCount());
  PrintedLine footer = LineOf(PrintedStyle::kFooter, list_->database_title, number);
  footer.height = measure_->LineHeight(PrintedStyle::kFooter);
  footer.top = height_ - footer.height;
  lines.push_back(std::move(footer));
  return lines;
}

}  // namespace zelmar
