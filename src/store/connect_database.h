// Short connections to the tune database that DatabasePath names.
#pragma once

#include <QString>
#include <memory>

namespace zelmar {

class Connection;

// Opens a connection. When that fails it tells the user, sets DatabaseFailed and leaves `connection` null;
// callers test DatabaseFailed. The connection closes with its last holder.
void ConnectDatabase(std::shared_ptr<Connection>& connection);

// Why the last ConnectDatabase failed, as a sentence; empty when it did not.
QString ConnectFailureWords();

}  // namespace zelmar
