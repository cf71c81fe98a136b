// What a statement of the system is to the engine.
#pragma once

#include <QString>
#include <optional>

namespace zelmar {

// A new table with the columns of another, and the rows that go into it.
struct TableCopy {
  QString target;  // bare names, without brackets
  QString source;
  QString rows;  // the SELECT that gives the rows
};

// Parent rows, and for each its child rows: those whose child column equals the parent column.
struct Shape {
  QString parent;  // engine statements
  QString child;
  QString chapter;
  QString parent_column;
  QString child_column;
};

// A statement in the engine's form. Exactly one of `sql`, `copy` and `shape` is filled.
struct EngineStatement {
  QString sql;
  std::optional<TableCopy> copy;
  std::optional<Shape> shape;
  bool gives_rows = false;
  // For plain rows of one table when their identity was asked for: that table. The identity is then the first
  // column.
  QString table;
};

}  // namespace zelmar
