// The commands of the main window that save the tune in memory.

#include "app/mdi_parent.h"
#include "model/globals.h"
#include "model/tune.h"
#include "platform/failure.h"
#include "platform/services.h"
#include "shell/saving.h"
#include "store/tune_saver.h"

namespace zelmar {

void MDIParent::SaveFile(const QString& code_name, bool& failed, const QString& portion) {
  SaveTune(my_tune_, code_name, failed, portion);
}

void MDIParent::mnuFileSave_Click() {
  if (!Global().TuneLoadedFlag) return;
  if (!my_tune_) throw NoTuneInMemory();
  SaveWholeTune(QStringLiteral("Saving tune  ") + my_tune_->FileName() +
                QStringLiteral(" to database on disk. Please wait."));
}

void MDIParent::mnuFileSaveAs_Click() {
  if (!Global().TuneLoadedFlag) return;
  const QString name =
      InputBox(QStringLiteral("New name for the file being saved"), QStringLiteral("Save As"));
  if (name.isEmpty()) return;
  // The tune may be replaced while the save serves events; the messages tell of the one that was saved.
  const std::shared_ptr<Tune> tune = my_tune_;
  if (!tune) throw NoTuneInMemory();
  tune->SetTitle(name + QStringLiteral(" - Copy"));
  const SaveStatusWindow status(QStringLiteral("Saving Zelmar file ") + name +
                                QStringLiteral(" to database on disk. Please wait."));
  bool failed = false;
  SaveTune(tune, name, failed, QStringLiteral("ALL"));
  if (failed)
    ShowMessage(MessageIcon::kCritical, QStringLiteral("Unable to save this file"),
                tune->FileName() + QStringLiteral(" not saved."));
  else
    ShowMessage(MessageIcon::kInformation,
                QStringLiteral("Saved ") + tune->FileName() + QStringLiteral(" to disk in Zelmar database."),
                QStringLiteral("Save Completed OK"));
}

void MDIParent::SaveOnClosing() {
  SaveWholeTune(QStringLiteral("Saving Zelmar file  ") + my_tune_->FileName() +
                QStringLiteral(" to database on disk. Please wait."));
}

}  // namespace zelmar
