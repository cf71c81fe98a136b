#include "shell/window_catalogue.h"

#include <QHash>
#include <QLatin1String>
#include <algorithm>
#include <array>

#include "platform/failure.h"
#include "platform/mnemonics.h"
#include "platform/services.h"
#include "shell/child_window.h"
#include "shell/loaded_forms.h"

namespace zelmar {

namespace {

// The one list of what this version does not have: the windows that commands lead to, and behind them the
// commands that lead to no window of their own.
constexpr std::array kNotPartOfThisVersion = {
    QLatin1String("dialogEditNote"),
    QLatin1String("frmCategory"),
    QLatin1String("frmComposers"),
    QLatin1String("frmEditControllers"),
    QLatin1String("frmEditExpression"),
    QLatin1String("frmEditKeyboardInput"),
    QLatin1String("frmEditMelody"),
    QLatin1String("frmEditMidiEffects"),
    QLatin1String("frmEditTrackFilter"),
    QLatin1String("frmEditTracks"),
    QLatin1String("frmEditWords"),
    QLatin1String("frmEnsembles"),
    QLatin1String("frmFileDBMissingTunes"),
    QLatin1String("frmFileDBOrphans"),
    QLatin1String("frmFileExportMidi"),
    QLatin1String("frmFileImportMidi"),
    QLatin1String("frmInstruments"),
    QLatin1String("frmInstrumentsDemonstration"),
    QLatin1String("frmInstrumentsNoVideo"),
    QLatin1String("frmInstrumentsOrchestra"),
    QLatin1String("frmMusicology"),
    QLatin1String("frmMusicologyCountries"),
    QLatin1String("frmMusicologyEuropeMap"),
    QLatin1String("frmMusicologyHistory"),
    QLatin1String("frmPlayDictionary"),
    QLatin1String("frmPlayHits"),
    QLatin1String("frmPlayInstrumentQuiz"),
    QLatin1String("frmPlayJukeBox"),
    QLatin1String("frmPlayMetronome"),
    QLatin1String("frmPlayTuneQuiz"),
    QLatin1String("frmStyles"),
    QLatin1String("rptMusicByCategory"),
    QLatin1String("rptMusicByEnsemble"),
    QLatin1String("rptMusicByInstrument"),
    QLatin1String("rptMusicByPeriod"),
    QLatin1String("rptMusicList"),
};
// The staff view starts no new tune and searches for none.
constexpr std::array kCommandsNotPartOfThisVersion = {
    QLatin1String("mnuFileIdentify"),
    QLatin1String("mnuFileNew"),
};

QHash<QString, std::function<ChildWindow*()>>& Makers() {
  static QHash<QString, std::function<ChildWindow*()>> makers;
  return makers;
}

template <typename Names>
bool Contains(const Names& names, const QString& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

void RegisterWindow(const QString& name, std::function<ChildWindow*()> make) {
  if (make)
    Makers().insert(name, std::move(make));
  else
    Makers().remove(name);
}

QStringList RegisteredWindows() {
  QStringList names = Makers().keys();
  names.sort();
  return names;
}

bool IsPartOfThisVersion(const QString& name) {
  if (Makers().contains(name)) return true;
  if (!Contains(kNotPartOfThisVersion, name))
    throw Failure(error_number::kInvalidCall, QStringLiteral("There is no window named %1.").arg(name));
  return false;
}

bool IsMissing(const QString& name) {
  return Contains(kCommandsNotPartOfThisVersion, name) ||
         (Contains(kNotPartOfThisVersion, name) && !Makers().contains(name));
}

QString WordsForMissing(const QString& caption) {
  return WithoutMnemonic(caption) + QStringLiteral(" is not part of this version.");
}

ChildWindow* WindowByName(const QString& name) {
  if (auto* window = qobject_cast<ChildWindow*>(FindLoadedForm(name))) return window;
  return IsPartOfThisVersion(name) ? Makers().value(name)() : nullptr;
}

ChildWindow* ShowWindow(const QString& name) {
  ChildWindow* const window = WindowByName(name);
  if (window == nullptr)
    SayNotPartOfThisVersion();
  else
    window->ShowOnTop();
  return window;
}

void SayCommandNotPartOfThisVersion(const QString& name) {
  if (!Contains(kCommandsNotPartOfThisVersion, name))
    throw Failure(error_number::kInvalidCall,
                  QStringLiteral("%1 is no command of a later version.").arg(name));
  SayNotPartOfThisVersion();
}

void SayNotPartOfThisVersion() {
  ShowMessage(MessageIcon::kInformation, QStringLiteral("This window is not part of this version yet."));
}

}  // namespace zelmar
