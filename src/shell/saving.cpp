#include "shell/saving.h"

#include "model/main_window_link.h"
#include "model/tune.h"
#include "platform/failure.h"
#include "platform/services.h"
#include "shell/dialog_wait.h"
#include "shell/recovery_keeper.h"
#include "store/failure_words.h"
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
  return SaveWholeTune(TheMainWindow().MyTune(), caption);
}

bool SaveWholeTune(std::shared_ptr<Tune> tune, const QString& caption) {
  if (!tune) throw NoTuneInMemory();
  bool failed = false;
  SaveProgress progress;
  {
    const SaveStatusWindow status(caption);
    SaveTune(tune, tune->FileName(), failed, SavePortion::kAll, &progress);
  }
  if (failed && progress.Wrote())
    ShowMessage(MessageIcon::kCritical, WordsOfRemains(progress),
                QStringLiteral("\"%1\" is not saved").arg(tune->FileName()));
  if (RecoveryKeeper* const keeper = TheRecoveryKeeper()) keeper->Check();
  return !failed;
}

}  // namespace zelmar
