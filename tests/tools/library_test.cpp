// Everything that ships, read as a person would check it.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSet>
#include <algorithm>
#include <functional>
#include <map>

#include "model/tone.h"
#include "shipped_library.h"

namespace zelmar {
namespace {

using namespace testing_support;

int CountTunes(const std::function<bool(const AbcTune&)>& wanted) {
  return static_cast<int>(std::ranges::count_if(Tunes(), wanted));
}

bool HasRest(const AbcTune& tune) {
  // A gap between the end of a note and the start of the next in some voice, behind the lead-in.
  for (const AbcTrack& track : tune.tracks) {
    double end = tune.lead_in_pulses / 120.0;
    for (const AbcEvent& event : tune.events) {
      if (event.event_type != MUSIC_NOTE || event.track != track.number) continue;
      const double start = ((event.bar - 1) * tune.beats_per_bar + event.beat - 1) * 4.0 / tune.beat_length +
                           event.tick / 120.0;
      if (start > end + 1e-9) return true;
      end = std::max(end, start + event.duration);
    }
  }
  return false;
}

bool HasChord(const AbcTune& tune) {
  for (std::size_t i = 1; i < tune.events.size(); ++i) {
    const AbcEvent &a = tune.events[i - 1], &b = tune.events[i];
    if (a.event_type == MUSIC_NOTE && b.event_type == MUSIC_NOTE && a.track == b.track && a.bar == b.bar &&
        a.beat == b.beat && a.tick == b.tick)
      return true;
  }
  return false;
}

double Seconds(const AbcTune& tune) {
  double seconds = 0, since = tune.lead_in_pulses / 120.0, end = 0, tempo = tune.tempo;
  for (const AbcEvent& event : tune.events) {
    const double start =
        ((event.bar - 1) * tune.beats_per_bar + event.beat - 1) * 4.0 / tune.beat_length + event.tick / 120.0;
    if (event.event_type == TEMPO_CHANGE) {
      seconds += (start - since) * 60 / tempo;
      since = start;
      tempo = event.volume * 128 + event.instrument;
    } else {
      end = std::max(end, start + event.duration);
    }
  }
  return seconds + (end - since) * 60 / tempo;
}

TEST(Library, EveryTuneReadsAndThereAreSixteen) {
  EXPECT_EQ(Tunes().size(), 16U);
  for (const AbcTune& tune : Tunes()) EXPECT_GE(tune.bar_count, 8) << tune.catalogue.title.toStdString();
}

TEST(Library, FiveTunesHaveSeveralTracks) {
  EXPECT_GE(CountTunes([](const AbcTune& tune) { return tune.tracks.size() > 1; }), 5);
}

TEST(Library, ThreeTunesHaveWords) {
  EXPECT_GE(CountTunes([](const AbcTune& tune) { return tune.words.size() > 8; }), 3);
}

TEST(Library, ThreeTunesHaveTwoThemes) {
  EXPECT_GE(CountTunes([](const AbcTune& tune) { return tune.themes.size() >= 2; }), 3);
}

TEST(Library, TwoTunesChangeTempo) {
  EXPECT_GE(CountTunes([](const AbcTune& tune) {
              return std::ranges::any_of(tune.events, [&tune](const AbcEvent& event) {
                return event.event_type == TEMPO_CHANGE &&
                       event.volume * 128 + event.instrument != tune.tempo;
              });
            }),
            2);
}

TEST(Library, MetresAndKeysAreOfManyKinds) {
  QSet<QString> metres;
  QSet<int> keys;
  for (const AbcTune& tune : Tunes()) {
    metres.insert(QStringLiteral("%1/%2").arg(tune.beats_per_bar).arg(tune.beat_length));
    keys.insert(tune.key_signature);
  }
  for (const char* metre : {"4/4", "3/4", "6/8", "2/4"})
    EXPECT_TRUE(metres.contains(QLatin1String(metre))) << metre;
  EXPECT_GE(*std::ranges::max_element(keys), 4);
  EXPECT_LE(*std::ranges::min_element(keys), -5);
  EXPECT_GE(CountTunes([](const AbcTune& tune) { return tune.key_mode == 1; }), 2);
}

TEST(Library, ChordsAndRestsOccur) {
  EXPECT_GE(CountTunes(HasChord), 1);
  EXPECT_GE(CountTunes(HasRest), 3);
}

TEST(Library, OneTuneLastsTenToTwentyFiveSeconds) {
  EXPECT_GE(CountTunes([](const AbcTune& tune) {
              return tune.catalogue.length == QStringLiteral("Full") && Seconds(tune) >= 10 &&
                     Seconds(tune) <= 25;
            }),
            1);
  for (const AbcTune& tune : Tunes()) {
    if (tune.catalogue.code_name != QStringLiteral("TwinkleTwinkle")) continue;
    EXPECT_NEAR(Seconds(tune), 18.0, 0.01);
  }
}

TEST(Library, CodeNamesDifferWhateverTheirCase) {
  QSet<QString> names;
  for (const AbcTune& tune : AllTunes()) {
    const QString name = tune.catalogue.code_name.toLower();
    EXPECT_FALSE(names.contains(name)) << name.toStdString();
    names.insert(name);
  }
}

TEST(Library, EveryCatalogueValueIsInItsTable) {
  const struct {
    const char* table;
    const char* column;
    QString AbcCatalogue::*field;
  } links[] = {{"tblComposer", "COMPOSER", &AbcCatalogue::composer},
               {"tblCategory", "Category", &AbcCatalogue::category},
               {"tblStyles", "Style", &AbcCatalogue::style},
               {"tblEnsemble", "Ensemble", &AbcCatalogue::ensemble},
               {"tblInstruments", "InstrumentName", &AbcCatalogue::solo_instrument},
               {"tblCountry", "Country", &AbcCatalogue::country}};
  for (const auto& link : links) {
    const QStringList values = Column(link.table, link.column);
    for (const AbcTune& tune : AllTunes()) {
      const QString& value = tune.catalogue.*link.field;
      // A demonstration belongs to no country.
      if (link.field == &AbcCatalogue::country && tune.catalogue.length == QStringLiteral("demo"))
        EXPECT_EQ(value, QString());
      else
        EXPECT_TRUE(values.contains(value))
            << tune.catalogue.code_name.toStdString() << ": " << value.toStdString();
    }
  }
  for (const AbcTune& tune : Tunes()) {
    EXPECT_FALSE(tune.catalogue.country.isEmpty()) << tune.catalogue.code_name.toStdString();
    EXPECT_TRUE((QStringList{QStringLiteral("Full"), QStringLiteral("Extract"), QStringLiteral("Theme")})
                    .contains(tune.catalogue.length));
    EXPECT_GT(tune.catalogue.description.size(), 40) << tune.catalogue.code_name.toStdString();
  }
}

TEST(Library, RanksOfTunesDiffer) {
  QSet<int> ranks;
  for (const AbcTune& tune : Tunes()) ranks.insert(tune.catalogue.rank);
  EXPECT_EQ(ranks.size(), static_cast<qsizetype>(Tunes().size()));
}

TEST(Library, ThemesLieWithinTheirTuneAndBeginWithANoteOfTheirTrack) {
  for (const AbcTune& tune : Tunes()) {
    EXPECT_FALSE(tune.themes.empty()) << tune.catalogue.code_name.toStdString();
    for (const AbcTheme& theme : tune.themes) {
      const std::string where =
          tune.catalogue.code_name.toStdString() + " theme " + std::to_string(theme.number);
      EXPECT_GE(theme.start_bar, 1) << where;
      EXPECT_LE(theme.start_bar, theme.end_bar) << where;
      EXPECT_LE(theme.end_bar, tune.bar_count) << where;
      EXPECT_FALSE(theme.text.isEmpty()) << where;
      const int track = theme.track == 0 ? tune.melody_track : theme.track;
      EXPECT_TRUE(std::ranges::any_of(tune.events, [&theme, track](const AbcEvent& event) {
        return event.event_type == MUSIC_NOTE && event.track == track && event.bar == theme.start_bar;
      })) << where;
    }
  }
}

// In every voice, what is sung or silent between two bar lines adds up, for no note runs out of the tune.
TEST(Library, NoNoteReachesBeyondTheLastBarAndVoicesFillTheirs) {
  for (const AbcTune& tune : AllTunes()) {
    const double bar = tune.beats_per_bar * 4.0 / tune.beat_length;
    for (const AbcEvent& event : tune.events) {
      const double start =
          (event.bar - 1) * bar + (event.beat - 1) * 4.0 / tune.beat_length + event.tick / 120.0;
      EXPECT_LE(event.event_type == MUSIC_NOTE ? start + event.duration : start, tune.bar_count * bar + 1e-9)
          << tune.catalogue.code_name.toStdString();
      EXPECT_LE(event.beat, tune.beats_per_bar);
      EXPECT_LT(event.tick, 480 / tune.beat_length);
    }
  }
}

// A bar that is made one note shorter is refused, in every tune and voice.
TEST(Library, AMissingNoteIsSeenInEveryTune) {
  const QDir folder(DataFolder() + QStringLiteral("/tunes"));
  int checked = 0;
  for (const AbcTune& tune : Tunes()) {
    const QString name = tune.catalogue.code_name + QStringLiteral(".abc");
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray text = file.readAll();
    // The second bar line of the first music line, and a rest put in front of it.
    const qsizetype music = text.indexOf('\n', text.indexOf("\nK:") + 1);
    qsizetype line = text.indexOf('|', text.indexOf('|', text.indexOf('|', music) + 1) + 1);
    ASSERT_GT(line, 0) << name.toStdString();
    text.insert(line, "z//");
    EXPECT_THROW(ReadAbc(text, name), TextError) << name.toStdString();
    ++checked;
  }
  EXPECT_EQ(checked, 16);
}

TEST(Library, InstrumentsAreNumberedFromNoughtToTheDrumKit) {
  const CsvTable table = Table("tblInstruments");
  ASSERT_EQ(table.rows.size(), 129U);
  const QStringList families = Column("tblFamily", "Family");
  EXPECT_TRUE(families.contains(QStringLiteral("All Instruments")));
  QSet<QString> names;
  for (int i = 0; i < 129; ++i) {
    const QStringList& row = table.rows[static_cast<std::size_t>(i)].cells;
    EXPECT_EQ(row[0].toInt(), i);
    EXPECT_FALSE(names.contains(row[1])) << row[1].toStdString();
    names.insert(row[1]);
    EXPECT_TRUE(families.contains(row[2])) << row[2].toStdString();
    Tone high, low;
    high.SetNumber(0);
    low.SetNumber(127);
    high.SetPitch(row[5]);
    low.SetPitch(row[6]);
    EXPECT_GT(high.Number(), low.Number()) << row[1].toStdString();
    // Every note of the best octave can be played, from its C to its B.
    const int octave = row[4].toInt();
    EXPECT_GE(12 * octave + 12, low.Number()) << row[1].toStdString();
    EXPECT_LE(12 * octave + 23, high.Number()) << row[1].toStdString();
  }
  EXPECT_EQ(table.rows[128].cells[1], QStringLiteral("Drum Kit"));
}

TEST(Library, ComposersBelongToPeriodsAndCountriesThatThereAre) {
  const QStringList styles = Column("tblStyles", "Style");
  const QStringList countries = Column("tblCountry", "Country");
  EXPECT_TRUE(styles.contains(QStringLiteral("Not Applicable")));
  EXPECT_TRUE(styles.contains(QStringLiteral("Traditional and Timeless")));
  const CsvTable composers = Table("tblComposer");
  bool has_various = false;
  for (const CsvTable::Row& row : composers.rows) {
    EXPECT_TRUE(styles.contains(row.cells[5])) << row.cells[0].toStdString();
    if (row.cells[0] == QStringLiteral("Various")) {
      has_various = true;
      continue;
    }
    EXPECT_TRUE(countries.contains(row.cells[4])) << row.cells[0].toStdString();
    EXPECT_LT(row.cells[2].toInt(), row.cells[3].toInt()) << row.cells[0].toStdString();
    EXPECT_LE(row.cells[3].toInt() - row.cells[2].toInt(), 100) << row.cells[0].toStdString();
  }
  EXPECT_TRUE(has_various);
}

// Statements put values between apostrophes.
TEST(Library, NoKeyOfTheCatalogueHoldsAnApostrophe) {
  for (const auto& [table, column] :
       std::initializer_list<std::pair<const char*, const char*>>{{"tblComposer", "COMPOSER"},
                                                                  {"tblCategory", "Category"},
                                                                  {"tblStyles", "Style"},
                                                                  {"tblEnsemble", "Ensemble"},
                                                                  {"tblCountry", "Country"},
                                                                  {"tblInstruments", "InstrumentName"},
                                                                  {"tblFamily", "Family"},
                                                                  {"tblKingsEngland", "MainText"},
                                                                  {"tblWorldEvents", "MainText"},
                                                                  {"tblAustraliaNZ", "MainText"},
                                                                  {"tblAmericas", "MainText"}})
    for (const QString& value : Column(table, column))
      EXPECT_FALSE(value.contains(u'\'')) << value.toStdString();
}

TEST(Library, SyllablesFillTheMelodyOfTheSungTunes) {
  // Every note of these melodies has a syllable, or follows one that it carries on.
  const std::map<QString, std::size_t> syllables = {{QStringLiteral("GoodKingWenceslas"), 52},
                                                    {QStringLiteral("TwinkleTwinkle"), 42},
                                                    {QStringLiteral("OldHundredth"), 32},
                                                    {QStringLiteral("FrereJacques"), 32}};
  for (const AbcTune& tune : Tunes()) {
    const auto expected = syllables.find(tune.catalogue.code_name);
    if (expected == syllables.end()) continue;
    EXPECT_EQ(tune.words.size(), expected->second) << expected->first.toStdString();
  }
}

// The first notes of each melody as everybody knows them, with their lengths in crotchets.
TEST(Library, MelodiesOpenAsTheyAreKnown) {
  const std::map<QString, std::string> openings = {
      {QStringLiteral("AmazingGrace"), "Db4 1, Gb4 2, Bb4 0.5, Gb4 0.5, Bb4 2, Ab4 1, Gb4 2, Eb4 1, Db4 2"},
      {QStringLiteral("AuldLangSyne"), "C4 1, F4 1.5, F4 0.5, F4 1, A4 1, G4 1.5, F4 0.5, G4 1, A4 1"},
      {QStringLiteral("CanCan"), "D5 2, E5 0.5, G5 0.5, F#5 0.5, E5 0.5, A5 1, A5 1, A5 0.5, B5 0.5"},
      {QStringLiteral("FrereJacques"), "F4 1, G4 1, A4 1, F4 1, F4 1, G4 1, A4 1, F4 1, A4 1"},
      {QStringLiteral("FurElise"),
       "E5 0.25, D#5 0.25, E5 0.25, D#5 0.25, E5 0.25, B4 0.25, D5 0.25, C5 0.25, A4 0.5"},
      {QStringLiteral("GoodKingWenceslas"), "E4 1, E4 1, E4 1, F#4 1, E4 1, E4 1, B3 2, C#4 1, B3 1"},
      {QStringLiteral("Greensleeves"),
       "A4 0.5, C5 1, D5 0.5, E5 0.75, F#5 0.25, E5 0.5, D5 1, B4 0.5, G4 0.75"},
      {QStringLiteral("HallOfTheMountainKing"),
       "B2 0.5, C#3 0.5, D3 0.5, E3 0.5, F#3 0.5, D3 0.5, F#3 1, E#3 0.5, C#3 0.5"},
      {QStringLiteral("IrishWasherwoman"),
       "D5 0.5, C5 0.5, B4 0.5, G4 0.5, G4 0.5, D4 0.5, G4 0.5, G4 0.5, B4 0.5"},
      {QStringLiteral("MinuetInG"), "D5 1, G4 0.5, A4 0.5, B4 0.5, C5 0.5, D5 1, G4 1, G4 1, E5 1"},
      {QStringLiteral("OdeToJoy"), "F#3 1, F#3 1, G3 1, A3 1, A3 1, G3 1, F#3 1, E3 1, D3 1"},
      {QStringLiteral("OhSusanna"),
       "G4 0.25, A4 0.25, B4 0.5, D5 0.5, D5 0.75, E5 0.25, D5 0.5, B4 0.5, G4 0.75"},
      {QStringLiteral("OldHundredth"), "G4 1, G4 1, F#4 1, E4 1, D4 1, G4 1, A4 1, B4 1, B4 1"},
      {QStringLiteral("PachelbelCanon"), "F#5 1, E5 1, D5 1, C#5 1, B4 1, A4 1, B4 1, C#5 1, D5 1"},
      {QStringLiteral("SilentNight"),
       "F4 0.75, G4 0.25, F4 0.5, D4 1.5, F4 0.75, G4 0.25, F4 0.5, D4 1.5, C5 1"},
      {QStringLiteral("TwinkleTwinkle"), "C4 1, C4 1, G4 1, G4 1, A4 1, A4 1, G4 2, F4 1, F4 1"},
  };
  EXPECT_EQ(openings.size(), Tunes().size());
  for (const AbcTune& tune : Tunes()) {
    QStringList notes;
    for (const AbcEvent& event : tune.events) {
      if (event.event_type != MUSIC_NOTE || event.track != tune.melody_track || notes.size() == 9) continue;
      Tone tone;
      tone.SetPitch(event.pitch);
      tone.SetEnHarmonic(event.enharmonic);
      notes.append(tone.EnharmonicName() + u' ' + QString::number(event.duration));
    }
    const auto opening = openings.find(tune.catalogue.code_name);
    ASSERT_NE(opening, openings.end()) << tune.catalogue.code_name.toStdString();
    EXPECT_EQ(notes.join(QStringLiteral(", ")).toStdString(), opening->second)
        << tune.catalogue.code_name.toStdString();
  }
}

const AbcTune& TuneNamed(const char* code_name) {
  return *std::ranges::find(Tunes(), QLatin1String(code_name),
                            [](const AbcTune& tune) { return tune.catalogue.code_name; });
}

// As hymn books print it: up to the high note twice, and down again.
TEST(Library, TheThirdLineOfAmazingGraceIsTheOneThatIsPrinted) {
  QStringList notes, words;
  const AbcTune& tune = TuneNamed("AmazingGrace");
  for (const AbcEvent& event : tune.events) {
    const bool in_line = (event.bar == 9 && event.beat == 3) || (event.bar > 9 && event.bar < 13) ||
                         (event.bar == 13 && event.beat == 1);
    if (event.event_type == MUSIC_NOTE && in_line)
      notes.append(event.pitch + u' ' + QString::number(event.duration));
  }
  EXPECT_EQ(notes.join(QStringLiteral(", ")),
            QStringLiteral(
                "Bb4 1, C#5 1.5, Bb4 0.5, C#5 0.5, Bb4 0.5, F#4 2, C#4 1, Eb4 1.5, F#4 0.5, F#4 0.5, Eb4 "
                "0.5, C#4 2"));
  for (const AbcWord& word : tune.words)
    if (word.bar >= 10 && (word.bar < 13 || (word.bar == 13 && word.beat == 1))) words.append(word.text);
  EXPECT_EQ(words.join(u' '), QStringLiteral("once was lost, but now am found,"));
}

// The bars in which a track has notes, as "first to last".
std::string BarsOf(const AbcTune& tune, int track) {
  int first = 0, last = 0;
  for (const AbcEvent& event : tune.events) {
    if (event.event_type != MUSIC_NOTE || event.track != track) continue;
    if (first == 0) first = event.bar;
    last = event.bar;
  }
  return std::to_string(first) + " to " + std::to_string(last);
}

TEST(Library, TheTrollsBeginInTheBassoonsAndTheViolinsComeIn) {
  const AbcTune& tune = TuneNamed("HallOfTheMountainKing");
  ASSERT_EQ(tune.tracks.size(), 3U);
  EXPECT_EQ(BarsOf(tune, 1), "1 to 24");
  EXPECT_EQ(BarsOf(tune, 2), "9 to 24");
  EXPECT_EQ(BarsOf(tune, 3), "1 to 24");
  EXPECT_EQ(tune.melody_track, 1);
}

// The trolls alone break off elsewhere, on the second note of their scale.
TEST(Library, MelodiesCloseOnTheirTonic) {
  static constexpr int major_tonics[] = {11, 6, 1, 8, 3, 10, 5, 0, 7, 2, 9, 4, 11, 6, 1};
  for (const AbcTune& tune : Tunes()) {
    const AbcEvent* last = nullptr;
    for (const AbcEvent& event : tune.events)
      if (event.event_type == MUSIC_NOTE && event.track == tune.melody_track) last = &event;
    ASSERT_NE(last, nullptr);
    Tone tone;
    tone.SetPitch(last->pitch);
    const int major = major_tonics[tune.key_signature + 7];
    const int tonic = tune.key_mode == 0 ? major : (major + 9) % 12;
    if (tune.catalogue.code_name == QStringLiteral("HallOfTheMountainKing")) continue;
    EXPECT_EQ(tone.Number() % 12, tonic) << tune.catalogue.code_name.toStdString();
  }
}

}  // namespace
}  // namespace zelmar
