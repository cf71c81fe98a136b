// A page that is shown or edited.
#include "shell/edited_page.h"

#include <QDir>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBrowser>

#include "model/globals.h"
#include "model/text_pages.h"
#include "platform/failure.h"
#include "shell/ask_before_closing.h"
#include "support/application_directory.h"
#include "support/full_disk.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class EditedPages : public ::testing::Test {
 protected:
  EditedPages() {
    Global().HelpPath = directory_.Path() + QStringLiteral("\\Help");
    Put("Bach.htm", "<p>About\nBach</p>");
    Put("Folk_Song.htm", "<p>Songs</p>");
    page_.Attach(&button_, QStringLiteral("Preview"), QStringLiteral("Edit"));
  }

  void Put(const char* name, const QByteArray& bytes) const {
    directory_.Write(QStringLiteral("Help/texts/") + QString::fromUtf8(name), bytes);
  }
  QByteArray Stored(const char* name) const {
    return directory_.Read(QStringLiteral("Help/texts/") + QString::fromUtf8(name));
  }
  bool IsThere(const char* name) const {
    return QFile::exists(directory_.In(QStringLiteral("Help/texts/") + QString::fromUtf8(name)));
  }
  void Show(const char* value) { page_.ShowPageOf(QString::fromUtf8(value)); }
  QString Shown() const { return view_.toPlainText(); }
  void Edit(const char* value, const char* typed) {
    page_.SetEditable(true);
    Show(value);
    page_.Flip();
    ASSERT_TRUE(page_.IsEditing());
    Type(typed);
  }
  void Type(const char* typed) {
    text_.selectAll();
    text_.insertPlainText(QString::fromUtf8(typed));
  }

  ScriptedPlatform platform_;
  TemporaryApplicationDirectory directory_;
  QPushButton button_;
  EditedPage page_{QStringLiteral("WebBiography"), QStringLiteral("txtBiography")};
  QTextBrowser& view_ = Find<QTextBrowser>(page_, "WebBiography");
  QPlainTextEdit& text_ = Find<QPlainTextEdit>(page_, "txtBiography");
};

// --- Showing ---

TEST_F(EditedPages, ThePageOfARecordIsShown) {
  Show("Bach");
  EXPECT_EQ(Shown(), QStringLiteral("About Bach"));
  EXPECT_EQ(page_.Page(), directory_.In(QStringLiteral("Help/texts/Bach.htm")));
  EXPECT_TRUE(view_.isVisibleTo(&page_));
  EXPECT_FALSE(text_.isVisibleTo(&page_));
  Show("Folk Song");
  EXPECT_EQ(Shown(), QStringLiteral("Songs"));
  EXPECT_FALSE(view_.isBackwardAvailable()) << "nobody goes back to the page of another record";
}

TEST_F(EditedPages, AMissingOrEmptyPageAndNoRecordLeaveAnEmptyPlace) {
  Put("Empty.htm", "");
  for (const char* value : {"Nobody", "Empty", ""}) {
    Show("Bach");
    Show(value);
    EXPECT_EQ(Shown(), QString()) << value;
    QEvent palette(QEvent::PaletteChange);
    QCoreApplication::sendEvent(&view_, &palette);
    EXPECT_EQ(Shown(), QString()) << value << ": the page of the record before does not come back";
  }
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(EditedPages, APageThatWasWrittenAnewIsReadAnew) {
  Show("Bach");
  Put("Bach.htm", "<p>New</p>");
  Show("Bach");
  EXPECT_EQ(Shown(), QStringLiteral("New"));
}

TEST_F(EditedPages, ANameThatLeadsOutIsRefusedWithAMessageAndShowsNothing) {
  directory_.Write(QStringLiteral("Secret.htm"), "<p>Secret</p>");
  page_.SetEditable(true);
  for (const char* value : {"../../Secret", "..\\..\\Secret", "/etc/hosts", "nul"}) {
    Show("Bach");
    platform_.messages->shown.clear();
    Show(value);
    ASSERT_EQ(platform_.messages->shown.size(), 1) << value;
    EXPECT_TRUE(platform_.messages->shown[0].text.contains(QString::fromUtf8(value)));
    EXPECT_EQ(Shown(), QString());
    page_.Flip();
    EXPECT_FALSE(page_.IsEditing()) << "there is no page to be edited";
  }
  EXPECT_EQ(directory_.Read(QStringLiteral("Secret.htm")), "<p>Secret</p>");
}

TEST_F(EditedPages, OldPagesAreReadAsTheyWereWritten) {
  Put("Faure.htm", "<p>Faur\xE9</p>");
  Show("Faure");
  EXPECT_EQ(Shown(), QString::fromUtf8("Fauré"));
}

TEST_F(EditedPages, AVeryLongPageShowsItsBeginningSaysSoAndCannotBeEdited) {
  QByteArray bytes = "<p>The beginning</p>";
  while (bytes.size() <= kLongestPage) bytes += "<p>" + QByteArray(2000, 'x') + "</p>";
  Put("Long.htm", bytes);
  page_.SetEditable(true);
  Show("Long");
  EXPECT_TRUE(Shown().startsWith(QStringLiteral("This page is too long to be shown.")));
  EXPECT_TRUE(Shown().contains(QStringLiteral("The beginning")));
  page_.Flip();
  EXPECT_FALSE(page_.IsEditing());
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_EQ(platform_.messages->shown[0].text, QStringLiteral("This page is too long to be edited here."));
  EXPECT_EQ(Stored("Long.htm"), bytes);
}

TEST_F(EditedPages, NothingComesFromTheNetworkAndScriptsDoNothing) {
  Put("Bad.htm",
      "<script>document.write('run')</script><p>Text</p><img src=\"http://zelmar.example/a.png\">");
  Show("Bad");
  EXPECT_TRUE(Shown().startsWith(QStringLiteral("Text")));
  EXPECT_TRUE(platform_.pages->opened.isEmpty());
}

// --- Editing ---

TEST_F(EditedPages, ALockedPageCannotBeEdited) {
  Show("Bach");
  EXPECT_FALSE(button_.isEnabled());
  page_.Flip();
  EXPECT_FALSE(page_.IsEditing());
  page_.SetEditable(true);
  EXPECT_TRUE(button_.isEnabled());
}

TEST_F(EditedPages, FlipsToItsTextAndBackAndStoresIt) {
  page_.SetEditable(true);
  Show("Bach");
  EXPECT_EQ(button_.text(), QStringLiteral("Edit"));
  button_.click();
  EXPECT_TRUE(page_.IsEditing());
  EXPECT_EQ(button_.text(), QStringLiteral("Preview"));
  EXPECT_EQ(text_.toPlainText(), QStringLiteral("<p>About Bach</p>")) << "lines are joined by blanks";
  EXPECT_FALSE(view_.isVisibleTo(&page_));
  Type("<p>Dvořák's teacher</p>");
  button_.click();
  EXPECT_FALSE(page_.IsEditing());
  EXPECT_EQ(Stored("Bach.htm"), "<p>Dvořák's teacher</p>");
  EXPECT_EQ(Shown(), QString::fromUtf8("Dvořák's teacher"));
  EXPECT_EQ(button_.text(), QStringLiteral("Edit"));
}

TEST_F(EditedPages, WhatIsNotChangedIsNotWritten) {
  page_.SetEditable(true);
  Show("Bach");
  page_.Flip();
  page_.Flip();
  EXPECT_EQ(Stored("Bach.htm"), "<p>About\nBach</p>");
  Show("Nobody");
  page_.Flip();
  page_.Flip();
  EXPECT_FALSE(IsThere("Nobody.htm"));
}

TEST_F(EditedPages, AMissingPageIsMadeByEditing) {
  Edit("Nobody Else", "<p>New</p>");
  page_.Flip();
  EXPECT_EQ(Stored("Nobody_Else.htm"), "<p>New</p>");
  EXPECT_EQ(Shown(), QStringLiteral("New"));
}

TEST_F(EditedPages, WhatIsTypedIsStoredOnItsOwnPageWhenAnotherComes) {
  Edit("Bach", "<p>Typed</p>");
  Show("Folk Song");
  EXPECT_EQ(Stored("Bach.htm"), "<p>Typed</p>");
  EXPECT_EQ(Stored("Folk_Song.htm"), "<p>Songs</p>");
  EXPECT_FALSE(page_.IsEditing());
  EXPECT_EQ(Shown(), QStringLiteral("Songs"));
  page_.Flip();
  EXPECT_EQ(text_.toPlainText(), QStringLiteral("<p>Songs</p>"));
}

TEST_F(EditedPages, LockingStoresWhatIsTyped) {
  Edit("Bach", "<p>Typed</p>");
  EXPECT_TRUE(page_.SetEditable(false));
  EXPECT_EQ(Stored("Bach.htm"), "<p>Typed</p>");
  EXPECT_FALSE(page_.IsEditing());
  EXPECT_FALSE(button_.isEnabled());
}

TEST_F(EditedPages, AHookDecidesWhatBecomesOfWhatIsTyped) {
  EditedPage::Leaving answer = EditedPage::Leaving::kStay;
  int asked = 0;
  page_.OnLeaving([&] {
    ++asked;
    return answer;
  });
  Edit("Bach", "<p>Typed</p>");
  EXPECT_FALSE(page_.ShowPageOf(QStringLiteral("Folk Song")));
  EXPECT_FALSE(page_.SetEditable(false));
  EXPECT_FALSE(page_.EndEditing());
  EXPECT_TRUE(page_.IsEditing());
  EXPECT_EQ(text_.toPlainText(), QStringLiteral("<p>Typed</p>"));
  EXPECT_EQ(asked, 3);
  answer = EditedPage::Leaving::kDiscard;
  EXPECT_TRUE(page_.ShowPageOf(QStringLiteral("Folk Song")));
  EXPECT_EQ(Stored("Bach.htm"), "<p>About\nBach</p>");
  answer = EditedPage::Leaving::kStore;
  Edit("Bach", "<p>Again</p>");
  EXPECT_TRUE(page_.EndEditing());
  EXPECT_EQ(Stored("Bach.htm"), "<p>Again</p>");
}

TEST_F(EditedPages, TheHookIsNotAskedAboutWhatIsNotChanged) {
  page_.OnLeaving([] { return EditedPage::Leaving::kStay; });
  page_.SetEditable(true);
  Show("Bach");
  page_.Flip();
  EXPECT_TRUE(page_.ShowPageOf(QStringLiteral("Folk Song")));
}

TEST_F(EditedPages, ARenamedRecordTakesItsPageAlongWithWhatIsTyped) {
  Edit("Bach", "<p>Typed</p>");
  EXPECT_TRUE(page_.RenamePage(QStringLiteral("Bach J S")));
  EXPECT_EQ(Stored("Bach_J_S.htm"), "<p>Typed</p>");
  EXPECT_FALSE(IsThere("Bach.htm"));
  EXPECT_EQ(Shown(), QStringLiteral("Typed"));
  EXPECT_THROW(page_.RenamePage(QStringLiteral("Folk Song")), Failure);
  EXPECT_EQ(Stored("Bach_J_S.htm"), "<p>Typed</p>");
  EXPECT_EQ(Stored("Folk_Song.htm"), "<p>Songs</p>");
  page_.RenamePage(QStringLiteral("../Bach"));
  EXPECT_TRUE(IsThere("Bach_J_S.htm")) << "a name that leads out takes nothing along";
}

TEST_F(EditedPages, ADiscardedTextIsForgotten) {
  Edit("Bach", "<p>Typed</p>");
  page_.Discard();
  EXPECT_EQ(Shown(), QStringLiteral("About Bach"));
  Show("Folk Song");
  EXPECT_EQ(Stored("Bach.htm"), "<p>About\nBach</p>");
}

TEST_F(EditedPages, WhatCannotBeStoredIsToldAndStaysOnTheScreen) {
  Edit("Bach", "");
  text_.setPlainText(QString(100000, u'x'));
  text_.document()->setModified(true);
  {
    const FullDisk full(1000);
    page_.Flip();
    EXPECT_FALSE(page_.ShowPageOf(QStringLiteral("Folk Song")));
    EXPECT_FALSE(page_.SetEditable(false));
  }
  EXPECT_EQ(platform_.messages->shown.size(), 3);
  EXPECT_TRUE(platform_.messages->shown[0].text.contains(page_.Page()));
  EXPECT_TRUE(page_.IsEditing());
  EXPECT_EQ(text_.toPlainText().size(), 100000);
  EXPECT_EQ(Stored("Bach.htm"), "<p>About\nBach</p>");
  page_.Flip();
  EXPECT_FALSE(page_.IsEditing());
  EXPECT_EQ(Stored("Bach.htm").size(), 100000);
}

TEST_F(EditedPages, AProtectedFolderIsTold) {
  QDir(PageFolder()).removeRecursively();
  directory_.Write(QStringLiteral("Help/texts"), "a file where the folder should be");
  Edit("Bach", "<p>Typed</p>");
  page_.Flip();
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_TRUE(platform_.messages->shown[0].text.contains(QStringLiteral("cannot be written")));
  EXPECT_TRUE(page_.IsEditing());
}

TEST_F(EditedPages, AWindowThatClosesStoresOrStays) {
  QWidget window;
  AskBeforeClosing(window, [this] { return page_.EndEditing(); });
  window.show();
  Edit("Bach", "<p>Typed</p>");
  page_.OnLeaving([] { return EditedPage::Leaving::kStay; });
  EXPECT_FALSE(window.close());
  EXPECT_TRUE(window.isVisible());
  page_.OnLeaving({});
  EXPECT_TRUE(window.close());
  EXPECT_EQ(Stored("Bach.htm"), "<p>Typed</p>");
}

// --- A text that is given ---

TEST_F(EditedPages, ATextIsShownAndWrittenToTheScratchPage) {
  page_.ShowText(QStringLiteral("Tune Description"), QStringLiteral("A <b>bold</b> tune"), {},
                 QStringLiteral("bgcolor='#FFFFCC'"));
  EXPECT_EQ(Shown(), QStringLiteral("A bold tune"));
  EXPECT_EQ(Stored("temp.htm"),
            "<html><head><title>Tune Description</title></head><body bgcolor='#FFFFCC'>A <b>bold</b> "
            "tune</body></html>");
  page_.ShowText(QStringLiteral("Tune Description"), QStringLiteral("Another"));
  EXPECT_EQ(Stored("temp.htm"),
            "<html><head><title>Tune Description</title></head><body>Another</body></html>");
  EXPECT_EQ(Shown(), QStringLiteral("Another"));
}

TEST_F(EditedPages, ATextStaysItsOwnWhateverAnotherWindowWritesThere) {
  page_.ShowText(QStringLiteral("Tune"), QStringLiteral("Mine"));
  Put("temp.htm", "<p>Another's</p>");
  QEvent palette(QEvent::PaletteChange);
  QCoreApplication::sendEvent(&view_, &palette);
  EXPECT_EQ(Shown(), QStringLiteral("Mine"));
}

TEST_F(EditedPages, ATextIsShownWhereItsPageCannotBeWritten) {
  QDir(PageFolder()).removeRecursively();
  directory_.Write(QStringLiteral("Help/texts"), "a file where the folder should be");
  page_.ShowText(QStringLiteral("Tune"), QStringLiteral("Shown"));
  EXPECT_EQ(Shown(), QStringLiteral("Shown"));
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(EditedPages, AnEditedTextGoesToWhoGaveItAsItWasTyped) {
  QStringList stored;
  page_.SetEditable(true);
  page_.ShowText(QStringLiteral("Tune"), QStringLiteral("two\nlines"),
                 [&stored](const QString& text) { stored.append(text); });
  page_.Flip();
  EXPECT_EQ(text_.toPlainText(), QStringLiteral("two\nlines"));
  Type("<i>typed</i>\nlines");
  page_.Flip();
  EXPECT_EQ(stored, QStringList(QStringLiteral("<i>typed</i>\nlines")));
  EXPECT_EQ(Shown(), QStringLiteral("typed lines"));
  page_.Flip();
  EXPECT_EQ(text_.toPlainText(), QStringLiteral("<i>typed</i>\nlines"));
  page_.Flip();
  EXPECT_EQ(stored.size(), 1);
}

TEST_F(EditedPages, ATextThatNobodyStoresCannotBeEdited) {
  page_.SetEditable(true);
  page_.ShowText(QStringLiteral("Tune"), QStringLiteral("x"));
  EXPECT_FALSE(button_.isEnabled());
  page_.Flip();
  EXPECT_FALSE(page_.IsEditing());
}

TEST_F(EditedPages, ATextThatCannotBeStoredIsToldAndStays) {
  page_.SetEditable(true);
  page_.ShowText(QStringLiteral("Tune"), QStringLiteral("before"), [](const QString&) {
    throw Failure(error_number::kFileAccess, QStringLiteral("It cannot be."));
  });
  page_.Flip();
  Type("after");
  page_.Flip();
  EXPECT_TRUE(page_.IsEditing());
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_EQ(platform_.messages->shown[0].text, QStringLiteral("It cannot be."));
  EXPECT_EQ(text_.toPlainText(), QStringLiteral("after"));
  page_.Discard();
  EXPECT_EQ(Shown(), QStringLiteral("before"));
}

TEST_F(EditedPages, WhoStoresATextMayShowAnother) {
  QStringList stored;
  page_.SetEditable(true);
  page_.ShowText(QStringLiteral("Tune"), QStringLiteral("before"), [&](const QString& text) {
    stored.append(text);
    Show("Bach");
  });
  page_.Flip();
  Type("after");
  page_.Flip();
  EXPECT_EQ(stored, QStringList(QStringLiteral("after")));
  EXPECT_EQ(Shown(), QStringLiteral("About Bach"));
  EXPECT_EQ(Stored("Bach.htm"), "<p>About\nBach</p>");
  EXPECT_FALSE(page_.IsEditing());
}

TEST_F(EditedPages, ATextComesAfterAPageAndAPageAfterAText) {
  Edit("Bach", "<p>Typed</p>");
  page_.ShowText(QStringLiteral("Tune"), QStringLiteral("Text"));
  EXPECT_EQ(Stored("Bach.htm"), "<p>Typed</p>");
  EXPECT_EQ(Shown(), QStringLiteral("Text"));
  EXPECT_EQ(page_.Page(), QString());
  Show("Folk Song");
  EXPECT_EQ(Shown(), QStringLiteral("Songs"));
  page_.ShowNothing();
  EXPECT_EQ(Shown(), QString());
}

}  // namespace
}  // namespace zelmar
