// The signals by which a system ends a program.
#include "platform/termination.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <cerrno>
#include <csignal>
#include <vector>

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

// A signal comes between any two steps of the program, also between a call that fails and a look at why.
TEST(TerminationWatch, ASignalLeavesTheReasonOfAnEarlierFailureAlone) {
  const auto is_socket = [](int descriptor) {
    struct stat state = {};
    return ::fstat(descriptor, &state) == 0 && S_ISSOCK(state.st_mode);
  };
  constexpr int kDescriptors = 256;
  std::vector<bool> before;
  for (int i = 0; i < kDescriptors; ++i) before.push_back(is_socket(i));
  const TerminationWatch watch;
  // What the handler writes to takes nothing any more.
  const int full = ::open("/dev/full", O_WRONLY);
  ASSERT_GE(full, 0);
  int replaced = 0;
  for (int i = 0; i < kDescriptors; ++i)
    if (!before[static_cast<std::size_t>(i)] && is_socket(i) && ::dup2(full, i) == i) ++replaced;
  ::close(full);
  ASSERT_EQ(replaced, 2);
  errno = EDOM;
  std::raise(SIGTERM);
  EXPECT_EQ(errno, EDOM);
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
