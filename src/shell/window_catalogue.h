// Windows and commands by their names, as the table of commands has them.
#pragma once

#include <QString>

namespace zelmar {

class ChildWindow;

// The one instance of a window, made on first use. Null for a window that is not part of this version, and
// for one that is no child of the main window. Throws Failure for a name that no window has.
ChildWindow* WindowByName(const QString& name);

// Shows the window in front of the others, or says that it is not part of this version yet. Gives null then,
// and for a window that is no child of the main window, which may be closed again when this returns.
ChildWindow* ShowWindow(const QString& name);

// Does what the command of that name does, "mnuEditWords" or "mnuWindows(2)": says what it needs where that
// is not there, asks its guard, acts or shows its window. A command that is not part of this version says so.
// Throws Failure for a name that is not in the table.
void RunCommand(const QString& name);

// The box for what is not part of this version yet.
void SayNotPartOfThisVersion();

}  // namespace zelmar
