// Saves that cannot be: what is asked, what is told, and what the database and the tune hold afterwards.
#include "store/saving_fixture.h"
#include "support/full_disk.h"
#include "support/other_program.h"

namespace zelmar::testing_support {
namespace {

constexpr char kNothingWritten[] = "Nothing was written to the database.";
constexpr char kWhatIsSafe[] =
    "All other tunes in it are as they were. The tune in memory is whole and still counts as changed.";

bool Tells(const QString& text, const char* part) {
  return text.contains(QString::fromUtf8(part));
}

class FailingSave : public SavingTest {
 protected:
  // A save that fails before its first row.
  QString FailureBeforeTheFirstRow(const QString& code_name, int number, const char* portion = "ALL") {
    const QStringList before = Everything();
    const qsizetype events = tune->Count();
    const QString told = FailureOfSave(tune, code_name, number, portion);
    EXPECT_EQ(Everything(), before) << code_name.toStdString();
    EXPECT_TRUE(Tells(told, kNothingWritten)) << told.toStdString();
    EXPECT_TRUE(Tells(told, kWhatIsSafe)) << told.toStdString();
    EXPECT_EQ(tune->Count(), events);
    return told;
  }

  std::shared_ptr<Tune> tune = MakeTune();
};

// --- Questions and refusals ---

TEST_F(FailingSave, ATrackFilterIsAskedAboutWithNoAsTheDefault) {
  tune->SetTrackFilterOn(true);
  const QStringList before = Everything();
  EXPECT_TRUE(SaveFails(tune, "Mine"));
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kQuestion);
  EXPECT_EQ(
      Boxes()[0].text,
      QStringLiteral("This tune has a track filter set on, so some tracks will be silenced. Do you want to "
                     "continue saving?"));
  EXPECT_EQ(Boxes()[0].buttons, MessageButtons::kYesNo);
  EXPECT_EQ(Boxes()[0].default_button, MessageAnswer::kNo);
  EXPECT_EQ(Everything(), before);
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
  EXPECT_EQ(tune->FileName(), QStringLiteral("Mine"));
}

TEST_F(FailingSave, YesSavesATuneWithATrackFilter) {
  tune->SetTrackFilterOn(true);
  platform.messages->answers = {MessageAnswer::kYes};
  Save(tune, "Mine");
  EXPECT_EQ(Events("Mine").size(), 4);
}

TEST_F(FailingSave, WithoutADatabaseTheUserIsToldWhereItWasSought) {
  Global().DatabasePath = database.Directory() + QStringLiteral("/gone.mdb");
  EXPECT_TRUE(SaveFails(tune, "Mine"));
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_TRUE(Boxes()[0].text.startsWith(QStringLiteral("Zelmar Database cannot be found at the path = ")));
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
  EXPECT_FALSE(QFile::exists(Global().DatabasePath));
}

TEST_F(FailingSave, TracksAndNotesNeedTheCatalogueRow) {
  for (const char* portion : {"Tracks", "Notes"}) {
    for (const bool empty : {false, true}) {
      if (empty) database.Execute(QStringLiteral("delete * from tblMelodies"));
      const QStringList before = Everything();
      platform.messages->shown.clear();
      EXPECT_FALSE(SaveFails(tune, "Mine", portion));
      ASSERT_EQ(Boxes().size(), 1);
      EXPECT_EQ(Boxes()[0].icon, MessageIcon::kExclamation);
      EXPECT_EQ(Boxes()[0].title, QStringLiteral("Info on this Zelmar file has not been saved yet."));
      EXPECT_EQ(Boxes()[0].text,
                QStringLiteral("Before you can save part of a file, you must have previously saved all parts "
                               "of it - Info, Tracks, and Notes. "));
      EXPECT_EQ(Everything(), before);
      EXPECT_TRUE(tune->ChangedSinceLastSaved());
    }
  }
}

TEST_F(FailingSave, TracksAndInfoNeedTheEventTable) {
  Save(tune, "Mine");
  tune->SetTitle(QStringLiteral("New"));
  database.Execute(QStringLiteral("drop table [Mine]"));
  const QStringList before = Everything();
  for (const char* portion : {"Tracks", "Info"}) {
    platform.messages->shown.clear();
    EXPECT_FALSE(SaveFails(tune, "Mine", portion));
    ASSERT_EQ(Boxes().size(), 1);
    EXPECT_EQ(Boxes()[0].icon, MessageIcon::kExclamation);
    EXPECT_EQ(
        Boxes()[0].text,
        QStringLiteral("The notes for this melody have not been saved to disk yet. Please use SAVE ALL."));
    EXPECT_EQ(Everything(), before);
    EXPECT_TRUE(tune->ChangedSinceLastSaved());
  }
}

TEST_F(FailingSave, InfoDoesNotAskForTheCatalogueRow) {
  Save(tune, "Mine");
  database.Execute(QStringLiteral("delete * from tblMelodies where CodeName = 'Mine'"));
  Save(tune, "Mine", "Info");
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_EQ(Select("select * from tblMelodies where CodeName = 'Mine'").size(), 1);
}

TEST_F(FailingSave, NotesMakesTheEventTableAnew) {
  Save(tune, "Mine");
  database.Execute(QStringLiteral("drop table [Mine]"));
  Save(tune, "Mine", "Notes");
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_EQ(Events("Mine").size(), 4);
}

TEST_F(FailingSave, AnEventTableThatGoesWhileEventsAreServedSetsTheFlag) {
  platform.events->on_serve = [&](int) {
    if (database.Connect()->TableNames().contains(QStringLiteral("Mine")))
      database.Execute(QStringLiteral("drop table [Mine]"));
  };
  EXPECT_TRUE(SaveFails(tune, "Mine"));
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
  EXPECT_TRUE(Boxes().isEmpty());
  // The parts before it are there, and the maintenance report finds a tune without its table.
  EXPECT_EQ(Select("select * from tblMelodies where CodeName = 'Mine'").size(), 1);
  EXPECT_EQ(Select("select * from tblTracks where CodeName = 'Mine'").size(), 2);
}

TEST_F(FailingSave, NoTuneAndATuneWithoutTracksAreFailures) {
  bool failed = true;
  EXPECT_EQ(FailureNumber([&] { SaveTune(nullptr, QStringLiteral("Mine"), failed, SavePortion::kAll); }),
            error_number::kObjectNotSet);
  EXPECT_FALSE(failed);
  tune->SetTracks(std::make_shared<Tracks>());
  tune->SetMelodyTrack(0);
  FailureBeforeTheFirstRow(QStringLiteral("Mine"), error_number::kSubscript);
}

// --- Names that no statement can hold ---

TEST_F(FailingSave, ANameWithAQuotationMarkWritesNothing) {
  for (const char* portion : {"ALL", "Info", "Words", "Tracks", "Notes"}) {
    for (const char* name :
         {"O'Brien", "'", "''", "Oth''er", "x' OR 'a'='a", "'; delete from tblThemes --"}) {
      const QString told =
          FailureBeforeTheFirstRow(QString::fromLatin1(name), database_error::kSyntax, portion);
      EXPECT_TRUE(Tells(told, "a quotation mark ' ends a text"));
      EXPECT_TRUE(told.contains(QString::fromLatin1(name)));
    }
  }
}

TEST_F(FailingSave, ANameWithAQuotationMarkDeletesNoThemesOfOtherTunes) {
  tune->SetThemes(std::make_shared<Themes>());
  FailureBeforeTheFirstRow(QStringLiteral("x' OR 'a'='a"), database_error::kSyntax, "Words");
  EXPECT_EQ(Select("select * from tblThemes").size(), 1);
}

TEST_F(FailingSave, ANameWithABracketWritesNothing) {
  for (const char* portion : {"ALL", "Words"}) {
    for (const char* name : {"a]b", "]", "a]]"}) {
      const QString told =
          FailureBeforeTheFirstRow(QString::fromLatin1(name), database_error::kSyntax, portion);
      EXPECT_TRUE(Tells(told, "a bracket ] ends the name of a table"));
    }
  }
}

TEST_F(FailingSave, ANameOfBlanksAloneWritesNothing) {
  for (const char* name : {"", " ", "    ", "\t"})
    EXPECT_TRUE(Tells(FailureBeforeTheFirstRow(QString::fromLatin1(name), database_error::kSyntax),
                      "a name without letters"));
}

TEST_F(FailingSave, ANameOfTheDatabasesOwnTablesWritesNothing) {
  for (const char* name : {"tblMelodies", "TBLTRACKS", "TemplateTune", "tblDBInfo"})
    FailureBeforeTheFirstRow(QString::fromLatin1(name), database_error::kTableExists);
  for (const char* name : {"sqlite_master", "SQLITE_new"})
    FailureBeforeTheFirstRow(QString::fromLatin1(name), database_error::kSyntax);
}

TEST_F(FailingSave, ATableThatHoldsNoEventsIsNotEmptied) {
  database.Execute(QStringLiteral("create table [Addresses] (Person TEXT)"));
  database.AddRow(QStringLiteral("Addresses"), {QStringLiteral("Ann")});
  const QString told = FailureBeforeTheFirstRow(QStringLiteral("Addresses"), database_error::kTableExists);
  EXPECT_TRUE(Tells(told, "does not hold the events of a tune"));
  EXPECT_EQ(Select("select * from [Addresses]"), QStringList{QStringLiteral("Ann")});
}

// --- A database that does not take it ---

TEST_F(FailingSave, AMissingSharedTableIsFoundBeforeTheFirstRow) {
  for (const char* table : {"TemplateTune", "tblTracks", "tblThemes", "tblWords", "tblMelodies"}) {
    database.Execute(QStringLiteral("drop table ") + QString::fromLatin1(table));
    const QString told = FailureBeforeTheFirstRow(QStringLiteral("Mine"), error_number::kTableNotFound);
    EXPECT_TRUE(told.contains(QString::fromLatin1(table))) << told.toStdString();
  }
}

TEST_F(FailingSave, ATuneThatIsThereNeedsNoTemplate) {
  Save(tune, "Mine");
  database.Execute(QStringLiteral("drop table TemplateTune"));
  Save(tune, "Mine");
  EXPECT_EQ(Events("Mine").size(), 4);
}

TEST_F(FailingSave, ADatabaseThatAnotherProgramLocksStaysAsItWas) {
  Save(tune, "Mine");
  tune->SetTitle(QStringLiteral("New"));
  {
    const LockedDatabase locked(database);
    const QStringList before = Everything();
    QString told;
    try {
      bool failed = false;
      SaveTune(tune, QStringLiteral("Mine"), failed, SavePortion::kAll);
    } catch (const DatabaseError& failure) {
      EXPECT_EQ(failure.Number(), database_error::kInUse);
      told = failure.Description();
    }
    EXPECT_TRUE(Tells(told, "Another program keeps the database for itself")) << told.toStdString();
    EXPECT_TRUE(Tells(told, kNothingWritten));
    EXPECT_EQ(Everything(), before);
    EXPECT_TRUE(tune->ChangedSinceLastSaved());
  }
  Save(tune, "Mine");
}

TEST_F(FailingSave, AFullDiskLeavesWhatWasCommittedAndAllThatWasThere) {
  for (std::int32_t i = 20; i < 3000; ++i) tune->Add(MakeTone(MUSIC_NOTE, i, 4, 1, 1, "C4"));
  Save(tune, "Mine");
  const qsizetype events = Events("Mine").size();
  const QStringList other = OtherTune();
  int somewhere_in_the_events = 0;
  for (const qint64 limit : {0, 10000, 30000, 60000, 100000, 200000, 400000, 600000}) {
    tune->SetTitle(QStringLiteral("Limit %1").arg(limit));
    QString told;
    bool failed = false;
    {
      const FullDisk disk(static_cast<rlim_t>(limit));
      try {
        SaveTune(tune, QStringLiteral("Mine"), failed, SavePortion::kAll);
      } catch (const DatabaseError& failure) {
        told = failure.Description();
      }
    }
    EXPECT_TRUE(Tells(told, "its disk is full")) << limit << told.toStdString();
    EXPECT_TRUE(Tells(told, kWhatIsSafe)) << limit << told.toStdString();
    EXPECT_TRUE(Boxes().isEmpty());
    EXPECT_TRUE(tune->ChangedSinceLastSaved());
    EXPECT_EQ(database.Column(QStringLiteral("select * from pragma_integrity_check")),
              QStringList{QStringLiteral("ok")});
    EXPECT_EQ(OtherTune(), other);
    const qsizetype left = Events("Mine").size();
    if (left > 0 && left < events) {
      ++somewhere_in_the_events;
      EXPECT_TRUE(Tells(told, qPrintable(QStringLiteral("the first %1 events").arg(left))))
          << told.toStdString();
    }
    Save(tune, "Mine");
    EXPECT_EQ(Events("Mine").size(), events);
  }
  EXPECT_GT(somewhere_in_the_events, 0);
}

}  // namespace
}  // namespace zelmar::testing_support
