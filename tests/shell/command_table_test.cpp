// The table of windows and commands: what its rows say, and what is done by their names.
#include "shell/command_table.h"

#include "model/globals.h"
#include "platform/failure.h"
#include "shell/child_window.h"
#include "shell/loaded_forms.h"
#include "shell/window_catalogue.h"
#include "support/handed_commands.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr char kNotThere[] = "This window is not part of this version yet.";

ChildWindow* MakeBells() {
  return new ChildWindow(QStringLiteral("frmBells"));
}

class CommandTable : public ::testing::Test {
 protected:
  ~CommandTable() override {
    Global().TuneLoadedFlag = false;
    for (QWidget* form : LoadedForms()) form->close();
    LetClosedWindowsGo();
  }
  static bool IsOpen(const char* window) { return FindLoadedForm(QLatin1String(window)) != nullptr; }
  void ExpectBox(const char* text) {
    ASSERT_EQ(platform_.messages->shown.size(), 1);
    EXPECT_EQ(platform_.messages->shown[0].icon, MessageIcon::kInformation);
    EXPECT_EQ(platform_.messages->shown[0].text, QLatin1String(text));
    platform_.messages->shown.clear();
  }

  ScriptedPlatform platform_;
};

// --- The rows ---

TEST_F(CommandTable, RowsStandInTheOrderInWhichTheyCameAndOnce) {
  const auto before = Commands().size();
  const std::vector<CommandRow> first = {{.name = "mnuOne"}, {.name = "mnuTwo"}};
  const HandedCommands handed(first);
  const HandedCommands behind({{.name = "mnuThree"}});
  AddCommands(first);
  AddCommands(first);
  const auto rows = Commands();
  ASSERT_EQ(rows.size(), before + 5);
  EXPECT_EQ(NameOf(*rows[before]), QStringLiteral("mnuOne"));
  EXPECT_EQ(NameOf(*rows[before + 2]), QStringLiteral("mnuThree"));
  RemoveCommands(first);
  EXPECT_EQ(Commands().size(), before + 3);
}

TEST_F(CommandTable, ARowGoesByItsNameItsNumberOrItsWindow) {
  EXPECT_EQ(NameOf({.name = "mnuBells", .window = "frmBells"}), QStringLiteral("mnuBells"));
  EXPECT_EQ(NameOf({.name = "mnuBells", .index = 3}), QStringLiteral("mnuBells(3)"));
  EXPECT_EQ(NameOf({.window = "frmBells"}), QStringLiteral("frmBells"));
}

TEST_F(CommandTable, MenusAndSeparatorsAreNoCommands) {
  const HandedCommands rows({{.name = "mnuBells", .kind = CommandRow::Kind::kMenu},
                             {.name = "mnuMore", .kind = CommandRow::Kind::kSubmenu},
                             {.name = "mnuLine", .kind = CommandRow::Kind::kSeparator},
                             {.name = "mnuTop", .kind = CommandRow::Kind::kTopLevelItem},
                             {.name = "mnuRing", .index = 2}});
  for (const char* name : {"mnuBells", "mnuMore", "mnuLine", "mnuRing"}) {
    EXPECT_EQ(FindCommand(QLatin1String(name)), nullptr) << name;
    EXPECT_FALSE(IsMissing(QLatin1String(name))) << name;
    EXPECT_THROW(RunCommand(QLatin1String(name)), Failure) << name;
  }
  EXPECT_NE(FindCommand(QStringLiteral("mnuTop")), nullptr);
  EXPECT_NE(FindCommand(QStringLiteral("mnuRing(2)")), nullptr);
}

// --- What is there ---

TEST_F(CommandTable, AWindowIsThereWhenARowMakesItShowsItOrLeavesItToItsOwner) {
  const auto there = [](CommandRow row) {
    row.name = "mnuBells";
    row.window = "frmBells";
    const HandedCommands rows({row});
    EXPECT_NE(IsMissing(QStringLiteral("mnuBells")), IsPartOfThisVersion(QStringLiteral("frmBells")));
    EXPECT_EQ(IsMissing(QStringLiteral("mnuBells")), IsMissing(QStringLiteral("frmBells")));
    return !IsMissing(QStringLiteral("mnuBells"));
  };
  EXPECT_FALSE(there({}));
  EXPECT_TRUE(there({.make = &MakeBells}));
  EXPECT_TRUE(there({.show = [] {}}));
  EXPECT_TRUE(there({.made_by_owner = true}));
  // What a command does beside its window is no window.
  EXPECT_FALSE(there({.act = [] {}}));
}

TEST_F(CommandTable, ACommandWithoutAWindowIsThereWhenItDoesSomething) {
  const HandedCommands rows({{.name = "mnuRing", .act = [] {}}, {.name = "mnuPull"}});
  EXPECT_FALSE(IsMissing(QStringLiteral("mnuRing")));
  EXPECT_TRUE(IsMissing(QStringLiteral("mnuPull")));
}

TEST_F(CommandTable, OneRowThatMakesAWindowIsEnoughForAllThatLeadToIt) {
  const HandedCommands planned({{.name = "mnuBells", .help_context = 7, .window = "frmBells"},
                                {.name = "mnuOtherWay", .window = "frmBells"}});
  EXPECT_TRUE(IsMissing(QStringLiteral("mnuOtherWay")));
  EXPECT_EQ(HelpContextOf(QStringLiteral("frmBells")), 7);
  const HandedCommands made({{.help_context = 8, .window = "frmBells", .make = &MakeBells}});
  EXPECT_FALSE(IsMissing(QStringLiteral("mnuBells")));
  EXPECT_FALSE(IsMissing(QStringLiteral("mnuOtherWay")));
  // The topic of the window is that of its own row.
  EXPECT_EQ(HelpContextOf(QStringLiteral("frmBells")), 8);
  EXPECT_TRUE(RegisteredWindows().contains(QStringLiteral("frmBells")));
}

TEST_F(CommandTable, ANameThatNoRowHasIsNotMissingAndNoWindow) {
  EXPECT_FALSE(IsMissing(QStringLiteral("frmNoSuchWindow")));
  EXPECT_THROW(IsPartOfThisVersion(QStringLiteral("frmNoSuchWindow")), Failure);
  EXPECT_THROW(ShowWindow(QStringLiteral("frmNoSuchWindow")), Failure);
  EXPECT_THROW(RunCommand(QStringLiteral("mnuNoSuchCommand")), Failure);
  EXPECT_EQ(HelpContextOf(QStringLiteral("frmNoSuchWindow")), 0);
}

// --- Help ---

TEST_F(CommandTable, ATopicHasThePageOfTheFirstRowThatNamesOne) {
  const HandedCommands rows({{.name = "mnuPull", .help_context = 98765},
                             {.name = "mnuRing", .help_context = 98765, .help_page = "Bells.htm"}});
  EXPECT_EQ(HelpPageOf(98765), QStringLiteral("Bells.htm"));
  EXPECT_EQ(HelpPageOf(98766), QString());
}

TEST_F(CommandTable, AWindowHasTheTopicOfItsRow) {
  const HandedCommands rows({{.help_context = 7, .window = "frmBells", .make = &MakeBells}});
  EXPECT_EQ(ShowWindow(QStringLiteral("frmBells"))->HelpContext(), 7);
}

// --- Acting by name ---

TEST_F(CommandTable, AWindowIsMadeOnceAndShownWheneverItIsAskedFor) {
  const HandedCommands rows({{.name = "mnuBells", .window = "frmBells", .make = &MakeBells}});
  RunCommand(QStringLiteral("mnuBells"));
  ChildWindow* const window = WindowByName(QStringLiteral("frmBells"));
  ASSERT_NE(window, nullptr);
  EXPECT_TRUE(window->isVisible());
  window->hide();
  EXPECT_EQ(ShowWindow(QStringLiteral("frmBells")), window);
  EXPECT_TRUE(window->isVisible());
  // A window that no command leads to goes by its own name.
  window->hide();
  RunCommand(QStringLiteral("frmBells"));
  EXPECT_TRUE(window->isVisible());
}

TEST_F(CommandTable, AWindowOrCommandOfALaterVersionGivesTheBox) {
  const HandedCommands rows({{.name = "mnuBells", .window = "frmBells"}, {.name = "mnuRing"}});
  EXPECT_EQ(ShowWindow(QStringLiteral("frmBells")), nullptr);
  ExpectBox(kNotThere);
  for (const char* name : {"mnuBells", "frmBells", "mnuRing"}) {
    RunCommand(QLatin1String(name));
    ExpectBox(kNotThere);
  }
}

TEST_F(CommandTable, AWindowThatIsNoChildIsShownInItsOwnWay) {
  int shown = 0;
  const HandedCommands rows({{.name = "mnuBells", .window = "dialogBells", .show = [&shown] { ++shown; }}});
  RunCommand(QStringLiteral("mnuBells"));
  EXPECT_EQ(ShowWindow(QStringLiteral("dialogBells")), nullptr);
  EXPECT_EQ(shown, 2);
  EXPECT_EQ(WindowByName(QStringLiteral("dialogBells")), nullptr);
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(CommandTable, ADialogueOfAWindowIsNotShownByOthers) {
  const HandedCommands rows({{.window = "dialogBells", .made_by_owner = true}});
  EXPECT_THROW(ShowWindow(QStringLiteral("dialogBells")), Failure);
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(CommandTable, ACommandThatDoesMoreThanShowItsWindowDoesThatAlone) {
  int acted = 0;
  const HandedCommands rows(
      {{.name = "mnuBells", .window = "frmBells", .make = &MakeBells, .act = [&acted] { ++acted; }}});
  RunCommand(QStringLiteral("mnuBells"));
  EXPECT_EQ(acted, 1);
  EXPECT_FALSE(IsOpen("frmBells"));
}

TEST_F(CommandTable, ACommandThatNeedsATuneSaysSoInItsOwnWords) {
  const HandedCommands rows({{.name = "mnuBells",
                              .without_tune = "No bells without a tune.",
                              .window = "frmBells",
                              .make = &MakeBells},
                             {.name = "mnuPlanned", .without_tune = "No plan.", .window = "frmPlanned"}});
  RunCommand(QStringLiteral("mnuBells"));
  ExpectBox("No bells without a tune.");
  EXPECT_FALSE(IsOpen("frmBells"));
  // Also where the window itself is not there yet.
  RunCommand(QStringLiteral("mnuPlanned"));
  ExpectBox("No plan.");
  Global().TuneLoadedFlag = true;
  RunCommand(QStringLiteral("mnuBells"));
  EXPECT_TRUE(IsOpen("frmBells"));
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
  RunCommand(QStringLiteral("mnuPlanned"));
  ExpectBox(kNotThere);
}

TEST_F(CommandTable, AGuardEndsACommandBeforeItActs) {
  bool may = false;
  int asked = 0;
  int acted = 0;
  const auto guard = [&] {
    ++asked;
    return may;
  };
  const HandedCommands rows(
      {{.name = "mnuRing", .guard = guard, .act = [&acted] { ++acted; }},
       {.name = "mnuPlanned", .guard = guard},
       {.name = "mnuTuned", .without_tune = "No tune.", .guard = guard, .act = [&acted] { ++acted; }}});
  RunCommand(QStringLiteral("mnuRing"));
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(acted, 0);
  may = true;
  RunCommand(QStringLiteral("mnuRing"));
  EXPECT_EQ(acted, 1);
  // Nobody is asked for what cannot be done anyway.
  RunCommand(QStringLiteral("mnuPlanned"));
  ExpectBox(kNotThere);
  RunCommand(QStringLiteral("mnuTuned"));
  ExpectBox("No tune.");
  EXPECT_EQ(asked, 2);
}

// --- The list of loaded windows ---

TEST_F(CommandTable, TheListenerHearsOfWindowsThatGoComeToTheFrontOrChangeTheirCaption) {
  int heard = 0;
  SetFormsListener([&heard] { ++heard; });
  auto* const window = MakeBells();
  window->setWindowTitle(QStringLiteral("Bells"));
  EXPECT_EQ(heard, 1);
  window->Activate();
  EXPECT_EQ(heard, 2);
  window->show();
  window->Unload();
  EXPECT_GE(heard, 3);
  SetFormsListener(nullptr);
  TellFormsChanged();
  LetClosedWindowsGo();
}

}  // namespace
}  // namespace zelmar
