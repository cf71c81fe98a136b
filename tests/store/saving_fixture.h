// A tune with a bit of everything, saved into a sample database beside another tune.
#pragma once

#include <QSqlDatabase>
#include <map>

#include "model/main_window_link.h"
#include "store/store_fixture.h"
#include "store/tune_loader.h"
#include "store/tune_saver.h"

namespace zelmar::testing_support {

inline std::shared_ptr<Tone> MakeTone(EventType type, std::int32_t abs_ref, int bar, int beat, int track,
                                      const char* pitch) {
  auto tone = std::make_shared<Tone>();
  tone->SetEventType(type);
  tone->SetAbsRef(abs_ref);
  tone->SetBar(static_cast<std::int16_t>(bar));
  tone->SetBeat(static_cast<std::int16_t>(beat));
  tone->SetTrack(static_cast<std::uint8_t>(track));
  tone->SetPitch(QString::fromLatin1(pitch));
  return tone;
}

// Two tracks, three notes with their note-offs, a tempo change, two words and two themes.
inline std::shared_ptr<Tune> MakeTune() {
  auto tune = std::make_shared<Tune>();
  tune->SetTitle(QStringLiteral("It's a Title"));
  tune->SetDescription(QStringLiteral("A description"));
  tune->SetComposer(QStringLiteral("Bach"));
  tune->SetCountry(QStringLiteral("Germany"));
  tune->SetCategory(QStringLiteral("Fugue"));
  tune->SetSoloInstrument(QStringLiteral("Organ"));
  tune->SetEnsemble(QStringLiteral("Solo"));
  tune->SetLength(QStringLiteral("Full"));
  tune->SetStyle(QStringLiteral("Baroque"));
  tune->SetBeatsPerBar(3);
  tune->SetBeatLength(8);
  tune->SetKeySignature(-2);
  tune->SetKeyMode(1);
  tune->SetTempo(96);
  tune->SetMIDIMode(QStringLiteral("XG"));
  tune->SetAccompPattern(7);
  tune->SetMelodyTrack(2);
  tune->SetRank(31);
  Track& first = *tune->Tracks()->Item(QStringLiteral("1"));
  first.SetDescription(QString());
  first.SetChannel(3);
  tune->Tracks()->Add(QStringLiteral("Pedal"), 2, 16, 19, true, 8, 9, QStringLiteral("2"));
  auto note = MakeTone(MUSIC_NOTE, 5, 1, 1, 1, "C#4");
  note->SetTick(30);
  note->SetDuration(1.25);
  note->SetVolume(90);
  note->SetInstrument(40);
  note->SetEnHarmonic(QStringLiteral("b"));
  tune->Add(note);
  tune->Add(MakeTone(MUSIC_NOTE, 6, 1, 2, 2, "G2"));
  tune->Add(MakeTone(TEMPO_CHANGE, 8, 2, 1, 1, "C4"));
  tune->Add(MakeTone(MUSIC_NOTE, 11, 3, 1, 2, "Ab2"));
  tune->CalcNotesOff();
  tune->SortStartTimes();
  tune->Words()->Add(0, 1, 1, QStringLiteral("Glo-"));
  tune->Words()->Add(60, 2, 1, QStringLiteral("ria"));
  tune->Themes()->Add(1, 1, 2, QStringLiteral("first"), 1, 10);
  tune->Themes()->Add(2, 3, 3, QString(), 2, 11);
  return tune;
}

class SavingTest : public StoreTest {
 protected:
  SavingTest() {
    SampleTune other;
    other.code_name = QStringLiteral("Other");
    other.events = SampleMelody({QStringLiteral("C4"), QStringLiteral("D4"), QStringLiteral("E4")});
    other.words = {{1, 1, 0, QStringLiteral("la")}};
    other.themes = {SampleTheme()};
    database.AddTune(other);
  }

  // Saves and gives the failure flag, which must be set or cleared whatever it was.
  bool SaveFails(const std::shared_ptr<Tune>& tune, const char* code_name, const char* portion = "ALL") {
    bool failed = true;
    SaveTune(tune, QString::fromUtf8(code_name), failed, SavePortionOf(QString::fromLatin1(portion)));
    EXPECT_TRUE(QSqlDatabase::connectionNames().isEmpty());
    return failed;
  }
  void Save(const std::shared_ptr<Tune>& tune, const char* code_name, const char* portion = "ALL") {
    EXPECT_FALSE(SaveFails(tune, code_name, portion));
    EXPECT_FALSE(tune->ChangedSinceLastSaved());
  }

  // Saves, expecting a failure that leaves SaveTune, and gives what it tells.
  QString FailureOfSave(const std::shared_ptr<Tune>& tune, const QString& code_name, int number,
                        const char* portion = "ALL") {
    QString description;
    bool failed = false;
    try {
      SaveTune(tune, code_name, failed, SavePortionOf(QString::fromLatin1(portion)));
      ADD_FAILURE() << "the save went well, or told: "
                    << (Boxes().isEmpty() ? std::string() : Boxes().last().text.toStdString());
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.Number(), number) << failure.Description().toStdString();
      description = failure.Description();
    }
    EXPECT_TRUE(tune->ChangedSinceLastSaved());
    EXPECT_EQ(tune->FileName(), code_name);
    EXPECT_TRUE(QSqlDatabase::connectionNames().isEmpty());
    return description;
  }

  std::shared_ptr<Tune> Load(const QString& code_name) {
    TuneLoader loader;
    QString name = code_name;
    loader.DoLoad(name);
    EXPECT_TRUE(loader.LoadedOk()) << code_name.toStdString();
    return TheMainWindow().MyTune();
  }

  QStringList Select(const char* statement) const { return Rows(QString::fromLatin1(statement)); }
  QStringList Events(const char* code_name) const {
    return Rows(QStringLiteral("select * from [%1]").arg(QString::fromUtf8(code_name)));
  }
  // Every row of every table, with the tables' names: the whole database.
  QStringList Everything() const {
    QStringList lines;
    for (const QString& table : database.Connect()->TableNames())
      lines << u'[' + table + u']' << Rows(QStringLiteral("select * from [%1]").arg(table));
    return lines;
  }
  // What belongs to the tune beside the one that is saved.
  QStringList OtherTune() const {
    return Select("select * from tblMelodies where CodeName = 'Other'") +
           Select("select * from tblWords where FileName = 'Other'") +
           Select("select * from tblThemes where CodeName = 'Other'") +
           Select("select * from tblTracks where CodeName = 'Other'") + Events("Other");
  }

  const QList<ShownMessage>& Boxes() const { return platform.messages->shown; }
};

}  // namespace zelmar::testing_support
