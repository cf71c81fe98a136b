// A bar drawing of known size, a tune to fill it with, and a look at what it recorded.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "notation/bar_drawing.h"
#include "support/scripted_services.h"

namespace zelmar {

// The gap between two staff lines, in twips: every place below is a multiple of it.
inline constexpr double kGap = 100.0;
inline constexpr double kSurfaceWidth = 40.0 * kGap;
inline constexpr double kSurfaceHeight = 12.0 * kGap;
inline constexpr double kClose = 0.01 * kGap;

// Where a line runs, in gaps.
struct LinePlace {
  double from_x;
  double from_y;
  double to_x;
  double to_y;
};

class BarTest : public ::testing::Test {
 protected:
  BarTest() {
    sheet_.SetSurfaceSize(kSurfaceWidth, kSurfaceHeight, kSurfaceHeight);
    // Without a head the first beat stands at two gaps.
    sheet_.SetShowClef(false);
    sheet_.SetShowTitle(false);
    sheet_.SetShowTrack(false);
  }

  // Puts another empty tune in place.
  void StartTune(std::int16_t beats_per_bar = 4, std::uint8_t beat_length = 4,
                 std::int16_t key_signature = 0) {
    tune_ = std::make_shared<Tune>();
    tune_->SetBeatsPerBar(beats_per_bar);
    tune_->SetBeatLength(beat_length);
    tune_->SetKeySignature(key_signature);
  }

  // Notes are to be added in time order.
  std::shared_ptr<Tone> AddNote(int pitch, int beat = 1, int tick = 0, double duration = 1.0,
                                const char16_t* mark = u" ", int bar = 1, int track = 1) {
    auto tone = std::make_shared<Tone>();
    tone->SetAbsRef(++last_ref_);
    tone->SetNumber(static_cast<std::int16_t>(pitch));
    tone->SetBar(static_cast<std::int16_t>(bar));
    tone->SetBeat(static_cast<std::int16_t>(beat));
    tone->SetTick(static_cast<std::int16_t>(tick));
    tone->SetDuration(duration);
    tone->SetEnHarmonic(QString::fromUtf16(mark));
    tone->SetTrack(static_cast<std::uint8_t>(track));
    tune_->Add(tone);
    return tone;
  }

  void Show(std::int16_t bar = 1) {
    sheet_.Attach(tune_);
    large_chords_ = sheet_.DisplayBar(bar, sheet_.SelectedTrack());
  }

  std::vector<Primitive> Of(Role role) const { return In(sheet_.StaffDrawing(), role); }
  std::size_t CountOf(Role role) const { return Of(role).size(); }

  static std::vector<Primitive> In(const Drawing& drawing, Role role) {
    std::vector<Primitive> found;
    for (const Primitive& primitive : drawing.Primitives())
      if (primitive.role == role) found.push_back(primitive);
    return found;
  }

  // x of a beat in gaps, when there is no head.
  double BeatX(double beat) const {
    return 2.0 + (beat - 1.0) / tune_->BeatsPerBar() * (kSurfaceWidth / kGap - 2.0);
  }
  static double StepY(int step) { return 8.5 - step / 2.0; }

  static void ExpectLine(const Primitive& line, const LinePlace& place, double pen_width, InkColour colour) {
    EXPECT_EQ(line.shape, Shape::kLine);
    EXPECT_NEAR(line.from.x(), place.from_x * kGap, kClose);
    EXPECT_NEAR(line.from.y(), place.from_y * kGap, kClose);
    EXPECT_NEAR(line.to.x(), place.to_x * kGap, kClose);
    EXPECT_NEAR(line.to.y(), place.to_y * kGap, kClose);
    EXPECT_EQ(line.pen_width, pen_width);
    EXPECT_EQ(line.colour, colour);
  }

  static void ExpectCircle(const Primitive& circle, double x, double y, double radius, bool filled,
                           InkColour colour = kBlackInk) {
    EXPECT_EQ(circle.shape, Shape::kCircle);
    EXPECT_NEAR(circle.from.x(), x * kGap, kClose);
    EXPECT_NEAR(circle.from.y(), y * kGap, kClose);
    EXPECT_NEAR(circle.radius, radius * kGap, kClose);
    EXPECT_EQ(circle.filled, filled);
    EXPECT_EQ(circle.colour, colour);
  }

  testing_support::ScriptedPlatform platform_;
  BarDrawing sheet_;
  std::shared_ptr<Tune> tune_ = std::make_shared<Tune>();
  int last_ref_ = 0;
  std::vector<ChordPlace> large_chords_;  // of the bar that was shown last
};

}  // namespace zelmar
