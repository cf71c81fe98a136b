// Failures of the tune database in words for a person.
#pragma once

#include <QString>
#include <QStringList>

namespace zelmar {

class DatabaseError;
class Failure;

// What the failure means, as a sentence.
QString WordsForPerson(const Failure& failure);

// Why the file at `path` could not be opened as a database, as a sentence.
QString WordsOfFailedOpening(const DatabaseError& failure, const QString& path);

// How far the save of a tune came.
struct SaveProgress {
  QStringList parts;        // that it writes, in order, as a person calls them
  qsizetype whole = 0;      // how many of them are in the database as the tune has them
  bool begun = false;       // the next one is changed there and not whole
  qsizetype events = 0;     // rows of the part "notes" that are there
  bool first_time = false;  // the database knew no tune of that name

  bool Wrote() const { return whole > 0 || begun; }
};

// What the database holds of the tune after a save that went no farther, as sentences: what was written, and
// what is no longer whole.
QString WordsOfRemains(const SaveProgress& progress);

// All that is told of a save that a failure ended. `counts_as_changed` is what becomes of the tune in memory.
QString WordsOfFailedSave(const QString& code_name, const Failure& failure, const SaveProgress& progress,
                          bool counts_as_changed);

}  // namespace zelmar
