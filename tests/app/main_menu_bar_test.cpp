// The menu bar: the arrow for what has no room, the letters of its menus, and F1 with the bar in hand.
#include "app/main_menu_bar.h"

#include <QAccessible>
#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyleOptionMenuItem>
#include <QToolButton>
#include <QToolTip>

#include "app/command_menu.h"
#include "app/later_window.h"
#include "app/main_window_fixture.h"
#include "support/applied_theme.h"
#include "support/help_window.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr int kNarrow = 420;

class MenuBar : public MainWindowTest {
 protected:
  ~MenuBar() override { CloseHelp(); }

  QMenuBar& Bar() { return *main_->menuBar(); }
  QToolButton& Arrow() { return Find<QToolButton>(Bar(), "qt_menubar_ext_button"); }
  QMenu& Menu(const char* name) { return Find<QMenu>(*main_, name); }

  void Narrow(int width = kNarrow) {
    main_->resize(width, 500);
    QCoreApplication::processEvents();
  }

  // Moves the keyboard into the bar, as the Alt key alone does.
  void TakeInHand() {
    QTest::keyPress(main_.get(), Qt::Key_Alt, Qt::AltModifier);
    QTest::keyRelease(main_.get(), Qt::Key_Alt);
    ASSERT_TRUE(Bar().hasFocus());
  }
  void Key(Qt::Key key) {
    QWidget* const popup = QApplication::activePopupWidget();
    QTest::keyClick(popup != nullptr ? popup : QApplication::focusWidget(), key);
    QCoreApplication::processEvents();
  }
  void ExpectEveryLetterFrom(QWidget& control) {
    int menus = 0;
    for (const CommandRow* row : Commands()) {
      if (row->kind != CommandRow::Kind::kMenu) continue;
      const QKeyCombination letter = QKeySequence::mnemonic(QLatin1String(row->caption))[0];
      QTest::keyClick(&control, letter.key(), letter.keyboardModifiers());
      EXPECT_EQ(OpenMenu(), QLatin1String(row->name))
          << control.metaObject()->className() << ' ' << qPrintable(control.objectName());
      CloseMenus();
      ++menus;
    }
    EXPECT_EQ(menus, 7);
  }
  static QString OpenMenu() {
    const auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    return menu != nullptr ? menu->objectName() : QString();
  }
  static void CloseMenus() {
    while (QWidget* const popup = QApplication::activePopupWidget()) popup->close();
  }
};

// --- The arrow ---

// What a menu paints of an item.
QString PaintedText(CommandMenu& menu, QAction& item) {
  struct Open : CommandMenu {
    static QString TextOf(CommandMenu& menu, QAction& item) {
      QStyleOptionMenuItem option;
      (menu.*&Open::initStyleOption)(&option, &item);
      return option.text;
    }
  };
  return Open::TextOf(menu, item);
}

TEST_F(MenuBar, AKeyThatACaptionNamesStandsInTheColumnOfTheKeys) {
  Start();
  auto& menu = static_cast<CommandMenu&>(Menu("mnuMidi"));
  QAction& reset = Item("mnuOptionsMidiReset");
  EXPECT_EQ(PaintedText(menu, reset), QStringLiteral("Reset Midi (all notes off)\tF12"));
  EXPECT_EQ(reset.text(), QStringLiteral("Reset Midi (all notes off)                  F12"));
  EXPECT_EQ(PaintedText(menu, Item("mnuOptionsGSReset")), QStringLiteral("GS Reset\tF8"));
}

TEST_F(MenuBar, AMenuThatIsHigherThanTheScreenStaysInOneColumn) {
  const AppliedTheme theme(ColourScheme::kLight);
  Start();
  for (const char* name : {"mnuFile", "mnuMidi"}) {
    QMenu& menu = Menu(name);
    EXPECT_NE(menu.style()->styleHint(QStyle::SH_Menu_Scrollable, nullptr, &menu), 0) << name;
  }
}

TEST_F(MenuBar, ABarWithRoomHasNoArrow) {
  Start();
  EXPECT_FALSE(Arrow().isVisible());
}

TEST_F(MenuBar, WhatHasNoRoomStandsBehindAnArrowThatIsSeen) {
  Start();
  Narrow();
  ASSERT_TRUE(Arrow().isVisible());
  EXPECT_TRUE(Bar().rect().contains(Arrow().geometry()));
  // The buttons of a maximised child stay beside it.
  const QWidget* const corner = Bar().cornerWidget(Qt::TopRightCorner);
  ASSERT_NE(corner, nullptr);
  EXPECT_FALSE(corner->geometry().intersects(Arrow().geometry()));
  const QList<QAction*> behind = Arrow().menu()->actions();
  EXPECT_EQ(behind.last()->text(), QStringLiteral("&Help"));
  for (QAction* action : Bar().actions()) {
    const bool fits = Bar().actionGeometry(action).right() < Arrow().x();
    EXPECT_EQ(behind.contains(action), !fits) << qPrintable(action->text());
  }
  // It is drawn: something stands out from the ground of the bar.
  const QImage picture = Arrow().grab().toImage();
  const QRgb ground = picture.pixel(0, 0);
  int drawn = 0;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x)
      drawn += std::abs(qGray(picture.pixel(x, y)) - qGray(ground)) > 60;
  EXPECT_GT(drawn, 15);
}

TEST_F(MenuBar, TheArrowIsReachedByTheKeyboard) {
  Start();
  Narrow();
  TakeInHand();
  int steps = 0;
  for (; !Arrow().isDown() && steps < 20; ++steps) Key(Qt::Key_Right);
  ASSERT_TRUE(Arrow().isDown()) << "the arrow is not lit up";
  EXPECT_EQ(steps, Bar().actions().size() - Arrow().menu()->actions().size());
  Key(Qt::Key_Down);
  ASSERT_EQ(QApplication::activePopupWidget(), Arrow().menu());
  EXPECT_EQ(Arrow().menu()->activeAction(), Arrow().menu()->actions().first());
  CloseMenus();
  EXPECT_FALSE(Arrow().isDown());
}

TEST_F(MenuBar, RightFromTheArrowBeginsAnewAndLeftFromTheFirstMenuLeadsToIt) {
  Start();
  Narrow();
  TakeInHand();
  Key(Qt::Key_Left);
  EXPECT_TRUE(Arrow().isDown());
  Key(Qt::Key_Right);
  EXPECT_FALSE(Arrow().isDown());
  EXPECT_EQ(Bar().activeAction(), Bar().actions().first());
  Key(Qt::Key_Left);
  Key(Qt::Key_Left);
  EXPECT_FALSE(Arrow().isDown());
  EXPECT_TRUE(Bar().actionGeometry(Bar().activeAction()).right() < Arrow().x());
  Key(Qt::Key_Right);
  EXPECT_TRUE(Arrow().isDown());
  Key(Qt::Key_Escape);
  EXPECT_FALSE(Arrow().isDown());
  EXPECT_FALSE(Bar().hasFocus());
}

TEST_F(MenuBar, AMenuBehindTheArrowIsOpenedByItsLetter) {
  Start();
  Narrow();
  ASSERT_TRUE(Arrow().menu()->actions().contains(Menu("mnuHelp").menuAction()));
  QTest::keyClick(&Front(), Qt::Key_H, Qt::AltModifier);
  QCoreApplication::processEvents();
  EXPECT_TRUE(Arrow().menu()->isVisible());
  EXPECT_TRUE(Menu("mnuHelp").isVisible());
  EXPECT_TRUE(main_->screen()->geometry().contains(Menu("mnuHelp").geometry()));
  CloseMenus();
}

// --- Letters ---

// A window whose controls claim the letter of every menu.
class GreedyWindow : public ChildWindow {
 public:
  GreedyWindow() : ChildWindow(QStringLiteral("frmGreedy")) {
    int place = 0;
    for (const CommandRow* row : Commands()) {
      if (row->kind != CommandRow::Kind::kMenu) continue;
      auto* button = new QPushButton(QLatin1String(row->caption), this);
      button->move(10, 30 * place++);
      connect(button, &QPushButton::clicked, this, [this] { ++clicks; });
    }
  }
  int clicks = 0;
};

TEST_F(MenuBar, AltAndItsLetterOpensEachMenuAlsoWhereAWindowClaimsTheLetter) {
  Start();
  auto* const greedy = new GreedyWindow;
  greedy->ShowMaximisedOnTop();
  QCoreApplication::processEvents();
  // Several who claim a letter get it in turn: the menu has it every time.
  for (int turn = 0; turn < 3; ++turn) ExpectEveryLetterFrom(*greedy);
  EXPECT_EQ(greedy->clicks, 0);
}

TEST_F(MenuBar, AltAndItsLetterOpensEachMenuFromEveryControlOfEveryWindow) {
  Start();
  LoadTune();
  int controls = 0;
  for (const QString& name : RegisteredWindows()) {
    ChildWindow* const window = WindowByName(name);
    window->ShowMaximisedOnTop();
    main_->activateWindow();
    QCoreApplication::processEvents();
    for (QWidget* control : window->findChildren<QWidget*>()) {
      if (control->focusPolicy() == Qt::NoFocus || !control->isVisible() || !control->isEnabled()) continue;
      control->setFocus();
      ExpectEveryLetterFrom(*control);
      ++controls;
    }
  }
  EXPECT_GT(controls, 40);
}

TEST_F(MenuBar, NoControlOfAnyWindowClaimsTheLetterOfAMenu) {
  Start();
  QStringList letters;
  for (const CommandRow* row : Commands())
    if (row->kind == CommandRow::Kind::kMenu)
      letters.append(QKeySequence::mnemonic(QLatin1String(row->caption)).toString());
  for (const QString& name : RegisteredWindows()) {
    ChildWindow* const window = WindowByName(name);
    window->ShowOnTop();
    for (const auto* button : window->findChildren<QAbstractButton*>()) {
      const QString letter = QKeySequence::mnemonic(button->text()).toString();
      EXPECT_FALSE(!letter.isEmpty() && letters.contains(letter))
          << qPrintable(name) << ' ' << qPrintable(button->objectName());
    }
  }
}

// --- F1 ---

TEST_F(MenuBar, F1WithTheBarInHandTellsAboutTheWindowInFront) {
  Start();
  UseBuiltHelp();
  QWidget* const before = QApplication::focusWidget();
  TakeInHand();
  Key(Qt::Key_F1);
  EXPECT_EQ(HelpHeading(), QStringLiteral("The front screen"));
  EXPECT_EQ(main_->focusWidget(), before);
  WindowByName(QStringLiteral("frmEditStaff"))->ShowMaximisedOnTop();
  main_->activateWindow();
  QCoreApplication::processEvents();
  TakeInHand();
  Key(Qt::Key_F1);
  EXPECT_EQ(HelpHeading(), QStringLiteral("Staff notation view"));
}

TEST_F(MenuBar, F1InAMenuTellsAboutTheItemAndElseAboutTheWindowInFront) {
  Start();
  UseBuiltHelp();
  const auto f1_on = [this](const char* menu, QAction* item) {
    Menu(menu).popup(main_->mapToGlobal(QPoint(10, 30)));
    Menu(menu).setActiveAction(item);
    QTest::keyClick(&Menu(menu), Qt::Key_F1);
    EXPECT_FALSE(Menu(menu).isVisible());
    return HelpHeading();
  };
  EXPECT_EQ(f1_on("mnuFile", &Item("mnuFileOpen")), QStringLiteral("Opening a tune"));
  EXPECT_EQ(f1_on("mnuMidi", &Item("mnuOptionsMidiSetup")), QStringLiteral("Choosing the MIDI device"));
  // No topic of its own, none in the book yet, and no item at all.
  EXPECT_EQ(f1_on("mnuPlay", &Item("mnuPlayPlayTune")), QStringLiteral("The front screen"));
  EXPECT_EQ(f1_on("mnuPlay", &Item("mnuPlayJukeBox")), QStringLiteral("The front screen"));
  EXPECT_EQ(f1_on("mnuPlay", nullptr), QStringLiteral("The front screen"));
}

TEST_F(MenuBar, F1InTheMenuBehindTheArrowTellsAboutTheWindowInFront) {
  Start();
  UseBuiltHelp();
  Narrow();
  QTest::keyClick(&Front(), Qt::Key_H, Qt::AltModifier);
  Menu("mnuHelp").setActiveAction(&Item("mnuHelpAbout"));
  QTest::keyClick(&Menu("mnuHelp"), Qt::Key_F1);
  EXPECT_EQ(HelpHeading(), QStringLiteral("About Zelmar"));
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  main_->activateWindow();
  Arrow().menu()->popup(main_->mapToGlobal(QPoint(10, 30)));
  QTest::keyClick(Arrow().menu(), Qt::Key_F1);
  EXPECT_EQ(HelpHeading(), QStringLiteral("The front screen"));
}

TEST_F(MenuBar, F1WithoutAWindowOpensTheIntroduction) {
  Start();
  UseBuiltHelp();
  Front().Unload();
  LetClosedWindowsGo();
  QTest::keyClick(main_.get(), Qt::Key_F1);
  EXPECT_EQ(HelpHeading(), QStringLiteral("Welcome to Zelmar"));
}

// --- What is not there yet ---

class MenuCommands : public MenuBar {
 protected:
  // The item as the menu paints it.
  class Painted : public CommandMenu {
   public:
    static bool IsOff(const QMenu& menu, const QAction& item) {
      QStyleOptionMenuItem option;
      (static_cast<const CommandMenu&>(menu).*&Painted::initStyleOption)(&option, &item);
      return !option.state.testFlag(QStyle::State_Enabled);
    }
  };
  static QAccessibleInterface* ReaderOf(QMenu& menu, QAction& item) {
    return QAccessible::queryAccessibleInterface(&menu)->child(
        static_cast<int>(menu.actions().indexOf(&item)));
  }
};

TEST_F(MenuCommands, WhatIsNotThereIsDimmedAndCanBeChosenAllTheSame) {
  Start();
  int items = 0;
  for (const CommandRow* row : Commands()) {
    if (row->kind != CommandRow::Kind::kItem || row->menu[0] == '\0') continue;
    QAction& item = Item(qPrintable(NameOf(*row)));
    const bool missing = IsMissing(NameOf(*row));
    ++items;
    QMenu& menu = *qobject_cast<QMenu*>(item.parent());
    EXPECT_EQ(CommandMenu::IsDimmed(item), missing) << row->name;
    EXPECT_EQ(Painted::IsOff(menu, item), missing) << row->name;
    EXPECT_TRUE(item.isEnabled()) << row->name;
  }
  EXPECT_EQ(items, 67);
  EXPECT_TRUE(CommandMenu::IsDimmed(Item("mnuFileNew")));
  EXPECT_TRUE(CommandMenu::IsDimmed(Item("mnuFileIdentify")));
  EXPECT_TRUE(CommandMenu::IsDimmed(Item("mnuEditWords")));
  EXPECT_FALSE(CommandMenu::IsDimmed(Item("mnuFileOpen")));
  EXPECT_FALSE(CommandMenu::IsDimmed(Item("mnuEditStaff")));
}

TEST_F(MenuCommands, ASubmenuIsDimmedWhileAllOfItIs) {
  Start();
  const QAction& reports = *Menu("mnuFileReports").menuAction();
  EXPECT_TRUE(CommandMenu::IsDimmed(reports));
  const LaterWindow list(QStringLiteral("rptMusicList"));
  EXPECT_FALSE(CommandMenu::IsDimmed(reports));
}

TEST_F(MenuCommands, AnItemIsNoLongerDimmedWhenItsWindowIsThere) {
  Start();
  EXPECT_TRUE(CommandMenu::IsDimmed(Item("mnuPlayMetronome")));
  {
    const LaterWindow metronome(QStringLiteral("frmPlayMetronome"));
    EXPECT_FALSE(CommandMenu::IsDimmed(Item("mnuPlayMetronome")));
    EXPECT_FALSE(Painted::IsOff(Menu("mnuPlay"), Item("mnuPlayMetronome")));
    EXPECT_EQ(ReaderOf(Menu("mnuPlay"), Item("mnuPlayMetronome"))->text(QAccessible::Name),
              QStringLiteral("Metronome"));
  }
  EXPECT_TRUE(CommandMenu::IsDimmed(Item("mnuPlayMetronome")));
}

TEST_F(MenuCommands, AHintSaysByNameWhatIsNotThere) {
  Start();
  QMenu& menu = Menu("mnuPlay");
  menu.popup(main_->mapToGlobal(QPoint(10, 30)));
  for (const auto& [name, words] :
       {std::pair<const char*, const char*>{"mnuPlayMetronome", "Metronome is not part of this version."},
        {"mnuPlayPlayTune", ""},
        {"mnuPlayHits", "Classical Hit Parade is not part of this version."}}) {
    QToolTip::hideText();
    menu.setActiveAction(nullptr);
    Q_EMIT menu.hovered(&Item(name));
    const bool told = words[0] != '\0';
    EXPECT_EQ(told ? QToolTip::text() : QString(), QLatin1String(words));
  }
  menu.close();
}

TEST_F(MenuCommands, AScreenReaderHearsWhatAnItemIsAndWhatIsNotThere) {
  Start();
  QMenu& menu = Menu("mnuFile");
  QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(&menu);
  EXPECT_EQ(reader->role(), QAccessible::PopupMenu);
  EXPECT_EQ(reader->text(QAccessible::Name), QStringLiteral("File"));
  ASSERT_EQ(reader->childCount(), menu.actions().size());
  QAccessibleInterface* const missing = ReaderOf(menu, Item("mnuFileNew"));
  EXPECT_EQ(missing->role(), QAccessible::MenuItem);
  EXPECT_EQ(missing->text(QAccessible::Name), QStringLiteral("New Tune is not part of this version."));
  EXPECT_EQ(missing->text(QAccessible::Accelerator), QStringLiteral("Ctrl+N"));
  EXPECT_FALSE(missing->state().disabled);
  EXPECT_EQ(missing->parent(), reader);
  EXPECT_EQ(reader->indexOfChild(missing), 0);
  EXPECT_EQ(ReaderOf(menu, Item("mnuFileOpen"))->text(QAccessible::Name), QStringLiteral("Open Tune"));
  EXPECT_EQ(ReaderOf(menu, Item("mnuBlank"))->role(), QAccessible::Separator);
  QAccessibleInterface* const reports = ReaderOf(menu, *Menu("mnuFileReports").menuAction());
  EXPECT_TRUE(reports->state().hasPopup);
  ASSERT_EQ(reports->childCount(), 1);
  EXPECT_EQ(reports->child(0)->object(), &Menu("mnuFileReports"));
  EXPECT_EQ(reports->indexOfChild(reports->child(0)), 0);
}

TEST_F(MenuCommands, AScreenReaderHearsWhichItemIsLitUpAndCanChooseIt) {
  Start();
  QMenu& menu = Menu("mnuHelp");
  QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(&menu);
  QAccessibleInterface* const site = ReaderOf(menu, Item("mnuHelpWebSite"));
  EXPECT_TRUE(site->state().invisible);
  EXPECT_EQ(reader->focusChild(), nullptr);
  menu.popup(main_->mapToGlobal(QPoint(10, 30)));
  menu.setActiveAction(&Item("mnuHelpWebSite"));
  EXPECT_EQ(reader->focusChild(), site);
  EXPECT_TRUE(site->state().focused);
  const QPoint middle = site->rect().center();
  EXPECT_EQ(reader->childAt(middle.x(), middle.y()), site);
  menu.close();
  site->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(platform_.pages->opened.size(), 1);
}

}  // namespace
}  // namespace zelmar
