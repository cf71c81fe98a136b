#include "platform/paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace zelmar {

namespace {

QString& ChosenDirectory() {
  static QString directory;
  return directory;
}

// The entry of `folder` that matches `component`: the exact one, else the first that differs only in case.
QString FindComponent(const QString& folder, const QString& component) {
  const QDir dir(folder);
  if (QFileInfo::exists(dir.filePath(component))) return component;
  const auto entries = dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  for (const QString& entry : entries)
    if (entry.compare(component, Qt::CaseInsensitive) == 0) return entry;
  return component;
}

QString DefaultDirectory() {
  const QString beside = QCoreApplication::applicationDirPath();
  if (QFileInfo::exists(beside + QStringLiteral("/frmPath.txt"))) return beside;
  if (QFileInfo::exists(beside + QStringLiteral("/ZelmarTemplate.mdb")) && QFileInfo(beside).isWritable())
    return beside;
  return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

}  // namespace

QString ApplicationDirectory() {
  return ChosenDirectory().isEmpty() ? DefaultDirectory() : ChosenDirectory();
}

void SetApplicationDirectory(const QString& directory) {
  ChosenDirectory() = directory.isEmpty() ? QString() : QDir(directory).absolutePath();
}

QString StateDirectory() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
  const QString chosen = qEnvironmentVariable("XDG_STATE_HOME");
  // A relative path there is to be passed over.
  const QString base =
      QDir::isAbsolutePath(chosen) ? chosen : QDir::homePath() + QStringLiteral("/.local/state");
  return QDir::cleanPath(base) + QStringLiteral("/zelmar");
#else
  return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
#endif
}

QString ResolvePath(const QString& path) {
  QString written = path;
  written.replace(QLatin1Char('\\'), QLatin1Char('/'));
  if (QDir::isRelativePath(written)) written = ApplicationDirectory() + QLatin1Char('/') + written;
  if (QFileInfo::exists(written)) return QDir::cleanPath(written);

  const QString clean = QDir::cleanPath(written);
  const QStringList components = clean.split(QLatin1Char('/'));
  QString found = components.first();
  bool exists = true;
  for (qsizetype i = 1; i < components.size(); ++i) {
    const QString folder = found.isEmpty() ? QStringLiteral("/") : found;
    const QString component = exists ? FindComponent(folder, components[i]) : components[i];
    found += QLatin1Char('/') + component;
    exists = exists && QFileInfo::exists(found);
  }
  return found;
}

bool StaysInside(const QString& folder, const QString& name) {
  QString written = name;
  written.replace(QLatin1Char('\\'), QLatin1Char('/'));
  if (written.isEmpty() || QDir::isAbsolutePath(written)) return false;
  // A drive letter leads away on the systems that have them.
  if (written.size() > 1 && written[0].isLetter() && written[1] == QLatin1Char(':')) return false;
  if (written.split(QLatin1Char('/')).contains(QStringLiteral(".."))) return false;
  const QString root = QFileInfo(folder).canonicalFilePath();
  if (root.isEmpty()) return false;
  // The deepest part of the name that exists must still lie under the folder once links are followed; a link
  // that leads to nothing yet may lead anywhere.
  QString place = ResolvePath(folder + QLatin1Char('/') + written);
  while (!QFileInfo::exists(place) && place.size() > 1) {
    if (QFileInfo(place).isSymLink()) return false;
    place = QFileInfo(place).path();
  }
  const QString real = QFileInfo(place).canonicalFilePath();
  return real == root || real.startsWith(root + QLatin1Char('/'));
}

}  // namespace zelmar
