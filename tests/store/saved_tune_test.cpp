// What the database holds under a name that a save would take.
#include "store/saved_tune.h"

#include "store/saving_fixture.h"

namespace zelmar::testing_support {
namespace {

class SavedTune : public SavingTest {};

TEST_F(SavedTune, AFreeNameHasNoTitle) {
  EXPECT_EQ(TitleOfSavedTune(QStringLiteral("Mine")), std::nullopt);
}

TEST_F(SavedTune, ANameInUseHasItsTitleWhateverTheCase) {
  EXPECT_EQ(TitleOfSavedTune(QStringLiteral("Other")), QStringLiteral("A Title"));
  EXPECT_EQ(TitleOfSavedTune(QStringLiteral("oTHER")), QStringLiteral("A Title"));
}

TEST_F(SavedTune, NotesThatNoEntryListsAreToldByTheirName) {
  database.Execute(QStringLiteral("delete * from tblMelodies"));
  EXPECT_EQ(TitleOfSavedTune(QStringLiteral("OTHER")), QStringLiteral("Other"));
}

TEST_F(SavedTune, WithoutADatabaseTheUserIsTold) {
  Global().DatabasePath = database.Directory() + QStringLiteral("/gone.mdb");
  EXPECT_EQ(TitleOfSavedTune(QStringLiteral("Other")), std::nullopt);
  EXPECT_TRUE(Global().DatabaseFailed);
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(SavedTune, ANameThatNoTuneCanHaveIsAFailure) {
  EXPECT_EQ(FailureNumber([] { TitleOfSavedTune(QStringLiteral("a]b")); }), database_error::kSyntax);
  EXPECT_EQ(FailureNumber([] { TitleOfSavedTune(QStringLiteral("tblMelodies")); }),
            database_error::kTableExists);
  EXPECT_EQ(FailureNumber([] { TitleOfSavedTune(QStringLiteral("x' OR 'a'='a")); }), database_error::kSyntax);
}

}  // namespace
}  // namespace zelmar::testing_support
