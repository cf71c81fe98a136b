#include "store/statement_dialect.h"

#include <algorithm>
#include <array>

#include "store/database_error.h"
#include "store/select_statement.h"
#include "store/sql_tokens.h"

namespace zelmar {

namespace {

bool StartsWith(const SqlTokens& tokens, std::initializer_list<const char16_t*> words) {
  if (tokens.size() < words.size()) return false;
  return std::equal(
      words.begin(), words.end(), tokens.begin(),
      [](const char16_t* word, const SqlToken& token) { return token.IsWord(QStringView(word)); });
}

// `delete * from x` is `delete from x`.
void LeaveOutStarOfDelete(SqlTokens& tokens) {
  if (StartsWith(tokens, {u"delete"}) && tokens.size() > 1 && tokens[1].IsSign(u"*"))
    tokens.erase(tokens.begin() + 1);
}

// A bare table name may hold signs and blanks: all that follows is the name.
void HoldDroppedNameTogether(SqlTokens& tokens, const QString& statement) {
  if (!StartsWith(tokens, {u"drop", u"table"}) || tokens.size() < 3) return;
  const bool bare = std::all_of(tokens.begin() + 2, tokens.end(), [](const SqlToken& token) {
    return token.kind == SqlTokenKind::kWord || token.kind == SqlTokenKind::kNumber ||
           token.kind == SqlTokenKind::kSign;
  });
  if (!bare) return;
  const qsizetype behind_table = statement.indexOf(QStringLiteral("table"), 0, Qt::CaseInsensitive) + 5;
  QString name = statement.mid(behind_table).trimmed();
  if (name.endsWith(u';')) name = name.chopped(1).trimmed();
  tokens.resize(2);
  tokens.push_back({SqlTokenKind::kName, name});
}

// Reads SHAPE {parent} AS a APPEND ({child} AS b RELATE x TO y) AS c, the first two names being optional.
class ShapeReader {
 public:
  explicit ShapeReader(const SqlTokens& tokens) : tokens_(tokens) {}

  Shape Read() {
    Shape shape;
    Expect(u"shape");
    shape.parent = Statement();
    OptionalName();
    Expect(u"append");
    const SqlToken& group = Take();
    if (group.kind != SqlTokenKind::kGroup || group.text != u"(")
      throw SyntaxError(QStringLiteral("APPEND (...)"));
    ShapeReader inner(group.inside);
    shape.child = inner.Statement();
    shape.chapter = inner.OptionalName();
    inner.Expect(u"relate");
    shape.parent_column = inner.Column();
    inner.Expect(u"to");
    shape.child_column = inner.Column();
    inner.ExpectEnd();
    const QString name = OptionalName();
    if (!name.isEmpty()) shape.chapter = name;
    ExpectEnd();
    return shape;
  }

 private:
  const SqlToken& Take() {
    if (place_ == tokens_.size()) throw SyntaxError(QStringLiteral("the SHAPE is not finished"));
    return tokens_[place_++];
  }
  void Expect(const char16_t* word) {
    if (!Take().IsWord(word))
      throw SyntaxError(QStringLiteral("%1 is missing").arg(QString::fromUtf16(word).toUpper()));
  }
  void ExpectEnd() {
    if (place_ != tokens_.size()) throw SyntaxError(QStringLiteral("too much in the SHAPE"));
  }
  QString Statement() {
    const SqlToken& group = Take();
    if (group.kind != SqlTokenKind::kGroup || group.text != u"{")
      throw SyntaxError(QStringLiteral("SHAPE {...}"));
    return SqlTextOf(RewrittenSelect(group.inside));
  }
  QString OptionalName() {
    if (place_ == tokens_.size() || !tokens_[place_].IsWord(u"as")) return {};
    ++place_;
    return Column();
  }
  QString Column() {
    const SqlToken& token = Take();
    if (!token.IsName() && token.kind != SqlTokenKind::kText)
      throw SyntaxError(QStringLiteral("a name is missing"));
    return token.text;
  }

  const SqlTokens& tokens_;
  std::size_t place_ = 0;
};

constexpr std::array<const char16_t*, 6> kCommands = {u"select", u"insert", u"update",
                                                      u"delete", u"create", u"drop"};

void RequireKnownCommand(const SqlTokens& tokens) {
  const bool known =
      !tokens.empty() && std::any_of(kCommands.begin(), kCommands.end(),
                                     [&](const char16_t* command) { return tokens.front().IsWord(command); });
  if (!known)
    throw DatabaseError(
        database_error::kNotAStatement,
        QStringLiteral("Invalid statement; expected SELECT, INSERT, UPDATE, DELETE, CREATE or DROP"));
}

}  // namespace

EngineStatement StatementDialect::Translate(const QString& statement, RowIdentity identity) {
  SqlTokens tokens = SqlTokensOf(statement);
  EngineStatement result;
  if (StartsWith(tokens, {u"shape"})) {
    result.shape = ShapeReader(tokens).Read();
    result.gives_rows = true;
    return result;
  }
  RequireKnownCommand(tokens);
  LeaveOutStarOfDelete(tokens);
  HoldDroppedNameTogether(tokens, statement);

  if (auto copy = TableCopyOf(tokens)) {
    result.copy = std::move(copy);
    return result;
  }
  result.gives_rows = StartsWith(tokens, {u"select"});
  const SqlToken* table = identity == RowIdentity::kLeftOut ? nullptr : OneTableOf(tokens);
  if (table != nullptr) {
    result.table = table->text;
    tokens = WithRowId(tokens);
  }
  result.sql = SqlTextOf(RewrittenSelect(std::move(tokens)));
  return result;
}

QString StatementDialect::Quoted(const QString& value) {
  return SqlTextOf({TextToken(value)});
}

QString StatementDialect::Bracketed(const QString& name) {
  if (name.contains(u']')) throw SyntaxError(QStringLiteral("the name %1 holds a bracket").arg(name));
  return u'[' + name + u']';
}

QString StatementDialect::BareName(const QString& name) {
  const QString trimmed = name.trimmed();
  const bool enclosed = trimmed.size() >= 2 && ((trimmed.front() == u'[' && trimmed.back() == u']') ||
                                                (trimmed.front() == u'`' && trimmed.back() == u'`'));
  return enclosed ? trimmed.mid(1, trimmed.size() - 2) : trimmed;
}

}  // namespace zelmar
