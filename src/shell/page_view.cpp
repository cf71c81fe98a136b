#include "shell/page_view.h"

#include <QFile>
#include <QFileInfo>

#include "platform/paths.h"
#include "platform/services.h"

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
}

void PageView::ShowPage(const QString& page) {
  if (IsWebAddress(page)) {
    OpenOutside(page);
    return;
  }
  const QString path = ResolvePath(page);
  if (QFileInfo(path).isFile())
    setSource(QUrl::fromLocalFile(path));
  else
    clear();
}

void PageView::doSetSource(const QUrl& name, QTextDocument::ResourceType type) {
  if (IsWebAddress(name.toString()) || name.scheme() == QLatin1String("mailto")) {
    OpenOutside(name.toString());
    return;
  }
  QTextBrowser::doSetSource(name, type);
}

QVariant PageView::loadResource(int type, const QUrl& name) {
  const QUrl whole = source().resolved(name);
  if (!whole.isLocalFile() && !whole.isRelative()) return {};
  const QString written = whole.isLocalFile() ? whole.toLocalFile() : whole.path();
  QFile file(ResolvePath(written));
  if (!QFileInfo(file.fileName()).isFile() || !file.open(QIODevice::ReadOnly))
    // An empty page stands where none is; a missing picture takes its own place.
    return type == QTextDocument::HtmlResource ? QVariant(QString()) : QVariant();
  const QByteArray bytes = file.readAll();
  if (type != QTextDocument::HtmlResource) return bytes;
  const QString text = QString::fromUtf8(bytes);
  // Old pages were not written in UTF-8.
  return text.contains(QChar::ReplacementCharacter) ? QString::fromLatin1(bytes) : text;
}

}  // namespace zelmar
