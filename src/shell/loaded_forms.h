// The windows that are loaded, in the order of their loading.
#pragma once

#include <QList>
#include <QWidget>
#include <functional>

namespace zelmar {

// Puts the window at the end of the list; it leaves the list with its end at the latest.
void AddLoadedForm(QWidget* form);
void RemoveLoadedForm(QWidget* form);

QList<QWidget*> LoadedForms();

// True when that very window is among the loaded ones.
bool IsFormLoaded(const QWidget* form);

// The loaded window of that system name; null when there is none.
QWidget* FindLoadedForm(const QString& name);

// What is to be done when a window leaves the list, comes to the front or takes another caption: the list of
// windows in the menu. Nothing when it is empty.
void SetFormsListener(std::function<void()> listener);
// Has that done.
void TellFormsChanged();

}  // namespace zelmar
