#include "support/sample_database.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <stdexcept>

#include "model/globals.h"
#include "platform/paths.h"
#include "store/recordset.h"
#include "store/schema.h"

namespace zelmar::testing_support {

namespace {

// The engine itself, beside the code under test.
class Engine {
 public:
  explicit Engine(const QString& path)
      : name_(QStringLiteral("sample")),
        database_(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_)) {
    database_.setDatabaseName(path);
    if (!database_.open()) throw std::runtime_error("cannot open the sample database");
  }
  ~Engine() {
    database_.close();
    database_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(name_);
  }
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  void Run(const QString& sql, const QVariantList& values = {}) {
    QSqlQuery query(database_);
    bool ok = query.prepare(sql);
    for (const QVariant& value : values) query.addBindValue(value);
    ok = ok && query.exec();
    if (!ok) throw std::runtime_error((sql + u' ' + query.lastError().text()).toStdString());
  }

  void Insert(const QString& table, const QVariantList& values) {
    QStringList marks;
    for (qsizetype i = 0; i < values.size(); ++i) marks.append(QStringLiteral("?"));
    Run(QStringLiteral("INSERT INTO [%1] VALUES (%2)").arg(table, marks.join(u',')), values);
  }

 private:
  QString name_;
  QSqlDatabase database_;
};

QVariantList EventRow(const SampleEvent& event, int abs_ref) {
  return {event.event_type, abs_ref,          event.bar,   event.beat,   event.tick,      event.track,
          event.duration,   event.instrument, event.pitch, event.volume, event.enharmonic};
}

}  // namespace

std::vector<SampleEvent> SampleMelody(const QStringList& pitches) {
  std::vector<SampleEvent> events;
  for (int i = 0; i < pitches.size(); ++i) {
    SampleEvent event;
    event.bar = i / 4 + 1;
    event.beat = i % 4 + 1;
    event.pitch = pitches[i];
    events.push_back(event);
  }
  return events;
}

SampleDatabase::SampleDatabase() : path_(directory_.path() + QStringLiteral("/Sample.mdb")) {
  Engine engine(path_);
  engine.Run(QStringLiteral("PRAGMA journal_mode=WAL"));
  engine.Run(QStringLiteral("BEGIN"));
  for (const QString& statement : SchemaStatements()) engine.Run(statement);
  for (const LibraryIndex& index : LibraryIndexes()) engine.Run(IndexStatement(index));
  engine.Insert(QStringLiteral("tblDBInfo"), {QStringLiteral("Sample Tunes"), QStringLiteral("For tests")});
  engine.Run(QStringLiteral("COMMIT"));
  SetApplicationDirectory(directory_.path());
  Global().DatabasePath = path_;
}

SampleDatabase::~SampleDatabase() {
  SetApplicationDirectory(QString());
}

QStringList SampleDatabase::Column(const QString& statement) const {
  const auto rows = Recordset::OpenStatement(Connect(), statement);
  QStringList values;
  for (; !rows->Eof(); rows->MoveNext()) values.append(rows->Value(0).toString());
  return values;
}

void SampleDatabase::AddTune(const SampleTune& tune) const {
  const auto text = [](const char* name) { return QString::fromLatin1(name); };
  int last_abs_ref = 0;
  Engine engine(path_);
  engine.Run(text("BEGIN"));
  engine.Run(EventTableStatement(tune.code_name));
  for (const SampleEvent& event : tune.events) {
    last_abs_ref = event.abs_ref != 0 ? event.abs_ref : last_abs_ref + 1;
    engine.Insert(tune.code_name, EventRow(event, last_abs_ref));
  }
  engine.Insert(
      text("tblMelodies"),
      {tune.code_name,   tune.title,           tune.description,  tune.composer,      tune.country,
       tune.category,    tune.solo_instrument, tune.ensemble,     tune.length,        tune.style,
       tune.beat_length, tune.beats_per_bar,   tune.key_mode,     tune.key_signature, tune.tempo,
       tune.midi_mode,   tune.accomp_pattern,  tune.melody_track, tune.rank,          last_abs_ref});
  for (const SampleTrack& track : tune.tracks)
    engine.Insert(text("tblTracks"), {tune.code_name, track.number, track.name, track.channel,
                                      track.instrument, track.muted, track.bank_msb, track.bank_lsb});
  for (const SampleWord& word : tune.words)
    engine.Insert(text("tblWords"), {tune.code_name, word.bar, word.beat, word.tick, word.text});
  for (const SampleTheme& theme : tune.themes)
    engine.Insert(text("tblThemes"), {tune.code_name, theme.number, theme.start_bar, theme.end_bar,
                                      theme.notes, theme.track, theme.rank});
  engine.Run(text("COMMIT"));
}

void SampleDatabase::AddTune(const QString& code_name, const QStringList& pitches) const {
  SampleTune tune;
  tune.code_name = code_name;
  tune.events = SampleMelody(pitches);
  AddTune(tune);
}

void SampleDatabase::AddRow(const QString& table, const QVariantList& values) const {
  Engine(path_).Insert(table, values);
}

void SampleDatabase::AddNotes(const QString& code_name, int count) const {
  Engine engine(path_);
  engine.Run(QStringLiteral(
                 "WITH RECURSIVE note(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM note WHERE n < %1) "
                 "INSERT INTO [%2] SELECT 128, n + (SELECT ifnull(max(AbsRef), 0) FROM [%2]), n / 16 + 1, "
                 "n / 4 % 4 + 1, n % 4 * 30, 1, 0.25, 0, 'C4', 100, ' ' FROM note")
                 .arg(count)
                 .arg(code_name));
}

}  // namespace zelmar::testing_support
