// The open dialogue: its list, its keys, and how a tune comes in.
#include "app/frm_open.h"

#include <QAccessible>
#include <QDir>
#include <QLineEdit>
#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTextDocument>

#include "app/main_window_fixture.h"
#include "shell/tune_combo.h"

namespace zelmar {
namespace {

using namespace testing_support;

class OpenDialogue : public MainWindowTest {
 protected:
  OpenDialogue() { Start(); }

  void AddTunes(int count) {
    for (int i = 0; i < count; ++i) {
      SampleTune tune;
      tune.code_name = QStringLiteral("T%1").arg(i);
      tune.title = QStringLiteral("Tune %1").arg(i, 2, 10, QLatin1Char('0'));
      tune.composer = QStringLiteral("Various");
      tune.events = SampleMelody({QStringLiteral("C4")});
      database_.AddTune(tune);
    }
  }

  void AddTitled(const QString& title) {
    SampleTune tune;
    tune.code_name = QStringLiteral("N%1").arg(added_++);
    tune.title = title;
    tune.composer = QStringLiteral("Various");
    tune.events = SampleMelody({QStringLiteral("C4")});
    database_.AddTune(tune);
  }

  void Open() {
    dialog_ = std::make_unique<FrmOpen>(main_.get());
    ASSERT_TRUE(dialog_->Load());
    dialog_->show();
    QCoreApplication::processEvents();
  }

  TuneCombo& Combo() { return Find<TuneCombo>(*dialog_, "cboMelodies"); }
  QLineEdit& Field() { return Find<QLineEdit>(*dialog_, "txtFind"); }
  // Letters that no key of a plain keyboard has, too.
  void Type(const QString& text) {
    for (const QChar letter : text) {
      QKeyEvent key(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, letter);
      QCoreApplication::sendEvent(&Field(), &key);
    }
  }
  void Key(int key) { QTest::keyClick(&Field(), static_cast<Qt::Key>(key)); }

  int added_ = 0;
  std::unique_ptr<FrmOpen> dialog_;
};

TEST_F(OpenDialogue, TitlesNameTheComposerUnlessVarious) {
  Open();
  EXPECT_EQ(Combo().RowCount(), 2);
  EXPECT_EQ(Combo().SelectedTitle(), QStringLiteral("First by Bach"));
  Key(Qt::Key_Down);
  EXPECT_EQ(Combo().SelectedTitle(), QStringLiteral("Second"));
}

TEST_F(OpenDialogue, OpensOnTheLastTune) {
  Global().RecentCodeNames[0] = QStringLiteral("TWO");
  Open();
  EXPECT_EQ(Combo().SelectedCodeName(), QStringLiteral("TWO"));
}

TEST_F(OpenDialogue, OpensOnTheFirstRowWithoutALastTune) {
  Open();
  EXPECT_EQ(Combo().SelectedCodeName(), QStringLiteral("ONE"));
}

TEST_F(OpenDialogue, AnEmptyDatabaseShowsTheBoxAndNoDialogue) {
  database_.Execute(QStringLiteral("delete * from tblMelodies"));
  bool seen = false;
  QTimer::singleShot(0, main_.get(), [&seen] {
    for (QWidget* form : LoadedForms())
      if (form->objectName() == QLatin1String("frmOpen")) {
        seen = form->isVisible();
        form->close();
      }
  });
  FrmOpen::ShowModal();
  QCoreApplication::processEvents();
  EXPECT_FALSE(seen);
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kCritical);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("Unable to load anything."));
  EXPECT_EQ(
      Boxes()[0].text,
      QStringLiteral("There are no tunes yet in this database. Create a tune using MENU -> EDIT -> STAFF "
                     "NOTATION VIEW, or import one from a MIDI file using MENU -> FILE -> IMPORT MIDI "
                     "FILE."));
}

TEST_F(OpenDialogue, AMissingDatabaseIsToldOnceAndNothingIsShown) {
  Global().DatabasePath = database_.Directory() + QStringLiteral("/gone.mdb");
  FrmOpen::ShowModal();
  EXPECT_TRUE(Global().DatabaseFailed);
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(OpenDialogue, PageDownMovesFiveRows) {
  AddTunes(20);
  Open();
  Key(Qt::Key_PageDown);
  EXPECT_EQ(Combo().SelectedTitle(), QStringLiteral("Tune 03"));
  Key(Qt::Key_PageDown);
  EXPECT_EQ(Combo().SelectedTitle(), QStringLiteral("Tune 08"));
  Key(Qt::Key_Up);
  EXPECT_EQ(Combo().SelectedTitle(), QStringLiteral("Tune 07"));
  for (int i = 0; i < 9; ++i) Key(Qt::Key_PageDown);
  EXPECT_EQ(Combo().SelectedTitle(), QStringLiteral("Tune 19"));
}

TEST_F(OpenDialogue, TypingNarrowsTheListAndSelectsTheBestRow) {
  AddTunes(20);
  Open();
  QTest::keyClicks(&Field(), QStringLiteral("tune 1"));
  EXPECT_EQ(Combo().SelectedTitle(), QStringLiteral("Tune 10"));
  QTest::keyClicks(&Field(), QStringLiteral("7"));
  EXPECT_EQ(Combo().RowCount(), 1);
  EXPECT_EQ(Combo().SelectedTitle(), QStringLiteral("Tune 17"));
  Field().clear();
  EXPECT_EQ(Combo().RowCount(), 22);
  EXPECT_EQ(Combo().SelectedTitle(), QStringLiteral("Tune 17"));
  QTest::keyClicks(&Field(), QStringLiteral("bach first"));
  EXPECT_EQ(Combo().SelectedCodeName(), QStringLiteral("ONE"));
}

TEST_F(OpenDialogue, AScreenReaderHearsTheFieldTheListAndTheTitleThatIsSelected) {
  Open();
  const auto spoken = [](QWidget& control, QAccessible::Text kind) {
    return QAccessible::queryAccessibleInterface(&control)->text(kind);
  };
  EXPECT_EQ(spoken(Field(), QAccessible::Name), QStringLiteral("Find a tune"));
  EXPECT_EQ(spoken(Find<QListView>(*dialog_, "listMelodies"), QAccessible::Name), QStringLiteral("Tunes"));
  EXPECT_EQ(spoken(Find<QWidget>(*dialog_, "MyProgressBar"), QAccessible::Name),
            QStringLiteral("Progress of the load"));
  EXPECT_EQ(spoken(Find<QWidget>(*dialog_, "txtWait"), QAccessible::Name), QStringLiteral("Please wait"));
  EXPECT_EQ(spoken(Field(), QAccessible::Description), QStringLiteral("First by Bach"));
  Key(Qt::Key_Down);
  EXPECT_EQ(spoken(Field(), QAccessible::Description), QStringLiteral("Second"));
  QTest::keyClicks(&Field(), QStringLiteral("firs"));
  EXPECT_EQ(spoken(Field(), QAccessible::Description), QStringLiteral("First by Bach"));
}

TEST_F(OpenDialogue, EnterOnCancelClosesWithoutLoading) {
  Open();
  dialog_->activateWindow();
  auto& cancel = Find<QPushButton>(*dialog_, "cmdCancel");
  cancel.setFocus();
  QTest::keyClick(&cancel, Qt::Key_Return);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_FALSE(main_->MyTune());
}

TEST_F(OpenDialogue, WhereNothingFitsItSaysSo) {
  Open();
  const auto spoken = [this] {
    return QAccessible::queryAccessibleInterface(&Field())->text(QAccessible::Description);
  };
  QTest::keyClicks(&Field(), QStringLiteral("zzz"));
  EXPECT_EQ(Combo().RowCount(), 0);
  EXPECT_EQ(TextOf(*dialog_, "lblPleaseWait"), QStringLiteral("No title or composer holds what is typed."));
  EXPECT_EQ(spoken(), QStringLiteral("No title or composer holds what is typed."));
  EXPECT_TRUE(Boxes().isEmpty());
  Field().clear();
  EXPECT_EQ(TextOf(*dialog_, "lblPleaseWait"), QStringLiteral("Choose a tune to load"));
  EXPECT_EQ(spoken(), Combo().SelectedTitle());
}

TEST_F(OpenDialogue, ATuneWithoutAComposerStandsByItsTitleAlone) {
  SampleTune tune;
  tune.code_name = QStringLiteral("MINE");
  tune.title = QStringLiteral("Stand by me");
  tune.composer = QStringLiteral(" ");
  tune.events = SampleMelody({QStringLiteral("C4")});
  database_.AddTune(tune);
  Open();
  QTest::keyClicks(&Field(), QStringLiteral("stand"));
  EXPECT_EQ(Combo().SelectedTitle(), QStringLiteral("Stand by me"));
}

TEST_F(OpenDialogue, TheExampleOfTheHelpFindsAShippedTune) {
  QFile page(QStringLiteral(ZELMAR_SOURCE_DIRECTORY "/help/ZelmarHelp/OpenTune.htm"));
  ASSERT_TRUE(page.open(QIODevice::ReadOnly));
  QTextDocument text;
  text.setHtml(QString::fromUtf8(page.readAll()));
  const auto example =
      QRegularExpression(QStringLiteral("\"(.+)\"\\s+finds\\s+\"(.+)\"")).match(text.toPlainText());
  ASSERT_TRUE(example.hasMatch());
  int titles = 0;
  for (const QFileInfo& tune : QDir(QStringLiteral(ZELMAR_SOURCE_DIRECTORY "/data/tunes")).entryInfoList()) {
    if (tune.suffix() != QLatin1String("abc")) continue;
    QFile file(tune.filePath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto title = QRegularExpression(QStringLiteral("^T:(.*)$"), QRegularExpression::MultilineOption)
                           .match(QString::fromUtf8(file.readAll()));
    AddTitled(title.captured(1).trimmed());
    ++titles;
  }
  ASSERT_GT(titles, 10);
  Open();
  QTest::keyClicks(&Field(), example.captured(1));
  EXPECT_EQ(Combo().RowCount(), 1);
  EXPECT_EQ(Combo().SelectedTitle(), example.captured(2));
}

TEST_F(OpenDialogue, TypingFindsATitleWhateverItsCaseAndAccents) {
  AddTitled(QStringLiteral("Été"));
  AddTitled(QStringLiteral("Für Elise"));
  Open();
  for (const char* typed : {"ete", "ETE", "été", "Ete"}) {
    Field().clear();
    Type(QString::fromUtf8(typed));
    EXPECT_EQ(Combo().RowCount(), 1) << typed;
    EXPECT_EQ(Combo().SelectedTitle(), QStringLiteral("Été")) << typed;
  }
  Field().clear();
  QTest::keyClicks(&Field(), QStringLiteral("elise fur"));
  EXPECT_EQ(Combo().SelectedTitle(), QStringLiteral("Für Elise"));
}

TEST_F(OpenDialogue, TheTitleThatBeginsWithWhatIsTypedIsSelectedWhateverItsAccents) {
  AddTitled(QStringLiteral("A ete"));
  AddTitled(QStringLiteral("Été"));
  Open();
  QTest::keyClicks(&Field(), QStringLiteral("ete"));
  EXPECT_EQ(Combo().RowCount(), 2);
  EXPECT_EQ(Combo().SelectedTitle(), QStringLiteral("Été"));
}

TEST_F(OpenDialogue, TypingTakesWildcardsAsTheyStand) {
  const QStringList titles = {QStringLiteral("100% Folk"), QStringLiteral("Snake_Dance"),
                              QStringLiteral("Star * Song"), QStringLiteral("What? [One]")};
  for (const QString& title : titles) AddTitled(title);
  Open();
  const char* const typed[] = {"%", "_", "*", "? ["};
  for (qsizetype i = 0; i < titles.size(); ++i) {
    Field().clear();
    QTest::keyClicks(&Field(), QLatin1String(typed[i]));
    EXPECT_EQ(Combo().RowCount(), 1) << typed[i];
    EXPECT_EQ(Combo().SelectedTitle(), titles[i]) << typed[i];
  }
  Field().clear();
  QTest::keyClicks(&Field(), QStringLiteral("s%e"));
  EXPECT_EQ(Combo().RowCount(), 0);
}

TEST_F(OpenDialogue, WithoutASelectionTheBoxAsksForOne) {
  Open();
  QTest::keyClicks(&Field(), QStringLiteral("no such tune"));
  Global().TuneLoadedFlag = true;
  Key(Qt::Key_Return);
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kInformation);
  EXPECT_EQ(Boxes()[0].text, QStringLiteral("Please select a melody from the drop-down list."));
  EXPECT_TRUE(Global().TuneLoadedFlag);
  EXPECT_TRUE(dialog_->isVisible());
}

TEST_F(OpenDialogue, EnterLoadsTheTuneAndClosesTheDialogue) {
  Open();
  Key(Qt::Key_Return);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_TRUE(Global().TuneLoadedFlag);
  ASSERT_TRUE(main_->MyTune());
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("First"));
  EXPECT_EQ(Bar().Tune(), main_->MyTune());
  EXPECT_EQ(Front().windowTitle(), QStringLiteral("Zelmar - Front Screen - Bach - First"));
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(OpenDialogue, ACaptionLeavesVariousOut) {
  Open();
  Key(Qt::Key_Down);
  Click(*dialog_, "cmdOK");
  EXPECT_EQ(Front().windowTitle(), QStringLiteral("Zelmar - Front Screen - Second"));
}

TEST_F(OpenDialogue, AClickOnARowLoadsIt) {
  Open();
  auto& list = Find<QListView>(*dialog_, "listMelodies");
  const QRect row = list.visualRect(list.model()->index(1, 0));
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, row.center());
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Second"));
}

TEST_F(OpenDialogue, EscapeAndCancelCloseWithoutLoading) {
  Open();
  Key(Qt::Key_Escape);
  EXPECT_FALSE(dialog_->isVisible());
  Open();
  Click(*dialog_, "cmdCancel");
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_FALSE(Global().TuneLoadedFlag);
  EXPECT_FALSE(main_->MyTune());
}

TEST_F(OpenDialogue, TheOldTuneCountsAsGoneAndThePercentIsShownWhileLoading) {
  Open();
  Global().TuneLoadedFlag = true;
  QStringList percents;
  bool gone = true;
  QObject::connect(
      main_->MyLoader().get(), &TuneLoader::PercentCompleted, dialog_.get(), [&](std::int16_t percent) {
        if (percent < 15) gone = gone && !Global().TuneLoadedFlag;
        percents.append(TextOf(*dialog_, "lblPercent"));
        EXPECT_EQ(Find<QProgressBar>(*dialog_, "MyProgressBar").value(), percents.last().chopped(1).toInt());
        EXPECT_EQ(TextOf(*dialog_, "lblPleaseWait"),
                  QStringLiteral("Please wait while tune is being loaded"));
        EXPECT_TRUE(Find<QTimer>(*dialog_, "Timer1").isActive());
        EXPECT_FALSE(IsEnabled(*dialog_, "cmdOK"));
      });
  dialog_->GetTune();
  EXPECT_TRUE(gone);
  ASSERT_FALSE(percents.isEmpty());
  EXPECT_TRUE(percents.contains(QStringLiteral("55%"))) << qPrintable(percents.join(QLatin1Char(' ')));
  EXPECT_FALSE(Find<QTimer>(*dialog_, "Timer1").isActive());
}

TEST_F(OpenDialogue, ATuneThatIsNotThereKeepsTheDialogueOpen) {
  Open();
  database_.Execute(QStringLiteral("delete * from tblMelodies where CodeName = 'ONE'"));
  Global().TuneLoadedFlag = true;
  dialog_->GetTune();
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("ONE not in Zelmar database."));
  EXPECT_EQ(Boxes()[0].text,
            QStringLiteral("Sorry, but this tune was not found in the database. Please select "
                           "a tune from the list."));
  EXPECT_TRUE(dialog_->isVisible());
  EXPECT_TRUE(IsEnabled(*dialog_, "cmdOK"));
  EXPECT_FALSE(Global().TuneLoadedFlag);
}

TEST_F(OpenDialogue, ALoadThatFailsOnTheWayLeavesNoTuneLoaded) {
  LoadTune();
  Open();
  database_.Execute(QStringLiteral("update tblMelodies set BeatLength = 0 where CodeName = 'ONE'"));
  EXPECT_THROW(dialog_->GetTune(), DivisionError);
  EXPECT_FALSE(Global().TuneLoadedFlag);
  EXPECT_TRUE(dialog_->isVisible());
  EXPECT_TRUE(IsEnabled(*dialog_, "cmdOK"));
}

TEST_F(OpenDialogue, F1ShowsTheTopicAsTheHelpButtonDoes) {
  Open();
  dialog_->activateWindow();
  QSignalSpy clicked(&Find<QPushButton>(*dialog_, "cmdHelp"), &QPushButton::clicked);
  Key(Qt::Key_F1);
  EXPECT_EQ(clicked.count(), 1);
}

TEST_F(OpenDialogue, EscapeDuringALoadIsNotHeard) {
  Open();
  bool tried = false;
  QObject::connect(main_->MyLoader().get(), &TuneLoader::PercentCompleted, dialog_.get(), [&](std::int16_t) {
    tried = true;
    dialog_->reject();
    EXPECT_TRUE(dialog_->isVisible());
  });
  dialog_->GetTune();
  EXPECT_TRUE(tried);
}

TEST_F(OpenDialogue, ADoubleClickOnOKLoadsOnce) {
  Open();
  QPushButton* const ok = &Find<QPushButton>(*dialog_, "cmdOK");
  QTest::mouseClick(ok, Qt::LeftButton);
  QTest::mouseDClick(ok, Qt::LeftButton);
  QTest::mouseRelease(ok, Qt::LeftButton);
  QCoreApplication::processEvents();
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(Global().RecentCodeNames[0], QStringLiteral("ONE"));
  EXPECT_TRUE(Global().RecentCodeNames[1].isEmpty());
}

TEST_F(OpenDialogue, ASecondClickInTheMiddleOfALoadIsNotHeard) {
  Open();
  bool tried = false;
  QObject::connect(main_->MyLoader().get(), &TuneLoader::PercentCompleted, dialog_.get(), [&](std::int16_t) {
    tried = true;
    Click(*dialog_, "cmdOK");
    dialog_->GetTune();
    dialog_->close();
    EXPECT_TRUE(dialog_->isVisible());
  });
  dialog_->GetTune();
  EXPECT_TRUE(tried);
  EXPECT_TRUE(Global().RecentCodeNames[1].isEmpty());
}

TEST_F(OpenDialogue, ATuneThatPlaysIsStoppedBeforeTheLoad) {
  LoadTune("TWO");
  const std::shared_ptr<Tune> old = main_->MyTune();
  bool loaded = false;
  QObject::connect(old.get(), &Tune::Ticked, main_.get(), [&] {
    if (old->BarNumber() != 2 || loaded) return;
    loaded = true;
    Open();
    dialog_->GetTune();
    EXPECT_FALSE(old->Playing());
  });
  Bar().Play();
  EXPECT_TRUE(loaded);
  EXPECT_EQ(Bar().Tune(), main_->MyTune());
  EXPECT_NE(Bar().Tune(), old);
  EXPECT_TRUE(IsEnabled(Bar(), "cmdPlay"));
}

TEST_F(OpenDialogue, ALoadBringsTheChannelsToAKnownState) {
  Open();
  platform_.midi->sent.clear();
  dialog_->GetTune();
  const auto words = platform_.midi->ShortMessages();
  ASSERT_EQ(words.size(), 16U * 5U);
  const std::pair<int, int> controllers[] = {{121, 0}, {93, 0}, {91, 0}, {7, 127}, {10, 64}};
  for (std::uint32_t channel = 0; channel < 16; ++channel)
    for (std::uint32_t i = 0; i < 5; ++i)
      EXPECT_EQ(words[channel * 5 + i], 0xB0U + channel +
                                            static_cast<std::uint32_t>(controllers[i].first) * 256U +
                                            static_cast<std::uint32_t>(controllers[i].second) * 65536U);
}

TEST_F(OpenDialogue, TheLoadIsNotHeardByTheDialogueAfterwards) {
  Open();
  dialog_->GetTune();
  dialog_.reset();
  LoadTune("TWO");
  EXPECT_EQ(main_->MyTune()->Title(), QStringLiteral("Second"));
}

}  // namespace
}  // namespace zelmar
