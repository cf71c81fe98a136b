// The written note values, by the duration that stands for each.
#pragma once

#include <QString>
#include <limits>

#include "notation/drawing.h"

namespace zelmar {

struct NoteValue {
  double from;  // crotchets, both ends included; the first row that fits counts
  double to;
  bool open;
  bool stem;
  int flags;
  bool dotted;
};

inline constexpr NoteValue kNoteValues[] = {
    // from   to     open   stem   flags dotted
    {3.125, std::numeric_limits<double>::infinity(), true, false, 0, false},  // semibreve
    {2.126, 3.125, true, true, 0, true},                                      // dotted minim
    {1.876, 2.125, true, true, 0, false},                                     // minim
    {1.126, 1.875, false, true, 0, true},                                     // dotted crotchet
    {0.876, 1.125, false, true, 0, false},                                    // crotchet
    {0.626, 0.875, false, true, 1, true},                                     // dotted quaver
    {0.376, 0.625, false, true, 1, false},                                    // quaver
    {0.126, 0.375, false, true, 2, false},                                    // semiquaver
};

// The value that a duration is written as; null for one that none covers.
inline const NoteValue* NoteValueOf(double duration) {
  for (const NoteValue& value : kNoteValues)
    if (duration >= value.from && duration <= value.to) return &value;
  return nullptr;
}

// "Red" and "Blue"; black for any other word.
inline InkColour InkOf(const QString& colour) {
  if (colour == u"Red") return kRedInk;
  if (colour == u"Blue") return kBlueInk;
  return kBlackInk;
}

}  // namespace zelmar
