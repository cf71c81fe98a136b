#include "shell/help_book.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHelpContentItem>
#include <QHelpContentModel>
#include <QHelpEngine>
#include <QHelpEngineCore>
#include <QHelpIndexModel>
#include <QHelpLink>
#include <QTemporaryDir>
#include <QThread>

#include "model/globals.h"
#include "platform/paths.h"

namespace zelmar {

namespace {

constexpr QLatin1String kNamespace("zelmar.help");
constexpr QLatin1String kBookRoot("qthelp://zelmar.help/help/ZelmarHelp/");

QString BookFile() {
  return ResolvePath(Global().HelpPath + QStringLiteral("\\ZelmarHelp\\ZelmarHelp.qch"));
}

bool Register(const QString& book, const QString& collection) {
  QHelpEngineCore maker(collection);
  maker.setReadOnly(false);
  return maker.setupData() && maker.registerDocumentation(book);
}

struct BookInUse {
  std::shared_ptr<HelpBook> book;
  QString file;
};

BookInUse& TheBook() {
  static BookInUse in_use;
  return in_use;
}

}  // namespace

// The collection only says which book is registered. It is made for this run, so that nothing is remembered
// of a book that the program has renewed or that lies elsewhere now.
struct HelpBook::Parts {
  explicit Parts(const QString& file) : engine(folder.filePath(QStringLiteral("ZelmarHelp.qhc"))) {
    // The engine reads contents and index in threads of its own as soon as it is set up: only once, and
    // complete.
    readable = Register(file, engine.collectionFile()) && engine.setupData() &&
               engine.registeredDocumentations().contains(kNamespace);
  }

  // The engine does not bear to end while its threads still read.
  ~Parts() {
    if (!readable) return;
    while (engine.contentModel()->isCreatingContents() || engine.indexModel()->isCreatingIndex())
      QThread::msleep(1);
  }

  QTemporaryDir folder;
  QHelpEngine engine;
  bool readable = false;
};

std::shared_ptr<HelpBook> HelpBook::Open() {
  BookInUse& in_use = TheBook();
  const QString file = BookFile();
  if (in_use.book && in_use.file == file) return in_use.book;
  in_use.book.reset();
  if (!QFileInfo(file).isFile()) return nullptr;
  static const bool ends_with_application = [] {
    qAddPostRoutine([] { TheBook().book.reset(); });
    return true;
  }();
  Q_UNUSED(ends_with_application);
  const std::shared_ptr<HelpBook> book(new HelpBook(file));
  if (book->parts_->readable) in_use = {book, file};
  return in_use.book;
}

HelpBook::HelpBook(const QString& file) : parts_(std::make_unique<Parts>(file)) {}

HelpBook::~HelpBook() = default;

QUrl HelpBook::PageOfContext(int help_context) const {
  const auto links = parts_->engine.documentsForIdentifier(QStringLiteral("context%1").arg(help_context));
  return links.isEmpty() ? QUrl() : links.first().url;
}

QUrl HelpBook::PageNamed(const QString& name) const {
  return parts_->engine.findFile(QUrl(kBookRoot + name));
}

QByteArray HelpBook::Read(const QUrl& address) const {
  return parts_->engine.fileData(address);
}

QAbstractItemModel* HelpBook::Contents() const {
  return parts_->engine.contentModel();
}

QUrl HelpBook::PageInContents(const QModelIndex& place) const {
  const QHelpContentItem* const item = parts_->engine.contentModel()->contentItemAt(place);
  return item != nullptr ? item->url() : QUrl();
}

QAbstractItemModel* HelpBook::Index() const {
  return parts_->engine.indexModel();
}

void HelpBook::NarrowIndex(const QString& text) {
  // Without a wildcard the words that begin with the text are only put first.
  parts_->engine.indexModel()->filter(text, text.isEmpty() ? QString() : QStringLiteral("*%1*").arg(text));
}

QList<HelpPageLink> HelpBook::PagesOfKeyword(const QString& keyword) const {
  QList<HelpPageLink> pages;
  for (const QHelpLink& link : parts_->engine.documentsForKeyword(keyword))
    pages.append({link.title, link.url});
  return pages;
}

}  // namespace zelmar
