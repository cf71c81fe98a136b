#include "app/options/database_change.h"

#include <QDate>
#include <QTime>

#include "model/globals.h"
#include "platform/services.h"
#include "shell/child_window.h"
#include "shell/main_frame.h"

namespace zelmar {

void NoteDatabaseChange() {
  Global().DatabaseChangeDate = QDate::currentDate();
  Global().DatabaseChangeTime =
      QTime::fromMSecsSinceStartOfDay(static_cast<int>(SecondsSinceMidnight()) * 1000);
}

void RenewFrontWindow() {
  MainFrame* const frame = TheMainFrame();
  if (frame == nullptr) return;
  if (ChildWindow* const window = frame->ActiveChild()) window->Activate();
}

}  // namespace zelmar
