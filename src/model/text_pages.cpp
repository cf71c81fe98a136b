#include "model/text_pages.h"

#include <QDir>
#include <QFileInfo>
#include <QStringDecoder>

#include "model/globals.h"
#include "platform/failure.h"
#include "platform/file_names.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "platform/whole_file.h"

namespace zelmar {

namespace {

[[noreturn]] void Fail(const QString& path, const char* what, const QString& reason) {
  throw Failure(error_number::kFileAccess,
                QStringLiteral("The page %1 cannot be %2: %3.").arg(path, QLatin1String(what), reason));
}

// What the end of the bytes cuts in two would make a page of UTF-8 look like one that is not.
void DropHalfLetter(QByteArray& bytes) {
  const auto byte = [&bytes] { return static_cast<unsigned char>(bytes.back()); };
  while (!bytes.isEmpty() && (byte() & 0xC0U) == 0x80U) bytes.chop(1);
  if (!bytes.isEmpty() && byte() >= 0xC0U) bytes.chop(1);
}

QString TextOf(const QByteArray& bytes) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
  QString text = decoder(bytes);
  return decoder.hasError() ? QString::fromLatin1(bytes) : text;
}

}  // namespace

QString PageFolder() {
  return ResolvePath(QStringLiteral("Help/texts"));
}

QString PageOf(const QString& value) {
  if (value.isEmpty()) return {};
  const QString name = BlanksToUnderscores(value) + QStringLiteral(".htm");
  if (const auto place = PlaceInFolder(PageFolder(), name)) return *place;
  ShowMessage(
      MessageIcon::kExclamation,
      QStringLiteral("\"%1\" cannot be the name of a page. No page is read, written or deleted under it.")
          .arg(value));
  return {};
}

QString ScratchPage() {
  return ResolvePath(QStringLiteral("Help/texts/temp.htm"));
}

PageText ReadPage(const QString& path) {
  PageText page;
  if (path.isEmpty() || !QFileInfo(path).isFile()) return page;
  page.is_there = true;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    page.trouble = file.errorString();
    return page;
  }
  QByteArray bytes = file.read(kLongestPage);
  page.is_cut = !file.atEnd();
  if (page.is_cut) DropHalfLetter(bytes);
  page.text = TextOf(bytes);
  return page;
}

QString ShownForm(const PageText& page) {
  if (!page.is_cut) return page.text;
  return QStringLiteral("<p><i>This page is too long to be shown. Here is its beginning.</i></p>") +
         page.text;
}

void WritePage(const QString& path, const QString& text) {
  const QString folder = QFileInfo(path).path();
  if (!QDir().mkpath(folder))
    Fail(path, "written", QStringLiteral("the folder %1 cannot be made").arg(folder));
  WriteWholeFile(path, text.toUtf8());
}

void RemovePage(const QString& path) {
  QFile file(path);
  if (!path.isEmpty() && file.exists() && !file.remove()) Fail(path, "removed", file.errorString());
}

void MovePage(const QString& from, const QString& to) {
  QFile file(from);
  if (from.isEmpty() || to.isEmpty() || from == to || !file.exists()) return;
  // A page whose name changes in case alone is its own neighbour.
  const bool is_taken = QFileInfo::exists(to) && QFileInfo(to) != QFileInfo(from);
  if (is_taken) Fail(from, "renamed", QStringLiteral("there is a page %1 already").arg(to));
  if (!file.rename(to)) Fail(from, "renamed", file.errorString());
}

}  // namespace zelmar
