// The commands that save the tune in memory: what they ask, show and tell.
#include <QLabel>

#include "app/saving_fixture.h"
#include "app/troubled_database.h"
#include "platform/real_clock.h"
#include "shell/checked_field.h"
#include "shell/field_check.h"
#include "shell/saving.h"

namespace zelmar {
namespace {

using namespace testing_support;

TEST_F(SavingCommand, SaveWritesTheTuneUnderTheStatusWindowAndSaysNothing) {
  StartWithTune();
  Item("mnuFileSave").trigger();
  EXPECT_EQ(captions_, QStringList{QStringLiteral("Saving tune  ONE to database on disk. Please wait.")});
  EXPECT_TRUE(StatusIsGone());
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
  EXPECT_FALSE(main_->MyTune()->ChangedSinceLastSaved());
}

// A window with one field, which takes any title but an empty one.
class TitleWindow : public ChildWindow {
 public:
  TitleWindow() : ChildWindow(QStringLiteral("frmTitle")), field(new CheckedField(this)) {
    field->setText(CurrentTune()->Title());
    field->Check().SetRules({{typed::Required(), MessageIcon::kExclamation, QStringLiteral("Title"),
                              QStringLiteral("A title is needed.")}});
    field->Check().SetStore([](const QString& text) { CurrentTune()->SetTitle(text); });
  }
  void Type(const char* text) {
    ShowOnTop();
    field->setFocus();
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, QLatin1String(text));
  }

  CheckedField* field;
};

TEST_F(SavingCommand, WhatWasTypedLastIsSavedToo) {
  StartWithTune();
  main_->show();
  main_->activateWindow();
  auto* const window = new TitleWindow;
  window->Type("As typed");
  RunCommand(QStringLiteral("mnuFileSave"));
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("As typed"));
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(SavingCommand, AFieldThatRefusesItsTextKeepsTheTuneFromBeingSaved) {
  StartWithTune();
  main_->show();
  main_->activateWindow();
  const QString before = StoredTitle("ONE");
  auto* const window = new TitleWindow;
  window->Type("");
  RunCommand(QStringLiteral("mnuFileSave"));
  RunCommand(QStringLiteral("mnuFileSaveAs"));
  EXPECT_EQ(StoredTitle("ONE"), before);
  ASSERT_FALSE(Boxes().isEmpty());
  EXPECT_EQ(Boxes()[0].text, QStringLiteral("A title is needed."));
  EXPECT_TRUE(platform_.input->shown.isEmpty());
}

TEST_F(SavingCommand, WithoutALoadedTuneSaveAndSaveAsDoNothing) {
  Start();
  main_->SetMyTune(std::make_shared<Tune>());
  WatchStatus();
  Item("mnuFileSave").trigger();
  Item("mnuFileSaveAs").trigger();
  EXPECT_TRUE(captions_.isEmpty());
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_TRUE(platform_.input->shown.isEmpty());
}

TEST_F(SavingCommand, AFlagWithoutATuneIsAFailureAndNoCrash) {
  Start();
  Global().TuneLoadedFlag = true;
  platform_.input->answers = {QStringLiteral("Copy")};
  WatchStatus();
  EXPECT_THROW(RunCommand(QStringLiteral("mnuFileSave")), NoTuneInMemory);
  EXPECT_THROW(RunCommand(QStringLiteral("mnuFileSaveAs")), NoTuneInMemory);
  EXPECT_THROW(SaveWholeTune(QStringLiteral("Saving")), NoTuneInMemory);
  EXPECT_TRUE(captions_.isEmpty());
}

TEST_F(SavingCommand, ASaveThatTheUserCallsOffIsNotReported) {
  StartWithTune();
  main_->MyTune()->SetTrackFilterOn(true);
  RunCommand(QStringLiteral("mnuFileSave"));
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kQuestion);
  EXPECT_TRUE(StatusIsGone());
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("First"));
}

TEST_F(SavingCommand, ADatabaseErrorEndsTheCommandAndTheStatusWindow) {
  StartWithTune();
  database_.Execute(QStringLiteral("drop table tblThemes"));
  EXPECT_THROW(RunCommand(QStringLiteral("mnuFileSave")), Failure);
  EXPECT_TRUE(StatusIsGone());
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("First"));
  EXPECT_TRUE(main_->MyTune()->ChangedSinceLastSaved());
}

TEST_F(SavingCommand, AShortcutShowsADatabaseErrorAsAMessage) {
  StartWithTune();
  database_.Execute(QStringLiteral("drop table tblThemes"));
  QTest::keyClick(main_.get(), Qt::Key_S, Qt::ControlModifier);
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kCritical);
  EXPECT_TRUE(Boxes()[0].text.contains(QStringLiteral("tblThemes")));
  EXPECT_TRUE(Boxes()[0].text.contains(QStringLiteral("Nothing was written to the database.")));
  EXPECT_TRUE(StatusIsGone());
}

TEST_F(SavingCommand, TheStatusWindowsMarqueeMovesDuringALongSave) {
  StartWithTune();
  database_.AddNotes(QStringLiteral("ONE"), 12000);
  LoadTune();
  Platform().clock = std::make_shared<RealClock>();
  QStringList texts;
  platform_.events->on_serve = [&](int) {
    const QWidget* const window = FindLoadedForm(QStringLiteral("DialogWait"));
    if (window == nullptr) return;
    const QString text = TextOf(*window, "txtWait");
    if (texts.isEmpty() || texts.last() != text) texts.append(text);
  };
  RunCommand(QStringLiteral("mnuFileSave"));
  EXPECT_GE(texts.size(), 2);
}

// --- A database that does not take it ---

class SavingIntoATroubledDatabase : public SavingCommand {
 protected:
  SavingIntoATroubledDatabase() {
    StartWithTune();
    platform_.input->answers = {QStringLiteral("Copy")};
  }

  // Save and Save As by their keys: one box each that tells of `code_name`.
  void SaveAndExpect(Qt::Key key, const QString& code_name, const QString& reason) {
    platform_.messages->shown.clear();
    main_->activateWindow();
    QCoreApplication::processEvents();
    QTest::keyClick(main_.get(), key, Qt::ControlModifier);
    ASSERT_EQ(Boxes().size(), 1);
    EXPECT_EQ(Boxes()[0].icon, MessageIcon::kCritical);
    const QString& text = Boxes()[0].text;
    EXPECT_TRUE(text.startsWith(QStringLiteral("\"%1\" is not saved. ").arg(code_name) + reason))
        << qPrintable(text);
    EXPECT_TRUE(text.contains(QStringLiteral("Nothing was written to the database."))) << qPrintable(text);
    EXPECT_TRUE(StatusIsGone());
    EXPECT_TRUE(main_->MyTune()->ChangedSinceLastSaved());
  }
  void SaveBothWays(const QString& reason) {
    SaveAndExpect(Qt::Key_S, QStringLiteral("ONE"), reason);
    SaveAndExpect(Qt::Key_A, QStringLiteral("Copy"), reason);
  }
  void ExpectAllIsAsItWas() {
    EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("First"));
    EXPECT_EQ(StoredTitle("Copy"), QString());
  }
};

TEST_F(SavingIntoATroubledDatabase, OneThatIsLocked) {
  {
    const LockedDatabase locked(database_);
    SaveBothWays(QStringLiteral("Another program keeps the database for itself ("));
  }
  ExpectAllIsAsItWas();
}

TEST_F(SavingIntoATroubledDatabase, OneThatIsReadOnly) {
  {
    const ReadOnlyDatabase read_only(database_);
    SaveBothWays(read_only.Words());
  }
  ExpectAllIsAsItWas();
}

TEST_F(SavingIntoATroubledDatabase, OneOnAFullDisk) {
  {
    main_->MyTune()->SetDescription(LongText());
    const FullDisk disk(kRoomWithoutLongTexts);
    SaveBothWays(QStringLiteral("The database file cannot be written to: its disk is full ("));
  }
  ExpectAllIsAsItWas();
}

// --- Meanwhile ---

TEST_F(SavingCommand, TheTuneMayBeReplacedBeforeTheSaveBegins) {
  StartWithTune();
  bool replaced = false;
  platform_.events->on_serve = [&](int) {
    if (std::exchange(replaced, true)) return;
    LoadTune("TWO");
  };
  RunCommand(QStringLiteral("mnuFileSave"));
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("TWO"));
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
  EXPECT_EQ(StoredTitle("TWO"), QStringLiteral("Second"));
}

TEST_F(SavingCommand, TheStatusWindowMayBeClosedByHand) {
  StartWithTune();
  platform_.events->on_serve = [&](int) {
    if (QWidget* const window = FindLoadedForm(QStringLiteral("DialogWait"))) window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  };
  RunCommand(QStringLiteral("mnuFileSave"));
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
}

TEST_F(SavingCommand, TheProgramMayBeClosedInTheMiddleAndTheTuneIsWhole) {
  StartWithTune();
  platform_.messages->answers = {MessageAnswer::kYes};
  int served = 0;
  platform_.events->on_serve = [&](int) {
    if (++served == 3) main_->close();
  };
  RunCommand(QStringLiteral("mnuFileSave"));
  EXPECT_FALSE(main_->isVisible());
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
  EXPECT_EQ(database_.Column(QStringLiteral("select * from [ONE]")).size(), Pitches().size());
  EXPECT_TRUE(StatusIsGone());
}

TEST_F(SavingCommand, OtherWindowsSaveThroughTheMainFrame) {
  StartWithTune();
  bool failed = true;
  TheMainFrame()->SaveFile(QStringLiteral("ONE"), failed, QStringLiteral("Info"));
  EXPECT_FALSE(failed);
  EXPECT_TRUE(captions_.isEmpty());
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
  EXPECT_TRUE(SaveWholeTune(QStringLiteral("Saving Zelmar tune to database on disk. Please wait.")));
  EXPECT_EQ(captions_, QStringList{QStringLiteral("Saving Zelmar tune to database on disk. Please wait.")});
  main_->MyTune()->SetTrackFilterOn(true);
  EXPECT_FALSE(SaveWholeTune(QStringLiteral("Saving")));
}

}  // namespace
}  // namespace zelmar
