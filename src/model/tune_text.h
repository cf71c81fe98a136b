// How a tune is named in a text: its composer and its title, in the orders that the windows use.
//
// "Various" stands for no single composer. It is left out of every text together with the words that lead to
// it, and so is a composer that is not known.
#pragma once

#include <QString>

namespace zelmar {

class Tune;

// The composer as texts name them: empty where there is none to be named.
QString NamedComposer(const QString& composer);

// "Bach - Air", or "Air" alone.
QString ComposerAndTitle(const QString& composer, const QString& title,
                         const QString& between = QStringLiteral(" - "));
QString ComposerAndTitle(const Tune& tune, const QString& between = QStringLiteral(" - "));

// The tune as windows name it, by composer and title. The blank that the database keeps for a composer whom
// nobody has named is left out too.
QString NameInWindows(const Tune& tune);

// "Air by Bach", or "Air" alone.
QString TitleAndComposer(const QString& title, const QString& composer,
                         const QString& between = QStringLiteral(" by "));
QString TitleAndComposer(const Tune& tune, const QString& between = QStringLiteral(" by "));

}  // namespace zelmar
