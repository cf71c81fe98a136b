// Saving under another name: what is asked first, what the tune keeps when it fails, what shows it after.
#include "app/saving_fixture.h"
#include "app/troubled_database.h"
#include "store/tune_name.h"

namespace zelmar {
namespace {

using namespace testing_support;

TEST_F(SavingCommand, SaveAsAsksForANameWithNothingFilledIn) {
  StartWithTune();
  RunCommand(QStringLiteral("mnuFileSaveAs"));
  ASSERT_EQ(platform_.input->shown.size(), 1);
  EXPECT_EQ(platform_.input->shown[0].title, QStringLiteral("Save As"));
  EXPECT_EQ(platform_.input->shown[0].prompt, QStringLiteral("New name for the file being saved"));
  EXPECT_TRUE(platform_.input->shown[0].default_text.isEmpty());
  // Cancel ends the command.
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_TRUE(captions_.isEmpty());
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Changed"));
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("ONE"));
}

TEST_F(SavingCommand, WhatIsToldOfAnUnchangedTuneInALibraryThatIsReadOnlySpeaksOfNoChange) {
  StartWithTune();
  LoadTune();
  const auto tune = main_->MyTune();
  const auto told = [this] {
    try {
      platform_.input->answers = {QStringLiteral("Copy")};
      RunCommand(QStringLiteral("mnuFileSaveAs"));
    } catch (const Failure& failure) {
      return failure.Description();
    }
    return QStringLiteral("nothing");
  };
  const ReadOnlyDatabase read_only(database_);
  const QString unchanged = told();
  EXPECT_TRUE(unchanged.startsWith(QStringLiteral("\"Copy\" is not saved."))) << qPrintable(unchanged);
  EXPECT_TRUE(unchanged.endsWith(QStringLiteral("The tune in memory is whole."))) << qPrintable(unchanged);
  EXPECT_FALSE(tune->ChangedSinceLastSaved());
  EXPECT_EQ(tune->SavedFileName(), QStringLiteral("ONE"));
  tune->SetTitle(QStringLiteral("Changed"));
  const QString changed = told();
  EXPECT_TRUE(changed.endsWith(QStringLiteral("and still counts as changed."))) << qPrintable(changed);
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
}

TEST_F(SavingCommand, SaveAsSavesUnderTheAnswerAndSaysSo) {
  StartWithTune();
  platform_.input->answers = {QStringLiteral("My own")};
  RunCommand(QStringLiteral("mnuFileSaveAs"));
  EXPECT_EQ(captions_,
            QStringList{QStringLiteral("Saving Zelmar file My own to database on disk. Please wait.")});
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kInformation);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("Save Completed OK"));
  EXPECT_EQ(Boxes()[0].text, QStringLiteral("Saved My own to disk in Zelmar database."));
  EXPECT_TRUE(StatusIsGone());
  EXPECT_EQ(StoredTitle("My own"), QStringLiteral("My own - Copy"));
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("First"));
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("My own"));
  EXPECT_EQ(database_.Column(QStringLiteral("select * from [My own]")).size(), Pitches().size());
}

TEST_F(SavingCommand, SaveAsAsksBeforeItReplacesAnotherTune) {
  StartWithTune();
  platform_.input->answers = {QStringLiteral("two")};
  RunCommand(QStringLiteral("mnuFileSaveAs"));
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kQuestion);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("Save As"));
  EXPECT_EQ(Boxes()[0].text,
            QStringLiteral("The database has the tune \"Second\" under the name two already. Do "
                           "you want to replace it?"));
  EXPECT_EQ(Boxes()[0].buttons, MessageButtons::kYesNo);
  EXPECT_EQ(Boxes()[0].default_button, MessageAnswer::kNo);
  // No is the answer of the default.
  EXPECT_TRUE(captions_.isEmpty());
  EXPECT_EQ(StoredTitle("TWO"), QStringLiteral("Second"));
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Changed"));
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("ONE"));
}

TEST_F(SavingCommand, SaveAsReplacesAnotherTuneAfterYes) {
  StartWithTune();
  platform_.input->answers = {QStringLiteral("two")};
  platform_.messages->answers = {MessageAnswer::kYes};
  RunCommand(QStringLiteral("mnuFileSaveAs"));
  ASSERT_EQ(Boxes().size(), 2);
  EXPECT_EQ(Boxes()[1].icon, MessageIcon::kInformation);
  EXPECT_EQ(StoredTitle("TWO"), QStringLiteral("two - Copy"));
}

TEST_F(SavingCommand, SaveAsUnderTheTunesOwnNameAsksNothing) {
  StartWithTune();
  platform_.input->answers = {QStringLiteral("one")};
  RunCommand(QStringLiteral("mnuFileSaveAs"));
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kInformation);
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("one - Copy"));
}

TEST_F(SavingCommand, ANewTuneThatBearsTheNameOfAnotherByChanceAsks) {
  Start();
  const auto tune = TuneOfBars(1);
  tune->SetFileName(QStringLiteral("TWO"));
  main_->SetMyTune(tune);
  Global().TuneLoadedFlag = true;
  platform_.input->answers = {QStringLiteral("TWO")};
  RunCommand(QStringLiteral("mnuFileSaveAs"));
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kQuestion);
  EXPECT_EQ(StoredTitle("TWO"), QStringLiteral("Second"));
}

TEST_F(SavingCommand, SaveAsThatFailsSaysSoAndTheTuneKeepsItsNames) {
  StartWithTune();
  platform_.input->answers = {QStringLiteral("Copy")};
  main_->MyTune()->SetTrackFilterOn(true);
  RunCommand(QStringLiteral("mnuFileSaveAs"));
  ASSERT_EQ(Boxes().size(), 2);
  EXPECT_EQ(Boxes()[1].icon, MessageIcon::kCritical);
  EXPECT_EQ(Boxes()[1].title, QStringLiteral("Copy not saved."));
  EXPECT_EQ(Boxes()[1].text, QStringLiteral("Unable to save this file"));
  EXPECT_TRUE(StatusIsGone());
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Changed"));
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("ONE"));
  EXPECT_TRUE(main_->MyTune()->ChangedSinceLastSaved());
  EXPECT_EQ(StoredTitle("Copy"), QString());
}

TEST_F(SavingCommand, AnUnchangedTuneStaysUnchangedWhenSaveAsFails) {
  StartWithTune();
  LoadTune();
  const auto tune = main_->MyTune();
  const auto expect_as_it_was = [&] {
    EXPECT_FALSE(tune->ChangedSinceLastSaved());
    EXPECT_EQ(tune->SavedFileName(), QStringLiteral("ONE"));
    EXPECT_EQ(tune->Title(), QStringLiteral("First"));
    EXPECT_EQ(tune->FileName(), QStringLiteral("ONE"));
  };
  platform_.input->answers = {QStringLiteral("O'Brien"), QStringLiteral("TWO"), QStringLiteral("Copy"),
                              QStringLiteral("Else")};
  EXPECT_THROW(RunCommand(QStringLiteral("mnuFileSaveAs")), Failure);
  expect_as_it_was();
  RunCommand(QStringLiteral("mnuFileSaveAs"));  // No to replacing
  expect_as_it_was();
  // Also when a part of the copy is written.
  platform_.events->on_serve = [&, done = false](int) mutable {
    if (done || !database_.Connect()->TableNames().contains(QStringLiteral("Copy"))) return;
    done = true;
    database_.Execute(QStringLiteral("drop table [Copy]"));
  };
  platform_.messages->shown.clear();
  RunCommand(QStringLiteral("mnuFileSaveAs"));
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_TRUE(Boxes()[0].text.startsWith(QStringLiteral("Unable to save this file")));
  EXPECT_TRUE(
      Boxes()[0].text.endsWith(QStringLiteral("The notes in the database are incomplete; save again.")))
      << qPrintable(Boxes()[0].text);
  expect_as_it_was();
  // A change of the person's meanwhile is one.
  platform_.events->on_serve = [&, done = false](int) mutable {
    if (FindLoadedForm(QStringLiteral("DialogWait")) == nullptr || std::exchange(done, true)) return;
    database_.Execute(QStringLiteral("drop table tblWords"));
    tune->SetComposer(QStringLiteral("Haydn"));
  };
  EXPECT_THROW(RunCommand(QStringLiteral("mnuFileSaveAs")), Failure);
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
  EXPECT_EQ(tune->Title(), QStringLiteral("First"));
}

TEST_F(SavingCommand, ASaveAsOverTheTuneItselfThatEndsHalfwayCountsAsAChange) {
  StartWithTune();
  LoadTune();
  platform_.input->answers = {QStringLiteral("ONE")};
  platform_.events->on_serve = [&, done = false](int) mutable {
    if (done || !database_.Column(QStringLiteral("select * from [ONE]")).isEmpty()) return;
    done = true;
    database_.Execute(QStringLiteral("drop table [ONE]"));
  };
  RunCommand(QStringLiteral("mnuFileSaveAs"));
  EXPECT_TRUE(main_->MyTune()->ChangedSinceLastSaved());
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("First"));
}

TEST_F(SavingCommand, WithoutADatabaseSaveAsTellsSoAndChangesNoName) {
  StartWithTune();
  Global().DatabasePath = database_.Directory() + QStringLiteral("/gone.mdb");
  platform_.input->answers = {QStringLiteral("Copy")};
  RunCommand(QStringLiteral("mnuFileSaveAs"));
  ASSERT_EQ(Boxes().size(), 2);
  EXPECT_EQ(Boxes()[1].text, QStringLiteral("Unable to save this file"));
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Changed"));
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("ONE"));
}

TEST_F(SavingCommand, AfterSaveAsEveryWindowShowsTheNewTitle) {
  StartWithTune();
  ShowWindow(QStringLiteral("frmEditStaff"));
  QCoreApplication::processEvents();
  const ChildWindow& staff = *WindowByName(QStringLiteral("frmEditStaff"));
  platform_.input->answers = {QStringLiteral("Mine")};
  RunCommand(QStringLiteral("mnuFileSaveAs"));
  EXPECT_EQ(staff.windowTitle(), QStringLiteral("Zelmar - Staff view of Bach - Mine - Copy"));
  EXPECT_EQ(Front().windowTitle(), QStringLiteral("Zelmar - Front Screen - Bach - Mine - Copy"));
  EXPECT_EQ(TextOf(*staff.MyPlayBar(), "lblTitle"), QStringLiteral("Bach - Mine - Copy"));
  EXPECT_EQ(TextOf(Bar(), "lblTitle"), QStringLiteral("Bach - Mine - Copy"));
}

TEST_F(SavingCommand, APausedTuneStaysPausedOverSaveAs) {
  StartWithTune();
  QObject::connect(main_->MyTune().get(), &Tune::Ticked, main_.get(), [this] {
    if (main_->MyTune()->BarNumber() == 2) Bar().Pause();
  });
  Bar().Play();
  ASSERT_TRUE(IsEnabled(Bar(), "cmdStop"));
  platform_.input->answers = {QStringLiteral("Mine")};
  RunCommand(QStringLiteral("mnuFileSaveAs"));
  EXPECT_EQ(TextOf(Bar(), "lblTitle"), QStringLiteral("Bach - Mine - Copy"));
  EXPECT_TRUE(IsEnabled(Bar(), "cmdStop"));
  EXPECT_EQ(Bar().StartBar(), 2);
}

TEST_F(SavingCommand, SaveAsAgainAfterAPartWasWrittenReplacesThatPart) {
  StartWithTune();
  const auto& pitches = Pitches();
  platform_.input->answers = {QStringLiteral("Copy"), QStringLiteral("Copy")};
  platform_.events->on_serve = [&, done = false](int) mutable {
    if (done || !database_.Connect()->TableNames().contains(QStringLiteral("Copy"))) return;
    done = true;
    database_.Execute(QStringLiteral("drop table [Copy]"));
  };
  RunCommand(QStringLiteral("mnuFileSaveAs"));
  platform_.messages->shown.clear();
  platform_.messages->answers = {MessageAnswer::kYes};
  RunCommand(QStringLiteral("mnuFileSaveAs"));
  EXPECT_EQ(Boxes().size(), 2);
  EXPECT_EQ(database_.Column(QStringLiteral("select * from [Copy]")).size(), pitches.size());
}

TEST_F(SavingCommand, SaveAsUnderANameThatNoStatementHoldsTellsWhy) {
  StartWithTune();
  for (const char* name : {"O'Brien", "a]b", "   ", "tblMelodies"}) {
    platform_.input->answers = {QString::fromLatin1(name)};
    platform_.messages->shown.clear();
    main_->activateWindow();
    QCoreApplication::processEvents();
    QTest::keyClick(main_.get(), Qt::Key_A, Qt::ControlModifier);
    ASSERT_EQ(Boxes().size(), 1) << name;
    EXPECT_EQ(Boxes()[0].icon, MessageIcon::kCritical);
    EXPECT_TRUE(Boxes()[0].text.contains(QStringLiteral("Please choose another.")));
    EXPECT_TRUE(Boxes()[0].text.contains(QStringLiteral("Nothing was written to the database.")));
    EXPECT_TRUE(StatusIsGone());
    EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Changed"));
    EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("ONE"));
  }
  EXPECT_EQ(database_.Column(QStringLiteral("select * from tblMelodies")),
            (QStringList{QStringLiteral("ONE"), QStringLiteral("TWO")}));
}

TEST_F(SavingCommand, SaveAsUnderANameOfThreeHundredCharacters) {
  StartWithTune();
  const QString name(300, u'x');
  platform_.input->answers = {name};
  QTest::keyClick(main_.get(), Qt::Key_A, Qt::ControlModifier);
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kInformation);
  EXPECT_EQ(Boxes()[0].text, QStringLiteral("Saved %1 to disk in Zelmar database.").arg(name));
  EXPECT_TRUE(StatusIsGone());
  EXPECT_EQ(StoredTitle(qPrintable(name)), name + QStringLiteral(" - Copy"));
  EXPECT_EQ(database_.Column(QStringLiteral("select * from [%1]").arg(name)).size(), Pitches().size());
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("First"));
  LoadTune(qPrintable(name));
  EXPECT_EQ(main_->MyTune()->FileName(), name);
  EXPECT_EQ(main_->MyTune()->Title(), name + QStringLiteral(" - Copy"));
}

}  // namespace
}  // namespace zelmar
