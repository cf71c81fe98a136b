#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QVariant>

#include "abc/abc_reader.h"
#include "store/schema.h"
#include "template/csv_table.h"
#include "template/template_builder.h"

namespace zelmar {
namespace {

const QString kBuilt = QStringLiteral(ZELMAR_BUILD_DIRECTORY "/ZelmarTemplate.mdb");
const QString kTunes = QStringLiteral(ZELMAR_SOURCE_DIRECTORY "/data/tunes/");
const QString kTables = QStringLiteral(ZELMAR_SOURCE_DIRECTORY "/data/tables/");

// A database read through a connection of the test's own; a copy, so that nothing is left beside the file.
class OpenDatabase {
 public:
  explicit OpenDatabase(const QString& path) {
    copy_ = folder_.filePath(QStringLiteral("copy.mdb"));
    EXPECT_TRUE(QFile::copy(path, copy_)) << path.toStdString();
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("test"));
    database.setDatabaseName(copy_);
    EXPECT_TRUE(database.open());
  }
  ~OpenDatabase() { QSqlDatabase::removeDatabase(QStringLiteral("test")); }
  OpenDatabase(const OpenDatabase&) = delete;
  OpenDatabase& operator=(const OpenDatabase&) = delete;

  // All values of all rows.
  QList<QVariantList> Rows(const QString& statement) const {
    QSqlQuery query(QSqlDatabase::database(QStringLiteral("test")));
    EXPECT_TRUE(query.exec(statement))
        << statement.toStdString() << ": " << query.lastError().text().toStdString();
    QList<QVariantList> rows;
    while (query.next()) {
      QVariantList row;
      for (int i = 0; i < query.record().count(); ++i) row.append(query.value(i));
      rows.append(row);
    }
    return rows;
  }
  QVariant Value(const QString& statement) const {
    const auto rows = Rows(statement);
    return rows.isEmpty() || rows[0].isEmpty() ? QVariant() : rows[0][0];
  }

 private:
  QTemporaryDir folder_;
  QString copy_;
};

QStringList TuneFiles() {
  QStringList paths;
  for (const QString& name : QDir(kTunes).entryList({QStringLiteral("*.abc")}, QDir::Files, QDir::Name))
    paths.append(kTunes + name);
  return paths;
}

void WriteFile(const QString& path, const QByteArray& text) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
  file.write(text);
}

// A small library in a folder of its own.
struct SmallLibrary {
  SmallLibrary() {
    QDir().mkpath(folder.filePath(QStringLiteral("tables")));
    QDir().mkpath(folder.filePath(QStringLiteral("tunes")));
    WriteFile(Table("tblComposer"),
              "COMPOSER,FIRST_NAME,BORN,DIED,NATIONAL,Style\n\"Various\",\"\",0,0,\"\",\"S\"\n");
    WriteFile(Table("tblCategory"), "Description,Category\n\"d\",\"C\"\n");
    WriteFile(Table("tblStyles"), "Style,FromYear,ToYear,Description\n\"S\",1,2,\n");
    WriteFile(Table("tblEnsemble"), "Ensemble\n\"E\"\n");
    WriteFile(Table("tblCountry"), "Country,Capital,Population,Area\n\"L\",\"\",1,1\n");
    WriteFile(
        Table("tblInstruments"),
        "InstrumentNo,InstrumentName,Family,Favourite,BestOctave,HighPitch,LowPitch\n0,\"I\",\"F\",1,4,,\n");
    WriteFile(Tune("one"), Text());
  }
  QString Table(const char* name) const {
    return folder.filePath(QStringLiteral("tables/%1.csv").arg(QLatin1String(name)));
  }
  QString Tune(const char* name) const {
    return folder.filePath(QStringLiteral("tunes/%1.abc").arg(QLatin1String(name)));
  }
  static QByteArray Text() {
    return "X:1\nT:t\n%%zelmar-category C\n%%zelmar-style S\n%%zelmar-ensemble E\n%%zelmar-instrument I\n"
           "%%zelmar-country L\nM:4/4\nL:1/4\nK:C\nC4 |\n";
  }
  QString Output() const { return folder.filePath(QStringLiteral("out.mdb")); }
  std::string Mistake() const {
    try {
      BuildTemplate(folder.path(), Output());
    } catch (const Failure& failure) {
      return failure.what();
    }
    return "no mistake";
  }

  QTemporaryDir folder;
};

TEST(Template, BuiltFileStandsAloneAndUsesWriteAheadLogging) {
  ASSERT_TRUE(QFile::exists(kBuilt));
  for (const char* ending : {"-wal", "-shm", "-journal", ".new", ".new-wal"})
    EXPECT_FALSE(QFile::exists(kBuilt + QLatin1String(ending))) << ending;
  const OpenDatabase database(kBuilt);
  EXPECT_EQ(database.Value(QStringLiteral("PRAGMA journal_mode")).toString(), QStringLiteral("wal"));
  EXPECT_EQ(database.Value(QStringLiteral("PRAGMA integrity_check")).toString(), QStringLiteral("ok"));
}

TEST(Template, HasEveryTableOfTheSchemaAndOneForEachTune) {
  const OpenDatabase database(kBuilt);
  QStringList tables;
  for (const QVariantList& row :
       database.Rows(QStringLiteral("SELECT name FROM sqlite_master WHERE type='table'")))
    tables.append(row[0].toString());
  for (const QString& statement : SchemaStatements()) {
    const QString name = statement.section(u'[', 1).section(u']', 0, 0);
    EXPECT_TRUE(tables.contains(name)) << name.toStdString();
  }
  EXPECT_EQ(tables.size(), SchemaStatements().size() + 16);
  EXPECT_EQ(database.Value(QStringLiteral("SELECT count(*) FROM tblMelodies")).toInt(), 16);
  EXPECT_EQ(database.Value(QStringLiteral("SELECT count(*) FROM TemplateTune")).toInt(), 0);
  EXPECT_EQ(database.Value(QStringLiteral("SELECT count(*) FROM tblDBInfo")).toInt(), 1);
}

TEST(Template, HasTheIndexesOfALibrary) {
  const OpenDatabase database(kBuilt);
  for (const LibraryIndex& index : LibraryIndexes())
    EXPECT_EQ(database
                  .Value(QStringLiteral("SELECT tbl_name FROM sqlite_master WHERE type='index' AND name='%1'")
                             .arg(index.name))
                  .toString(),
              index.table);
}

TEST(Template, ReferenceTablesHoldTheRowsOfTheirTexts) {
  const OpenDatabase database(kBuilt);
  for (const QString& name : QDir(kTables).entryList({QStringLiteral("*.csv")}, QDir::Files)) {
    const CsvTable csv = ReadCsvFile(kTables + name);
    const QString table = name.chopped(4);
    const auto rows = database.Rows(QStringLiteral("SELECT [%1] FROM [%2] ORDER BY rowid")
                                        .arg(csv.columns.join(QStringLiteral("],[")), table));
    ASSERT_EQ(rows.size(), static_cast<qsizetype>(csv.rows.size())) << table.toStdString();
    for (qsizetype i = 0; i < rows.size(); ++i)
      for (qsizetype column = 0; column < csv.columns.size(); ++column)
        EXPECT_EQ(rows[i][column].toString(), csv.rows[static_cast<std::size_t>(i)].cells[column])
            << table.toStdString() << " row " << i;
  }
  EXPECT_EQ(database.Value(QStringLiteral("SELECT typeof(BORN) FROM tblComposer")).toString(),
            QStringLiteral("integer"));
}

TEST(Template, EventTablesHoldTheNotesOfTheTexts) {
  const OpenDatabase database(kBuilt);
  for (const QString& path : TuneFiles()) {
    const AbcTune tune = ReadAbcFile(path);
    const auto rows = database.Rows(
        QStringLiteral(
            "SELECT EventType,AbsRef,Bar,Beat,Tick,Track,Duration,Instrument,Pitch,Volume,EnHarmonic "
            "FROM [%1] ORDER BY AbsRef")
            .arg(tune.catalogue.code_name));
    ASSERT_EQ(rows.size(), static_cast<qsizetype>(tune.events.size())) << path.toStdString();
    for (qsizetype i = 0; i < rows.size(); ++i) {
      const AbcEvent& event = tune.events[static_cast<std::size_t>(i)];
      const QVariantList expected = {event.event_type, event.abs_ref, event.bar,       event.beat,
                                     event.tick,       event.track,   event.duration,  event.instrument,
                                     event.pitch,      event.volume,  event.enharmonic};
      for (qsizetype column = 0; column < expected.size(); ++column)
        EXPECT_EQ(rows[i][column].toString(), expected[column].toString())
            << path.toStdString() << " event " << i;
    }
  }
}

TEST(Template, CatalogueTracksWordsAndThemesAreThoseOfTheTexts) {
  const OpenDatabase database(kBuilt);
  for (const QString& path : TuneFiles()) {
    const AbcTune tune = ReadAbcFile(path);
    const QString& name = tune.catalogue.code_name;
    const auto rows =
        database.Rows(QStringLiteral("SELECT * FROM tblMelodies WHERE CodeName = '%1'").arg(name));
    ASSERT_EQ(rows.size(), 1) << name.toStdString();
    const AbcCatalogue& catalogue = tune.catalogue;
    const QVariantList expected = {name,
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
                                   255,
                                   tune.melody_track,
                                   catalogue.rank,
                                   static_cast<int>(tune.events.size())};
    EXPECT_EQ(rows[0], expected) << name.toStdString();

    const auto tracks = database.Rows(
        QStringLiteral(
            "SELECT TrackNo,TrackName,Channel,DefaultInstrument,Muted,DefaultBankMSB,DefaultBankLSB "
            "FROM tblTracks WHERE CodeName = '%1' ORDER BY TrackNo")
            .arg(name));
    ASSERT_EQ(tracks.size(), static_cast<qsizetype>(tune.tracks.size()));
    for (qsizetype i = 0; i < tracks.size(); ++i) {
      const AbcTrack& track = tune.tracks[static_cast<std::size_t>(i)];
      EXPECT_EQ(tracks[i],
                (QVariantList{track.number, track.name, track.channel, track.instrument, 0, 0, 0}));
    }
    const auto words = database.Rows(
        QStringLiteral(
            "SELECT Bar,Beat,Tick,WordText FROM tblWords WHERE FileName = '%1' ORDER BY Bar,Beat,Tick")
            .arg(name));
    ASSERT_EQ(words.size(), static_cast<qsizetype>(tune.words.size()));
    for (qsizetype i = 0; i < words.size(); ++i) {
      const AbcWord& word = tune.words[static_cast<std::size_t>(i)];
      EXPECT_EQ(words[i], (QVariantList{word.bar, word.beat, word.tick, word.text}));
    }
    const auto themes = database.Rows(
        QStringLiteral("SELECT ThemeNo,ThemeStartBar,ThemeEndBar,ThemeNotes,ThemeTrackNo,Rank FROM tblThemes "
                       "WHERE CodeName = '%1' ORDER BY ThemeNo")
            .arg(name));
    ASSERT_EQ(themes.size(), static_cast<qsizetype>(tune.themes.size()));
    for (qsizetype i = 0; i < themes.size(); ++i) {
      const AbcTheme& theme = tune.themes[static_cast<std::size_t>(i)];
      EXPECT_EQ(themes[i], (QVariantList{theme.number, theme.start_bar, theme.end_bar, theme.text,
                                         theme.track, theme.rank}));
    }
  }
}

TEST(TemplateBuilder, ASmallLibraryBuilds) {
  const SmallLibrary library;
  ASSERT_EQ(library.Mistake(), "no mistake");
  const OpenDatabase database(library.Output());
  EXPECT_EQ(database.Value(QStringLiteral("SELECT Pitch FROM [one]")).toString(), QStringLiteral("C4"));
  EXPECT_EQ(database.Value(QStringLiteral("SELECT Category FROM tblCategory")).toString(),
            QStringLiteral("C"));
  EXPECT_TRUE(database.Value(QStringLiteral("SELECT HighPitch FROM tblInstruments")).isNull());
}

TEST(TemplateBuilder, ATuneIsAddedByAddingAText) {
  const SmallLibrary library;
  WriteFile(library.Tune("two"), SmallLibrary::Text());
  ASSERT_EQ(library.Mistake(), "no mistake");
  const OpenDatabase database(library.Output());
  EXPECT_EQ(database.Value(QStringLiteral("SELECT count(*) FROM tblMelodies")).toInt(), 2);
}

TEST(TemplateBuilder, AMistakeLeavesTheFormerDatabaseAsItWas) {
  const SmallLibrary library;
  ASSERT_EQ(library.Mistake(), "no mistake");
  WriteFile(library.Tune("two"), "X:1\nT:t\n");
  EXPECT_EQ(library.Mistake(), "two.abc:3:1: The header ends without a key (K:).");
  EXPECT_EQ(QDir(library.folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("out.mdb")});
  const OpenDatabase database(library.Output());
  EXPECT_EQ(database.Value(QStringLiteral("SELECT count(*) FROM tblMelodies")).toInt(), 1);
}

TEST(TemplateBuilder, AValueThatNoTableHasIsRefused) {
  for (const char* line : {"category", "style", "ensemble", "instrument", "country", "composer"}) {
    const SmallLibrary library;
    QByteArray text = SmallLibrary::Text();
    text.insert(text.indexOf("M:4/4"), QByteArray("%%zelmar-") + line + " Unheard\n");
    WriteFile(library.Tune("two"), text);
    const std::string mistake = library.Mistake();
    EXPECT_NE(mistake.find("two.abc:1:1: two: tbl"), std::string::npos) << mistake;
    EXPECT_NE(mistake.find("has no row \"Unheard\"."), std::string::npos) << mistake;
    EXPECT_FALSE(QFile::exists(library.Output()));
  }
}

TEST(TemplateBuilder, AnUnknownLengthWordIsRefused) {
  const SmallLibrary library;
  QByteArray text = SmallLibrary::Text();
  text.insert(text.indexOf("M:4/4"), "%%zelmar-length Endless\n");
  WriteFile(library.Tune("two"), text);
  EXPECT_EQ(library.Mistake(), "two.abc:1:1: two: The length is Full, Extract or Theme.");
}

TEST(TemplateBuilder, ADuplicateCodeNameIsRefusedWhateverItsCase) {
  const SmallLibrary library;
  QByteArray text = SmallLibrary::Text();
  text.insert(text.indexOf("M:4/4"), "%%zelmar-codename ONE\n");
  WriteFile(library.Tune("two"), text);
  EXPECT_EQ(library.Mistake(), "two.abc:1:1: The CodeName ONE is that of one.abc too.");
}

TEST(TemplateBuilder, ACodeNameOfATableIsRefused) {
  const SmallLibrary library;
  QByteArray text = SmallLibrary::Text();
  text.insert(text.indexOf("M:4/4"), "%%zelmar-codename tblmelodies\n");
  WriteFile(library.Tune("two"), text);
  EXPECT_NE(library.Mistake().find("two.abc:1:1: "), std::string::npos);
}

TEST(TemplateBuilder, MistakesInTablesAreToldWithTheirPlace) {
  const struct {
    const char* table;
    const char* text;
    const char* mistake;
  } rows[] = {
      {"tblStyles", "Style,FromYear,ToYear,Description\n\"S\",1,x,\n",
       "tblStyles.csv:2:7: This column holds whole numbers, and \"x\" is none."},
      {"tblStyles", "Style,FromYear,Description\n\"S\",1,\n",
       "tblStyles.csv:1:1: The column ToYear is missing."},
      {"tblEnsemble", "Ensemble,More\n\"E\",1\n", "tblEnsemble.csv:1:1: The table has 1 columns, not 2."},
      {"tblEnsemble", "Ensemble\n\"E\",\"F\"\n",
       "tblEnsemble.csv:2:1: This row has 2 cells where the table has 1 columns."},
      {"tblOther", "a\n", "tblOther.csv:1:1: The database has no such table."},
      {"tblInstruments",
       "InstrumentNo,InstrumentName,Family,Favourite,BestOctave,HighPitch,LowPitch\n0,\"I\",\"F\",2,4,,\n",
       "tblInstruments.csv:2:11: This column holds 0 or 1."}};
  for (const auto& row : rows) {
    const SmallLibrary library;
    WriteFile(library.Table(row.table), row.text);
    EXPECT_EQ(library.Mistake(), row.mistake);
  }
  const SmallLibrary library;
  WriteFile(library.Table("tblEnsemble"), "Ensemble\n\"E\"\n\"E\"\n");
  EXPECT_EQ(library.Mistake().substr(0, 21), "tblEnsemble.csv:3:1: ");
}

TEST(TemplateBuilder, AMissingFolderIsAFailure) {
  EXPECT_THROW(BuildTemplate(QStringLiteral("/nowhere"), QStringLiteral("/nowhere.mdb")), Failure);
}

}  // namespace
}  // namespace zelmar
