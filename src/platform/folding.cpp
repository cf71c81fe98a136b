#include "platform/folding.h"

#include <algorithm>
#include <iterator>

namespace zelmar {

namespace {

struct Replacement {
  char16_t letter;  // in lower case
  const char* typed;
};

// Letters and signs that have no decomposition. In the order of their code points.
constexpr Replacement kReplacements[] = {
    {u'ß', "ss"},     {u'æ', "ae"},     {u'ð', "d"},      {u'ø', "o"},      {u'þ', "th"},
    {u'đ', "d"},      {u'ħ', "h"},      {u'ı', "i"},      {u'ł', "l"},      {u'œ', "oe"},
    {u'ŧ', "t"},      {u'\u02BC', "'"}, {u'\u2010', "-"}, {u'\u2011', "-"}, {u'\u2012', "-"},
    {u'\u2013', "-"}, {u'\u2014', "-"}, {u'\u2018', "'"}, {u'\u2019', "'"},
};

const Replacement* ReplacementOf(QChar letter) {
  const auto found = std::lower_bound(
      std::begin(kReplacements), std::end(kReplacements), letter.unicode(),
      [](const Replacement& replacement, char16_t wanted) { return replacement.letter < wanted; });
  return found != std::end(kReplacements) && found->letter == letter.unicode() ? found : nullptr;
}

}  // namespace

QString FoldedForSearch(const QString& text) {
  if (std::all_of(text.begin(), text.end(), [](QChar letter) { return letter.unicode() < 0x80; }))
    return text.toLower();
  // Marks fall away first: some letters keep one when they change their case.
  QString base = text.normalized(QString::NormalizationForm_KD);
  base.removeIf([](QChar letter) { return letter.isMark(); });
  QString folded;
  folded.reserve(base.size());
  for (const QChar letter : base.toCaseFolded()) {
    if (const Replacement* const replacement = ReplacementOf(letter))
      folded += QLatin1String(replacement->typed);
    else
      folded += letter;
  }
  return folded;
}

}  // namespace zelmar
