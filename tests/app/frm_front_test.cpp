// The front page: the keyboard on it, the ways to a tune, and the cards of what is not there yet.
#include "app/frm_front.h"

#include <QAccessible>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>

#include "app/card_button.h"
#include "app/later_window.h"
#include "app/main_window_fixture.h"
#include "platform/widgets/read_outs.h"
#include "platform/widgets/screen_place.h"
#include "store/connection.h"
#include "support/applied_theme.h"
#include "support/help_window.h"

namespace zelmar {
namespace {

using namespace testing_support;

class FrontPage : public MainWindowTest {
 protected:
  CardButton& Card(const char* name) { return Find<CardButton>(Front(), name); }
  QPushButton& Recent(int number) {
    return Find<QPushButton>(Front(), qPrintable(QStringLiteral("cmdRecentTune%1").arg(number)));
  }
  static QString Spoken(QWidget& control) {
    return QAccessible::queryAccessibleInterface(&control)->text(QAccessible::Name);
  }
  // The dark pixels of a picture of the control, as a share of them all: words and drawings.
  static double InkOf(QWidget& control) {
    const QImage picture = control.grab().toImage();
    int dark = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) dark += qGray(picture.pixel(x, y)) < 80 ? 1 : 0;
    return static_cast<double>(dark) / (picture.width() * picture.height());
  }

  const AppliedTheme theme_{ColourScheme::kLight};
};

struct Room {
  const char* card;
  const char* window;
  const char* hint;
};
constexpr Room kRooms[] = {
    {"cmdJukeBox", "frmPlayJukeBox", "Listen to your selection of classical and folk music"},
    {"cmdHits", "frmPlayHits", "Classical top 20 charts"},
    {"cmdPlayDictionary", "frmPlayDictionary", "Click here to see all the themes in the Zelmar database"},
    {"cmdThemeQuiz", "frmPlayTuneQuiz",
     "Click to hear a theme played at random. Your task is to name it by selecting its title from a list of "
     "20 titles."},
    {"CmdPiano", "frmEditKeyboardInput", "Identify tunes by picking them out on the piano with your mouse"},
    {"cmdTimeLine", "frmMusicologyHistory",
     "Click here for a history time-line, comparing composers' life-spans against various historical "
     "events."},
    {"cmdMusicology", "frmMusicology",
     "Click here to browse composers, instruments, ensembles, music categories, geography of music, and "
     "musical periods or styles."},
};

// --- The keyboard ---

TEST_F(FrontPage, HasTheKeyboardFromTheStartOnItsFirstCard) {
  Start();
  EXPECT_EQ(QApplication::focusWidget(), &Card("cmdOpenTune"));
}

TEST_F(FrontPage, TheCardWithTheKeyboardIsSeen) {
  Start();
  CardButton& card = Card("cmdOpenTune");
  const QImage with = card.grab().toImage();
  Card("cmdJukeBox").setFocus();
  const QImage without = card.grab().toImage();
  const QPoint edge(card.width() / 2, 2);
  EXPECT_EQ(with.pixelColor(edge), card.palette().color(QPalette::Highlight));
  EXPECT_NE(without.pixelColor(edge), card.palette().color(QPalette::Highlight));
}

TEST_F(FrontPage, F1TellsAboutItAtOnce) {
  Start();
  UseBuiltHelp();
  QTest::keyClick(main_->windowHandle(), Qt::Key_F1);
  EXPECT_EQ(HelpHeading(), QStringLiteral("The front screen"));
  CloseHelp();
}

TEST_F(FrontPage, EnterPressesAsSpaceDoes) {
  Start();
  for (const char* name :
       {"cmdOpenTune", "cmdJukeBox", "cmdMusicology", "cmdKeyboardShortcuts", "cmdHelp", "cmdNewTune"}) {
    auto& button = Find<QAbstractButton>(Front(), name);
    CountOnly(button);
    QSignalSpy clicked(&button, &QAbstractButton::clicked);
    button.setFocus();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
      clicked.clear();
      QTest::keyClick(&button, key);
      EXPECT_EQ(clicked.count(), 1) << name << ' ' << key;
    }
  }
}

TEST_F(FrontPage, AnEnterThatIsHeldPressesOnceAndATickIsLeftAlone) {
  Start();
  LoadTune();
  auto& card = Card("cmdJukeBox");
  CountOnly(card);
  QSignalSpy clicked(&card, &QAbstractButton::clicked);
  card.setFocus();
  QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
  QCoreApplication::sendEvent(&card, &held);
  EXPECT_EQ(clicked.count(), 0);
  auto& tick = Find<QCheckBox>(Front(), "chkMetronome");
  tick.setFocus();
  const bool before = tick.isChecked();
  QTest::keyClick(&tick, Qt::Key_Return);
  EXPECT_EQ(tick.isChecked(), before);
}

TEST_F(FrontPage, PageDownOnACardIsTheTransportBars) {
  Start();
  LoadTune();
  Card("cmdJukeBox").setFocus();
  QTest::keyClick(&Card("cmdJukeBox"), Qt::Key_PageDown);
  EXPECT_EQ(Bar().StartBar(), 2);
}

TEST_F(FrontPage, TabGoesFromTheTunesToTheCardsAndOnToTheBar) {
  Global().RecentCodeNames = {QStringLiteral("ONE"), QStringLiteral("TWO")};
  Global().RecentCaptions = {QStringLiteral("First"), QStringLiteral("Second")};
  Start();
  LoadTune();
  QStringList order;
  for (int i = 0; i < 13; ++i) {
    order.append(QApplication::focusWidget()->objectName());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  // The tune that was loaded counts as opened: it stands first, and once.
  EXPECT_EQ(order, (QStringList{QStringLiteral("cmdOpenTune"), QStringLiteral("cmdRecentTune1"),
                                QStringLiteral("cmdRecentTune2"), QStringLiteral("cmdJukeBox"),
                                QStringLiteral("cmdHits"), QStringLiteral("cmdPlayDictionary"),
                                QStringLiteral("cmdThemeQuiz"), QStringLiteral("cmdThemeSearch"),
                                QStringLiteral("CmdPiano"), QStringLiteral("cmdTimeLine"),
                                QStringLiteral("cmdMusicology"), QStringLiteral("cmdKeyboardShortcuts"),
                                QStringLiteral("cmdHelp")}));
  EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("PlaySlider"));
}

// --- Tunes ---

TEST_F(FrontPage, OpenTuneOpensTheDialogue) {
  Start();
  bool seen = false;
  QTimer closer;
  closer.callOnTimeout([&seen] {
    QWidget* const form = FindLoadedForm(QStringLiteral("frmOpen"));
    if (form == nullptr || !form->isVisible()) return;
    seen = true;
    QTest::keyClick(form, Qt::Key_Escape);
  });
  closer.start(1);
  Click(Front(), "cmdOpenTune");
  EXPECT_TRUE(seen);
}

TEST_F(FrontPage, WithoutARecentTuneItSaysWhereTheyWillStand) {
  Start();
  for (int i = 1; i <= kRecentTuneCount; ++i) EXPECT_FALSE(Recent(i).isVisible());
  EXPECT_EQ(TextOf(Front(), "lblRecentTunes"), QStringLiteral("The tunes that you open will stand here."));
}

TEST_F(FrontPage, TheRecentTunesStandOnItNewestFirst) {
  Start();
  LoadTune("ONE");
  LoadTune("TWO");
  EXPECT_EQ(TextOf(Front(), "lblRecentTunes"), QStringLiteral("Opened last"));
  EXPECT_TRUE(Recent(1).isVisible());
  EXPECT_TRUE(Recent(2).isVisible());
  EXPECT_FALSE(Recent(3).isVisible());
  EXPECT_EQ(Spoken(Recent(1)), Global().RecentCaptions[0]);
  EXPECT_TRUE(Recent(1).text().contains(QStringLiteral("Second")));
  EXPECT_TRUE(Recent(2).text().contains(QStringLiteral("First")));
}

TEST_F(FrontPage, ARecentTuneIsOpenedByAClickAndByItsNumber) {
  Start();
  LoadTune("ONE");
  LoadTune("TWO");
  Recent(2).click();
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("First"));
  EXPECT_EQ(Bar().Tune(), main_->MyTune());
  main_->activateWindow();
  QCoreApplication::processEvents();
  QSignalSpy clicked(&Recent(2), &QAbstractButton::clicked);
  QTest::keyClick(&Front(), Qt::Key_2, Qt::AltModifier);
  // A button that a letter presses is seen to go down first.
  EXPECT_TRUE(clicked.wait(2000));
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Second"));
}

TEST_F(FrontPage, ATuneThatWasOpenedTwiceStandsOnItOnceAndStillLeadsToItself) {
  Start();
  LoadTune("ONE");
  LoadTune("TWO");
  LoadTune("TWO");
  EXPECT_TRUE(Recent(1).isVisible());
  EXPECT_TRUE(Recent(2).isVisible());
  EXPECT_FALSE(Recent(3).isVisible());
  EXPECT_TRUE(Recent(2).text().startsWith(QStringLiteral("&2")));
  Recent(2).click();
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("First"));
}

TEST_F(FrontPage, ATuneThatIsOpenedAgainAndAgainPushesNoOtherOut) {
  Start();
  LoadTune("TWO");
  for (int i = 0; i < 7; ++i) LoadTune("ONE");
  EXPECT_EQ(Spoken(Recent(1)), QStringLiteral("Bach - First"));
  ASSERT_TRUE(Recent(2).isVisible());
  EXPECT_EQ(Spoken(Recent(2)), QStringLiteral("Second"));
  EXPECT_FALSE(Recent(3).isVisible());
  // The menu has no way to it any more; the page has.
  Recent(2).click();
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Second"));
  EXPECT_EQ(Front().windowTitle(), QStringLiteral("Zelmar - Second"));
}

TEST_F(FrontPage, WhatWasOpenedStandsThereAtTheNextStartInItsOwnLibraryAlone) {
  Start();
  LoadTune("TWO");
  for (int i = 0; i < 7; ++i) LoadTune("ONE");
  main_.reset();
  const Globals before = Global();
  const auto start_anew = [&](const QString& path) {
    main_.reset();
    Global() = Globals();
    Global().DatabasePath = path;
    Start();
  };
  start_anew(before.DatabasePath);
  EXPECT_EQ(Spoken(Recent(1)), QStringLiteral("Bach - First"));
  EXPECT_EQ(Spoken(Recent(2)), QStringLiteral("Second"));
  const QString other = database_.Directory() + QStringLiteral("/Other.mdb");
  ASSERT_TRUE(QFile::copy(before.DatabasePath, other));
  Connection::Open(other)->Execute(QStringLiteral("delete * from tblRecentFiles"));
  start_anew(other);
  EXPECT_FALSE(Recent(1).isVisible());
}

TEST_F(FrontPage, ItHasRoomForSixTunesAndKeepsTheLastSix) {
  Start();
  for (int i = 0; i < 8; ++i) {
    SampleTune tune;
    tune.code_name = QStringLiteral("N%1").arg(i);
    tune.title = QStringLiteral("Tune %1").arg(i);
    tune.composer = QStringLiteral("Various");
    tune.events = SampleMelody(Pitches());
    database_.AddTune(tune);
    LoadTune(qPrintable(tune.code_name));
  }
  LoadTune("N4");
  QStringList shown;
  for (int i = 1; i <= kRecentTuneCount; ++i) shown.append(Spoken(Recent(i)).right(1));
  EXPECT_EQ(shown.join(QString()), QStringLiteral("476532"));
}

TEST_F(FrontPage, ALongTitleIsShortenedAndItsButtonKeepsItsPlace) {
  Global().RecentCodeNames[0] = QStringLiteral("ONE");
  Global().RecentCaptions[0] = QString(40, QLatin1Char('W')) + QStringLiteral(" & more");
  Start();
  EXPECT_LT(Recent(1).width(), 400);
  Recent(1).grab();
  EXPECT_TRUE(Recent(1).toolTip().endsWith(Global().RecentCaptions[0])) << qPrintable(Recent(1).toolTip());
  EXPECT_EQ(Spoken(Recent(1)), Global().RecentCaptions[0]);
}

TEST_F(FrontPage, AScreenReaderHearsWhatEachCardLeadsTo) {
  Start();
  const auto heard = [this](const char* name) {
    return QAccessible::queryAccessibleInterface(&Card(name))->text(QAccessible::Description);
  };
  EXPECT_EQ(heard("cmdOpenTune"), QStringLiteral("From the library (Ctrl+O)"));
  QSet<QString> descriptions;
  for (const Room& room : kRooms) descriptions.insert(heard(room.card));
  EXPECT_FALSE(descriptions.contains(QString()));
  EXPECT_EQ(descriptions.size(), static_cast<qsizetype>(std::size(kRooms)));
}

// --- What is not there yet ---

TEST_F(FrontPage, ARoomThatIsNotThereIsDimmedAndSaysSoByName) {
  Start();
  const auto expect_missing = [this](const char* name, const char* words) {
    CardButton& card = Card(name);
    EXPECT_TRUE(card.Dimmed()) << name;
    EXPECT_EQ(card.toolTip(), QLatin1String(words));
    EXPECT_EQ(Spoken(card), QLatin1String(words));
  };
  expect_missing("cmdHits", "Hit Parade is not part of this version.");
  expect_missing("CmdPiano", "Piano is not part of this version.");
  expect_missing("cmdThemeSearch", "Theme Search is not part of this version.");
  for (const Room& room : kRooms) EXPECT_EQ(Card(room.card).Dimmed(), IsMissing(QLatin1String(room.window)));
}

TEST_F(FrontPage, ADimmedCardIsPaintedSo) {
  const LaterWindow hits(QStringLiteral("frmPlayHits"));
  Start();
  ASSERT_FALSE(Card("cmdHits").Dimmed());
  EXPECT_GT(InkOf(Card("cmdHits")), 0.002);
  ASSERT_TRUE(Card("CmdPiano").Dimmed());
  EXPECT_EQ(InkOf(Card("CmdPiano")), 0.0);
}

TEST_F(FrontPage, AClickOnADimmedCardSaysThatItIsNotThere) {
  Start();
  Click(Front(), "cmdHits");
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kInformation);
}

TEST_F(FrontPage, ARoomThatIsThereHasItsOwnHintByItself) {
  std::vector<std::unique_ptr<LaterWindow>> windows;
  for (const Room& room : kRooms)
    windows.push_back(std::make_unique<LaterWindow>(QLatin1String(room.window)));
  Start();
  for (const Room& room : kRooms) {
    CardButton& card = Card(room.card);
    EXPECT_FALSE(card.Dimmed()) << room.card;
    EXPECT_EQ(card.toolTip(), QLatin1String(room.hint));
    EXPECT_FALSE(Spoken(card).contains(QStringLiteral("not part"))) << room.card;
  }
  Click(Front(), "cmdHits");
  EXPECT_EQ(main_->ActiveChild()->objectName(), QStringLiteral("frmPlayHits"));
}

// --- Its size ---

TEST_F(FrontPage, On800By600EverythingIsSeenWithoutMovingThePage) {
  Start();
  main_->resize(RoomInsideFrame({800, 600}));
  LoadTune();
  QCoreApplication::processEvents();
  auto& page = Find<QScrollArea>(Front(), "Page");
  EXPECT_EQ(page.horizontalScrollBar()->maximum(), 0);
  EXPECT_EQ(page.verticalScrollBar()->maximum(), 0);
  for (const Room& room : kRooms) {
    CardButton& card = Card(room.card);
    EXPECT_GE(card.width(), card.minimumSizeHint().width()) << room.card;
    EXPECT_GE(card.height(), card.minimumSizeHint().height()) << room.card;
  }
  auto& title = Find<ElidedLabel>(Front(), "lblDatabaseTitle");
  title.grab();
  EXPECT_TRUE(title.toolTip().isEmpty()) << "the title is shortened";
}

TEST_F(FrontPage, NoLongerMaximisedItStandsWithinTheMainWindow) {
  main_ = std::make_unique<MDIParent>();
  main_->resize(RoomInsideFrame({800, 600}));
  main_->Load();
  main_->show();
  QCoreApplication::processEvents();
  QMdiSubWindow* const frame = main_->Area()->currentSubWindow();
  frame->showNormal();
  QCoreApplication::processEvents();
  EXPECT_TRUE(main_->Area()->viewport()->rect().contains(frame->geometry()));
  EXPECT_EQ(Find<QScrollArea>(Front(), "Page").horizontalScrollBar()->maximum(), 0);
}

TEST_F(FrontPage, OnASmallerScreenThePageMovesAndTheKeyboardMovesIt) {
  Start();
  main_->resize(500, 380);
  QCoreApplication::processEvents();
  auto& page = Find<QScrollArea>(Front(), "Page");
  EXPECT_EQ(page.horizontalScrollBar()->maximum(), 0);
  ASSERT_GT(page.verticalScrollBar()->maximum(), 0);
  while (QApplication::focusWidget() != &Card("cmdMusicology"))
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  const QRect seen(Card("cmdMusicology").mapTo(&page, QPoint()), Card("cmdMusicology").size());
  EXPECT_TRUE(page.viewport()->rect().intersects(seen));
  EXPECT_GT(page.verticalScrollBar()->value(), 0);
}

}  // namespace
}  // namespace zelmar
