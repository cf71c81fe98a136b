#include "store/tune_name.h"

#include <algorithm>
#include <optional>

#include "store/database_error.h"
#include "store/schema.h"

namespace zelmar {

namespace {

bool IsBlank(const QString& name) {
  return name.trimmed().isEmpty();
}
bool HasQuotationMark(const QString& name) {
  return name.contains(u'\'');
}
bool HasBracket(const QString& name) {
  return name.contains(u']');
}
bool HasNullSign(const QString& name) {
  return name.contains(QChar(u'\0'));
}
bool IsOfTheEngine(const QString& name) {
  return name.startsWith(u"sqlite_", Qt::CaseInsensitive);
}
bool IsOfAllTunes(const QString& name) {
  const auto is_same = [folded = FoldedCodeName(name)](const QString& taken) {
    return FoldedCodeName(taken) == folded;
  };
  const QStringList tables = SharedTableNames();
  const auto indexes = LibraryIndexes();
  return std::any_of(tables.begin(), tables.end(), is_same) ||
         std::any_of(indexes.begin(), indexes.end(),
                     [&is_same](const LibraryIndex& index) { return is_same(index.name); });
}

// What no name may be, in the order in which a person is told of it.
struct Rule {
  bool (*is_broken)(const QString& name);
  int number;
  const char16_t* reason;
};
constexpr Rule kRules[] = {
    {&IsBlank, database_error::kSyntax, u"a tune cannot go by a name without letters"},
    {&HasQuotationMark, database_error::kSyntax,
     u"a quotation mark ' ends a text in the statements of the database"},
    {&HasBracket, database_error::kSyntax,
     u"a bracket ] ends the name of a table in the statements of the database"},
    {&HasNullSign, database_error::kSyntax, u"it holds a sign that ends a statement"},
    {&IsOfTheEngine, database_error::kSyntax, u"the database keeps names that begin like this for itself"},
    {&IsOfAllTunes, database_error::kTableExists,
     u"the database has a table or an index of this name for all tunes"},
};

const Rule* BrokenRule(const QString& name) {
  const auto* const broken = std::find_if(std::begin(kRules), std::end(kRules),
                                          [&name](const Rule& rule) { return rule.is_broken(name); });
  return broken == std::end(kRules) ? nullptr : broken;
}

QString Words(const Rule& rule, const QString& name) {
  return QStringLiteral("The name \"%1\" cannot be used: %2. Please choose another.")
      .arg(name, QString::fromUtf16(rule.reason));
}

}  // namespace

QString FoldedCodeName(QString code_name) {
  for (QChar& c : code_name)
    if (c >= u'A' && c <= u'Z') c = QChar(c.unicode() + (u'a' - u'A'));
  return code_name;
}

QString WhyNotATuneName(const QString& code_name) {
  const Rule* const rule = BrokenRule(code_name);
  return rule == nullptr ? QString() : Words(*rule, code_name);
}

void RequireTuneName(const QString& code_name) {
  if (const Rule* const rule = BrokenRule(code_name))
    throw DatabaseError(rule->number, Words(*rule, code_name));
}

}  // namespace zelmar
