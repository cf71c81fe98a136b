#include "midi/play_cursor.h"

#include <algorithm>
#include <unordered_map>

#include "platform/numbers.h"

namespace zelmar {

PlayCursor::Likeness PlayCursor::LikenessOf(const Tone& tone, const Time& time) {
  return {time, tone.Number(), tone.EventType(), tone.Track(), tone.Channel()};
}

std::size_t PlayCursor::LikenessHash::operator()(const Likeness& event) const {
  constexpr std::size_t kFactor = 1000003;
  std::size_t hash = 0;
  for (const int part : {int{event.time.bar}, int{event.time.beat}, int{event.time.tick}, int{event.number},
                         int{event.type}, int{event.track}, int{event.channel}})
    hash = hash * kFactor + static_cast<std::size_t>(part);
  return hash;
}

void PlayCursor::Start(const std::shared_ptr<Tones>& tones, std::int16_t start_bar) {
  Forget();
  tones_ = tones;
  revision_ = tones->Revision();
  start_bar_ = start_bar;
  GoToStart();
  event_ = tones->Item(place_);
  dealt_.reserve(static_cast<std::size_t>(tones->Count()));
}

void PlayCursor::Follow(const std::shared_ptr<Tones>& tones) {
  if (!IsOf(tones)) FindAgain(tones);
}

void PlayCursor::Deal() {
  dealt_.push_back({event_, TimeOf(*event_)});
}

void PlayCursor::Advance(const std::shared_ptr<Tones>& tones) {
  if (!IsOf(tones)) {
    FindAgain(tones);
    return;
  }
  ++place_;
  Settle();
}

void PlayCursor::Forget() {
  dealt_.clear();
  dealt_.shrink_to_fit();
  is_dealt_.clear();
  tones_ = std::make_shared<Tones>();
}

void PlayCursor::GoToStart() {
  const qsizetype count = tones_->Count();
  qsizetype place = 1;
  if (start_bar_ != 1)
    while (place <= count && tones_->Item(place)->Bar() < start_bar_) ++place;
  if (start_bar_ == 1 || place <= count) place_ = Narrow<std::int32_t>(place);
}

// Passes over what has been dealt with.
void PlayCursor::Settle() {
  while (place_ <= std::ssize(is_dealt_) && is_dealt_[static_cast<std::size_t>(place_ - 1)]) ++place_;
  if (!IsAtEnd()) event_ = tones_->Item(place_);
}

void PlayCursor::FindAgain(const std::shared_ptr<Tones>& tones) {
  tones_ = tones;
  revision_ = tones->Revision();
  is_dealt_.clear();
  if (dealt_.empty()) {
    GoToStart();
  } else {
    const std::int32_t last = FindDealt();
    place_ = last > 0 ? last + 1 : FirstPlaceFrom(dealt_.back().time);
  }
  Settle();
}

std::int32_t PlayCursor::FindDealt() {
  const auto count = static_cast<std::size_t>(tones_->Count());
  is_dealt_.assign(count, false);
  dealt_.reserve(dealt_.size() + count);
  std::vector<bool> found(dealt_.size(), false);
  std::size_t latest = 0;  // number of the dealing, from 1
  std::int32_t place = 0, place_of_latest = 0;
  const auto settle = [&](std::size_t dealing) {
    found[dealing] = true;
    is_dealt_[static_cast<std::size_t>(place - 1)] = true;
    if (dealing < latest) return;
    latest = dealing + 1;
    place_of_latest = place;
  };

  // Those that are still there.
  std::unordered_map<const Tone*, std::size_t> by_tone;
  by_tone.reserve(dealt_.size());
  for (std::size_t i = 0; i < dealt_.size(); ++i) by_tone[dealt_[i].tone.get()] = i;
  tones_->ForEach([&](const Tone& tone) {
    ++place;
    const auto dealing = by_tone.find(&tone);
    if (dealing != by_tone.end() && dealt_[dealing->second].time == TimeOf(tone)) settle(dealing->second);
  });

  // Those in whose place stands one that is like them.
  std::unordered_multimap<Likeness, std::size_t, LikenessHash> gone;
  for (std::size_t i = 0; i < dealt_.size(); ++i)
    if (!found[i]) gone.emplace(LikenessOf(*dealt_[i].tone, dealt_[i].time), i);
  if (gone.empty()) return place_of_latest;
  place = 0;
  tones_->ForEach([&](const Tone& tone) {
    if (is_dealt_[static_cast<std::size_t>(place++)]) return;
    const auto like = gone.find(LikenessOf(tone, TimeOf(tone)));
    if (like == gone.end()) return;
    settle(like->second);
    dealt_[like->second].tone = tones_->Item(place);
    gone.erase(like);
  });
  return place_of_latest;
}

std::int32_t PlayCursor::FirstPlaceFrom(const Time& time) const {
  std::int32_t place = 1;
  while (place <= tones_->Count() && TimeOf(*tones_->Item(place)) < time) ++place;
  return place;
}

}  // namespace zelmar
