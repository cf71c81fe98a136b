#include "shell/saving.h"

#include "model/main_window_link.h"
#include "model/tune.h"
#include "platform/failure.h"
#include "platform/services.h"
#include "shell/dialog_wait.h"
#include "store/tune_saver.h"

namespace zelmar {

SaveStatusWindow::SaveStatusWindow(const QString& caption) {
  DialogWait* const window = DialogWait::Instance();
  window->SetCaption(caption);
  window->SetSelfClosing(false);
  window->show();
  ServeEvents();
}

SaveStatusWindow::~SaveStatusWindow() {
  DialogWait::Unload();
}

bool SaveWholeTune(const QString& caption) {
  // Held from here on: another tune may take its place while events are served.
  const std::shared_ptr<Tune> tune = TheMainWindow().MyTune();
  if (!tune) throw NoTuneInMemory();
  const SaveStatusWindow status(caption);
  bool failed = false;
  SaveTune(tune, tune->FileName(), failed, QStringLiteral("ALL"));
  return !failed;
}

}  // namespace zelmar
