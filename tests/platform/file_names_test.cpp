// Names that come from data and become files.
#include "platform/file_names.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace zelmar {
namespace {

TEST(PlainFileName, AnOrdinaryNameIsOneWhateverItsLetters) {
  for (const char* name : {"Bach.htm", "a b c", "Dvořák.htm", "O'Carolan.htm", "..and more", "What now?",
                           "null.htm", "console.htm", "Op. 3: Air", ".htm"})
    EXPECT_TRUE(IsPlainFileName(QString::fromUtf8(name))) << name;
}

TEST(PlainFileName, NothingLeadsOutOfTheFolderOrIntoAnother) {
  for (const char* name : {"..", ".", "../Bach.htm", "..\\Bach.htm", "a/b", "a\\b", "/etc/passwd",
                           "\\\\server", "C:", "c:Bach.htm"})
    EXPECT_FALSE(IsPlainFileName(QString::fromUtf8(name))) << name;
}

TEST(PlainFileName, NoDeviceWhateverItsExtension) {
  for (const char* name : {"nul", "NUL.htm", "Con.htm", "com1.txt", "LPT9", "aux .htm"})
    EXPECT_FALSE(IsPlainFileName(QString::fromUtf8(name))) << name;
}

TEST(PlainFileName, NoControlCharacterAndNoNul) {
  for (const QChar c : {QChar(0), QChar(7), QChar(u'\n'), QChar(0x7F)})
    EXPECT_FALSE(IsPlainFileName(QStringLiteral("Ba") + c + QStringLiteral("ch"))) << int{c.unicode()};
}

TEST(PlainFileName, NeitherEmptyNorLongerThanAFileSystemTakes) {
  EXPECT_FALSE(IsPlainFileName(QString()));
  EXPECT_FALSE(IsPlainFileName(QStringLiteral("  ")));
  EXPECT_TRUE(IsPlainFileName(QString(255, u'a')));
  EXPECT_FALSE(IsPlainFileName(QString(256, u'a')));
  EXPECT_FALSE(IsPlainFileName(QString(128, QChar(0xE9)))) << "two bytes each";
}

class PlaceInFolderTest : public ::testing::Test {
 protected:
  void Write(const QString& name) const {
    QFile file(folder_.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }

  QTemporaryDir folder_;
};

TEST_F(PlaceInFolderTest, AFileIsFoundInWhateverCaseItIsWritten) {
  Write(QStringLiteral("bach.HTM"));
  EXPECT_EQ(PlaceInFolder(folder_.path(), QStringLiteral("Bach.htm")),
            folder_.filePath(QStringLiteral("bach.HTM")));
  EXPECT_EQ(PlaceInFolder(folder_.path(), QStringLiteral("New.htm")),
            folder_.filePath(QStringLiteral("New.htm")));
}

TEST_F(PlaceInFolderTest, AFolderThatIsNotThereYetHasPlaces) {
  EXPECT_EQ(PlaceInFolder(folder_.filePath(QStringLiteral("new")), QStringLiteral("a.htm")),
            folder_.filePath(QStringLiteral("new/a.htm")));
  EXPECT_EQ(PlaceInFolder(folder_.filePath(QStringLiteral("new")), QStringLiteral("..")), std::nullopt);
}

TEST_F(PlaceInFolderTest, ALinkThatLeadsOutIsNoPlace) {
  QTemporaryDir elsewhere;
  ASSERT_TRUE(QFile::link(elsewhere.path() + QStringLiteral("/page.htm"),
                          folder_.filePath(QStringLiteral("out.htm"))));
  EXPECT_EQ(PlaceInFolder(folder_.path(), QStringLiteral("out.htm")), std::nullopt);
}

}  // namespace
}  // namespace zelmar
