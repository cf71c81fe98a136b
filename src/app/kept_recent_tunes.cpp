#include "app/kept_recent_tunes.h"

#include "platform/failure.h"
#include "platform/ignoring_failures.h"
#include "platform/paths.h"
#include "store/connect_database.h"
#include "store/connection.h"
#include "store/recordset.h"

namespace zelmar {

namespace {

std::unique_ptr<Recordset> Rows(const std::shared_ptr<Connection>& connection) {
  return Recordset::OpenTable(connection, QStringLiteral("tblRecentFiles"), CursorType::kStatic,
                              LockType::kBatchOptimistic);
}

}  // namespace

void KeptRecentTunes::Read(const std::shared_ptr<Connection>& connection) {
  Globals& globals = Global();
  const auto rows = Rows(connection);
  for (std::size_t entry = 0; !rows->Eof(); ++entry, rows->MoveNext()) {
    if (entry >= globals.RecentCodeNames.size()) throw SubscriptError();
    globals.RecentCodeNames[entry] = rows->Text(QStringLiteral("CodeName"));
    globals.RecentCaptions[entry] = rows->Text(QStringLiteral("Caption"));
  }
  written_ = globals.RecentCodeNames;
}

void KeptRecentTunes::Write() {
  std::shared_ptr<Connection> connection;
  ConnectDatabase(connection);
  if (!Global().DatabaseFailed) WriteTo(connection);
}

void KeptRecentTunes::WriteChange() {
  if (written_ == Global().RecentCodeNames) return;
  IgnoringFailures([this] { WriteTo(Connection::Open(ResolvePath(Global().DatabasePath))); });
}

void KeptRecentTunes::WriteTo(const std::shared_ptr<Connection>& connection) {
  // That a library can only be read is known by then.
  if (connection->Obstacle() != WriteObstacle::kNone) return;
  const Globals& globals = Global();
  // As one: a list that is longer than it may be would keep the next start from reading it.
  connection->Together([&connection, &globals] {
    connection->Execute(QStringLiteral("delete * from tblRecentFiles"));
    const auto rows = Rows(connection);
    for (std::size_t entry = 0; entry < globals.RecentCodeNames.size(); ++entry) {
      if (globals.RecentCodeNames[entry].isEmpty()) continue;
      rows->AddNew();
      rows->SetValue(QStringLiteral("CodeName"), globals.RecentCodeNames[entry]);
      rows->SetValue(QStringLiteral("Caption"), globals.RecentCaptions[entry]);
      rows->UpdateBatch();
    }
  });
  written_ = globals.RecentCodeNames;
}

}  // namespace zelmar
