// Sharps, flats and naturals: when one is written, and its strokes.
#include <algorithm>

#include "notation/accidental_signs.h"
#include "notation/bar_notes.h"

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

}  // namespace

// A step on which the bar has shown a sign gets one again at the next note, which takes it back. The note's
// own sign, where it has one, does that by itself.
void BarNotes::DrawAccidental(const Tone& tone) {
  const int signature = style_.key_signature;
  const Sign own = OwnSign(tone, style_.clef, signature);
  bool& shown = ShownSign();
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

bool& BarNotes::ShownSign() {
  return AccidentalShown_[static_cast<std::size_t>(NoteStep_ - kLowestStep)];
}

void BarNotes::DrawNatural(const Tone& tone) {
  if (NaturalIsDue(ClassOf(tone), style_.key_signature)) ShownSign() = true;
  DrawSign(staff_, Role::kNatural, QPointF(PenX_, PenY_), frame_.line_gap);
}

void BarNotes::DrawSharp(const Tone& tone, bool in_key_signature) {
  if (!in_key_signature && SharpIsInKey(ClassOf(tone), style_.key_signature)) return;
  ShownSign() = true;
  DrawSign(staff_, Role::kSharp, QPointF(PenX_, PenY_), frame_.line_gap);
}

void BarNotes::DrawFlat(const Tone& tone, bool in_key_signature) {
  if (!in_key_signature && FlatIsInKey(ClassOf(tone), style_.key_signature)) return;
  ShownSign() = true;
  DrawSign(staff_, Role::kFlat, QPointF(PenX_, PenY_), frame_.line_gap);
}

}  // namespace zelmar
