// make_help_project <help folder> <output.qhp>: the project file of the help collection, made from the pages.
//
// A page says what it is in its head: its title; `help-context`, the topic numbers that it answers to;
// `chapter`, where it stands in the contents ("none" for a page that is no topic); `keywords`, what it is
// found under besides its title. A page named ContextN.htm answers to the topic number N.

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QRegularExpression>
#include <QXmlStreamWriter>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

struct Page {
  QString file;
  QString title;
  QString chapter;
  QStringList keywords;
  QStringList contexts;
};

// The chapters in their order; one that is not named here comes before the last.
const QStringList kChapters = {QStringLiteral("First steps"), QStringLiteral("Tunes"),
                               QStringLiteral("Playing"),     QStringLiteral("Looking and editing"),
                               QStringLiteral("Musicology"),  QStringLiteral("Setting up")};
const QString kOtherPages = QStringLiteral("More about the windows");

QString Meta(const QString& text, const char* name) {
  const QRegularExpression pattern(QStringLiteral("<meta\\s+name=\"%1\"\\s+content=\"([^\"]*)\"")
                                       .arg(QRegularExpression::escape(QLatin1String(name))),
                                   QRegularExpression::CaseInsensitiveOption);
  return pattern.match(text).captured(1).trimmed();
}

QStringList Parts(const QString& list) {
  QStringList parts;
  for (const QString& part : list.split(QLatin1Char(','), Qt::SkipEmptyParts)) parts.append(part.trimmed());
  return parts;
}

// A page of the title alone where it has no words of its own.
Page ReadPage(const QDir& folder, const QString& file) {
  QFile source(folder.filePath(file));
  Page page;
  page.file = file;
  if (!source.open(QIODevice::ReadOnly)) return page;
  const QString text = QString::fromUtf8(source.readAll());
  const QRegularExpression title(QStringLiteral("<title>([^<]*)</title>"),
                                 QRegularExpression::CaseInsensitiveOption);
  page.title = title.match(text).captured(1).simplified();
  page.title.replace(QLatin1String("&amp;"), QLatin1String("&"));
  page.chapter = Meta(text, "chapter");
  page.keywords = Parts(Meta(text, "keywords"));
  page.contexts = Parts(Meta(text, "help-context"));
  const QRegularExpression numbered(QStringLiteral("/Context(\\d+)\\.htm$"));
  if (const auto match = numbered.match(file); match.hasMatch()) page.contexts.append(match.captured(1));
  return page;
}

int PlaceOf(const QString& chapter) {
  const auto place = static_cast<int>(kChapters.indexOf(chapter));
  if (place >= 0) return place;
  return static_cast<int>(kChapters.size()) + (chapter == kOtherPages ? 1 : 0);
}

// By chapter; the introduction opens its own, the others stand by title.
void Sort(std::vector<Page>* pages) {
  for (Page& page : *pages)
    if (page.chapter.isEmpty()) page.chapter = kOtherPages;
  std::sort(pages->begin(), pages->end(), [](const Page& a, const Page& b) {
    const auto key = [](const Page& page) {
      return std::tuple(PlaceOf(page.chapter), page.chapter,
                        page.file.endsWith(QLatin1String("/Introduction.htm")) ? 0 : 1, page.title);
    };
    return key(a) < key(b);
  });
}

void WriteContents(QXmlStreamWriter& xml, const std::vector<Page>& pages) {
  xml.writeStartElement(QStringLiteral("toc"));
  QString open_chapter;
  for (const Page& page : pages) {
    if (page.chapter != open_chapter) {
      if (!open_chapter.isEmpty()) xml.writeEndElement();
      open_chapter = page.chapter;
      xml.writeStartElement(QStringLiteral("section"));
      xml.writeAttribute(QStringLiteral("title"), open_chapter);
      xml.writeAttribute(QStringLiteral("ref"), page.file);
    }
    xml.writeEmptyElement(QStringLiteral("section"));
    xml.writeAttribute(QStringLiteral("title"), page.title);
    xml.writeAttribute(QStringLiteral("ref"), page.file);
  }
  if (!open_chapter.isEmpty()) xml.writeEndElement();
  xml.writeEndElement();
}

void WriteKeyword(QXmlStreamWriter& xml, const QString& file, const QString& name, const QString& id) {
  xml.writeEmptyElement(QStringLiteral("keyword"));
  if (!name.isEmpty()) xml.writeAttribute(QStringLiteral("name"), name);
  if (!id.isEmpty()) xml.writeAttribute(QStringLiteral("id"), id);
  xml.writeAttribute(QStringLiteral("ref"), file);
}

void WriteProject(QXmlStreamWriter& xml, const std::vector<Page>& pages, const QStringList& files) {
  xml.setAutoFormatting(true);
  xml.writeStartDocument();
  xml.writeStartElement(QStringLiteral("QtHelpProject"));
  xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
  xml.writeTextElement(QStringLiteral("namespace"), QStringLiteral("zelmar.help"));
  xml.writeTextElement(QStringLiteral("virtualFolder"), QStringLiteral("help"));
  xml.writeStartElement(QStringLiteral("filterSection"));
  WriteContents(xml, pages);
  xml.writeStartElement(QStringLiteral("keywords"));
  for (const Page& page : pages) {
    WriteKeyword(xml, page.file, page.title, {});
    for (const QString& keyword : page.keywords) WriteKeyword(xml, page.file, keyword, {});
    for (const QString& context : page.contexts)
      WriteKeyword(xml, page.file, {}, QStringLiteral("context") + context);
  }
  xml.writeEndElement();
  xml.writeStartElement(QStringLiteral("files"));
  for (const QString& file : files) xml.writeTextElement(QStringLiteral("file"), file);
  xml.writeEndElement();
  xml.writeEndElement();
  xml.writeEndElement();
  xml.writeEndDocument();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: make_help_project <help folder> <output.qhp>\n");
    return 2;
  }
  const QDir folder(QString::fromLocal8Bit(argv[1]));
  std::vector<Page> pages;
  QStringList files;
  QDirIterator found(folder.path(),
                     {QStringLiteral("*.htm"), QStringLiteral("*.css"), QStringLiteral("*.jpg")}, QDir::Files,
                     QDirIterator::Subdirectories);
  while (found.hasNext()) files.append(folder.relativeFilePath(found.next()));
  files.sort();
  for (const QString& file : files) {
    if (!file.endsWith(QLatin1String(".htm"))) continue;
    const Page page = ReadPage(folder, file);
    if (page.title.isEmpty()) {
      std::fprintf(stderr, "make_help_project: %s has no title\n", qPrintable(file));
      return 1;
    }
    // What a window shows as a part of itself is no topic of its own.
    if (page.chapter != QLatin1String("none")) pages.push_back(page);
  }
  Sort(&pages);

  QFile output(QString::fromLocal8Bit(argv[2]));
  if (!output.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
    std::fprintf(stderr, "make_help_project: %s cannot be written\n", argv[2]);
    return 1;
  }
  QXmlStreamWriter xml(&output);
  WriteProject(xml, pages, files);
  return xml.hasError() ? 1 : 0;
}
