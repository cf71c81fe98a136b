// Removing what a tune has in the database, by its name. A name that is not a tune's (RequireTuneName) throws
// DatabaseError and nothing is removed. Each function removes all that it tells of, or throws DatabaseError
// and removes nothing.
#pragma once

#include <QString>
#include <memory>

namespace zelmar {

class Connection;

// The tune: its catalogue row, its words, its tracks and its event table, where it has one. Its themes stay.
// Throws (kTableExists) for a table of that name that holds no events.
void RemoveTune(const std::shared_ptr<Connection>& connection, const QString& code_name);

// What refers to a tune whose event table is gone: its rows of the catalogue, the chords, the tracks and the
// words.
void RemoveTuneReferences(const std::shared_ptr<Connection>& connection, const QString& code_name);

// An event table that no row of the catalogue claims. Throws (kTableExists) for a table that holds no events.
void DropEventTable(const std::shared_ptr<Connection>& connection, const QString& code_name);

// The rows of tblTracks, or of tblWords, that bear a name that the catalogue does not have.
void RemoveTrackRows(const std::shared_ptr<Connection>& connection, const QString& code_name);
void RemoveWordRows(const std::shared_ptr<Connection>& connection, const QString& code_name);

}  // namespace zelmar
