#include "app/tour.h"

#include <QPixmap>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>

#include "app/cold_start.h"
#include "app/mdi_parent.h"
#include "app/message_lines.h"
#include "midi/widgets/play_bar.h"
#include "model/first_start.h"
#include "model/globals.h"
#include "model/tune.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "shell/child_window.h"
#include "shell/window_catalogue.h"
#include "store/connect_database.h"
#include "store/recordset.h"
#include "store/tune_loader.h"

namespace zelmar {

namespace {

// Long enough to be heard, short enough to wait for.
constexpr double kShortestSeconds = 8.0;
constexpr double kLongestSeconds = 30.0;
constexpr int kPictureAfterMilliseconds = 3000;

double LengthInSeconds(Tune& tune) {
  tune.MakeTempoMap();
  std::int32_t last = 0;
  for (const auto& tone : tune)
    last = std::max(last, tune.TimeFromPulse(tone->Bar(), tone->Beat(), tone->Tick(), tune.BeatsPerBar(),
                                             tune.BeatLength()));
  return last / 1000.0;
}

// The first tune of the library that is neither too short nor too long, loaded as the current one.
bool OpenShortTune(MDIParent& main_window) {
  std::shared_ptr<Connection> connection;
  ConnectDatabase(connection);
  if (Global().DatabaseFailed) return false;
  QStringList names;
  const auto rows = Recordset::OpenStatement(
      connection, QStringLiteral("SELECT CodeName FROM tblMelodies ORDER BY Rank"), CursorType::kStatic);
  for (; !rows->Eof(); rows->MoveNext()) names.append(rows->Text(0));
  rows->Close();
  for (QString& name : names) {
    const std::shared_ptr<TuneLoader> loader = main_window.MyLoader();
    loader->DoLoad(name);
    const std::shared_ptr<Tune> tune = main_window.MyTune();
    if (!loader->LoadedOk() || !tune) continue;
    const double seconds = LengthInSeconds(*tune);
    if (seconds >= kShortestSeconds && seconds <= kLongestSeconds) return true;
  }
  return false;
}

int Fail(const char* reason) {
  std::fprintf(stderr, "Zelmar: the tour ends early: %s\n", reason);
  return 1;
}

int MakeTour(const QString& picture) {
  // A folder of its own: the starter library, the built-in synthesiser, and nothing of the user's is touched.
  const QTemporaryDir folder;
  FillApplicationDirectory(folder.path(), ApplicationDirectory());
  SetApplicationDirectory(folder.path());
  const StartResult start = ColdStart();
  MDIParent* const main_window = start.main_window.get();
  if (main_window == nullptr) return Fail("the program could not start.");
  main_window->resize(1024, 768);
  if (!OpenShortTune(*main_window)) return Fail("the library has no short tune that can be opened.");
  ChildWindow* const front = WindowByName(QStringLiteral("frmFront"));
  front->ShowMaximisedOnTop();
  front->Activate();

  bool pictured = false;
  QTimer::singleShot(kPictureAfterMilliseconds, main_window,
                     [&] { pictured = main_window->grab().save(picture, "PNG"); });
  std::printf("Zelmar: playing \"%s\".\n", qPrintable(main_window->MyTune()->Title()));
  std::fflush(stdout);
  front->MyPlayBar()->Play();
  // The last notes die away.
  const double end = SecondsSinceMidnight() + 1.0;
  while (SecondsSinceMidnight() < end) {
    ServeEvents();
    WaitUntil(end);
  }
  if (!pictured) return Fail("the picture could not be saved.");
  main_window->close();
  SetApplicationDirectory({});
  return 0;
}

}  // namespace

int Tour(const QString& picture) {
  Platform().messages = std::make_shared<MessageLines>();
  try {
    return MakeTour(picture);
  } catch (const std::exception& error) {
    return Fail(error.what());
  }
}

}  // namespace zelmar
