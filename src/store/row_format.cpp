#include "store/row_format.h"

#include "model/tune_text.h"
#include "store/recordset.h"

namespace zelmar {

RowFormat::RowFormat(const QString& format, const Recordset& rows) {
  QString words;
  int brackets = 0;
  int bracket = 0;
  for (qsizetype i = 0; i < format.size(); ++i) {
    const QChar c = format[i];
    if (c == u'[' || c == u']') {
      AddWords(words, bracket);
      bracket = c == u'[' ? ++brackets : 0;
    } else if (c == u'{') {
      AddWords(words, bracket);
      const qsizetype end = format.indexOf(u'}', i);
      if (end < 0) rows.Field(format.mid(i));  // which no row has
      pieces_.push_back({{}, rows.Field(format.mid(i + 1, end - i - 1)), bracket});
      i = end;
    } else {
      words += c;
    }
  }
  AddWords(words, bracket);
}

void RowFormat::AddWords(QString& words, int bracket) {
  if (!words.isEmpty()) pieces_.push_back({words, -1, bracket});
  words.clear();
}

QString RowFormat::Of(const Recordset& rows) const {
  QString text;
  int bracket = 0;
  qsizetype bracket_start = 0;
  bool names_nobody = false;
  const auto close = [&] {
    if (names_nobody) text.truncate(bracket_start);
    names_nobody = false;
    bracket_start = text.size();
  };
  for (const Piece& piece : pieces_) {
    if (piece.bracket != bracket) {
      close();
      bracket = piece.bracket;
    }
    if (piece.field < 0) {
      text += piece.words;
      continue;
    }
    const QString value = rows.Value(piece.field).toString();
    names_nobody = names_nobody || (bracket != 0 && NamedComposer(value).isEmpty());
    text += value;
  }
  close();
  return text;
}

}  // namespace zelmar
