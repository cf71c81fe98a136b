// What holds of every window that the catalogue can make, and of every dialogue.
#include <QAccessible>
#include <QProcess>
#include <QProcessEnvironment>
#include <QScreen>

#include "app/frm_open.h"
#include "app/main_window_fixture.h"
#include "platform/settings.h"
#include "platform/widgets/screen_place.h"
#include "shell/help.h"
#include "support/applied_theme.h"
#include "support/contrast.h"
#include "support/help_window.h"

namespace zelmar {
namespace {

using namespace testing_support;

const QSize kSmallScreen(800, 600);

class EveryWindow : public MainWindowTest {
 protected:
  ~EveryWindow() override { CloseHelp(); }

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

  // Shows each dialogue that a menu item or a button leads to, no larger than a screen, and hands it over.
  template <typename Look>
  void LookAtEachDialogue(QSize screen, Look look) {
    const auto show = [&](QWidget& dialogue) {
      EXPECT_LE(dialogue.minimumSizeHint().width(), RoomInsideFrame(screen).width())
          << qPrintable(dialogue.objectName());
      EXPECT_LE(dialogue.minimumSizeHint().height(), RoomInsideFrame(screen).height())
          << qPrintable(dialogue.objectName());
      dialogue.resize(dialogue.size().boundedTo(RoomInsideFrame(screen)));
      QCoreApplication::processEvents();
      look(dialogue);
      dialogue.close();
      LetClosedWindowsGo();
    };
    FrmOpen open(main_.get());
    ASSERT_TRUE(open.Load());
    open.show();
    show(open);
    int options = 0;
    for (const CommandRow* row : Commands()) {
      // The open dialogue waits until it is closed: it was looked at above.
      if (!row->show || QLatin1String(row->window) == open.objectName()) continue;
      Item(row->name).trigger();
      QCoreApplication::processEvents();
      QWidget* const dialogue = QApplication::activeModalWidget();
      ASSERT_NE(dialogue, nullptr) << row->name;
      show(*dialogue);
      ++options;
    }
    EXPECT_EQ(options, 4);
    UseBuiltHelp();
    ShowHelpTopic(QStringLiteral("Introduction.htm"));
    ASSERT_NE(TheHelpWindow(), nullptr);
    show(*TheHelpWindow());
    ShowHelpPage(QStringLiteral("KeyboardShortcuts.htm"), HelpPlace::kWindow);
    QWidget* const page = FindLoadedForm(QStringLiteral("frmHelpModal"));
    ASSERT_NE(page, nullptr);
    show(*page);
  }

  // Controls that the keyboard reaches.
  static QList<QWidget*> Reached(const QWidget& window) {
    QList<QWidget*> controls;
    for (QWidget* control : window.findChildren<QWidget*>())
      if (control->isVisible() && control->isEnabled() && (control->focusPolicy() & Qt::TabFocus) != 0 &&
          !control->objectName().startsWith(QLatin1String("qt_")))
        controls.append(control);
    return controls;
  }

  // Runs the test of that name in a process of its own, with these variables beside the usual ones.
  static void ExpectToPassElsewhere(const char* test, const QMap<QString, QString>& variables) {
    QProcess elsewhere;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto variable = variables.begin(); variable != variables.end(); ++variable)
      environment.insert(variable.key(), variable.value());
    elsewhere.setProcessEnvironment(environment);
    elsewhere.setWorkingDirectory(QCoreApplication::applicationDirPath());
    elsewhere.setProcessChannelMode(QProcess::MergedChannels);
    elsewhere.start(QCoreApplication::applicationFilePath(),
                    {QStringLiteral("--gtest_filter=") + QLatin1String(test)});
    ASSERT_TRUE(elsewhere.waitForFinished(60000));
    const QByteArray said = elsewhere.readAll();
    EXPECT_EQ(elsewhere.exitCode(), 0) << said.constData();
    EXPECT_TRUE(said.contains("[  PASSED  ] 1 test")) << said.constData();
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
      // A field draws its own signs; a window behind the one in front may be larger than its place.
      if (!control->isVisible() || IsScrolled(*control) || control->parentWidget()->inherits("QLineEdit") ||
          control->inherits("QMdiSubWindow"))
        continue;
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

  // The words of a control stand out from what lies behind them, as the window is painted.
  static int ExpectWordsCanBeRead(QWidget& window) {
    constexpr double kLeastContrast = 4.5;  // WCAG 2, level AA
    const QImage picture = window.grab().toImage();
    int read = 0;
    for (QWidget* control : window.findChildren<QWidget*>()) {
      const QString words = WordsOf(*control);
      if (words.isEmpty() || !control->isVisible() || !control->isEnabled()) continue;
      // What is scrolled out of sight, or lies behind another window, is not in the picture.
      const QRect place(control->mapTo(&window, QPoint()), control->size());
      if (control->visibleRegion().boundingRect() != control->rect()) continue;
      const double ratio = picture.devicePixelRatio();
      EXPECT_GE(ContrastOfInk(picture.copy(QRect(place.topLeft() * ratio, place.size() * ratio))),
                kLeastContrast)
          << qPrintable(control->objectName()) << " \"" << qPrintable(words) << "\" of "
          << qPrintable(window.objectName());
      ++read;
    }
    return read;
  }

  const AppliedTheme theme_{ColourScheme::kLight};

 private:
  // Of controls that show nothing but words; a card of the front page that leads nowhere is pale on purpose.
  static QString WordsOf(const QWidget& control) {
    if (const auto* label = qobject_cast<const QLabel*>(&control)) return label->text().trimmed();
    if (const auto* button = qobject_cast<const QPushButton*>(&control)) return button->text().trimmed();
    if (const auto* field = qobject_cast<const QLineEdit*>(&control)) return field->text().trimmed();
    return {};
  }

  // Between the colour that most of the picture has and the one that stands out most.
  static double ContrastOfInk(const QImage& picture) {
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) ++counts[picture.pixel(x, y)];
    QRgb paper = 0;
    for (auto colour = counts.begin(); colour != counts.end(); ++colour)
      if (colour.value() > counts.value(paper)) paper = colour.key();
    double most = 1.0;
    for (auto colour = counts.begin(); colour != counts.end(); ++colour)
      most = std::max(most, Contrast(QColor(colour.key()), QColor(paper)));
    return most;
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
  // Modal ones are made where they are wanted.
  int modal = 0;
  for (const CommandRow* row : Commands()) {
    if (!row->show) continue;
    EXPECT_TRUE(HasHelpContext(row->help_context)) << row->name;
    ++modal;
  }
  EXPECT_EQ(modal, 5);
}

TEST_F(EveryWindow, CutsNothingOff) {
  Start();
  LoadTune();
  LookAtEach([](const ChildWindow& window) { ExpectNothingCutOff(window); });
  ExpectNothingCutOff(*main_);
}

TEST_F(EveryWindow, CutsNothingOffOnASmallScreen) {
  Start();
  main_->resize(RoomInsideFrame(kSmallScreen));
  LoadTune();
  LookAtEach([](const ChildWindow& window) { ExpectNothingCutOff(window); });
  ExpectNothingCutOff(*main_);
  EXPECT_EQ(main_->size(), RoomInsideFrame(kSmallScreen));
}

TEST_F(EveryWindow, AndDialogueCutsNothingOffOnASmallScreen) {
  Start();
  int dialogues = 0;
  LookAtEachDialogue(kSmallScreen, [&dialogues](const QWidget& dialogue) {
    ExpectNothingCutOff(dialogue);
    ++dialogues;
  });
  EXPECT_EQ(dialogues, 7);
}

class EveryWindowInColour : public EveryWindow, public ::testing::WithParamInterface<ColourScheme> {
 protected:
  const AppliedTheme colours_{GetParam()};
};

TEST_P(EveryWindowInColour, AndDialogueCanBeReadOnASmallScreenWithNothingCutOff) {
  Start();
  main_->resize(RoomInsideFrame(kSmallScreen));
  LoadTune();
  int read = 0;
  const auto look = [&read](QWidget& window) {
    ExpectNothingCutOff(window);
    read += ExpectWordsCanBeRead(window);
  };
  LookAtEach([&look](ChildWindow& window) { look(window); });
  LookAtEachDialogue(kSmallScreen, look);
  EXPECT_GT(read, 80);
}

// The scale of the screen counts from the start of a program, so another run of the test above looks.
TEST_P(EveryWindowInColour, AndDialogueCanBeReadAtTwiceTheSharpnessToo) {
  const char* const scheme = GetParam() == ColourScheme::kLight ? "0" : "1";
  const std::string test =
      "Schemes/EveryWindowInColour.AndDialogueCanBeReadOnASmallScreenWithNothingCutOff/" +
      std::string(scheme);
  ExpectToPassElsewhere(test.c_str(), {{QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2")}});
}

INSTANTIATE_TEST_SUITE_P(Schemes, EveryWindowInColour,
                         ::testing::Values(ColourScheme::kLight, ColourScheme::kDark));

TEST_F(EveryWindow, AndDialogueHasANameForEachControlThatTheKeyboardReaches) {
  Start();
  LoadTune();
  int named = 0;
  const auto look = [&named](const QWidget& window) {
    for (QWidget* control : Reached(window)) {
      if (control->inherits("zelmar::CtlQuilStaff")) continue;
      const QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(control);
      ASSERT_NE(reader, nullptr) << qPrintable(control->objectName());
      EXPECT_FALSE(reader->text(QAccessible::Name).trimmed().isEmpty())
          << control->metaObject()->className() << ' ' << qPrintable(control->objectName()) << " of "
          << qPrintable(window.objectName());
      ++named;
    }
  };
  LookAtEach([&look](const ChildWindow& window) { look(window); });
  LookAtEachDialogue(kSmallScreen, look);
  EXPECT_GT(named, 60);
}

TEST_F(EveryWindow, AndDialoguePressesTheButtonWithTheKeyboardOnEnter) {
  Start();
  LoadTune();
  int pressed = 0;
  const auto look = [&pressed](QWidget& window) {
    window.activateWindow();
    for (QWidget* control : Reached(window)) {
      auto* const button = qobject_cast<QAbstractButton*>(control);
      if (button == nullptr || button->inherits("QCheckBox") || button->inherits("QRadioButton")) continue;
      // The tab bar's arrows and the like are its own.
      if (button->objectName().isEmpty()) continue;
      for (auto* each : window.findChildren<QAbstractButton*>()) CountOnly(*each);
      QSignalSpy clicked(button, &QAbstractButton::clicked);
      button->setFocus();
      ASSERT_TRUE(button->hasFocus()) << qPrintable(button->objectName());
      QTest::keyClick(button, Qt::Key_Return);
      EXPECT_EQ(clicked.count(), 1) << qPrintable(button->objectName()) << " of "
                                    << qPrintable(window.objectName());
      ++pressed;
    }
  };
  LookAtEach([&look](ChildWindow& window) { look(window); });
  LookAtEachDialogue(kSmallScreen, look);
  EXPECT_GT(pressed, 40);
}

TEST_F(EveryWindow, AndCommandThatIsNotThereYetStandsInTheOneList) {
  Start();
  RunCommand(QStringLiteral("mnuFileNew"));
  RunCommand(QStringLiteral("mnuFileIdentify"));
  ASSERT_EQ(Boxes().size(), 2);
  EXPECT_EQ(Boxes()[1].text, QStringLiteral("This window is not part of this version yet."));
  EXPECT_THROW(RunCommand(QStringLiteral("mnuNowhere")), Failure);
  EXPECT_FALSE(IsPartOfThisVersion(QStringLiteral("frmEditTracks")));
  EXPECT_THROW(IsPartOfThisVersion(QStringLiteral("frmNowhere")), Failure);
  EXPECT_EQ(Boxes().size(), 2);
}

// The scale of the screen counts from the start of a program, so another run of this one looks.
TEST_F(EveryWindow, CutsNothingOffOnAScreenOfTwiceTheSharpness) {
  if (qApp->devicePixelRatio() != 2.0) {
    ExpectToPassElsewhere("EveryWindow.CutsNothingOffOnAScreenOfTwiceTheSharpness",
                          {{QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2")}});
    return;
  }
  Start();
  LoadTune();
  for (const QSize size : {QSize(1024, 740), RoomInsideFrame(kSmallScreen)}) {
    main_->resize(size);
    LookAtEach([this](ChildWindow& window) {
      ExpectNothingCutOff(window);
      EXPECT_EQ(main_->grab().size(), main_->size() * 2);
    });
  }
  LookAtEachDialogue(kSmallScreen, [](const QWidget& dialogue) { ExpectNothingCutOff(dialogue); });
}

// --- The first window ---

struct Screen {
  QSize pixels;
  const char* scale;
};

void PrintTo(const Screen& screen, std::ostream* out) {
  *out << screen.pixels.width() << " x " << screen.pixels.height() << " at " << screen.scale;
}

class FirstWindow : public EveryWindow, public ::testing::WithParamInterface<Screen> {};

// Without a place of an earlier run, and with one from a large screen.
TEST_P(FirstWindow, FitsItsScreen) {
  const Screen& screen = GetParam();
  const QString wanted = qEnvironmentVariable("ZELMAR_TEST_SCREEN");
  if (wanted.isEmpty()) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("screen.json"));
    QFile configuration(file);
    ASSERT_TRUE(configuration.open(QIODevice::WriteOnly));
    configuration.write(
        QStringLiteral(R"({"screens": [{"name": "one", "x": 0, "y": 0, "width": %1, "height": %2,
        "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})")
            .arg(screen.pixels.width())
            .arg(screen.pixels.height())
            .toUtf8());
    configuration.close();
    const auto* const test = ::testing::UnitTest::GetInstance()->current_test_info();
    ExpectToPassElsewhere(
        qPrintable(
            QStringLiteral("%1.%2").arg(QLatin1String(test->test_suite_name()), QLatin1String(test->name()))),
        {{QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen:configfile=") + file},
         {QStringLiteral("QT_SCALE_FACTOR"), QLatin1String(screen.scale)},
         {QStringLiteral("ZELMAR_TEST_SCREEN"), file}});
    return;
  }
  const QSize room = QGuiApplication::primaryScreen()->availableSize();
  ASSERT_EQ(room, screen.pixels / QString(QLatin1String(screen.scale)).toDouble());
  const auto expect_to_fit = [&] {
    main_ = std::make_unique<MDIParent>();
    main_->Load();
    main_->show();
    QCoreApplication::processEvents();
    EXPECT_LE(main_->frameGeometry().width(), room.width());
    EXPECT_LE(main_->frameGeometry().height(), room.height());
    EXPECT_TRUE(QRect(QPoint(), room).contains(main_->frameGeometry()));
    main_->close();
    main_.reset();
    for (QWidget* form : LoadedForms()) form->close();
    LetClosedWindowsGo();
    ForgetTheEnd();
  };
  expect_to_fit();
  QMainWindow large;
  large.setGeometry(600, 500, 1900, 1100);
  Settings().setValue(QStringLiteral("MainWindow/Place"), large.saveGeometry());
  expect_to_fit();
}

INSTANTIATE_TEST_SUITE_P(Screens, FirstWindow,
                         ::testing::Values(Screen{{800, 600}, "1"}, Screen{{1024, 768}, "1"},
                                           Screen{{1024, 768}, "1.5"}, Screen{{1024, 768}, "2"},
                                           Screen{{1920, 1080}, "1"}, Screen{{1920, 1080}, "2"}));

}  // namespace
}  // namespace zelmar
