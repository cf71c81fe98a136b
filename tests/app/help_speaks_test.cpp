// The help and the list of keys speak of what is there, and of nothing else.
#include <QDirIterator>
#include <QTextDocument>

#include "app/later_window.h"
#include "app/main_window_fixture.h"
#include "shell/what_is_there.h"

namespace zelmar {
namespace {

using namespace testing_support;

class HelpSpeaks : public MainWindowTest {
 protected:
  static QString Page(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return QString::fromUtf8(file.readAll());
  }
  // The keys of the page as a reader sees it.
  static QStringList KeysShown() {
    const QString page =
        OnlyWhatIsThere(Page(QStringLiteral(ZELMAR_SOURCE_DIRECTORY "/help/KeyboardShortcuts.htm")));
    QTextDocument text;
    text.setHtml(page);
    QStringList keys;
    const QStringList lines = text.toPlainText().split(QLatin1Char('\n'));
    for (const QString& line : lines) keys.append(line.trimmed());
    return keys;
  }
};

TEST_F(HelpSpeaks, TheListOfKeysHasTheKeyOfEachItemThatIsThereAndNoOther) {
  Start();
  const QStringList keys = KeysShown();
  int there = 0;
  int missing = 0;
  for (const CommandRow* row : Commands()) {
    if (row->shortcut[0] == '\0') continue;
    EXPECT_EQ(keys.contains(QLatin1String(row->shortcut)), !IsMissing(NameOf(*row)))
        << row->name << ' ' << row->shortcut;
    ++(IsMissing(NameOf(*row)) ? missing : there);
  }
  EXPECT_GT(there, 10);
  EXPECT_GT(missing, 0);
}

TEST_F(HelpSpeaks, TheListOfKeysIsWholeByItselfWhenAllWindowsAreThere) {
  Start();
  std::vector<std::unique_ptr<LaterWindow>> windows;
  for (const CommandRow* row : Commands())
    if (row->window[0] != '\0' && IsMissing(NameOf(*row)))
      windows.push_back(std::make_unique<LaterWindow>(QLatin1String(row->window)));
  const QStringList keys = KeysShown();
  for (const CommandRow* row : Commands()) {
    if (row->shortcut[0] == '\0' || (row->window[0] == '\0' && IsMissing(NameOf(*row)))) continue;
    EXPECT_TRUE(keys.contains(QLatin1String(row->shortcut))) << row->name << ' ' << row->shortcut;
  }
}

TEST_F(HelpSpeaks, EveryConditionOfAPageNamesAWindowOrACommand) {
  Start();
  QStringList commands;
  for (const CommandRow* row : Commands()) commands.append(NameOf(*row));
  int named = 0;
  QDirIterator found(QStringLiteral(ZELMAR_SOURCE_DIRECTORY "/help"), {QStringLiteral("*.htm")}, QDir::Files,
                     QDirIterator::Subdirectories);
  while (found.hasNext()) {
    const QString path = found.next();
    ForEachCondition(Page(path), [&](const QString& name) {
      ++named;
      if (name.startsWith(QLatin1String("mnu")))
        EXPECT_TRUE(commands.contains(name)) << qPrintable(path) << ' ' << qPrintable(name);
      else
        EXPECT_NO_THROW(IsPartOfThisVersion(name)) << qPrintable(path) << ' ' << qPrintable(name);
    });
  }
  EXPECT_GT(named, 15);
}

}  // namespace
}  // namespace zelmar
