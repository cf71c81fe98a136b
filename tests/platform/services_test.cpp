#include "platform/services.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QElapsedTimer>
#include <QTimer>

#include "support/scripted_services.h"

namespace zelmar {
namespace {

using testing_support::ScriptedPlatform;

TEST(RealServices, TheClockReadsSecondsSinceMidnight) {
  const QTime now = QTime::currentTime();
  const double seconds = SecondsSinceMidnight();
  const double expected = now.msecsSinceStartOfDay() / 1000.0;
  // A test that runs across midnight sees the two a day apart.
  const double distance = std::abs(seconds - expected);
  EXPECT_TRUE(distance < 2.0 || distance > 86398.0) << seconds << " against " << expected;
}

TEST(RealServices, WaitingHandlesTheQueueAndComesBackNearItsMoment) {
  bool fired = false;
  QTimer::singleShot(1, [&fired] { fired = true; });
  const double start = SecondsSinceMidnight();
  while (SecondsSinceMidnight() < start + 0.030 && SecondsSinceMidnight() >= start) WaitUntil(start + 0.030);
  EXPECT_TRUE(fired);
}

TEST(RealServices, WaitingForTheImpossibleReturnsSoon) {
  // A moment far away is what a caller holds when the clock has passed midnight.
  QElapsedTimer passed;
  passed.start();
  WaitUntil(SecondsSinceMidnight() + 80000.0);
  EXPECT_LT(passed.elapsed(), 5000);
}

TEST(ScriptedServices, ServingMovesTheVirtualClock) {
  ScriptedPlatform platform;
  const double before = SecondsSinceMidnight();
  platform.events->step_microseconds = 500;
  ServeEvents();
  ServeEvents();
  EXPECT_DOUBLE_EQ(SecondsSinceMidnight(), before + 0.001);
  EXPECT_EQ(platform.events->serve_count, 2);
}

TEST(ScriptedServices, WaitingMovesTheVirtualClockToTheMomentAndNeverBack) {
  ScriptedPlatform platform;
  const double start = SecondsSinceMidnight();
  WaitUntil(start + 1.25);
  EXPECT_DOUBLE_EQ(SecondsSinceMidnight(), start + 1.25);
  WaitUntil(start);
  EXPECT_DOUBLE_EQ(SecondsSinceMidnight(), start + 1.25);
}

TEST(ScriptedServices, BoxesAreKeptAndAnsweredInOrder) {
  ScriptedPlatform platform;
  platform.messages->answers = {MessageAnswer::kYes};
  EXPECT_EQ(ShowMessage(MessageIcon::kQuestion, QStringLiteral("a"), QStringLiteral("t"),
                        MessageButtons::kYesNo, MessageAnswer::kNo),
            MessageAnswer::kYes);
  EXPECT_EQ(ShowMessage(MessageIcon::kQuestion, QStringLiteral("b"), {}, MessageButtons::kYesNo,
                        MessageAnswer::kNo),
            MessageAnswer::kNo);
  ASSERT_EQ(platform.messages->shown.size(), 2);
  EXPECT_EQ(platform.messages->shown[0].text, QStringLiteral("a"));
  EXPECT_EQ(platform.messages->shown[0].title, QStringLiteral("t"));
  EXPECT_EQ(InputBox(QStringLiteral("p"), QStringLiteral("t")), QString());
  EXPECT_EQ(ChooseFile(FileChoice::kOpen, QStringLiteral("t"), {}, {}), QString());
}

TEST(PacedServing, ServesOnlyWhenAFewMillisecondsHavePassed) {
  ScriptedPlatform platform;
  platform.events->step_microseconds = 0;
  PacedServing serving;
  for (int i = 0; i < 1000; ++i) {
    serving.ServeWhenDue();
    platform.clock->AdvanceMicroseconds(20);
  }
  // 20 ms in all: the first call serves, then one in each 8 ms.
  EXPECT_EQ(platform.events->serve_count, 3);
}

TEST(PacedServing, GoesOnAfterMidnight) {
  ScriptedPlatform platform;
  platform.clock->SetSeconds(86399.9);
  PacedServing serving;
  serving.ServeWhenDue();
  platform.clock->SetSeconds(0.1);
  serving.ServeWhenDue();
  EXPECT_EQ(platform.events->serve_count, 2);
}

}  // namespace
}  // namespace zelmar
