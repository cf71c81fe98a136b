// What a database says of itself, and what it lacks.
#include "store/database_info.h"

#include "store/store_fixture.h"

namespace zelmar::testing_support {
namespace {

using DatabaseAbout = StoreTest;

TEST_F(DatabaseAbout, ItsTitleIsStoredAndFound) {
  SaveDBInfo(QStringLiteral("My tunes"), QStringLiteral("All of them"));
  const auto info = FindDBInfo();
  ASSERT_TRUE(info);
  EXPECT_EQ(info->file_name, QStringLiteral("Sample.mdb"));
  EXPECT_EQ(info->title, QStringLiteral("My tunes"));
  EXPECT_EQ(info->description, QStringLiteral("All of them"));
  EXPECT_EQ(Global().DatabaseTitle, QStringLiteral("My tunes"));
}

TEST_F(DatabaseAbout, TheTablesThatItLacksAreNamed) {
  EXPECT_TRUE(MissingTables().isEmpty());
  for (const char* table : {"tblWords", "tblThemes"})
    database.Execute(QStringLiteral("DROP TABLE ") + QLatin1String(table));
  QStringList missing = MissingTables();
  missing.sort();
  EXPECT_EQ(missing, QStringList({QStringLiteral("tblThemes"), QStringLiteral("tblWords")}));
}

TEST_F(DatabaseAbout, OneThatIsNotThereSaysNothingAndLacksNothing) {
  Global().DatabasePath = database.Directory() + QStringLiteral("/gone.mdb");
  EXPECT_FALSE(FindDBInfo());
  EXPECT_TRUE(MissingTables().isEmpty());
  SaveDBInfo(QStringLiteral("x"), QStringLiteral("y"));
  EXPECT_TRUE(Global().DatabaseFailed);
  EXPECT_EQ(platform.messages->shown.size(), 3) << "each of them tells that it is not there";
}

}  // namespace
}  // namespace zelmar::testing_support
