// The help book that the build makes, and the window that shows it.
#include <QAbstractItemModel>
#include <QApplication>
#include <QDialog>
#include <QDirIterator>
#include <QLineEdit>
#include <QListView>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QTreeView>

#include "model/globals.h"
#include "shell/child_window.h"
#include "shell/help.h"
#include "shell/help_book.h"
#include "shell/loaded_forms.h"
#include "support/application_directory.h"
#include "support/handed_commands.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

const QString kBuiltHelp = QStringLiteral(ZELMAR_BUILD_DIRECTORY "/Help");

QWidget* BookWindow() {
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->objectName() == QLatin1String("HelpWindow") && window->isVisible()) return window;
  return nullptr;
}

class HelpBookTest : public ::testing::Test {
 protected:
  HelpBookTest() { Global().HelpPath = kBuiltHelp; }
  ~HelpBookTest() override {
    delete BookWindow();
    for (QWidget* form : LoadedForms()) form->close();
    LetClosedWindowsGo();
  }

  static QTextBrowser& View() { return Find<QTextBrowser>(*BookWindow(), "WebHelp"); }
  static QString Heading() { return View().toPlainText().section(QLatin1Char('\n'), 0, 0); }

  static void WaitForRows(const QAbstractItemModel& model) {
    for (int i = 0; i < 500 && model.rowCount() == 0; ++i) QTest::qWait(5);
    ASSERT_GT(model.rowCount(), 0);
  }

  static QModelIndex Titled(const QAbstractItemModel& model, const QString& title,
                            const QModelIndex& in = {}) {
    for (int row = 0; row < model.rowCount(in); ++row) {
      const QModelIndex place = model.index(row, 0, in);
      if (model.rowCount(place) == 0 && place.data().toString() == title) return place;
      if (const QModelIndex below = Titled(model, title, place); below.isValid()) return below;
    }
    return {};
  }

  static void ClickRow(const QAbstractItemView& view, const QModelIndex& place) {
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(place).center());
  }

  ScriptedPlatform platform_;
};

struct ContextRow {
  int context;
  const char* heading;
};

TEST_F(HelpBookTest, EachTopicNumberLeadsToItsPage) {
  for (const ContextRow& row : {ContextRow{100, "The front screen"},
                                {3100, "Opening a tune"},
                                {3700, "About Zelmar"},
                                {5400, "Saving a tune"}}) {
    EXPECT_TRUE(HasHelpContext(row.context));
    ShowHelpContext(row.context);
    ASSERT_NE(BookWindow(), nullptr) << row.context;
    EXPECT_EQ(Heading(), QLatin1String(row.heading));
  }
}

TEST_F(HelpBookTest, ATopicThatTheBookDoesNotHaveLeadsToTheIntroduction) {
  EXPECT_FALSE(HasHelpContext(9999));
  EXPECT_FALSE(HasHelpContext(0));
  ShowHelpContext(9999);
  EXPECT_EQ(Heading(), QStringLiteral("Welcome to Zelmar"));
}

TEST_F(HelpBookTest, LocalLinksAreFollowedAndBackGoesBack) {
  ShowHelpTopic(QStringLiteral("Introduction.htm"));
  EXPECT_FALSE(IsEnabled(*BookWindow(), "cmdGoBack"));
  View().setSource(QUrl(QStringLiteral("TransportBar.htm")));
  EXPECT_EQ(Heading(), QStringLiteral("The transport bar"));
  Click(*BookWindow(), "cmdGoBack");
  EXPECT_EQ(Heading(), QStringLiteral("Welcome to Zelmar"));
  Click(*BookWindow(), "cmdGoForward");
  EXPECT_EQ(Heading(), QStringLiteral("The transport bar"));
}

TEST_F(HelpBookTest, ALinkIsFollowedByTheMouse) {
  ShowHelpTopic(QStringLiteral("Introduction.htm"));
  QTextBrowser& view = View();
  QTextCursor link = view.document()->find(QStringLiteral("transport bar"));
  ASSERT_FALSE(link.isNull());
  link.setPosition(link.selectionStart() + 3);
  QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.cursorRect(link).center());
  EXPECT_EQ(Heading(), QStringLiteral("The transport bar"));
}

TEST_F(HelpBookTest, WebAddressesOpenOutsideAndTheNetworkIsNeverRead) {
  ShowHelpTopic(QStringLiteral("Introduction.htm"));
  View().setSource(QUrl(QStringLiteral("https://www.zelmar.example/")));
  View().setSource(QUrl(QStringLiteral("mailto:enquiries@zelmar.example")));
  EXPECT_EQ(platform_.pages->opened, (QList<QString>{QStringLiteral("https://www.zelmar.example/"),
                                                     QStringLiteral("mailto:enquiries@zelmar.example")}));
  EXPECT_EQ(Heading(), QStringLiteral("Welcome to Zelmar"));
  EXPECT_FALSE(View()
                   .loadResource(QTextDocument::ImageResource, QUrl(QStringLiteral("http://a.example/b.png")))
                   .isValid());
}

TEST_F(HelpBookTest, TheContentsListThePagesAndAClickOpensOne) {
  ShowHelpTopic(QStringLiteral("Introduction.htm"));
  auto& contents = Find<QTreeView>(*BookWindow(), "tvwContents");
  WaitForRows(*contents.model());
  EXPECT_EQ(contents.model()->index(0, 0).data().toString(), QStringLiteral("First steps"));
  EXPECT_EQ(contents.currentIndex().data().toString(), QStringLiteral("Welcome to Zelmar"));
  ClickRow(contents, Titled(*contents.model(), QStringLiteral("Saving a tune")));
  EXPECT_EQ(Heading(), QStringLiteral("Saving a tune"));
  contents.setFocus();
  contents.setCurrentIndex(Titled(*contents.model(), QStringLiteral("Keyboard shortcuts")));
  QTest::keyClick(&contents, Qt::Key_Return);
  EXPECT_EQ(Heading(), QStringLiteral("Keyboard shortcuts"));
}

TEST_F(HelpBookTest, TheContentsFollowThePageThatIsShown) {
  ShowHelpContext(3100);
  auto& contents = Find<QTreeView>(*BookWindow(), "tvwContents");
  WaitForRows(*contents.model());
  EXPECT_EQ(contents.currentIndex().data().toString(), QStringLiteral("Opening a tune"));
  ShowHelpContext(3700);
  EXPECT_EQ(contents.currentIndex().data().toString(), QStringLiteral("About Zelmar"));
}

TEST_F(HelpBookTest, TheIndexIsNarrowedByTypingAndEnterOpensThePage) {
  ShowHelpTopic(QStringLiteral("Introduction.htm"));
  auto& index = Find<QListView>(*BookWindow(), "lstIndex");
  WaitForRows(*index.model());
  const int all = index.model()->rowCount();
  auto& field = Find<QLineEdit>(*BookWindow(), "txtFind");
  field.setText(QStringLiteral("metron"));
  EXPECT_EQ(index.model()->rowCount(), 1);
  QTest::keyClick(&field, Qt::Key_Return);
  EXPECT_EQ(Heading(), QStringLiteral("The transport bar"));
  field.clear();
  EXPECT_EQ(index.model()->rowCount(), all);
}

TEST_F(HelpBookTest, F1InAWindowTellsAboutIt) {
  class AboutOpening : public ChildWindow {
   public:
    AboutOpening() : ChildWindow(QStringLiteral("frmTopic")) {}
  };
  const HandedCommands row({{.help_context = 3100, .window = "frmTopic"}});
  auto* window = new AboutOpening;
  window->show();
  QTest::keyClick(window, Qt::Key_F1);
  ASSERT_NE(BookWindow(), nullptr);
  EXPECT_EQ(Heading(), QStringLiteral("Opening a tune"));
}

TEST_F(HelpBookTest, HelpOfAModalWindowCanBeUsedAndGoesWithIt) {
  ShowHelpTopic(QStringLiteral("Introduction.htm"));
  QDialog modal;
  modal.setModal(true);
  modal.show();
  ASSERT_EQ(QApplication::activeModalWidget(), &modal);
  ShowHelpContext(3100);
  EXPECT_EQ(BookWindow()->parentWidget(), &modal);
  EXPECT_EQ(Heading(), QStringLiteral("Opening a tune"));
}

TEST_F(HelpBookTest, EscapeClosesTheWindow) {
  ShowHelpTopic(QStringLiteral("Introduction.htm"));
  QTest::keyClick(BookWindow(), Qt::Key_Escape);
  LetClosedWindowsGo();
  EXPECT_EQ(BookWindow(), nullptr);
}

TEST_F(HelpBookTest, TheBookIsReadWhereverTheHelpPagesLie) {
  const QTemporaryDir elsewhere;
  const QString help = elsewhere.filePath(QStringLiteral("Other place/Help"));
  ASSERT_TRUE(QDir().mkpath(help + QStringLiteral("/ZelmarHelp")));
  ASSERT_TRUE(QFile::copy(kBuiltHelp + QStringLiteral("/ZelmarHelp/ZelmarHelp.qch"),
                          help + QStringLiteral("/ZelmarHelp/ZelmarHelp.qch")));
  Global().HelpPath = help;
  ShowHelpContext(3100);
  EXPECT_EQ(Heading(), QStringLiteral("Opening a tune"));
}

TEST_F(HelpBookTest, AFileThatIsNoBookLeavesThePagesThemselves) {
  const TemporaryApplicationDirectory directory;
  Global().HelpPath = directory.Path() + QStringLiteral("\\Help");
  directory.Write(QStringLiteral("Help/ZelmarHelp/ZelmarHelp.qch"), "not a book");
  directory.Write(QStringLiteral("Help/ZelmarHelp/Introduction.htm"), "<p>Welcome</p>");
  EXPECT_EQ(HelpBook::Open(), nullptr);
  ShowHelpTopic(QStringLiteral("Introduction.htm"));
  QWidget* const page = FindLoadedForm(QStringLiteral("frmHelpModal"));
  ASSERT_NE(page, nullptr);
  EXPECT_EQ(Find<QTextBrowser>(*page, "WebHelp").toPlainText(), QStringLiteral("Welcome"));
}

// --- The pages ---

class HelpPages : public ::testing::Test {
 protected:
  static QStringList Files() {
    QStringList files;
    QDirIterator found(kBuiltHelp, {QStringLiteral("*.htm")}, QDir::Files, QDirIterator::Subdirectories);
    while (found.hasNext()) files.append(found.next());
    return files;
  }
  static QString TextOfFile(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
  }
};

TEST_F(HelpPages, EveryLinkAndStyleSheetOfEveryPageIsThere) {
  const QRegularExpression links(QStringLiteral("(?:href|src)=\"([^\"#]+)"));
  int followed = 0;
  for (const QString& path : Files()) {
    const QString text = TextOfFile(path);
    for (auto found = links.globalMatch(text); found.hasNext();) {
      const QString target = found.next().captured(1);
      if (QUrl(target).scheme().startsWith(QLatin1String("http"))) continue;
      EXPECT_TRUE(QFile::exists(QFileInfo(path).dir().filePath(target)))
          << qPrintable(path) << " leads to " << qPrintable(target);
      ++followed;
    }
  }
  EXPECT_GT(followed, 15);
}

TEST_F(HelpPages, EveryPageTakesItsLookFromTheOneStyleSheet) {
  for (const QString& path : Files()) {
    const QString text = TextOfFile(path);
    EXPECT_FALSE(text.contains(QLatin1String("<style"))) << qPrintable(path);
    EXPECT_TRUE(text.contains(QLatin1String("style.css\""))) << qPrintable(path);
    EXPECT_FALSE(text.contains(QLatin1String("<script"))) << qPrintable(path);
  }
}

TEST_F(HelpPages, NoTwoPagesAnswerToOneTopicNumber) {
  const QRegularExpression contexts(QStringLiteral("name=\"help-context\" content=\"([^\"]*)\""));
  QHash<QString, QString> pages;
  for (const QString& path : Files())
    for (const QString& context :
         contexts.match(TextOfFile(path)).captured(1).split(QLatin1Char(','), Qt::SkipEmptyParts)) {
      EXPECT_FALSE(pages.contains(context.trimmed()))
          << qPrintable(path) << qPrintable(pages[context.trimmed()]);
      pages.insert(context.trimmed(), path);
    }
  EXPECT_GE(pages.size(), 4);
}

}  // namespace
}  // namespace zelmar
