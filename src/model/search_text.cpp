#include "model/search_text.h"

#include <algorithm>

namespace zelmar {

QString SearchForm(const QString& text) {
  const bool is_plain = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
  if (is_plain) return text.trimmed().toLower();
  QString form;
  for (const QChar c : text.normalized(QString::NormalizationForm_KD))
    if (c.category() != QChar::Mark_NonSpacing) form += c;
  return form.trimmed().toCaseFolded();
}

QString LetterByLetter(QString text) {
  for (QChar& c : text) {
    const QString parts = c.unicode() < 0x80 ? QString() : c.decomposition();
    c = (parts.isEmpty() ? c : parts[0]).toLower();
  }
  return text;
}

bool HoldsEveryWord(const QString& text, const QString& typed) {
  const auto words = QStringView(typed).split(u' ', Qt::SkipEmptyParts);
  return std::all_of(words.begin(), words.end(), [&text](QStringView word) { return text.contains(word); });
}

std::optional<QString> ValueTyped(const QStringList& values, const QString& typed) {
  if (values.contains(typed)) return typed;
  const QString wanted = SearchForm(typed);
  if (wanted.isEmpty()) return std::nullopt;
  std::optional<QString> found;
  for (const QString& value : values) {
    if (SearchForm(value) != wanted) continue;
    if (found) return std::nullopt;
    found = value;
  }
  return found;
}

}  // namespace zelmar
