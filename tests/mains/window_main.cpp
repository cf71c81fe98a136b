// Runs tests that show windows, on Qt's offscreen platform unless the caller chose another.
#include <gtest/gtest.h>

#include "app/zelmar_application.h"

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  zelmar::ZelmarApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
