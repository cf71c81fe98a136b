// Zelmar: puts the services in place, starts the program and runs it to its end.

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include "app/cold_start.h"
#include "app/end_of_session.h"
#include "app/mdi_parent.h"
#include "app/tour.h"
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

}  // namespace

int main(int argc, char** argv) {
  zelmar::KeepFreedMemory();
  zelmar::Platform().midi = zelmar::MakeSystemMidiOutput(zelmar::SynthesiserLoading::kAhead);
  zelmar::ZelmarApplication application(argc, argv);

  QCommandLineParser options;
  options.setApplicationDescription(
      QStringLiteral("A catalogue of tunes and themes that can be read, heard, edited and searched."));
  const QCommandLineOption directory(
      QStringLiteral("application-directory"),
      QStringLiteral("Use the settings, databases and help pages in <directory>."),
      QStringLiteral("directory"));
  const QCommandLineOption tour(
      QStringLiteral("tour"),
      QStringLiteral("Open and play a short tune, save a picture of the main window in <picture>, and end."),
      QStringLiteral("picture"));
  options.addOptions({directory, tour});
  options.addHelpOption();
  options.addVersionOption();
  options.process(application);

  if (options.isSet(directory)) zelmar::SetApplicationDirectory(options.value(directory));
  zelmar::InstallWidgetServices();
  zelmar::ApplyTheme(application, zelmar::SystemColourScheme(application));

  try {
    FillUsersDirectory();
  } catch (const zelmar::Failure& failure) {
    zelmar::ShowMessage(zelmar::MessageIcon::kCritical, failure.Description());
    return EXIT_FAILURE;
  }
  if (options.isSet(tour)) return zelmar::Tour(options.value(tour));
  const zelmar::StartResult start = zelmar::ColdStart();
  if (!start.main_window) return EXIT_FAILURE;
  const zelmar::EndOfSession end(*start.main_window);
  // The window comes first, whatever there is to read.
  QTimer::singleShot(0, start.main_window.get(),
                     [&start] { zelmar::OfferWhatWasLeft(start.main_window->Recovery()); });
  return zelmar::ZelmarApplication::exec();
}
