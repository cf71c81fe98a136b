// Files that are written whole or not at all.
#pragma once

#include <QByteArray>
#include <QString>

namespace zelmar {

// Writes the bytes aside and then in place of the file. Throws Failure, and leaves the file as it was, when
// that cannot be.
void WriteWholeFile(const QString& path, const QByteArray& bytes);

}  // namespace zelmar
