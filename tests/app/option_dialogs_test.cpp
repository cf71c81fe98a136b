// What all option windows have in common: how they are reached, their keys, their size and their help.
#include "app/options/frm_options_connect_db.h"
#include "app/options/frm_options_create_new_db.h"
#include "app/options/frm_options_media_player.h"
#include "app/options/frm_options_midi_setup.h"

#include <QLabel>

#include "app/option_windows_fixture.h"
#include "platform/paths.h"
#include "shell/page_view.h"
#include "shell/theme.h"

namespace zelmar {
namespace {

using namespace testing_support;

struct OptionWindow {
  const char* item;
  const char* name;
  const char* page;
  const char* default_button;  // empty for the one that is not modal
  const char* first;           // where the keyboard is at first
};
constexpr OptionWindow kWindows[] = {
    {"mnuOptionsMidiSetup", "frmOptionsMidiSetup", "OptionsMidiSetup.htm", "cmdOK", "ComboMidiOut"},
    {"mnuOptionsMidiTests", "frmOptionsMidiTests", "OptionsMidiTests.htm", "", "cmdExpression"},
    {"mnuOptionsConnectDB", "frmOptionsConnectDB", "OptionsConnectDB.htm", "cmdQuit", "cmdChangePath"},
    {"mnuOptionsCreateNewDB", "frmOptionsCreateNewDB", "OptionsCreateNewDB.htm", "cmdCreate", "txtDBName"},
    {"mnuOptionsMediaPlayer", "frmOptionsMediaPlayer", "OptionsMediaPlayer.htm", "cmdSave",
     "chkMediaPlayerInstalled"},
};

class OptionWindows : public OptionWindowTest {
 protected:
  OptionWindows() {
    Start();
    main_->resize(1024, 768);
  }

  QWidget& Open(const OptionWindow& row) {
    Item(row.item).trigger();
    QCoreApplication::processEvents();
    QWidget* const window = FindLoadedForm(QLatin1String(row.name));
    if (window == nullptr) throw std::runtime_error(row.name);
    window->activateWindow();
    QCoreApplication::processEvents();
    return *window;
  }
  static void Close(QWidget& window) {
    QTest::keyClick(&window, Qt::Key_Escape);
    LetClosedWindowsGo();
  }
};

TEST_F(OptionWindows, EachIsReachedByItsItemAndModalAsTold) {
  for (const OptionWindow& row : kWindows) {
    QWidget& window = Open(row);
    EXPECT_TRUE(window.isVisible()) << row.name;
    EXPECT_EQ(window.isModal(), row.default_button[0] != '\0') << row.name;
    Close(window);
    EXPECT_FALSE(IsOpen(row.name)) << row.name;
  }
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(OptionWindows, ASecondCallShowsTheSameWindow) {
  for (const OptionWindow& row : kWindows) {
    QWidget& first = Open(row);
    EXPECT_EQ(&Open(row), &first) << row.name;
    Close(first);
  }
}

TEST_F(OptionWindows, TheDefaultButtonAndTheFirstPlaceOfTheKeyboard) {
  for (const OptionWindow& row : kWindows) {
    QWidget& window = Open(row);
    if (window.isModal()) {
      EXPECT_TRUE(Find<QPushButton>(window, row.default_button).isDefault()) << row.name;
    }
    EXPECT_EQ(window.focusWidget(), &Find<QWidget>(window, row.first)) << row.name;
    Close(window);
  }
}

TEST_F(OptionWindows, EveryControlThatTakesTheKeyboardIsReachedByTab) {
  for (const OptionWindow& row : kWindows) {
    QWidget& window = Open(row);
    std::set<const QWidget*> wanted, reached;
    for (const QWidget* control : window.findChildren<QWidget*>())
      if (!control->objectName().isEmpty() && control->isVisible() && control->isEnabled() &&
          (control->focusPolicy() & Qt::TabFocus) != 0 &&
          !control->objectName().startsWith(QLatin1String("qt_")))
        wanted.insert(control);
    const QWidget* const first = window.focusWidget();
    for (int step = 0; step < 60; ++step) {
      reached.insert(window.focusWidget());
      QTest::keyClick(window.focusWidget() != nullptr ? window.focusWidget() : &window, Qt::Key_Tab);
      if (window.focusWidget() == first) break;
    }
    for (const QWidget* control : wanted)
      EXPECT_TRUE(reached.count(control) == 1) << row.name << ' ' << qPrintable(control->objectName());
    Close(window);
  }
}

TEST_F(OptionWindows, NoLetterLeadsToTwoControls) {
  for (const OptionWindow& row : kWindows) {
    QWidget& window = Open(row);
    std::map<QChar, QString> letters;
    const auto take = [&](const QString& text, const QString& name) {
      const qsizetype mark = text.indexOf(QLatin1Char('&'));
      if (mark < 0 || mark + 1 >= text.size()) return;
      const auto [place, fresh] = letters.emplace(text[mark + 1].toLower(), name);
      EXPECT_TRUE(fresh) << row.name << ": " << qPrintable(name) << " and " << qPrintable(place->second);
    };
    // The menu of the main window answers too, unless the window is modal.
    if (!window.isModal())
      for (const QAction* menu : main_->menuBar()->actions()) take(menu->text(), menu->text());
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
      EXPECT_TRUE(button->text().contains(QLatin1Char('&'))) << qPrintable(button->objectName());
      take(button->text(), button->objectName());
    }
    for (const auto* label : window.findChildren<QLabel*>())
      if (label->buddy() != nullptr) take(label->text(), label->buddy()->objectName());
    Close(window);
  }
}

TEST_F(OptionWindows, EachFitsASmallScreenAlsoInLargeLetters) {
  const QFont before = QApplication::font();
  for (const double size : {1.0, 1.4}) {
    QFont font = before;
    font.setPointSizeF(before.pointSizeF() * size);
    QApplication::setFont(font);
    for (const OptionWindow& row : kWindows) {
      QWidget& window = Open(row);
      EXPECT_LE(window.minimumSizeHint().width(), 1004) << row.name;
      EXPECT_LE(window.minimumSizeHint().height(), 640) << row.name;
      for (const auto* button : window.findChildren<QAbstractButton*>())
        EXPECT_GE(button->width(), button->minimumSizeHint().width()) << qPrintable(button->objectName());
      Close(window);
    }
  }
  QApplication::setFont(before);
}

TEST_F(OptionWindows, EachHasAPageOfItsOwnInTheHelp) {
  QDir().mkpath(In(QStringLiteral("Help/ZelmarHelp")));
  for (const OptionWindow& row : kWindows) {
    const QString source =
        QStringLiteral(ZELMAR_SOURCE_DIRECTORY "/help/ZelmarHelp/") + QLatin1String(row.page);
    ASSERT_TRUE(QFile::copy(source, In(QStringLiteral("Help/ZelmarHelp/") + QLatin1String(row.page))))
        << row.page;
  }
  for (const OptionWindow& row : kWindows) {
    for (const bool by_key : {true, false}) {
      QWidget& window = Open(row);
      QString page;
      QTimer closer;
      const auto look = [&] {
        QWidget* const help = FindLoadedForm(QStringLiteral("frmHelpModal"));
        if (help == nullptr || !help->isVisible()) return;
        page = Find<PageView>(*help, "WebHelp").source().fileName();
        help->close();
      };
      closer.callOnTimeout(look);
      closer.start(1);
      if (by_key)
        QTest::keyClick(&window, Qt::Key_F1);
      else
        Click(window, "cmdHelp");
      look();
      EXPECT_EQ(page, QLatin1String(row.page)) << row.name;
      EXPECT_TRUE(window.isVisible());
      Close(window);
    }
  }
}

}  // namespace
}  // namespace zelmar
