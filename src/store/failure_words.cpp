#include "store/failure_words.h"

#include <QFileInfo>

#include "platform/failure.h"
#include "store/database_error.h"

namespace zelmar {

namespace {

// "words", "words and tracks", "words, themes and tracks".
QString Enumerated(const QStringList& parts) {
  if (parts.size() < 2) return parts.join(QString());
  return parts.mid(0, parts.size() - 1).join(QStringLiteral(", ")) + QStringLiteral(" and ") + parts.last();
}

QString WordsOfWritten(const SaveProgress& progress) {
  QStringList written = progress.parts.mid(0, progress.whole);
  if (progress.begun && progress.events > 0)
    written.append(progress.events == 1 ? QStringLiteral("the first event")
                                        : QStringLiteral("the first %1 events").arg(progress.events));
  if (written.isEmpty()) return QStringLiteral("A part of it was written to the database before that.");
  return QStringLiteral("Written to the database before that: %1.").arg(written.join(QStringLiteral(", ")));
}

// What the database has of the parts that the save did not come to.
QString WordsOfUntouched(const SaveProgress& progress) {
  const QStringList parts = progress.parts.mid(progress.whole + (progress.begun ? 1 : 0));
  if (parts.isEmpty()) return {};
  return QStringLiteral("the %1 there %2")
      .arg(Enumerated(parts), progress.first_time ? QStringLiteral("are still missing")
                                                  : QStringLiteral("are those of an earlier save"));
}

}  // namespace

QString WordsForPerson(const Failure& failure) {
  const QString words = failure.Description();
  return words.endsWith(u'.') ? words : words + u'.';
}

QString WordsOfFailedOpening(const DatabaseError& failure, const QString& path) {
  if (failure.Number() == database_error::kNotADatabase)
    return QStringLiteral("The file %1 is not a database.").arg(path);
  if (failure.Number() == database_error::kInUse)
    return QStringLiteral("Another program holds the database %1.").arg(path);
  if (failure.Number() == database_error::kFileNotFound && !QFileInfo::exists(path))
    return QStringLiteral("There is no file %1.").arg(path);
  return QStringLiteral("The file %1 cannot be opened; perhaps it or its folder is protected.").arg(path);
}

QString WordsOfRemains(const SaveProgress& progress) {
  if (!progress.Wrote()) return QStringLiteral("Nothing was written to the database.");
  QStringList defects;
  if (progress.begun)
    defects.append(
        QStringLiteral("the %1 in the database are incomplete").arg(progress.parts.value(progress.whole)));
  if (const QString untouched = WordsOfUntouched(progress); !untouched.isEmpty()) defects.append(untouched);
  const QString written = WordsOfWritten(progress);
  if (defects.isEmpty()) return written;
  QString defect = defects.join(QStringLiteral(", and "));
  defect[0] = defect[0].toUpper();
  return written + QLatin1Char(' ') + defect + QStringLiteral("; save again.");
}

QString WordsOfFailedSave(const QString& code_name, const Failure& failure, const SaveProgress& progress,
                          bool counts_as_changed) {
  return QStringLiteral(
             "\"%1\" is not saved. %2\n\n%3 All other tunes in it are as they were. The tune in memory is "
             "whole%4.")
      .arg(code_name, WordsForPerson(failure), WordsOfRemains(progress),
           counts_as_changed ? QStringLiteral(" and still counts as changed") : QString());
}

}  // namespace zelmar
