// The one table of windows and commands. A row says all that the shell knows of one: where it stands in the
// menu and on the front page, its topic in the help, what it needs, and how its window is made.
//
// Rows are handed to the table by whoever may know the windows they speak of, and are not copied: they stay
// where they are as long as they are in it. The menu, the front page, the help and the list of what this
// version does not have read it; RunCommand and ShowWindow (shell/window_catalogue.h) act by it.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <span>
#include <vector>

namespace zelmar {

class ChildWindow;

// A way into a room of the program on the front page.
struct CommandCard {
  int place = 0;  // among the cards, from 1; 0 for a command that has none
  const char* name = "";
  const char* icon = "";
  const char* title = "";
  const char* description = "";
  const char* tooltip = "";
};

struct CommandRow {
  enum class Kind { kItem, kMenu, kSubmenu, kSeparator, kTopLevelItem };

  // --- The command, and where it stands ---
  const char* name = "";  // "mnuEditWords"; a window that no command leads to goes by its own name
  int index = 0;          // number of an item of an array, from 1; 0 for any other
  Kind kind = Kind::kItem;
  const char* menu = "";  // the menu or submenu of an item; a command in none may have a key all the same
  const char* caption = "";
  const char* shortcut = "";
  CommandCard card = {};

  // --- The help ---
  int help_context = 0;        // number of its topic
  const char* help_page = "";  // of the topic, in the help book

  // --- What it needs ---
  const char* without_tune = "";     // what is said when no tune is loaded; empty where none is needed
  std::function<bool()> guard = {};  // asked before it acts; false ends it. MayReplaceTune is one

  // --- What it does ---
  const char* window = "";  // the window that it leads to, by system name
  // How the window comes about, in the row of the window's own topic: a child of the main window's area is
  // made, another one is shown, or a dialogue is made by the window that it belongs to. A window without any
  // of the three is not part of this version.
  std::function<ChildWindow*()> make = {};
  std::function<void()> show = {};
  bool made_by_owner = false;
  std::function<void()> act = {};  // what the command does where it is not to show its window alone
};

// --- The table ---

// Puts the rows behind those that are there. Rows that are there already stay where they are.
void AddCommands(std::span<const CommandRow> rows);
void RemoveCommands(std::span<const CommandRow> rows);

// All rows, in their order.
std::vector<const CommandRow*> Commands();

// "mnuEditWords", "mnuWindows(2)", or the name of the window where the row has no other.
QString NameOf(const CommandRow& row);

// The command of that name, or one that leads to the window of that name; null when there is none. Menus and
// separators are no commands.
const CommandRow* FindCommand(const QString& name);

// --- What is there ---

// The row that says how a window comes about; where none does, the first that leads to it. Null for a name
// that no window has.
const CommandRow* RowOfWindow(const QString& window);

// The system names of the windows that can be made, in the order of the alphabet.
QStringList RegisteredWindows();

// False for a window that this version does not have. Throws Failure for a name that no window has.
bool IsPartOfThisVersion(const QString& window);

// True for a window that this version does not have, and for a command that leads to one or that does nothing
// yet. False for names that are not in the table.
bool IsMissing(const QString& name);

// "Juke Box is not part of this version.", for the hint and the name of what leads to nothing yet. Marks of
// mnemonics are left out.
QString WordsForMissing(const QString& caption);

// --- Help ---

// The topic number of a window; 0 for one without.
int HelpContextOf(const QString& window);

// The page of a topic in the help book; empty where no row names one.
QString HelpPageOf(int help_context);

}  // namespace zelmar
