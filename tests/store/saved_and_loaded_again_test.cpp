// Tunes that come back as they were saved, whatever stands in their fields, and names under which none is
// saved.
#include <limits>
#include <map>

#include "store/saved_tune.h"
#include "store/saving_fixture.h"
#include "store/statement_dialect.h"
#include "store/tune_name.h"
#include "store/tune_removal.h"
#include "support/dice.h"
#include "support/other_program.h"

namespace zelmar::testing_support {
namespace {

template <typename T>
T End(Dice& dice) {
  switch (dice(4)) {
    case 0:
      return std::numeric_limits<T>::min();
    case 1:
      return std::numeric_limits<T>::max();
    case 2:
      return T{1};
    default:
      return static_cast<T>(dice(100));
  }
}

QString AnyText(Dice& dice) {
  static const char* const kTexts[] = {
      "O'Carolan",   "\"Quoted\"", "Dvo\u0159\u00e1k", "semi;colon", "100 %", "a*b_c?d", "[bracket]",
      "line\nbreak", " blanks ",   "\u97f3\u697d",     "--",         "NULL",  "0"};
  return QString::fromUtf8(kTexts[dice(13)]);
}

class SavedAndLoaded : public SavingTest {
 protected:
  static std::shared_ptr<Tune> AnyTune(Dice& dice) {
    auto tune = std::make_shared<Tune>();
    tune->SetTitle(AnyText(dice));
    tune->SetDescription(AnyText(dice));
    tune->SetComposer(AnyText(dice));
    tune->SetCountry(AnyText(dice));
    tune->SetCategory(AnyText(dice));
    tune->SetSoloInstrument(AnyText(dice));
    tune->SetEnsemble(AnyText(dice));
    tune->SetLength(AnyText(dice));
    tune->SetStyle(AnyText(dice));
    tune->SetBeatsPerBar(static_cast<std::int16_t>(1 + dice(12)));
    tune->SetBeatLength(static_cast<std::uint8_t>(1 << dice(5)));
    tune->SetKeySignature(End<std::int16_t>(dice));
    tune->SetKeyMode(End<std::uint8_t>(dice));
    tune->SetTempo(dice(3) == 0 ? std::int16_t{32767} : static_cast<std::int16_t>(1 + dice(300)));
    static const char* const kModes[] = {"GM", "GM2", "GS", "XG"};
    tune->SetMIDIMode(QString::fromLatin1(kModes[dice(4)]));
    tune->SetAccompPattern(End<std::uint8_t>(dice));
    tune->SetMelodyTrack(static_cast<std::uint8_t>(1 + dice(255)));
    tune->SetRank(End<std::int16_t>(dice));
    tune->Tracks()->Clear();
    for (int number = dice(2); number < 256; number += 1 + dice(90))
      tune->Tracks()->Add(AnyText(dice), static_cast<std::uint8_t>(number), End<std::uint8_t>(dice),
                          End<std::uint8_t>(dice), dice(2) == 0, End<std::uint8_t>(dice),
                          End<std::uint8_t>(dice), QString::number(number));
    for (int i = dice(6); i > 0; --i)
      tune->Words()->Add(End<std::int16_t>(dice), End<std::int16_t>(dice), End<std::int16_t>(dice),
                         AnyText(dice));
    for (int i = dice(5); i > 0; --i)
      tune->Themes()->Add(static_cast<std::uint8_t>(250 + i), End<std::int16_t>(dice),
                          End<std::int16_t>(dice), AnyText(dice), End<std::uint8_t>(dice),
                          End<std::int16_t>(dice));
    for (int i = 1 + dice(30); i > 0; --i) {
      auto tone = std::make_shared<Tone>();
      auto type = dice(2) ? MUSIC_NOTE : End<std::uint8_t>(dice);
      if (type == MUSIC_NOTE_OFF) type = DUMMY_NOTE;
      tone->SetEventType(type);
      tone->SetAbsRef(tune->LastAbsRef() + 1 + dice(1000));
      tone->SetBar(static_cast<std::int16_t>(1 + dice(200)));
      tone->SetBeat(static_cast<std::int16_t>(1 + dice(12)));
      tone->SetTick(static_cast<std::int16_t>(dice(120)));
      if (type != MUSIC_NOTE) {
        tone->SetBeat(End<std::int16_t>(dice));
        tone->SetTick(End<std::int16_t>(dice));
      }
      tone->SetTrack(End<std::uint8_t>(dice));
      tone->SetDuration(dice(5) == 0 ? 1.0 / 3 : dice(1000) / 120.0);
      tone->SetInstrument(End<std::uint8_t>(dice));
      tone->SetVolume(End<std::uint8_t>(dice));
      tone->SetNumber(static_cast<std::int16_t>(12 + dice(116)));
      static const char* const kMarks[] = {" ", "#", "b"};
      tone->SetEnHarmonic(QString::fromLatin1(kMarks[dice(3)]));
      tune->Add(tone);
    }
    tune->CalcNotesOff();
    tune->SortStartTimes();
    return tune;
  }

  static QStringList EventsOf(const Tune& tune) {
    QStringList lines;
    for (const auto& tone : tune)
      if (tone->EventType() != MUSIC_NOTE_OFF)
        lines.append(QStringLiteral("%1: %2 at %3.%4.%5 track %6 for %7 patch %8 %9")
                         .arg(tone->AbsRef())
                         .arg(tone->EventType())
                         .arg(tone->Bar())
                         .arg(tone->Beat())
                         .arg(tone->Tick())
                         .arg(tone->Track())
                         .arg(tone->Duration(), 0, 'g', 17)
                         .arg(tone->Instrument())
                         .arg(tone->Pitch()) +
                     QStringLiteral(" volume %1 mark '%2'").arg(tone->Volume()).arg(tone->EnHarmonic()));
    return lines;
  }

  static QStringList CatalogueOf(const Tune& tune) {
    return {tune.Title(),
            tune.Description(),
            tune.Composer(),
            tune.Country(),
            tune.Category(),
            tune.SoloInstrument(),
            tune.Ensemble(),
            tune.Length(),
            tune.Style(),
            tune.MIDIMode(),
            QStringLiteral("%1/%2 key %3 mode %4 tempo %5 pattern %6 melody %7 rank %8")
                .arg(tune.BeatsPerBar())
                .arg(tune.BeatLength())
                .arg(tune.KeySignature())
                .arg(tune.KeyMode())
                .arg(tune.Tempo())
                .arg(tune.AccompPattern())
                .arg(tune.MelodyTrack())
                .arg(tune.Rank())};
  }

  static QStringList PartsOf(Tune& tune) {
    QStringList tracks, words, themes;
    for (const auto& track : *tune.Tracks())
      tracks.append(QStringLiteral("track %1 '%2' %3 %4 %5 %6 %7")
                        .arg(track->TrackNumber(), 3)
                        .arg(track->Description())
                        .arg(track->Channel())
                        .arg(track->Instrument())
                        .arg(track->Muted())
                        .arg(track->BankMSB0())
                        .arg(track->BankLSB32()));
    for (const auto& word : *tune.Words())
      words.append(QStringLiteral("word %1.%2.%3 '%4'")
                       .arg(word->Bar())
                       .arg(word->Beat())
                       .arg(word->Tick())
                       .arg(word->WordText()));
    for (const auto& theme : *tune.Themes())
      themes.append(QStringLiteral("theme %1 %2-%3 '%4' %5 %6")
                        .arg(theme->ThemeNo())
                        .arg(theme->ThemeStartBar())
                        .arg(theme->ThemeEndBar())
                        .arg(theme->ThemeNotes())
                        .arg(theme->TrackNumber())
                        .arg(theme->Rank()));
    tracks.sort();
    words.sort();
    themes.sort();
    return tracks + words + themes;
  }
};

TEST_F(SavedAndLoaded, TunesWithAnyFieldsComeBackAsTheyWere) {
  for (unsigned seed = 1; seed <= 25; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    const auto tune = AnyTune(dice);
    const auto events = EventsOf(*tune), catalogue = CatalogueOf(*tune), parts = PartsOf(*tune);
    Save(tune, "Mine");
    EXPECT_EQ(EventsOf(*tune), events);
    const auto loaded = Load(QStringLiteral("MINE"));
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(loaded->FileName(), QStringLiteral("Mine"));
    QStringList sorted_before = events, sorted_after = EventsOf(*loaded);
    sorted_before.sort();
    sorted_after.sort();
    EXPECT_EQ(sorted_after, sorted_before);
    EXPECT_EQ(CatalogueOf(*loaded), catalogue);
    EXPECT_EQ(PartsOf(*loaded), parts);
    EXPECT_FALSE(loaded->ChangedSinceLastSaved());
    for (const auto& tone : *loaded) {
      EXPECT_EQ(tone->BeatsPerBar(), loaded->BeatsPerBar());
      EXPECT_EQ(tone->BeatLength(), loaded->BeatLength());
      EXPECT_EQ(tone->OldVolume(), tone->Volume());
      int channel = 1;
      for (const auto& track : *loaded->Tracks())
        if (track->TrackNumber() == tone->Track()) channel = track->Channel();
      EXPECT_EQ(tone->Channel(), channel);
    }
  }
}

TEST_F(SavedAndLoaded, TunesLoadInTheOrderInWhichTheyWereSaved) {
  Dice dice(99);
  const auto tune = AnyTune(dice);
  const auto events = EventsOf(*tune);
  Save(tune, "Mine");
  EXPECT_EQ(EventsOf(*Load(QStringLiteral("Mine"))), events);
}

TEST_F(SavedAndLoaded, ASecondSaveLeavesNothingOfTheFirst) {
  Dice dice(7);
  Save(AnyTune(dice), "Mine");
  Dice again(8);
  const auto second = AnyTune(again);
  const auto events = EventsOf(*second), parts = PartsOf(*second);
  Save(second, "mine");
  const auto loaded = Load(QStringLiteral("mine"));
  EXPECT_EQ(EventsOf(*loaded), events);
  EXPECT_EQ(PartsOf(*loaded), parts);
  EXPECT_EQ(Select("select Count(1) from tblMelodies where CodeName = 'MINE'"),
            QStringList(QStringLiteral("1")));
}

TEST_F(SavedAndLoaded, OtherTunesStayUntouched) {
  const auto other = OtherTune();
  for (unsigned seed = 1; seed <= 4; ++seed) {
    Dice dice(seed + 300);
    Save(AnyTune(dice), seed % 2 ? "Oth" : "Other one");
    EXPECT_EQ(OtherTune(), other);
  }
}

TEST_F(SavedAndLoaded, ATuneWithAnOddNameLoadsAndGoes) {
  for (const char* const name : {"O'Carolan", "a b", "x;y", "100%", "a*b", "select", "1", "\u00c9t\u00e9",
                                 "a-b", "\"q\"x", "a(b)", "a.b", "a,b", "--x", "a!b"}) {
    SCOPED_TRACE(name);
    const QString text = QString::fromUtf8(name);
    if (!WhyNotATuneName(text).isEmpty()) continue;  // refused everywhere, as the next tests show
    const auto tune = MakeTune();
    Save(tune, name);
    const auto events = EventsOf(*tune);
    EXPECT_EQ(EventsOf(*Load(text)), events);
    const auto other = OtherTune();
    RemoveTune(database.Connect(), text);
    EXPECT_EQ(Rows(QStringLiteral("select Title from tblMelodies where CodeName = ") +
                   StatementDialect::Quoted(text)),
              QStringList());
    EXPECT_EQ(OtherTune(), other);
  }
  EXPECT_EQ(WhyNotATuneName(QStringLiteral("100%")), QString());
  EXPECT_EQ(WhyNotATuneName(QStringLiteral("a b")), QString());
}

const char* const kRefusedNames[] = {
    "",          "tblMelodies", "TBLTRACKS", "tblwords",      "TemplateTune", "templatetune",
    "tblDBInfo", "a]b",         "[x]",       "sqlite_master", "SQLITE_x",     "tblComposer"};

TEST_F(SavedAndLoaded, NamesThatAreNoTunesAreRefusedBySaving) {
  for (const char* const name : kRefusedNames) {
    SCOPED_TRACE(name);
    EXPECT_NE(WhyNotATuneName(QString::fromLatin1(name)), QString());
    const auto before = Everything();
    bool failed = false;
    const auto tune = MakeTune();
    EXPECT_NE(FailureNumber([&] { SaveTune(tune, QString::fromLatin1(name), failed, SavePortion::kAll); }),
              0);
    EXPECT_EQ(Everything(), before);
    EXPECT_TRUE(tune->ChangedSinceLastSaved());
  }
}

TEST_F(SavedAndLoaded, NamesThatAreNoTunesAreRefusedByEveryRemoval) {
  using Removal = void (*)(const std::shared_ptr<Connection>&, const QString&);
  const auto before = Everything();
  const auto connection = database.Connect();
  for (const Removal removal :
       {Removal{&RemoveTune}, Removal{&RemoveTuneReferences}, Removal{&DropEventTable},
        Removal{&RemoveTrackRows}, Removal{&RemoveWordRows}})
    for (const char* const name : kRefusedNames) {
      SCOPED_TRACE(name);
      const int guard = FailureNumber([&] { RequireTuneName(QString::fromLatin1(name)); });
      EXPECT_NE(guard, 0);
      EXPECT_EQ(FailureNumber([&] { removal(connection, QString::fromLatin1(name)); }), guard);
    }
  EXPECT_EQ(Everything(), before);
}

TEST_F(SavedAndLoaded, TheTitleOfAnotherTuneIsFoundByItsNameInAnyCase) {
  Save(MakeTune(), "Mine");
  EXPECT_EQ(TitleOfSavedTune(QStringLiteral("mINE")), QStringLiteral("It's a Title"));
  EXPECT_EQ(TitleOfSavedTune(QStringLiteral("Free")), std::nullopt);
}

TEST_F(SavedAndLoaded, ASaveThatBreaksOffInTheNotesTellsThatTheyAreNoLongerWhole) {
  const auto tune = MakeTune();
  Save(tune, "Mine");
  {
    OtherProgram program(database.Path());
    program.Run(
        "CREATE TRIGGER halt BEFORE INSERT ON [Mine] WHEN new.AbsRef = 8 BEGIN SELECT RAISE(ABORT, 'no "
        "more'); END");
  }
  tune->SetChangedSinceLastSaved(true);
  QString words;
  bool failed = false;
  try {
    SaveTune(tune, QStringLiteral("Mine"), failed, SavePortion::kAll);
    ADD_FAILURE() << "the save went well";
  } catch (const Failure& failure) {
    words = failure.Description();
  }
  EXPECT_TRUE(words.contains(QStringLiteral("the notes in the database are incomplete; save again"),
                             Qt::CaseInsensitive))
      << words.toStdString();
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
}

TEST_F(SavedAndLoaded, APartOfATuneThatWasNeverSavedIsNotSaved) {
  for (const char* const portion : {"Tracks", "Notes", "Info"}) {
    SCOPED_TRACE(portion);
    platform.messages->shown.clear();
    const auto before = Everything();
    const auto tune = MakeTune();
    EXPECT_FALSE(SaveFails(tune, "Mine", portion));
    EXPECT_EQ(Everything(), before);
    ASSERT_EQ(Boxes().size(), 1);
    EXPECT_EQ(Boxes()[0].icon, MessageIcon::kExclamation);
    if (QLatin1String(portion) == QLatin1String("Info")) {
      EXPECT_EQ(
          Boxes()[0].text,
          QStringLiteral("The notes for this melody have not been saved to disk yet. Please use SAVE ALL."));
    } else {
      EXPECT_EQ(Boxes()[0].title, QStringLiteral("Info on this Zelmar file has not been saved yet."));
      EXPECT_EQ(Boxes()[0].text,
                QStringLiteral("Before you can save part of a file, you must have previously saved all parts "
                               "of it - Info, Tracks, and Notes. "));
    }
    EXPECT_TRUE(tune->ChangedSinceLastSaved());
  }
}

TEST_F(SavedAndLoaded, APartThatIsSavedAloneLeavesTheOthersAsTheyWere) {
  struct Part {
    const char* portion;
    const char* table;
  };
  static const Part kParts[] = {
      {"Info", "tblMelodies"}, {"Words", "tblWords"}, {"Tracks", "tblTracks"}, {"Notes", "[Mine]"}};
  const auto rows = [this](const char* table) {
    return Rows(QStringLiteral("select * from ") + QString::fromLatin1(table));
  };
  for (const Part& saved : kParts) {
    SCOPED_TRACE(saved.portion);
    Dice dice(41), again(42);
    Save(AnyTune(dice), "Mine");
    std::map<std::string, QStringList> before;
    for (const Part& part : kParts) before[part.table] = rows(part.table);
    const auto tune = AnyTune(again);
    tune->Words()->Add(1, 2, 3, QStringLiteral("la"));
    tune->Themes()->Clear();
    tune->Themes()->Add(9, 1, 2, QStringLiteral("only one"), 1, 5);
    EXPECT_FALSE(SaveFails(tune, "Mine", saved.portion));
    for (const Part& part : kParts)
      EXPECT_EQ(rows(part.table) != before[part.table], part.portion == saved.portion) << part.table;
    // The themes go with each.
    EXPECT_EQ(Select("select ThemeNo, ThemeNotes from tblThemes where CodeName = 'Mine'"),
              QStringList({"9|only one"}));
  }
}

TEST_F(SavedAndLoaded, EmptyFieldsAreFilledInTheTuneAndInTheDatabase) {
  const auto tune = std::make_shared<Tune>();
  tune->SetTitle(QString());
  tune->SetMelodyTrack(0);
  tune->Tracks()->Item(1)->SetDescription(QString());
  tune->Tracks()->Item(1)->SetTrackNumber(7);
  Save(tune, "Mine");
  EXPECT_EQ(tune->Title(), QString());
  EXPECT_EQ(tune->MelodyTrack(), 7);
  EXPECT_EQ(tune->Length(), QStringLiteral("Test"));
  EXPECT_EQ(tune->Composer(), QStringLiteral(" "));
  EXPECT_EQ(Select("select Title, Length, Composer, MelodyTrack from tblMelodies where CodeName = 'Mine'"),
            QStringList({"No title for this piece|Test| |7"}));
  EXPECT_EQ(Select("select TrackName from tblTracks where CodeName = 'Mine'"),
            QStringList({"Track Number 7"}));
}

TEST_F(SavedAndLoaded, ATrackFilterIsAskedAboutWithNoFirst) {
  const auto tune = MakeTune();
  tune->SetTrackFilterOn(true);
  const auto before = Everything();
  EXPECT_TRUE(SaveFails(tune, "Mine"));
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kQuestion);
  EXPECT_EQ(Boxes()[0].buttons, MessageButtons::kYesNo);
  EXPECT_EQ(Boxes()[0].default_button, MessageAnswer::kNo);
  EXPECT_EQ(Boxes()[0].text,
            QStringLiteral("This tune has a track filter set on, so some tracks will be silenced. Do you "
                           "want to continue saving?"));
  EXPECT_EQ(Everything(), before);
  platform.messages->answers = {MessageAnswer::kYes};
  EXPECT_FALSE(SaveFails(tune, "Mine"));
}

}  // namespace
}  // namespace zelmar::testing_support
