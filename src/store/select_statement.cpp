#include "store/select_statement.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "store/database_error.h"
#include "store/people_collation.h"

namespace zelmar {

namespace {

using Place = SqlTokens::const_iterator;

// Words at which an expression begins or ends.
constexpr QStringView kClauseWords[] = {
    u"select", u"distinct", u"distinctrow", u"all",  u"from",   u"where", u"as",     u"and",
    u"or",     u"not",      u"xor",         u"like", u"in",     u"is",    u"order",  u"by",
    u"group",  u"having",   u"union",       u"on",   u"join",   u"inner", u"left",   u"right",
    u"outer",  u"asc",      u"desc",        u"set",  u"values", u"into",  u"insert", u"update",
    u"delete", u"between",  u"limit",       u"drop", u"create"};

constexpr QStringView kComparisons[] = {u"=", u"<", u">", u"<>", u"<=", u">="};

bool EndsExpression(const SqlToken& token) {
  if (token.kind == SqlTokenKind::kSign)
    return token.IsSign(u",") || std::any_of(std::begin(kComparisons), std::end(kComparisons),
                                             [&](QStringView sign) { return token.IsSign(sign); });
  return token.kind == SqlTokenKind::kWord &&
         std::any_of(std::begin(kClauseWords), std::end(kClauseWords),
                     [&](QStringView word) { return token.IsWord(word); });
}

Place FindWord(Place from, Place to, QStringView word) {
  return std::find_if(from, to, [word](const SqlToken& token) { return token.IsWord(word); });
}

bool HasWord(const SqlTokens& tokens, QStringView word) {
  return FindWord(tokens.begin(), tokens.end(), word) != tokens.end();
}

void Append(SqlTokens& tokens, Place from, Place to) {
  tokens.insert(tokens.end(), from, to);
}
void Append(SqlTokens& tokens, const SqlTokens& more) {
  Append(tokens, more.begin(), more.end());
}

// a & b & c, each a text, with a null counting as empty. The engine's own sign for joining binds tighter than
// any other, so each operand stands in brackets.
SqlTokens JoinedTexts(Place from, Place to) {
  SqlTokens joined;
  for (Place start = from;;) {
    const Place end = std::find_if(start, to, [](const SqlToken& token) { return token.IsSign(u"&"); });
    if (start == end) throw SyntaxError(QStringLiteral("& needs two texts"));
    SqlTokens arguments(start, end);
    arguments.push_back(SignToken(u","));
    arguments.push_back(TextToken(QString()));
    if (!joined.empty()) joined.push_back(SignToken(u"||"));
    joined.push_back(WordToken(u"ifnull"));
    joined.push_back(GroupToken(std::move(arguments)));
    if (end == to) return {GroupToken(std::move(joined))};
    start = end + 1;
  }
}

// Both wildcard forms work in a pattern: * is turned into % when the statement runs, so its text stays as
// written.
SqlTokens Pattern(SqlTokens pattern) {
  pattern.insert(pattern.end(), {SignToken(u","), TextToken(QStringLiteral("*")), SignToken(u","),
                                 TextToken(QStringLiteral("%"))});
  return {WordToken(u"replace"), GroupToken(std::move(pattern))};
}

SqlTokens RewriteExpressions(const SqlTokens& tokens) {
  SqlTokens result;
  bool pattern_follows = false;
  for (auto start = tokens.begin(); start != tokens.end();) {
    if (EndsExpression(*start)) {
      pattern_follows = start->IsWord(u"like");
      result.push_back(*start++);
      continue;
    }
    const auto end = std::find_if(start, tokens.end(), &EndsExpression);
    const bool joins = std::any_of(start, end, [](const SqlToken& token) { return token.IsSign(u"&"); });
    SqlTokens expression = joins ? JoinedTexts(start, end) : SqlTokens(start, end);
    Append(result, pattern_follows ? Pattern(std::move(expression)) : expression);
    pattern_follows = false;
    start = end;
  }
  return result;
}

void RewriteBangs(SqlTokens& tokens) {
  for (SqlToken& token : tokens)
    if (token.IsSign(u"!")) token.text = QStringLiteral(".");
}

// One ORDER BY term: what it sorts by, and the direction word if there is one.
struct OrderTerm {
  SqlTokens key;
  SqlTokens direction;
};

std::vector<OrderTerm> OrderTerms(Place from, Place to) {
  std::vector<OrderTerm> terms(1);
  for (; from != to; ++from) {
    if (from->IsSign(u","))
      terms.emplace_back();
    else if (from->IsWord(u"asc") || from->IsWord(u"desc"))
      terms.back().direction.push_back(*from);
    else
      terms.back().key.push_back(*from);
  }
  return terms;
}

// The columns of a select list, each as its tokens.
std::vector<SqlTokens> Columns(Place from, Place to) {
  std::vector<SqlTokens> columns(1);
  for (; from != to; ++from) {
    if (from->IsSign(u","))
      columns.emplace_back();
    else
      columns.back().push_back(*from);
  }
  return columns;
}

// A key that is the name given to a column by AS, or its number, stands for that column.
SqlTokens KeyExpression(const SqlTokens& key, const std::vector<SqlTokens>& columns) {
  if (key.size() != 1) return key;
  if (key[0].kind == SqlTokenKind::kNumber) {
    const int number = key[0].text.toInt();
    if (number < 1 || number > static_cast<int>(columns.size())) return key;
    const SqlTokens& column = columns[static_cast<std::size_t>(number) - 1];
    return {column.begin(), FindWord(column.begin(), column.end(), u"as")};
  }
  if (!key[0].IsName()) return key;
  for (const SqlTokens& column : columns) {
    const auto as = FindWord(column.begin(), column.end(), u"as");
    if (as != column.end() && column.end() - as == 2 &&
        (as + 1)->text.compare(key[0].text, Qt::CaseInsensitive) == 0)
      return {column.begin(), as};
  }
  return key;
}

// What makes texts stand in the order of people. It does nothing to numbers.
void AppendCollation(SqlTokens& tokens) {
  tokens.push_back(WordToken(u"collate"));
  tokens.push_back(WordToken(kPeopleCollation));
}

SqlToken KeyName(std::size_t number) {
  return {SqlTokenKind::kName, QStringLiteral("order key %1").arg(number + 1)};
}

// How many rows a TOP n gives: those whose place in the order is n or better, so that rows that tie with the
// last one all come along. `select` and `from_part` are the statement without TOP and ORDER BY, cut before
// its FROM.
SqlToken CountWithTies(const SqlTokens& select, const SqlTokens& from_part,
                       const std::vector<OrderTerm>& terms, const std::vector<SqlTokens>& columns,
                       const SqlToken& number) {
  SqlTokens keyed = select;
  SqlTokens order;
  for (std::size_t i = 0; i < terms.size(); ++i) {
    keyed.push_back(SignToken(u","));
    Append(keyed, KeyExpression(terms[i].key, columns));
    keyed.push_back(WordToken(u"as"));
    keyed.push_back(KeyName(i));
    if (!order.empty()) order.push_back(SignToken(u","));
    order.push_back(KeyName(i));
    AppendCollation(order);
    Append(order, terms[i].direction);
  }
  Append(keyed, from_part);

  SqlTokens over = {WordToken(u"order"), WordToken(u"by")};
  Append(over, order);
  const SqlToken place = {SqlTokenKind::kName, QStringLiteral("place in order")};
  const SqlTokens ranked = {WordToken(u"select"),
                            WordToken(u"rank"),
                            GroupToken({}),
                            WordToken(u"over"),
                            GroupToken(over),
                            WordToken(u"as"),
                            place,
                            WordToken(u"from"),
                            GroupToken(std::move(keyed))};
  return GroupToken({WordToken(u"select"), WordToken(u"count"), GroupToken({SignToken(u"*")}),
                     WordToken(u"from"), GroupToken(ranked), WordToken(u"where"), place, SignToken(u"<="),
                     number});
}

// SELECT TOP n ... becomes SELECT ... LIMIT.
SqlTokens RewriteTop(SqlTokens tokens) {
  const auto select = FindWord(tokens.begin(), tokens.end(), u"select");
  const auto top = FindWord(select, tokens.end(), u"top");
  if (top == tokens.end() || top + 1 == tokens.end() || (top + 1)->kind != SqlTokenKind::kNumber)
    return tokens;
  const bool leads = std::all_of(select, top, [](const SqlToken& token) {
    return token.IsWord(u"select") || token.IsWord(u"distinct") || token.IsWord(u"all");
  });
  if (!leads) return tokens;
  if (HasWord(tokens, u"union")) throw SyntaxError(QStringLiteral("TOP in a UNION"));

  const SqlToken number = *(top + 1);
  tokens.erase(top, top + 2);
  const auto from = FindWord(tokens.begin(), tokens.end(), u"from");
  const auto order = FindWord(from, tokens.end(), u"order");
  SqlToken limit = number;
  if (order != tokens.end() && order + 1 != tokens.end() && (order + 1)->IsWord(u"by")) {
    auto list = FindWord(tokens.begin(), from, u"select") + 1;
    while (list != from && (list->IsWord(u"distinct") || list->IsWord(u"all"))) ++list;
    limit = CountWithTies(SqlTokens(tokens.cbegin(), from), SqlTokens(from, order),
                          OrderTerms(order + 2, tokens.end()), Columns(list, from), number);
  }
  tokens.push_back(WordToken(u"limit"));
  tokens.push_back(std::move(limit));
  return tokens;
}

// Texts that a statement sorts by stand in the order of people.
SqlTokens RewriteOrder(const SqlTokens& tokens) {
  const auto order = FindWord(tokens.begin(), tokens.end(), u"order");
  if (tokens.end() - order < 3 || !(order + 1)->IsWord(u"by")) return tokens;
  const auto end = FindWord(order, tokens.end(), u"limit");
  SqlTokens result(tokens.begin(), order + 2);
  bool first = true;
  for (const OrderTerm& term : OrderTerms(order + 2, end)) {
    if (!std::exchange(first, false)) result.push_back(SignToken(u","));
    // In brackets, so that it belongs to the whole of the key.
    result.push_back(GroupToken(term.key));
    AppendCollation(result);
    Append(result, term.direction);
  }
  Append(result, end, tokens.end());
  return result;
}

}  // namespace

SqlTokens RewrittenSelect(SqlTokens tokens) {
  for (SqlToken& token : tokens)
    if (token.kind == SqlTokenKind::kGroup) token.inside = RewrittenSelect(std::move(token.inside));
  RewriteBangs(tokens);
  return RewriteOrder(RewriteTop(RewriteExpressions(tokens)));
}

std::optional<TableCopy> TableCopyOf(const SqlTokens& tokens) {
  if (tokens.empty() || !tokens.front().IsWord(u"select")) return {};
  const auto into = FindWord(tokens.begin(), tokens.end(), u"into");
  if (tokens.end() - into < 4 || !(into + 1)->IsName() || !(into + 2)->IsWord(u"from")) return {};

  TableCopy copy;
  copy.target = (into + 1)->text;
  SqlTokens rows(tokens.begin(), into);
  Append(rows, into + 2, tokens.end());
  const bool whole_rows = into - tokens.begin() == 2 && tokens[1].IsSign(u"*");
  const SqlToken* table = OneTableOf(rows);
  if (whole_rows && table != nullptr) copy.source = table->text;
  copy.rows = SqlTextOf(RewrittenSelect(std::move(rows)));
  return copy;
}

const SqlToken* OneTableOf(const SqlTokens& tokens) {
  if (tokens.empty() || !tokens.front().IsWord(u"select")) return nullptr;
  for (const QStringView word :
       {QStringView(u"distinct"), QStringView(u"distinctrow"), QStringView(u"top"), QStringView(u"union"),
        QStringView(u"join"), QStringView(u"group"), QStringView(u"having"), QStringView(u"into")})
    if (HasWord(tokens, word)) return nullptr;
  const auto from = FindWord(tokens.begin(), tokens.end(), u"from");
  if (tokens.end() - from < 2 || !(from + 1)->IsName()) return nullptr;
  const auto behind = from + 2;
  if (behind != tokens.end() && !behind->IsWord(u"where") && !behind->IsWord(u"order")) return nullptr;
  return &*(from + 1);
}

SqlTokens WithRowId(const SqlTokens& tokens) {
  SqlTokens result = {tokens.front(), WordToken(u"rowid"), SignToken(u",")};
  Append(result, tokens.begin() + 1, tokens.end());
  return result;
}

}  // namespace zelmar
