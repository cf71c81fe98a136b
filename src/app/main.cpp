// Zelmar: puts the services in place, starts the program and runs it to its end.

#include <QCommandLineParser>

#include "app/cold_start.h"
#include "app/mdi_parent.h"
#include "app/zelmar_application.h"
#include "midi/system_midi_output.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "platform/widgets/widget_services.h"
#include "shell/theme.h"

int main(int argc, char** argv) {
  zelmar::ZelmarApplication application(argc, argv);

  QCommandLineParser options;
  options.setApplicationDescription(
      QStringLiteral("A catalogue of tunes and themes that can be read, heard, edited and searched."));
  const QCommandLineOption directory(
      QStringLiteral("application-directory"),
      QStringLiteral("Use the settings, databases and help pages in <directory>."),
      QStringLiteral("directory"));
  options.addOption(directory);
  options.addHelpOption();
  options.addVersionOption();
  options.process(application);

  if (options.isSet(directory)) zelmar::SetApplicationDirectory(options.value(directory));
  zelmar::InstallWidgetServices();
  zelmar::Platform().midi = zelmar::MakeSystemMidiOutput();
  zelmar::ApplyTheme(application, zelmar::SystemColourScheme(application));

  const zelmar::StartResult start = zelmar::ColdStart();
  return start.main_window ? application.exec() : EXIT_FAILURE;
}
