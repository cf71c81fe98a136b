// Gaps in a list of rows, counted and skipped.
#include "store/gaps.h"

#include <gtest/gtest.h>

#include <random>

namespace zelmar {
namespace {

TEST(GapsOfAList, WithoutAnyEveryPlaceIsFilled) {
  const Gaps gaps;
  EXPECT_EQ(gaps.Count(), 0U);
  EXPECT_EQ(gaps.Before(1000), 0U);
  EXPECT_EQ(gaps.Filled(1000), 1000U);
}

TEST(GapsOfAList, PlacesBehindTheLastGapAreFilled) {
  Gaps gaps;
  gaps.Add(0);
  EXPECT_EQ(gaps.Filled(0), 1U);
  gaps.Add(5);
  EXPECT_EQ(gaps.Count(), 2U);
  EXPECT_EQ(gaps.Before(5), 1U);
  EXPECT_EQ(gaps.Before(6), 2U);
  EXPECT_EQ(gaps.Before(100000), 2U);
  EXPECT_EQ(gaps.Filled(3), 4U);
  EXPECT_EQ(gaps.Filled(4), 6U);
  EXPECT_EQ(gaps.Filled(99998), 100000U);
  gaps.Clear();
  EXPECT_EQ(gaps.Count(), 0U);
  EXPECT_EQ(gaps.Filled(0), 0U);
}

TEST(GapsOfAList, AgreeWithCountingOneByOne) {
  std::mt19937 random(7);
  for (const std::size_t size : {1U, 2U, 3U, 8U, 9U, 64U, 100U}) {
    std::vector<std::size_t> places(size);
    for (std::size_t i = 0; i < size; ++i) places[i] = i;
    std::shuffle(places.begin(), places.end(), random);
    std::vector<bool> is_gap(size + 3, false);
    Gaps gaps;
    for (const std::size_t gap : places) {
      gaps.Add(gap);
      is_gap[gap] = true;
      std::size_t before = 0, filled = 0;
      for (std::size_t place = 0; place < is_gap.size(); ++place) {
        ASSERT_EQ(gaps.Before(place), before) << size << ' ' << place;
        if (is_gap[place]) {
          ++before;
        } else {
          ASSERT_EQ(gaps.Filled(filled++), place) << size;
        }
      }
      ASSERT_EQ(gaps.Count(), before);
    }
  }
}

}  // namespace
}  // namespace zelmar
