// A statement taken apart: words, names, texts, numbers and signs, with what stands in brackets held
// together.
#pragma once

#include <QString>
#include <vector>

namespace zelmar {

enum class SqlTokenKind {
  kWord,    // a keyword or a bare name
  kName,    // a name between square brackets or backquotes; `text` is the name alone
  kText,    // between quotation marks of either kind; `text` is what it stands for
  kNumber,  // as written
  kSign,    // an operator or other mark
  kGroup,   // what stands between ( ) or { }; `text` is the opening sign
};

struct SqlToken {
  SqlTokenKind kind = SqlTokenKind::kSign;
  QString text;
  std::vector<SqlToken> inside = {};

  bool IsWord(QStringView word) const {
    return kind == SqlTokenKind::kWord && text.size() == word.size() &&
           text.compare(word, Qt::CaseInsensitive) == 0;
  }
  bool IsSign(QStringView sign) const { return kind == SqlTokenKind::kSign && text == sign; }
  // A bare or bracketed name.
  bool IsName() const { return kind == SqlTokenKind::kWord || kind == SqlTokenKind::kName; }
};

using SqlTokens = std::vector<SqlToken>;

SqlToken WordToken(const char16_t* word);
SqlToken SignToken(const char16_t* sign);
SqlToken TextToken(const QString& text);
SqlToken GroupToken(SqlTokens inside);

// Throws DatabaseError: kSyntax for an unfinished text, name or bracket, kTextAfterStatement for anything
// behind a semicolon. One semicolon at the end is left out.
SqlTokens SqlTokensOf(const QString& statement);

// The tokens as the engine reads them, set apart by blanks, so that no two signs ever read as a comment.
QString SqlTextOf(const SqlTokens& tokens);

}  // namespace zelmar
