// The about window: what it tells, and where its buttons lead.
#include <QTextBrowser>

#include "app/main_window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class About : public MainWindowTest {
 protected:
  ChildWindow& Open() {
    Item("mnuHelpAbout").trigger();
    QCoreApplication::processEvents();
    return *WindowByName(QStringLiteral("frmAbout"));
  }

  // Closes the modal page that the click opens, and gives its caption and its text.
  QStringList PageBehind(ChildWindow& window, const char* button) {
    QStringList told;
    QTimer closer;
    closer.callOnTimeout([&told] {
      QWidget* const page = FindLoadedForm(QStringLiteral("frmHelpModal"));
      if (page == nullptr || !page->isVisible()) return;
      told = {page->windowTitle(), Find<QTextBrowser>(*page, "WebHelp").toPlainText()};
      EXPECT_TRUE(page->isModal());
      page->close();
    });
    closer.start(1);
    Click(window, button);
    return told;
  }
};

TEST_F(About, TheMenuItemShowsItOnTop) {
  Start();
  ChildWindow& window = Open();
  EXPECT_EQ(main_->ActiveChild(), &window);
  EXPECT_EQ(window.HelpContext(), 3700);
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(About, TheVersionStandsInBothItsForms) {
  Start();
  ChildWindow& window = Open();
  const QStringList numbers = QStringLiteral(ZELMAR_VERSION).split(QLatin1Char('.'));
  ASSERT_EQ(numbers.size(), 3);
  EXPECT_EQ(TextOf(window, "lblVersion"),
            QStringLiteral("Version %1.%2  Revision: %3").arg(numbers[0], numbers[1], numbers[2]));
  EXPECT_EQ(TextOf(window, "lblComments"), QStringLiteral(ZELMAR_VERSION));
}

TEST_F(About, WithoutATuneItSaysSo) {
  Start();
  EXPECT_EQ(TextOf(Open(), "lblCurrentMelody"), QStringLiteral("No melody currently loaded"));
}

TEST_F(About, TheFactsAreThoseOfTheMomentItComesToTheFront) {
  Start();
  ChildWindow& window = Open();
  LoadTune();
  Global().MidiDeviceName = QStringLiteral("A device");
  Global().MidiMode = QStringLiteral("XG");
  window.ShowOnTop();
  Front().ShowOnTop();
  window.ShowOnTop();
  EXPECT_EQ(TextOf(window, "lblCurrentMelody"), QStringLiteral("First  (ONE)."));
  EXPECT_EQ(TextOf(window, "lblPath"), Global().DatabasePath);
  EXPECT_EQ(TextOf(window, "lblMidiOutputDevice"), QStringLiteral("A device"));
  EXPECT_EQ(TextOf(window, "lblMidiMode"), QStringLiteral("XG"));
}

TEST_F(About, EachFactStandsBesideItsHeading) {
  Start();
  ChildWindow& window = Open();
  for (const char* name : {"lblCurrentMelody", "lblPath", "lblMidiOutputDevice", "lblMidiMode"}) {
    const QLabel& fact = Find<QLabel>(window, name);
    const QLabel* heading = nullptr;
    for (const QLabel* label : window.findChildren<QLabel*>())
      if (label != &fact && label->text() == fact.accessibleName()) heading = label;
    ASSERT_NE(heading, nullptr) << name;
    const QRect words(heading->mapTo(&window, QPoint()), heading->size());
    const QRect told(fact.mapTo(&window, QPoint()), fact.size());
    EXPECT_TRUE(heading->isVisible()) << name;
    EXPECT_LE(words.right(), told.left()) << name;
    EXPECT_TRUE(words.top() >= told.top() && words.top() <= told.bottom()) << name;
  }
}

TEST_F(About, ThePageAndTheTextsComeFromTheHelpFolder) {
  const QString texts = database_.Directory() + QStringLiteral("/Help/Texts");
  ASSERT_TRUE(QDir().mkpath(texts));
  for (const char* name : {"AboutBox", "Qualifications", "Acknowledgments"}) {
    QFile page(texts + QStringLiteral("/%1.htm").arg(QLatin1String(name)));
    ASSERT_TRUE(page.open(QIODevice::WriteOnly));
    page.write(QByteArray("<p>The page ") + name + "</p>");
  }
  Start();
  ChildWindow& window = Open();
  EXPECT_EQ(Find<QTextBrowser>(window, "WebAbout").toPlainText(), QStringLiteral("The page AboutBox"));
  EXPECT_EQ(PageBehind(window, "cmdQualifications"),
            (QStringList{QStringLiteral("Qualifications"), QStringLiteral("The page Qualifications")}));
  EXPECT_EQ(PageBehind(window, "cmdAcknowledgments"),
            (QStringList{QStringLiteral("Acknowledgments"), QStringLiteral("The page Acknowledgments")}));
}

TEST_F(About, ALetterBeginsInThePersonsMailProgram) {
  Start();
  Click(Open(), "cmdEmail");
  ASSERT_EQ(platform_.pages->opened.size(), 1);
  const QUrl letter(platform_.pages->opened[0]);
  EXPECT_EQ(letter.scheme(), QStringLiteral("mailto"));
  EXPECT_TRUE(letter.path().contains(QLatin1Char('@')));
  EXPECT_EQ(letter.query(QUrl::FullyDecoded), QStringLiteral("subject=Enquiry about Zelmar"));
}

TEST_F(About, TheSiteOpensOutside) {
  Start();
  Click(Open(), "cmdWWW");
  ASSERT_EQ(platform_.pages->opened.size(), 1);
  EXPECT_TRUE(platform_.pages->opened[0].startsWith(QStringLiteral("http://")));
}

TEST_F(About, BackAndEscapeUnloadIt) {
  Start();
  Click(Open(), "cmdBack");
  LetClosedWindowsGo();
  EXPECT_EQ(FindLoadedForm(QStringLiteral("frmAbout")), nullptr);
  QTest::keyClick(&Open(), Qt::Key_Escape);
  LetClosedWindowsGo();
  EXPECT_EQ(FindLoadedForm(QStringLiteral("frmAbout")), nullptr);
  EXPECT_EQ(main_->ActiveChild(), &Front());
}

}  // namespace
}  // namespace zelmar
