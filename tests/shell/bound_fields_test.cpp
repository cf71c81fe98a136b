// Controls that show a record's columns and write them back.
#include "shell/bound_fields.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "shell/records_fixture.h"
#include "support/full_disk.h"

namespace zelmar {
namespace {

using namespace testing_support;

class BoundFieldsTest : public RecordsTest {
 protected:
  BoundFieldsTest() {
    for (const char* style : {"Baroque", "Romantic"}) style_.addItem(Word(style));
    national_.setEditable(true);
    fields_.Bind(&key_, QStringLiteral("COMPOSER"));
    fields_.Bind(&first_name_, QStringLiteral("FIRST_NAME"));
    fields_.Bind(&born_, QStringLiteral("BORN"), BoundFields::Kind::kWholeNumber);
    fields_.Bind(&died_, QStringLiteral("DIED"), BoundFields::Kind::kWholeNumber);
    fields_.Bind(&style_, QStringLiteral("Style"));
    fields_.Bind(&national_, QStringLiteral("NATIONAL"));
  }

  void OpenUnlocked() {
    Open();
    cursor_.Unlock();
  }
  static void TypeAndLeave(QLineEdit& field, const char* text) {
    field.setText(Word(text));
    Q_EMIT field.editingFinished();
  }
  void Choose(QComboBox& box, int item) {
    box.setCurrentIndex(item);
    Q_EMIT box.activated(item);
  }

  QLineEdit key_, first_name_, born_, died_;
  QComboBox style_, national_;
  BoundFields fields_{&cursor_};
};

TEST_F(BoundFieldsTest, ShowTheRecordAndFollowTheWalk) {
  EXPECT_EQ(key_.text(), QString());
  Open();
  EXPECT_EQ(key_.text(), Word("Bach"));
  EXPECT_EQ(born_.text(), QStringLiteral("1685"));
  EXPECT_EQ(style_.currentText(), Word("Baroque"));
  EXPECT_EQ(national_.currentText(), Word("Germany"));
  cursor_.MoveLast();
  EXPECT_EQ(key_.text(), Word("O'Carolan"));
  EXPECT_EQ(died_.text(), QString()) << "a null";
  EXPECT_EQ(style_.currentIndex(), -1);
}

TEST_F(BoundFieldsTest, CanBeWrittenOnlyWhileUnlockedAndOnARecord) {
  Open();
  EXPECT_TRUE(first_name_.isReadOnly());
  EXPECT_FALSE(style_.isEnabled());
  cursor_.Unlock();
  EXPECT_FALSE(first_name_.isReadOnly());
  EXPECT_TRUE(style_.isEnabled());
  cursor_.Lock();
  EXPECT_TRUE(first_name_.isReadOnly());
  cursor_.Unlock();
  for (int i = 0; i < 3; ++i) cursor_.Delete();
  EXPECT_TRUE(first_name_.isReadOnly());
  EXPECT_EQ(first_name_.text(), QString());
}

TEST_F(BoundFieldsTest, AChangedValueIsStoredWhenItIsLeft) {
  OpenUnlocked();
  TypeAndLeave(first_name_, "J. S. 'the great'");
  TypeAndLeave(born_, " 1600 ");
  EXPECT_EQ(Stored("Bach", "FIRST_NAME,BORN,typeof(BORN)"), Word("J. S. 'the great'|1600|integer"));
  EXPECT_EQ(born_.text(), QStringLiteral("1600"));
  Choose(style_, 1);
  EXPECT_EQ(Stored("Bach", "Style"), Word("Romantic"));
  national_.setEditText(Word("Saxony"));
  Q_EMIT national_.lineEdit()->editingFinished();
  EXPECT_EQ(Stored("Bach", "NATIONAL"), Word("Saxony"));
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(BoundFieldsTest, WhatIsNotChangedIsNotWritten) {
  OpenUnlocked();
  cursor_.MoveLast();
  Q_EMIT died_.editingFinished();
  Q_EMIT first_name_.editingFinished();
  Choose(style_, -1);
  EXPECT_TRUE(fields_.StoreChanges());
  EXPECT_EQ(Stored("O'Carolan", "typeof(DIED),typeof(Style)"), Word("null|null"));
}

TEST_F(BoundFieldsTest, ANumberThatIsEmptyIsANullAndAnEmptyTextATextOfNothing) {
  OpenUnlocked();
  TypeAndLeave(died_, "");
  TypeAndLeave(first_name_, "");
  EXPECT_EQ(Stored("Bach", "typeof(DIED),typeof(FIRST_NAME)"), Word("null|text"));
}

TEST_F(BoundFieldsTest, WhatIsNoWholeNumberIsToldOnceAndTheOldOneIsBack) {
  OpenUnlocked();
  for (const char* typed : {"abc", "1.5", "99999999999", "16 85"}) {
    platform_.messages->shown.clear();
    TypeAndLeave(born_, typed);
    ASSERT_EQ(platform_.messages->shown.size(), 1) << typed;
    EXPECT_EQ(platform_.messages->shown[0].text,
              QStringLiteral("\"%1\" is not a whole number.").arg(Word(typed)));
    EXPECT_EQ(born_.text(), QStringLiteral("1685"));
    EXPECT_EQ(Stored("Bach", "BORN"), Word("1685"));
  }
}

TEST_F(BoundFieldsTest, WhatWasTypedIsStoredBeforeTheRecordIsLeft) {
  OpenUnlocked();
  first_name_.setText(Word("Johann S."));
  cursor_.MoveNext();
  EXPECT_EQ(Stored("Bach", "FIRST_NAME"), Word("Johann S."));
  EXPECT_EQ(key_.text(), Word("Dvořák"));
  EXPECT_EQ(first_name_.text(), Word("Antonín"));
  first_name_.setText(Word("Anton"));
  EXPECT_TRUE(cursor_.Lock());
  EXPECT_EQ(Stored("Dvořák", "FIRST_NAME"), Word("Anton"));
}

TEST_F(BoundFieldsTest, ARecordIsNotLeftWithAValueThatCannotBeStored) {
  OpenUnlocked();
  born_.setText(Word("abc"));
  cursor_.MoveNext();
  EXPECT_EQ(key_.text(), Word("Bach"));
  EXPECT_EQ(born_.text(), QStringLiteral("1685"));
  EXPECT_EQ(platform_.messages->shown.size(), 1);
  cursor_.MoveNext();
  EXPECT_EQ(key_.text(), Word("Dvořák"));
  EXPECT_EQ(platform_.messages->shown.size(), 1);
}

TEST_F(BoundFieldsTest, AKeyThatIsTakenOrEmptyIsToldAndTheOldOneIsBack) {
  OpenUnlocked();
  TypeAndLeave(key_, "Dvořák");
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_EQ(platform_.messages->shown[0].text, Word("There is a record \"Dvořák\" already."));
  EXPECT_EQ(key_.text(), Word("Bach"));
  TypeAndLeave(key_, "");
  ASSERT_EQ(platform_.messages->shown.size(), 2);
  EXPECT_EQ(platform_.messages->shown[1].text, Word("A record needs a value in COMPOSER."));
  EXPECT_EQ(key_.text(), Word("Bach"));
  TypeAndLeave(key_, "Bach, J. S.");
  EXPECT_EQ(cursor_.Key().toString(), Word("Bach, J. S."));
  EXPECT_EQ(key_.text(), Word("Bach, J. S."));
  EXPECT_EQ(platform_.messages->shown.size(), 2);
}

TEST_F(BoundFieldsTest, AFailureOfTheDatabaseIsToldInWordsAndTheOldValueIsBack) {
  OpenUnlocked();
  TypeAndLeave(first_name_, "before");
  {
    const FullDisk full(1000);
    TypeAndLeave(first_name_, "after");
  }
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_FALSE(platform_.messages->shown[0].text.isEmpty());
  EXPECT_EQ(first_name_.text(), Word("before"));
  EXPECT_EQ(Stored("Bach", "FIRST_NAME"), Word("before"));
}

TEST_F(BoundFieldsTest, ARecordThatAnotherTookOutIsToldAndTheNextOneShown) {
  OpenUnlocked();
  database_.Execute(QStringLiteral("delete * from tblComposer where COMPOSER = 'Bach'"));
  TypeAndLeave(first_name_, "x");
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_EQ(platform_.messages->shown[0].text, Word("The record \"Bach\" is no longer in the database."));
  EXPECT_EQ(key_.text(), Word("Dvořák"));
  EXPECT_EQ(first_name_.text(), Word("Antonín"));
}

TEST_F(BoundFieldsTest, AClosedDatabaseLeavesEmptyFieldsAndNoCrash) {
  auto connection = database_.Connect();
  cursor_.OpenAll(connection);
  cursor_.Unlock();
  connection->Close();
  TypeAndLeave(first_name_, "x");
  cursor_.MoveNext();
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(BoundFieldsTest, AValueThatTheListDoesNotHaveIsShownAllTheSameAndKept) {
  database_.Execute(QStringLiteral("update tblComposer set Style = 'Galant' where COMPOSER = 'Bach'"));
  OpenUnlocked();
  EXPECT_EQ(style_.placeholderText(), Word("Galant"));
  EXPECT_TRUE(fields_.StoreChanges());
  EXPECT_EQ(Stored("Bach", "Style"), Word("Galant"));
  Choose(style_, 0);
  EXPECT_EQ(Stored("Bach", "Style"), Word("Baroque"));
}

TEST_F(BoundFieldsTest, AFieldThatIsGoneIsNotAskedAnyMore) {
  OpenUnlocked();
  auto other = std::make_unique<QLineEdit>();
  fields_.Bind(other.get(), QStringLiteral("NATIONAL"));
  other->setText(Word("x"));
  other.reset();
  cursor_.MoveNext();
  EXPECT_EQ(Stored("Bach", "NATIONAL"), Word("Germany"));
  EXPECT_EQ(cursor_.Position(), 2);
}

TEST_F(BoundFieldsTest, WithoutItsFieldsTheWalkGoesOn) {
  OpenUnlocked();
  auto others = std::make_unique<BoundFields>(&cursor_);
  QLineEdit field;
  others->Bind(&field, QStringLiteral("NATIONAL"));
  field.setText(Word("x"));
  others.reset();
  cursor_.MoveNext();
  EXPECT_EQ(cursor_.Position(), 2);
  EXPECT_EQ(Stored("Bach", "NATIONAL"), Word("Germany"));
}

// --- Boxes to tick, and long texts ---

class OtherBoundFields : public RecordsTest {
 protected:
  OtherBoundFields() {
    database_.AddRow(QStringLiteral("tblInstruments"), {0, Word("Piano"), Word("Keys"), 1, 4, {}, {}});
    database_.AddRow(QStringLiteral("tblInstruments"), {1, Word("Organ"), Word("Keys"), 0, 4, {}, {}});
    fields_.Bind(&favourite_, QStringLiteral("Favourite"));
    fields_.Bind(&family_, QStringLiteral("Family"));
    instruments_.OpenAll(database_.Connect());
  }

  RecordCursor instruments_{{QStringLiteral("select * from tblInstruments"),
                             {},
                             QStringLiteral("ORDER BY InstrumentNo"),
                             QStringLiteral("InstrumentNo")},
                            QString()};
  QCheckBox favourite_;
  QPlainTextEdit family_;
  BoundFields fields_{&instruments_};
};

TEST_F(OtherBoundFields, ABoxIsTickedForAYesAndStoredAsOne) {
  EXPECT_TRUE(favourite_.isChecked());
  EXPECT_FALSE(favourite_.isEnabled());
  instruments_.MoveNext();
  EXPECT_FALSE(favourite_.isChecked());
  instruments_.Unlock();
  favourite_.click();
  EXPECT_EQ(database_.Column(QStringLiteral("SELECT Favourite FROM tblInstruments")),
            QStringList({QStringLiteral("1"), QStringLiteral("1")}));
  EXPECT_TRUE(favourite_.isChecked());
}

TEST_F(OtherBoundFields, ALongTextIsStoredWhenItLosesTheKeyboardForGood) {
  instruments_.Unlock();
  family_.setPlainText(Word("two\nlines"));
  const auto lose = [this](Qt::FocusReason reason) {
    QFocusEvent event(QEvent::FocusOut, reason);
    QCoreApplication::sendEvent(&family_, &event);
    return database_.Column(QStringLiteral("SELECT Family FROM tblInstruments")).first();
  };
  EXPECT_EQ(lose(Qt::PopupFocusReason), Word("Keys")) << "a menu is in front for a moment";
  EXPECT_EQ(lose(Qt::ActiveWindowFocusReason), Word("Keys"));
  EXPECT_EQ(lose(Qt::TabFocusReason), Word("two\nlines"));
}

}  // namespace
}  // namespace zelmar
