#include "model/event_order.h"

#include <algorithm>
#include <array>
#include <bit>
#include <map>
#include <numeric>
#include <set>
#include <tuple>

#include "model/note_ends.h"
#include "platform/memory.h"
#include "platform/numbers.h"

namespace zelmar {

namespace {

// The sort key counts 240 to a beat whatever the beat length, so it orders and is no time.
constexpr std::int32_t kSortKeyPerBeat = 240;

enum Rank { kEnd, kOther, kNote };
constexpr int kRankBits = 2;

Rank RankOf(EventType type) {
  return type == MUSIC_NOTE_OFF ? kEnd : type == MUSIC_NOTE ? kNote : kOther;
}

std::int64_t OrderOf(const Tone& tone, std::int16_t beats_per_bar) {
  const auto per_bar = CheckedMultiply<std::int32_t>(kSortKeyPerBeat, beats_per_bar);
  const auto time = CheckedAdd(CheckedMultiply<std::int32_t>(tone.Bar(), per_bar),
                               tone.Beat() * kSortKeyPerBeat + tone.Tick());
  return (std::int64_t{time} << kRankBits) + RankOf(tone.EventType());
}

std::int64_t TimeOf(std::int64_t order) {
  return order >> kRankBits;
}

bool HasRank(std::int64_t order, Rank rank) {
  return (order & ((1 << kRankBits) - 1)) == rank;
}

// What sounds as one: a second note takes the place of the first, and an end ends both.
using Voice = std::tuple<int, int>;

Voice VoiceOf(const Tone& tone) {
  return {tone.Channel(), tone.Number()};
}

constexpr int kPositionBits = 30;

// The positions, from 1, of `orders` in ascending order, those of equal ones as they stand. Digit by digit
// from the lowest, so that no order of the events takes longer than another.
std::vector<std::int32_t> SortedPositions(const std::vector<std::int64_t>& orders) {
  constexpr int kDigitBits = 11;
  const auto [lowest, highest] = std::minmax_element(orders.begin(), orders.end());
  const auto used_bits = static_cast<int>(std::bit_width(static_cast<std::uint64_t>(*highest - *lowest)));
  std::vector<std::uint64_t> items(orders.size()), sorted(orders.size());
  for (std::size_t i = 0; i < orders.size(); ++i)
    items[i] = (static_cast<std::uint64_t>(orders[i] - *lowest) << kPositionBits) + i + 1;
  for (int shift = kPositionBits; shift < kPositionBits + used_bits; shift += kDigitBits) {
    const auto digit = [shift](std::uint64_t item) { return (item >> shift) & ((1U << kDigitBits) - 1U); };
    std::array<std::size_t, std::size_t{1} << kDigitBits> places{};
    for (const std::uint64_t item : items) ++places[digit(item)];
    std::exclusive_scan(places.begin(), places.end(), places.begin(), std::size_t{0});
    for (const std::uint64_t item : items) sorted[places[digit(item)]++] = item;
    items.swap(sorted);
  }
  std::vector<std::int32_t> positions(orders.size());
  std::transform(items.begin(), items.end(), positions.begin(), [](std::uint64_t item) {
    return static_cast<std::int32_t>(item & ((std::uint64_t{1} << kPositionBits) - 1U));
  });
  return positions;
}

}  // namespace

qsizetype PlaceInOrder(const Tones& tones, const Tone& tone, std::int16_t beats_per_bar) {
  const std::int64_t order = OrderOf(tone, beats_per_bar);
  qsizetype low = 1, high = tones.Count() + 1;
  while (low < high) {
    const qsizetype middle = (low + high) / 2;
    if (TimeOf(OrderOf(*tones.Item(middle), beats_per_bar)) < TimeOf(order))
      low = middle + 1;
    else
      high = middle;
  }
  // An end of a note without length stands among the notes of its time, so these are walked through.
  while (low <= tones.Count() && OrderOf(*tones.Item(low), beats_per_bar) <= order) ++low;
  return low;
}

std::shared_ptr<Tones> InOrder(const std::shared_ptr<Tones>& tones, std::int16_t beats_per_bar) {
  EventSort sort(tones, beats_per_bar);
  sort.Read(tones->Count());
  sort.Sort();
  return sort.Sorted();
}

EventSort::EventSort(std::shared_ptr<Tones> tones, std::int16_t beats_per_bar)
    : tones_(std::move(tones)),
      beats_per_bar_(beats_per_bar),
      revision_(tones_->Revision()),
      count_(Narrow<std::int32_t>(tones_->Count())) {
  if (count_ >= 1 << kPositionBits) throw OverflowError();
  orders_.reserve(static_cast<std::size_t>(count_));
}

void EventSort::Read(qsizetype events) {
  for (; events > 0 && !IsStale(); --events) {
    const auto position = static_cast<std::int32_t>(orders_.size() + 1);
    if (position > count_) return;
    const Tone& tone = ToneAt(position);
    orders_.push_back(OrderOf(tone, beats_per_bar_));
    lengthless_ = lengthless_ || (tone.EventType() == MUSIC_NOTE && HasNoLength(tone));
  }
}

void EventSort::Sort() {
  if (IsStale() || orders_.empty()) return;
  positions_ = SortedPositions(orders_);
  if (!lengthless_) return;
  for (auto first = positions_.begin(); first != positions_.end();) {
    const auto last =
        std::find_if(first, positions_.end(), [this, time = TimeOf(OrderAt(*first))](std::int32_t position) {
          return TimeOf(OrderAt(position)) != time;
        });
    PutEndsBehind({first, last});
    first = last;
  }
}

void EventSort::PutEndsBehind(std::span<std::int32_t> level) const {
  const auto is = [this](Rank rank) {
    return [this, rank](std::int32_t position) { return HasRank(OrderAt(position), rank); };
  };
  const auto first_other = std::partition_point(level.begin(), level.end(), is(kEnd));
  const auto first_note = std::partition_point(first_other, level.end(), is(kOther));
  const std::vector<std::int32_t> ends(level.begin(), first_other), others(first_other, first_note),
      notes(first_note, level.end());

  // The ends of a track, channel and pitch are alike; those of notes that began before stand in front.
  std::map<std::tuple<Voice, int>, std::vector<std::size_t>> free_ends;
  for (std::size_t i = 0; i < ends.size(); ++i) {
    const Tone& end = ToneAt(ends[i]);
    free_ends[{VoiceOf(end), end.Track()}].push_back(i);
  }
  std::set<Voice> lasting;
  std::vector<std::int32_t> own_end(notes.size(), 0);
  std::vector<bool> taken(ends.size(), false), without_length(notes.size(), false);
  for (std::size_t i = notes.size(); i-- > 0;) {
    const Tone& note = ToneAt(notes[i]);
    without_length[i] = HasNoLength(note);
    if (!without_length[i]) {
      lasting.insert(VoiceOf(note));
      continue;
    }
    auto& candidates = free_ends[{VoiceOf(note), note.Track()}];
    if (candidates.empty()) continue;
    own_end[i] = ends[candidates.back()];
    taken[candidates.back()] = true;
    candidates.pop_back();
  }

  auto place = level.begin();
  for (std::size_t i = 0; i < ends.size(); ++i)
    if (!taken[i]) *place++ = ends[i];
  place = std::copy(others.begin(), others.end(), place);
  for (const bool in_front : {true, false}) {
    for (std::size_t i = 0; i < notes.size(); ++i) {
      if (in_front != (without_length[i] && lasting.contains(VoiceOf(ToneAt(notes[i]))))) continue;
      *place++ = notes[i];
      if (own_end[i] != 0) *place++ = own_end[i];
    }
  }
}

std::shared_ptr<Tones> EventSort::Sorted() {
  if (IsStale()) return nullptr;
  auto sorted = std::make_shared<Tones>();
  sorted->Reserve(count_);
  const std::size_t count = positions_.size();
  for (std::size_t i = 0; i < count; ++i) {
    // The tones lie all over the memory by now; what is needed soon is asked for already.
    constexpr std::size_t kAhead = 12;
    if (i + 2 * kAhead < count) PrefetchForReading(&tones_->Item(positions_[i + 2 * kAhead]));
    if (i + kAhead < count) PrefetchForReading(&ToneAt(positions_[i + kAhead]));
    sorted->Add(tones_->Item(positions_[i]));
  }
  return sorted;
}

bool EventSort::StillHolds(const std::shared_ptr<Tones>& tones, std::int16_t beats_per_bar) const {
  if (tones != tones_ || beats_per_bar != beats_per_bar_ || IsStale()) return false;
  for (std::int32_t position = 1; position <= count_; ++position)
    if (OrderOf(ToneAt(position), beats_per_bar_) != OrderAt(position)) return false;
  return true;
}

}  // namespace zelmar
