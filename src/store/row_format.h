// A text made of the fields of a row.
#pragma once

#include <QString>
#include <vector>

namespace zelmar {

class Recordset;

// "{Title}[  by {Composer}] - {Length}": a name between braces stands for that field of the row, and for
// nothing where it holds a null. What stands between square brackets is left out where a field in it names
// nobody: it is empty or "Various".
class RowFormat {
 public:
  // Throws DatabaseError (kItemNotFound) for a field that the rows do not have.
  RowFormat(const QString& format, const Recordset& rows);

  // For the current row of rows with the same fields.
  QString Of(const Recordset& rows) const;

 private:
  struct Piece {
    QString words;
    int field = -1;   // -1 for words alone
    int bracket = 0;  // pieces of one bracket have one number; 0 stands in none
  };

  void AddWords(QString& words, int bracket);

  std::vector<Piece> pieces_;
};

}  // namespace zelmar
