#include "store/sql_tokens.h"

#include "store/database_error.h"

namespace zelmar {

namespace {

bool StartsWord(QChar c) {
  return c.isLetter() || c == u'_' || c.isHighSurrogate() || c.isLowSurrogate();
}
bool ContinuesWord(QChar c) {
  return StartsWord(c) || c.isMark() || c.isNumber() || c == u'$';
}
bool IsDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

class Tokenizer {
 public:
  explicit Tokenizer(QStringView statement) : statement_(statement) {}

  SqlTokens All() {
    SqlTokens tokens = UpTo(QChar());
    if (place_ < statement_.size()) {
      ++place_;
      SkipBlanks();
      if (place_ < statement_.size())
        throw DatabaseError(database_error::kTextAfterStatement,
                            QStringLiteral("Characters found behind the end of the statement"));
    }
    return tokens;
  }

 private:
  // Reads to the closing sign, or with none to the end or a semicolon, where it stays.
  SqlTokens UpTo(QChar closing) {
    SqlTokens tokens;
    for (SkipBlanks(); place_ < statement_.size(); SkipBlanks()) {
      const QChar c = statement_[place_];
      if (c == u';') {
        if (closing.isNull()) return tokens;
        throw SyntaxError(QStringLiteral("a semicolon between brackets"));
      }
      if (c == closing) {
        ++place_;
        return tokens;
      }
      if (c == u')' || c == u'}') throw SyntaxError(QStringLiteral("%1 without its opening bracket").arg(c));
      tokens.push_back(Next());
    }
    if (!closing.isNull()) throw SyntaxError(QStringLiteral("%1 is missing").arg(closing));
    return tokens;
  }

  void SkipBlanks() {
    while (place_ < statement_.size() && statement_[place_].isSpace()) ++place_;
  }

  SqlToken Next() {
    const QChar c = statement_[place_];
    if (c == u'(' || c == u'{') {
      ++place_;
      return {SqlTokenKind::kGroup, QString(c), UpTo(c == u'(' ? u')' : u'}')};
    }
    if (c == u'\'' || c == u'"') return {SqlTokenKind::kText, Quoted(c)};
    if (c == u'[') return {SqlTokenKind::kName, Enclosed(u']')};
    if (c == u'`') return {SqlTokenKind::kName, Enclosed(u'`')};
    if (StartsWord(c)) return {SqlTokenKind::kWord, Span(&ContinuesWord)};
    if (IsDigit(c) || (c == u'.' && IsDigit(Peek(1)))) return {SqlTokenKind::kNumber, Number()};
    for (const QStringView sign : {u"<>", u"<=", u">="})
      if (statement_.mid(place_).startsWith(sign)) {
        place_ += 2;
        return {SqlTokenKind::kSign, sign.toString()};
      }
    ++place_;
    return {SqlTokenKind::kSign, QString(c)};
  }

  QChar Peek(qsizetype ahead) const {
    return place_ + ahead < statement_.size() ? statement_[place_ + ahead] : QChar();
  }

  QString Span(bool (*belongs)(QChar)) {
    const qsizetype start = place_;
    while (place_ < statement_.size() && belongs(statement_[place_])) ++place_;
    return statement_.mid(start, place_ - start).toString();
  }

  QString Number() {
    QString number = Span(&IsDigit);
    if (Peek(0) == u'.') {
      ++place_;
      number += u'.' + Span(&IsDigit);
    }
    const bool exponent = (Peek(0) == u'e' || Peek(0) == u'E') &&
                          (IsDigit(Peek(1)) || ((Peek(1) == u'-' || Peek(1) == u'+') && IsDigit(Peek(2))));
    if (exponent) {
      number += statement_.mid(place_, 2);
      place_ += 2;
      number += Span(&IsDigit);
    }
    return number;
  }

  // A text, in which a doubled quotation mark stands for one.
  QString Quoted(QChar mark) {
    QString text;
    for (++place_; place_ < statement_.size(); ++place_) {
      if (statement_[place_] == mark) {
        if (Peek(1) != mark) {
          ++place_;
          return text;
        }
        ++place_;
      }
      text += statement_[place_];
    }
    throw SyntaxError(QStringLiteral("the text %1%2 has no end").arg(mark, text));
  }

  QString Enclosed(QChar closing) {
    const qsizetype start = place_ + 1;
    const qsizetype end = statement_.indexOf(closing, start);
    if (end < 0) throw SyntaxError(QStringLiteral("a name has no %1").arg(closing));
    place_ = end + 1;
    return statement_.mid(start, end - start).toString();
  }

  QStringView statement_;
  qsizetype place_ = 0;
};

QString QuotedBy(QChar mark, QString text) {
  text.replace(mark, QString(2, mark));
  return mark + text + mark;
}

}  // namespace

SqlToken WordToken(const char16_t* word) {
  return {SqlTokenKind::kWord, QString::fromUtf16(word)};
}

SqlToken SignToken(const char16_t* sign) {
  return {SqlTokenKind::kSign, QString::fromUtf16(sign)};
}

SqlToken TextToken(const QString& text) {
  return {SqlTokenKind::kText, text};
}

SqlToken GroupToken(SqlTokens inside) {
  return {SqlTokenKind::kGroup, QStringLiteral("("), std::move(inside)};
}

SqlTokens SqlTokensOf(const QString& statement) {
  return Tokenizer(statement).All();
}

QString SqlTextOf(const SqlTokens& tokens) {
  QString text;
  for (const SqlToken& token : tokens) {
    if (!text.isEmpty()) text += u' ';
    switch (token.kind) {
      case SqlTokenKind::kText:
        text += QuotedBy(u'\'', token.text);
        break;
      case SqlTokenKind::kName:
        // Square brackets and not quotation marks: the engine would take an unknown name in those for a text.
        text += token.text.contains(u']') ? QuotedBy(u'`', token.text) : u'[' + token.text + u']';
        break;
      case SqlTokenKind::kGroup:
        text += u'(' + SqlTextOf(token.inside) + u')';
        break;
      default:
        text += token.text;
    }
  }
  return text;
}

}  // namespace zelmar
