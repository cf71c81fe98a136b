// A copy of the library that ships, for a test to read and change; it becomes the database in use and goes
// with its owner.
#pragma once

#include <QString>
#include <QTemporaryDir>

namespace zelmar::testing_support {

class TemplateDatabase {
 public:
  // `built` is the template database that the build made. Path() is empty when there is none.
  explicit TemplateDatabase(const QString& built);

  const QString& Path() const { return path_; }

 private:
  QTemporaryDir directory_;
  QString path_;
};

}  // namespace zelmar::testing_support
