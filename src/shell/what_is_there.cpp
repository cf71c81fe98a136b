#include "shell/what_is_there.h"

#include <QRegularExpression>
#include <algorithm>

#include "shell/command_table.h"

namespace zelmar {

namespace {

const QRegularExpression& Condition() {
  static const QRegularExpression condition(
      QStringLiteral("<!--(if|unless)\\s+([\\w\\s]+?)\\s*-->(.*?)<!--end-->"),
      QRegularExpression::DotMatchesEverythingOption);
  return condition;
}

QStringList NamesOf(const QRegularExpressionMatch& condition) {
  return condition.captured(2).simplified().split(QLatin1Char(' '));
}

}  // namespace

QString OnlyWhatIsThere(const QString& page) {
  QString kept;
  qsizetype from = 0;
  for (auto found = Condition().globalMatch(page); found.hasNext();) {
    const QRegularExpressionMatch condition = found.next();
    const QStringList names = NamesOf(condition);
    const bool there =
        std::any_of(names.begin(), names.end(), [](const QString& name) { return !IsMissing(name); });
    kept += QStringView(page).mid(from, condition.capturedStart() - from);
    if (there == (condition.captured(1) == QLatin1String("if"))) kept += condition.capturedView(3);
    from = condition.capturedEnd();
  }
  return kept += QStringView(page).mid(from);
}

void ForEachCondition(const QString& page, const std::function<void(const QString& name)>& take) {
  for (auto found = Condition().globalMatch(page); found.hasNext();)
    for (const QString& name : NamesOf(found.next())) take(name);
}

}  // namespace zelmar
