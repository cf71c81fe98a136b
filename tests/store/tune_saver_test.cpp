// What a save writes: every table, row by row, and what each portion takes along.
#include "store/saving_fixture.h"

namespace zelmar::testing_support {
namespace {

// --- The catalogue ---

TEST_F(SavingTest, EveryFieldOfTheCatalogueHoldsItsProperty) {
  Save(MakeTune(), "Mine");
  const auto row = Recordset::OpenStatement(
      database.Connect(), QStringLiteral("select * from tblMelodies where CodeName = 'Mine'"));
  const std::vector<std::pair<const char*, const char*>> fields = {
      {"Title", "It's a Title"},
      {"Description", "A description"},
      {"CodeName", "Mine"},
      {"Tempo", "96"},
      {"MIDIMode", "XG"},
      {"BeatsPerBar", "3"},
      {"Rank", "31"},
      {"BeatLength", "8"},
      {"MelodyTrack", "2"},
      {"LastAbsRef", "14"},
      {"Composer", "Bach"},
      {"Country", "Germany"},
      {"Category", "Fugue"},
      {"SoloInstrument", "Organ"},
      {"Ensemble", "Solo"},
      {"Length", "Full"},
      {"Style", "Baroque"},
      {"KeySignature", "-2"},
      {"KeyMode", "1"},
      {"AccompPattern", "7"},
  };
  for (const auto& [field, value] : fields)
    EXPECT_EQ(row->Text(QString::fromLatin1(field)), QString::fromLatin1(value)) << field;
  EXPECT_EQ(row->FieldCount(), static_cast<int>(fields.size()));
}

TEST_F(SavingTest, EmptyTextsBecomeABlankInTheRowAndInTheTune) {
  const auto tune = std::make_shared<Tune>();
  Save(tune, "Mine");
  EXPECT_EQ(Select("select Description, Composer, Country, Category, SoloInstrument, Ensemble, Style from "
                   "tblMelodies where CodeName = 'Mine'"),
            QStringList{QStringLiteral(" | | | | | | ")});
  const QString blank = QStringLiteral(" ");
  EXPECT_EQ(tune->Description(), blank);
  EXPECT_EQ(tune->Composer(), blank);
  EXPECT_EQ(tune->Country(), blank);
  EXPECT_EQ(tune->Category(), blank);
  EXPECT_EQ(tune->SoloInstrument(), blank);
  EXPECT_EQ(tune->Ensemble(), blank);
  EXPECT_EQ(tune->Style(), blank);
}

TEST_F(SavingTest, AnEmptyLengthBecomesTheWordTest) {
  const auto tune = std::make_shared<Tune>();
  Save(tune, "Mine");
  EXPECT_EQ(Select("select Length from tblMelodies where CodeName = 'Mine'"),
            QStringList{QStringLiteral("Test")});
  EXPECT_EQ(tune->Length(), QStringLiteral("Test"));
}

TEST_F(SavingTest, AnEmptyTitleIsReplacedInTheRowAlone) {
  const auto tune = std::make_shared<Tune>();
  tune->SetTitle(QString());
  Save(tune, "Mine");
  EXPECT_EQ(Select("select Title from tblMelodies where CodeName = 'Mine'"),
            QStringList{QStringLiteral("No title for this piece")});
  EXPECT_TRUE(tune->Title().isEmpty());
}

TEST_F(SavingTest, ASavedTuneKeepsItsPlaceInTheCatalogue) {
  database.AddTune(QStringLiteral("Zulu"), {QStringLiteral("C4")});
  const auto tune = MakeTune();
  Save(tune, "Other");
  EXPECT_EQ(database.Column(QStringLiteral("select * from tblMelodies")),
            (QStringList{QStringLiteral("Other"), QStringLiteral("Zulu")}));
  Save(tune, "New");
  EXPECT_EQ(database.Column(QStringLiteral("select * from tblMelodies")),
            (QStringList{QStringLiteral("Other"), QStringLiteral("Zulu"), QStringLiteral("New")}));
}

TEST_F(SavingTest, TheFirstTuneOfAnEmptyCatalogueIsAdded) {
  database.Execute(QStringLiteral("delete * from tblMelodies"));
  Save(MakeTune(), "Mine");
  EXPECT_EQ(database.Column(QStringLiteral("select * from tblMelodies")),
            QStringList{QStringLiteral("Mine")});
}

TEST_F(SavingTest, AMelodyTrackOfZeroBecomesTheNumberOfTheFirstTrack) {
  const auto tune = MakeTune();
  tune->Tracks()->Remove(QStringLiteral("1"));
  tune->SetMelodyTrack(0);
  Save(tune, "Mine");
  EXPECT_EQ(tune->MelodyTrack(), 2);
  EXPECT_EQ(Select("select MelodyTrack from tblMelodies where CodeName = 'Mine'"),
            QStringList{QStringLiteral("2")});
}

// --- Words, themes, tracks ---

TEST_F(SavingTest, WordsAreStoredInTheirOrder) {
  Save(MakeTune(), "Mine");
  EXPECT_EQ(Select("select * from tblWords where FileName = 'Mine'"),
            (QStringList{QStringLiteral("Mine|1|1|0|Glo-"), QStringLiteral("Mine|1|2|60|ria")}));
}

TEST_F(SavingTest, ATuneWithoutWordsLeavesNoRowsOfItsOwn) {
  const auto tune = MakeTune();
  Save(tune, "Mine");
  tune->SetWords(std::make_shared<Words>());
  Save(tune, "Mine");
  EXPECT_EQ(database.Column(QStringLiteral("select FileName from tblWords")),
            QStringList{QStringLiteral("Other")});
}

TEST_F(SavingTest, ThemesAreStoredInTheirOrderAndANullNoteBecomesABlank) {
  Save(MakeTune(), "Mine");
  EXPECT_EQ(Select("select * from tblThemes where CodeName = 'Mine'"),
            (QStringList{QStringLiteral("Mine|1|1|2|first|1|10"), QStringLiteral("Mine|2|3|3| |2|11")}));
}

// Only a null is no text for the database.
TEST_F(SavingTest, AnEmptyThemeNoteStaysEmptyAndANullOneBecomesABlank) {
  const auto tune = MakeTune();
  tune->Themes()->Item(1)->SetThemeNotes(QStringLiteral(""));
  Save(tune, "Mine");
  EXPECT_EQ(Select("select ThemeNotes, typeof(ThemeNotes) from tblThemes where CodeName = 'Mine'"),
            (QStringList{QStringLiteral("|text"), QStringLiteral(" |text")}));
  EXPECT_TRUE(tune->Themes()->Item(2)->ThemeNotes().isNull()) << "the tune itself stays as it is";
  const auto loaded = Load(QStringLiteral("Mine"))->Themes();
  EXPECT_EQ(loaded->Item(1)->ThemeNotes(), QString());
  EXPECT_EQ(loaded->Item(2)->ThemeNotes(), QStringLiteral(" "));
}

TEST_F(SavingTest, ATuneWithoutThemesHasItsOldRowsDeletedWhateverThePortion) {
  const auto tune = MakeTune();
  Save(tune, "Mine");
  for (const char* portion : {"ALL", "Info", "Words", "Tracks", "Notes"}) {
    database.AddRow(QStringLiteral("tblThemes"),
                    {QStringLiteral("mine"), 7, 1, 1, QStringLiteral("old"), 1, 1});
    tune->SetThemes(std::make_shared<Themes>());
    Save(tune, "Mine", portion);
    EXPECT_EQ(database.Column(QStringLiteral("select CodeName from tblThemes")),
              QStringList{QStringLiteral("Other")})
        << portion;
  }
}

TEST_F(SavingTest, TracksAreStoredInTheirOrderAndANamelessOneUnderItsNumber) {
  const auto tune = MakeTune();
  Save(tune, "Mine");
  EXPECT_EQ(Select("select * from tblTracks where CodeName = 'Mine'"),
            (QStringList{QStringLiteral("Mine|1|Track Number 1|3|0|0|0|0"),
                         QStringLiteral("Mine|2|Pedal|16|19|1|8|9")}));
  EXPECT_TRUE(tune->Tracks()->Item(1)->Description().isEmpty());
  EXPECT_EQ(Load(QStringLiteral("Mine"))->Tracks()->Item(1)->Description(), QStringLiteral("Track Number 1"));
}

// --- Events ---

TEST_F(SavingTest, EventsAreStoredInTheOrderOfTheTuneWithoutNoteOffs) {
  const auto tune = MakeTune();
  EXPECT_EQ(tune->Count(), 7);
  Save(tune, "Mine");
  EXPECT_EQ(Events("Mine"), (QStringList{QStringLiteral("128|5|1|1|30|1|1.25|40|C#4|90|b"),
                                         QStringLiteral("128|6|1|2|0|2|1|0|G2|127| "),
                                         QStringLiteral("133|8|2|1|0|1|1|0|C4|127| "),
                                         QStringLiteral("128|11|3|1|0|2|1|0|Ab2|127| ")}));
}

TEST_F(SavingTest, TheEventTableTakesTheColumnsOfTheTemplate) {
  Save(MakeTune(), "Mine");
  const auto columns = [this](const char* table) {
    QStringList names;
    const auto rows = Recordset::OpenTable(database.Connect(), QString::fromLatin1(table));
    for (int i = 0; i < rows->FieldCount(); ++i) names.append(rows->FieldName(i));
    return names;
  };
  EXPECT_EQ(columns("Mine"), columns("TemplateTune"));
  EXPECT_EQ(columns("Mine").size(), 11);
}

TEST_F(SavingTest, TheRowsOfTheTemplateComeAlongWithItsColumns) {
  database.AddRow(QStringLiteral("TemplateTune"),
                  {132, 999, 1, 1, 0, 1, 1.0, 0, QStringLiteral("C4"), 0, QStringLiteral(" ")});
  const auto tune = MakeTune();
  Save(tune, "Mine");
  EXPECT_EQ(Events("Mine").size(), 5);
  EXPECT_TRUE(Events("Mine").first().startsWith(QStringLiteral("132|999|")));
  // The second time the table is there, and is emptied.
  Save(tune, "Mine");
  EXPECT_EQ(Events("Mine").size(), 4);
}

TEST_F(SavingTest, ADummyEventIsSavedLikeANote) {
  const auto tune = std::make_shared<Tune>();
  tune->Add(MakeTone(DUMMY_NOTE, 2, 1, 1, 1, "C4"));
  Save(tune, "NewTune");
  EXPECT_EQ(Events("NewTune"), QStringList{QStringLiteral("132|2|1|1|0|1|1|0|C4|127| ")});
}

TEST_F(SavingTest, SavingUnderATakenNameReplacesThatTune) {
  const auto first = MakeTune();
  Save(first, "NewTune");
  const auto second = std::make_shared<Tune>();
  second->SetTitle(QStringLiteral("Second"));
  second->Add(MakeTone(MUSIC_NOTE, 2, 1, 1, 1, "E4"));
  Save(second, "NewTune");
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_EQ(Select("select Title from tblMelodies where CodeName = 'NewTune'"),
            QStringList{QStringLiteral("Second")});
  EXPECT_EQ(Events("NewTune").size(), 1);
  EXPECT_EQ(Select("select TrackName from tblTracks where CodeName = 'NewTune'"),
            QStringList{QStringLiteral("Default Track")});
  EXPECT_TRUE(Select("select * from tblWords where FileName = 'NewTune'").isEmpty());
  EXPECT_TRUE(Select("select * from tblThemes where CodeName = 'NewTune'").isEmpty());
}

TEST_F(SavingTest, NamesOfOtherCaseAreTheSameTuneEverywhere) {
  const auto tune = MakeTune();
  Save(tune, "Mine");
  Save(tune, "MINE");
  EXPECT_EQ(Select("select CodeName from tblMelodies where CodeName = 'mine'"),
            QStringList{QStringLiteral("MINE")});
  EXPECT_EQ(Select("select CodeName from tblTracks where CodeName = 'mine'").size(), 2);
  EXPECT_EQ(Select("select FileName from tblWords where FileName = 'mine'").size(), 2);
  EXPECT_EQ(Select("select CodeName from tblThemes where CodeName = 'mine'").size(), 2);
  EXPECT_EQ(Events("mine").size(), 4);
  EXPECT_EQ(database.Connect()->TableNames().filter(QStringLiteral("mine"), Qt::CaseInsensitive).size(), 1);
}

TEST_F(SavingTest, NamesWithBlanksSignsAndOtherLettersSaveAndLoad) {
  const QString longest(300, u'x');
  for (const QString& name : {QStringLiteral("A name - with (signs); 100% `new`\"!"),
                              QStringLiteral("Für Élise"), QStringLiteral("[half"), QStringLiteral("--"),
                              QStringLiteral("select"), QStringLiteral("1"), longest}) {
    bool failed = true;
    const auto tune = MakeTune();
    SaveTune(tune, name, failed, SavePortion::kAll);
    EXPECT_FALSE(failed) << name.toStdString();
    const auto loaded = Load(name);
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(loaded->FileName(), name);
    EXPECT_EQ(loaded->Count(), tune->Count());
  }
}

// --- The flags and the order ---

TEST_F(SavingTest, TheNameIsTakenOverBeforeAnythingElse) {
  const auto tune = MakeTune();
  tune->SetTrackFilterOn(true);
  EXPECT_TRUE(SaveFails(tune, "Mine"));  // the default answer is No
  EXPECT_EQ(tune->FileName(), QStringLiteral("Mine"));
}

TEST_F(SavingTest, OtherTunesStayAsTheyWere) {
  const QStringList before = OtherTune();
  const auto tune = MakeTune();
  for (const char* portion : {"ALL", "Info", "Words", "Tracks", "Notes"}) Save(tune, "Mine", portion);
  EXPECT_EQ(OtherTune(), before);
}

TEST_F(SavingTest, PartsAreWrittenInTheOrderCatalogueWordsThemesTracksEvents) {
  // Each serving comes after a section; what is there tells how far the save is.
  QStringList seen;
  platform.events->on_serve = [&](int) {
    const auto count = [this](const char* statement) { return QString::number(Select(statement).size()); };
    const bool table = database.Connect()->TableNames().contains(QStringLiteral("Mine"));
    seen.append(count("select * from tblMelodies where CodeName = 'Mine'") +
                count("select * from tblWords where FileName = 'Mine'") +
                count("select * from tblThemes where CodeName = 'Mine'") +
                count("select * from tblTracks where CodeName = 'Mine'") +
                (table ? QString::number(Events("Mine").size()) : QStringLiteral("-")));
  };
  Save(MakeTune(), "Mine");
  EXPECT_EQ(seen.mid(0, 6),
            (QStringList{QStringLiteral("1000-"), QStringLiteral("1200-"), QStringLiteral("1220-"),
                         QStringLiteral("1222-"), QStringLiteral("12220"), QStringLiteral("12221")}));
}

TEST_F(SavingTest, EveryEventRowIsCommittedByItself) {
  const auto tune = MakeTune();
  std::vector<qsizetype> rows;
  class TickingClock : public Clock {
   public:
    double SecondsSinceMidnight() override { return seconds_ += 0.1; }

   private:
    double seconds_ = 36000.0;
  };
  Platform().clock = std::make_shared<TickingClock>();  // every row is due to serve events
  platform.events->on_serve = [&](int) {
    if (database.Connect()->TableNames().contains(QStringLiteral("Mine")))
      rows.push_back(Events("Mine").size());
  };
  Save(tune, "Mine");
  // Twice more at the end, around the work of the disk.
  EXPECT_EQ(rows, (std::vector<qsizetype>{0, 1, 2, 3, 4, 4, 4}));
}

// --- Portions ---

class SavingAPortion : public SavingTest {
 protected:
  SavingAPortion() {
    Save(tune, "Mine");
    before = Parts();
    tune->SetTitle(QStringLiteral("New"));
    tune->Words()->Remove(1);
    tune->Themes()->Remove(1);
    tune->Tracks()->Remove(1);
    tune->Remove(1);
  }

  // The rows of each part, by the letters C, W, T (themes), R (tracks) and E.
  std::map<char, QStringList> Parts() const {
    return {{'C', Select("select * from tblMelodies where CodeName = 'Mine'")},
            {'W', Select("select * from tblWords where FileName = 'Mine'")},
            {'T', Select("select * from tblThemes where CodeName = 'Mine'")},
            {'R', Select("select * from tblTracks where CodeName = 'Mine'")},
            {'E', Events("Mine")}};
  }
  std::string ChangedParts() const {
    std::string changed;
    const auto now = Parts();
    for (const char part : {'C', 'W', 'T', 'R', 'E'})
      if (now.at(part) != before.at(part)) changed += part;
    return changed;
  }

  std::shared_ptr<Tune> tune = MakeTune();
  std::map<char, QStringList> before;
};

TEST_F(SavingAPortion, AllWritesEverything) {
  Save(tune, "Mine", "ALL");
  EXPECT_EQ(ChangedParts(), "CWTRE");
}

TEST_F(SavingAPortion, InfoWritesTheCatalogueAndTheThemes) {
  Save(tune, "Mine", "Info");
  EXPECT_EQ(ChangedParts(), "CT");
}

TEST_F(SavingAPortion, WordsWritesTheWordsAndTheThemes) {
  Save(tune, "Mine", "Words");
  EXPECT_EQ(ChangedParts(), "WT");
}

TEST_F(SavingAPortion, TracksWritesTheThemesAndTheTracks) {
  Save(tune, "Mine", "Tracks");
  EXPECT_EQ(ChangedParts(), "TR");
}

TEST_F(SavingAPortion, NotesWritesTheThemesAndTheEvents) {
  Save(tune, "Mine", "Notes");
  EXPECT_EQ(ChangedParts(), "TE");
}

TEST_F(SavingAPortion, AnotherWordWritesTheThemesAlone) {
  Save(tune, "Mine", "all");
  EXPECT_EQ(ChangedParts(), "T");
}

}  // namespace
}  // namespace zelmar::testing_support
