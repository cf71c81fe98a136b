// The signals by which a system ends a program.
#include "platform/termination.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <csignal>

namespace zelmar {
namespace {

TEST(TerminationWatch, TellsOfASignalFromTheEventQueue) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    TerminationWatch watch;
    int told = 0;
    QObject::connect(&watch, &TerminationWatch::EndWanted, &watch, [&told] { ++told; });
    ASSERT_EQ(std::raise(signal), 0);
    EXPECT_EQ(told, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 1);
  }
}

TEST(TerminationWatch, ASecondSignalEndsAProgramThatDoesNotReact) {
  EXPECT_EXIT(
      {
        const TerminationWatch watch;
        std::raise(SIGTERM);
        std::raise(SIGTERM);
      },
      testing::KilledBySignal(SIGTERM), "");
}

TEST(TerminationWatch, AfterItSignalsHaveTheirEffectAgain) {
  EXPECT_EXIT(
      {
        { const TerminationWatch watch; }
        std::raise(SIGTERM);
      },
      testing::KilledBySignal(SIGTERM), "");
}

}  // namespace
}  // namespace zelmar
