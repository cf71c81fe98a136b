// Values that the program asks for by name: where a statement or a choice says 'Folk Song', the library that
// ships must spell it so, or the list that it fills stays empty.
#include <gtest/gtest.h>

#include <QSet>
#include <algorithm>

#include "shipped_library.h"

namespace zelmar {
namespace {

using namespace testing_support;

struct NamedValue {
  const char* table;
  const char* column;
  const char* value;
};

constexpr NamedValue kNamedValues[] = {
    // No single composer, no period, no filter: rows that lists leave out by their names.
    {"tblComposer", "COMPOSER", "Various"},
    {"tblStyles", "Style", "Not Applicable"},
    {"tblFamily", "Family", "All Instruments"},
    // The period whose tunes stand without composers.
    {"tblStyles", "Style", "Traditional and Timeless"},
    // Top lists.
    {"tblCategory", "Category", "Concerto"},
    {"tblCategory", "Category", "Symphony"},
    {"tblCategory", "Category", "Song"},
    {"tblCategory", "Category", "Folk Song"},
    {"tblCategory", "Category", "Chamber Music"},
    {"tblEnsemble", "Ensemble", "Solo"},
    {"tblInstruments", "InstrumentName", "Acoustic Grand Piano"},
    // Groups of the instrument quiz.
    {"tblFamily", "Family", "Brass"},
    {"tblFamily", "Family", "Woodwind"},
    {"tblFamily", "Family", "String Family"},
    {"tblFamily", "Family", "Keyboards"},
    {"tblFamily", "Family", "Guitars"},
    {"tblFamily", "Family", "World"},
    {"tblFamily", "Family", "Percussive"},
    {"tblFamily", "Family", "Effects"},
    {"tblFamily", "Family", "Other"},
    // Instruments that have a clip.
    {"tblInstruments", "InstrumentName", "Acoustic Bass"},
    {"tblInstruments", "InstrumentName", "Cello"},
    {"tblInstruments", "InstrumentName", "Clarinet"},
    {"tblInstruments", "InstrumentName", "Double Bass"},
    {"tblInstruments", "InstrumentName", "Flute"},
    {"tblInstruments", "InstrumentName", "Marimba"},
    {"tblInstruments", "InstrumentName", "Oboe"},
    {"tblInstruments", "InstrumentName", "Recorder"},
    {"tblInstruments", "InstrumentName", "SaxAlto"},
    {"tblInstruments", "InstrumentName", "SaxSoprano"},
    {"tblInstruments", "InstrumentName", "SaxTenor"},
    {"tblInstruments", "InstrumentName", "Trombone"},
    {"tblInstruments", "InstrumentName", "Tuba"},
    {"tblInstruments", "InstrumentName", "Viola"},
    {"tblInstruments", "InstrumentName", "Violin"},
    {"tblInstruments", "InstrumentName", "Xylophone"},
};

TEST(NamedValues, StandInTheirTablesOnceAndAsTheyAreSpelled) {
  for (const NamedValue& named : kNamedValues)
    EXPECT_EQ(Column(named.table, named.column).count(QLatin1String(named.value)), 1)
        << named.table << ": " << named.value;
}

// A family that no choice of the quiz names could never be asked for.
TEST(NamedValues, FamiliesAreThoseOfTheQuizAndTheOneForNoFilter) {
  QStringList named;
  for (const NamedValue& value : kNamedValues)
    if (QLatin1String(value.table) == QLatin1String("tblFamily")) named.append(QLatin1String(value.value));
  QStringList families = Column("tblFamily", "Family");
  named.sort();
  families.sort();
  EXPECT_EQ(families, named);
}

TEST(NamedValues, EveryFamilyHasInstrumentsButTheOneForNoFilter) {
  const QStringList used = Column("tblInstruments", "Family");
  for (const QString& family : Column("tblFamily", "Family"))
    EXPECT_EQ(used.contains(family), family != QStringLiteral("All Instruments")) << family.toStdString();
}

// The instruments by which people know a family, by their numbers in General MIDI.
TEST(NamedValues, WellKnownInstrumentsAreInTheirFamilies) {
  const struct {
    const char* family;
    std::initializer_list<int> instruments;
  } rows[] = {{"Keyboards", {0, 4, 6, 16, 19, 21}},
              {"Guitars", {24, 25, 27, 33}},
              {"String Family", {32, 40, 41, 42, 43, 46, 48}},
              {"Brass", {56, 57, 58, 59, 60, 61}},
              {"Woodwind", {64, 65, 66, 67, 68, 69, 70, 71, 72, 73, 74}},
              {"World", {75, 77, 104, 105, 107, 109, 110}},
              {"Percussive", {9, 11, 12, 13, 14, 47, 114, 115, 128}},
              {"Effects", {96, 103, 122, 127}},
              {"Other", {50, 52, 62, 80, 88}}};
  const QStringList families = Column("tblInstruments", "Family");
  for (const auto& row : rows)
    for (const int instrument : row.instruments)
      EXPECT_EQ(families.value(instrument), QLatin1String(row.family)) << instrument;
}

// Length words that statements compare with; any other would put a tune among the tests.
TEST(NamedValues, LengthsAreTheWordsOfTheStatements) {
  QSet<QString> lengths;
  for (const AbcTune& tune : AllTunes()) lengths.insert(tune.catalogue.length);
  EXPECT_EQ(lengths, (QSet<QString>{QStringLiteral("Full"), QStringLiteral("Extract"),
                                    QStringLiteral("Theme"), QStringLiteral("demo")}));
}

// Names of pages: blanks are underscored up to the second one only.
TEST(NamedValues, NamesOfPagesHaveThreeWordsAtMost) {
  for (const auto& [table, column] :
       std::initializer_list<std::pair<const char*, const char*>>{{"tblCategory", "Category"},
                                                                  {"tblStyles", "Style"},
                                                                  {"tblEnsemble", "Ensemble"},
                                                                  {"tblCountry", "Country"}})
    for (const QString& value : Column(table, column)) EXPECT_LE(value.count(u' '), 2) << value.toStdString();
}

// Titles are set like the names that the program knows: "Folk Song", "Opera and Operetta".
TEST(NamedValues, CategoriesAreSetInCapitals) {
  for (const QString& category : Column("tblCategory", "Category"))
    for (const QString& word : category.split(u' '))
      EXPECT_TRUE(word == QStringLiteral("and") || word[0].isUpper()) << category.toStdString();
}

TEST(NamedValues, TheDemonstrationsHaveTheNamesThatTheirButtonsAskFor) {
  QStringList names;
  for (const AbcTune& tune : Demonstrations()) names.append(tune.catalogue.code_name);
  names.sort();
  EXPECT_EQ(names, (QStringList{QStringLiteral("DemoBankSelect"), QStringLiteral("DemoChorus"),
                                QStringLiteral("DemoModulation"), QStringLiteral("DemoPortamento"),
                                QStringLiteral("DemoReverb"), QStringLiteral("DemoSoundEffects"),
                                QStringLiteral("StereoDemo"), QStringLiteral("demoExpression")}));
  for (const AbcTune& tune : Demonstrations()) {
    EXPECT_TRUE(tune.themes.empty()) << tune.catalogue.title.toStdString();
    EXPECT_EQ(tune.catalogue.rank, 9999) << tune.catalogue.title.toStdString();
    EXPECT_GT(tune.catalogue.description.size(), 40) << tune.catalogue.title.toStdString();
  }
}

}  // namespace
}  // namespace zelmar
