// What is told while a tune is loaded: percentages, served events, the wait text, the end.
#include "store/loading_fixture.h"

namespace zelmar::testing_support {
namespace {

using LoadProgress = LoadingTest;

SampleTune ShortTune() {
  SampleTune tune;
  tune.code_name = QStringLiteral("Moonlight");
  tune.title = QStringLiteral("Moonlight Sonata");
  tune.composer = QStringLiteral("Beethoven");
  tune.events = SampleMelody({QStringLiteral("C4"), QStringLiteral("D4")});
  return tune;
}

TEST_F(LoadProgress, PercentagesFollowTheStages) {
  SampleTune sample;
  sample.code_name = QStringLiteral("Four");
  sample.events =
      SampleMelody({QStringLiteral("C4"), QStringLiteral("D4"), QStringLiteral("E4"), QStringLiteral("F4")});
  Load(sample);
  // Sorting raises 0, 80 and 99 for a tune of at most 60 events; 55 + 45 x 99 / 100 is 99.55.
  EXPECT_EQ(percents, std::vector<int>({5, 10, 15, 25, 35, 45, 55, 55, 91, 100, 100}));
}

TEST_F(LoadProgress, EveryRowRaisesThePercentWithItsIntegerPart) {
  SampleTune sample;
  sample.code_name = QStringLiteral("Three");
  sample.events = SampleMelody({QStringLiteral("C4"), QStringLiteral("D4"), QStringLiteral("E4")});
  Load(sample);
  EXPECT_EQ(std::vector<int>(percents.begin() + 3, percents.begin() + 6), std::vector<int>({28, 41, 55}));
}

TEST_F(LoadProgress, TheSortMovesTheBarThroughItsShare) {
  SampleTune sample;
  sample.code_name = QStringLiteral("Long");
  database.AddTune(sample);
  database.AddNotes(QStringLiteral("Long"), 100);
  Load(QStringLiteral("Long"));
  EXPECT_TRUE(std::is_sorted(percents.begin() + 2, percents.begin() + 103));
  EXPECT_EQ(percents[102], 55);
  // 200 events with their note-offs: a step each 3 events, 66 in all; 55 + 45 x 66 / 100 is 84.7.
  EXPECT_NE(std::find(percents.begin(), percents.end(), 85), percents.end());
  EXPECT_EQ(std::count(percents.begin() + 103, percents.end(), 55), 2) << "0 % and 1 % of the sort";
  EXPECT_EQ(percents.back(), 100);
}

TEST_F(LoadProgress, TheQueueIsServedAtTheStagesAndPacedInTheRows) {
  SampleTune sample;
  sample.code_name = QStringLiteral("Long");
  database.AddTune(sample);
  database.AddNotes(QStringLiteral("Long"), 500);
  std::vector<int> percent_at_serving;
  platform.events->on_serve = [&](int) {
    percent_at_serving.push_back(percents.empty() ? -1 : percents.back());
  };
  Load(QStringLiteral("Long"));
  // Twice around the catalogue row, once for the track, once before the rows.
  ASSERT_GE(percent_at_serving.size(), 6U);
  EXPECT_EQ(std::vector<int>(percent_at_serving.begin(), percent_at_serving.begin() + 4),
            std::vector<int>({-1, -1, 5, 15}));
  EXPECT_EQ(percent_at_serving.back(), 100);
  EXPECT_LT(percent_at_serving.size(), 120U) << "the clock stood still, so 500 rows were served hardly once";
}

TEST_F(LoadProgress, RowsAreServedAgainWhenTimeHasPassed) {
  SampleTune sample;
  sample.code_name = QStringLiteral("Long");
  sample.events = SampleMelody(QStringList(50, QStringLiteral("C4")));
  database.AddTune(sample);
  int served_in_rows = 0;
  QObject::connect(&loader, &TuneLoader::PercentCompleted,
                   [&](std::int16_t) { platform.clock->AdvanceMicroseconds(20000); });
  platform.events->on_serve = [&](int) {
    if (!percents.empty() && percents.back() > 15 && percents.back() < 55) ++served_in_rows;
  };
  Load(QStringLiteral("Long"));
  EXPECT_EQ(served_in_rows, 48) << "all but the first row, which is still at 15, and the last, at 55";
}

TEST_F(LoadProgress, SixThousandRowsShowNoWaitTextAndOneMoreDoes) {
  SampleTune sample;
  sample.code_name = QStringLiteral("Huge");
  database.AddTune(sample);
  database.AddNotes(QStringLiteral("Huge"), 6000);
  Load(QStringLiteral("Huge"));
  EXPECT_TRUE(loader.LoadedOk());
  EXPECT_TRUE(window.wait_texts.isEmpty());
  database.AddNotes(QStringLiteral("Huge"), 1);
  EXPECT_NE(Load(QStringLiteral("Huge")), nullptr);
  EXPECT_EQ(
      window.wait_texts,
      QStringList({QStringLiteral(
                       "Please be very patient. You are loading an extremely large tune file, in excess of "
                       "6,000 notes. (Length is 6,001 notes)."),
                   QString()}));
  EXPECT_EQ(window.MyTune()->Count(), 2 * 6001);
}

TEST_F(LoadProgress, TheWaitTextStandsThroughTheSortAndIsGoneAtAHundredPercent) {
  SampleTune sample;
  sample.code_name = QStringLiteral("Huge");
  database.AddTune(sample);
  database.AddNotes(QStringLiteral("Huge"), 6001);
  int while_sorting = 0;
  bool gone_in_time = false;
  QObject::connect(&loader, &TuneLoader::PercentCompleted, [&](std::int16_t percent) {
    const bool stands = !window.wait_texts.isEmpty() && !window.wait_texts.last().isEmpty();
    if (percent > 15 && percent < 100) {
      EXPECT_TRUE(stands) << percent;
      if (percent > 55) ++while_sorting;
    }
    gone_in_time = percent == 100 && !stands;
  });
  Load(QStringLiteral("Huge"));
  EXPECT_GT(while_sorting, 0);
  EXPECT_TRUE(gone_in_time);
}

TEST_F(LoadProgress, DoneIsRaisedOnceAtTheEnd) {
  const auto tune = Load(ShortTune());
  EXPECT_EQ(done, QStringList(QStringLiteral("Moonlight|Beethoven - Moonlight Sonata")));
  EXPECT_EQ(percents_when_done, static_cast<int>(percents.size()));
}

TEST_F(LoadProgress, WhenDoneIsRaisedTheLoadHasEndedWellAndTheConnectionIsClosed) {
  int raised = 0;
  QObject::connect(&loader, &TuneLoader::Done, [&] {
    ++raised;
    EXPECT_TRUE(loader.LoadedOk());
    EXPECT_NE(window.MyTune(), nullptr);
    const QStringList names = QSqlDatabase::connectionNames();
    EXPECT_TRUE(names.isEmpty()) << names.join(u',').toStdString();
  });
  Load(ShortTune());
  EXPECT_EQ(raised, 1);
}

TEST_F(LoadProgress, TheDatabaseIsFreeAgainAfterwards) {
  Load(ShortTune());
  EXPECT_TRUE(QSqlDatabase::connectionNames().isEmpty());
}

}  // namespace
}  // namespace zelmar::testing_support
