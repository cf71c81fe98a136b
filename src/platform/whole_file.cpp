#include "platform/whole_file.h"

#include <QSaveFile>

#include "platform/failure.h"

namespace zelmar {

void WriteWholeFile(const QString& path, const QByteArray& bytes) {
  QSaveFile file(path);
  // What waits in a buffer is no part of what a commit looks at.
  const bool opened = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
  if (opened && file.write(bytes) == bytes.size() && file.commit()) return;
  throw Failure(error_number::kFileAccess,
                QStringLiteral("The file %1 cannot be written: %2.").arg(path, file.errorString()));
}

}  // namespace zelmar
