#include "store/new_database.h"

#include <QFile>
#include <QFileInfo>

#include "platform/failure.h"
#include "platform/paths.h"
#include "store/connection.h"
#include "store/recordset.h"

namespace zelmar {

namespace {

constexpr qint64 kBlock = 256 * 1024;    // bytes copied between two looks at the progress
constexpr qsizetype kLongestName = 255;  // bytes of a file name, on all usual file systems

// A name that the operating systems and their paths give a meaning of its own.
constexpr QLatin1String kUnusableSigns("\\/:*?\"<>|");

// The statements for a reference table that starts without the template's rows.
struct EmptyTable {
  bool StandardTables::*keeps_rows;
  const char* emptying;
  const char* seeding;
};
constexpr EmptyTable kEmptyTables[] = {
    {&StandardTables::composers, "DELETE * FROM tblComposer",
     "INSERT INTO tblComposer VALUES ('Empty', 'No composers',0,0,'No country','No style')"},
    {&StandardTables::categories, "DELETE * FROM tblCategory",
     "INSERT INTO tblCategory VALUES ('Empty', 'No categories')"},
    {&StandardTables::periods, "DELETE * FROM tblStyles",
     "INSERT INTO tblStyles VALUES ('Empty',0,0, 'No styles')"},
    {&StandardTables::ensembles, "DELETE * FROM tblEnsemble", "INSERT INTO tblEnsemble VALUES ('Empty')"},
    {&StandardTables::countries, "DELETE * FROM tblCountry",
     "INSERT INTO tblCountry VALUES ('Empty','No countries',0,0)"},
};

[[noreturn]] void FailToMake(const QString& target, const QString& reason) {
  throw Failure(error_number::kFileAccess,
                QStringLiteral("The file %1 cannot be made: %2.").arg(target, reason));
}

// A file that goes with its owner unless it is kept.
class PartialFile {
 public:
  explicit PartialFile(const QString& path) : file(path) {}
  ~PartialFile() {
    file.close();
    if (!kept) file.remove();
  }
  PartialFile(const PartialFile&) = delete;
  PartialFile& operator=(const PartialFile&) = delete;

  QFile file;
  bool kept = false;
};

}  // namespace

QString WhyNotADatabaseName(const QString& folder, const QString& name) {
  if (name.trimmed().isEmpty()) return QStringLiteral("Please type a name for the new database.");
  for (const QChar sign : name) {
    if (sign.isPrint() && !QString(kUnusableSigns).contains(sign)) continue;
    return QStringLiteral("The name of a database cannot hold any of the signs %1.")
        .arg(QStringLiteral("\\ / : * ? \" < > |"));
  }
  const QString file_name = name + QStringLiteral(".mdb");
  // What the engine keeps beside the file has a longer name yet.
  if (QFile::encodeName(file_name + QStringLiteral("-journal")).size() > kLongestName)
    return QStringLiteral("The name of the database is too long.");
  if (!StaysInside(folder, file_name))
    return QStringLiteral("The name leads outside the folder %1.").arg(folder);
  if (QFileInfo::exists(ResolvePath(folder + QLatin1Char('/') + file_name)))
    return QStringLiteral("There is a file %1 already. Please choose another name.").arg(file_name);
  return {};
}

void CopyTemplate(const QString& source, const QString& target, const std::function<void(int)>& progress) {
  QFile original(source);
  if (!original.exists())
    throw Failure(error_number::kFileNotFound, QStringLiteral("The template %1 is missing.").arg(source));
  if (!original.open(QIODevice::ReadOnly))
    throw Failure(error_number::kFileAccess,
                  QStringLiteral("The template %1 cannot be read: %2.").arg(source, original.errorString()));
  // Under another name first, so that the database is whole or not there.
  PartialFile copy(target + QStringLiteral(".part"));
  if (!copy.file.open(QIODevice::WriteOnly | QIODevice::Truncate))
    FailToMake(target, copy.file.errorString());
  const qint64 size = original.size();
  for (qint64 done = 0; done < size;) {
    const QByteArray block = original.read(kBlock);
    if (block.isEmpty()) FailToMake(target, original.errorString());
    if (copy.file.write(block) != block.size() || !copy.file.flush())
      FailToMake(target, copy.file.errorString());
    done += block.size();
    progress(static_cast<int>(done * 100 / size));
  }
  copy.file.close();
  if (!copy.file.rename(target)) FailToMake(target, copy.file.errorString());
  copy.kept = true;
}

void FillNewDatabase(const std::shared_ptr<Connection>& connection, const QString& title,
                     const QString& description, const StandardTables& standard) {
  const auto info = Recordset::OpenTable(connection, QStringLiteral("tblDBInfo"));
  if (info->Eof()) info->AddNew();
  info->SetValue(QStringLiteral("Title"), title);
  info->SetValue(QStringLiteral("Description"), description);
  info->UpdateBatch();
  info->Close();
  for (const EmptyTable& table : kEmptyTables) {
    if (standard.*table.keeps_rows) continue;
    connection->Execute(QLatin1String(table.emptying));
    connection->Execute(QLatin1String(table.seeding));
  }
}

void RemoveDatabaseFile(const QString& path) {
  for (const char* ending : {"", "-wal", "-shm", "-journal"}) QFile::remove(path + QLatin1String(ending));
}

}  // namespace zelmar
