// Fetching a tune of the library: where it goes, what is told, how it came out.
#include "shell/tune_fetch.h"

#include "model/globals.h"
#include "model/main_window_link.h"
#include "support/sample_database.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class FetchingATune : public ::testing::Test {
 protected:
  FetchingATune() { database_.AddTune(QStringLiteral("ONE"), {QStringLiteral("C4"), QStringLiteral("D4")}); }

  const QList<ShownMessage>& Boxes() const { return platform_.messages->shown; }

  ScriptedPlatform platform_;
  SampleDatabase database_;
};

TEST_F(FetchingATune, IntoTheMainWindowMakesItTheCurrentTune) {
  QString name = QStringLiteral("one");
  EXPECT_EQ(FetchTune(name), Fetched::kLoaded);
  EXPECT_EQ(name, QStringLiteral("ONE"));
  ASSERT_NE(CurrentTune(), nullptr);
  EXPECT_EQ(CurrentTune()->FileName(), QStringLiteral("ONE"));
  EXPECT_EQ(Global().RecentCodeNames[0], QStringLiteral("ONE"));
}

TEST_F(FetchingATune, ForACallerAloneLeavesTheMainWindowWithoutOne) {
  QString name = QStringLiteral("ONE");
  std::shared_ptr<Tune> mine;
  EXPECT_EQ(FetchTuneInto(mine, name), Fetched::kLoaded);
  ASSERT_NE(mine, nullptr);
  EXPECT_EQ(mine->Count(), 4);
  EXPECT_EQ(CurrentTune(), nullptr);
  EXPECT_TRUE(Global().RecentCodeNames[0].isEmpty());
}

TEST_F(FetchingATune, TellsItsProgressFromLittleToAHundred) {
  QList<int> told;
  QString name = QStringLiteral("ONE");
  FetchTune(name, [&told](std::int16_t percent) { told.append(percent); });
  ASSERT_FALSE(told.isEmpty());
  EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
  EXPECT_LT(told.first(), 20);
  EXPECT_EQ(told.last(), 100);
}

TEST_F(FetchingATune, ThatIsNotInTheCatalogueIsLeftToTheCallerToTell) {
  QString name = QStringLiteral("NONE");
  auto mine = std::make_shared<Tune>();
  EXPECT_EQ(FetchTune(name), Fetched::kNotInCatalogue);
  EXPECT_EQ(FetchTuneInto(mine, name), Fetched::kNotInCatalogue);
  EXPECT_EQ(mine, nullptr);
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(FetchingATune, ThatFailsOnTheWayHasBeenToldOnce) {
  database_.Execute(QStringLiteral("drop table [ONE]"));
  QString name = QStringLiteral("ONE");
  EXPECT_EQ(FetchTune(name), Fetched::kFailed);
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_TRUE(Boxes()[0].text.contains(QStringLiteral("not found in database")))
      << qPrintable(Boxes()[0].text);
  std::shared_ptr<Tune> mine;
  EXPECT_EQ(FetchTuneInto(mine, name), Fetched::kFailed);
  EXPECT_EQ(mine, nullptr);
}

TEST_F(FetchingATune, WithoutALibraryHasFailedToo) {
  Global().DatabasePath = database_.Directory() + QStringLiteral("/Gone.mdb");
  QString name = QStringLiteral("ONE");
  EXPECT_EQ(FetchTune(name), Fetched::kFailed);
  EXPECT_FALSE(Boxes().isEmpty());
}

TEST(WordsOfProgress, TellOfTheSortingWhereItBeginsAndNowhereElse) {
  EXPECT_EQ(ProgressWords(54), QStringLiteral("54% completed. "));
  EXPECT_EQ(ProgressWords(55), QStringLiteral("55% completed.  Sorting in progress.  "));
  EXPECT_EQ(ProgressWords(56), QStringLiteral("56% completed. "));
}

TEST(TheCurrentTune, IsTheOneThatIsLoaded) {
  const ScriptedPlatform platform;
  EXPECT_EQ(CurrentTune(), nullptr);
  const auto tune = std::make_shared<Tune>();
  TheMainWindow().SetMyTune(tune);
  EXPECT_EQ(CurrentTune(), nullptr) << "held by the main window, and not loaded";
  Global().TuneLoadedFlag = true;
  EXPECT_EQ(CurrentTune(), tune);
  TheMainWindow().SetMyTune(nullptr);
  EXPECT_EQ(CurrentTune(), nullptr);
}

}  // namespace
}  // namespace zelmar
