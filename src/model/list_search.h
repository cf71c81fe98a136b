// Finding a text on the pages of a printed list, also where it is wrapped.
#pragma once

#include <QString>
#include <vector>

#include "model/list_layout.h"

namespace zelmar {

// Letters of one piece.
struct FoundLetters {
  std::size_t line = 0;
  std::size_t piece = 0;
  qsizetype from = 0;
  qsizetype count = 0;
};

// One place where the text stands: on one line, or on several.
using FoundPlace = std::vector<FoundLetters>;

// The places on a page from its top down, without regard to case and accents. A text over two lines is found
// with a blank between them.
std::vector<FoundPlace> FindOnPage(const PrintedPage& page, const QString& typed);

}  // namespace zelmar
