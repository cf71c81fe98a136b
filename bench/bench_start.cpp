// From the start of the process to the main window on screen, the start-up tune not counted, against a
// program that shows an empty main window. Each is a process of its own, started in turns.

#include <QDir>
#include <QMainWindow>
#include <QProcess>
#include <QTemporaryDir>

#include "app/cold_start.h"
#include "app/mdi_parent.h"
#include "app/zelmar_application.h"
#include "figure.h"
#include "midi/sound_card.h"
#include "midi/system_midi_output.h"
#include "model/first_start.h"
#include "platform/memory.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "platform/widgets/widget_services.h"
#include "shell/theme.h"

namespace {

using namespace zelmar;

constexpr int kRounds = 31;

double Now() {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

// The program itself, as its main does it. Prints the milliseconds since `started`.
int StartZelmar(int argc, char** argv, double started) {
  KeepFreedMemory();
  Platform().midi = MakeSystemMidiOutput(SynthesiserLoading::kAhead);
  ZelmarApplication application(argc, argv);
  SetApplicationDirectory(QString::fromLocal8Bit(argv[3]));
  ApplyTheme(application, SystemColourScheme(application));
  InstallWidgetServices();
  const StartResult start = ColdStart();
  if (!start.main_window || !TheSoundCard()->Opened()) return 1;
  QCoreApplication::processEvents();
  std::printf("%f\n", Now() - started - start.tune_seconds * 1000.0);
  std::fflush(stdout);
  std::_Exit(0);
}

int StartEmpty(int argc, char** argv, double started) {
  QApplication application(argc, argv);
  QMainWindow window;
  window.show();
  QCoreApplication::processEvents();
  std::printf("%f\n", Now() - started);
  std::fflush(stdout);
  std::_Exit(0);
}

double TimeOf(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(program, QStringList(arguments).replaceInStrings(QStringLiteral("@now"),
                                                                 QString::number(Now(), 'f', 3)));
  if (!process.waitForFinished(60000) || process.exitCode() != 0) {
    std::fprintf(stderr, "%s did not start\n", qPrintable(arguments.first()));
    std::exit(1);
  }
  return process.readAllStandardOutput().trimmed().toDouble();
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QByteArray role = argc > 1 ? argv[1] : "";
  if (role == "empty") return StartEmpty(argc, argv, std::atof(argv[2]));
  if (role == "zelmar") return StartZelmar(argc, argv, std::atof(argv[2]));

  const QCoreApplication application(argc, argv);
  const QString self = QCoreApplication::applicationFilePath();
  QTemporaryDir home;
  FillApplicationDirectory(home.path(), QCoreApplication::applicationDirPath() + QStringLiteral("/.."));
  // A machine without a sound card would skip the synthesiser; a file stands in for the card.
  if (!qEnvironmentVariableIsSet("ZELMAR_AUDIO_DRIVER")) {
    qputenv("ZELMAR_AUDIO_DRIVER", "file");
    qputenv("ZELMAR_AUDIO_FILE", home.filePath(QStringLiteral("start.wav")).toLocal8Bit());
  }
  const auto zelmar_start = [&] {
    return TimeOf(self, {QStringLiteral("zelmar"), QStringLiteral("@now"), home.path()});
  };
  const auto pair = bench::RunInTurns(kRounds, zelmar_start, [&] {
    return TimeOf(self, {QStringLiteral("empty"), QStringLiteral("@now")});
  });
  bench::PrintHeading();
  bench::PrintFigure("start to main window, tune not counted / empty window", pair.measured, pair.yardstick,
                     "ms", pair.measured / pair.yardstick, 3.0);
  const auto lean = bench::RunInTurns(kRounds / 3, zelmar_start, [&] {
    return TimeOf(QCoreApplication::applicationDirPath() + QStringLiteral("/empty_window"),
                  {QStringLiteral("@now")});
  });
  bench::PrintFigure("for information: the same / leanest empty window", lean.measured, lean.yardstick, "ms",
                     lean.measured / lean.yardstick, bench::kNoLimit);
  return bench::over_limit ? 3 : 0;
}
