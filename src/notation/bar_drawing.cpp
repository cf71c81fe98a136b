#include "notation/bar_drawing.h"

#include <algorithm>
#include <cmath>

#include "notation/clef_pictures.h"
#include "platform/numbers.h"

namespace zelmar {

namespace {

constexpr int kSignatureLimit = 7;
constexpr double kPulsesOfSemibreve = 480.0;

// What the digits of the time signature may be narrowed to, where the first note leaves them too little room.
constexpr double kNarrowestDigits = 0.4;

// Steps of the signs of a key signature on a treble staff, in the order in which they stand.
constexpr std::array<int, kSignatureLimit> kSharpSteps = {9, 6, 10, 7, 4, 8, 5};
constexpr std::array<int, kSignatureLimit> kFlatSteps = {5, 8, 4, 7, 3, 6, 2};

std::int16_t PulsesPerBeat(std::uint8_t beat_length) {
  // A tune without a beat length counts crotchets, as the time signature will say.
  const int length = beat_length == 0 ? 4 : beat_length;
  return RoundHalfEven<std::int16_t>(kPulsesOfSemibreve / length);
}

}  // namespace

BarDrawing::BarDrawing() : ChordStore_(std::make_shared<Tune>()) {}
BarDrawing::~BarDrawing() = default;

void BarDrawing::SetSurfaceSize(double width, double height, double control_height) {
  surface_width_ = std::max(width, 0.0);
  surface_height_ = std::max(height, 0.0);
  control_height_ = std::max(control_height, 0.0);
}

void BarDrawing::SetScale() {
  LineGap_ = static_cast<float>(surface_height_ / 12.0);
  StaffWidth_ = static_cast<float>(surface_width_);
}

void BarDrawing::MeasureHead() {
  SetScale();
  const float g = LineGap_;
  ClefWidth_ = 2.3F * g;
  KeyWidth_ = tune_ ? 5.0F * g * static_cast<float>(std::abs(KeySignature())) / 7.0F : 0.0F;
  TimeWidth_ = 2.5F * g;
  if (!ShowClef())
    NotesLeft_ = 2.0F * g;
  else if (ShowTime())
    NotesLeft_ = ClefWidth_ + KeyWidth_ + TimeWidth_ + g;
  else
    NotesLeft_ = ClefWidth_ + KeyWidth_ + 2.25F * g;
}

float BarDrawing::XOf(std::int16_t beat, std::int16_t tick) const {
  const float position =
      static_cast<float>(beat) + static_cast<float>(tick) / static_cast<float>(ticks_per_beat_);
  return (position - 1.0F) / static_cast<float>(beats_per_bar_) * (StaffWidth_ - NotesLeft_) + NotesLeft_;
}

float BarDrawing::BeatWidth() const {
  return (StaffWidth_ - NotesLeft_) / static_cast<float>(beats_per_bar_);
}

void BarDrawing::FindPitch(float, float y, std::int16_t& pitch) const {
  if (LineGap_ <= 0.0F) return;
  const double base = std::nearbyint(8.5 * LineGap_);
  const double step = std::nearbyint((base - y) * 2.0 / LineGap_);
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
  beats_per_bar_ = tune_ ? std::max<std::int16_t>(tune_->BeatsPerBar(), 1) : std::int16_t{4};
  ticks_per_beat_ = PulsesPerBeat(tune_ ? tune_->BeatLength() : std::uint8_t{4});
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
  const float g = LineGap_;
  staff_.SetPenWidth(1);
  for (int line = 1; line <= 5; ++line) {
    const float y = static_cast<float>(line + 3) * g;
    staff_.Line(Role::kStaffLine, ink, QPointF(0.0, y), QPointF(StaffWidth_, y));
  }
  staff_.SetPenWidth(4);
  staff_.Line(Role::kBarLine, ink, QPointF(StaffWidth_, 4.0 * g), QPointF(StaffWidth_, 8.0 * g));
  staff_.SetPenWidth(1);
}

void BarDrawing::DrawClef(const QString& clef) {
  const ClefKind kind = ClefKindOf(clef);
  if (kind == ClefKind::kNone) return;
  const double g = LineGap_;
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
  const float g = LineGap_;
  const float base = (treble ? 8.5F : 9.5F) * g;
  PenX_ = 2.0F * g + static_cast<float>((treble ? imgTreble_ : imgBass_).place.width());
  const int signs = std::min(std::abs(signature), kSignatureLimit);
  const Tone scratch;
  for (int i = 0; i < signs; ++i) {
    const int step = (signature > 0 ? kSharpSteps : kFlatSteps)[static_cast<std::size_t>(i)];
    PenY_ = base - static_cast<float>(step) * g / 2.0F;
    if (signature > 0)
      DrawSharp(scratch, true);
    else
      DrawFlat(scratch, true);
    PenX_ += 0.7F * g;
  }
}

void BarDrawing::DrawTime() {
  if (!tune_) return;
  if (tune_->BeatLength() == 0) tune_->SetBeatLength(4);
  const float g = LineGap_;
  const double x = 2.3 * g + 5.0 * g * std::abs(KeySignature()) / 7.0;
  const Lettering digits{QStringLiteral("Ariel"), std::floor(70.0 * control_height_ / 7700.0), true,
                         kNarrowestDigits};
  const InkColour ink = PenColour();
  const double room = NotesLeft_ - x;
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

InkColour BarDrawing::SystemColour(std::uint32_t) const {
  return kBlackInk;
}

}  // namespace zelmar
