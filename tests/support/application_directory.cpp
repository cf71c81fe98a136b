#include "support/application_directory.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "platform/paths.h"

namespace zelmar::testing_support {

TemporaryApplicationDirectory::TemporaryApplicationDirectory() {
  SetApplicationDirectory(directory_.path());
}

TemporaryApplicationDirectory::~TemporaryApplicationDirectory() {
  SetApplicationDirectory({});
}

void TemporaryApplicationDirectory::Write(const QString& name, const QByteArray& bytes) const {
  QDir().mkpath(QFileInfo(In(name)).path());
  QFile file(In(name));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(file.errorString());
  ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray TemporaryApplicationDirectory::Read(const QString& name) const {
  QFile file(In(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace zelmar::testing_support
