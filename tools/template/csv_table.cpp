#include "template/csv_table.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

namespace zelmar {

namespace {

class CsvReader {
 public:
  CsvReader(const QString& text, const QString& file) : text_(text), file_(file) {}

  CsvTable Read() {
    CsvTable table;
    const CsvTable::Row header = ReadRow();
    for (qsizetype i = 0; i < header.cells.size(); ++i) {
      const QString name = header.cells[i];
      const TextPosition position = header.positions[static_cast<std::size_t>(i)];
      if (name.isEmpty()) Fail(position, QStringLiteral("A column has no name."));
      if (table.columns.contains(name, Qt::CaseInsensitive))
        Fail(position, QStringLiteral("There are two columns %1.").arg(name));
      table.columns.append(name);
    }
    while (index_ < text_.size()) {
      const CsvTable::Row row = ReadRow();
      if (row.cells.size() == 1 && row.cells[0].isNull()) continue;  // an empty line
      if (row.cells.size() != table.columns.size())
        Fail({row.line, 1}, QStringLiteral("This row has %1 cells where the table has %2 columns.")
                                .arg(row.cells.size())
                                .arg(table.columns.size()));
      table.rows.push_back(row);
    }
    return table;
  }

 private:
  [[noreturn]] void Fail(TextPosition position, const QString& sentence) const {
    throw TextError(position, sentence, file_);
  }

  TextPosition Position() const { return {line_, static_cast<int>(index_ - line_start_) + 1}; }
  bool AtLineEnd() const {
    return index_ >= text_.size() || text_[index_] == u'\n' || text_[index_] == u'\r';
  }
  void PassLineEnd() {
    if (index_ < text_.size() && text_[index_] == u'\r') ++index_;
    if (index_ < text_.size() && text_[index_] == u'\n') ++index_;
    ++line_;
    line_start_ = index_;
  }

  CsvTable::Row ReadRow() {
    CsvTable::Row row;
    row.line = line_;
    while (true) {
      row.positions.push_back(Position());
      row.cells.append(index_ < text_.size() && text_[index_] == u'"' ? ReadQuoted() : ReadPlain());
      if (index_ < text_.size() && text_[index_] == u',') {
        ++index_;
        continue;
      }
      PassLineEnd();
      return row;
    }
  }

  QString ReadPlain() {
    const qsizetype start = index_;
    while (!AtLineEnd() && text_[index_] != u',') {
      if (text_[index_] == u'"')
        Fail(Position(), QStringLiteral("A quotation mark stands only around a whole cell."));
      ++index_;
    }
    const QString cell = text_.mid(start, index_ - start).trimmed();
    return cell.isEmpty() ? QString() : cell;
  }

  QString ReadQuoted() {
    const TextPosition start = Position();
    ++index_;
    QString cell = QStringLiteral("");
    while (true) {
      if (index_ >= text_.size()) Fail(start, QStringLiteral("The quotation mark is never closed."));
      const QChar c = text_[index_++];
      if (c == u'"') {
        if (index_ >= text_.size() || text_[index_] != u'"') break;
        ++index_;
      }
      cell += c;
      if (c == u'\n') {
        ++line_;
        line_start_ = index_;
      }
    }
    if (!AtLineEnd() && text_[index_] != u',')
      Fail(Position(), QStringLiteral("A comma or the end of the line must follow the quotation mark."));
    return cell;
  }

  const QString& text_;
  QString file_;
  qsizetype index_ = 0;
  int line_ = 1;
  qsizetype line_start_ = 0;
};

}  // namespace

CsvTable ReadCsv(const QByteArray& text, const QString& file) {
  const QString name = QFileInfo(file).fileName();
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QString decoded = decoder(text);
  if (decoder.hasError()) {
    const qsizetype bad = qMax<qsizetype>(decoded.indexOf(QChar::ReplacementCharacter), 0);
    const QStringView before = QStringView(decoded).first(bad);
    throw TextError({static_cast<int>(before.count(u'\n')) + 1,
                     static_cast<int>(before.size() - before.lastIndexOf(u'\n'))},
                    QStringLiteral("The text is not UTF-8."), name);
  }
  return CsvReader(decoded, name).Read();
}

CsvTable ReadCsvFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    throw Failure(error_number::kFileAccess,
                  QStringLiteral("The table %1 cannot be read: %2.").arg(path, file.errorString()));
  return ReadCsv(file.readAll(), path);
}

}  // namespace zelmar
