#include "abc/abc_parts.h"

#include <algorithm>
#include <map>
#include <span>

namespace zelmar {

namespace {

constexpr std::size_t kMostParts = 1000;
constexpr int kDeepestBrackets = 20;

[[noreturn]] void Fail(TextPosition position, const QString& sentence) {
  throw TextError(position, sentence);
}

class OrderReader {
 public:
  explicit OrderReader(AbcCursor& cursor) : cursor_(cursor) {}

  AbcPlayOrder Read() {
    AbcPlayOrder order = ReadGroup(0);
    if (!cursor_.AtEnd()) FailForm(cursor_.Position());
    return order;
  }

 private:
  // Up to the closing bracket or the end.
  AbcPlayOrder ReadGroup(int depth) {
    AbcPlayOrder order;
    while (true) {
      while (cursor_.Peek() == u'.' || cursor_.Peek().isSpace()) cursor_.Take();
      if (cursor_.AtEnd() || cursor_.Peek() == u')') return order;
      const TextPosition position = cursor_.Position();
      const AbcPlayOrder step = ReadStep(depth);
      Append(order, step, ReadTimes(), position);
    }
  }

  AbcPlayOrder ReadStep(int depth) {
    const TextPosition position = cursor_.Position();
    const QChar sign = cursor_.Take();
    if (sign >= u'A' && sign <= u'Z') return {{sign, position}};
    if (sign != u'(' || depth == kDeepestBrackets) FailForm(position);
    AbcPlayOrder group = ReadGroup(depth + 1);
    if (!cursor_.TakeIf(u')')) Fail(position, QStringLiteral("This bracket is never closed."));
    return group;
  }

  int ReadTimes() {
    const TextPosition position = cursor_.Position();
    if (!cursor_.AtDigit()) return 1;
    const int times = cursor_.TakeNumber();
    if (times == 0) Fail(position, QStringLiteral("A part cannot be played 0 times."));
    return times;
  }

  static void Append(AbcPlayOrder& order, const AbcPlayOrder& step, int times, TextPosition position) {
    for (int i = 0; i < times && !step.empty(); ++i) {
      if (order.size() + step.size() > kMostParts)
        Fail(position, QStringLiteral("An order has at most %1 parts.").arg(kMostParts));
      order.insert(order.end(), step.begin(), step.end());
    }
  }

  [[noreturn]] static void FailForm(TextPosition position) {
    Fail(position, QStringLiteral("The order of the parts reads like AABB, A2.B2 or (AB)3C."));
  }

  AbcCursor& cursor_;
};

// A stretch of the voice between two labels, as it is played once.
struct Passage {
  std::vector<AbcPlayed> played;
  int passes = 1;  // through its repeats
  int times = 0;   // that it has been played
};

Passage PassageOf(const AbcVoice& voice, std::size_t first, std::size_t last) {
  Passage passage;
  passage.played = UnrollRepeats(std::span(voice.items).subspan(first, last - first));
  for (AbcPlayed& played : passage.played) {
    played.item += first;
    passage.passes = std::max(passage.passes, played.pass);
  }
  return passage;
}

class Player {
 public:
  explicit Player(const AbcVoice& voice) : voice_(voice) {
    std::size_t label = NextLabel(0);
    Play(PassageOf(voice, 0, label), voice.position);
    while (label < voice.items.size()) {
      const std::size_t next = NextLabel(label + 1);
      const AbcItem& item = voice.items[label];
      if (item.value == 0)
        Fail(item.position, QStringLiteral("A part that an order can name is one capital letter."));
      if (!parts_.try_emplace(QChar(item.value), PassageOf(voice, label, next)).second)
        Fail(item.position, QStringLiteral("Part %1 begins twice.").arg(QChar(item.value)));
      label = next;
    }
  }

  void Play(const AbcPart& part) {
    const auto found = parts_.find(part.name);
    if (found == parts_.end())
      Fail(part.position,
           QStringLiteral("There is no part %1 in voice %2.").arg(part.name).arg(voice_.track.id));
    Passage& passage = found->second;
    Play(passage, part.position);
    ++passage.times;
  }

  std::vector<AbcPlayed> Played() { return std::move(played_); }

 private:
  std::size_t NextLabel(std::size_t from) const {
    while (from < voice_.items.size() && voice_.items[from].kind != AbcItemKind::kPart) ++from;
    return from;
  }

  void Play(const Passage& passage, TextPosition position) {
    if (played_.size() + passage.played.size() > kMostPlayed)
      Fail(position, QStringLiteral("With its parts this voice is too long."));
    // Verses go on where the last time ended.
    for (AbcPlayed played : passage.played) {
      played.pass += passage.times * passage.passes;
      played_.push_back(played);
    }
  }

  const AbcVoice& voice_;
  std::map<QChar, Passage> parts_;
  std::vector<AbcPlayed> played_;
};

}  // namespace

AbcPlayOrder ReadPlayOrder(AbcCursor& cursor) {
  return OrderReader(cursor).Read();
}

std::vector<AbcPlayed> PlayInOrder(const AbcVoice& voice, const AbcPlayOrder& order) {
  if (order.empty()) return UnrollRepeats(voice.items);
  Player player(voice);
  for (const AbcPart& part : order) player.Play(part);
  return player.Played();
}

}  // namespace zelmar
