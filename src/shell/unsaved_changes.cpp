#include "shell/unsaved_changes.h"

#include "midi/running_tunes.h"
#include "model/globals.h"
#include "model/tune.h"
#include "platform/services.h"
#include "shell/saving.h"
#include "shell/unsaved_work.h"

namespace zelmar {

namespace {

// One question at a time.
class Asking {
 public:
  Asking() : first_(!at_work) { at_work = true; }
  ~Asking() {
    if (first_) at_work = false;
  }
  Asking(const Asking&) = delete;
  Asking& operator=(const Asking&) = delete;
  bool IsFirst() const { return first_; }

 private:
  inline static bool at_work = false;
  bool first_;
};

MessageAnswer Ask(const Tune& tune) {
  return ShowMessage(MessageIcon::kQuestion,
                     QStringLiteral("Do you want to save the current tune onto the database before another "
                                    "tune takes its place?"),
                     QStringLiteral("\"%1\" is not saved").arg(tune.Title()), MessageButtons::kYesNoCancel,
                     MessageAnswer::kCancel);
}

bool Save(const std::shared_ptr<Tune>& tune) {
  try {
    return SaveWholeTune(tune, QStringLiteral("Saving tune  ") + tune->FileName() +
                                   QStringLiteral(" to database on disk. Please wait."));
  } catch (const std::exception& failure) {
    ShowMessage(MessageIcon::kCritical, QString::fromUtf8(failure.what()));
    return false;
  }
}

}  // namespace

bool MayReplaceTune() {
  if (!UnsavedTune()) return true;
  const Asking asking;
  if (!asking.IsFirst()) return false;
  // What plays would stand still behind the box, with its notes sounding.
  StopRunningTunes();
  while (const std::shared_ptr<Tune> tune = UnsavedTune()) {
    const MessageAnswer answer = Ask(*tune);
    // A tune that has gone meanwhile is saved all the same when its person wants that.
    if (answer == MessageAnswer::kYes && !Save(tune)) return false;
    if (answer == MessageAnswer::kCancel || Global().MainFormLoaded) return false;
    if (answer == MessageAnswer::kNo && UnsavedTune() == tune) return true;
  }
  return !Global().MainFormLoaded;
}

}  // namespace zelmar
