#include "shell/database_wait_window.h"

#include <QObject>
#include <utility>

#include "shell/dialog_wait.h"
#include "shell/loaded_forms.h"
#include "store/database_wait.h"

namespace zelmar {

namespace {

bool own_window = false;

DialogWait* StandingWindow() {
  auto* const window = qobject_cast<DialogWait*>(FindLoadedForm(QStringLiteral("DialogWait")));
  return window != nullptr && window->isVisible() ? window : nullptr;
}

void Begin() {
  DialogWait* window = StandingWindow();
  own_window = window == nullptr;
  if (own_window) {
    window = DialogWait::Instance();
    window->SetCaption(QObject::tr("Waiting for the database"));
    window->SetSelfClosing(false);
    window->setWindowModality(Qt::ApplicationModal);
    window->show();
  }
  window->SetHeld(true);
}

void End() {
  if (std::exchange(own_window, false))
    DialogWait::Unload();
  else if (DialogWait* const window = StandingWindow())
    window->SetHeld(false);
}

}  // namespace

void ShowDatabaseWaits() {
  SetDatabaseWaitListener([](bool waiting) { waiting ? Begin() : End(); });
}

void StopShowingDatabaseWaits() {
  SetDatabaseWaitListener({});
}

}  // namespace zelmar
