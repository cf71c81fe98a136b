// Which windows there are, by system name: how each is made, and which are not part of this version yet.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace zelmar {

class ChildWindow;

// Makes a window known under its system name. A later registration replaces an earlier one; an empty maker
// takes the window away again.
void RegisterWindow(const QString& name, std::function<ChildWindow*()> make);

// The system names of the windows that are known so, in the order of the alphabet.
QStringList RegisteredWindows();

// False for a window that this version does not have. Throws Failure for a name that no window has.
bool IsPartOfThisVersion(const QString& name);

// True for a window that this version does not have, and for a command ("mnu...") that leads to no window of
// its own and is not there yet.
bool IsMissing(const QString& name);

// "Juke Box is not part of this version.", for the hint and the name of what leads to nothing yet. Marks of
// mnemonics are left out.
QString WordsForMissing(const QString& caption);

// The one instance of a window, made on first use. Null for a window that is not part of this version.
ChildWindow* WindowByName(const QString& name);

// Shows the window in front of the others, or says that it is not part of this version yet and gives null.
ChildWindow* ShowWindow(const QString& name);

// Says that a command is not part of this version yet. Throws Failure for one that the list does not have.
void SayCommandNotPartOfThisVersion(const QString& name);

// The box that says so.
void SayNotPartOfThisVersion();

}  // namespace zelmar
