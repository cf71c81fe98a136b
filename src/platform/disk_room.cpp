#include "platform/disk_room.h"

#include <QFileInfo>
#include <filesystem>
#include <limits>
#include <utility>

namespace zelmar {

namespace {

std::function<std::uint64_t(const QString&)>& OtherAnswer() {
  static std::function<std::uint64_t(const QString&)> answer;
  return answer;
}

}  // namespace

std::uint64_t RoomOnDisk(const QString& path) {
  if (OtherAnswer()) return OtherAnswer()(path);
  std::error_code failed;
  const auto space = std::filesystem::space(QFileInfo(path).path().toStdU16String(), failed);
  return failed ? std::numeric_limits<std::uint64_t>::max() : space.available;
}

void SetRoomOnDisk(std::function<std::uint64_t(const QString& path)> room) {
  OtherAnswer() = std::move(room);
}

}  // namespace zelmar
