// make_application_directory <directory> <build folder>: a working application directory from what was built.

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <cstdio>

#include "model/first_start.h"
#include "platform/failure.h"

namespace {

// A program that runs cannot be written over, so the new one takes its name.
bool RenewProgram(const QString& from, const QString& to) {
  const QFileInfo built(from), there(to);
  if (there.exists() && there.lastModified() >= built.lastModified() && there.size() == built.size())
    return true;
  const QString fresh = to + QStringLiteral(".new");
  QFile::remove(fresh);
  if (!QFile::copy(from, fresh)) return false;
  QFile::remove(to);
  return QFile::rename(fresh, to);
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  if (argc != 3) {
    std::fprintf(stderr, "usage: make_application_directory <directory> <build folder>\n");
    return 2;
  }
  const QString directory = QString::fromLocal8Bit(argv[1]);
  const QString build = QString::fromLocal8Bit(argv[2]);
  try {
    zelmar::FillApplicationDirectory(directory, build);
  } catch (const zelmar::Failure& failure) {
    std::fprintf(stderr, "Zelmar: %s\n", qPrintable(failure.Description()));
    return 1;
  }
  if (!RenewProgram(build + QStringLiteral("/src/zelmar"), directory + QStringLiteral("/zelmar"))) {
    std::fprintf(stderr, "Zelmar: the program cannot be copied to %s.\n", qPrintable(directory));
    return 1;
  }
  return 0;
}
