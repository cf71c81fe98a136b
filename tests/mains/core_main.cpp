// Runs tests that need no window.
#include <gtest/gtest.h>

#include <QCoreApplication>

#include "midi/tune_player.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  QCoreApplication application(argc, argv);
  zelmar::MakeTunesSound();
  return RUN_ALL_TESTS();
}
