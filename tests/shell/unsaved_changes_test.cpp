// The question before another tune takes the place of the current one.
#include "shell/unsaved_changes.h"

#include <gtest/gtest.h>

#include "model/globals.h"
#include "model/main_window_link.h"
#include "shell/loaded_forms.h"
#include "shell/recovery_keeper.h"
#include "shell/unsaved_work.h"
#include "store/tune_loader.h"
#include "support/sample_database.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class UnsavedChanges : public ::testing::Test {
 protected:
  UnsavedChanges() {
    database_.AddTune(QStringLiteral("ONE"), {QStringLiteral("C4"), QStringLiteral("D4")});
    database_.AddTune(QStringLiteral("TWO"), {QStringLiteral("E4")});
  }

  std::shared_ptr<Tune> Load(const char* code_name = "ONE") {
    TuneLoader loader;
    QString name = QString::fromLatin1(code_name);
    loader.DoLoad(name);
    EXPECT_TRUE(loader.LoadedOk());
    return TheMainWindow().MyTune();
  }
  std::shared_ptr<Tune> LoadAndChange(const char* code_name = "ONE") {
    auto tune = Load(code_name);
    tune->SetTitle(QStringLiteral("Changed"));
    return tune;
  }
  void Answer(QList<MessageAnswer> answers) { platform_.messages->answers = std::move(answers); }
  // Acts once, while the next box stands.
  void InTheBox(const std::function<void()>& act) {
    platform_.messages->on_show = [act, done = false]() mutable {
      if (!std::exchange(done, true)) act();
    };
  }
  // Acts once, when the save that the next answer begins has come to its events.
  void InTheSave(const std::function<void()>& act) {
    platform_.events->on_serve = [act, done = false](int) mutable {
      if (FindLoadedForm(QStringLiteral("DialogWait")) != nullptr && !std::exchange(done, true)) act();
    };
  }
  QString StoredTitle(const char* code_name) const {
    return database_
        .Column(QStringLiteral("select Title from tblMelodies where CodeName = '%1'")
                    .arg(QString::fromLatin1(code_name)))
        .join(u',');
  }
  const QList<ShownMessage>& Boxes() const { return platform_.messages->shown; }

  ScriptedPlatform platform_;
  SampleDatabase database_;
};

// --- What counts ---

TEST_F(UnsavedChanges, WithoutATuneNothingIsAsked) {
  EXPECT_TRUE(MayReplaceTune());
  Global().TuneLoadedFlag = true;
  EXPECT_TRUE(MayReplaceTune());
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(UnsavedChanges, AnUnchangedTuneIsNotAskedAbout) {
  Load();
  EXPECT_TRUE(MayReplaceTune());
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(UnsavedChanges, AChangedTuneIsAskedAboutWithCancelAsTheDefault) {
  const auto tune = LoadAndChange();
  EXPECT_FALSE(MayReplaceTune());
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kQuestion);
  EXPECT_EQ(Boxes()[0].text, QStringLiteral("Do you want to save the current tune onto the database before "
                                            "another tune takes its place?"));
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("\"Changed\" is not saved"));
  EXPECT_EQ(Boxes()[0].buttons, MessageButtons::kYesNoCancel);
  EXPECT_EQ(Boxes()[0].default_button, MessageAnswer::kCancel);
  EXPECT_EQ(TheMainWindow().MyTune(), tune);
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("A Title"));
}

TEST_F(UnsavedChanges, TheMetronomeIsNoWork) {
  const auto tune = Load();
  tune->SetHearTick(1);
  tune->SetMetroVolume(127);
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
  EXPECT_FALSE(HasUnsavedWork(*tune));
  EXPECT_TRUE(MayReplaceTune());
  EXPECT_TRUE(Boxes().isEmpty());
  // A change beside it is.
  tune->SetTitle(QStringLiteral("x"));
  EXPECT_TRUE(HasUnsavedWork(*tune));
}

TEST_F(UnsavedChanges, ANewTuneIsWorkFromItsFirstNoteOn) {
  const auto tune = std::make_shared<Tune>();
  TheMainWindow().SetMyTune(tune);
  Global().TuneLoadedFlag = true;
  tune->SetTitle(QStringLiteral("Mine"));
  const auto add = [&tune](EventType type, std::int32_t abs_ref) {
    auto tone = std::make_shared<Tone>();
    tone->SetEventType(type);
    tone->SetAbsRef(abs_ref);
    tune->Add(std::move(tone));
  };
  add(DUMMY_NOTE, 1);
  add(TEMPO_CHANGE, 2);
  EXPECT_TRUE(MayReplaceTune());
  EXPECT_TRUE(Boxes().isEmpty());
  add(MUSIC_NOTE, 3);
  EXPECT_FALSE(MayReplaceTune());
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(UnsavedChanges, ATuneOfTheDatabaseThatLostItsNotesIsWork) {
  const auto tune = Load();
  while (tune->Count() > 0) tune->Remove(1);
  tune->SetChangedSinceLastSaved(true);
  EXPECT_TRUE(HasUnsavedWork(*tune));
}

TEST_F(UnsavedChanges, ATuneThatIsNotLoadedIsNotAskedAbout) {
  LoadAndChange();
  Global().TuneLoadedFlag = false;
  EXPECT_EQ(UnsavedTune(), nullptr);
  EXPECT_TRUE(MayReplaceTune());
}

// --- Answers ---

TEST_F(UnsavedChanges, YesSavesTheTuneUnderTheStatusWindow) {
  const auto tune = LoadAndChange();
  Answer({MessageAnswer::kYes});
  QString caption;
  InTheSave([&] { caption = FindLoadedForm(QStringLiteral("DialogWait"))->windowTitle(); });
  EXPECT_TRUE(MayReplaceTune());
  EXPECT_EQ(caption, QStringLiteral("Saving tune  ONE to database on disk. Please wait."));
  EXPECT_EQ(FindLoadedForm(QStringLiteral("DialogWait")), nullptr);
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
  EXPECT_FALSE(tune->ChangedSinceLastSaved());
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(UnsavedChanges, NoGivesTheChangesUp) {
  const auto tune = LoadAndChange();
  Answer({MessageAnswer::kNo});
  EXPECT_TRUE(MayReplaceTune());
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("A Title"));
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
}

TEST_F(UnsavedChanges, ASaveThatFailsCountsAsCancelAndIsTold) {
  LoadAndChange();
  database_.Execute(QStringLiteral("drop table tblWords"));
  Answer({MessageAnswer::kYes});
  EXPECT_FALSE(MayReplaceTune());
  ASSERT_EQ(Boxes().size(), 2);
  EXPECT_EQ(Boxes()[1].icon, MessageIcon::kCritical);
  EXPECT_TRUE(Boxes()[1].text.contains(QStringLiteral("tblWords")));
  EXPECT_EQ(FindLoadedForm(QStringLiteral("DialogWait")), nullptr);
}

TEST_F(UnsavedChanges, ASaveThatIsCalledOffCountsAsCancel) {
  LoadAndChange()->SetTrackFilterOn(true);
  Answer({MessageAnswer::kYes, MessageAnswer::kNo});
  EXPECT_FALSE(MayReplaceTune());
  EXPECT_EQ(Boxes().size(), 2);
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("A Title"));
}

TEST_F(UnsavedChanges, WithoutADatabaseYesCountsAsCancel) {
  LoadAndChange();
  Global().DatabasePath = database_.Directory() + QStringLiteral("/gone.mdb");
  Answer({MessageAnswer::kYes});
  EXPECT_FALSE(MayReplaceTune());
  EXPECT_EQ(Boxes().size(), 2);
}

TEST_F(UnsavedChanges, AnEventTableThatGoesInTheMiddleIsTold) {
  LoadAndChange();
  Answer({MessageAnswer::kYes});
  platform_.events->on_serve = [&, done = false](int) mutable {
    if (done || !database_.Column(QStringLiteral("select * from [ONE]")).isEmpty()) return;
    done = true;
    database_.Execute(QStringLiteral("drop table [ONE]"));
  };
  EXPECT_FALSE(MayReplaceTune());
  ASSERT_EQ(Boxes().size(), 2);
  EXPECT_EQ(Boxes()[1].icon, MessageIcon::kCritical);
  EXPECT_EQ(Boxes()[1].title, QStringLiteral("\"ONE\" is not saved"));
  EXPECT_TRUE(
      Boxes()[1].text.endsWith(QStringLiteral("The notes in the database are incomplete; save again.")))
      << qPrintable(Boxes()[1].text);
}

// --- Meanwhile ---

TEST_F(UnsavedChanges, ATuneThatPlaysIsStoppedBeforeTheBoxStands) {
  const auto tune = LoadAndChange();
  bool playing_in_the_box = true;
  bool asked = false;
  QObject::connect(tune.get(), &Tune::Ticked, tune.get(), [&] {
    if (std::exchange(asked, true)) return;
    EXPECT_TRUE(tune->Playing());
    InTheBox([&] { playing_in_the_box = tune->Playing(); });
    EXPECT_FALSE(MayReplaceTune());
  });
  tune->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  tune->Play();
  EXPECT_TRUE(asked);
  EXPECT_FALSE(playing_in_the_box);
}

TEST_F(UnsavedChanges, ATuneThatIsReplacedWhileTheBoxStandsIsAskedAboutInItsTurn) {
  LoadAndChange("ONE");
  InTheBox([this] { LoadAndChange("TWO"); });
  Answer({MessageAnswer::kNo, MessageAnswer::kCancel});
  EXPECT_FALSE(MayReplaceTune());
  EXPECT_EQ(Boxes().size(), 2);
}

TEST_F(UnsavedChanges, AnUnchangedTuneThatCameWhileTheBoxStoodMayGo) {
  LoadAndChange("ONE");
  InTheBox([this] { Load("TWO"); });
  Answer({MessageAnswer::kNo});
  EXPECT_TRUE(MayReplaceTune());
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(UnsavedChanges, YesSavesTheTuneThatWasAskedAboutThoughItIsReplaced) {
  LoadAndChange("ONE");
  InTheBox([this] { Load("TWO"); });
  Answer({MessageAnswer::kYes});
  EXPECT_TRUE(MayReplaceTune());
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
  EXPECT_EQ(StoredTitle("TWO"), QStringLiteral("A Title"));
}

TEST_F(UnsavedChanges, ATuneThatIsReplacedDuringTheSaveIsSavedToItsEnd) {
  LoadAndChange("ONE");
  Answer({MessageAnswer::kYes});
  InTheSave([this] { Load("TWO"); });
  EXPECT_TRUE(MayReplaceTune());
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
  EXPECT_EQ(TheMainWindow().MyTune()->FileName(), QStringLiteral("TWO"));
}

TEST_F(UnsavedChanges, ATuneThatIsChangedDuringTheSaveIsAskedAboutAgain) {
  const auto tune = LoadAndChange();
  int served = 0;
  platform_.events->on_serve = [&](int) {
    if (StoredTitle("ONE") == QLatin1String("Changed") && served++ == 0)
      tune->SetTitle(QStringLiteral("Later"));
  };
  Answer({MessageAnswer::kYes, MessageAnswer::kCancel});
  EXPECT_FALSE(MayReplaceTune());
  EXPECT_EQ(Boxes().size(), 2);
  EXPECT_EQ(Boxes()[1].title, QStringLiteral("\"Later\" is not saved"));
}

TEST_F(UnsavedChanges, AProgramThatClosesWhileTheBoxStandsReplacesNothing) {
  for (const MessageAnswer answer : {MessageAnswer::kYes, MessageAnswer::kNo, MessageAnswer::kCancel}) {
    Global().MainFormLoaded = false;
    LoadAndChange();
    InTheBox([] { Global().MainFormLoaded = true; });
    Answer({answer});
    EXPECT_FALSE(MayReplaceTune());
  }
}

TEST_F(UnsavedChanges, AProgramThatClosesDuringTheSaveReplacesNothing) {
  LoadAndChange();
  Answer({MessageAnswer::kYes});
  InTheSave([] { Global().MainFormLoaded = true; });
  EXPECT_FALSE(MayReplaceTune());
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
}

TEST_F(UnsavedChanges, ACommandThatComesMeanwhileIsTurnedAway) {
  LoadAndChange();
  bool meanwhile = true;
  Answer({MessageAnswer::kYes});
  InTheSave([&] { meanwhile = MayReplaceTune(); });
  EXPECT_TRUE(MayReplaceTune());
  EXPECT_FALSE(meanwhile);
  EXPECT_EQ(Boxes().size(), 1);
  // And afterwards all is as before.
  LoadAndChange();
  EXPECT_FALSE(MayReplaceTune());
  EXPECT_EQ(Boxes().size(), 2);
}

}  // namespace
}  // namespace zelmar
