// What a printed list says: groups with a head and rows under it, and what stands before and behind them.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <vector>

namespace zelmar {

struct PrintedColumn {
  QString heading;
  double share = 1.0;  // of the width, beside those of the other columns
};

struct PrintedGroup {
  QString head = {};  // empty for rows that belong to none
  std::vector<QStringList> rows = {};
};

struct PrintedList {
  QString title;
  QString database_title = {};
  QDate date = {};
  QStringList preface = {};    // lines under the heading
  QString group_heading = {};  // what the heads of the groups are: "Composer"
  std::vector<PrintedColumn> columns = {};
  std::vector<PrintedGroup> groups = {};
  QStringList closing = {};  // lines at the end
  double point_size = 9.0;   // of the rows; headings are larger in proportion
};

// "21 Nov 2025".
QString PrintedDate(const QDate& date);

// The rows as comma-separated values in UTF-8, one line for each and one of headings above them; the head of
// its group is the first value of a row where groups have heads. A group without rows is a line with its head
// alone. Lines end as the standard for such files wants it, and a value that needs it stands between
// quotation marks.
QByteArray CommaSeparated(const PrintedList& list);

}  // namespace zelmar
