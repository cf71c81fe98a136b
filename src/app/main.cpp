// Zelmar: reads how it was called, puts the services in place, starts the program and runs it to its end.

#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include "app/cold_start.h"
#include "app/end_of_session.h"
#include "app/mdi_parent.h"
#include "app/message_lines.h"
#include "app/terminal.h"
#include "app/terminal_commands.h"
#include "app/zelmar_application.h"
#include "midi/system_midi_output.h"
#include "model/first_start.h"
#include "platform/failure.h"
#include "platform/memory.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "platform/widgets/widget_services.h"
#include "shell/recovery_keeper.h"
#include "shell/recovery_offer.h"
#include "shell/theme.h"

namespace {

// An installed program keeps its user's files in the user's data directory. Each start fills in what is
// missing there and renews what the program brings along.
void FillUsersDirectory() {
  const QString shared =
      QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/zelmar"));
  if (!QFileInfo::exists(shared + QStringLiteral("/ZelmarTemplate.mdb"))) return;
  zelmar::FillApplicationDirectory(zelmar::ApplicationDirectory(), shared);
}

QStringList WordsOf(int argc, char** argv) {
  QStringList words;
  for (int i = 1; i < argc; ++i) words.append(QString::fromLocal8Bit(argv[i]));
  return words;
}

// Without a display the windows' toolkit ends a program with a report of its own.
bool HasDisplay(const QStringList& words) {
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
  for (const char* variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
    if (!qEnvironmentVariableIsEmpty(variable)) return true;
  return words.contains(QStringLiteral("-platform")) || words.contains(QStringLiteral("-display"));
#else
  return true;
#endif
}

int WorkWithoutWindows(const zelmar::TerminalCall& call, int& argc, char** argv) {
  const QCoreApplication application(argc, argv);
  zelmar::NameProgram();
  zelmar::Platform().messages = std::make_shared<zelmar::MessageLines>();
  try {
    zelmar::UseSettings(call);
    if (call.command->kind != zelmar::TerminalRow::Kind::kQuestion) FillUsersDirectory();
  } catch (const zelmar::Failure& failure) {
    return zelmar::TellFailure(failure.Description());
  }
  return zelmar::RunCommandOf(call);
}

}  // namespace

int main(int argc, char** argv) {
  zelmar::KeepFreedMemory();
  const QStringList words = WordsOf(argc, argv);
  const zelmar::TerminalCall call = zelmar::ReadCall(words, zelmar::TerminalRows());
  if (!call.mistake.isEmpty()) return zelmar::TellWrongUsage(call.mistake);
  if (!call.NeedsWindows()) return WorkWithoutWindows(call, argc, argv);

  if (!HasDisplay(words))
    return zelmar::TellFailure(QStringLiteral("There is no display to show a window on."));
  zelmar::Platform().midi = zelmar::MakeSystemMidiOutput(zelmar::SynthesiserLoading::kAhead);
  zelmar::ZelmarApplication application(argc, argv);
  zelmar::UseSettings(call);
  zelmar::InstallWidgetServices();
  zelmar::ApplyTheme(application, zelmar::SystemColourScheme(application));

  try {
    FillUsersDirectory();
  } catch (const zelmar::Failure& failure) {
    zelmar::ShowMessage(zelmar::MessageIcon::kCritical, failure.Description());
    return EXIT_FAILURE;
  }
  if (call.command != nullptr) return zelmar::RunCommandOf(call);
  const zelmar::StartResult start = zelmar::ColdStart();
  if (!start.main_window) return EXIT_FAILURE;
  const zelmar::EndOfSession end(*start.main_window);
  // The window comes first, whatever there is to read.
  QTimer::singleShot(0, start.main_window.get(),
                     [&start] { zelmar::OfferWhatWasLeft(start.main_window->Recovery()); });
  return zelmar::ZelmarApplication::exec();
}
