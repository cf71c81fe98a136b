// Rows of the database as groups of a printed list.
#include "store/list_rows.h"

#include "store/store_fixture.h"

namespace zelmar::testing_support {
namespace {

class ListRows : public StoreTest {
 protected:
  ListRows() {
    for (const char* row : {"'Song','about songs'", "'Air',NULL"})
      database.Execute(QStringLiteral("INSERT INTO tblCategory VALUES (%1)").arg(QString::fromUtf8(row)));
    for (const char* name : {"Second", "First"}) {
      SampleTune tune;
      tune.code_name = tune.title = QString::fromUtf8(name);
      tune.category = QStringLiteral("Song");
      tune.style = QVariant();
      database.AddTune(tune);
    }
  }
};

TEST_F(ListRows, EachRowOfAShapeIsAGroupWithItsChapter) {
  const auto shape = Recordset::OpenStatement(
      database.Connect(),
      QStringLiteral(
          "SHAPE {SELECT * FROM `tblCategory`}  AS cmdComposer  APPEND ({select Composer,Title, Style, "
          "category, ensemble from tblmelodies order by title}  AS cmdMelodies RELATE 'CATEGORY' TO "
          "'Category') AS cmdMelodies"));
  const auto groups =
      GroupsOfShape(*shape, QStringLiteral("Category"), QStringLiteral("cmdMelodies"),
                    {QStringLiteral("Title"), QStringLiteral("Style"), QStringLiteral("Composer")});
  ASSERT_EQ(groups.size(), 2U);
  EXPECT_EQ(groups[0].head, QStringLiteral("Song"));
  ASSERT_EQ(groups[0].rows.size(), 2U);
  EXPECT_EQ(groups[0].rows[0], QStringList({QStringLiteral("First"), QString(), QStringLiteral("Bach")}));
  EXPECT_EQ(groups[1].head, QStringLiteral("Air"));
  EXPECT_TRUE(groups[1].rows.empty());
}

TEST_F(ListRows, RowsAloneAreAGroupWithoutAHead) {
  const auto rows = Recordset::OpenStatement(
      database.Connect(), QStringLiteral("SELECT Title, Rank FROM tblMelodies ORDER BY Title"));
  const PrintedGroup group = GroupOfRows(*rows, {QStringLiteral("rank"), QStringLiteral("title")});
  EXPECT_EQ(group.head, QString());
  ASSERT_EQ(group.rows.size(), 2U);
  EXPECT_EQ(group.rows[0], QStringList({QStringLiteral("500"), QStringLiteral("First")}));
}

TEST_F(ListRows, AFieldThatIsNotThereIsAFailure) {
  const auto rows =
      Recordset::OpenStatement(database.Connect(), QStringLiteral("SELECT Title FROM tblMelodies"));
  EXPECT_EQ(FailureNumber([&] { GroupOfRows(*rows, {QStringLiteral("none")}); }),
            database_error::kItemNotFound);
}

}  // namespace
}  // namespace zelmar::testing_support
