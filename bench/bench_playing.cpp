// Processor time of the program while a four-track tune plays and the front page follows it, the synthesiser
// off; beside it that of a bare 2 ms timer in an event loop.
//
// bench_playing [seconds]

#include <QTimer>

#include "app/mdi_parent.h"
#include "app/zelmar_application.h"
#include "figure.h"
#include "midi/sound_card.h"
#include "midi/widgets/play_bar.h"
#include "model/tune.h"
#include "platform/services.h"
#include "processor.h"
#include "sample_tune.h"
#include "shell/child_window.h"
#include "shell/window_catalogue.h"
#include "store/tune_loader.h"

namespace {

using namespace zelmar;

class SilentOutput : public MidiOutput {
 public:
  int DeviceCount() override { return 1; }
  QString DeviceName(int) override { return QStringLiteral("silence"); }
  int Open(int) override { return kSuccess; }
  void Close() override {}
  void Reset() override {}
  void ShortMessage(std::uint32_t) override {}
  void LongMessage(const QByteArray&) override {}
  QString ErrorText(int) override { return {}; }
};

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  ZelmarApplication application(argc, argv);
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 20;
  Platform().midi = std::make_shared<SilentOutput>();
  TheSoundCard() = std::make_shared<SoundCard>();
  bench::SampleDatabase database;
  database.AddTune(QStringLiteral("four"), seconds / 2 * 64);
  MDIParent main_window;
  main_window.resize(1024, 768);
  main_window.Load();
  main_window.show();
  QString name = QStringLiteral("four");
  main_window.MyLoader()->DoLoad(name);
  if (!main_window.MyTune() || main_window.MyTune()->BarCount() < seconds / 2) {
    std::fprintf(stderr, "the tune was not loaded\n");
    return 1;
  }
  ChildWindow* const front = WindowByName(QStringLiteral("frmFront"));
  front->Activate();
  ServeEvents();

  const double playing = bench::PercentOfACore([&] { front->MyPlayBar()->Play(); });
  if (main_window.MyTune()->PlayIndex() <= main_window.MyTune()->Count()) {
    std::fprintf(stderr, "the tune was not played to its end\n");
    return 1;
  }
  const double bare = bench::PercentOfACore([&] {
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(2);
    QTimer::singleShot(seconds * 1000, &application, &QCoreApplication::quit);
    QCoreApplication::exec();
  });
  bench::PrintHeading();
  bench::PrintFigure("processor time while a four-track tune plays", playing, bare, "%", playing, 5.0);
  return bench::over_limit ? 3 : 0;
}
