#include "app/logo.h"

#include <QImageReader>
#include <QPixmapCache>

#include "platform/paths.h"

namespace zelmar {

QPixmap LogoWithin(const QSize& largest, double ratio, QLatin1String name) {
  const QString file = ResolvePath(ApplicationDirectory() + QStringLiteral("/help/pictures/") + name);
  const QSize pixels = largest * ratio;
  const QString key = QStringLiteral("logo %1 %2 %3").arg(file).arg(pixels.width()).arg(pixels.height());
  QPixmap logo;
  if (!QPixmapCache::find(key, &logo)) {
    QImageReader reader(file);
    // The reader makes the small picture from the start, which spares most of the work.
    reader.setScaledSize(reader.size().scaled(pixels, Qt::KeepAspectRatio));
    logo = QPixmap::fromImage(reader.read());
    if (!logo.isNull()) QPixmapCache::insert(key, logo);
  }
  logo.setDevicePixelRatio(ratio);
  return logo;
}

}  // namespace zelmar
