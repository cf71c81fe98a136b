#include "app/opened_tunes.h"

#include <QCryptographicHash>
#include <algorithm>

#include "app/options/demonstrations.h"
#include "model/globals.h"
#include "platform/paths.h"
#include "platform/settings.h"

namespace zelmar {

namespace {

// A path cannot be the name of a setting as it stands.
QString KeyOfLibrary() {
  const QByteArray path = ResolvePath(Global().DatabasePath).toUtf8();
  return QStringLiteral("OpenedTunes/") +
         QString::fromLatin1(QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex().left(16));
}

bool IsDemonstration(const QString& code_name) {
  const auto demonstrations = Demonstrations();
  return std::any_of(demonstrations.begin(), demonstrations.end(), [&code_name](const Demonstration& one) {
    return code_name.compare(QLatin1String(one.code_name), Qt::CaseInsensitive) == 0;
  });
}

// Code names and captions by turns.
QList<OpenedTune> Stored() {
  const QStringList texts = Settings().value(KeyOfLibrary()).toStringList();
  QList<OpenedTune> tunes;
  for (qsizetype i = 0; i + 1 < texts.size(); i += 2) tunes.append({texts[i], texts[i + 1]});
  return tunes;
}

void Store(const QList<OpenedTune>& tunes) {
  QStringList texts;
  for (const OpenedTune& tune : tunes) texts << tune.code_name << tune.caption;
  auto settings = Settings();
  settings.setValue(KeyOfLibrary(), texts);
}

// Adds a tune that is not there yet, where there is room.
void AddNew(QList<OpenedTune>& tunes, const OpenedTune& added) {
  const bool known = std::any_of(tunes.begin(), tunes.end(), [&added](const OpenedTune& tune) {
    return tune.code_name.compare(added.code_name, Qt::CaseInsensitive) == 0;
  });
  if (tunes.size() < kRecentTuneCount && !known && !added.code_name.isEmpty() &&
      !IsDemonstration(added.code_name))
    tunes.append(added);
}

}  // namespace

void NoteOpenedTune(const QString& code_name, const QString& caption) {
  if (code_name.isEmpty() || IsDemonstration(code_name)) return;
  QList<OpenedTune> tunes;
  AddNew(tunes, {code_name, caption});
  for (const OpenedTune& tune : Stored()) AddNew(tunes, tune);
  Store(tunes);
}

QList<OpenedTune> OpenedTunes() {
  const Globals& globals = Global();
  QList<OpenedTune> tunes;
  for (const OpenedTune& tune : Stored()) AddNew(tunes, tune);
  for (std::size_t entry = 0; entry < globals.RecentCodeNames.size(); ++entry)
    AddNew(tunes, {globals.RecentCodeNames[entry], globals.RecentCaptions[entry]});
  return tunes;
}

}  // namespace zelmar
