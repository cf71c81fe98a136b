#include "model/printed_list.h"

#include <QLocale>
#include <algorithm>

namespace zelmar {

namespace {

QString Quoted(const QString& value) {
  const bool needs_marks = std::any_of(
      value.begin(), value.end(), [](QChar c) { return c == u',' || c == u'"' || c == u'\n' || c == u'\r'; });
  // Readers drop blanks at the ends of a value that stands bare.
  if (!needs_marks && value == value.trimmed()) return value;
  QString doubled = value;
  doubled.replace(u'"', QStringLiteral("\"\""));
  return u'"' + doubled + u'"';
}

void AddLine(QString& text, const QStringList& values) {
  for (qsizetype i = 0; i < values.size(); ++i) {
    if (i > 0) text += u',';
    text += Quoted(values[i]);
  }
  text += QStringLiteral("\r\n");
}

}  // namespace

QString PrintedDate(const QDate& date) {
  return date.isValid() ? QLocale::c().toString(date, QStringLiteral("dd MMM yyyy")) : QString();
}

QByteArray CommaSeparated(const PrintedList& list) {
  const bool has_heads = std::any_of(list.groups.begin(), list.groups.end(),
                                     [](const PrintedGroup& group) { return !group.head.isEmpty(); });
  const auto line = [has_heads](const QString& head, const QStringList& cells) {
    return has_heads ? QStringList(head) + cells : cells;
  };
  QStringList headings, nothing;
  for (const PrintedColumn& column : list.columns) {
    headings.append(column.heading);
    nothing.append(QString());
  }
  QString text;
  AddLine(text, line(list.group_heading, headings));
  for (const PrintedGroup& group : list.groups) {
    if (group.rows.empty() && has_heads) AddLine(text, line(group.head, nothing));
    for (const QStringList& row : group.rows) AddLine(text, line(group.head, row));
  }
  return text.toUtf8();
}

}  // namespace zelmar
