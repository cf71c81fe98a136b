// The twelve pitch classes and their canonical names.
#pragma once

#include <QString>
#include <array>

namespace zelmar {

// Canonical name of each pitch class, C = 0: a mix of sharps and flats.
inline constexpr std::array<const char16_t*, 12> kNoteNames = {u"C",  u"C#", u"D",  u"Eb", u"E",  u"F",
                                                               u"F#", u"G",  u"Ab", u"A",  u"Bb", u"B"};

// The canonical names, position minus one being the pitch class.
const QStringList& NoteNames();

}  // namespace zelmar
