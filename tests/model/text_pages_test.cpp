// The files of pages: their names, what is read of them, and how they are written.
#include "model/text_pages.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>

#include "platform/failure.h"
#include "support/application_directory.h"
#include "support/full_disk.h"
#include "support/scripted_services.h"

namespace zelmar {
namespace {

using namespace testing_support;

class TextPages : public ::testing::Test {
 protected:
  static QString Value(const char* text) { return QString::fromUtf8(text); }
  QString In(const char* name) const { return directory_.In(QStringLiteral("Help/texts/") + Value(name)); }
  void Put(const char* name, const QByteArray& bytes) const {
    directory_.Write(QStringLiteral("Help/texts/") + Value(name), bytes);
  }
  QByteArray Bytes(const char* name) const {
    return directory_.Read(QStringLiteral("Help/texts/") + Value(name));
  }

  ScriptedPlatform platform_;
  TemporaryApplicationDirectory directory_;
};

TEST_F(TextPages, APageIsNamedAfterItsRecordWithTheFirstTwoBlanksAsLines) {
  EXPECT_EQ(PageOf(Value("Bach")), In("Bach.htm"));
  EXPECT_EQ(PageOf(Value("Folk Song")), In("Folk_Song.htm"));
  EXPECT_EQ(PageOf(Value("One Two Three Four")), In("One_Two_Three Four.htm"));
  EXPECT_EQ(PageOf(Value("O'Carolan")), In("O'Carolan.htm"));
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(TextPages, AFolderOrAPageInAnotherCaseIsTheSame) {
  directory_.Write(QStringLiteral("Help/Texts/bach.HTM"), "x");
  EXPECT_EQ(PageOf(Value("Bach")), directory_.In(QStringLiteral("Help/Texts/bach.HTM")));
}

TEST_F(TextPages, ARecordWhosePageWouldLeadOutOfTheFolderHasNone) {
  int told = 0;
  for (const QString& value :
       {Value("../../Sample"), Value("a\\b"), Value("/etc/passwd"), Value("nul"), Value("C:x"),
        QStringLiteral("Ba") + QChar(0) + QStringLiteral("ch"), QString(300, u'a')}) {
    EXPECT_EQ(PageOf(value), QString()) << qPrintable(value);
    ASSERT_EQ(platform_.messages->shown.size(), ++told);
    EXPECT_EQ(
        platform_.messages->shown.last().text,
        QStringLiteral("\"%1\" cannot be the name of a page. No page is read, written or deleted under it.")
            .arg(value));
  }
}

TEST_F(TextPages, NoRecordHasNoPageAndThatIsNothingToTell) {
  EXPECT_EQ(PageOf(QString()), QString());
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(TextPages, AMissingPageAFolderAndAnEmptyPageHaveNoText) {
  EXPECT_FALSE(ReadPage(In("none.htm")).is_there);
  EXPECT_FALSE(ReadPage(QString()).is_there);
  QDir().mkpath(In("folder.htm"));
  EXPECT_FALSE(ReadPage(In("folder.htm")).is_there);
  Put("empty.htm", "");
  EXPECT_TRUE(ReadPage(In("empty.htm")).is_there);
  EXPECT_EQ(ReadPage(In("empty.htm")).text, QString());
}

TEST_F(TextPages, APageIsReadAsUtf8AndAsLatin1WhereItIsNot) {
  Put("new.htm", "Dvo\xC5\x99\xC3\xA1k");
  EXPECT_EQ(ReadPage(In("new.htm")).text, Value("Dvořák"));
  Put("old.htm", "Faur\xE9");
  EXPECT_EQ(ReadPage(In("old.htm")).text, Value("Fauré")) << "the last byte might begin a letter of UTF-8";
  Put("replaced.htm", "\xEF\xBF\xBD");
  EXPECT_EQ(ReadPage(In("replaced.htm")).text, QString(QChar::ReplacementCharacter));
}

TEST_F(TextPages, OfAVeryLongPageTheBeginningIsReadAndThatIsSaid) {
  QByteArray bytes(kLongestPage, 'a');
  Put("long.htm", bytes);
  EXPECT_FALSE(ReadPage(In("long.htm")).is_cut);
  EXPECT_EQ(ShownForm(ReadPage(In("long.htm"))), QString::fromLatin1(bytes));

  bytes.chop(1);
  bytes += "\xC3\xA9 and more";
  Put("long.htm", bytes);
  const PageText page = ReadPage(In("long.htm"));
  EXPECT_TRUE(page.is_cut);
  EXPECT_EQ(page.text, QString(kLongestPage - 1, u'a')) << "half a letter is left out";
  EXPECT_TRUE(ShownForm(page).startsWith(QStringLiteral("<p><i>This page is too long to be shown.")));
  EXPECT_TRUE(ShownForm(page).endsWith(page.text));
}

TEST_F(TextPages, WhatIsWrittenIsReadAgain) {
  for (const char* text : {"Dvořák\nand more", "", "<html></html>"}) {
    WritePage(In("a.htm"), Value(text));
    EXPECT_EQ(Bytes("a.htm"), QByteArray(text));
    EXPECT_EQ(ReadPage(In("a.htm")).text, Value(text));
  }
  EXPECT_EQ(QDir(PageFolder()).entryList(QDir::Files), QStringList(Value("a.htm")))
      << "nothing is left aside";
}

TEST_F(TextPages, WhereThereIsNoRoomTheOldPageStays) {
  Put("a.htm", "before");
  try {
    const FullDisk full(1000);
    WritePage(In("a.htm"), QString(100000, u'x'));
    FAIL() << "nothing was thrown";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), error_number::kFileAccess);
    EXPECT_TRUE(
        failure.Description().startsWith(QStringLiteral("The file %1 cannot be written: ").arg(In("a.htm"))));
  }
  EXPECT_EQ(Bytes("a.htm"), "before");
  EXPECT_EQ(QDir(PageFolder()).entryList(QDir::Files), QStringList(Value("a.htm")));
}

TEST_F(TextPages, AFolderThatCannotBeMadeIsAFailure) {
  directory_.Write(QStringLiteral("Help/texts"), "a file in its place");
  EXPECT_THROW(WritePage(PageFolder() + QStringLiteral("/a.htm"), Value("x")), Failure);
}

TEST_F(TextPages, APageGoesAndAMissingOneIsNoFault) {
  Put("a.htm", "x");
  RemovePage(In("a.htm"));
  EXPECT_FALSE(QFileInfo::exists(In("a.htm")));
  RemovePage(In("a.htm"));
  RemovePage(QString());
}

TEST_F(TextPages, APageMovesToANameThatIsFree) {
  Put("a.htm", "x");
  MovePage(In("a.htm"), In("b.htm"));
  EXPECT_EQ(Bytes("b.htm"), "x");
  EXPECT_FALSE(QFileInfo::exists(In("a.htm")));
  Put("a.htm", "y");
  EXPECT_THROW(MovePage(In("a.htm"), In("b.htm")), Failure);
  EXPECT_EQ(Bytes("a.htm"), "y");
  EXPECT_EQ(Bytes("b.htm"), "x");
  MovePage(In("none.htm"), In("c.htm"));
  EXPECT_FALSE(QFileInfo::exists(In("c.htm")));
  MovePage(In("a.htm"), QString());
  EXPECT_EQ(Bytes("a.htm"), "y");
}

}  // namespace
}  // namespace zelmar
