// What a person sees and can do while another program holds the database.
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <utility>

#include "app/main_window_fixture.h"
#include "app/troubled_database.h"
#include "model/tune.h"
#include "platform/real_clock.h"
#include "shell/dialog_wait.h"

namespace zelmar {
namespace {

using namespace testing_support;

class HeldDatabaseWindow : public MainWindowTest {
 protected:
  HeldDatabaseWindow() {
    Start();
    LoadTune();
    main_->MyTune()->SetTitle(QStringLiteral("Changed"));
  }

  static bool StatusIsGone() { return FindLoadedForm(QStringLiteral("DialogWait")) == nullptr; }
  QString StoredTitle() const {
    return database_.Column(QStringLiteral("select Title from tblMelodies where CodeName = 'ONE'"))
        .join(u',');
  }

  // The status window while it waits; null before and after that.
  static DialogWait* Held() {
    auto* const window = qobject_cast<DialogWait*>(FindLoadedForm(QStringLiteral("DialogWait")));
    return window != nullptr && Find<QPushButton>(*window, "cmdCancel").isVisible() ? window : nullptr;
  }

  // Saves and does `answer` to the window once it waits. Gives the virtual seconds that the save takes.
  template <typename Answer>
  double SaveAnd(Answer answer) {
    platform_.events->on_serve = [this, answer](int) {
      DialogWait* const window = Held();
      if (window == nullptr) return;
      EXPECT_EQ(TextOf(*window, "lblHeld"),
                QStringLiteral("Another program holds the database. Waiting until it is done."));
      EXPECT_TRUE(Find<QLabel>(*window, "lblHeld").isVisible());
      EXPECT_TRUE(window->windowTitle().startsWith(QStringLiteral("Saving tune  ONE")));
      EXPECT_FALSE(window->isModal());
      if (std::exchange(answered_, true))
        ++shown_after_answer_;
      else
        answer(*window);
    };
    const double start = platform_.clock->SecondsSinceMidnight();
    QTest::keyClick(main_.get(), Qt::Key_S, Qt::ControlModifier);
    platform_.events->on_serve = nullptr;
    return platform_.clock->SecondsSinceMidnight() - start;
  }

  void ExpectTheWaitWasEnded(double seconds) {
    EXPECT_TRUE(answered_);
    EXPECT_LT(seconds, 0.5);
    EXPECT_TRUE(StatusIsGone());
    ASSERT_EQ(Boxes().size(), 1);
    EXPECT_TRUE(Boxes()[0].text.startsWith(QStringLiteral(
        "\"ONE\" is not saved. Another program keeps the database for itself (the wait for it was "
        "ended).")))
        << qPrintable(Boxes()[0].text);
    EXPECT_TRUE(main_->MyTune()->ChangedSinceLastSaved());
    EXPECT_EQ(StoredTitle(), QStringLiteral("First"));
  }

  bool answered_ = false;
  int shown_after_answer_ = 0;
};

TEST_F(HeldDatabaseWindow, TheCancelButtonEndsTheWaitOfASave) {
  const LockedDatabase locked(database_);
  ExpectTheWaitWasEnded(SaveAnd([](DialogWait& window) { Click(window, "cmdCancel"); }));
}

TEST_F(HeldDatabaseWindow, EscapeEndsTheWait) {
  const LockedDatabase locked(database_);
  ExpectTheWaitWasEnded(SaveAnd([](DialogWait& window) {
    EXPECT_TRUE(window.isActiveWindow());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  }));
}

TEST_F(HeldDatabaseWindow, ClosingTheWindowEndsTheWait) {
  const LockedDatabase locked(database_);
  ExpectTheWaitWasEnded(SaveAnd([](DialogWait& window) { window.close(); }));
}

TEST_F(HeldDatabaseWindow, ASaveGoesOnWhenTheOtherProgramIsDoneAndTheButtonIsGone) {
  LockedDatabase locked(database_);
  SaveAnd([&locked](DialogWait&) { locked.Release(); });
  EXPECT_TRUE(answered_);
  EXPECT_EQ(shown_after_answer_, 0);
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_TRUE(StatusIsGone());
  EXPECT_EQ(StoredTitle(), QStringLiteral("Changed"));
}

TEST_F(HeldDatabaseWindow, TheMarqueeMovesMeanwhile) {
  LockedDatabase locked(database_);
  Platform().clock = std::make_shared<RealClock>();
  Platform().events = std::make_shared<RealEventService>();
  QStringList texts;
  QTimer watch;
  watch.callOnTimeout([&] {
    DialogWait* const window = Held();
    if (window == nullptr) return;
    const QString text = TextOf(*window, "txtWait");
    if (texts.isEmpty() || texts.last() != text) texts.append(text);
    if (texts.size() >= 3) locked.Release();
  });
  watch.start(10);
  RunCommand(QStringLiteral("mnuFileSave"));
  EXPECT_GE(texts.size(), 3);
  EXPECT_EQ(StoredTitle(), QStringLiteral("Changed"));
}

// A load has no status window of its own, so it gets one, which is in front of the dialogue and keeps
// commands away.
TEST_F(HeldDatabaseWindow, ALoadShowsAWindowOfItsOwn) {
  std::unique_ptr<ShutDatabase> shut;
  QStringList titles;
  platform_.events->on_serve = [&](int) {
    DialogWait* const window = Held();
    if (window == nullptr) return;
    titles.append(window->windowTitle());
    EXPECT_TRUE(window->isModal());
    EXPECT_EQ(QApplication::activeModalWidget(), window);
    Click(*window, "cmdCancel");
  };
  shut = std::make_unique<ShutDatabase>(database_.Path());
  QString name = QStringLiteral("TWO");
  main_->MyLoader()->DoLoad(name);
  EXPECT_EQ(titles, QStringList(QStringLiteral("Waiting for the database")));
  EXPECT_TRUE(StatusIsGone());
  EXPECT_TRUE(Global().DatabaseFailed);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

}  // namespace
}  // namespace zelmar
