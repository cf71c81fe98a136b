// Commands that enter through the progress of a sort: none fails, and none costs an event.
#include <gtest/gtest.h>

#include <functional>

#include "model/tones_of_a_tune.h"
#include "platform/failure.h"

namespace zelmar {
namespace {

using namespace testing_support;

struct Command {
  const char* name;
  std::function<void(Tune&)> act;
  int more_events;  // than before, once it was done
};

std::int32_t Next(Tune& tune) {
  return tune.LastAbsRef() + 1;
}

const Command kCommands[] = {
    {"AddsAnEvent", [](Tune& tune) { tune.Add(EventAt(7, Next(tune), 3)); }, 1},
    {"RemovesTheFirstEvent", [](Tune& tune) { tune.Remove(1); }, -1},
    {"RemovesTheLastEvent", [](Tune& tune) { tune.Remove(tune.Count()); }, -1},
    {"AddsOneAndRemovesOne",
     [](Tune& tune) {
       tune.Remove(1);
       tune.Add(EventAt(MUSIC_NOTE, Next(tune), 1));
     },
     0},
    {"MovesAnEvent", [](Tune& tune) { tune.Item(tune.Count())->SetBar(1); }, 0},
    {"ChangesTheMetre", [](Tune& tune) { tune.SetBeatsPerBar(1); }, 0},
    {"MakesTheEnds", [](Tune& tune) { tune.CalcNotesOff(); }, 100},
    {"ReplacesTheEvents",
     [](Tune& tune) {
       auto tones = std::make_shared<Tones>();
       for (const std::int16_t bar : std::initializer_list<std::int16_t>{5, 4, 9})
         tones->Add(EventAt(MUSIC_NOTE, 1000 + bar, bar));
       tune.SetTones(tones);
     },
     -97},
    {"TakesAllEventsAway", [](Tune& tune) { tune.Tones()->Clear(); }, -100},
    {"SortsAnew", [](Tune& tune) { tune.SortStartTimes(); }, 0},
};

class SortInterrupted : public ::testing::TestWithParam<std::tuple<Command, int>> {};

TEST_P(SortInterrupted, EndsWithAllEventsInOrder) {
  const auto& [command, at_percent] = GetParam();
  Tune tune;
  for (std::int32_t i = 1; i <= 100; ++i)
    tune.Add(EventAt(MUSIC_NOTE, i, static_cast<std::int16_t>(2 + i * 37 % 50)));
  QList<int> percents;
  bool acted = false;
  const std::int16_t wanted = static_cast<std::int16_t>(at_percent);
  QObject::connect(&tune, &Tune::SortPercent, [&](std::int16_t percent) {
    if (!acted) percents.append(percent);
    if (acted || percent != wanted) return;
    acted = true;
    command.act(tune);
  });
  tune.SortStartTimes();
  EXPECT_TRUE(acted);
  EXPECT_EQ(percents.last(), at_percent);
  EXPECT_TRUE(tune.Sorted());
  ASSERT_EQ(tune.Count(), 100 + command.more_events);
  for (qsizetype place = 2; place <= tune.Count(); ++place)
    ASSERT_LE(tune.Item(place - 1)->Bar(), tune.Item(place)->Bar()) << "place " << place;
}

INSTANTIATE_TEST_SUITE_P(Commands, SortInterrupted,
                         ::testing::Combine(::testing::ValuesIn(kCommands),
                                            ::testing::Values(0, 1, 50, 100, 80, 99)),
                         [](const auto& row) {
                           return std::string(std::get<0>(row.param).name) + "At" +
                                  std::to_string(std::get<1>(row.param));
                         });

TEST(SortProgress, IsToldToItsEndAlsoWhenEventsComeMeanwhile) {
  Tune tune;
  for (std::int32_t i = 1; i <= 70; ++i) tune.Add(EventAt(MUSIC_NOTE, i, 1));
  QList<int> percents;
  QObject::connect(&tune, &Tune::SortPercent, [&](std::int16_t percent) {
    percents.append(percent);
    tune.Add(EventAt(MUSIC_NOTE, Next(tune), 1));
  });
  tune.SortStartTimes();
  // 0, one for each of the 71 events that are there once that is told, and the last two.
  ASSERT_EQ(percents.size(), 74);
  EXPECT_EQ(percents.first(), 0);
  EXPECT_EQ(percents.mid(72), (QList<int>{80, 99}));
  EXPECT_EQ(tune.Count(), 70 + 74);
}

TEST(SortProgress, AListenerThatFailsLeavesTheTuneAsItWas) {
  Tune tune;
  tune.Add(EventAt(MUSIC_NOTE, 1, 2));
  tune.Add(EventAt(MUSIC_NOTE, 2, 1));
  QObject::connect(&tune, &Tune::SortPercent, [](std::int16_t percent) {
    if (percent == 99) throw OverflowError();
  });
  EXPECT_THROW(tune.SortStartTimes(), OverflowError);
  EXPECT_EQ(NumbersOf(*tune.Tones()), QStringLiteral("1 2"));
  EXPECT_FALSE(tune.Sorted());
}

}  // namespace
}  // namespace zelmar
