#include "notation/bar_drawing.h"

#include <algorithm>
#include <cmath>

#include "model/pulses.h"
#include "notation/accidental_signs.h"
#include "notation/clef_pictures.h"
#include "notation/staff_alignment.h"
#include "platform/numbers.h"

namespace zelmar {

namespace {

constexpr int kSignatureLimit = 7;
constexpr double kGapsOfSurface = 12.0;
constexpr std::uint8_t kCrotchetBeat = 4;

// The size of the digits of the time signature in a control of that height in twips, and what they may be
// narrowed to, where the first note leaves them too little room.
constexpr double kDigitPoints = 70.0;
constexpr double kControlOfThosePoints = 7700.0;
constexpr double kNarrowestDigits = 0.4;

// Steps of the signs of a key signature on a treble staff, in the order in which they stand.
constexpr std::array<int, kSignatureLimit> kSharpSteps = {9, 6, 10, 7, 4, 8, 5};
constexpr std::array<int, kSignatureLimit> kFlatSteps = {5, 8, 4, 7, 3, 6, 2};

std::int16_t PulsesPerBeat(std::uint8_t beat_length) {
  // A tune without a beat length counts crotchets, as the time signature will say.
  return RoundHalfEven<std::int16_t>(PulsesOfValue(beat_length == 0 ? kCrotchetBeat : beat_length));
}

}  // namespace

void BarDrawing::SetSurfaceSize(double width, double height, double control_height) {
  surface_width_ = std::max(width, 0.0);
  surface_height_ = std::max(height, 0.0);
  control_height_ = std::max(control_height, 0.0);
}

void BarDrawing::SetScale() {
  frame_.line_gap = static_cast<float>(surface_height_ / kGapsOfSurface);
  frame_.staff_width = static_cast<float>(surface_width_);
}

void BarDrawing::MeasureHead() {
  SetScale();
  const float g = frame_.line_gap;
  ClefWidth_ = 2.3F * g;
  KeyWidth_ = tune_ ? 5.0F * g * static_cast<float>(std::abs(KeySignature())) / 7.0F : 0.0F;
  TimeWidth_ = 2.5F * g;
  if (!ShowClef())
    frame_.notes_left = 2.0F * g;
  else if (ShowTime())
    frame_.notes_left = ClefWidth_ + KeyWidth_ + TimeWidth_ + g;
  else
    frame_.notes_left = ClefWidth_ + KeyWidth_ + 2.25F * g;
}

void BarDrawing::FindPitch(float, float y, std::int16_t& pitch) const {
  if (frame_.line_gap <= 0.0F) return;
  const double base = std::nearbyint(8.5 * frame_.line_gap);
  const double step = std::nearbyint((base - y) * 2.0 / frame_.line_gap);
  if (!(step >= kLowestStep && step <= kHighestStep)) return;
  if (const auto found = PitchOfStep(ClefKindOf(Clef()), static_cast<int>(step))) pitch = *found;
}

void BarDrawing::Attach(std::shared_ptr<Tune> tune) {
  const std::int16_t bar_count = tune ? tune->BarCount() : std::int16_t{0};
  Attach(std::move(tune), bar_count);
}

void BarDrawing::Attach(std::shared_ptr<Tune> tune, std::int16_t bar_count) {
  tune_ = std::move(tune);
  bar_count_ = bar_count;
  frame_.beats_per_bar = tune_ ? std::max<std::int16_t>(tune_->BeatsPerBar(), 1) : std::int16_t{4};
  frame_.ticks_per_beat = PulsesPerBeat(tune_ ? tune_->BeatLength() : kCrotchetBeat);
  rests_.reset();
  if (!tune_) return;
  const Tracks& tracks = *tune_->Tracks();
  if (tracks.Count() == 0) return;
  std::shared_ptr<Track> chosen = tracks.Item(tracks.Count());
  for (const auto& track : tracks)
    if (track->TrackNumber() == SelectedTrack()) {
      chosen = track;
      break;
    }
  SetSelectedTrack(chosen->TrackNumber());
  rests_ = chosen->Rests();
}

void BarDrawing::ClearStaff() {
  staff_.Clear();
  words_.Clear();
  imgTreble_.visible = false;
  imgBass_.visible = false;
}

void BarDrawing::DrawStaff() {
  const InkColour ink = PenColour();
  const float g = frame_.line_gap;
  staff_.SetPenWidth(kLinePen);
  for (int line = 1; line <= 5; ++line) {
    const float y = static_cast<float>(line + 3) * g;
    staff_.Line(Role::kStaffLine, ink, QPointF(0.0, y), QPointF(frame_.staff_width, y));
  }
  staff_.SetPenWidth(kBarLinePen);
  staff_.Line(Role::kBarLine, ink, QPointF(frame_.staff_width, 4.0 * g),
              QPointF(frame_.staff_width, 8.0 * g));
  staff_.SetPenWidth(kLinePen);
}

void BarDrawing::DrawClef(const QString& clef) {
  const ClefKind kind = ClefKindOf(clef);
  if (kind == ClefKind::kNone) return;
  const double g = frame_.line_gap;
  const bool treble = kind == ClefKind::kTreble;
  imgTreble_.visible = treble;
  imgBass_.visible = !treble;
  Picture& picture = treble ? imgTreble_ : imgBass_;
  picture.place =
      treble ? QRectF(0.0, 2.5 * g, 7.0 * g / 3.0, 7.0 * g) : QRectF(0.0, 4.5 * g, 7.0 * g / 3.0, 3.5 * g);
  staff_.Path(Role::kClef, PenColour(), treble ? TrebleClef(picture.place) : BassClef(picture.place), true);
  DrawKey(clef);
  if (ShowTime()) DrawTime();
}

void BarDrawing::DrawKey(const QString& clef) {
  if (!tune_) return;
  const std::int16_t signature = KeySignature();
  const bool treble = ClefKindOf(clef) == ClefKind::kTreble;
  const float g = frame_.line_gap;
  const float base = (treble ? 8.5F : 9.5F) * g;
  float x = 2.0F * g + static_cast<float>((treble ? imgTreble_ : imgBass_).place.width());
  const int signs = std::min(std::abs(signature), kSignatureLimit);
  for (int i = 0; i < signs; ++i) {
    const int step = (signature > 0 ? kSharpSteps : kFlatSteps)[static_cast<std::size_t>(i)];
    const float y = base - static_cast<float>(step) * g / 2.0F;
    DrawSign(staff_, signature > 0 ? Role::kSharp : Role::kFlat, QPointF(x, y), g);
    x += 0.7F * g;
  }
}

void BarDrawing::DrawTime() {
  if (!tune_) return;
  if (tune_->BeatLength() == 0) tune_->SetBeatLength(kCrotchetBeat);
  const float g = frame_.line_gap;
  const double x = 2.3 * g + 5.0 * g * std::abs(KeySignature()) / 7.0;
  const Lettering digits{QStringLiteral("Ariel"),
                         std::floor(kDigitPoints * control_height_ / kControlOfThosePoints), true,
                         kNarrowestDigits};
  const InkColour ink = PenColour();
  const double room = frame_.notes_left - x;
  // The blank of its sign keeps a number clear of the key signature.
  const auto write = [&](double y, int number) {
    staff_.Text(Role::kTimeSignature, ink, QPointF(x, y), u' ' + QString::number(number), digits, room);
  };
  write(3.5 * g, tune_->BeatsPerBar());
  write(5.5 * g, tune_->BeatLength());
}

std::int16_t BarDrawing::KeySignature() const {
  return tune_ ? tune_->KeySignature() : std::int16_t{0};
}

InkColour BarDrawing::PenColour() const {
  return (ForeColor() & kSystemColourBit) != 0 ? SystemColour(ForeColor()) : ForeColor() & 0xFFFFFF;
}

void BarDrawing::AlignNote(Tone& tone, bool save_durations, bool align_boundaries) const {
  zelmar::AlignNote(tone, {TicksPerBeat(), BeatsPerBar()}, save_durations, align_boundaries);
}

void BarDrawing::RoundBoundary(Tone& tone, std::int16_t grid) const {
  zelmar::RoundBoundary(tone, {TicksPerBeat(), BeatsPerBar()}, grid);
}

InkColour BarDrawing::SystemColour(std::uint32_t) const {
  return kBlackInk;
}

}  // namespace zelmar
