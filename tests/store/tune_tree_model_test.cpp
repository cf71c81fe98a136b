// A tree of tunes: nodes one by one, nodes from statements, and the search through them.
#include "store/tune_tree_model.h"

#include "store/signal_count.h"
#include "store/store_fixture.h"
#include "store/tune_keys.h"

namespace zelmar::testing_support {
namespace {

QString Word(const char* text) {
  return QString::fromUtf8(text);
}

// The tree as lines, a dot before each for every level.
void Draw(const TuneTreeModel& tree, const QModelIndex& place, const QString& dots, QStringList& lines) {
  for (int row = 0; row < tree.rowCount(place); ++row) {
    const QModelIndex child = tree.index(row, 0, place);
    EXPECT_EQ(tree.parent(child), place);
    lines.append(dots + child.data().toString() + QStringLiteral(" (") + tree.KeyOf(child) + u')');
    Draw(tree, child, dots + u'.', lines);
  }
}

QStringList Drawn(const TuneTreeModel& tree) {
  QStringList lines;
  Draw(tree, {}, {}, lines);
  return lines;
}

void Open(TuneTreeModel& tree, const char* key) {
  const QModelIndex place = tree.IndexOf(Word(key));
  ASSERT_TRUE(place.isValid()) << key;
  ASSERT_TRUE(tree.canFetchMore(place)) << key;
  tree.fetchMore(place);
}

// --- Nodes one by one ---

class TreeOfNodes : public ::testing::Test {
 protected:
  TreeOfNodes() {
    tree.Begin(Word("Top"), Word("Music"));
    tree.Add(Word("Top"), Word("Bach, Johann"), Word("Bach"));
    tree.Add(Word("Bach"), Word("Air on the G String"), Word("XXXAir"));
    tree.Add(Word("Bach"), Word("Prelude"), Word("XXXPrelude"));
    tree.Add(Word("Top"), Word("Dvořák, Antonín"), Word("Dvořák"));
  }

  TuneTreeModel tree;
};

TEST_F(TreeOfNodes, StandWhereTheyWereAdded) {
  EXPECT_EQ(Drawn(tree), QStringList({Word("Music (Top)"), Word(".Bach, Johann (Bach)"),
                                      Word("..Air on the G String (XXXAir)"), Word("..Prelude (XXXPrelude)"),
                                      Word(".Dvořák, Antonín (Dvořák)")}));
  EXPECT_EQ(tree.NodeCount(), 5);
  EXPECT_TRUE(tree.hasChildren(tree.IndexOf(Word("Bach"))));
  EXPECT_FALSE(tree.hasChildren(tree.IndexOf(Word("XXXAir"))));
  EXPECT_EQ(tree.IndexOf(Word("XXXAir")).data(Qt::ToolTipRole).toString(), Word("Air on the G String"));
}

TEST_F(TreeOfNodes, HaveKeysOfTheirOwn) {
  EXPECT_THROW(tree.Add(Word("Dvořák"), Word("Again"), Word("XXXAir")), DuplicateKeyError);
  EXPECT_THROW(tree.Add(Word("Nobody"), Word("x"), Word("y")), SubscriptError);
  EXPECT_EQ(tree.NodeCount(), 5);
  EXPECT_FALSE(tree.IndexOf(Word("Nobody")).isValid());
}

TEST_F(TreeOfNodes, AreGoneWhenAnotherTreeBegins) {
  tree.Begin(Word("Top"), Word("Else"));
  EXPECT_EQ(Drawn(tree), QStringList(Word("Else (Top)")));
  EXPECT_FALSE(tree.IndexOf(Word("Bach")).isValid());
}

TEST_F(TreeOfNodes, AreFoundByEveryWordThatIsTypedWithoutRegardToCaseAndAccents) {
  const auto found = [this](const char* typed) {
    QStringList keys;
    for (const QModelIndex& place : tree.Matches(Word(typed))) keys.append(tree.KeyOf(place));
    return keys;
  };
  EXPECT_EQ(found("dvorak"), QStringList(Word("Dvořák")));
  EXPECT_EQ(found("STRING air"), QStringList(Word("XXXAir")));
  EXPECT_EQ(found("a"), QStringList({Word("Bach"), Word("XXXAir"), Word("Dvořák")})) << "from the top down";
  EXPECT_EQ(found("air prelude"), QStringList());
  EXPECT_EQ(found(" "), QStringList());
}

TEST(TuneKeys, TellATuneByTheMarkAndItsNameBehindAPrefixOfTheList) {
  const TuneKeys keys{QStringLiteral("XX"), {QStringLiteral("XXX"), QStringLiteral("XXF")}};
  EXPECT_TRUE(keys.IsTune(QStringLiteral("XXXAir")));
  EXPECT_EQ(keys.CodeNameOf(QStringLiteral("XXXAir")), QStringLiteral("Air"));
  EXPECT_EQ(keys.CodeNameOf(QStringLiteral("XXFAir")), QStringLiteral("Air"));
  EXPECT_TRUE(keys.IsTune(QStringLiteral("XXZAir")));
  EXPECT_EQ(keys.CodeNameOf(QStringLiteral("XXZAir")), QString()) << "a tune, but not of the list";
  EXPECT_FALSE(keys.IsTune(QStringLiteral("Xylophone")));
  EXPECT_FALSE(keys.IsTune(QStringLiteral("xxxAir")));
  EXPECT_FALSE(TuneKeys().IsTune(QStringLiteral("XXXAir")));
}

// --- Nodes from statements ---

class TreeOfStatements : public StoreTest {
 protected:
  TreeOfStatements() {
    for (const char* row :
         {"'Bach','Johann',1685,1750,'Germany','Baroque'",
          "'O''Carolan','Turlough',1670,1738,'Ireland','Baroque'", "'Zelenka',NULL,1679,1745,NULL,'Baroque'"})
      database.Execute(QStringLiteral("INSERT INTO tblComposer VALUES (%1)").arg(Word(row)));
    for (const char* row : {"'Baroque',1600,1750,NULL", "'Traditional and Timeless',0,2000,NULL"})
      database.Execute(QStringLiteral("INSERT INTO tblStyles VALUES (%1)").arg(Word(row)));
    AddTune("Air", "Air", "Bach", "Baroque");
    AddTune("Planxty", "Planxty Irwin", "O'Carolan", "Baroque");
    AddTune("Prelude", "A Prelude", "Bach", "Baroque");
    AddTune("Danny", "Danny Boy", "Various", "Traditional and Timeless");
  }

  void AddTune(const char* code_name, const char* title, const char* composer, const char* style) {
    SampleTune tune;
    tune.code_name = Word(code_name);
    tune.title = Word(title);
    tune.composer = Word(composer);
    tune.style = Word(style);
    database.AddTune(tune);
  }

  static TreeLevel Composers(const char* statement, const char* key, const char* tune_key) {
    const TreeLevel tunes{QStringLiteral("select CodeName,Title,length,ensemble FROM tblMelodies WHERE "
                                         "Composer = {parent} ORDER BY Title"),
                          QStringLiteral("{Title} - {Length} - {Ensemble}"), Word(tune_key)};
    return {Word(statement),
            QStringLiteral("{COMPOSER}, {FIRST_NAME}"),
            Word(key),
            QStringLiteral("COMPOSER"),
            {},
            {},
            {tunes}};
  }
  static std::vector<TreeBranch> Branches() {
    const QString timeless = QStringLiteral("Traditional and Timeless");
    TreeLevel composers =
        Composers("select COMPOSER,FIRST_NAME from tblComposer WHERE style = {parent} Order by COMPOSER",
                  "Z{COMPOSER}", "XXP{CodeName}");
    composers.not_below = timeless;
    const TreeLevel traditional{QStringLiteral("select CodeName,Title,Composer FROM tblMelodies WHERE "
                                               "Composer = 'Various' AND style = {parent}"),
                                QStringLiteral("{Title}[  by {Composer}]"),
                                QStringLiteral("XXZ{CodeName}"),
                                {},
                                timeless};
    const TreeLevel periods{QStringLiteral("select style from tblStyles ORDER BY FromYear DESC"),
                            QStringLiteral("{Style}"),
                            QStringLiteral("P{Style}"),
                            QStringLiteral("Style"),
                            {},
                            {},
                            {composers, traditional}};
    return {{QStringLiteral("Composers"),
             QStringLiteral("List of composers"),
             {Composers("select COMPOSER,FIRST_NAME from tblComposer Order by COMPOSER", "{COMPOSER}",
                        "XXX{CodeName}")}},
            {QStringLiteral("Periods"), QStringLiteral("Periods of Music"), {periods}}};
  }
  void Begin(std::vector<TreeBranch> branches = Branches()) {
    tree.Begin(QStringLiteral("Top"), QStringLiteral("Music"), std::move(branches), database.Connect());
  }
  static QStringList Whole() {
    QStringList lines;
    for (const char* line :
         {"Music (Top)", ".List of composers (Composers)", "..Bach, Johann (Bach)",
          "...A Prelude - Full - Solo (XXXPrelude)", "...Air - Full - Solo (XXXAir)",
          "..O'Carolan, Turlough (O'Carolan)", "...Planxty Irwin - Full - Solo (XXXPlanxty)",
          "..Zelenka,  (Zelenka)", ".Periods of Music (Periods)", "..Baroque (PBaroque)",
          "...Bach, Johann (ZBach)", "....A Prelude - Full - Solo (XXPPrelude)",
          "....Air - Full - Solo (XXPAir)", "...O'Carolan, Turlough (ZO'Carolan)",
          "....Planxty Irwin - Full - Solo (XXPPlanxty)", "...Zelenka,  (ZZelenka)",
          "..Traditional and Timeless (PTraditional and Timeless)", "...Danny Boy (XXZDanny)"})
      lines.append(Word(line));
    return lines;
  }

  TuneTreeModel tree;
};

TEST_F(TreeOfStatements, BeginsWithItsBranchesAlone) {
  Begin();
  EXPECT_EQ(Drawn(tree), QStringList({Word("Music (Top)"), Word(".List of composers (Composers)"),
                                      Word(".Periods of Music (Periods)")}));
  EXPECT_TRUE(tree.hasChildren(tree.IndexOf(Word("Composers"))));
}

TEST_F(TreeOfStatements, BuildsANodeWhenItIsOpened) {
  Begin();
  Open(tree, "Composers");
  EXPECT_EQ(tree.NodeCount(), 6);
  Open(tree, "O'Carolan");
  EXPECT_EQ(tree.KeyOf(tree.index(0, 0, tree.IndexOf(Word("O'Carolan")))), Word("XXXPlanxty"));
  EXPECT_FALSE(tree.canFetchMore(tree.IndexOf(Word("O'Carolan"))));
  EXPECT_FALSE(tree.canFetchMore(tree.IndexOf(Word("XXXPlanxty"))));
}

TEST_F(TreeOfStatements, WhatHasNoRowsHasNoChildren) {
  Begin();
  Open(tree, "Composers");
  EXPECT_TRUE(tree.hasChildren(tree.IndexOf(Word("Zelenka")))) << "as long as nobody looked";
  Open(tree, "Zelenka");
  EXPECT_FALSE(tree.hasChildren(tree.IndexOf(Word("Zelenka"))));
}

TEST_F(TreeOfStatements, IsBuiltAsAWholeWithTheSameTuneInSeveralBranches) {
  Begin();
  QList<int> percents;
  tree.BuildAll([&percents](int percent) { percents.append(percent); });
  EXPECT_EQ(Drawn(tree), Whole());
  EXPECT_EQ(percents, QList<int>({50, 100}));
}

TEST_F(TreeOfStatements, WhatWasOpenedBeforeStaysWhenTheRestIsBuilt) {
  Begin();
  Open(tree, "Periods");
  Open(tree, "PBaroque");
  const QPersistentModelIndex opened = tree.IndexOf(Word("ZBach"));
  tree.BuildAll();
  EXPECT_EQ(Drawn(tree), Whole());
  EXPECT_EQ(opened.data().toString(), Word("Bach, Johann"));
}

TEST_F(TreeOfStatements, ATuneThatStandsTwiceInOneBranchIsAFailureThatNamesIt) {
  std::vector<TreeBranch> branches = Branches();
  branches.resize(1);
  branches[0].below[0].below[0].key = QStringLiteral("XXXthe same");
  Begin(branches);
  try {
    tree.BuildAll();
    FAIL() << "nothing was thrown";
  } catch (const DuplicateKeyError& error) {
    EXPECT_TRUE(error.Description().contains(QStringLiteral("XXXthe same")));
  }
  EXPECT_EQ(tree.rowCount(tree.IndexOf(Word("Bach"))), 0) << "nothing is built by half";
  EXPECT_EQ(tree.NodeCount(), 5) << "and no key is taken";
  EXPECT_FALSE(tree.IndexOf(Word("XXXthe same")).isValid());
}

TEST_F(TreeOfStatements, AFailureWhileANodeOpensIsToldOnceAndTheNodeStaysEmpty) {
  Begin();
  database.Execute(QStringLiteral("DROP TABLE tblComposer"));
  QStringList told;
  QObject::connect(&tree, &TuneTreeModel::Failed, [&told](const QString& words) { told.append(words); });
  tree.fetchMore(tree.IndexOf(Word("Composers")));
  tree.fetchMore(tree.IndexOf(Word("Composers")));
  ASSERT_EQ(told.size(), 1);
  EXPECT_TRUE(told[0].contains(QStringLiteral("tblComposer")));
  EXPECT_FALSE(tree.hasChildren(tree.IndexOf(Word("Composers"))));
  EXPECT_NE(FailureNumber([&] { tree.BuildAll(); }), 0) << "the other branch asks for the table as well";
}

TEST_F(TreeOfStatements, ATreeWithoutADatabaseSaysSo) {
  tree.Begin(QStringLiteral("Top"), QStringLiteral("Music"), Branches());
  EXPECT_EQ(FailureNumber([&] { tree.BuildAll(); }), database_error::kOther);
}

TEST_F(TreeOfStatements, TheProgressMayBeginAnotherTreeOrEndThisOne) {
  Begin();
  tree.BuildAll([this](int) { tree.Begin(QStringLiteral("Top"), QStringLiteral("Else")); });
  EXPECT_EQ(Drawn(tree), QStringList(Word("Else (Top)")));

  auto mortal = std::make_unique<TuneTreeModel>();
  mortal->Begin(QStringLiteral("Top"), QStringLiteral("Music"), Branches(), database.Connect());
  mortal->BuildAll([&mortal](int) { mortal.reset(); });
  EXPECT_EQ(mortal, nullptr);
}

TEST_F(TreeOfStatements, TheRootTellsAViewOfEachNodeThatComes) {
  Begin();
  int rows = 0;
  QObject::connect(&tree, &QAbstractItemModel::rowsInserted,
                   [&rows](const QModelIndex&, int first, int last) { rows += last - first + 1; });
  tree.BuildAll();
  EXPECT_EQ(rows, Whole().size() - 3);
}

}  // namespace
}  // namespace zelmar::testing_support
