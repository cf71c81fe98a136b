#include "app/save_commands.h"

#include <optional>
#include <utility>

#include "model/globals.h"
#include "model/main_window_link.h"
#include "model/tune.h"
#include "platform/failure.h"
#include "platform/services.h"
#include "shell/field_check.h"
#include "shell/recovery_keeper.h"
#include "shell/saving.h"
#include "shell/tune_windows.h"
#include "store/database_error.h"
#include "store/failure_words.h"
#include "store/saved_tune.h"
#include "store/tune_name.h"
#include "store/tune_saver.h"

namespace zelmar {

namespace {

const QString kSaveAs = QStringLiteral("Save As");

// A tune under the names of its copy, which it keeps only when they have been saved.
class NamesOfCopy {
 public:
  NamesOfCopy(Tune& tune, const QString& code_name)
      : tune_(tune),
        old_title_(tune.Title()),
        old_file_name_(tune.FileName()),
        // A save over the tune itself that ends halfway leaves nothing to go back to.
        unchanged_(!tune.ChangedSinceLastSaved() &&
                   FoldedCodeName(code_name) != FoldedCodeName(tune.SavedFileName())),
        title_(code_name + QStringLiteral(" - Copy")),
        file_name_(code_name) {
    tune_.SetTitle(title_);
    tune_.SetFileName(file_name_);
    changes_ = tune_.Changes();
  }
  ~NamesOfCopy() {
    if (kept_) return;
    const bool unchanged = !WillCountAsChanged();
    // A person may have typed other names meanwhile.
    if (tune_.Title() == title_) tune_.SetTitle(old_title_);
    if (tune_.FileName() == file_name_) tune_.SetFileName(old_file_name_);
    if (unchanged) tune_.SetChangedSinceLastSaved(false);
  }
  NamesOfCopy(const NamesOfCopy&) = delete;
  NamesOfCopy& operator=(const NamesOfCopy&) = delete;

  void Keep() { kept_ = true; }
  // What becomes of the tune without the names of the copy: these alone are no change of it.
  bool WillCountAsChanged() const { return !unchanged_ || tune_.Changes() != changes_; }

 private:
  Tune& tune_;
  const QString old_title_;
  const QString old_file_name_;
  const bool unchanged_;
  const QString title_;
  const QString file_name_;
  std::uint64_t changes_ = 0;
  bool kept_ = false;
};

// The title of another tune that has the name; nothing when the name is free, or the tune's own.
std::optional<QString> TitleOfOther(const Tune& tune, const QString& code_name) {
  try {
    const std::optional<QString> title = TitleOfSavedTune(code_name);
    return FoldedCodeName(code_name) == FoldedCodeName(tune.SavedFileName()) ? std::nullopt : title;
  } catch (const DatabaseError& failure) {
    throw DatabaseError(failure.Number(),
                        WordsOfFailedSave(code_name, failure, {}, tune.ChangedSinceLastSaved()));
  }
}

bool UserWantsToReplace(const QString& title, const QString& code_name) {
  return ShowMessage(
             MessageIcon::kQuestion,
             QStringLiteral("The database has the tune \"%1\" under the name %2 already. Do you want to "
                            "replace it?")
                 .arg(title, code_name),
             kSaveAs, MessageButtons::kYesNo, MessageAnswer::kNo) == MessageAnswer::kYes;
}

void SayNotSaved(const QString& code_name, const SaveProgress& progress) {
  QString text = QStringLiteral("Unable to save this file");
  if (progress.Wrote()) text += QStringLiteral("\n\n") + WordsOfRemains(progress);
  ShowMessage(MessageIcon::kCritical, text, code_name + QStringLiteral(" not saved."));
}

// False when it failed; the person has been told then.
bool SaveCopy(const std::shared_ptr<Tune>& tune, const QString& code_name) {
  NamesOfCopy names(*tune, code_name);
  bool failed = false;
  SaveProgress progress;
  SaveTune(tune, code_name, failed, SavePortion::kAll, &progress,
           [&names] { return names.WillCountAsChanged(); });
  if (failed) {
    SayNotSaved(code_name, progress);
    return false;
  }
  names.Keep();
  return true;
}

}  // namespace

void SaveTuneInMemory() {
  if (!Global().TuneLoadedFlag || !SettleFieldsInFocus()) return;
  const std::shared_ptr<Tune> tune = TheMainWindow().MyTune();
  if (!tune) throw NoTuneInMemory();
  SaveWholeTune(QStringLiteral("Saving tune  ") + tune->FileName() +
                QStringLiteral(" to database on disk. Please wait."));
}

void SaveTuneAs() {
  if (!Global().TuneLoadedFlag || !SettleFieldsInFocus()) return;
  // The tune may be replaced while boxes and the save serve events; all of this is about the one that the
  // person saw.
  const std::shared_ptr<Tune> tune = TheMainWindow().MyTune();
  if (!tune) throw NoTuneInMemory();
  const QString name = InputBox(QStringLiteral("New name for the file being saved"), kSaveAs);
  if (name.isEmpty()) return;
  const std::optional<QString> other = TitleOfOther(*tune, name);
  if (Global().DatabaseFailed) {
    SayNotSaved(name, {});
    return;
  }
  if (other && !UserWantsToReplace(*other, name)) return;
  const SaveStatusWindow status(QStringLiteral("Saving Zelmar file ") + name +
                                QStringLiteral(" to database on disk. Please wait."));
  if (!SaveCopy(tune, name)) return;
  if (RecoveryKeeper* const keeper = TheRecoveryKeeper()) keeper->Check();
  ShowTitleInWindows();
  ShowMessage(MessageIcon::kInformation,
              QStringLiteral("Saved ") + name + QStringLiteral(" to disk in Zelmar database."),
              QStringLiteral("Save Completed OK"));
}

}  // namespace zelmar
