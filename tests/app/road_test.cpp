// The whole road through the program, once by the mouse alone and once by the keyboard alone: open a tune in
// each of the three ways, play, pause, jump, change the tempo, turn the metronome on, stop, leave, and come
// back.
#include <QLineEdit>
#include <QListView>
#include <QSlider>

#include "app/main_window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class Road : public MainWindowTest {
 protected:
  // Acts in the open dialogue as soon as it stands. Declare it before what opens the dialogue.
  class InOpenDialogue {
   public:
    explicit InOpenDialogue(std::function<void(QWidget&)> act) {
      timer_.callOnTimeout([this, act = std::move(act)] {
        QWidget* const dialogue = FindLoadedForm(QStringLiteral("frmOpen"));
        if (dialogue == nullptr || !dialogue->isVisible()) return;
        timer_.stop();
        seen_ = true;
        try {
          act(*dialogue);
        } catch (const std::exception& failure) {
          ADD_FAILURE() << failure.what();
        }
        // What did not come to its end does not hold up the test; the dialogue may be gone.
        if (QWidget* const left = FindLoadedForm(QStringLiteral("frmOpen"))) left->close();
      });
      timer_.start(1);
    }
    ~InOpenDialogue() { EXPECT_TRUE(seen_) << "the open dialogue did not stand"; }

   private:
    QTimer timer_;
    bool seen_ = false;
  };

  // Runs `act` once, when the tune has reached the bar and beat.
  void AtBeat(int bar, int beat, std::function<void()> act) {
    const auto tune = main_->MyTune();
    QObject::connect(tune.get(), &Tune::Ticked, &Bar(), [=, this, done = false]() mutable {
      if (done || tune->BarNumber() != bar || tune->BeatWithinBar() != beat) return;
      done = true;
      ++reached_;
      act();
    });
  }

  void EndRun() {
    main_->close();
    main_.reset();
    for (QWidget* form : LoadedForms()) form->close();
    LetClosedWindowsGo();
    ForgetTheEnd();
    Global().RecentCodeNames.fill({});
    Global().RecentCaptions.fill({});
    Global().TuneLoadedFlag = false;
    TheSoundCard() = std::make_shared<SoundCard>();
  }

  QString CurrentTitle() const { return main_->MyTune() ? main_->MyTune()->Title() : QString(); }
  QSlider& Tempo() { return Find<QSlider>(Bar(), "TempoSlider"); }
  QSlider& Position() { return Find<QSlider>(Bar(), "PlaySlider"); }
  int SoundingNotes() const {
    int sounding = 0;
    for (const auto& message : platform_.midi->sent) {
      if (message.kind == SentMessage::Kind::kReset) sounding = 0;
      if (message.kind != SentMessage::Kind::kShort) continue;
      const auto status = message.packed & 0xF0U;
      const auto volume = (message.packed >> 16U) & 0x7FU;
      if (status == 0x90U && volume > 0) ++sounding;
      if (status == 0x80U || (status == 0x90U && volume == 0)) --sounding;
    }
    return sounding;
  }

  QString StoredTitle(const char* code_name) const {
    return database_
        .Column(QStringLiteral("select Title from tblMelodies where CodeName = '%1'")
                    .arg(QString::fromLatin1(code_name)))
        .join(u',');
  }
  // After a save of "ONE" under the title "Changed" and one more under the name "Mine".
  void ExpectCopy() const {
    ASSERT_EQ(Boxes().size(), 1);
    EXPECT_EQ(Boxes()[0].title, QStringLiteral("Save Completed OK"));
    EXPECT_EQ(StoredTitle("Mine"), QStringLiteral("Mine - Copy"));
    EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
    EXPECT_EQ(database_.Column(QStringLiteral("select * from [Mine]")).size(), Pitches().size());
  }

  int reached_ = 0;
};

// --- The mouse ---

class MouseRoad : public Road {
 protected:
  // The menu bar, then the item.
  void Choose(const char* menu_name, const QString& item_name) {
    auto& menu = Find<QMenu>(*main_, menu_name);
    QTest::mouseClick(main_->menuBar(), Qt::LeftButton, {},
                      main_->menuBar()->actionGeometry(menu.menuAction()).center());
    ASSERT_TRUE(menu.isVisible());
    QAction* item = menu.findChild<QAction*>(item_name);
    ASSERT_NE(item, nullptr) << qPrintable(item_name);
    QTest::mouseMove(&menu, menu.actionGeometry(item).center());
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(item).center());
    EXPECT_FALSE(menu.isVisible());
  }

  static void ClickTitle(QWidget& dialogue, const QString& title) {
    auto& list = Find<QListView>(dialogue, "listMelodies");
    const auto found =
        list.model()->match(list.model()->index(0, 0), Qt::DisplayRole, title, 1, Qt::MatchStartsWith);
    ASSERT_EQ(found.size(), 1);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(found[0]).center());
  }
};

TEST_F(MouseRoad, FromTheStartToTheNextStart) {
  Start();
  {
    InOpenDialogue pick([](QWidget& dialogue) { ClickTitle(dialogue, QStringLiteral("First")); });
    Choose("mnuFile", QStringLiteral("mnuFileOpen"));
  }
  EXPECT_EQ(CurrentTitle(), QStringLiteral("First"));
  {
    InOpenDialogue pick([](QWidget& dialogue) { ClickTitle(dialogue, QStringLiteral("Second")); });
    Click(Bar(), "cmdNewTune");
  }
  EXPECT_EQ(CurrentTitle(), QStringLiteral("Second"));
  Choose("mnuFile", QStringLiteral("mnuRecentTunes(3)"));
  EXPECT_EQ(CurrentTitle(), QStringLiteral("First"));
  EXPECT_EQ(TextOf(Bar(), "lblTitle"), QStringLiteral("Bach - First"));

  AtBeat(2, 2, [this] { Click(Bar(), "cmdPause"); });
  Click(Bar(), "cmdPlay");
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("2"));
  EXPECT_TRUE(IsEnabled(Bar(), "cmdPlay"));

  Click(Bar(), "cmdForward");
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("3"));
  Click(Bar(), "cmdBack");
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("2"));
  Click(Bar(), "cmdEnd");
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), TextOf(Bar(), "lblTotalbars"));
  Click(Bar(), "cmdRewind");
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("1"));
  platform_.input->answers = {QStringLiteral("3")};
  Click(Bar(), "cmdGoTo");
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("3"));
  QTest::mouseClick(&Position(), Qt::LeftButton, {}, QPoint(4, Position().height() / 2));
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("1"));
  EXPECT_EQ(TextOf(Bar(), "lblMyBeat"), QStringLiteral("4"));
  Click(Bar(), "cmdRewind");

  const int tempo = Tempo().value();
  QTest::mouseClick(&Tempo(), Qt::LeftButton, {}, QPoint(Tempo().width() - 4, Tempo().height() / 2));
  EXPECT_EQ(Tempo().value(), tempo + 40);
  EXPECT_EQ(main_->MyTune()->Tempo(), tempo + 40);
  auto& metronome = Find<QCheckBox>(Bar(), "chkMetronome");
  QTest::mouseClick(&metronome, Qt::LeftButton, {}, QPoint(8, metronome.height() / 2));
  EXPECT_EQ(main_->MyTune()->HearTick(), 1);

  AtBeat(3, 3, [this] { Click(Bar(), "cmdStop"); });
  Click(Bar(), "cmdPlay");
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("1"));
  EXPECT_EQ(reached_, 2);
  EXPECT_LE(SoundingNotes(), 0);

  main_->MyTune()->SetTitle(QStringLiteral("Changed"));
  Choose("mnuFile", QStringLiteral("mnuFileExit"));
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("About to close Zelmar"));
  EXPECT_FALSE(main_->isVisible());
  EndRun();

  Start();
  EXPECT_EQ(Listed("mnuFile", "mnuRecentTunes", 2).value(0)->data().toString(), QStringLiteral("ONE"));
  Choose("mnuFile", QStringLiteral("mnuRecentTunes(2)"));
  EXPECT_EQ(CurrentTitle(), QStringLiteral("First"));
  Choose("mnuFile", QStringLiteral("mnuFileExit"));
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(MouseRoad, SaveAndSaveAs) {
  database_.AddRow(QStringLiteral("tblRecentFiles"), {QStringLiteral("ONE"), QStringLiteral("First")});
  Start();
  Choose("mnuFile", QStringLiteral("mnuRecentTunes(2)"));
  EXPECT_EQ(CurrentTitle(), QStringLiteral("First"));
  main_->MyTune()->SetTitle(QStringLiteral("Changed"));
  Choose("mnuFile", QStringLiteral("mnuFileSave"));
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
  EXPECT_FALSE(main_->MyTune()->ChangedSinceLastSaved());
  platform_.input->answers = {QStringLiteral("Mine")};
  Choose("mnuFile", QStringLiteral("mnuFileSaveAs"));
  ExpectCopy();
  Choose("mnuFile", QStringLiteral("mnuFileExit"));
  EXPECT_EQ(Boxes().size(), 1);  // a tune that is saved is not asked about
  EndRun();

  Start();
  {
    InOpenDialogue pick([](QWidget& dialogue) { ClickTitle(dialogue, QStringLiteral("Mine - Copy")); });
    Choose("mnuFile", QStringLiteral("mnuFileOpen"));
  }
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("Mine"));
}

// --- The keyboard ---

class KeyboardRoad : public Road {
 protected:
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    // A window manager gives the keyboard back when a dialogue goes.
    if (QApplication::activeWindow() == nullptr) main_->activateWindow();
    QCoreApplication::processEvents();
    QWidget* const target = QApplication::focusWidget();
    QTest::keyClick(target != nullptr ? target : main_.get(), key, modifiers);
  }

  // Alt and the menu's letter, then down to the item.
  void Choose(const char* menu_name, Qt::Key letter, const QString& item_name) {
    auto& menu = Find<QMenu>(*main_, menu_name);
    Press(letter, Qt::AltModifier);
    ASSERT_TRUE(menu.isVisible());
    for (int i = 0;
         i < 60 && (menu.activeAction() == nullptr || menu.activeAction()->objectName() != item_name); ++i)
      QTest::keyClick(&menu, Qt::Key_Down);
    ASSERT_NE(menu.activeAction(), nullptr);
    ASSERT_EQ(menu.activeAction()->objectName(), item_name);
    QTest::keyClick(&menu, Qt::Key_Return);
  }

  void TabTo(QWidget& control) {
    for (int i = 0; i < 60 && !control.hasFocus(); ++i) Press(Qt::Key_Tab);
    ASSERT_TRUE(control.hasFocus()) << qPrintable(control.objectName());
  }

  static void TypeTitle(QWidget& dialogue, const QString& words) {
    ASSERT_NE(dialogue.focusWidget(), nullptr);
    QTest::keyClicks(dialogue.focusWidget(), words);
    QTest::keyClick(dialogue.focusWidget(), Qt::Key_Return);
  }
};

TEST_F(KeyboardRoad, FromTheStartToTheNextStart) {
  Start();
  {
    InOpenDialogue pick([](QWidget& dialogue) { TypeTitle(dialogue, QStringLiteral("first")); });
    Choose("mnuFile", Qt::Key_F, QStringLiteral("mnuFileOpen"));
  }
  EXPECT_EQ(CurrentTitle(), QStringLiteral("First"));
  {
    InOpenDialogue pick([](QWidget& dialogue) { TypeTitle(dialogue, QStringLiteral("second")); });
    TabTo(Find<QWidget>(Bar(), "cmdNewTune"));
    Press(Qt::Key_Space);
  }
  EXPECT_EQ(CurrentTitle(), QStringLiteral("Second"));
  Choose("mnuFile", Qt::Key_F, QStringLiteral("mnuRecentTunes(3)"));
  EXPECT_EQ(CurrentTitle(), QStringLiteral("First"));
  {
    InOpenDialogue pick([](QWidget& dialogue) { TypeTitle(dialogue, QStringLiteral("first")); });
    Press(Qt::Key_O, Qt::ControlModifier);
  }

  AtBeat(2, 2, [this] { Press(Qt::Key_F4); });
  Press(Qt::Key_F2);
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("2"));
  EXPECT_TRUE(IsEnabled(Bar(), "cmdPlay"));

  TabTo(Find<QWidget>(Bar(), "cmdPlay"));
  Press(Qt::Key_PageDown);
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("3"));
  Press(Qt::Key_PageUp);
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("2"));
  Press(Qt::Key_End);
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), TextOf(Bar(), "lblTotalbars"));
  Press(Qt::Key_Home);
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("1"));
  platform_.input->answers = {QStringLiteral("3")};
  Press(Qt::Key_F5);
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("3"));
  Press(Qt::Key_F6);
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("1"));
  TabTo(Position());
  Press(Qt::Key_PageDown);
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("2"));

  TabTo(Tempo());
  const int tempo = Tempo().value();
  Press(Qt::Key_Right);
  EXPECT_EQ(main_->MyTune()->Tempo(), tempo + 10);
  TabTo(Find<QWidget>(Bar(), "chkMetronome"));
  Press(Qt::Key_Space);
  EXPECT_EQ(main_->MyTune()->HearTick(), 1);

  AtBeat(3, 3, [this] { Press(Qt::Key_F3); });
  Press(Qt::Key_F2);
  EXPECT_EQ(TextOf(Bar(), "lblMyBar"), QStringLiteral("1"));
  EXPECT_EQ(reached_, 2);
  EXPECT_LE(SoundingNotes(), 0);

  main_->MyTune()->SetTitle(QStringLiteral("Changed"));
  Press(Qt::Key_X, Qt::ControlModifier);
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("About to close Zelmar"));
  EXPECT_FALSE(main_->isVisible());
  EndRun();

  Start();
  Choose("mnuFile", Qt::Key_F, QStringLiteral("mnuRecentTunes(2)"));
  EXPECT_EQ(CurrentTitle(), QStringLiteral("First"));
  Choose("mnuFile", Qt::Key_F, QStringLiteral("mnuFileExit"));
  EXPECT_FALSE(main_->isVisible());
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(KeyboardRoad, SaveAndSaveAs) {
  database_.AddRow(QStringLiteral("tblRecentFiles"), {QStringLiteral("ONE"), QStringLiteral("First")});
  Start();
  Choose("mnuFile", Qt::Key_F, QStringLiteral("mnuRecentTunes(2)"));
  EXPECT_EQ(CurrentTitle(), QStringLiteral("First"));
  main_->MyTune()->SetTitle(QStringLiteral("Changed"));
  Press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_EQ(StoredTitle("ONE"), QStringLiteral("Changed"));
  EXPECT_FALSE(main_->MyTune()->ChangedSinceLastSaved());
  platform_.input->answers = {QStringLiteral("Mine")};
  Choose("mnuFile", Qt::Key_F, QStringLiteral("mnuFileSaveAs"));
  ExpectCopy();
  Press(Qt::Key_X, Qt::ControlModifier);
  EXPECT_FALSE(main_->isVisible());
  EXPECT_EQ(Boxes().size(), 1);  // a tune that is saved is not asked about
  EndRun();

  Start();
  {
    InOpenDialogue pick([](QWidget& dialogue) { TypeTitle(dialogue, QStringLiteral("mine - copy")); });
    Press(Qt::Key_O, Qt::ControlModifier);
  }
  EXPECT_EQ(main_->MyTune()->FileName(), QStringLiteral("Mine"));
}

}  // namespace
}  // namespace zelmar
