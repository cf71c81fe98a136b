#include "template/template_builder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>
#include <algorithm>
#include <filesystem>

#include "abc/abc_reader.h"
#include "store/schema.h"
#include "template/csv_table.h"

namespace zelmar {

namespace {

constexpr char16_t kConnection[] = u"template builder";

[[noreturn]] void FailFor(const QString& what, const QString& why) {
  throw Failure(error_number::kInvalidCall, QStringLiteral("%1: %2").arg(what, why));
}

void RemoveDatabase(const QString& path) {
  for (const char16_t* ending : {u"", u"-wal", u"-shm", u"-journal"})
    QFile::remove(path + QString::fromUtf16(ending));
}

// An open database file, closed and forgotten with its owner.
class DatabaseFile {
 public:
  explicit DatabaseFile(const QString& path) {
    QSqlDatabase database =
        QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QString::fromUtf16(kConnection));
    database.setDatabaseName(path);
    if (!database.open()) FailFor(path, database.lastError().text());
  }
  ~DatabaseFile() {
    Database().close();
    QSqlDatabase::removeDatabase(QString::fromUtf16(kConnection));
  }
  DatabaseFile(const DatabaseFile&) = delete;
  DatabaseFile& operator=(const DatabaseFile&) = delete;

  static QSqlDatabase Database() { return QSqlDatabase::database(QString::fromUtf16(kConnection)); }

  void Run(const QString& statement) {
    QSqlQuery query(Database());
    if (!query.exec(statement)) FailFor(statement, query.lastError().text());
  }
  // Column names of a table in order, with their types; empty when there is no such table.
  QList<QPair<QString, QString>> Columns(const QString& table) {
    QSqlQuery query(Database());
    if (!query.exec(QStringLiteral("PRAGMA table_info([%1])").arg(table)))
      FailFor(table, query.lastError().text());
    QList<QPair<QString, QString>> columns;
    while (query.next()) columns.append({query.value(1).toString(), query.value(2).toString()});
    return columns;
  }
  bool Has(const QString& table, const QString& column, const QString& value) {
    QSqlQuery query(Database());
    query.prepare(QStringLiteral("SELECT 1 FROM [%1] WHERE [%2] = ?").arg(table, column));
    query.addBindValue(value);
    return query.exec() && query.next();
  }
};

// Inserts rows into one table, all its columns in order.
class RowWriter {
 public:
  RowWriter(DatabaseFile& file, const QString& table) : table_(table), query_(DatabaseFile::Database()) {
    const qsizetype count = file.Columns(table).size();
    const QString marks = QStringList(count, QStringLiteral("?")).join(u',');
    if (!query_.prepare(QStringLiteral("INSERT INTO [%1] VALUES (%2)").arg(table, marks)))
      FailFor(table, query_.lastError().text());
  }
  void Write(const QVariantList& values) {
    for (qsizetype i = 0; i < values.size(); ++i) query_.bindValue(static_cast<int>(i), values[i]);
    if (!query_.exec()) FailFor(table_, query_.lastError().text());
  }

 private:
  QString table_;
  QSqlQuery query_;
};

QVariant CellValue(const QString& cell, const QString& type, TextPosition position, const QString& file) {
  if (cell.isNull()) return QVariant(QMetaType::fromType<QString>());
  if (type == QStringLiteral("TEXT")) return cell;
  bool is_number = false;
  const int number = cell.toInt(&is_number);
  if (!is_number || (type == QStringLiteral("BOOLEAN") && number != 0 && number != 1))
    throw TextError(position,
                    type == QStringLiteral("BOOLEAN")
                        ? QStringLiteral("This column holds 0 or 1.")
                        : QStringLiteral("This column holds whole numbers, and \"%1\" is none.").arg(cell),
                    file);
  return number;
}

void WriteTable(DatabaseFile& file, const QFileInfo& source) {
  const QString table = source.completeBaseName();
  const CsvTable csv = ReadCsvFile(source.filePath());
  const auto columns = file.Columns(table);
  if (columns.isEmpty())
    throw TextError({}, QStringLiteral("The database has no such table."), source.fileName());
  QList<qsizetype> sources;
  for (const auto& [name, type] : columns) {
    const auto same_name = [&name = name](const QString& column) {
      return column.compare(name, Qt::CaseInsensitive) == 0;
    };
    const qsizetype index = std::ranges::find_if(csv.columns, same_name) - csv.columns.begin();
    if (index == csv.columns.size())
      throw TextError({}, QStringLiteral("The column %1 is missing.").arg(name), source.fileName());
    sources.append(index);
  }
  if (csv.columns.size() != columns.size())
    throw TextError(
        {}, QStringLiteral("The table has %1 columns, not %2.").arg(columns.size()).arg(csv.columns.size()),
        source.fileName());
  RowWriter writer(file, table);
  for (const CsvTable::Row& row : csv.rows) {
    QVariantList values;
    for (qsizetype i = 0; i < columns.size(); ++i)
      values.append(CellValue(row.cells[sources[i]], columns[i].second,
                              row.positions[static_cast<std::size_t>(sources[i])], source.fileName()));
    try {
      writer.Write(values);
    } catch (const Failure& failure) {
      throw TextError({row.line, 1}, failure.Description(), source.fileName());
    }
  }
}

// Every value of the catalogue must be one that a browser can find.
void CheckCatalogue(DatabaseFile& file, const AbcCatalogue& catalogue) {
  const struct {
    const char16_t* table;
    const char16_t* column;
    QString value;
  } links[] = {
      {u"tblComposer", u"COMPOSER", catalogue.composer},
      {u"tblCategory", u"Category", catalogue.category},
      {u"tblStyles", u"Style", catalogue.style},
      {u"tblEnsemble", u"Ensemble", catalogue.ensemble},
      {u"tblCountry", u"Country", catalogue.country},
      {u"tblInstruments", u"InstrumentName", catalogue.solo_instrument},
  };
  for (const auto& link : links) {
    const QString table = QString::fromUtf16(link.table);
    if (!file.Has(table, QString::fromUtf16(link.column), link.value))
      FailFor(catalogue.code_name, QStringLiteral("%1 has no row \"%2\".").arg(table, link.value));
  }
  static const QStringList lengths = {QStringLiteral("Full"), QStringLiteral("Extract"),
                                      QStringLiteral("Theme")};
  if (!lengths.contains(catalogue.length))
    FailFor(catalogue.code_name, QStringLiteral("The length is Full, Extract or Theme."));
}

void WriteEvents(DatabaseFile& file, const AbcTune& tune) {
  file.Run(EventTableStatement(tune.catalogue.code_name));
  RowWriter writer(file, tune.catalogue.code_name);
  for (const AbcEvent& event : tune.events)
    writer.Write({event.event_type, event.abs_ref, event.bar, event.beat, event.tick, event.track,
                  event.duration, event.instrument, event.pitch, event.volume, event.enharmonic});
}

void WriteTune(DatabaseFile& file, const AbcTune& tune) {
  const AbcCatalogue& catalogue = tune.catalogue;
  const QString& code_name = catalogue.code_name;
  constexpr int kNoPattern = 255;
  RowWriter(file, QStringLiteral("tblMelodies"))
      .Write({code_name,
              catalogue.title,
              catalogue.description,
              catalogue.composer,
              catalogue.country,
              catalogue.category,
              catalogue.solo_instrument,
              catalogue.ensemble,
              catalogue.length,
              catalogue.style,
              tune.beat_length,
              tune.beats_per_bar,
              tune.key_mode,
              tune.key_signature,
              tune.tempo,
              QStringLiteral("GM"),
              kNoPattern,
              tune.melody_track,
              catalogue.rank,
              static_cast<int>(tune.events.size())});
  RowWriter tracks(file, QStringLiteral("tblTracks"));
  for (const AbcTrack& track : tune.tracks)
    tracks.Write({code_name, track.number, track.name, track.channel, track.instrument, 0, 0, 0});
  RowWriter words(file, QStringLiteral("tblWords"));
  for (const AbcWord& word : tune.words) words.Write({code_name, word.bar, word.beat, word.tick, word.text});
  RowWriter themes(file, QStringLiteral("tblThemes"));
  for (const AbcTheme& theme : tune.themes)
    themes.Write(
        {code_name, theme.number, theme.start_bar, theme.end_bar, theme.text, theme.track, theme.rank});
  WriteEvents(file, tune);
}

void WriteTunes(DatabaseFile& file, const QDir& folder) {
  QHash<QString, QString> files;  // by CodeName in lower case
  for (const QFileInfo& source : folder.entryInfoList({QStringLiteral("*.abc")}, QDir::Files, QDir::Name)) {
    const AbcTune tune = ReadAbcFile(source.filePath());
    const QString name = tune.catalogue.code_name.toLower();
    if (files.contains(name))
      throw TextError(
          {}, QStringLiteral("The CodeName %1 is that of %2 too.").arg(tune.catalogue.code_name, files[name]),
          source.fileName());
    files[name] = source.fileName();
    try {
      CheckCatalogue(file, tune.catalogue);
      WriteTune(file, tune);
    } catch (const Failure& failure) {
      throw TextError({}, failure.Description(), source.fileName());
    }
  }
}

void Fill(const QString& path, const QString& data_folder) {
  DatabaseFile file(path);
  file.Run(QStringLiteral("PRAGMA journal_mode = WAL"));
  file.Run(QStringLiteral("BEGIN"));
  for (const QString& statement : SchemaStatements()) file.Run(statement);
  for (const LibraryIndex& index : LibraryIndexes()) file.Run(IndexStatement(index));
  const QDir tables(data_folder + QStringLiteral("/tables"));
  for (const QFileInfo& source : tables.entryInfoList({QStringLiteral("*.csv")}, QDir::Files, QDir::Name))
    WriteTable(file, source);
  WriteTunes(file, QDir(data_folder + QStringLiteral("/tunes")));
  file.Run(QStringLiteral("COMMIT"));
  file.Run(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
}

}  // namespace

void BuildTemplate(const QString& data_folder, const QString& output) {
  if (!QDir(data_folder).exists()) FailFor(data_folder, QStringLiteral("there is no such folder."));
  const QString fresh = output + QStringLiteral(".new");
  RemoveDatabase(fresh);
  try {
    Fill(fresh, data_folder);
  } catch (...) {
    RemoveDatabase(fresh);
    throw;
  }
  std::error_code error;
  std::filesystem::rename(fresh.toStdU16String(), output.toStdU16String(), error);
  if (error) {
    RemoveDatabase(fresh);
    FailFor(output, QString::fromStdString(error.message()));
  }
}

}  // namespace zelmar
