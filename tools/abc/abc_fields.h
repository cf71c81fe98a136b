// The values of ABC fields: metre, unit length, tempo and key.
#pragma once

#include <array>
#include <optional>

#include "abc/abc_cursor.h"
#include "abc/fraction.h"

namespace zelmar {

struct AbcMetre {
  int beats = 4;
  int length = 4;

  Fraction BarCrotchets() const { return {beats * 4, length}; }
  friend bool operator==(const AbcMetre&, const AbcMetre&) = default;
};

// Alteration of each letter in semitones, C first.
using AbcAccidentals = std::array<int, 7>;

struct AbcKey {
  int sharps = 0;
  bool minor_third = false;
  AbcAccidentals accidentals{};
};

// 0 for C to 6 for B, of a letter in either case; -1 for any other character.
int LetterIndex(QChar letter);

// Each reads the value of its field to the end of the cursor. All throw TextError.
AbcMetre ReadMetre(AbcCursor& cursor);
Fraction ReadUnitLength(AbcCursor& cursor);  // in crotchets
// Crotchets a minute; empty for a tempo given in words alone.
std::optional<int> ReadTempo(AbcCursor& cursor, const Fraction& unit_crotchets);
// A field with only a clef in it gives back `current`.
AbcKey ReadKey(AbcCursor& cursor, const AbcKey& current);

// Throws for a clef or a property that would move the pitch; all others are of the layout. False when `word`
// is neither a clef nor a property of one.
bool PassClefWord(const QString& word, TextPosition position);

}  // namespace zelmar
