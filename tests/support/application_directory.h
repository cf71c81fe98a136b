// A temporary application directory, gone with its owner.
#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace zelmar::testing_support {

class TemporaryApplicationDirectory {
 public:
  TemporaryApplicationDirectory();
  ~TemporaryApplicationDirectory();
  TemporaryApplicationDirectory(const TemporaryApplicationDirectory&) = delete;
  TemporaryApplicationDirectory& operator=(const TemporaryApplicationDirectory&) = delete;

  QString Path() const { return directory_.path(); }
  // Full path of a name in the directory.
  QString In(const QString& name) const { return directory_.filePath(name); }
  // Writes a file whole, making its folder.
  void Write(const QString& name, const QByteArray& bytes) const;
  QByteArray Read(const QString& name) const;

 private:
  QTemporaryDir directory_;
};

}  // namespace zelmar::testing_support
