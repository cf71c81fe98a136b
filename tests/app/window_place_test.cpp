// The main window's place on the screen, kept from one run to the next, and its look, which follows the
// system.
#include <QApplication>
#include <QMdiArea>
#include <QScreen>

#include "app/main_window_fixture.h"
#include "platform/settings.h"
#include "shell/theme.h"

namespace zelmar {
namespace {

using namespace testing_support;

class WindowPlace : public MainWindowTest {
 protected:
  void EndRun() {
    main_->close();
    main_.reset();
    for (QWidget* form : LoadedForms()) form->close();
    LetClosedWindowsGo();
    ForgetTheEnd();
  }

  void StartRun() {
    main_ = std::make_unique<MDIParent>();
    main_->Load();
    main_->show();
    QCoreApplication::processEvents();
  }
};

TEST_F(WindowPlace, SizeAndPlaceAreThoseOfTheLastRun) {
  StartRun();
  const QRect place(40, 30, 700, 500);
  main_->setGeometry(place);
  EndRun();
  StartRun();
  EXPECT_EQ(main_->geometry(), place);
  EXPECT_FALSE(main_->isMaximized());
}

TEST_F(WindowPlace, AMaximisedWindowComesBackMaximised) {
  StartRun();
  main_->showMaximized();
  QCoreApplication::processEvents();
  EndRun();
  StartRun();
  EXPECT_TRUE(main_->isMaximized());
}

TEST_F(WindowPlace, APlaceOffAllScreensFallsBackOntoOne) {
  StartRun();
  main_->setGeometry(30000, 20000, 600, 400);
  EndRun();
  StartRun();
  EXPECT_TRUE(QGuiApplication::primaryScreen()->geometry().intersects(main_->geometry()));
}

TEST_F(WindowPlace, AWrittenPlaceThatIsNoneLeavesTheFirstSize) {
  StartRun();
  const QSize first = main_->size();
  EndRun();
  {
    auto settings = Settings();
    settings.setValue(QStringLiteral("MainWindow/Place"), QByteArray("nonsense"));
  }
  StartRun();
  EXPECT_EQ(main_->size(), first);
}

TEST_F(WindowPlace, ThePathFileKnowsNothingOfIt) {
  const QString path_file = database_.Directory() + QStringLiteral("/frmPath.txt");
  const bool was_there = QFile::exists(path_file);
  StartRun();
  EndRun();
  EXPECT_EQ(QFile::exists(path_file), was_there);
  EXPECT_TRUE(QFile::exists(database_.Directory() + QStringLiteral("/Zelmar.ini")));
}

class SystemTheme : public MainWindowTest {
 protected:
  ~SystemTheme() override {
    qunsetenv("ZELMAR_COLOUR_SCHEME");
    qApp->setStyleSheet(QString());
    QApplication::setPalette(before_);
  }

  // As the system tells its windows that its colours have changed.
  void ChangeTo(const char* scheme) {
    qputenv("ZELMAR_COLOUR_SCHEME", scheme);
    QEvent change(QEvent::ThemeChange);
    QCoreApplication::sendEvent(main_->windowHandle(), &change);
  }

  static bool IsDark(const QColor& colour) { return colour.lightness() < 128; }

  QPalette before_ = QApplication::palette();
};

TEST_F(SystemTheme, DarkAndLightFollowTheSystemWhileTheProgramRuns) {
  Start();
  for (const bool dark : {true, false, true}) {
    ChangeTo(dark ? "dark" : "light");
    EXPECT_EQ(IsDark(QApplication::palette().color(QPalette::Window)), dark);
    EXPECT_EQ(IsDark(main_->Area()->background().color()), dark);
    EXPECT_EQ(IsDark(Bar().BackGround()), dark);
    // What is painted, not only what is told.
    const QImage picture = Front().grab().toImage();
    EXPECT_EQ(IsDark(picture.pixelColor(3, 3)), dark);
    EXPECT_EQ(IsDark(picture.pixelColor(3, picture.height() - 4)), dark);
  }
}

TEST_F(SystemTheme, TheSystemIsAskedAndNotTheOwnColours) {
  Start();
  ApplyTheme(*qApp, ColourScheme::kDark);
  ASSERT_TRUE(IsDark(QApplication::palette().color(QPalette::Window)));
  QEvent change(QEvent::ThemeChange);
  QCoreApplication::sendEvent(main_->windowHandle(), &change);
  // The system of a test run is light.
  EXPECT_FALSE(IsDark(QApplication::palette().color(QPalette::Window)));
}

}  // namespace
}  // namespace zelmar
