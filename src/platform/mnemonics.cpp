#include "platform/mnemonics.h"

namespace zelmar {

QString WithoutMnemonic(const QString& caption) {
  QString words;
  words.reserve(caption.size());
  for (qsizetype i = 0; i < caption.size(); ++i) {
    if (caption[i] == QLatin1Char('&') && ++i == caption.size()) break;
    words += caption[i];
  }
  return words;
}

}  // namespace zelmar
