#include "notation/written_rests.h"

#include <algorithm>
#include <array>
#include <vector>

#include "model/pulses.h"
#include "notation/rest_shapes.h"
#include "notation/staff_steps.h"

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

// Whether the rest is as long as its bar and has no parts to be written with.
bool FillsBar(const Rest& rest, const BarFrame& frame, const std::vector<double>& parts) {
  if (rest.Duration() >= frame.beats_per_bar) return true;
  const double beats = rest.Duration() * kPulsesPerCrotchet / frame.ticks_per_beat;
  return beats >= frame.beats_per_bar && parts.empty();
}

}  // namespace

void DrawWrittenRest(Drawing& staff, const BarFrame& frame, InkColour ink, const Rest& rest) {
  staff.SetPenWidth(kNotePen);
  const float x = frame.XOf(rest.Beat(), rest.Tick());
  const auto draw = [&](Role role, double at) {
    staff.Path(role, ink, RestShape(role, QPointF(at, frame.YOfStep(kMiddleStep)), frame.line_gap), true);
  };
  const std::vector<double> parts = PartsOf(rest, frame.CompoundTime());
  if (FillsBar(rest, frame, parts)) {
    draw(Role::kWholeBarRest, x);
    return;
  }
  double done = 0.0;  // crotchets
  for (const double part : parts) {
    draw(RoleOf(part), x + done * kPulsesPerCrotchet / frame.ticks_per_beat * frame.BeatWidth());
    done += part;
  }
}

}  // namespace zelmar
