// The help book: one compiled file of pages with their contents, index and topic numbers.
//
// Nothing of it is loaded until it is asked for the first time.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>
#include <memory>

class QAbstractItemModel;
class QModelIndex;

namespace zelmar {

struct HelpPageLink {
  QString title;
  QUrl address;
};

class HelpBook {
 public:
  // The book beside the help pages in use; null where there is none that can be read.
  static std::shared_ptr<HelpBook> Open();

  // The address of the page that answers to the topic number; empty when the book has none.
  QUrl PageOfContext(int help_context) const;
  // The address of a page of the book by its name, such as "Introduction.htm"; empty when there is none.
  QUrl PageNamed(const QString& name) const;
  // What lies at an address of the book; empty when nothing does.
  QByteArray Read(const QUrl& address) const;

  // The chapters and their pages, as a tree. It fills shortly after it was asked for.
  QAbstractItemModel* Contents() const;
  QUrl PageInContents(const QModelIndex& place) const;
  // The keywords in the order of the alphabet, filled as the contents are.
  QAbstractItemModel* Index() const;
  // Leaves in the index what begins with or holds the text.
  void NarrowIndex(const QString& text);
  QList<HelpPageLink> PagesOfKeyword(const QString& keyword) const;

  ~HelpBook();
  HelpBook(const HelpBook&) = delete;
  HelpBook& operator=(const HelpBook&) = delete;

 private:
  explicit HelpBook(const QString& file);

  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace zelmar
