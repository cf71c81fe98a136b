#include "shell/command_table.h"

#include <QLatin1String>
#include <algorithm>

#include "platform/failure.h"
#include "platform/mnemonics.h"

namespace zelmar {

namespace {

std::vector<std::span<const CommandRow>>& Tables() {
  static std::vector<std::span<const CommandRow>> tables;
  return tables;
}

auto Find(std::span<const CommandRow> rows) {
  return std::find_if(Tables().begin(), Tables().end(),
                      [rows](const auto& table) { return table.data() == rows.data(); });
}

// The first row that is as told; null when none is.
template <typename Wanted>
const CommandRow* FirstRow(Wanted wanted) {
  for (const auto& table : Tables())
    for (const CommandRow& row : table)
      if (wanted(row)) return &row;
  return nullptr;
}

bool LeadsTo(const CommandRow& row, const QString& window) {
  return row.window[0] != '\0' && window == QLatin1String(row.window);
}

bool BringsItsWindow(const CommandRow& row) {
  return row.make || row.show || row.made_by_owner;
}

bool IsCommand(const CommandRow& row) {
  return row.kind == CommandRow::Kind::kItem || row.kind == CommandRow::Kind::kTopLevelItem;
}

bool IsThere(const CommandRow& row) {
  return row.window[0] == '\0' ? static_cast<bool>(row.act)
                               : BringsItsWindow(*RowOfWindow(QLatin1String(row.window)));
}

}  // namespace

void AddCommands(std::span<const CommandRow> rows) {
  if (Find(rows) == Tables().end()) Tables().push_back(rows);
}

void RemoveCommands(std::span<const CommandRow> rows) {
  if (const auto table = Find(rows); table != Tables().end()) Tables().erase(table);
}

std::vector<const CommandRow*> Commands() {
  std::vector<const CommandRow*> rows;
  for (const auto& table : Tables())
    for (const CommandRow& row : table) rows.push_back(&row);
  return rows;
}

QString NameOf(const CommandRow& row) {
  const QLatin1String name(row.name[0] != '\0' ? row.name : row.window);
  return row.index == 0 ? QString(name) : QStringLiteral("%1(%2)").arg(name).arg(row.index);
}

const CommandRow* FindCommand(const QString& name) {
  const CommandRow* const named =
      FirstRow([&name](const CommandRow& row) { return IsCommand(row) && NameOf(row) == name; });
  return named != nullptr ? named : RowOfWindow(name);
}

const CommandRow* RowOfWindow(const QString& window) {
  const CommandRow* const own =
      FirstRow([&window](const CommandRow& row) { return LeadsTo(row, window) && BringsItsWindow(row); });
  return own != nullptr ? own : FirstRow([&window](const CommandRow& row) { return LeadsTo(row, window); });
}

QStringList RegisteredWindows() {
  QStringList names;
  for (const CommandRow* row : Commands())
    if (row->make) names.append(QLatin1String(row->window));
  names.sort();
  names.removeDuplicates();
  return names;
}

bool IsPartOfThisVersion(const QString& window) {
  const CommandRow* const row = RowOfWindow(window);
  if (row == nullptr)
    throw Failure(error_number::kInvalidCall, QStringLiteral("There is no window named %1.").arg(window));
  return BringsItsWindow(*row);
}

bool IsMissing(const QString& name) {
  const CommandRow* const row = FindCommand(name);
  return row != nullptr && !IsThere(*row);
}

QString WordsForMissing(const QString& caption) {
  return WithoutMnemonic(caption) + QStringLiteral(" is not part of this version.");
}

int HelpContextOf(const QString& window) {
  const CommandRow* const row = RowOfWindow(window);
  return row != nullptr ? row->help_context : 0;
}

QString HelpPageOf(int help_context) {
  const CommandRow* const row = FirstRow([help_context](const CommandRow& candidate) {
    return candidate.help_context == help_context && candidate.help_page[0] != '\0';
  });
  return row != nullptr ? QString(QLatin1String(row->help_page)) : QString();
}

}  // namespace zelmar
