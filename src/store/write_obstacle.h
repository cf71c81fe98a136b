// What keeps a database file from being changed, as its disk and its rights have it.
#pragma once

#include <QString>

#include "store/database_error.h"

namespace zelmar {

enum class WriteObstacle { kNone, kReadOnlyMedium, kProtected, kFullDisk };

// What can be seen without a change being tried: a read-only medium, and missing rights of this user to the
// file or to its folder, where the engine keeps its log. Whether the disk is full only a change can tell.
WriteObstacle ObstacleInSight(const QString& path);

// What is behind a failure of the engine, by its own primary code and by the number that the operating system
// gave it (0 for none). None for a failure that has other reasons.
WriteObstacle ObstacleBehind(const QString& path, int engine_code, int system_error);

// The database_error that stands for the obstacle.
int ErrorNumberOf(WriteObstacle obstacle);

// The obstacle as the end of a sentence: "it is on a read-only medium". Empty for none.
QString ReasonOf(WriteObstacle obstacle);

// A change that cannot be made for what is in its way, with the obstacle's number. `detail`, which may be
// empty, ends the sentence in brackets.
DatabaseError ObstacleError(WriteObstacle obstacle, const QString& detail = {});

}  // namespace zelmar
