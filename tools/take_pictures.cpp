// take_pictures <build folder> <output folder> [light|dark]: a picture of each window, for the pages of docs.
//
// A window that a menu item opens is one row of the table below.

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QMenuBar>
#include <QPixmap>
#include <QProgressBar>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <cstring>

#include "app/cold_start.h"
#include "app/frm_splash.h"
#include "app/mdi_parent.h"
#include "app/zelmar_application.h"
#include "midi/system_midi_output.h"
#include "midi/widgets/play_bar.h"
#include "model/first_start.h"
#include "model/globals.h"
#include "platform/failure.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "platform/widgets/widget_services.h"
#include "shell/child_window.h"
#include "shell/frm_progress_bar.h"
#include "shell/help.h"
#include "shell/theme.h"
#include "shell/window_catalogue.h"
#include "store/tune_loader.h"

namespace {

using namespace zelmar;

struct WindowRow {
  const char* menu_item;
  const char* window;
  const char* picture;
};

constexpr WindowRow kWindows[] = {
    {"mnuFileOpen", "frmOpen", "open-tune.png"},
    {"mnuOptionsMidiControllersReset", "DialogWait", "wait.png"},
    {"mnuOptionsMidiSetup", "frmOptionsMidiSetup", "midi-setup.png"},
    {"mnuOptionsMidiTests", "frmOptionsMidiTests", "midi-tests.png"},
    {"mnuOptionsConnectDB", "frmOptionsConnectDB", "connect-database.png"},
    {"mnuOptionsCreateNewDB", "frmOptionsCreateNewDB", "new-database.png"},
    {"mnuOptionsMediaPlayer", "frmOptionsMediaPlayer", "media-player.png"},
    {"mnuHelpAbout", "frmAbout", "about.png"},
    {"mnuHelpContents", "HelpWindow", "help.png"},
    {"mnuHelpShortcuts", "frmHelpModal", "keyboard-shortcuts.png"},
};

// Long enough for a window to fill itself and to come to rest.
constexpr int kRestMilliseconds = 400;

bool failed = false;

void Rest(int milliseconds = kRestMilliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

void Save(QWidget& window, const QDir& folder, const char* name) {
  if (window.grab().save(folder.filePath(QLatin1String(name)), "PNG")) return;
  std::fprintf(stderr, "take_pictures: %s cannot be saved\n", name);
  failed = true;
}

QWidget* VisibleWindow(const char* name) {
  for (QWidget* widget : QApplication::allWidgets())
    if (widget->objectName() == QLatin1String(name) && widget->isVisible()) return widget;
  return nullptr;
}

// The folder of this run is nobody's own.
void HidePlace(const QWidget& window) {
  for (QLineEdit* const field : window.findChildren<QLineEdit*>())
    if (field->text().startsWith(ApplicationDirectory()))
      field->setText(QStringLiteral("/home/ann/zelmar") + field->text().mid(ApplicationDirectory().size()));
}

// A modal window keeps the command that opens it, so the picture is taken from within.
void PictureWindow(MDIParent& main_window, const WindowRow& row, const QDir& folder) {
  QTimer::singleShot(kRestMilliseconds, &main_window, [&row, &folder] {
    QWidget* const window = VisibleWindow(row.window);
    if (window == nullptr) {
      std::fprintf(stderr, "take_pictures: %s does not show %s\n", row.menu_item, row.window);
      failed = true;
      return;
    }
    HidePlace(*window);
    Save(*window, folder, row.picture);
    if (auto* const child = qobject_cast<ChildWindow*>(window))
      child->Unload();
    else
      window->close();
  });
  if (auto* const item = main_window.menuBar()->findChild<QAction*>(QLatin1String(row.menu_item)))
    item->trigger();
  Rest();
  Rest();
}

void PictureSplash(const QDir& folder) {
  FrmSplash splash;
  splash.show();
  Save(splash, folder, "start.png");
}

// The loader's window is gone again before the tune plays: it is shown here as in the middle of a load.
void PictureProgress(const QDir& folder) {
  FrmProgressBar* const progress = FrmProgressBar::Instance();
  progress->MyProgressBar()->setValue(40);
  progress->SetCaption(QStringLiteral("Loading Greensleeves40% completed. "));
  progress->show();
  Rest();
  Save(*progress, folder, "loading.png");
  FrmProgressBar::Unload();
}

void PicturePanel(const QDir& folder) {
  ShowHelpPage(QStringLiteral("UserDefault.htm"), HelpPlace::kPanel);
  Rest();
  ChildWindow* const panel = WindowByName(QStringLiteral("frmHelp"));
  Save(*panel, folder, "help-panel.png");
  panel->Unload();
}

// The main window while the tune plays in one of its windows.
void PicturePlaying(MDIParent& main_window, const QDir& folder, const char* code_name, const char* window,
                    const char* picture) {
  QString name = QLatin1String(code_name);
  main_window.MyLoader()->DoLoad(name);
  ChildWindow* const player = WindowByName(QLatin1String(window));
  player->ShowMaximisedOnTop();
  player->Activate();
  QTimer::singleShot(2500, &main_window, [&] {
    Save(main_window, folder, picture);
    player->MyPlayBar()->StopPlay();
  });
  player->MyPlayBar()->Play();
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  ZelmarApplication application(argc, argv);
  if (argc < 3) {
    std::fprintf(stderr, "usage: take_pictures <build folder> <output folder> [light|dark]\n");
    return 2;
  }
  const ColourScheme scheme =
      argc > 3 && std::strcmp(argv[3], "dark") == 0 ? ColourScheme::kDark : ColourScheme::kLight;
  const QDir folder(QDir(QString::fromLocal8Bit(argv[2])).absolutePath());
  QTemporaryDir home;
  try {
    FillApplicationDirectory(home.path(), QDir(QString::fromLocal8Bit(argv[1])).absolutePath());
    SetApplicationDirectory(home.path());
    // No sound is wanted here: a file takes it.
    qputenv("ZELMAR_AUDIO_DRIVER", "file");
    qputenv("ZELMAR_AUDIO_FILE", home.filePath(QStringLiteral("sound.wav")).toLocal8Bit());
    InstallWidgetServices();
    Platform().midi = MakeSystemMidiOutput();
    ApplyTheme(application, scheme);
    const StartResult start = ColdStart();
    if (!start.main_window) return 1;
    start.main_window->resize(1024, 768);
    // No picture tells where it was taken.
    Global().DatabasePath = QStringLiteral("Zelmar.mdb");
    PictureSplash(folder);
    PicturePlaying(*start.main_window, folder, "Greensleeves", "frmFront", "main-window.png");
    PicturePlaying(*start.main_window, folder, "MinuetInG", "frmEditStaff", "staff-view.png");
    WindowByName(QStringLiteral("frmEditStaff"))->Unload();
    for (const WindowRow& row : kWindows) {
      // A window about databases puts the whole path back.
      Global().DatabasePath = QStringLiteral("Zelmar.mdb");
      PictureWindow(*start.main_window, row, folder);
    }
    PictureProgress(folder);
    PicturePanel(folder);
    ApplyTheme(application, ColourScheme::kDark);
    PicturePlaying(*start.main_window, folder, "MinuetInG", "frmFront", "main-window-dark.png");
    start.main_window->close();
  } catch (const Failure& failure) {
    std::fprintf(stderr, "take_pictures: %s\n", qPrintable(failure.Description()));
    return 1;
  }
  return failed ? 1 : 0;
}
