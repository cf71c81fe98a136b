// What the key of a node says in a tree of tunes.
#pragma once

#include <QString>
#include <QStringList>

namespace zelmar {

struct TuneKeys {
  QString mark;          // the letters that the keys of all tunes begin with
  QStringList prefixes;  // those of them behind which the CodeName stands

  bool IsTune(const QString& key) const { return !mark.isEmpty() && key.startsWith(mark); }

  // Empty for a key that none of the prefixes begins.
  QString CodeNameOf(const QString& key) const {
    for (const QString& prefix : prefixes)
      if (key.startsWith(prefix)) return key.mid(prefix.size());
    return {};
  }
};

}  // namespace zelmar
