#include "store/statement_entries.h"

#include "store/recordset.h"

namespace zelmar {

std::vector<ComboEntry> StatementEntries(const std::shared_ptr<Connection>& connection,
                                         const QString& statement, const QString& text_column,
                                         const QString& number_column) {
  const auto rows = Recordset::OpenStatement(connection, statement);
  const int text = rows->Field(text_column);
  const int number = number_column.isEmpty() ? -1 : rows->Field(number_column);
  std::vector<ComboEntry> entries;
  for (; !rows->Eof(); rows->MoveNext()) {
    const QString value = rows->TextOrBlank(text);
    if (value.trimmed().isEmpty()) continue;
    entries.push_back({value, number >= 0 ? rows->Number<std::int32_t>(number) : 0});
  }
  return entries;
}

}  // namespace zelmar
