// The pages of texts: one file for each record of the library, named after it.
//
// A page is UTF-8 where that can be; one that is not is read as Latin-1, as old pages were written. What is
// written is UTF-8, aside first and then in place of the old page, so that a page is never half there.
#pragma once

#include <QString>

namespace zelmar {

inline constexpr qint64 kLongestPage = 1024 * 1024;  // bytes that are read of one page

// The folder "Help/texts" of the application directory.
QString PageFolder();

// The file of the page of a record, which need not be there: its name is `value` with the first two blanks as
// "_". Empty for an empty value and for one that would lead out of the folder, which a message tells: no such
// page is read, written or deleted.
QString PageOf(const QString& value);

// The page that shows what has no page of its own, such as the description of a tune.
QString ScratchPage();

struct PageText {
  QString text;  // its beginning alone where it is too long
  bool is_there = false;
  bool is_cut = false;
  QString trouble = {};  // why a page that is there cannot be read
};

// A missing page is an empty one, and so is one that cannot be read.
PageText ReadPage(const QString& path);
// `page` as it is shown: with a line that says so where it is cut.
QString ShownForm(const PageText& page);

// Makes the folder where there is none. Throws Failure, and leaves the page as it was, when it cannot be
// written.
void WritePage(const QString& path, const QString& text);
// Throws Failure when the page is there and cannot be removed.
void RemovePage(const QString& path);
// Gives the page of one record to another. Throws Failure, and leaves both as they were, when that has one
// already.
void MovePage(const QString& from, const QString& to);

}  // namespace zelmar
