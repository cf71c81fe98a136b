// Rests: composite durations broken up into the written ones, and their shapes.
#include <algorithm>
#include <vector>

#include "model/pulses.h"
#include "notation/bar_drawing.h"
#include "notation/rest_shapes.h"

namespace zelmar {

namespace {

// The durations that are written, in crotchets, each with its parts from the longest down.
struct WrittenRest {
  double duration;
  std::array<double, 3> parts;
};

constexpr WrittenRest kWrittenRests[] = {
    {3.5, {2.0, 1.0, 0.5}}, {3.25, {2.0, 1.0, 0.25}}, {3.0, {2.0, 1.0}}, {2.75, {2.0, 0.5, 0.25}},
    {2.5, {2.0, 0.5}},      {2.25, {2.0, 0.25}},      {2.0, {2.0}},      {1.75, {1.0, 0.5, 0.25}},
    {1.5, {1.0, 0.5}},      {1.25, {1.0, 0.25}},      {1.0, {1.0}},      {0.75, {0.5, 0.25}},
    {0.5, {0.5}},           {0.25, {0.25}},
};

Role RoleOf(double duration) {
  if (duration == 2.0) return Role::kMinimRest;
  if (duration == 1.0) return Role::kCrotchetRest;
  if (duration == 0.5) return Role::kQuaverRest;
  return Role::kSemiquaverRest;
}

// The parts in the order in which they are drawn; empty for a duration that is not written.
std::vector<double> PartsOf(const Rest& rest, bool compound) {
  const auto* const found =
      std::find_if(std::begin(kWrittenRests), std::end(kWrittenRests),
                   [&rest](const WrittenRest& written) { return written.duration == rest.Duration(); });
  if (found == std::end(kWrittenRests)) return {};
  std::vector<double> parts;
  for (const double part : found->parts)
    if (part > 0.0) parts.push_back(part);
  // Off the beat the short rests lead up to it.
  if (rest.Tick() != 0) {
    std::reverse(parts.begin(), parts.end());
    return parts;
  }
  // A crotchet on a weak beat leads up to the strong one, where the minim stands.
  if (!compound && rest.Beat() % 2 == 0 && parts.size() > 1 && parts[0] == 2.0 && parts[1] == 1.0)
    std::swap(parts[0], parts[1]);
  return parts;
}

}  // namespace

void BarDrawing::DisplayRests(std::int16_t bar, std::int16_t) {
  MeasureHead();
  if (!rests_) return;
  const std::shared_ptr<Rests> rests = rests_;
  qsizetype low = 1;
  qsizetype high = rests->Count() + 1;
  while (low < high) {
    const qsizetype middle = (low + high) / 2;
    if (rests->Item(middle)->Bar() < bar)
      low = middle + 1;
    else
      high = middle;
  }
  for (qsizetype i = low; i <= rests->Count() && rests->Item(i)->Bar() == bar; ++i) DrawRest(*rests->Item(i));
  ConfineTimeSignature();
}

// Whether the rest is as long as its bar and has no parts to be written with.
bool BarDrawing::FillsBar(const Rest& rest) const {
  if (rest.Duration() >= beats_per_bar_) return true;
  const double beats = rest.Duration() * kPulsesPerCrotchet / ticks_per_beat_;
  return beats >= beats_per_bar_ && PartsOf(rest, CompoundTime()).empty();
}

void BarDrawing::DrawRest(const Rest& rest) {
  staff_.SetPenWidth(3);
  const float x = XOf(rest.Beat(), rest.Tick());
  const InkColour ink = PenColour();
  const auto draw = [&](Role role, double at) {
    staff_.Path(role, ink, RestShape(role, QPointF(at, YOfStep(5)), LineGap_), true);
  };
  if (FillsBar(rest)) {
    draw(Role::kWholeBarRest, x);
    return;
  }
  double done = 0.0;  // crotchets
  for (const double part : PartsOf(rest, CompoundTime())) {
    draw(RoleOf(part), x + done * kPulsesPerCrotchet / ticks_per_beat_ * BeatWidth());
    done += part;
  }
}

}  // namespace zelmar
