#include "abc/abc_unroll.h"

#include <algorithm>

namespace zelmar {

namespace {

[[noreturn]] void Fail(TextPosition position, const QString& sentence) {
  throw TextError(position, sentence);
}

bool Contains(const std::vector<int>& endings, int pass) {
  return std::ranges::find(endings, pass) != endings.end();
}

class Unroller {
 public:
  explicit Unroller(std::span<const AbcItem> items) : items_(items) {}

  std::vector<AbcPlayed> Run() {
    while (place_ < items_.size()) {
      if (played_.size() >= kMostPlayed)
        Fail(items_[place_].position, QStringLiteral("With its repeats this voice is too long."));
      const AbcItem& item = items_[place_];
      played_.push_back({place_, pass_});
      if (item.kind == AbcItemKind::kBarLine)
        Pass(item);
      else
        ++place_;
    }
    return played_;
  }

 private:
  // Goes on from the bar line at place_.
  void Pass(const AbcItem& item) {
    const AbcBarLine& line = item.bar_line;
    const bool enters_ending = Contains(line.endings, pass_);
    // In the pass for which a line opens an ending, its repeat sign belongs to the ending before.
    if (line.repeats_end > 0 && !(enters_ending && came_by_jump_)) {
      if (PlaysAgain(line)) {
        ++pass_;
        place_ = passage_start_;
        in_ending_ = came_by_jump_ = false;
        return;
      }
      if (!line.endings.empty())
        Fail(item.position, QStringLiteral("The last pass must end in the ending that is written last."));
      StartPassage();
    } else if (line.repeat_start || (line.double_bar && line.endings.empty() && in_ending_)) {
      StartPassage();
    }
    came_by_jump_ = false;
    if (line.endings.empty()) {
      ++place_;
      return;
    }
    in_ending_ = true;
    if (enters_ending) {
      ++place_;
      return;
    }
    place_ = FindEnding(place_ + 1, pass_);
    if (place_ == items_.size())
      Fail(item.position, QStringLiteral("There is no ending for pass %1.").arg(pass_));
    came_by_jump_ = true;
  }

  void StartPassage() {
    passage_start_ = place_ + 1;
    pass_ = 1;
    in_ending_ = false;
  }

  bool PlaysAgain(const AbcBarLine& line) const {
    if (!in_ending_) return pass_ <= line.repeats_end;
    return FindEnding(passage_start_, pass_ + 1) < items_.size();
  }

  // The next line of this passage that opens an ending for `pass`; the count of items when there is none.
  std::size_t FindEnding(std::size_t from, int pass) const {
    for (std::size_t i = from; i < items_.size(); ++i) {
      if (items_[i].kind != AbcItemKind::kBarLine) continue;
      const AbcBarLine& line = items_[i].bar_line;
      if (Contains(line.endings, pass)) return i;
      if (line.repeat_start) break;
    }
    return items_.size();
  }

  std::span<const AbcItem> items_;
  std::vector<AbcPlayed> played_;
  std::size_t place_ = 0;
  std::size_t passage_start_ = 0;
  int pass_ = 1;
  bool in_ending_ = false;
  bool came_by_jump_ = false;
};

}  // namespace

std::vector<AbcPlayed> UnrollRepeats(std::span<const AbcItem> items) {
  return Unroller(items).Run();
}

}  // namespace zelmar
