// Unsaved work on every road that puts another tune in its place, names under which a tune is saved, and what
// the open dialogue finds.
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>
#include <functional>

#include "app/frm_open.h"
#include "app/saving_fixture.h"
#include "shell/recovery_keeper.h"
#include "shell/tune_combo.h"
#include "shell/unsaved_changes.h"
#include "shell/unsaved_work.h"
#include "support/dice.h"
#include "support/other_program.h"

namespace zelmar {
namespace {

using namespace testing_support;

const QString kQuestion = QStringLiteral(
    "Do you want to save the current tune onto the database before another tune takes its place?");

// Presses Enter in the open dialogue once it stands, then Escape until it is gone.
class OpenDialogueHand {
 public:
  OpenDialogueHand() {
    timer_.callOnTimeout([this] {
      auto* const form = FindLoadedForm(QStringLiteral("frmOpen"));
      if (form == nullptr || !form->isVisible()) return;
      if (presses_++ == 0)
        Click(*form, "cmdOK");
      else
        QTest::keyClick(form, Qt::Key_Escape);
    });
    timer_.start(1);
  }

 private:
  QTimer timer_;
  int presses_ = 0;
};

struct Road {
  const char* name;
  void (*go)(MDIParent&);
};

void PrintTo(const Road& road, std::ostream* out) {
  *out << road.name;
}

class RoadToAnotherTune : public SavingCommand, public ::testing::WithParamInterface<Road> {
 protected:
  // TWO was loaded first and ONE last, which is changed.
  void StartWithTwo() {
    Start();
    LoadTune("TWO");
    LoadTune("ONE");
    Global().TuneLoadedFlag = true;
    before_ = main_->MyTune();
  }
  void Change() { before_->SetTitle(QStringLiteral("Changed")); }
  void Go() { GetParam().go(*main_); }
  QList<ShownMessage> Questions() const {
    QList<ShownMessage> questions;
    for (const ShownMessage& box : Boxes())
      if (box.text == kQuestion) questions.append(box);
    return questions;
  }

  std::shared_ptr<Tune> before_;
};

TEST_P(RoadToAnotherTune, AsksOnceAndGoesBackOnCancel) {
  StartWithTwo();
  Change();
  Go();
  ASSERT_EQ(Questions().size(), 1);
  EXPECT_EQ(Questions()[0].icon, MessageIcon::kQuestion);
  EXPECT_EQ(Questions()[0].buttons, MessageButtons::kYesNoCancel);
  EXPECT_EQ(Questions()[0].default_button, MessageAnswer::kCancel);
  EXPECT_EQ(main_->MyTune(), before_);
  EXPECT_EQ(before_->Title(), QStringLiteral("Changed"));
  EXPECT_TRUE(before_->ChangedSinceLastSaved());
  EXPECT_TRUE(Global().TuneLoadedFlag);
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("First"));
}

TEST_P(RoadToAnotherTune, GivesTheChangesUpOnNo) {
  StartWithTwo();
  Change();
  platform_.messages->answers = {MessageAnswer::kNo};
  Go();
  EXPECT_EQ(Questions().size(), 1);
  EXPECT_NE(main_->MyTune(), before_);
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("First"));
}

TEST_P(RoadToAnotherTune, SavesTheChangesOnYes) {
  StartWithTwo();
  Change();
  platform_.messages->answers = {MessageAnswer::kYes};
  Go();
  EXPECT_EQ(Questions().size(), 1);
  EXPECT_NE(main_->MyTune(), before_);
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
}

TEST_P(RoadToAnotherTune, StaysWithTheTuneWhenItsSaveFails) {
  StartWithTwo();
  Change();
  {
    OtherProgram program(database_.Path());
    program.Run("CREATE TRIGGER halt BEFORE INSERT ON [ONE] BEGIN SELECT RAISE(ABORT, 'no more'); END");
  }
  platform_.messages->answers = {MessageAnswer::kYes};
  Go();
  EXPECT_EQ(Questions().size(), 1);
  EXPECT_GT(Boxes().size(), 1) << "nothing told of the failure";
  EXPECT_EQ(main_->MyTune(), before_);
  EXPECT_TRUE(before_->ChangedSinceLastSaved());
}

TEST_P(RoadToAnotherTune, DoesNotAskForAnUnchangedTune) {
  StartWithTwo();
  Go();
  EXPECT_TRUE(Questions().isEmpty());
  EXPECT_NE(main_->MyTune(), before_);
}

TEST_P(RoadToAnotherTune, DoesNotAskForTheMetronome) {
  StartWithTwo();
  before_->SetMetroVolume(127);
  before_->SetHearTick(1);
  EXPECT_FALSE(HasUnsavedWork(*before_));
  Go();
  EXPECT_TRUE(Questions().isEmpty());
  EXPECT_NE(main_->MyTune(), before_);
}

TEST_P(RoadToAnotherTune, DoesNotAskForANewTuneWithoutANote) {
  StartWithTwo();
  before_ = std::make_shared<Tune>();
  main_->SetMyTune(before_);
  EXPECT_FALSE(HasUnsavedWork(*before_));
  Go();
  EXPECT_TRUE(Questions().isEmpty());
}

TEST_P(RoadToAnotherTune, AsksForANewTuneWithANote) {
  StartWithTwo();
  before_ = std::make_shared<Tune>();
  main_->SetMyTune(before_);
  auto note = std::make_shared<Tone>();
  note->SetAbsRef(before_->LastAbsRef() + 1);
  before_->Add(note);
  EXPECT_TRUE(HasUnsavedWork(*before_));
  Go();
  EXPECT_EQ(Questions().size(), 1);
  EXPECT_EQ(main_->MyTune(), before_);
}

INSTANTIATE_TEST_SUITE_P(Roads, RoadToAnotherTune,
                         ::testing::Values(Road{"Recent",
                                                [](MDIParent& main) { main.mnuRecentTunes_Click(3); }},
                                           Road{"Open",
                                                [](MDIParent&) {
                                                  const OpenDialogueHand hand;
                                                  RunCommand(QStringLiteral("mnuFileOpen"));
                                                }},
                                           Road{"LoadNew",
                                                [](MDIParent& main) {
                                                  const OpenDialogueHand hand;
                                                  main.ActiveChild()->MyPlayBar()->LoadNewTune();
                                                }}),
                         [](const auto& info) { return std::string(info.param.name); });

// --- Kept for recovery ---

TEST_F(SavingCommand, KeepsForRecoveryNeitherTheMetronomesTickNorANewTuneWithoutANote) {
  StartWithTune();
  main_->MyTune()->SetChangedSinceLastSaved(false);
  main_->MyTune()->SetMetroVolume(100);
  main_->KeepForNextStart();
  EXPECT_TRUE(KeptFiles().isEmpty());
  main_->SetMyTune(std::make_shared<Tune>());
  main_->KeepForNextStart();
  EXPECT_TRUE(KeptFiles().isEmpty());
}

// --- Save As ---

class SavedUnderAnotherName : public SavingCommand {
 protected:
  void SaveAs(const char* answer) {
    platform_.input->answers = {QString::fromUtf8(answer)};
    failure_.clear();
    try {
      RunCommand(QStringLiteral("mnuFileSaveAs"));
    } catch (const Failure& failure) {
      failure_ = failure.Description();  // told where the command was given
    }
  }

  QString failure_;
};

TEST_F(SavedUnderAnotherName, AFreeNameShowsTheNewTitleEverywhere) {
  StartWithTune();
  SaveAs("Fresh");
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("Fresh"));
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Fresh - Copy"));
  EXPECT_EQ(StoredTitle("Fresh"), QStringLiteral("Fresh - Copy"));
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("First"));
  EXPECT_TRUE(Front().windowTitle().endsWith(QStringLiteral("Fresh - Copy")))
      << Front().windowTitle().toStdString();
  EXPECT_TRUE(TextOf(Bar(), "lblTitle").endsWith(QStringLiteral("Fresh - Copy")))
      << TextOf(Bar(), "lblTitle").toStdString();
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("Save Completed OK"));
  EXPECT_EQ(Boxes()[0].text, QStringLiteral("Saved Fresh to disk in Zelmar database."));
  EXPECT_TRUE(StatusIsGone());
}

TEST_F(SavedUnderAnotherName, ANameThatAnotherTuneHasIsAskedAboutWithItsTitleAndNoFirst) {
  StartWithTune();
  for (const char* const name : {"TWO", "two"}) {
    platform_.messages->shown.clear();
    SaveAs(name);
    ASSERT_EQ(Boxes().size(), 1) << name;
    EXPECT_EQ(Boxes()[0].default_button, MessageAnswer::kNo);
    EXPECT_EQ(Boxes()[0].buttons, MessageButtons::kYesNo);
    EXPECT_TRUE(Boxes()[0].text.contains(QStringLiteral("Second"))) << Boxes()[0].text.toStdString();
    EXPECT_TRUE(Boxes()[0].text.contains(QStringLiteral("replace"), Qt::CaseInsensitive))
        << Boxes()[0].text.toStdString();
    EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("ONE"));
    EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Changed"));
    EXPECT_EQ(StoredTitle("TWO"), QStringLiteral("Second"));
    EXPECT_TRUE(main_->MyTune()->ChangedSinceLastSaved());
  }
}

TEST_F(SavedUnderAnotherName, AnotherTuneIsReplacedOnYes) {
  StartWithTune();
  platform_.messages->answers = {MessageAnswer::kYes};
  SaveAs("TWO");
  EXPECT_EQ(StoredTitle("TWO"), QStringLiteral("TWO - Copy"));
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("TWO"));
}

TEST_F(SavedUnderAnotherName, ANameThatIsNoTunesChangesNothing) {
  StartWithTune();
  for (const char* const name : {"tblMelodies", "TemplateTune", "TBLTRACKS", "a]b", "sqlite_x"}) {
    platform_.messages->shown.clear();
    SaveAs(name);
    EXPECT_EQ(Boxes().size() + (failure_.isEmpty() ? 0 : 1), 1) << name;
    EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("ONE")) << name;
    EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Changed")) << name;
    EXPECT_TRUE(main_->MyTune()->ChangedSinceLastSaved());
    EXPECT_TRUE(StatusIsGone());
  }
}

TEST_F(SavedUnderAnotherName, AnEmptyAnswerDoesNothing) {
  StartWithTune();
  SaveAs("");
  EXPECT_TRUE(Boxes().isEmpty());
  ASSERT_EQ(platform_.input->shown.size(), 1);
  EXPECT_EQ(platform_.input->shown[0].title, QStringLiteral("Save As"));
  EXPECT_EQ(platform_.input->shown[0].prompt, QStringLiteral("New name for the file being saved"));
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("ONE"));
}

// --- Finding a title by typing ---

class TypedTitles : public ::testing::Test {
 protected:
  void Give(const QStringList& titles) {
    std::vector<TuneTitle> entries;
    for (const QString& title : titles) entries.push_back({title, QStringLiteral("code ") + title});
    combo_.SetTitles(entries);
    combo_.show();
  }
  void Type(const QString& text) {
    auto* const field = combo_.findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Backspace);
    for (const QChar letter : text) {
      QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
      QCoreApplication::sendEvent(field, &press);
    }
  }

  ScriptedPlatform platform_;
  TuneCombo combo_;
};

TEST_F(TypedTitles, AreFoundWithoutAccentsAndCase) {
  Give({QStringLiteral("Autumn"), QStringLiteral("\u00c9t\u00e9"), QStringLiteral("Zest")});
  for (const char* const typed : {"ete", "ETE", "\u00e9t\u00e9", "\u00c9TE", " ete "}) {
    Type(QString::fromUtf8(typed));
    EXPECT_EQ(combo_.RowCount(), 1) << typed;
    EXPECT_EQ(combo_.SelectedTitle(), QStringLiteral("\u00c9t\u00e9")) << typed;
    EXPECT_EQ(combo_.SelectedCodeName(), QStringLiteral("code \u00c9t\u00e9")) << typed;
  }
}

TEST_F(TypedTitles, AreFoundByWildcardsAsTheyStand) {
  Give({QStringLiteral("50% off"), QStringLiteral("snake_case"), QStringLiteral("a*b"),
        QStringLiteral("plain"), QStringLiteral("what?")});
  for (const auto& [typed, title] : {std::pair("%", "50% off"), std::pair("_", "snake_case"),
                                     std::pair("*", "a*b"), std::pair("?", "what?")}) {
    Type(QString::fromLatin1(typed));
    EXPECT_EQ(combo_.RowCount(), 1) << typed;
    EXPECT_EQ(combo_.SelectedTitle(), QString::fromLatin1(title));
  }
  Type(QString());
  EXPECT_EQ(combo_.RowCount(), 5);
}

TEST_F(TypedTitles, AreThoseThatHoldEveryWord) {
  Dice dice(4);
  const QString letters = QStringLiteral("ab%*_ \u00e9E");
  const auto text = [&](int most) {
    QString made;
    for (int length = 1 + dice(most); length > 0; --length)
      made.append(letters[dice(static_cast<int>(letters.size()))]);
    return made;
  };
  QStringList titles;
  while (titles.size() < 40) {
    const QString title = text(7);
    if (!titles.contains(title)) titles.append(title);
  }
  Give(titles);
  const auto plain = [](QString typed) { return typed.replace(u'\u00e9', u'e').toLower(); };
  for (int i = 0; i < 40; ++i) {
    const QString typed = text(4);
    Type(typed);
    int wanted = 0;
    for (const QString& title : titles) {
      bool holds = true;
      for (const QString& word : plain(typed).split(u' ', Qt::SkipEmptyParts))
        holds = holds && plain(title).contains(word);
      wanted += holds;
    }
    EXPECT_EQ(combo_.RowCount(), wanted) << typed.toStdString();
  }
}

}  // namespace
}  // namespace zelmar
