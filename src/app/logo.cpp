#include "app/logo.h"

#include <QImageReader>

#include "platform/paths.h"

namespace zelmar {

QPixmap LogoWithin(const QSize& largest, double ratio, QLatin1String name) {
  QImageReader reader(ResolvePath(ApplicationDirectory() + QStringLiteral("/help/pictures/") + name));
  // The reader makes the small picture from the start, which spares most of the work.
  reader.setScaledSize(reader.size().scaled(largest * ratio, Qt::KeepAspectRatio));
  QPixmap logo = QPixmap::fromImage(reader.read());
  logo.setDevicePixelRatio(ratio);
  return logo;
}

}  // namespace zelmar
