// Pages and the windows that show them; the services that need widgets.
#include <QApplication>
#include <QDialog>
#include <QPushButton>

#include "model/globals.h"
#include "platform/widgets/icons.h"
#include "platform/widgets/widget_services.h"
#include "shell/frm_help.h"
#include "shell/help.h"
#include "shell/loaded_forms.h"
#include "shell/page_view.h"
#include "shell/theme.h"
#include "support/application_directory.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class Pages : public ::testing::Test {
 protected:
  Pages() {
    Global().HelpPath = directory_.Path() + QStringLiteral("\\Help");
    directory_.Write(QStringLiteral("Help/UserDefault.htm"), "<p>The first page</p>");
    directory_.Write(QStringLiteral("Help/Texts/One.htm"), "<p>Page one</p><img src=\"missing.png\">");
    directory_.Write(QStringLiteral("Help/ZelmarHelp/Introduction.htm"), "<p>Welcome</p>");
    directory_.Write(QStringLiteral("Help/ZelmarHelp/Context3100.htm"), "<p>About opening</p>");
  }
  ~Pages() override {
    for (QWidget* form : LoadedForms()) form->close();
    LetClosedWindowsGo();
  }

  static QDialog* PageWindow() {
    return qobject_cast<QDialog*>(FindLoadedForm(QStringLiteral("frmHelpModal")));
  }
  static QString PageText(const QWidget* window) {
    return Find<QTextBrowser>(*window, "WebHelp").toPlainText();
  }

  ScriptedPlatform platform_;
  TemporaryApplicationDirectory directory_;
};

TEST_F(Pages, APageOfTheHelpTreeOpensInAWindowOfItsOwn) {
  ShowHelpPage(QStringLiteral("TEXTS\\one.HTM"), HelpPlace::kWindow);
  ASSERT_NE(PageWindow(), nullptr);
  EXPECT_EQ(PageWindow()->windowTitle(), QStringLiteral("Quick Help Hints"));
  EXPECT_FALSE(PageWindow()->isModal());
  EXPECT_TRUE(PageText(PageWindow()).startsWith(QStringLiteral("Page one")));
}

TEST_F(Pages, ATitleReplacesTheUsualOne) {
  ShowHelpPage(QStringLiteral("Texts\\One.htm"), HelpPlace::kWindow, QStringLiteral("Qualifications"));
  EXPECT_EQ(PageWindow()->windowTitle(), QStringLiteral("Qualifications"));
}

TEST_F(Pages, AnAbsolutePathIsShownAsItStands) {
  ShowHelpPage(directory_.Path() + QStringLiteral("\\Help\\UserDefault.htm"), HelpPlace::kWindow);
  EXPECT_EQ(PageText(PageWindow()), QStringLiteral("The first page"));
}

TEST_F(Pages, AMissingPageLeavesTheWindowEmpty) {
  ShowHelpPage(QStringLiteral("Nowhere.htm"), HelpPlace::kWindow);
  EXPECT_EQ(PageText(PageWindow()), QString());
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(Pages, ANameThatLeadsOutsideTheHelpTreeShowsNothingAndSaysSo) {
  directory_.Write(QStringLiteral("Secret.htm"), "<p>Secret</p>");
  directory_.Write(QStringLiteral("Elsewhere/Page.htm"), "<p>Elsewhere</p>");
  ASSERT_TRUE(QFile::link(directory_.Path() + QStringLiteral("/Elsewhere"),
                          directory_.Path() + QStringLiteral("/Help/Link")));
  const QStringList names = {QStringLiteral("..\\Secret.htm"), QStringLiteral("Texts\\..\\..\\Secret.htm"),
                             QStringLiteral("../Secret.htm"), QStringLiteral("\\..\\Secret.htm"),
                             QStringLiteral("Link\\Page.htm")};
  for (const QString& name : names) {
    for (const HelpPlace place : {HelpPlace::kWindow, HelpPlace::kPanel, HelpPlace::kModalWindow}) {
      platform_.messages->shown.clear();
      ShowHelpPage(name, place);
      EXPECT_EQ(PageWindow(), nullptr) << qPrintable(name);
      EXPECT_EQ(FindLoadedForm(QStringLiteral("frmHelp")), nullptr) << qPrintable(name);
      ASSERT_EQ(platform_.messages->shown.size(), 1) << qPrintable(name);
      EXPECT_EQ(platform_.messages->shown[0].text,
                QStringLiteral("\"%1\" leads outside the help pages and is not shown.").arg(name));
    }
  }
}

TEST_F(Pages, AnAbsolutePathOutsideTheHelpTreeIsShownWithItsLinksBesideIt) {
  directory_.Write(QStringLiteral("Elsewhere/Page.htm"), "<p>Elsewhere</p>");
  directory_.Write(QStringLiteral("Elsewhere/Next.htm"), "<p>Next</p>");
  ShowHelpPage(directory_.Path() + QStringLiteral("/Elsewhere/Page.htm"), HelpPlace::kWindow);
  auto& view = Find<QTextBrowser>(*PageWindow(), "WebHelp");
  EXPECT_EQ(view.toPlainText(), QStringLiteral("Elsewhere"));
  view.setSource(QUrl(QStringLiteral("Next.htm")));
  EXPECT_EQ(view.toPlainText(), QStringLiteral("Next"));
  EXPECT_TRUE(platform_.messages->shown.isEmpty());
}

TEST_F(Pages, ALinkOrPictureThatLeadsOutsideIsNotRead) {
  directory_.Write(QStringLiteral("Secret.htm"), "<p>Secret</p>");
  directory_.Write(QStringLiteral("Secret.png"), "not a picture");
  directory_.Write(QStringLiteral("Help/Texts/Bad.htm"), "<p>Bad</p><img src=\"../../Secret.png\">");
  ShowHelpPage(QStringLiteral("Texts\\Bad.htm"), HelpPlace::kWindow);
  QCoreApplication::processEvents();
  ASSERT_EQ(platform_.messages->shown.size(), 1);
  EXPECT_TRUE(platform_.messages->shown[0].text.contains(QStringLiteral("Secret.png")));
  auto& view = Find<QTextBrowser>(*PageWindow(), "WebHelp");
  view.setSource(QUrl(QStringLiteral("../../Secret.htm")));
  EXPECT_TRUE(view.toPlainText().startsWith(QStringLiteral("Bad")));
  EXPECT_EQ(platform_.messages->shown.size(), 2);
  view.setSource(QUrl(QStringLiteral("../UserDefault.htm")));
  EXPECT_EQ(view.toPlainText(), QStringLiteral("The first page"));
  EXPECT_EQ(platform_.messages->shown.size(), 2);
}

TEST_F(Pages, AWebAddressOpensOutside) {
  ShowHelpPage(QStringLiteral("http://www.zelmar.example/"), HelpPlace::kWindow);
  ShowHelpPage(QStringLiteral("https://www.zelmar.example/"), HelpPlace::kPanel);
  EXPECT_EQ(platform_.pages->opened, (QList<QString>{QStringLiteral("http://www.zelmar.example/"),
                                                     QStringLiteral("https://www.zelmar.example/")}));
  EXPECT_EQ(PageWindow(), nullptr);
  EXPECT_EQ(FindLoadedForm(QStringLiteral("frmHelp")), nullptr);
}

TEST_F(Pages, ALinkToTheWebOpensOutsideAndTheNetworkIsNeverRead) {
  PageView view;
  directory_.Write(
      QStringLiteral("Help/Links.htm"),
      "<a href=\"https://www.zelmar.example/a\">a</a><img src=\"http://www.zelmar.example/b.png\">");
  view.ShowPage(directory_.Path() + QStringLiteral("/Help/Links.htm"));
  view.setSource(QUrl(QStringLiteral("https://www.zelmar.example/a")));
  EXPECT_EQ(platform_.pages->opened, QList<QString>{QStringLiteral("https://www.zelmar.example/a")});
  EXPECT_TRUE(view.toPlainText().startsWith(QLatin1Char('a')));
}

TEST_F(Pages, ThePanelBeginsWithItsOwnPageAndGoesBack) {
  ShowHelpPage(QStringLiteral("Texts\\One.htm"), HelpPlace::kPanel);
  FrmHelp* const panel = FrmHelp::Instance();
  EXPECT_TRUE(panel->isVisible());
  EXPECT_TRUE(PageText(panel).startsWith(QStringLiteral("Page one")));
  Click(*panel, "cmdGoBack");
  EXPECT_EQ(PageText(panel), QStringLiteral("The first page"));
}

TEST_F(Pages, TheBackButtonUnloadsThePanel) {
  FrmHelp* const panel = FrmHelp::Instance();
  panel->ShowOnTop();
  Click(*panel, "cmdBack");
  EXPECT_EQ(FindLoadedForm(QStringLiteral("frmHelp")), nullptr);
}

TEST_F(Pages, APageForAFrameWaitsATenthOfASecond) {
  const double start = SecondsSinceMidnight();
  ShowHelpPage(QStringLiteral("Texts\\One.htm"), HelpPlace::kPanel, {}, QStringLiteral("main"));
  EXPECT_NEAR(SecondsSinceMidnight() - start, 0.1, 0.01);
  EXPECT_TRUE(PageText(FrmHelp::Instance()).startsWith(QStringLiteral("Page one")));
}

TEST_F(Pages, ATopicWithoutAPageLeadsToTheIntroduction) {
  ShowHelpContext(3100);
  EXPECT_EQ(PageText(PageWindow()), QStringLiteral("About opening"));
  ShowHelpContext(9999);
  EXPECT_EQ(PageText(PageWindow()), QStringLiteral("Welcome"));
}

TEST(WidgetServices, AFilterMatchesItsEndingInEitherCase) {
  EXPECT_EQ(ChooserFilter(QStringLiteral("Midi Files (*.MID)|*.MID")),
            QStringLiteral("Midi Files (*.[mM][iI][dD])"));
  EXPECT_EQ(ChooserFilter(QStringLiteral("A (*.MDB)|*.MDB|All (*.*)|*.*")),
            QStringLiteral("A (*.[mM][dD][bB]);;All (*.*)"));
}

TEST(Icons, EveryTransportPictureIsThereAndSharpAtScale2) {
  for (const char* name : {"play", "pause", "stop", "rewind", "back", "forward", "end", "go_to", "load"}) {
    const QIcon icon = IconOf(QLatin1String(name));
    ASSERT_FALSE(icon.isNull()) << name;
    EXPECT_EQ(icon.pixmap(QSize(24, 24), 2.0).size(), QSize(48, 48)) << name;
    const QImage picture = icon.pixmap(QSize(24, 24)).toImage();
    int drawn = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) drawn += qAlpha(picture.pixel(x, y)) > 0 ? 1 : 0;
    EXPECT_GT(drawn, 20) << name;
  }
}

TEST(Theme, TheTextStandsOutInBothSchemes) {
  const QPalette before = QApplication::palette();
  for (const ColourScheme scheme : {ColourScheme::kLight, ColourScheme::kDark}) {
    ApplyTheme(*qApp, scheme);
    const QPalette palette = QApplication::palette();
    const auto difference = [&palette](QPalette::ColorRole a, QPalette::ColorRole b) {
      return std::abs(qGray(palette.color(a).rgb()) - qGray(palette.color(b).rgb()));
    };
    EXPECT_GT(difference(QPalette::WindowText, QPalette::Window), 150);
    EXPECT_GT(difference(QPalette::Text, QPalette::Base), 150);
    EXPECT_GT(difference(QPalette::PlaceholderText, QPalette::Base), 90);
    EXPECT_GT(difference(QPalette::HighlightedText, QPalette::Highlight), 90);
  }
  qApp->setStyleSheet(QString());
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace zelmar
