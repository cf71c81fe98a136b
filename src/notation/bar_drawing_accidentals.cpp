// Sharps, flats and naturals: when one is written, and its strokes.
#include <algorithm>

#include "notation/bar_drawing.h"

namespace zelmar {

namespace {

constexpr int kOctave4 = 60;

struct NaturalRule {
  int pitch_class;  // in octave 4
  int above;        // a natural is due when the key signature is above this
  int below;        // or below this
};

constexpr NaturalRule kNaturalRules[] = {{65, 0, -6}, {60, 1, -5}, {67, 2, -4}, {62, 3, -3},
                                         {69, 4, -2}, {64, 5, -1}, {71, 6, 0}};

struct SignRule {
  int pitch_class;  // in octave 4
  int limit;        // the sign is in the key when the key signature lies beyond this
};

constexpr SignRule kSharpRules[] = {{60, 6}, {61, 1}, {63, 3}, {65, 5}, {66, 0}, {68, 2}, {70, 4}};
constexpr SignRule kFlatRules[] = {{70, 0}, {63, -1}, {68, -2}, {61, -3}, {66, -4}, {71, -5}, {64, -6}};

// Pitches that bear a sign without being marked.
constexpr int kTrebleSharps[] = {61, 66, 73, 78, 85};
constexpr int kTrebleFlats[] = {56, 58, 63, 68, 70, 75, 80, 82};
constexpr int kBassSharps[] = {37, 42, 49, 54, 61};
constexpr int kBassFlats[] = {34, 39, 44, 46, 51, 56, 58};

// The strokes in line gaps from the note.
struct Stroke {
  double pen_width;
  double from_x;
  double from_y;
  double to_x;
  double to_y;
};

constexpr Stroke kNaturalStrokes[] = {
    {2, -1.0, -0.8, -1.0, 1.1},
    {2, -1.5, -1.6, -1.5, 0.3},
    {4, -1.5, 0.3, -1.0, 0.1},
    {4, -1.5, -0.6, -1.0, -0.8},
};

constexpr Stroke kSharpStrokes[] = {
    {2, -1.0, -1.0, -1.0, 0.8},
    {2, -1.5, -0.8, -1.5, 1.0},
    {3, -1.7, -0.25, -0.8, -0.5},
    {3, -1.7, 0.5, -0.8, 0.25},
};

// An upright, and a bowl that swells to the right and comes back to its foot. It is narrow, so that the last
// flat of a key stands clear of the time signature.
constexpr Stroke kFlatStrokes[] = {
    {2, -1.2, -1.6, -1.2, 0.5},        {1.5, -1.2, -0.2, -1.05, -0.4},   {1.5, -1.05, -0.4, -0.92, -0.36},
    {1.5, -0.92, -0.36, -0.88, -0.12}, {1.5, -0.88, -0.12, -0.97, 0.16}, {1.5, -0.97, 0.16, -1.2, 0.5},
};

template <std::size_t Count>
bool Holds(const int (&list)[Count], int pitch) {
  return std::find(std::begin(list), std::end(list), pitch) != std::end(list);
}

// The pitch class as a note of octave 4: 60 to 71.
int ClassOf(const Tone& tone) {
  return kOctave4 + (tone.Number() + 12) % 12;
}

bool IsWhite(int pitch_class) {
  return std::any_of(std::begin(kNaturalRules), std::end(kNaturalRules),
                     [pitch_class](const NaturalRule& rule) { return rule.pitch_class == pitch_class; });
}

bool NaturalIsDue(int pitch_class, int signature) {
  for (const NaturalRule& rule : kNaturalRules)
    if (rule.pitch_class == pitch_class) return signature > rule.above || signature < rule.below;
  return false;
}

bool SharpIsInKey(int pitch_class, int signature) {
  for (const SignRule& rule : kSharpRules)
    if (rule.pitch_class == pitch_class) return signature > rule.limit;
  return false;
}

bool FlatIsInKey(int pitch_class, int signature) {
  for (const SignRule& rule : kFlatRules)
    if (rule.pitch_class == pitch_class) return signature < rule.limit;
  return false;
}

enum class Sign { kNone, kSharp, kFlat, kNatural };

// The sign that the note bears by its spelling, its pitch and the key, whatever the bar has shown before.
Sign OwnSign(const Tone& tone, ClefKind clef, int signature) {
  const int pitch = tone.Number();
  const int pitch_class = ClassOf(tone);
  const bool bass = clef == ClefKind::kBass;
  Sign sign = Sign::kNone;
  if (tone.EnHarmonic() == u"#")
    sign = Sign::kSharp;
  else if (tone.EnHarmonic() == u"b")
    sign = Sign::kFlat;
  else if (bass ? Holds(kBassSharps, pitch) : Holds(kTrebleSharps, pitch))
    sign = Sign::kSharp;
  else if (bass ? Holds(kBassFlats, pitch) : Holds(kTrebleFlats, pitch))
    sign = Sign::kFlat;
  else if (NaturalIsDue(pitch_class, signature))
    sign = Sign::kNatural;
  if (sign == Sign::kSharp && SharpIsInKey(pitch_class, signature)) return Sign::kNone;
  if (sign == Sign::kFlat && FlatIsInKey(pitch_class, signature)) return Sign::kNone;
  return sign;
}

template <std::size_t Count>
void DrawStrokes(Drawing& drawing, Role role, const Stroke (&strokes)[Count], double x, double y, double g) {
  for (const Stroke& stroke : strokes) {
    drawing.SetPenWidth(stroke.pen_width);
    drawing.Line(role, kBlueInk, QPointF(x + stroke.from_x * g, y + stroke.from_y * g),
                 QPointF(x + stroke.to_x * g, y + stroke.to_y * g));
  }
  drawing.SetPenWidth(2);
}

}  // namespace

// A step on which the bar has shown a sign gets one again at the next note, which takes it back. The note's
// own sign, where it has one, does that by itself.
void BarDrawing::DrawAccidental(const Tone& tone) {
  const int signature = KeySignature();
  const Sign own = OwnSign(tone, ClefKindOf(Clef()), signature);
  bool& shown = AccidentalShown_[static_cast<std::size_t>(NoteStep_ - kLowestStep)];
  if (shown) {
    if (own == Sign::kNone) {
      if (IsWhite(ClassOf(tone)))
        DrawNatural(tone);
      else if (signature >= 1)
        DrawSharp(tone, true);
      else
        DrawFlat(tone, true);
    }
    shown = false;
  }
  if (own == Sign::kSharp) DrawSharp(tone, false);
  if (own == Sign::kFlat) DrawFlat(tone, false);
  if (own == Sign::kNatural) DrawNatural(tone);
}

void BarDrawing::DrawNatural(const Tone& tone) {
  if (NaturalIsDue(ClassOf(tone), KeySignature()))
    AccidentalShown_[static_cast<std::size_t>(NoteStep_ - kLowestStep)] = true;
  DrawStrokes(staff_, Role::kNatural, kNaturalStrokes, PenX_, PenY_, LineGap_);
}

void BarDrawing::DrawSharp(const Tone& tone, bool in_key_signature) {
  if (!in_key_signature && SharpIsInKey(ClassOf(tone), KeySignature())) return;
  AccidentalShown_[static_cast<std::size_t>(NoteStep_ - kLowestStep)] = true;
  DrawStrokes(staff_, Role::kSharp, kSharpStrokes, PenX_, PenY_, LineGap_);
}

void BarDrawing::DrawFlat(const Tone& tone, bool in_key_signature) {
  if (!in_key_signature && FlatIsInKey(ClassOf(tone), KeySignature())) return;
  AccidentalShown_[static_cast<std::size_t>(NoteStep_ - kLowestStep)] = true;
  DrawStrokes(staff_, Role::kFlat, kFlatStrokes, PenX_, PenY_, LineGap_);
}

}  // namespace zelmar
