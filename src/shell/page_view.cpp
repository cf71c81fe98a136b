#include "shell/page_view.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "model/globals.h"
#include "model/text_pages.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "shell/what_is_there.h"

namespace zelmar {

namespace {

void OpenOutside(const QString& address) {
  if (const auto pages = Platform().pages) pages->OpenWebAddress(address);
}

}  // namespace

bool IsWebAddress(const QString& page) {
  return page.startsWith(QLatin1String("http://"), Qt::CaseInsensitive) ||
         page.startsWith(QLatin1String("https://"), Qt::CaseInsensitive);
}

PageView::PageView(QWidget* parent) : QTextBrowser(parent) {
  document()->setDocumentMargin(16);
  setAccessibleName(tr("Page"));
  connect(this, &QTextBrowser::sourceChanged, this,
          [this] { setAccessibleName(documentTitle().isEmpty() ? tr("Page") : documentTitle()); });
}

void PageView::ShowPage(const QString& page) {
  if (IsWebAddress(page)) {
    OpenOutside(page);
    return;
  }
  const QString path = ResolvePath(page);
  if (!QFileInfo(path).isFile()) {
    clear();
    return;
  }
  if (!MayRead(path)) folders_.append(QFileInfo(path).canonicalPath());
  setSource(QUrl::fromLocalFile(path));
}

bool PageView::MayRead(const QString& path) const {
  const QString file = QFileInfo(path).canonicalFilePath();
  if (file.isEmpty()) return true;  // nothing is there to be read
  const auto within = [&file](const QString& folder) {
    const QString root = QFileInfo(folder).canonicalFilePath();
    return !root.isEmpty() && StaysInside(root, QDir(root).relativeFilePath(file));
  };
  return within(ResolvePath(Global().HelpPath)) || std::any_of(folders_.begin(), folders_.end(), within);
}

// Pages take their colours from the palette when they are read.
void PageView::changeEvent(QEvent* event) {
  QTextBrowser::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && !source().isEmpty()) reload();
}

void SayPageOutside(const QString& name) {
  ShowMessage(MessageIcon::kExclamation,
              QStringLiteral("\"%1\" leads outside the help pages and is not shown.").arg(name));
}

void PageView::doSetSource(const QUrl& name, QTextDocument::ResourceType type) {
  if (IsWebAddress(name.toString()) || name.scheme() == QLatin1String("mailto")) {
    OpenOutside(name.toString());
    return;
  }
  const QUrl whole = source().resolved(name);
  if (whole.isLocalFile() && !MayRead(ResolvePath(whole.toLocalFile()))) {
    SayPageOutside(name.toString());
    return;
  }
  QTextBrowser::doSetSource(name, type);
}

QVariant PageView::loadResource(int type, const QUrl& name) {
  const QUrl whole = source().resolved(name);
  if (!whole.isLocalFile() && !whole.isRelative()) return {};
  const QString written = whole.isLocalFile() ? whole.toLocalFile() : whole.path();
  const QString path = ResolvePath(written);
  if (!MayRead(path)) {
    if (refused_.contains(path)) return {};
    refused_.append(path);
    // Pictures are asked for in the middle of painting.
    QMetaObject::invokeMethod(
        this, [text = name.toString()] { SayPageOutside(text); }, Qt::QueuedConnection);
    return {};
  }
  // An empty page stands where none is; a missing picture takes its own place.
  if (type == QTextDocument::HtmlResource) return OnlyWhatIsThere(ShownForm(ReadPage(path)));
  QFile file(path);
  if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) return {};
  return file.readAll();
}

}  // namespace zelmar
