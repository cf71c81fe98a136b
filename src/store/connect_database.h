// Short connections to the tune database that DatabasePath names.
#pragma once

#include <QString>
#include <memory>

namespace zelmar {

class Connection;

// Who tells the user that a library can only be read: ConnectDatabase once for each library and reason, or a
// caller that is about to change it and tells what comes of that.
enum class ReadOnlyNotice { kOnce, kLeftToCaller };

// Opens a connection. When that fails it tells the user, sets DatabaseFailed and leaves `connection` null;
// callers test DatabaseFailed. The connection closes with its last holder. A library that cannot be changed
// is opened for reading.
void ConnectDatabase(std::shared_ptr<Connection>& connection, ReadOnlyNotice notice = ReadOnlyNotice::kOnce);

// Why the last ConnectDatabase failed, as a sentence; empty when it did not.
QString ConnectFailureWords();

// That the database in use can only be read, and why, as a sentence; empty when it can be changed.
QString ReadOnlyWords(const Connection& connection);

}  // namespace zelmar
