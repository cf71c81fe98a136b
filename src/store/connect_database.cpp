#include "store/connect_database.h"

#include "model/globals.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "store/connection.h"
#include "store/database_error.h"

namespace zelmar {

void ConnectDatabase(std::shared_ptr<Connection>& connection) {
  Globals& globals = Global();
  globals.DatabaseFailed = false;
  connection.reset();
  try {
    connection = Connection::Open(ResolvePath(globals.DatabasePath));
  } catch (const DatabaseError&) {
    ShowMessage(MessageIcon::kInformation,
                QStringLiteral("Zelmar Database cannot be found at the path = ") + globals.DatabasePath +
                    QStringLiteral(
                        "   Please go to the Options menu and choose 'Connect Database'  in order to connect "
                        "to your current database of melodies, composers etc."));
    globals.DatabaseFailed = true;
  }
}

}  // namespace zelmar
