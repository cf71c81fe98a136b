// The controls of a walk through records, and the box in which one is found.
#include "shell/record_bar.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QToolButton>

#include "shell/record_search.h"
#include "shell/records_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class RecordBars : public RecordsTest {
 protected:
  QString Position() const { return TextOf(bar_, "txtPosition"); }

  RecordBar bar_{&cursor_};
};

TEST_F(RecordBars, ShowThePositionAndMove) {
  Open();
  EXPECT_EQ(Position(), QStringLiteral("Composer No. 1 of 3"));
  Click(bar_, "cmdNext");
  EXPECT_EQ(Position(), QStringLiteral("Composer No. 2 of 3"));
  Click(bar_, "cmdLast");
  EXPECT_EQ(Position(), QStringLiteral("Composer No. 3 of 3"));
  Click(bar_, "cmdPrevious");
  EXPECT_EQ(Position(), QStringLiteral("Composer No. 2 of 3"));
  Click(bar_, "cmdFirst");
  EXPECT_EQ(Position(), QStringLiteral("Composer No. 1 of 3"));
}

TEST_F(RecordBars, GoPastAnEndOnlyAsFarAsTheHook) {
  Open();
  int calls = 0;
  cursor_.OnBeforeStart([&calls] { ++calls; });
  Click(bar_, "cmdPrevious");
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(Position(), QStringLiteral("Composer No. 1 of 3"));
}

TEST_F(RecordBars, WithoutARecordHaveNothingToPress) {
  for (const char* name : {"cmdFirst", "cmdPrevious", "cmdNext", "cmdLast"})
    EXPECT_FALSE(IsEnabled(bar_, name));
  EXPECT_EQ(Position(), QStringLiteral("Composer No. 0 of 0"));
  Open();
  for (const char* name : {"cmdFirst", "cmdPrevious", "cmdNext", "cmdLast"})
    EXPECT_TRUE(IsEnabled(bar_, name));
}

TEST_F(RecordBars, EachButtonSaysWhatItDoesAndWithWhichKeys) {
  for (const QToolButton* button : bar_.findChildren<QToolButton*>()) {
    EXPECT_FALSE(button->accessibleName().isEmpty()) << qPrintable(button->objectName());
    EXPECT_TRUE(button->toolTip().contains(button->shortcut().toString(QKeySequence::NativeText)));
    EXPECT_FALSE(button->shortcut().isEmpty());
    EXPECT_FALSE(button->icon().isNull());
    EXPECT_NE(button->focusPolicy() & Qt::TabFocus, 0);
  }
}

TEST_F(RecordBars, TheUnlockButtonTurnsItsCaptionWithTheLock) {
  Open();
  UnlockButton button(&cursor_);
  EXPECT_EQ(button.text(), QStringLiteral("Unlock Editing"));
  button.click();
  EXPECT_FALSE(cursor_.Locked());
  EXPECT_EQ(button.text(), QStringLiteral("Prevent Editing"));
  cursor_.BeforeLeaving([] { return false; });
  button.click();
  EXPECT_FALSE(cursor_.Locked());
  EXPECT_EQ(button.text(), QStringLiteral("Prevent Editing")) << "someone holds the record";
}

// --- The box ---

class RecordSearches : public RecordsTest {
 protected:
  RecordSearches() { search_.setObjectName(QStringLiteral("cboSearchComposer")); }

  void Type(const char* text) {
    search_.setEditText(Word(text));
    QTest::keyClick(&search_, Qt::Key_Return);
  }

  RecordSearch search_{&cursor_};
};

TEST_F(RecordSearches, ListAllKeysAndShowThatOfTheRecord) {
  Open();
  ASSERT_EQ(search_.count(), 3);
  EXPECT_EQ(search_.itemText(1), Word("Dvořák"));
  EXPECT_EQ(search_.currentText(), Word("Bach"));
  cursor_.MoveLast();
  EXPECT_EQ(search_.currentText(), Word("O'Carolan"));
  EXPECT_EQ(search_.currentIndex(), 2);
}

TEST_F(RecordSearches, EnterGoesToWhatWasTypedInWhateverCaseAndWithoutAccents) {
  Open();
  for (const auto& [typed, found] : {std::pair("Dvořák", "Dvořák"), std::pair("BACH", "Bach"),
                                     std::pair("dvorak", "Dvořák"), std::pair("O'Carolan", "O'Carolan")}) {
    Type(typed);
    EXPECT_EQ(cursor_.Key().toString(), Word(found)) << typed;
    EXPECT_EQ(search_.currentText(), Word(found)) << typed;
  }
}

TEST_F(RecordSearches, EnterOnWhatIsNoKeyMovesNothing) {
  Open();
  for (const char* typed : {"Dvo", "", "Nobody", "' or 1=1"}) {
    Type(typed);
    EXPECT_EQ(cursor_.Position(), 1) << typed;
    EXPECT_EQ(search_.count(), 3) << "nothing is added to the list";
  }
}

TEST_F(RecordSearches, AChoiceGoesToItsRecord) {
  Open();
  Q_EMIT search_.activated(2);
  EXPECT_EQ(cursor_.Key().toString(), Word("O'Carolan"));
}

TEST_F(RecordSearches, ARecordThatIsHeldIsShownAgain) {
  Open();
  cursor_.BeforeLeaving([] { return false; });
  Type("Dvořák");
  EXPECT_EQ(search_.currentText(), Word("Bach"));
}

TEST_F(RecordSearches, TheDownKeyOpensTheList) {
  Open();
  search_.show();
  QTest::keyClick(&search_, Qt::Key_Down);
  EXPECT_TRUE(search_.view()->isVisible());
  EXPECT_EQ(cursor_.Position(), 1);
  search_.hidePopup();
}

TEST_F(RecordSearches, TheListFollowsWhatIsAddedRenamedAndDeleted) {
  Open();
  cursor_.Unlock();
  cursor_.Add({{QStringLiteral("COMPOSER"), Word("Chopin")}});
  EXPECT_EQ(search_.count(), 4);
  EXPECT_EQ(search_.currentText(), Word("Chopin"));
  cursor_.Store(QStringLiteral("COMPOSER"), Word("Chopin, F."));
  EXPECT_EQ(search_.findText(Word("Chopin")), -1);
  EXPECT_EQ(search_.currentText(), Word("Chopin, F."));
  cursor_.Delete();
  EXPECT_EQ(search_.count(), 3);
}

}  // namespace
}  // namespace zelmar
