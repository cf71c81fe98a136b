// What a person types, compared as a person would: without regard to case, to accents and to blanks around
// it.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace zelmar {

// The same text for all that a person takes for one: "Dvořák", "DVORAK" and " dvorak ".
QString SearchForm(const QString& text);

// The text with each letter in its search form, none more and none less: what is found in it stands at the
// same place of the text.
QString LetterByLetter(QString text);

// True when the text holds every word of what was typed. Both are search forms.
bool HoldsEveryWord(const QString& text, const QString& typed);

// The one of `values` that was typed: the very value, else the only one with the same search form.
std::optional<QString> ValueTyped(const QStringList& values, const QString& typed);

}  // namespace zelmar
