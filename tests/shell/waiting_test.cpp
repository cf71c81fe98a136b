// The windows that ask for patience, and their running text.
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QTimer>

#include "shell/dialog_wait.h"
#include "shell/frm_progress_bar.h"
#include "shell/help.h"
#include "shell/loaded_forms.h"
#include "shell/marquee.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

TEST(MarqueeText, ShowsSixCharactersFromThePositionOn) {
  Marquee marquee;
  EXPECT_EQ(marquee.Step(), QStringLiteral("Please"));
  EXPECT_EQ(marquee.Step(), QStringLiteral("lease "));
  QString last;
  for (int position = 3; position <= 14; ++position) last = marquee.Step();
  EXPECT_EQ(last, QStringLiteral("      "));
  EXPECT_EQ(marquee.Step(), QStringLiteral("Please"));
}

TEST(MarqueeText, TakesTheNextOfSevenColoursAtEachRestartAndWraps) {
  Marquee marquee;
  const QList<QColor> colours = {{255, 0, 0}, {255, 0, 255}, {0, 0, 255},     {0, 255, 255},
                                 {0, 255, 0}, {255, 255, 0}, {255, 255, 255}, {255, 0, 0}};
  for (const QColor& colour : colours)
    for (int step = 0; step < 14; ++step) {
      marquee.Step();
      EXPECT_EQ(marquee.Colour(), colour);
    }
}

class Waiting : public ::testing::Test {
 protected:
  ~Waiting() override {
    DialogWait::Unload();
    FrmProgressBar::Unload();
    LetClosedWindowsGo();
  }

  ScriptedPlatform platform_;
};

TEST_F(Waiting, TheStatusWindowTicksEvery150Milliseconds) {
  DialogWait* const window = DialogWait::Instance();
  window->show();
  const auto& timer = Find<QTimer>(*window, "Timer1");
  EXPECT_TRUE(timer.isActive());
  EXPECT_EQ(timer.interval(), 150);
}

TEST_F(Waiting, TheSelfClosingWindowGoesOnceItsCountHasReached1000) {
  const QPointer<DialogWait> window = DialogWait::Instance();
  window->SetSelfClosing(true);
  window->SetCaption(QStringLiteral("Midi Reset"));
  window->show();
  QTest::qWait(700);
  ASSERT_TRUE(window);
  EXPECT_TRUE(window->isVisible());
  EXPECT_GT(window->TickCount(), 0);
  EXPECT_LT(window->TickCount(), 1000);
  EXPECT_TRUE(QTest::qWaitFor([&] { return window.isNull() || !window->isVisible(); }, 3000));
}

TEST_F(Waiting, WithoutTheFlagTheWindowStays) {
  const QPointer<DialogWait> window = DialogWait::Instance();
  window->show();
  QTest::qWait(1400);
  ASSERT_TRUE(window);
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(window->TickCount(), 0);
}

TEST_F(Waiting, ShowingTheWindowAgainStartsTheCountAnew) {
  DialogWait* const window = DialogWait::Instance();
  window->SetSelfClosing(true);
  window->show();
  ASSERT_TRUE(QTest::qWaitFor([&] { return window->TickCount() > 0; }, 2000));
  window->hide();
  window->show();
  EXPECT_EQ(window->TickCount(), 0);
}

TEST_F(Waiting, TheStatusWindowHasItsCancelButtonOnlyWhileTheDatabaseIsHeld) {
  const QPointer<DialogWait> window = DialogWait::Instance();
  window->SetSelfClosing(true);
  window->SetCaption(QStringLiteral("Saving"));
  window->show();
  EXPECT_FALSE(Find<QWidget>(*window, "cmdCancel").isVisible());
  EXPECT_FALSE(Find<QWidget>(*window, "lblHeld").isVisible());
  window->SetHeld(true);
  EXPECT_TRUE(Find<QWidget>(*window, "cmdCancel").isVisible());
  EXPECT_TRUE(Find<QWidget>(*window, "lblHeld").isVisible());
  EXPECT_TRUE(Find<QTimer>(*window, "Timer1").isActive()) << "the running text goes on";
  // It stays as long as it has something to say, and asks the wait to end.
  const int ticks = window->TickCount();
  QTest::qWait(400);
  EXPECT_EQ(window->TickCount(), ticks);
  window->close();
  ASSERT_TRUE(window);
  EXPECT_TRUE(window->isVisible());
  window->SetHeld(false);
  EXPECT_FALSE(Find<QWidget>(*window, "cmdCancel").isVisible());
  window->close();
  EXPECT_FALSE(FindLoadedForm(QStringLiteral("DialogWait")));
}

TEST_F(Waiting, AHeldStatusWindowGoesWithItsWork) {
  const QPointer<DialogWait> window = DialogWait::Instance();
  window->show();
  window->SetHeld(true);
  DialogWait::Unload();
  EXPECT_FALSE(window && window->isVisible());
}

TEST_F(Waiting, AClosedStatusWindowIsMadeAnew) {
  DialogWait::Instance()->show();
  DialogWait::Unload();
  EXPECT_FALSE(FindLoadedForm(QStringLiteral("DialogWait")));
  DialogWait* const again = DialogWait::Instance();
  again->show();
  EXPECT_TRUE(IsFormLoaded(again));
}

TEST_F(Waiting, TheProgressWindowShowsItsCaptionWhole) {
  FrmProgressBar* const window = FrmProgressBar::Instance();
  window->SetCaption(QStringLiteral("Loading A Title 15% completed. "));
  window->MyProgressBar()->setValue(15);
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Loading A Title 15% completed. "));
  EXPECT_EQ(TextOf(*window, "lblCaption"), window->windowTitle());
  FrmProgressBar::Unload();
  EXPECT_EQ(FrmProgressBar::Loaded(), nullptr);
}

TEST_F(Waiting, WaitMillisecondsServesEventsUntilTheTimeHasPassed) {
  const double start = SecondsSinceMidnight();
  const int served = platform_.events->serve_count;
  WaitMilliseconds(250);
  EXPECT_NEAR(SecondsSinceMidnight() - start, 0.25, 0.01);  // the start is held in single precision
  EXPECT_GT(platform_.events->serve_count, served);
}

}  // namespace
}  // namespace zelmar
