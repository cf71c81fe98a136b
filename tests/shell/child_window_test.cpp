// A window passes keys on to its transport bar and to nobody else.
#include "shell/child_window.h"

#include <QKeyEvent>

#include "midi/widgets/play_bar.h"
#include "midi/widgets/play_bar_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class KeysOfAWindow : public PlayBarTest {
 protected:
  KeysOfAWindow() {
    Attach(TuneOfBars(4));
    bar_->setObjectName(QStringLiteral("MyPlayBar"));
    bar_.release()->setParent(&window_);
  }

  // True when the window kept the key for itself.
  bool Keeps(int key, Qt::KeyboardModifiers modifiers = {}) {
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    QCoreApplication::sendEvent(&window_, &event);
    return event.isAccepted();
  }
  PlayBar& Bar() { return *window_.MyPlayBar(); }

  ChildWindow window_{QStringLiteral("frmSmall")};
};

TEST_F(KeysOfAWindow, ThoseOfTheBarEndThere) {
  EXPECT_TRUE(Keeps(Qt::Key_End));
  EXPECT_EQ(Bar().StartBar(), 4);
  EXPECT_TRUE(Keeps(Qt::Key_PageUp));
  EXPECT_EQ(Bar().StartBar(), 3);
}

TEST_F(KeysOfAWindow, OthersAndThoseWithAModifierGoOnToItsOwner) {
  EXPECT_FALSE(Keeps(Qt::Key_A));
  EXPECT_FALSE(Keeps(Qt::Key_End, Qt::ControlModifier));
  EXPECT_EQ(Bar().StartBar(), 1);
}

TEST(KeysOfAWindowWithoutABar, AllGoOnToItsOwner) {
  const ScriptedPlatform platform;
  ChildWindow window(QStringLiteral("frmBare"));
  QKeyEvent event(QEvent::KeyPress, Qt::Key_End, Qt::NoModifier);
  QCoreApplication::sendEvent(&window, &event);
  EXPECT_FALSE(event.isAccepted());
}

}  // namespace
}  // namespace zelmar
