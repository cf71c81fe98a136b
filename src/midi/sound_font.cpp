#include "midi/sound_font.h"

#include <fluidsynth.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QtEndian>
#include <memory>

#include "midi/quiet_libraries.h"
#include "platform/settings.h"

namespace zelmar {

namespace {

QStringList SearchedFolders() {
  QStringList folders = {QStringLiteral("/usr/share/sounds/sf2"), QStringLiteral("/usr/share/sounds/sf3"),
                         QStringLiteral("/usr/share/soundfonts"),
                         QStringLiteral("/usr/local/share/soundfonts")};
  if (QCoreApplication::instance() != nullptr) folders.append(QCoreApplication::applicationDirPath());
  return folders;
}

QString ChosenKey() {
  return QStringLiteral("Midi/SoundFont");
}

// The file tells its own length, behind its first four bytes.
bool IsCutOff(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return true;
  const QByteArray head = file.read(8);
  return head.size() < 8 || qFromLittleEndian<quint32>(head.constData() + 4) > file.size() - 8;
}

// Loads the file into a synthesiser that does not sound.
bool CanBeLoaded(const QByteArray& path) {
  const std::unique_ptr<fluid_settings_t, void (*)(fluid_settings_t*)> settings(new_fluid_settings(),
                                                                                &delete_fluid_settings);
  fluid_settings_setint(settings.get(), "synth.dynamic-sample-loading", 1);
  const std::unique_ptr<fluid_synth_t, void (*)(fluid_synth_t*)> synth(new_fluid_synth(settings.get()),
                                                                       &delete_fluid_synth);
  return synth && fluid_synth_sfload(synth.get(), path.constData(), 1) != FLUID_FAILED;
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

QString ChosenSoundFont() {
  if (QCoreApplication::instance() == nullptr) return {};
  return Settings().value(ChosenKey()).toString();
}

bool SetChosenSoundFont(const QString& path) {
  auto settings = Settings();
  if (path.isEmpty())
    settings.remove(ChosenKey());
  else
    settings.setValue(ChosenKey(), path);
  settings.sync();
  return settings.status() == QSettings::NoError;
}

QString SoundFontInUse() {
  const QString wish = qEnvironmentVariable("ZELMAR_SOUNDFONT");
  if (!wish.isEmpty()) return wish;
  const QString chosen = ChosenSoundFont();
  return QFileInfo(chosen).isReadable() ? chosen : InstalledSoundFont();
}

QString WhyNotASoundFont(const QString& path) {
  const QFileInfo file(path);
  if (!file.isFile()) return QStringLiteral("There is no file \"%1\".").arg(path);
  if (!file.isReadable()) return QStringLiteral("The file \"%1\" cannot be read.").arg(path);
  QuietSoundLibraries();
  const QByteArray name = QFile::encodeName(path);
  if (fluid_is_soundfont(name.constData()) == 0)
    return QStringLiteral("The file \"%1\" is not a SoundFont.").arg(path);
  if (IsCutOff(path) || !CanBeLoaded(name))
    return QStringLiteral("The file \"%1\" begins like a SoundFont and is damaged.").arg(path);
  TakeSynthComplaint();
  return {};
}

}  // namespace zelmar
