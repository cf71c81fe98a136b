#include "shell/window_catalogue.h"

#include "model/globals.h"
#include "platform/failure.h"
#include "platform/services.h"
#include "shell/child_window.h"
#include "shell/command_table.h"
#include "shell/loaded_forms.h"

namespace zelmar {

ChildWindow* WindowByName(const QString& name) {
  if (auto* window = qobject_cast<ChildWindow*>(FindLoadedForm(name))) return window;
  if (!IsPartOfThisVersion(name)) return nullptr;
  const CommandRow& row = *RowOfWindow(name);
  return row.make ? row.make() : nullptr;
}

ChildWindow* ShowWindow(const QString& name) {
  if (ChildWindow* const window = WindowByName(name)) {
    window->ShowOnTop();
    return window;
  }
  const CommandRow& row = *RowOfWindow(name);
  if (row.show)
    row.show();
  else if (row.made_by_owner)
    throw Failure(error_number::kInvalidCall,
                  QStringLiteral("%1 is shown by the window that it belongs to.").arg(name));
  else
    SayNotPartOfThisVersion();
  return nullptr;
}

void RunCommand(const QString& name) {
  const CommandRow* const row = FindCommand(name);
  if (row == nullptr)
    throw Failure(error_number::kInvalidCall, QStringLiteral("There is no command named %1.").arg(name));
  if (row->without_tune[0] != '\0' && !Global().TuneLoadedFlag) {
    ShowMessage(MessageIcon::kInformation, QLatin1String(row->without_tune));
    return;
  }
  if (IsMissing(name)) {
    SayNotPartOfThisVersion();
    return;
  }
  if (row->guard && !row->guard()) return;
  if (row->act)
    row->act();
  else
    ShowWindow(QLatin1String(row->window));
}

void SayNotPartOfThisVersion() {
  ShowMessage(MessageIcon::kInformation, QStringLiteral("This window is not part of this version yet."));
}

}  // namespace zelmar
