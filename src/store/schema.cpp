#include "store/schema.h"

namespace zelmar {

namespace {

// Columns that hold a CodeName compare without regard to case; all other text compares exactly as stored.
struct TableDefinition {
  const char* name;
  const char* columns;
};

constexpr char kEventColumns[] =
    "EventType INTEGER, AbsRef INTEGER, Bar INTEGER, Beat INTEGER, Tick INTEGER, Track INTEGER, Duration "
    "REAL, "
    "Instrument INTEGER, Pitch TEXT, Volume INTEGER, EnHarmonic TEXT";

constexpr TableDefinition kTables[] = {
    {"tblMelodies",
     "CodeName TEXT COLLATE NOCASE PRIMARY KEY, Title TEXT, Description TEXT, Composer TEXT, Country TEXT, "
     "Category TEXT, SoloInstrument TEXT, Ensemble TEXT, Length TEXT, Style TEXT, BeatLength INTEGER, "
     "BeatsPerBar INTEGER, KeyMode INTEGER, KeySignature INTEGER, Tempo INTEGER, MIDIMode TEXT, "
     "AccompPattern INTEGER, MelodyTrack INTEGER, Rank INTEGER, LastAbsRef INTEGER"},
    {"tblTracks",
     "CodeName TEXT COLLATE NOCASE, TrackNo INTEGER, TrackName TEXT, Channel INTEGER, DefaultInstrument "
     "INTEGER, "
     "Muted BOOLEAN, DefaultBankMSB INTEGER, DefaultBankLSB INTEGER"},
    {"tblWords", "FileName TEXT COLLATE NOCASE, Bar INTEGER, Beat INTEGER, Tick INTEGER, WordText TEXT"},
    {"tblThemes",
     "CodeName TEXT COLLATE NOCASE, ThemeNo INTEGER, ThemeStartBar INTEGER, ThemeEndBar INTEGER, ThemeNotes "
     "TEXT, "
     "ThemeTrackNo INTEGER, Rank INTEGER"},
    {"TemplateTune", kEventColumns},
    {"tblComposer",
     "COMPOSER TEXT PRIMARY KEY, FIRST_NAME TEXT, BORN INTEGER, DIED INTEGER, NATIONAL TEXT, Style TEXT"},
    {"tblCategory", "Category TEXT PRIMARY KEY, Description TEXT"},
    {"tblStyles", "Style TEXT PRIMARY KEY, FromYear INTEGER, ToYear INTEGER, Description TEXT"},
    {"tblEnsemble", "Ensemble TEXT PRIMARY KEY"},
    {"tblCountry", "Country TEXT PRIMARY KEY, Capital TEXT, Population INTEGER, Area INTEGER"},
    {"tblInstruments",
     "InstrumentNo INTEGER PRIMARY KEY, InstrumentName TEXT, Family TEXT, Favourite BOOLEAN, BestOctave "
     "INTEGER, "
     "HighPitch TEXT, LowPitch TEXT"},
    {"tblFamily", "Family TEXT PRIMARY KEY"},
    {"tblKingsEngland", "FirstYear INTEGER, MainText TEXT PRIMARY KEY, Description TEXT"},
    {"tblWorldEvents", "FirstYear INTEGER, MainText TEXT"},
    {"tblAustraliaNZ", "FirstYear INTEGER, MainText TEXT"},
    {"tblAmericas", "FirstYear INTEGER, MainText TEXT"},
    {"tblDBInfo", "Title TEXT, Description TEXT"},
    {"tblRecentFiles", "CodeName TEXT COLLATE NOCASE, Caption TEXT"},
    {"tblControlSettings",
     "Channel INTEGER, Volume INTEGER, reverb INTEGER, chorus INTEGER, PAN INTEGER, modulation INTEGER"},
    {"tblGSToneBank", "Patch INTEGER, BankLSB INTEGER, BankMSB INTEGER, Name TEXT"},
    {"tblGM2ToneBank", "Patch INTEGER, BankLSB INTEGER, BankMSB INTEGER, Name TEXT"},
    {"tblXGToneBank", "Patch INTEGER, BankLSB INTEGER, BankMSB INTEGER, Name TEXT"},
    {"tblChords", "CodeName TEXT COLLATE NOCASE, Bar INTEGER, Beat INTEGER, Tick INTEGER, Chord TEXT"},
};

QString CreateStatement(const QString& name, const QString& columns) {
  return QStringLiteral("CREATE TABLE [%1] (%2)").arg(name, columns);
}

}  // namespace

QStringList SchemaStatements() {
  QStringList statements;
  for (const TableDefinition& table : kTables)
    statements.append(CreateStatement(QString::fromLatin1(table.name), QString::fromLatin1(table.columns)));
  return statements;
}

QStringList SharedTableNames() {
  QStringList names;
  for (const TableDefinition& table : kTables) names.append(QString::fromLatin1(table.name));
  return names;
}

QStringList NeededTables() {
  QStringList names = SharedTableNames();
  names.removeOne(QStringLiteral("tblChords"));  // only ever emptied, where it is there
  return names;
}

// An index compares as its column is declared to.
std::vector<LibraryIndex> LibraryIndexes() {
  return {{QStringLiteral("tblTracksByTune"), QStringLiteral("tblTracks"), QStringLiteral("CodeName")},
          {QStringLiteral("tblWordsByTune"), QStringLiteral("tblWords"), QStringLiteral("FileName")},
          {QStringLiteral("tblThemesByTune"), QStringLiteral("tblThemes"), QStringLiteral("CodeName")}};
}

QString IndexStatement(const LibraryIndex& index) {
  return QStringLiteral("CREATE INDEX [%1] ON [%2] ([%3])").arg(index.name, index.table, index.column);
}

QString EventTableStatement(const QString& name) {
  return CreateStatement(name, QString::fromLatin1(kEventColumns));
}

}  // namespace zelmar
