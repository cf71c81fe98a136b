#include "shell/help_topics.h"

#include <QFileInfo>
#include <QUrl>

#include "model/globals.h"
#include "platform/paths.h"
#include "shell/command_table.h"
#include "shell/frm_help_modal.h"
#include "shell/help_book.h"
#include "shell/help_window.h"

namespace zelmar {

namespace {

QString BookPage(const QString& page) {
  return Global().HelpPath + QStringLiteral("\\ZelmarHelp\\") + page;
}

// A page that the table of commands does not name goes by its number.
QString ContextPage(int help_context) {
  const QString page = HelpPageOf(help_context);
  return page.isEmpty() ? QStringLiteral("Context%1.htm").arg(help_context) : page;
}

}  // namespace

void ShowHelpTopic(const QString& page, HelpPlace place) {
  const std::shared_ptr<HelpBook> book = HelpBook::Open();
  const QUrl address = book ? book->PageNamed(page) : QUrl();
  if (address.isValid())
    HelpWindow::ShowPage(book, address);
  else
    FrmHelpModal::ShowPage(BookPage(page), QStringLiteral("Zelmar Help"), place == HelpPlace::kModalWindow);
}

bool HasHelpContext(int help_context) {
  if (help_context == 0) return false;
  if (const std::shared_ptr<HelpBook> book = HelpBook::Open())
    return book->PageOfContext(help_context).isValid();
  return QFileInfo(ResolvePath(BookPage(ContextPage(help_context)))).isFile();
}

void ShowHelpContext(int help_context, HelpPlace place) {
  const std::shared_ptr<HelpBook> book = HelpBook::Open();
  const QUrl address = book ? book->PageOfContext(help_context) : QUrl();
  if (address.isValid())
    HelpWindow::ShowPage(book, address);
  else
    ShowHelpTopic(
        HasHelpContext(help_context) ? ContextPage(help_context) : QStringLiteral("Introduction.htm"), place);
}

}  // namespace zelmar
