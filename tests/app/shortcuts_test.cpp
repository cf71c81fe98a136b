// The keys of the menu work from every window, whatever has the keyboard there.
#include <QLineEdit>
#include <QSignalSpy>

#include "app/main_window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class Shortcuts : public MainWindowTest {
 protected:
  // The items stay, and do nothing but be counted.
  void CountOnly() {
    for (const CommandRow* row : Commands())
      if (row->shortcut[0] != '\0') {
        auto& item = Find<QAction>(*main_, row->name);
        item.disconnect();
        QObject::connect(&item, &QAction::triggered, main_.get(),
                         [this, name = QString(QLatin1String(row->name))] { triggered_.append(name); });
      }
  }

  // Presses the key of each row while `widget` has the keyboard.
  void ExpectEveryKeyFrom(QWidget& widget) {
    widget.setFocus();
    for (const CommandRow* row : Commands()) {
      if (row->shortcut[0] == '\0') continue;
      const QKeyCombination key = QKeySequence(QLatin1String(row->shortcut))[0];
      // A window with a topic of its own keeps the key that tells about it.
      if (key.key() == Qt::Key_F1) continue;
      triggered_.clear();
      QTest::keyClick(&widget, key.key(), key.keyboardModifiers());
      EXPECT_EQ(triggered_, QStringList{QLatin1String(row->name)})
          << row->shortcut << " in " << widget.metaObject()->className() << ' '
          << qPrintable(widget.objectName()) << " of " << qPrintable(main_->ActiveChild()->objectName());
    }
  }

  QStringList triggered_;
};

TEST_F(Shortcuts, EveryKeyOfTheMenuWorksFromEveryWindowAndEveryControlOfIt) {
  Start();
  LoadTune();
  CountOnly();
  int windows = 0;
  for (const QString& name : RegisteredWindows()) {
    ChildWindow* const window = WindowByName(name);
    ASSERT_NE(window, nullptr) << qPrintable(name);
    window->ShowOnTop();
    QCoreApplication::processEvents();
    ASSERT_EQ(main_->ActiveChild(), window);
    ExpectEveryKeyFrom(*window);
    for (QWidget* control : window->findChildren<QWidget*>()) {
      // What is typed into belongs to the one who types.
      if (const auto* const field = qobject_cast<QLineEdit*>(control);
          field != nullptr && !field->isReadOnly())
        continue;
      if (control->focusPolicy() != Qt::NoFocus && control->isVisible() && control->isEnabled())
        ExpectEveryKeyFrom(*control);
    }
    ++windows;
  }
  EXPECT_GE(windows, 3);
}

TEST_F(Shortcuts, NoTwoItemsShareAKey) {
  Start();
  QStringList keys;
  for (const CommandRow* row : Commands())
    if (row->shortcut[0] != '\0') keys.append(QLatin1String(row->shortcut));
  EXPECT_EQ(keys.size(), 35);
  keys.removeDuplicates();
  EXPECT_EQ(keys.size(), 35);
}

TEST_F(Shortcuts, WithoutAnyWindowTheKeysStillWork) {
  Start();
  CountOnly();
  Front().Unload();
  LetClosedWindowsGo();
  for (const CommandRow* row : Commands()) {
    if (row->shortcut[0] == '\0') continue;
    const QKeyCombination key = QKeySequence(QLatin1String(row->shortcut))[0];
    triggered_.clear();
    QTest::keyClick(main_.get(), key.key(), key.keyboardModifiers());
    EXPECT_EQ(triggered_, QStringList{QLatin1String(row->name)}) << row->shortcut;
  }
}

}  // namespace
}  // namespace zelmar
