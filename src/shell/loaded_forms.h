// The windows that are loaded, in the order of their loading.
#pragma once

#include <QList>
#include <QWidget>

namespace zelmar {

// Puts the window at the end of the list; it leaves the list with its end at the latest. The Windows menu is
// rebuilt whenever a window leaves.
void AddLoadedForm(QWidget* form);
void RemoveLoadedForm(QWidget* form);

QList<QWidget*> LoadedForms();

// True when that very window is among the loaded ones.
bool IsFormLoaded(const QWidget* form);

// The loaded window of that system name; null when there is none.
QWidget* FindLoadedForm(const QString& name);

}  // namespace zelmar
