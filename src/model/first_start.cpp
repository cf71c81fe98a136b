#include "model/first_start.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include "model/globals.h"
#include "model/path_file.h"
#include "platform/failure.h"

namespace zelmar {

namespace {

constexpr QLatin1String kTemplateName("ZelmarTemplate.mdb");
constexpr QLatin1String kDatabaseName("Zelmar.mdb");

[[noreturn]] void FailOn(const QString& path, const QString& reason) {
  throw Failure(error_number::kFileAccess, QStringLiteral("%1 cannot be made: %2.").arg(path, reason));
}

// Copies under a temporary name first, so that a copy is whole or not there.
void CopyWhole(const QString& from, const QString& to) {
  const QString partial = to + QStringLiteral(".part");
  QFile::remove(partial);
  QFile source(from);
  if (!source.copy(partial)) FailOn(to, source.errorString());
  QFile::setPermissions(partial, QFile::permissions(partial) | QFileDevice::WriteOwner);
  QFile::remove(to);
  if (!QFile::rename(partial, to)) FailOn(to, QStringLiteral("the copy cannot be renamed"));
}

void Renew(const QString& from, const QString& to) {
  const QFileInfo old(to);
  if (old.exists() && old.lastModified() >= QFileInfo(from).lastModified() &&
      old.size() == QFileInfo(from).size())
    return;
  if (!QDir().mkpath(QFileInfo(to).path())) FailOn(to, QStringLiteral("its folder cannot be made"));
  CopyWhole(from, to);
}

void RenewTree(const QString& from, const QString& to) {
  const QDir root(from);
  QDirIterator files(from, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString file = files.next();
    Renew(file, to + QLatin1Char('/') + root.relativeFilePath(file));
  }
}

// A path file that leads to the starter database, with the built-in synthesiser.
void WriteFirstPathFile(const QString& path, const QString& database) {
  const Globals before = Global();
  Globals& globals = Global();
  globals = Globals();
  globals.DatabasePath = database;
  const QDateTime now = QDateTime::currentDateTime();
  globals.DatabaseChangeDate = now.date();
  globals.DatabaseChangeTime = QTime(now.time().hour(), now.time().minute(), now.time().second());
  globals.DatabaseChangeComment = QStringLiteral("Starter database");
  globals.MidiDeviceName = QStringLiteral("Zelmar synthesiser");
  globals.MidiMode = QStringLiteral("GM2");
  try {
    WritePathFile(path, PathFileWriter::kMidiSetup);
  } catch (...) {
    Global() = before;
    throw;
  }
  Global() = before;
}

}  // namespace

void FillApplicationDirectory(const QString& directory, const QString& source) {
  const QString folder = QDir(directory).absolutePath();
  const QString shipped = QDir(source).absolutePath();
  if (!QDir().mkpath(folder)) FailOn(folder, QStringLiteral("the folder cannot be made"));
  const QString own_template = folder + QLatin1Char('/') + kTemplateName;
  Renew(shipped + QLatin1Char('/') + kTemplateName, own_template);
  RenewTree(shipped + QStringLiteral("/Help"), folder + QStringLiteral("/Help"));

  const QString database = folder + QLatin1Char('/') + kDatabaseName;
  const QString path_file = folder + QLatin1Char('/') + kPathFileName;
  // Settings that were lost are not made up again: the person's database may be another one.
  if (QFileInfo::exists(database)) return;
  if (!QFileInfo::exists(path_file)) WriteFirstPathFile(path_file, QDir::toNativeSeparators(database));
  CopyWhole(own_template, database);
}

}  // namespace zelmar
