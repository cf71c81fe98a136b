#include "shell/recovery_offer.h"

#include <QDir>
#include <QLocale>
#include <optional>

#include "model/globals.h"
#include "model/main_window_link.h"
#include "model/tune.h"
#include "platform/failure.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "shell/recovery_keeper.h"
#include "shell/tune_windows.h"
#include "shell/unsaved_changes.h"
#include "store/recovery_file.h"

namespace zelmar {

namespace {

// Nothing when the file cannot be read; the person has been told then.
std::optional<KeptTune> Opened(LeftRecovery& left) {
  try {
    return left.Read();
  } catch (const Failure& failure) {
    const QString place = left.SetAside();
    ShowMessage(MessageIcon::kExclamation,
                QStringLiteral("%1\n\nNothing in it was changed; it lies under the name %2.")
                    .arg(failure.Description(), QDir::toNativeSeparators(place)),
                QStringLiteral("Unsaved tune not brought back"));
    return std::nullopt;
  }
}

MessageAnswer Ask(const KeptTune& kept) {
  const QString when = QLocale().toString(kept.kept_at.toLocalTime(), QLocale::ShortFormat);
  QString text =
      QStringLiteral(
          "Zelmar ended before the tune \"%1\" (%2) was saved. It was last kept on %3.\n\n"
          "Do you want to bring it back with its changes? With No the changes are gone for good; with "
          "Cancel you are asked again at the next start.")
          .arg(kept.tune->Title(), kept.tune->FileName(), when);
  if (ResolvePath(kept.database_path) != ResolvePath(Global().DatabasePath))
    text += QStringLiteral("\n\nIt was worked on with another database: %1.")
                .arg(QDir::toNativeSeparators(kept.database_path));
  return ShowMessage(MessageIcon::kQuestion, text, QStringLiteral("An unsaved tune was kept"),
                     MessageButtons::kYesNoCancel, MessageAnswer::kYes);
}

void MakeCurrent(const std::shared_ptr<Tune>& tune) {
  tune->SetBarNumber(1);
  tune->SetBeatWithinBar(1);
  TheMainWindow().SetMyTune(tune);
  Global().TuneLoadedFlag = true;
  ShowTuneInWindows();
}

}  // namespace

void OfferWhatWasLeft(RecoveryKeeper& keeper) {
  for (LeftRecovery& left : LeftRecoveries(RecoveryFolders())) {
    const std::optional<KeptTune> kept = Opened(left);
    if (!kept) continue;
    const MessageAnswer answer = Ask(*kept);
    if (Global().MainFormLoaded) return;
    if (answer == MessageAnswer::kNo) left.Remove();
    if (answer != MessageAnswer::kYes) continue;
    if (!MayReplaceTune()) return;
    MakeCurrent(kept->tune);
    // Until this program keeps it, the file that it came from does.
    if (keeper.KeepNow()) left.Remove();
    return;
  }
}

}  // namespace zelmar
