// Databases that can be read and take no row.
#pragma once

#include <gtest/gtest.h>

#include "app/option_windows_fixture.h"
#include "support/media.h"
#include "support/other_program.h"
#include "support/sample_database.h"

namespace zelmar {

// Files grow so far and no farther: enough for the index of the database's log, too little for a row with a
// long text in the log itself.
inline constexpr rlim_t kRoomWithoutLongTexts = 34000;
inline QString LongText() {
  return QString(60000, u'x');
}

using testing_support::LockedDatabase;
using testing_support::ShutDatabase;

// Neither the file nor its folder can be written to.
class ReadOnlyDatabase : public testing_support::ReadOnlyFolder {
 public:
  explicit ReadOnlyDatabase(const testing_support::SampleDatabase& database)
      : ReadOnlyFolder(database.Directory()) {}

  // How what is told of a failed change begins.
  QString Words() const {
    return QStringLiteral("The database file cannot be written to: ") + ReasonOf(Obstacle());
  }
};

}  // namespace zelmar
