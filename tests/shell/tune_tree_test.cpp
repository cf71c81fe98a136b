// The window's part of a tree of tunes: choosing, the top, and the search.
#include "shell/tune_tree.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeView>

#include "store/connection.h"
#include "support/sample_database.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

QString Word(const char* text) {
  return QString::fromUtf8(text);
}

class TuneTrees : public ::testing::Test {
 protected:
  TuneTrees() {
    for (const auto& [code_name, title, composer] :
         {std::tuple("Air", "Air", "Bach"), std::tuple("Swan", "The Swan", "Saint-Saëns"),
          std::tuple("Fugue", "A Little Fugue", "Bach")}) {
      SampleTune tune;
      tune.code_name = Word(code_name);
      tune.title = Word(title);
      tune.composer = Word(composer);
      database_.AddTune(tune);
    }
    for (const char* row : {"'Bach','J. S.',0,0,NULL,NULL", "'Saint-Saëns','Camille',0,0,NULL,NULL"})
      database_.Execute(QStringLiteral("INSERT INTO tblComposer VALUES (%1)").arg(Word(row)));
    tree_.SetTuneKeys({QStringLiteral("XX"), {QStringLiteral("XXX")}});
    Begin();
    window_.resize(400, 400);
    tree_.show();
  }

  static TreeLevel Tunes(const char* statement, const char* key) {
    return {Word(statement), QStringLiteral("{Title}"), Word(key)};
  }
  void Begin() {
    const TreeLevel composers{
        QStringLiteral("select COMPOSER,FIRST_NAME from tblComposer ORDER BY COMPOSER"),
        QStringLiteral("{COMPOSER}, {FIRST_NAME}"),
        QStringLiteral("{COMPOSER}"),
        QStringLiteral("COMPOSER"),
        {},
        {},
        {Tunes("select CodeName,Title FROM tblMelodies WHERE Composer = {parent} ORDER BY Title",
               "XXX{CodeName}")}};
    tree_.Model().Begin(QStringLiteral("Top"), QStringLiteral("Music"),
                        {{QStringLiteral("Composers"), QStringLiteral("Composers"), {composers}},
                         {QStringLiteral("All"),
                          QStringLiteral("All tunes"),
                          {Tunes("select CodeName,Title FROM tblMelodies ORDER BY Title", "XXZ{CodeName}")}}},
                        database_.Connect());
    tree_.ExpandRoot();
  }
  QModelIndex Place(const char* key) { return tree_.Model().IndexOf(Word(key)); }
  void ClickNode(const char* key) {
    view_.scrollTo(Place(key));
    QTest::mouseClick(view_.viewport(), Qt::LeftButton, {}, view_.visualRect(Place(key)).center());
  }
  QString Current() { return tree_.Model().KeyOf(view_.currentIndex()); }
  QString Matches() const { return TextOf(tree_, "lblMatches"); }

  ScriptedPlatform platform_;
  SampleDatabase database_;
  QWidget window_;
  TuneTree tree_{QStringLiteral("TreeListening")};
  QTreeView& view_ = Find<QTreeView>(tree_, "TreeListening");
  QLineEdit& field_ = Find<QLineEdit>(tree_, "txtFind");
  QSignalSpy chosen_{&tree_, &TuneTree::TuneChosen};
};

TEST_F(TuneTrees, BeginsWithTheRootOpenAndNothingBuiltBelowTheBranches) {
  EXPECT_TRUE(view_.isExpanded(Place("Top")));
  EXPECT_FALSE(view_.isExpanded(Place("Composers")));
  EXPECT_EQ(tree_.Model().NodeCount(), 3);
}

TEST_F(TuneTrees, AClickOpensANodeAndAnotherLeavesItOpen) {
  ClickNode("Composers");
  EXPECT_TRUE(view_.isExpanded(Place("Composers")));
  ClickNode("Composers");
  EXPECT_TRUE(view_.isExpanded(Place("Composers")));
  ClickNode("Bach");
  EXPECT_TRUE(Place("XXXAir").isValid());
  EXPECT_EQ(chosen_.size(), 0);
}

TEST_F(TuneTrees, AClickOnATuneGivesItsCodeName) {
  ClickNode("Composers");
  ClickNode("Bach");
  ClickNode("XXXAir");
  ASSERT_EQ(chosen_.size(), 1);
  EXPECT_EQ(chosen_[0][0].toString(), QStringLiteral("Air"));
}

TEST_F(TuneTrees, ATuneWhoseKeyIsNotInTheListGivesNoName) {
  ClickNode("All");
  ClickNode("XXZSwan");
  ASSERT_EQ(chosen_.size(), 1);
  EXPECT_EQ(chosen_[0][0].toString(), QString());
}

TEST_F(TuneTrees, EnterDoesWhatAClickDoes) {
  view_.setCurrentIndex(Place("Composers"));
  QTest::keyClick(&view_, Qt::Key_Return);
  EXPECT_TRUE(view_.isExpanded(Place("Composers")));
  QTest::keyClick(&view_, Qt::Key_Down);
  QTest::keyClick(&view_, Qt::Key_Right);
  QTest::keyClick(&view_, Qt::Key_Down);
  EXPECT_EQ(Current(), QStringLiteral("XXXFugue"));
  EXPECT_EQ(chosen_.size(), 0) << "looking is not choosing";
  QTest::keyClick(&view_, Qt::Key_Enter);
  ASSERT_EQ(chosen_.size(), 1);
  EXPECT_EQ(chosen_[0][0].toString(), QStringLiteral("Fugue"));
}

TEST_F(TuneTrees, ADoubleClickChoosesATuneAndClosesNothing) {
  ClickNode("Composers");
  QTest::mouseDClick(view_.viewport(), Qt::LeftButton, {}, view_.visualRect(Place("Composers")).center());
  EXPECT_TRUE(view_.isExpanded(Place("Composers")));
}

TEST_F(TuneTrees, TheTopIsExpandedAndContractedByTurns) {
  QPushButton button;
  tree_.Attach(&button, QStringLiteral("Expand"), QStringLiteral("Contract"));
  EXPECT_EQ(button.text(), QStringLiteral("Expand"));
  button.click();
  for (const char* key : {"Top", "Composers", "All"}) EXPECT_TRUE(view_.isExpanded(Place(key))) << key;
  EXPECT_FALSE(view_.isExpanded(Place("Bach")));
  EXPECT_EQ(button.text(), QStringLiteral("Contract"));
  button.click();
  for (const char* key : {"Top", "Composers", "All"}) EXPECT_FALSE(view_.isExpanded(Place(key))) << key;
  EXPECT_EQ(button.text(), QStringLiteral("Expand"));
}

TEST_F(TuneTrees, WhatIsTypedLeadsToTheFirstMatchAndEnterToTheNextRoundTheEnds) {
  field_.setText(QStringLiteral("swan"));
  EXPECT_EQ(Current(), QStringLiteral("XXXSwan"));
  EXPECT_TRUE(view_.isExpanded(Place("Saint-Saëns"))) << "it is in sight";
  EXPECT_EQ(Matches(), QStringLiteral("1 of 2"));
  QTest::keyClick(&field_, Qt::Key_Return);
  EXPECT_EQ(Current(), QStringLiteral("XXZSwan"));
  EXPECT_EQ(Matches(), QStringLiteral("2 of 2"));
  QTest::keyClick(&field_, Qt::Key_Return);
  EXPECT_EQ(Current(), QStringLiteral("XXXSwan"));
  QTest::keyClick(&field_, Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(Current(), QStringLiteral("XXZSwan"));
  EXPECT_EQ(chosen_.size(), 0) << "looking is not choosing";
}

TEST_F(TuneTrees, TheSearchSeesWhatIsNotBuiltYetAndTellsHowFarItIs) {
  QSignalSpy building(&tree_, &TuneTree::Building);
  field_.setText(QStringLiteral("saint saens"));
  EXPECT_EQ(Current(), Word("Saint-Saëns"));
  ASSERT_EQ(building.size(), 2);
  EXPECT_EQ(building[1][0].toInt(), 100);
}

TEST_F(TuneTrees, WhatIsNotThereIsSaidAndMovesNothing) {
  field_.setText(QStringLiteral("swan"));
  field_.setText(QStringLiteral("swan lake"));
  EXPECT_EQ(Matches(), QStringLiteral("Not found"));
  EXPECT_EQ(Current(), QStringLiteral("XXXSwan"));
  QTest::keyClick(&field_, Qt::Key_Return);
  EXPECT_EQ(Current(), QStringLiteral("XXXSwan"));
  field_.clear();
  EXPECT_EQ(Matches(), QString());
}

TEST_F(TuneTrees, LettersTypedIntoTheTreeBeginASearch) {
  view_.setFocus();
  QTest::keyClicks(&view_, QStringLiteral("f"));
  EXPECT_EQ(field_.text(), QStringLiteral("f"));
  EXPECT_EQ(Current(), QStringLiteral("XXXFugue"));
}

TEST_F(TuneTrees, AnotherTreeForgetsTheMatchesOfTheOneBefore) {
  field_.setText(QStringLiteral("swan"));
  Begin();
  EXPECT_FALSE(view_.currentIndex().isValid());
  QTest::keyClick(&field_, Qt::Key_Return);
  EXPECT_FALSE(view_.currentIndex().isValid());
}

TEST_F(TuneTrees, AFailureWhileANodeOpensIsTold) {
  database_.Execute(QStringLiteral("DROP TABLE tblComposer"));
  ClickNode("Composers");
  EXPECT_TRUE(platform_.messages->shown.isEmpty()) << "not in the middle of the view's work";
  QCoreApplication::processEvents();
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_TRUE(platform_.messages->shown[0].text.contains(QStringLiteral("tblComposer")));
}

TEST_F(TuneTrees, AFailureWhileSearchingIsToldAndTheSearchSeesWhatThereIs) {
  database_.Execute(QStringLiteral("DROP TABLE tblComposer"));
  field_.setText(QStringLiteral("all tunes"));
  EXPECT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_EQ(Current(), QStringLiteral("All"));
}

TEST_F(TuneTrees, TellAScreenReaderWhatTheyAre) {
  EXPECT_EQ(view_.accessibleName(), QStringLiteral("Tunes"));
  EXPECT_FALSE(field_.accessibleName().isEmpty());
  EXPECT_EQ(Place("Composers").data(Qt::DisplayRole).toString(), QStringLiteral("Composers"));
}

}  // namespace
}  // namespace zelmar
