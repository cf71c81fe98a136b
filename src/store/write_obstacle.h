// What keeps a database file from being changed, as its disk and its rights have it.
#pragma once

#include <QString>

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

}  // namespace zelmar
