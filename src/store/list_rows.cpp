#include "store/list_rows.h"

#include "store/recordset.h"

namespace zelmar {

PrintedGroup GroupOfRows(Recordset& rows, const QStringList& fields) {
  std::vector<int> numbers;
  for (const QString& field : fields) numbers.push_back(rows.Field(field));
  PrintedGroup group;
  for (; !rows.Eof(); rows.MoveNext()) {
    QStringList cells;
    cells.reserve(fields.size());
    for (const int number : numbers) cells.append(rows.Value(number).toString());
    group.rows.push_back(std::move(cells));
  }
  return group;
}

std::vector<PrintedGroup> GroupsOfShape(Recordset& shape, const QString& head, const QString& chapter,
                                        const QStringList& fields) {
  std::vector<PrintedGroup> groups;
  const int field = shape.Field(head);
  for (; !shape.Eof(); shape.MoveNext()) {
    PrintedGroup group = GroupOfRows(*shape.Chapter(chapter), fields);
    group.head = shape.Value(field).toString();
    groups.push_back(std::move(group));
  }
  return groups;
}

}  // namespace zelmar
