#include "midi/sound_font.h"

#include <QCoreApplication>
#include <QDir>
#include <QStringList>

namespace zelmar {

namespace {

QStringList SearchedFolders() {
  QStringList folders = {QStringLiteral("/usr/share/sounds/sf2"), QStringLiteral("/usr/share/sounds/sf3"),
                         QStringLiteral("/usr/share/soundfonts"),
                         QStringLiteral("/usr/local/share/soundfonts")};
  if (QCoreApplication::instance() != nullptr) folders.append(QCoreApplication::applicationDirPath());
  return folders;
}

// Best first.
QStringList KnownFonts() {
  return {QStringLiteral("FluidR3_GM.sf2"), QStringLiteral("TimGM6mb.sf2"), QStringLiteral("default-GM.sf2"),
          QStringLiteral("default.sf2"), QStringLiteral("default-GM.sf3")};
}

}  // namespace

QString InstalledSoundFont() {
  const QStringList folders = SearchedFolders();
  for (const QString& name : KnownFonts()) {
    for (const QString& folder : folders) {
      const QString path = QDir(folder).filePath(name);
      if (QFileInfo(path).isReadable()) return path;
    }
  }
  for (const QString& folder : folders) {
    const QStringList others = QDir(folder).entryList({QStringLiteral("*.sf2"), QStringLiteral("*.sf3")},
                                                      QDir::Files | QDir::Readable);
    if (!others.isEmpty()) return QDir(folder).filePath(others.front());
  }
  return {};
}

}  // namespace zelmar
