// How much can still be written to a disk.
#pragma once

#include <QString>
#include <cstdint>
#include <functional>

namespace zelmar {

// The bytes that this user can still write in the folder of the file `path`, as the disk tells them; a limit
// of the user's own is not known to it. The largest number where it does not tell.
std::uint64_t RoomOnDisk(const QString& path);

// Puts another answer in place, for tests; an empty function returns to the disk's own.
void SetRoomOnDisk(std::function<std::uint64_t(const QString& path)> room);

}  // namespace zelmar
