#include "model/list_search.h"

#include "model/search_text.h"

namespace zelmar {

namespace {

// The lines of one text: those of a cell, joined by blanks.
struct JoinedText {
  struct Part {
    std::size_t line;
    std::size_t piece;
    qsizetype start;
    qsizetype size;
  };
  double left = 0.0;
  QString text;
  std::vector<Part> parts;

  void Add(std::size_t line, std::size_t piece, const QString& words) {
    if (!parts.empty()) text += u' ';
    parts.push_back({line, piece, text.size(), words.size()});
    text += words;
  }

  FoundPlace PlaceOf(qsizetype from, qsizetype count) const {
    FoundPlace place;
    for (const Part& part : parts) {
      const qsizetype first = std::max(from, part.start);
      const qsizetype end = std::min(from + count, part.start + part.size);
      if (first < end) place.push_back({part.line, part.piece, first - part.start, end - first});
    }
    return place;
  }
};

void FindIn(const std::vector<JoinedText>& texts, const QString& wanted, std::vector<FoundPlace>& places) {
  for (const JoinedText& joined : texts) {
    const QString text = LetterByLetter(joined.text);
    for (qsizetype at = text.indexOf(wanted); at >= 0; at = text.indexOf(wanted, at + wanted.size()))
      places.push_back(joined.PlaceOf(at, wanted.size()));
  }
}

}  // namespace

std::vector<FoundPlace> FindOnPage(const PrintedPage& page, const QString& typed) {
  std::vector<FoundPlace> places;
  const QString wanted = LetterByLetter(typed.trimmed());
  if (wanted.isEmpty()) return places;
  std::vector<JoinedText> texts;  // of the row at hand, each at its own left edge
  for (std::size_t line = 0; line < page.size(); ++line) {
    if (!page[line].goes_on) {
      FindIn(texts, wanted, places);
      texts.clear();
    }
    for (std::size_t i = 0; i < page[line].pieces.size(); ++i) {
      const PrintedPiece& piece = page[line].pieces[i];
      auto above = std::find_if(texts.begin(), texts.end(),
                                [&piece](const JoinedText& text) { return text.left == piece.left; });
      if (above == texts.end()) above = texts.insert(texts.end(), JoinedText{piece.left, {}, {}});
      above->Add(line, i, piece.text);
    }
  }
  FindIn(texts, wanted, places);
  return places;
}

}  // namespace zelmar
