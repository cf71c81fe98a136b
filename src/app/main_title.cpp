#include "app/main_title.h"

#include <QWidget>

#include "platform/widgets/widget_services.h"
#include "shell/unsaved_work.h"

namespace zelmar {

namespace {

// Where the system puts its mark.
const QString kPlaceOfMark = QStringLiteral("[*]");

// "Zelmar - [Zelmar - Staff view]" as "Zelmar - Staff view".
QString SaidOnce(const QString& title) {
  const QString doubled = QStringLiteral("%1 - [%1").arg(QString(kApplicationTitle));
  if (!title.startsWith(doubled) || !title.endsWith(QLatin1Char(']'))) return title;
  QString shorter = title.mid(QString(kApplicationTitle).size() + 4).chopped(1).trimmed();
  if (shorter.endsWith(QLatin1String(" -"))) shorter.chop(2);
  return shorter;
}

}  // namespace

void TidyMainTitle(QWidget& window) {
  const bool unsaved = UnsavedTune() != nullptr;
  const QString title = SaidOnce(window.windowTitle().remove(kPlaceOfMark));
  window.setWindowTitle(unsaved ? title + kPlaceOfMark : title);
  window.setWindowModified(unsaved);
}

void RenewMainTitle(QWidget& window) {
  if (window.isWindowModified() == (UnsavedTune() != nullptr)) return;
  // The area takes whatever is set here for the part of the main window alone, and adds that of a maximised
  // one.
  window.setWindowTitle(kApplicationTitle);
}

}  // namespace zelmar
