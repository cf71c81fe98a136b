// Pages that speak only of what this version has.
#include "shell/what_is_there.h"

#include <QDirIterator>

#include "model/globals.h"
#include "shell/child_window.h"
#include "shell/page_view.h"
#include "support/application_directory.h"
#include "support/handed_commands.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class WhatIsThere : public ::testing::Test {
 protected:
  void MakeWordsThere() {
    words_.emplace(std::vector<CommandRow>{
        {.window = "frmEditWords", .make = [] { return new ChildWindow(QStringLiteral("frmEditWords")); }}});
  }
  static QString Kept(const char* page) { return OnlyWhatIsThere(QLatin1String(page)); }

  const HandedCommands planned_{{{.name = "mnuEditTrackData", .window = "frmEditTracks"},
                                 {.name = "mnuEditWords", .window = "frmEditWords"},
                                 {.name = "mnuFileNew"},
                                 {.name = "mnuFileOpen", .act = [] {}}}};
  std::optional<HandedCommands> words_;
  ScriptedPlatform platform_;
};

TEST_F(WhatIsThere, AWindowOfALaterVersionIsMissingUntilItIsThere) {
  EXPECT_TRUE(IsMissing(QStringLiteral("frmEditWords")));
  MakeWordsThere();
  EXPECT_FALSE(IsMissing(QStringLiteral("frmEditWords")));
  EXPECT_TRUE(IsMissing(QStringLiteral("mnuFileNew")));
  EXPECT_FALSE(IsMissing(QStringLiteral("mnuFileOpen")));
  EXPECT_FALSE(IsMissing(QStringLiteral("frmFront")));
}

TEST_F(WhatIsThere, TheWordsForItNameIt) {
  EXPECT_EQ(WordsForMissing(QStringLiteral("Hit P&arade")),
            QStringLiteral("Hit Parade is not part of this version."));
}

TEST_F(WhatIsThere, APageKeepsOnlyWhatHolds) {
  const char* const page = "a<!--if frmEditWords-->b<!--end-->c<!--unless frmEditWords-->d<!--end-->e";
  EXPECT_EQ(Kept(page), QStringLiteral("acde"));
  MakeWordsThere();
  EXPECT_EQ(Kept(page), QStringLiteral("abce"));
}

TEST_F(WhatIsThere, OneOfSeveralIsEnough) {
  const char* const page =
      "<!--if frmEditTracks\nfrmEditWords-->b<!--end--><!--unless frmEditTracks frmEditWords-->c<!--end-->";
  EXPECT_EQ(Kept(page), QStringLiteral("c"));
  MakeWordsThere();
  EXPECT_EQ(Kept(page), QStringLiteral("b"));
}

TEST_F(WhatIsThere, APageWithoutConditionsIsLeftAsItIs) {
  EXPECT_EQ(Kept("<p>a <!-- a remark --> b</p>"), QStringLiteral("<p>a <!-- a remark --> b</p>"));
  EXPECT_EQ(Kept(""), QString());
}

TEST_F(WhatIsThere, APageThatIsShownSaysOnlyWhatIsThere) {
  const TemporaryApplicationDirectory directory;
  Global().HelpPath = directory.Path() + QStringLiteral("\\Help");
  directory.Write(QStringLiteral("Help/Keys.htm"), "<p>One<!--if frmEditWords--> and words<!--end--></p>");
  PageView view;
  view.ShowPage(directory.Path() + QStringLiteral("/Help/Keys.htm"));
  EXPECT_EQ(view.toPlainText(), QStringLiteral("One"));
  MakeWordsThere();
  view.reload();
  EXPECT_EQ(view.toPlainText(), QStringLiteral("One and words"));
}

TEST_F(WhatIsThere, EveryConditionOfTheHelpPagesIsClosed) {
  int conditions = 0;
  QDirIterator found(QStringLiteral(ZELMAR_SOURCE_DIRECTORY "/help"), {QStringLiteral("*.htm")}, QDir::Files,
                     QDirIterator::Subdirectories);
  while (found.hasNext()) {
    QFile file(found.next());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString page = QString::fromUtf8(file.readAll());
    const auto count = [&page](const char* mark) { return page.count(QLatin1String(mark)); };
    EXPECT_EQ(count("<!--if") + count("<!--unless"), count("<!--end-->")) << qPrintable(file.fileName());
    const QString kept = OnlyWhatIsThere(page);
    EXPECT_FALSE(kept.contains(QLatin1String("<!--"))) << qPrintable(file.fileName());
    conditions += static_cast<int>(count("<!--end-->"));
  }
  EXPECT_GT(conditions, 15);
}

}  // namespace
}  // namespace zelmar
