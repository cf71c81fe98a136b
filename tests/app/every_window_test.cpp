// What holds of every window that the catalogue can make.
#include <QProcess>
#include <QProcessEnvironment>

#include "app/main_menu.h"
#include "app/main_window_fixture.h"
#include "shell/help.h"

namespace zelmar {
namespace {

using namespace testing_support;

class EveryWindow : public MainWindowTest {
 protected:
  // Shows each window in front, the panel of help pages included, and hands it over.
  template <typename Look>
  void LookAtEach(Look look) {
    int windows = 0;
    for (const QString& name : RegisteredWindows()) {
      ChildWindow* const window = WindowByName(name);
      ASSERT_NE(window, nullptr) << qPrintable(name);
      window->ShowMaximisedOnTop();
      QCoreApplication::processEvents();
      look(*window);
      ++windows;
    }
    EXPECT_GE(windows, 5);
  }

  // A scroll area shows what does not fit when it is asked to.
  static bool IsScrolled(const QWidget& control) {
    for (const QWidget* above = control.parentWidget(); above != nullptr; above = above->parentWidget())
      if (above->inherits("QAbstractScrollArea") && !above->inherits("QMdiArea")) return true;
    return false;
  }

  static void ExpectNothingCutOff(const QWidget& window) {
    int looked_at = 0;
    for (const QWidget* control : window.findChildren<QWidget*>()) {
      if (!control->isVisible() || IsScrolled(*control)) continue;
      const std::string name = qPrintable(QStringLiteral("%1 %2 of %3")
                                              .arg(QLatin1String(control->metaObject()->className()),
                                                   control->objectName(), window.objectName()));
      EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry())) << name;
      ++looked_at;
      const bool has_words = control->inherits("QAbstractButton") || control->inherits("QLabel") ||
                             control->inherits("QLineEdit");
      if (!has_words) continue;
      EXPECT_GE(control->width(), control->minimumSizeHint().width()) << name;
      EXPECT_GE(control->height(), control->minimumSizeHint().height()) << name;
    }
    EXPECT_GT(looked_at, 0) << qPrintable(window.objectName());
  }
};

TEST_F(EveryWindow, WithAHelpTopicHasItsPageInTheBook) {
  Start();
  Global().HelpPath = QStringLiteral(ZELMAR_BUILD_DIRECTORY "/Help");
  int topics = 0;
  LookAtEach([&topics](const ChildWindow& window) {
    if (window.HelpContext() == 0) return;
    EXPECT_TRUE(HasHelpContext(window.HelpContext())) << qPrintable(window.objectName());
    ++topics;
  });
  EXPECT_GE(topics, 4);
  // The option windows are modal ones, made where they are wanted.
  for (const MenuRow& row : MainMenu()) {
    if (!QLatin1String(row.name).startsWith(QLatin1String("mnuOptions")) || row.help_context == 0) continue;
    EXPECT_TRUE(HasHelpContext(row.help_context)) << row.name;
  }
}

TEST_F(EveryWindow, CutsNothingOff) {
  Start();
  LoadTune();
  LookAtEach([](const ChildWindow& window) { ExpectNothingCutOff(window); });
  ExpectNothingCutOff(*main_);
}

TEST_F(EveryWindow, AndCommandThatIsNotThereYetStandsInTheOneList) {
  SayCommandNotPartOfThisVersion(QStringLiteral("mnuFileNew"));
  SayCommandNotPartOfThisVersion(QStringLiteral("mnuFileIdentify"));
  ASSERT_EQ(Boxes().size(), 2);
  EXPECT_EQ(Boxes()[1].text, QStringLiteral("This window is not part of this version yet."));
  EXPECT_THROW(SayCommandNotPartOfThisVersion(QStringLiteral("mnuFileOpen")), Failure);
  EXPECT_FALSE(IsPartOfThisVersion(QStringLiteral("frmEditTracks")));
  EXPECT_THROW(IsPartOfThisVersion(QStringLiteral("frmNowhere")), Failure);
  EXPECT_EQ(Boxes().size(), 2);
}

// The scale of the screen counts from the start of a program, so another run of this one looks.
TEST_F(EveryWindow, CutsNothingOffOnAScreenOfTwiceTheSharpness) {
  if (qApp->devicePixelRatio() == 2.0) {
    Start();
    LoadTune();
    LookAtEach([this](ChildWindow& window) {
      ExpectNothingCutOff(window);
      EXPECT_EQ(main_->grab().size(), main_->size() * 2);
    });
    return;
  }
  QProcess sharp;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
  sharp.setProcessEnvironment(environment);
  sharp.setProcessChannelMode(QProcess::MergedChannels);
  sharp.start(QCoreApplication::applicationFilePath(),
              {QStringLiteral("--gtest_filter=EveryWindow.CutsNothingOffOnAScreenOfTwiceTheSharpness")});
  ASSERT_TRUE(sharp.waitForFinished(60000));
  const QByteArray said = sharp.readAll();
  EXPECT_EQ(sharp.exitCode(), 0) << said.constData();
  EXPECT_TRUE(said.contains("[  PASSED  ] 1 test")) << said.constData();
}

}  // namespace
}  // namespace zelmar
