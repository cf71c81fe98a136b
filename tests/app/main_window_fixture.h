// A main window over a sample database, with everything scripted.
#pragma once

#include <QDir>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

#include "app/mdi_parent.h"
#include "midi/sound_card.h"
#include "midi/widgets/play_bar.h"
#include "model/globals.h"
#include "platform/failure.h"
#include "shell/child_window.h"
#include "shell/command_table.h"
#include "shell/loaded_forms.h"
#include "shell/window_catalogue.h"
#include "store/tune_loader.h"
#include "support/sample_database.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {

// A window with neither a transport bar nor anything else.
class BareWindow : public ChildWindow {
 public:
  BareWindow() : ChildWindow(QStringLiteral("frmBare")) { setWindowTitle(QStringLiteral("Bare & simple")); }
};

class MainWindowTest : public ::testing::Test {
 protected:
  MainWindowTest() {
    platform_.events->step_microseconds = 0;
    qputenv("XDG_STATE_HOME", state_.path().toLocal8Bit());
    TheSoundCard() = std::make_shared<SoundCard>();
    testing_support::SampleTune tune;
    tune.code_name = QStringLiteral("ONE");
    tune.title = QStringLiteral("First");
    tune.composer = QStringLiteral("Bach");
    tune.events = testing_support::SampleMelody(Pitches());
    database_.AddTune(tune);
    tune.code_name = QStringLiteral("TWO");
    tune.title = QStringLiteral("Second");
    tune.composer = QStringLiteral("Various");
    database_.AddTune(tune);
  }
  ~MainWindowTest() override {
    main_.reset();
    for (QWidget* form : LoadedForms()) form->close();
    testing_support::LetClosedWindowsGo();
    TheSoundCard().reset();
    ForgetTheEnd();
    qunsetenv("XDG_STATE_HOME");
  }

  // A main window that closes ends the event loops to come as well; a run of the outermost one clears that.
  static void ForgetTheEnd() {
    QTimer::singleShot(0, [] { QCoreApplication::exit(0); });
    QCoreApplication::exec();
  }

  static QStringList Pitches() {
    QStringList pitches;
    for (int i = 0; i < 12; ++i) pitches.append(QStringLiteral("C4"));
    return pitches;
  }

  void Start() {
    main_ = std::make_unique<MDIParent>();
    main_->resize(1024, 740);
    main_->Load();
    main_->show();
    main_->activateWindow();
    QCoreApplication::processEvents();
  }

  void LoadTune(const char* code_name = "ONE") {
    QString name = QString::fromLatin1(code_name);
    main_->MyLoader()->DoLoad(name);
    ASSERT_TRUE(main_->MyLoader()->LoadedOk());
    Front().Activate();
  }

  // Another window takes the keyboard and the main window goes out of sight, and comes back with the same
  // child in front, which the area tells of anew.
  void LeaveAndComeBack() {
    QSignalSpy told(main_->Area(), &QMdiArea::subWindowActivated);
    QWidget other;
    other.show();
    other.activateWindow();
    QCoreApplication::processEvents();
    ASSERT_FALSE(main_->isActiveWindow());
    main_->hide();
    QCoreApplication::processEvents();
    main_->show();
    main_->activateWindow();
    QCoreApplication::processEvents();
    ASSERT_TRUE(main_->isActiveWindow());
    ASSERT_GE(told.count(), 2);
    ASSERT_EQ(told.last().first().value<QMdiSubWindow*>(), main_->Area()->currentSubWindow());
  }

  ChildWindow& Front() { return *WindowByName(QStringLiteral("frmFront")); }
  PlayBar& Bar() { return *Front().MyPlayBar(); }
  QAction& Item(const char* name) { return testing_support::Find<QAction>(*main_->menuBar(), name); }

  BareWindow* OpenBareWindow() {
    auto* window = new BareWindow;
    window->ShowOnTop();
    QCoreApplication::processEvents();
    return window;
  }

  QList<QAction*> Listed(const char* menu, const char* prefix, int from) {
    QList<QAction*> items;
    for (QAction* action : testing_support::Find<QMenu>(*main_, menu).actions())
      if (action->objectName().startsWith(QLatin1String(prefix)) && action->property("index").toInt() >= from)
        items.append(action);
    return items;
  }

  // The files of unsaved tunes in the application directory.
  QStringList KeptFiles() const {
    return QDir(database_.Directory()).entryList({QStringLiteral("Zelmar-unsaved-*.tune")}, QDir::Files);
  }

  const QList<testing_support::ShownMessage>& Boxes() const { return platform_.messages->shown; }

  testing_support::ScriptedPlatform platform_;
  testing_support::SampleDatabase database_;
  QTemporaryDir state_;  // takes what the application directory does not
  std::unique_ptr<MDIParent> main_;
};

}  // namespace zelmar
