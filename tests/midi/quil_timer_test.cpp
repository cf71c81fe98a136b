#include "midi/quil_timer.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/scripted_services.h"

namespace zelmar {
namespace {

using testing_support::ScriptedPlatform;

class QuilTimerTest : public ::testing::Test {
 protected:
  QuilTimerTest() {
    timer_.SetInterval(2);
    timer_.SetPulse(100);
    platform_.events->step_microseconds = 0;
    QObject::connect(&timer_, &QuilTimer::Bang, [this] { bangs_.push_back(Milliseconds()); });
    QObject::connect(&timer_, &QuilTimer::NewBeat, [this] { beats_.push_back(Milliseconds()); });
  }

  double Milliseconds() const { return (platform_.clock->SecondsSinceMidnight() - 36000.0) * 1000.0; }
  // Ends the loop once the clock has passed `milliseconds`.
  void StopAfter(double milliseconds) {
    platform_.events->on_serve = [this, milliseconds](int) {
      if (Milliseconds() > milliseconds) timer_.SetEnabled(false);
    };
  }

  ScriptedPlatform platform_;
  QuilTimer timer_;
  std::vector<double> bangs_;
  std::vector<double> beats_;
};

TEST_F(QuilTimerTest, RaisesBothEventsAtOnceAndThenByTheirPeriods) {
  StopAfter(250.5);
  timer_.Fire();
  ASSERT_EQ(bangs_.size(), 126U);
  for (std::size_t i = 0; i < bangs_.size(); ++i) EXPECT_NEAR(bangs_[i], 2.0 * static_cast<double>(i), 0.01);
  ASSERT_EQ(beats_.size(), 3U);
  EXPECT_NEAR(beats_[0], 0.0, 0.01);
  EXPECT_NEAR(beats_[1], 100.0, 0.01);
  EXPECT_NEAR(beats_[2], 200.0, 0.01);
}

TEST_F(QuilTimerTest, ABeatComesBeforeABangOfTheSameMoment) {
  std::vector<char> order;
  QObject::connect(&timer_, &QuilTimer::Bang, [&order] { order.push_back('b'); });
  QObject::connect(&timer_, &QuilTimer::NewBeat, [&order] { order.push_back('N'); });
  timer_.SetPulse(4);
  StopAfter(5.0);
  timer_.Fire();
  EXPECT_EQ(std::string(order.begin(), order.end()), "bNbNb");
}

TEST_F(QuilTimerTest, ALateLoopCatchesUpWithoutLosingABang) {
  bool stalled = false;
  platform_.events->on_serve = [this, &stalled](int) {
    if (!stalled && Milliseconds() >= 20.0) {
      stalled = true;
      platform_.clock->AdvanceMicroseconds(50000);
    }
    if (Milliseconds() > 121.0) timer_.SetEnabled(false);
  };
  timer_.Fire();
  // The marks advance by the period, so after the stall the count is what it would have been without it.
  EXPECT_EQ(bangs_.size(), 61U);
  EXPECT_EQ(beats_.size(), 2U);
}

TEST_F(QuilTimerTest, AChangedPulseTakesEffectOnTheNextCheck) {
  QObject::connect(&timer_, &QuilTimer::NewBeat, [this] { timer_.SetPulse(10); });
  StopAfter(35.5);
  timer_.Fire();
  EXPECT_EQ(beats_.size(), 4U);
}

TEST_F(QuilTimerTest, IsOverWhenAHandlerDisablesIt) {
  QObject::connect(&timer_, &QuilTimer::Bang, [this] {
    if (bangs_.size() == 5) timer_.SetEnabled(false);
  });
  timer_.Fire();
  EXPECT_EQ(bangs_.size(), 5U);
  EXPECT_FALSE(timer_.Enabled());
}

TEST_F(QuilTimerTest, ServesTheQueueBeforeEachCheck) {
  StopAfter(20.5);
  timer_.Fire();
  // Two servings a round, a round for each bang, and one more that ends the loop.
  EXPECT_GE(platform_.events->serve_count, 20);
}

TEST_F(QuilTimerTest, ABeatComesWhenItWasAskedForAndOnlyThatOne) {
  int beat = 0;
  QObject::connect(&timer_, &QuilTimer::NewBeat, [this, &beat] {
    if (++beat == 2) timer_.SetNextBeat(platform_.clock->SecondsSinceMidnight() * 1000.0 + 30.5);
  });
  StopAfter(350.0);
  timer_.Fire();
  ASSERT_EQ(beats_.size(), 5U);
  const double expected[] = {0.0, 100.0, 130.5, 230.5, 330.5};
  for (std::size_t i = 0; i < 5; ++i) EXPECT_NEAR(beats_[i], expected[i], 0.01) << i;
}

TEST_F(QuilTimerTest, ABeatThatComesLateMovesNoneOfThoseBehindIt) {
  bool stalled = false;
  platform_.events->on_serve = [this, &stalled](int) {
    if (!stalled && Milliseconds() >= 90.0) {
      stalled = true;
      platform_.clock->AdvanceMicroseconds(60000);
    }
    if (Milliseconds() > 350.0) timer_.SetEnabled(false);
  };
  timer_.Fire();
  ASSERT_EQ(beats_.size(), 4U);
  EXPECT_NEAR(beats_[1], 150.0, 2.01);
  EXPECT_NEAR(beats_[2], 200.0, 0.01);
  EXPECT_NEAR(beats_[3], 300.0, 0.01);
}

TEST_F(QuilTimerTest, BeatsThatAreOverdueComeBackToBack) {
  QObject::connect(&timer_, &QuilTimer::NewBeat,
                   [this] { timer_.SetNextBeat(36000000.0 + 5.0 * static_cast<double>(beats_.size())); });
  platform_.clock->SetSeconds(36000.1);
  StopAfter(112.0);
  timer_.Fire();
  ASSERT_EQ(beats_.size(), 23U);
  EXPECT_NEAR(beats_[20], 100.0, 0.01);
  EXPECT_NEAR(beats_[22], 110.0, 0.01);
}

TEST_F(QuilTimerTest, LosesNoBangToTheRoundingOfTheClock) {
  platform_.clock->SetSeconds(45000.1237);
  int rounds = 0;
  platform_.events->on_serve = [this, &rounds](int) {
    // Two servings a round, and a round for each bang.
    if (++rounds > 250000 || platform_.clock->SecondsSinceMidnight() > 45200.0) timer_.SetEnabled(false);
  };
  timer_.Fire();
  EXPECT_EQ(bangs_.size(), 99939U);
  EXPECT_LT(rounds, 250000);
}

TEST_F(QuilTimerTest, StallsWhenTheClockPassesMidnight) {
  platform_.clock->SetSeconds(86399.99);
  int rounds = 0;
  platform_.events->on_serve = [this, &rounds](int) {
    if (platform_.clock->SecondsSinceMidnight() >= 86400.0) platform_.clock->SetSeconds(0.0);
    if (platform_.clock->SecondsSinceMidnight() < 1000.0 && ++rounds == 200) timer_.SetEnabled(false);
  };
  std::size_t bangs_before = 0;
  QObject::connect(&timer_, &QuilTimer::Bang, [this, &bangs_before] {
    if (platform_.clock->SecondsSinceMidnight() > 1000.0) bangs_before = bangs_.size();
  });
  timer_.Fire();
  EXPECT_EQ(bangs_.size(), bangs_before);
}

}  // namespace
}  // namespace zelmar
