// Making a tune database from the template.
#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace zelmar {

class Connection;

// Name of the template in the application directory.
inline constexpr QLatin1String kTemplateDatabaseName("ZelmarTemplate.mdb");

// Which reference tables keep the template's rows.
struct StandardTables {
  bool composers = true;
  bool categories = true;
  bool periods = true;
  bool ensembles = true;
  bool countries = true;
};

// Empty when a database may go by this name in the folder; else why not, as a sentence.
QString WhyNotADatabaseName(const QString& folder, const QString& name);

// Copies the template to `target` as a whole file, telling the percentage. Throws Failure, which says what
// went wrong; then nothing of the copy is left behind.
void CopyTemplate(const QString& source, const QString& target, const std::function<void(int)>& progress);

// Writes what the database says about itself, and puts one row "Empty" into each reference table that does
// not keep the template's rows. Throws DatabaseError.
void FillNewDatabase(const std::shared_ptr<Connection>& connection, const QString& title,
                     const QString& description, const StandardTables& standard);

// Removes a database file with what the engine keeps beside it.
void RemoveDatabaseFile(const QString& path);

}  // namespace zelmar
