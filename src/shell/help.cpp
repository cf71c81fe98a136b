#include "shell/help.h"

#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <optional>

#include "model/globals.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "shell/frm_help.h"
#include "shell/frm_help_modal.h"
#include "shell/page_view.h"

namespace zelmar {

namespace {

constexpr std::int16_t kFrameWaitMilliseconds = 100;

bool HasDrive(const QString& page) {
  return page.size() > 1 && page[0].isLetter() && page[1] == QLatin1Char(':');
}

// Where the page lies: its path, or nothing, which shows an empty place. Without a value it leads outside.
std::optional<QString> PlaceOfPage(const QString& page) {
  if (IsWebAddress(page) || QDir::isAbsolutePath(page)) return page;
  // A place of a system with drives, seen on one without, holds nothing.
  if (HasDrive(page)) return QString();
  QString name = page;
  while (name.startsWith(QLatin1Char('\\')) || name.startsWith(QLatin1Char('/'))) name.remove(0, 1);
  const QString help = ResolvePath(Global().HelpPath);
  if (name.isEmpty() || !QFileInfo(help).isDir()) return QString();
  if (!StaysInside(help, name)) return std::nullopt;
  return help + QLatin1Char('/') + name;
}

}  // namespace

void ShowHelpPage(const QString& page, HelpPlace place, const QString& title, const QString& target_frame) {
  const QString caption = title.isEmpty() ? QStringLiteral("Quick Help Hints") : title;
  const std::optional<QString> place_of_page = PlaceOfPage(page);
  if (!place_of_page) {
    SayPageOutside(page);
    return;
  }
  const QString& whole = *place_of_page;
  if (IsWebAddress(whole)) {
    if (const auto pages = Platform().pages) pages->OpenWebAddress(whole);
    return;
  }
  if (place != HelpPlace::kPanel) {
    FrmHelpModal::ShowPage(whole, caption, place == HelpPlace::kModalWindow);
    return;
  }
  const QPointer<FrmHelp> panel = FrmHelp::Instance();
  panel->ShowOnTop();
  if (!target_frame.isEmpty()) WaitMilliseconds(kFrameWaitMilliseconds);
  if (panel) panel->ShowPage(whole);
}

void WaitMilliseconds(std::int16_t milliseconds) {
  const auto start = static_cast<float>(SecondsSinceMidnight());
  const double end = start + milliseconds / 1000.0;
  // A clock that goes back at midnight ends the wait.
  for (double now = SecondsSinceMidnight(); now < end && now >= start - 1.0; now = SecondsSinceMidnight()) {
    ServeEvents();
    WaitUntil(end);
  }
}

}  // namespace zelmar
