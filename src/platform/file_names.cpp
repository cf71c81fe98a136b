#include "platform/file_names.h"

#include <QFileInfo>
#include <algorithm>
#include <iterator>

#include "platform/paths.h"

namespace zelmar {

namespace {

constexpr qsizetype kLongestName = 255;  // bytes: what the file systems in use take

// Names that some systems open as devices, whatever extension follows them.
constexpr const char16_t* kDevices[] = {
    u"con",  u"prn",  u"aux",  u"nul",  u"com1", u"com2", u"com3", u"com4", u"com5", u"com6", u"com7",
    u"com8", u"com9", u"lpt1", u"lpt2", u"lpt3", u"lpt4", u"lpt5", u"lpt6", u"lpt7", u"lpt8", u"lpt9"};

bool IsDevice(const QString& name) {
  const QString stem = name.section(u'.', 0, 0).trimmed();
  return std::any_of(std::begin(kDevices), std::end(kDevices), [&stem](const char16_t* device) {
    return stem.compare(QStringView(device), Qt::CaseInsensitive) == 0;
  });
}

bool IsSeparatorOrControl(QChar c) {
  return c == u'/' || c == u'\\' || c.unicode() < 0x20 || c.unicode() == 0x7F;
}

bool BeginsWithDrive(const QString& name) {
  return name.size() > 1 && name[0].isLetter() && name[1] == u':';
}

}  // namespace

bool IsPlainFileName(const QString& name) {
  if (name.trimmed().isEmpty() || name == u"." || name == u"..") return false;
  if (std::any_of(name.begin(), name.end(), IsSeparatorOrControl)) return false;
  return !BeginsWithDrive(name) && !IsDevice(name) && name.toUtf8().size() <= kLongestName;
}

std::optional<QString> PlaceInFolder(const QString& folder, const QString& name) {
  if (!IsPlainFileName(name)) return std::nullopt;
  if (QFileInfo::exists(folder) && !StaysInside(folder, name)) return std::nullopt;
  return ResolvePath(folder + u'/' + name);
}

}  // namespace zelmar
