#include "platform/settings.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QTemporaryDir>

#include "platform/paths.h"

namespace zelmar {
namespace {

class SettingsTest : public testing::Test {
 protected:
  SettingsTest() { SetApplicationDirectory(folder_.path()); }
  ~SettingsTest() override { SetApplicationDirectory({}); }

  QTemporaryDir folder_;
};

TEST_F(SettingsTest, WhatIsWrittenIsReadAgainByTheNextRun) {
  Settings().setValue(QStringLiteral("Test/Name"), QStringLiteral("Gr\u00fc\u00dfe, \"x\""));
  EXPECT_EQ(Settings().value(QStringLiteral("Test/Name")).toString(),
            QStringLiteral("Gr\u00fc\u00dfe, \"x\""));
}

TEST_F(SettingsTest, TheFileLiesInTheApplicationDirectory) {
  EXPECT_FALSE(QFileInfo::exists(folder_.filePath(QStringLiteral("Zelmar.ini"))));
  Settings().setValue(QStringLiteral("Test/Name"), 1);
  EXPECT_TRUE(QFileInfo::exists(folder_.filePath(QStringLiteral("Zelmar.ini"))));
}

TEST_F(SettingsTest, AnotherApplicationDirectoryHasSettingsOfItsOwn) {
  Settings().setValue(QStringLiteral("Test/Name"), 1);
  const QTemporaryDir other;
  SetApplicationDirectory(other.path());
  EXPECT_FALSE(Settings().contains(QStringLiteral("Test/Name")));
}

}  // namespace
}  // namespace zelmar
