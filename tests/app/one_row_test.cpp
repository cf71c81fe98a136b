// A window comes into the program by one row of the table: the menu, its key, the front page, the help and
// the list of what is missing know it by that.
#include <QMdiArea>
#include <QRegularExpression>

#include "app/card_button.h"
#include "app/command_menu.h"
#include "app/main_window_fixture.h"
#include "app/menu_rows.h"
#include "support/handed_commands.h"
#include "support/help_window.h"

namespace zelmar {
namespace {

using namespace testing_support;

class OneRow : public MainWindowTest {
 protected:
  // The rows of the program come first, as they do in it.
  OneRow() { AddMenuRows(); }
  ~OneRow() override { CloseHelp(); }

  static CommandRow Bells() {
    return {.name = "mnuEditBells",
            .menu = "mnuEdit",
            .caption = "Bells view",
            .shortcut = "Ctrl+B",
            .card = {9, "cmdBells", "piano", "&Bells", "Ring them", "Click here to ring the bells"},
            .help_context = 1800,
            .without_tune = "No bells without a tune.",
            .window = "frmEditBells",
            .make = [] { return new ChildWindow(QStringLiteral("frmEditBells")); }};
  }
  CardButton& Card() { return Find<CardButton>(Front(), "cmdBells"); }
  QString InFront() { return main_->ActiveChild()->objectName(); }
};

TEST_F(OneRow, PutsAWindowIntoTheMenuWithItsWordsItsKeyAndItsNeed) {
  const HandedCommands rows({Bells()});
  Start();
  QAction& item = Item("mnuEditBells");
  EXPECT_EQ(Find<QMenu>(*main_, "mnuEdit").actions().last(), &item);
  EXPECT_EQ(item.text(), QStringLiteral("Bells view"));
  EXPECT_FALSE(CommandMenu::IsDimmed(item));
  QTest::keyClick(main_.get(), Qt::Key_B, Qt::ControlModifier);
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].text, QStringLiteral("No bells without a tune."));
  EXPECT_EQ(InFront(), QStringLiteral("frmFront"));
  LoadTune();
  QTest::keyClick(main_.get(), Qt::Key_B, Qt::ControlModifier);
  EXPECT_EQ(InFront(), QStringLiteral("frmEditBells"));
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(OneRow, GivesAWindowItsTopicInTheHelp) {
  const HandedCommands rows({Bells()});
  Start();
  LoadTune();
  UseBuiltHelp();
  RunCommand(QStringLiteral("mnuEditBells"));
  main_->activateWindow();
  QCoreApplication::processEvents();
  QTest::keyClick(main_->ActiveChild(), Qt::Key_F1);
  EXPECT_EQ(HelpHeading(), QStringLiteral("Staff notation view"));
}

TEST_F(OneRow, PutsACardOnTheFrontPage) {
  const HandedCommands rows({Bells()});
  Start();
  LoadTune();
  EXPECT_EQ(Card().toolTip(), QStringLiteral("Click here to ring the bells"));
  EXPECT_FALSE(Card().Dimmed());
  Card().click();
  EXPECT_EQ(InFront(), QStringLiteral("frmEditBells"));
}

TEST_F(OneRow, WithoutAMakerIsAWindowOfALaterVersionEverywhere) {
  CommandRow planned = Bells();
  planned.make = nullptr;
  const HandedCommands rows({planned});
  Start();
  LoadTune();
  EXPECT_TRUE(IsMissing(QStringLiteral("frmEditBells")));
  EXPECT_FALSE(RegisteredWindows().contains(QStringLiteral("frmEditBells")));
  EXPECT_TRUE(CommandMenu::IsDimmed(Item("mnuEditBells")));
  EXPECT_TRUE(Card().Dimmed());
  EXPECT_EQ(Card().toolTip(), QStringLiteral("Bells is not part of this version."));
  Item("mnuEditBells").trigger();
  Card().click();
  ASSERT_EQ(Boxes().size(), 2);
  for (const auto& box : Boxes())
    EXPECT_EQ(box.text, QStringLiteral("This window is not part of this version yet."));
}

TEST_F(OneRow, OfAMenuThatDoesNotExistIsAFailure) {
  const HandedCommands rows({{.name = "mnuLost", .menu = "mnuNowhere", .act = [] {}}});
  EXPECT_THROW(MDIParent(), Failure);
}

// --- The rows of the program ---

TEST_F(OneRow, OfTheProgramLeadsToWindowsByOneRowThatMakesEach) {
  QMap<QString, int> ways;
  QStringList names;
  for (const CommandRow* row : Commands()) {
    if (row->make || row->show || row->made_by_owner) ++ways[QLatin1String(row->window)];
    names.append(NameOf(*row));
  }
  EXPECT_GE(ways.size(), 10);
  for (auto way = ways.cbegin(); way != ways.cend(); ++way) {
    EXPECT_EQ(way.value(), 1) << qPrintable(way.key());
    EXPECT_FALSE(way.key().isEmpty());
  }
  const qsizetype count = names.size();
  names.removeDuplicates();
  EXPECT_EQ(names.size(), count);
}

// The topics of a page stand in its head, where the help book takes them from.
TEST_F(OneRow, OfTheProgramNamesThePageOfItsTopic) {
  QMap<int, QString> pages;
  const QDir book(QStringLiteral(ZELMAR_SOURCE_DIRECTORY "/help/ZelmarHelp"));
  const QRegularExpression meta(QStringLiteral("<meta name=\"help-context\" content=\"([^\"]*)\""));
  for (const QString& name : book.entryList({QStringLiteral("*.htm")})) {
    QFile file(book.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString contexts = meta.match(QString::fromUtf8(file.readAll())).captured(1);
    for (const QString& context : contexts.split(QLatin1Char(','), Qt::SkipEmptyParts))
      pages.insert(context.trimmed().toInt(), name);
  }
  EXPECT_GE(pages.size(), 10);
  for (auto page = pages.cbegin(); page != pages.cend(); ++page)
    EXPECT_EQ(HelpPageOf(page.key()), page.value()) << page.key();
  for (const CommandRow* row : Commands()) {
    if (row->help_page[0] == '\0') continue;
    EXPECT_EQ(pages.value(row->help_context), QLatin1String(row->help_page)) << qPrintable(NameOf(*row));
  }
}

// --- The keys from window to window ---

TEST_F(MainWindowTest, CtrlF6GoesFromWindowToWindowAndRoundAgain) {
  Start();
  ChildWindow* const bare = OpenBareWindow();
  RunCommand(QStringLiteral("mnuEditStaff"));
  QCoreApplication::processEvents();
  ChildWindow* const staff = main_->ActiveChild();
  ASSERT_EQ(staff->objectName(), QStringLiteral("frmEditStaff"));
  const auto press = [this](Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(main_->ActiveChild(), Qt::Key_F6, modifiers);
    QCoreApplication::processEvents();
    return main_->ActiveChild();
  };
  EXPECT_EQ(press(Qt::ControlModifier), &Front());
  EXPECT_EQ(press(Qt::ControlModifier), bare);
  EXPECT_EQ(press(Qt::ControlModifier), staff);
  EXPECT_EQ(press(Qt::ControlModifier | Qt::ShiftModifier), bare);
  EXPECT_EQ(press(Qt::ControlModifier | Qt::ShiftModifier), &Front());
  EXPECT_EQ(press(Qt::ControlModifier | Qt::ShiftModifier), staff);
}

TEST_F(MainWindowTest, CtrlF6KeepsWindowsMaximisedAndTheWindowThatCameIsTold) {
  Start();
  LoadTune();
  RunCommand(QStringLiteral("mnuEditStaff"));
  main_->ActiveChild()->ShowMaximisedOnTop();
  Front().setWindowTitle(QStringLiteral("Old"));
  QTest::keyClick(main_->ActiveChild(), Qt::Key_F6, Qt::ControlModifier);
  QCoreApplication::processEvents();
  EXPECT_EQ(main_->ActiveChild(), &Front());
  EXPECT_TRUE(main_->Area()->activeSubWindow()->isMaximized());
  EXPECT_EQ(Front().windowTitle(), QStringLiteral("Zelmar - Front Screen - Bach - First"));
}

TEST_F(MainWindowTest, CtrlF6ThereAndBackLeavesTheKeyboardOnItsControl) {
  Start();
  LoadTune();
  RunCommand(QStringLiteral("mnuEditStaff"));
  ChildWindow* const staff = main_->ActiveChild();
  staff->ShowMaximisedOnTop();
  main_->activateWindow();
  QCoreApplication::processEvents();
  auto& control = Find<QWidget>(*staff, "PlaySlider");
  control.setFocus();
  QTest::keyClick(&control, Qt::Key_F6, Qt::ControlModifier);
  QCoreApplication::processEvents();
  EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("cmdOpenTune"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6, Qt::ControlModifier | Qt::ShiftModifier);
  QCoreApplication::processEvents();
  EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("PlaySlider"));
}

TEST_F(MainWindowTest, CtrlF6WithOneWindowOrNoneDoesNothing) {
  Start();
  QTest::keyClick(main_.get(), Qt::Key_F6, Qt::ControlModifier);
  EXPECT_EQ(main_->ActiveChild(), &Front());
  Front().Unload();
  LetClosedWindowsGo();
  QTest::keyClick(main_.get(), Qt::Key_F6, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(main_->ActiveChild(), nullptr);
  EXPECT_TRUE(Boxes().isEmpty());
}

}  // namespace
}  // namespace zelmar
