// take_pictures <build folder> <output folder>: pictures of the program's windows, for the pages of docs.

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>

#include "app/cold_start.h"
#include "app/frm_open.h"
#include "app/mdi_parent.h"
#include "app/zelmar_application.h"
#include "midi/system_midi_output.h"
#include "midi/widgets/play_bar.h"
#include "model/first_start.h"
#include "platform/failure.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "platform/widgets/widget_services.h"
#include "shell/child_window.h"
#include "shell/theme.h"
#include "shell/window_catalogue.h"
#include "store/tune_loader.h"

namespace {

using namespace zelmar;

bool failed = false;

void Save(QWidget& window, const QDir& folder, const char* name) {
  if (window.grab().save(folder.filePath(QString::fromLatin1(name)), "PNG")) return;
  std::fprintf(stderr, "take_pictures: %s cannot be saved\n", name);
  failed = true;
}

void PictureOpenDialogue(const QDir& folder) {
  QTimer::singleShot(200, [&folder] {
    QWidget* const dialogue = QApplication::activeModalWidget();
    if (dialogue == nullptr) {
      failed = true;
      return;
    }
    Save(*dialogue, folder, "open-tune.png");
    dialogue->close();
  });
  FrmOpen::ShowModal();
}

void PicturePlaying(MDIParent& main_window, const QDir& folder, const char* code_name, const char* picture) {
  QString name = QString::fromLatin1(code_name);
  main_window.MyLoader()->DoLoad(name);
  ChildWindow* const front = WindowByName(QStringLiteral("frmFront"));
  front->ShowMaximisedOnTop();
  front->Activate();
  QTimer::singleShot(2500, [&] {
    Save(main_window, folder, picture);
    front->MyPlayBar()->StopPlay();
  });
  front->MyPlayBar()->Play();
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  ZelmarApplication application(argc, argv);
  if (argc != 3) {
    std::fprintf(stderr, "usage: take_pictures <build folder> <output folder>\n");
    return 2;
  }
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
    ApplyTheme(application, ColourScheme::kLight);
    const StartResult start = ColdStart();
    if (!start.main_window) return 1;
    start.main_window->resize(1024, 768);
    PicturePlaying(*start.main_window, folder, "Greensleeves", "main-window.png");
    PictureOpenDialogue(folder);
    ApplyTheme(application, ColourScheme::kDark);
    PicturePlaying(*start.main_window, folder, "MinuetInG", "main-window-dark.png");
    start.main_window->close();
  } catch (const Failure& failure) {
    std::fprintf(stderr, "take_pictures: %s\n", qPrintable(failure.Description()));
    return 1;
  }
  return failed ? 1 : 0;
}
