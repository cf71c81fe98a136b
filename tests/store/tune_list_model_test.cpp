// A list of tunes as a table.
#include "store/tune_list_model.h"

#include "store/signal_count.h"
#include "store/store_fixture.h"

namespace zelmar::testing_support {
namespace {

constexpr char kStatement[] = "SELECT title, SoloInstrument, Tempo, codename FROM tblmelodies ORDER BY title";

class TuneLists : public StoreTest {
 protected:
  TuneLists() {
    for (const char* name : {"Air", "Brook", "Carol"}) {
      SampleTune tune;
      tune.code_name = QString::fromUtf8(name);
      tune.title = QString::fromUtf8(name).toUpper();
      if (tune.code_name == u"Brook") tune.solo_instrument = QVariant();
      database.AddTune(tune);
    }
  }

  void Load(const char* statement = kStatement) {
    list.Load(database.Connect(), QString::fromUtf8(statement));
  }
  QStringList Row(int row) const {
    QStringList cells;
    for (int column = 0; column < list.columnCount(); ++column)
      cells.append(list.index(row, column).data().toString());
    return cells;
  }
  QList<int> PlayingRows() const {
    QList<int> rows;
    for (int row = 0; row < list.rowCount(); ++row)
      if (list.index(row, 0).data(TuneListModel::kPlayingRole).toBool()) rows.append(row);
    return rows;
  }

  TuneListModel list;
};

TEST_F(TuneLists, ShowTheFieldsOfTheStatementAndNotTheCodeName) {
  Load();
  ASSERT_EQ(list.rowCount(), 3);
  EXPECT_EQ(list.columnCount(), 3);
  EXPECT_EQ(Row(0), QStringList({QStringLiteral("AIR"), QStringLiteral("Violin"), QStringLiteral("120")}));
  EXPECT_EQ(Row(1)[1], QString()) << "a null";
  EXPECT_EQ(list.CodeName(2), QStringLiteral("Carol"));
  EXPECT_EQ(list.Title(2), QStringLiteral("CAROL"));
  EXPECT_EQ(list.FieldOf(1), QStringLiteral("SoloInstrument"));
  EXPECT_EQ(list.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(),
            QStringLiteral("Solo instrument"));
  EXPECT_EQ(list.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Title"));
}

TEST_F(TuneLists, TheCodeNameMayStandAnywhereAndTheTitleTheFirstFieldWhereThereIsNone) {
  Load("SELECT codename, Composer FROM tblMelodies");
  EXPECT_EQ(list.columnCount(), 1);
  EXPECT_EQ(list.Title(0), QStringLiteral("Bach"));
  EXPECT_EQ(list.CodeName(0), QStringLiteral("Air"));
}

TEST_F(TuneLists, WithoutTunesHaveHeadsAndNoRows) {
  Load("SELECT title, codename FROM tblMelodies WHERE title = 'none'");
  EXPECT_EQ(list.rowCount(), 0);
  EXPECT_EQ(list.columnCount(), 1);
  Load();
  list.Clear();
  EXPECT_EQ(list.rowCount(), 0);
  EXPECT_EQ(list.columnCount(), 3);
}

TEST_F(TuneLists, AStatementThatFailsLeavesTheRows) {
  Load();
  EXPECT_NE(FailureNumber([&] { Load("SELECT codename FROM no_table"); }), 0);
  EXPECT_EQ(FailureNumber([&] { Load("SELECT title FROM tblMelodies"); }), database_error::kItemNotFound);
  EXPECT_EQ(list.rowCount(), 3);
}

TEST_F(TuneLists, TheTuneThatPlaysIsMarkedInWhateverCaseItIsNamed) {
  Load();
  const SignalCount changed(&list, &TuneListModel::dataChanged);
  list.SetPlaying(QStringLiteral("BROOK"));
  EXPECT_EQ(PlayingRows(), QList<int>{1});
  EXPECT_EQ(list.index(1, 0).data(Qt::AccessibleTextRole).toString(), QStringLiteral("BROOK, playing"));
  EXPECT_FALSE(list.index(0, 0).data(Qt::AccessibleTextRole).isValid());
  EXPECT_EQ(list.RowOf(QStringLiteral("brook")), 1);
  EXPECT_EQ(list.RowOf(QStringLiteral("none")), -1);
  list.SetPlaying(QStringLiteral("BROOK"));
  EXPECT_EQ(changed.Count(), 1);
  list.SetPlaying({});
  EXPECT_TRUE(PlayingRows().isEmpty());
}

TEST_F(TuneLists, TheMarkIsKeptWhenOtherTunesAreShownAndTheOldOnesAgain) {
  Load();
  list.SetPlaying(QStringLiteral("Carol"));
  Load("SELECT title, codename FROM tblMelodies WHERE title = 'AIR'");
  EXPECT_TRUE(PlayingRows().isEmpty());
  Load();
  EXPECT_EQ(PlayingRows(), QList<int>{2});
}

TEST(HeadingOf, TakesTheWordsOfANameApart) {
  EXPECT_EQ(HeadingOf(QStringLiteral("title")), QStringLiteral("Title"));
  EXPECT_EQ(HeadingOf(QStringLiteral("COMPOSER")), QStringLiteral("COMPOSER"));
  EXPECT_EQ(HeadingOf(QStringLiteral("MelodyTrackNo")), QStringLiteral("Melody track no"));
  EXPECT_EQ(HeadingOf(QString()), QString());
}

}  // namespace
}  // namespace zelmar::testing_support
