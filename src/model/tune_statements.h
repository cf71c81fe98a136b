// A tune as the text of statements that would rebuild it event by event: a developer's aid.
#pragma once

#include <QString>

namespace zelmar {

class Tune;

// Writes `base_name`.TUN in the application directory. Throws Failure when the name leads outside that folder
// or the file cannot be written. Event type, volume and channel are not part of the statements.
void WriteTuneStatements(Tune& tune, const QString& base_name);

}  // namespace zelmar
