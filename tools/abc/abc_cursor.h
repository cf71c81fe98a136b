// A place in one line of text that moves forward as things are read.
#pragma once

#include <QString>
#include <QStringView>

#include "abc/abc_error.h"

namespace zelmar {

class AbcCursor {
 public:
  // Reads `text`, whose first character stands in `first_column` of `line`.
  AbcCursor(QStringView text, int line, int first_column = 1)
      : text_(text), line_(line), first_column_(first_column) {}

  bool AtEnd() const { return index_ >= text_.size(); }
  // The character `ahead` of the place; a null character behind the end.
  QChar Peek(qsizetype ahead = 0) const {
    return index_ + ahead < text_.size() ? text_[index_ + ahead] : QChar();
  }
  QChar Take() { return AtEnd() ? QChar() : text_[index_++]; }
  bool TakeIf(QChar wanted) {
    if (AtEnd() || Peek() != wanted) return false;
    ++index_;
    return true;
  }
  void SkipBlanks() {
    while (!AtEnd() && Peek().isSpace()) ++index_;
  }
  // The text up to `stop`, which is passed; null, and nothing moved, when `stop` does not follow.
  QString TakeUntil(QChar stop) {
    const qsizetype found = text_.indexOf(stop, index_);
    if (found < 0) return {};
    const QString taken = text_.sliced(index_, found - index_).toString();
    index_ = found + 1;
    return taken.isNull() ? QStringLiteral("") : taken;
  }
  QStringView Rest() const { return text_.sliced(qMin(index_, text_.size())); }
  QString TakeWord() {
    SkipBlanks();
    const qsizetype start = index_;
    while (!AtEnd() && !Peek().isSpace()) ++index_;
    return text_.sliced(start, index_ - start).toString();
  }

  bool AtDigit() const { return Peek() >= u'0' && Peek() <= u'9'; }
  // A whole number of at most five digits; the place must be at a digit.
  int TakeNumber() {
    const TextPosition start = Position();
    int number = 0, digits = 0;
    while (AtDigit()) {
      if (++digits > 5) throw TextError(start, QStringLiteral("This number is too large."));
      number = number * 10 + (Take().unicode() - u'0');
    }
    return number;
  }

  TextPosition Position() const { return {line_, first_column_ + static_cast<int>(index_)}; }

 private:
  QStringView text_;
  int line_;
  int first_column_;
  qsizetype index_ = 0;
};

}  // namespace zelmar
