#include "platform/paths.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace zelmar {
namespace {

class Paths : public ::testing::Test {
 protected:
  void SetUp() override {
    SetApplicationDirectory(directory_.path());
    Make(QStringLiteral("Help/Pictures/Logo.svg"));
    Make(QStringLiteral("Help/Texts/a.htm"));
  }
  void TearDown() override { SetApplicationDirectory({}); }

  QString In(const QString& name) const { return directory_.filePath(name); }

  void Make(const QString& name) const {
    QDir().mkpath(QFileInfo(In(name)).path());
    QFile file(In(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }

  QTemporaryDir directory_;
};

TEST_F(Paths, TheApplicationDirectoryHasNoSeparatorAtItsEnd) {
  EXPECT_EQ(ApplicationDirectory(), QDir(directory_.path()).absolutePath());
  SetApplicationDirectory(directory_.path() + QStringLiteral("/"));
  EXPECT_EQ(ApplicationDirectory(), QDir(directory_.path()).absolutePath());
}

TEST_F(Paths, BackslashesAndOtherCaseNameTheSamePlace) {
  const QString expected = In(QStringLiteral("Help/Pictures/Logo.svg"));
  EXPECT_EQ(ResolvePath(ApplicationDirectory() + QStringLiteral("\\Help\\Pictures\\Logo.svg")), expected);
  EXPECT_EQ(ResolvePath(ApplicationDirectory() + QStringLiteral("/help/pictures/logo.SVG")), expected);
  EXPECT_EQ(ResolvePath(QStringLiteral("help\\PICTURES/logo.svg")), expected);
}

TEST_F(Paths, AnExactSpellingIsPreferred) {
  Make(QStringLiteral("help/Pictures/Logo.svg"));
  EXPECT_EQ(ResolvePath(QStringLiteral("help/Pictures/Logo.svg")),
            In(QStringLiteral("help/Pictures/Logo.svg")));
  EXPECT_EQ(ResolvePath(QStringLiteral("Help/Pictures/Logo.svg")),
            In(QStringLiteral("Help/Pictures/Logo.svg")));
}

TEST_F(Paths, WhatDoesNotExistStaysAsWritten) {
  EXPECT_EQ(ResolvePath(QStringLiteral("\\help\\New Folder\\Page.htm").mid(1)),
            In(QStringLiteral("Help/New Folder/Page.htm")));
}

TEST_F(Paths, AnAbsolutePathStandsAsItIs) {
  EXPECT_EQ(ResolvePath(In(QStringLiteral("Help/Texts/a.htm"))), In(QStringLiteral("Help/Texts/a.htm")));
}

TEST_F(Paths, ANameFromDataNeverLeadsOutsideItsFolder) {
  const QString help = In(QStringLiteral("Help"));
  EXPECT_TRUE(StaysInside(help, QStringLiteral("Texts\\a.htm")));
  EXPECT_TRUE(StaysInside(help, QStringLiteral("Texts/not there yet.htm")));
  EXPECT_FALSE(StaysInside(help, QStringLiteral("../frmPath.txt")));
  EXPECT_FALSE(StaysInside(help, QStringLiteral("Texts\\..\\..\\frmPath.txt")));
  EXPECT_FALSE(StaysInside(help, QStringLiteral("/etc/passwd")));
  EXPECT_FALSE(StaysInside(help, QStringLiteral("C:\\x")));
  EXPECT_FALSE(StaysInside(help, QString()));
}

TEST_F(Paths, ALinkThatLeadsOutsideIsOutside) {
  QTemporaryDir elsewhere;
  ASSERT_TRUE(QFile::link(elsewhere.path(), In(QStringLiteral("Help/away"))));
  EXPECT_FALSE(StaysInside(In(QStringLiteral("Help")), QStringLiteral("away/x.htm")));
}

TEST_F(Paths, ALinkToNothingMayLeadAnywhere) {
  ASSERT_TRUE(QFile::link(QStringLiteral("/nowhere/at/all"), In(QStringLiteral("Help/nothing.htm"))));
  EXPECT_FALSE(StaysInside(In(QStringLiteral("Help")), QStringLiteral("nothing.htm")));
}

TEST_F(Paths, AColonInATitleIsNoDriveLetter) {
  EXPECT_TRUE(StaysInside(In(QStringLiteral("Help")), QStringLiteral("Opus 1: first.htm")));
}

TEST_F(Paths, AFolderThatIsMissingHoldsNothing) {
  EXPECT_FALSE(StaysInside(In(QStringLiteral("Nowhere")), QStringLiteral("a.htm")));
}

}  // namespace
}  // namespace zelmar
