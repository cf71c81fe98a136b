// A program that is ended from outside, gently or not, loses nothing: its unsaved tune waits for the next
// start.
#include "app/end_of_session.h"

#include <QMessageBox>
#include <QProcess>
#include <QSessionManager>
#include <csignal>

#include "app/main_window_fixture.h"
#include "model/path_file.h"
#include "platform/paths.h"
#include "platform/widgets/widget_services.h"
#include "shell/recovery_keeper.h"
#include "shell/recovery_offer.h"
#include "shell/unsaved_changes.h"
#include "shell/unsaved_work.h"
#include "store/recovery_file.h"
#include "support/child_program.h"

namespace zelmar {
namespace {

using namespace testing_support;

constexpr char kDirectoryVariable[] = "ZELMAR_ENDED_PROGRAM_DIRECTORY";
constexpr char kModeVariable[] = "ZELMAR_ENDED_PROGRAM_MODE";

class EndedProgram : public MainWindowTest {
 protected:
  static QByteArray Mode() { return qgetenv(kModeVariable); }

  static void Say(const char* word) {
    std::printf("%s\n", word);
    std::fflush(stdout);
  }

  // The changed tune of the program that is started below.
  void LoadAndChange() {
    LoadTune("TWO");
    LoadTune("ONE");
    main_->MyTune()->SetTitle(QStringLiteral("Changed"));
    main_->MyTune()->Item(1)->SetPitch(QStringLiteral("A4"));
    main_->MyTune()->SetChangedSinceLastSaved(true);
  }

  // Starts this program again over this test's application directory, and waits until it says a word.
  void StartProgram(QProcess& process, const char* mode, const char* word) const {
    StartAgain(process, "EndedProgram.RunsUntilItIsEnded",
               {{QString::fromLatin1(kDirectoryVariable), database_.Directory()},
                {QString::fromLatin1(kModeVariable), QString::fromLatin1(mode)}},
               desk_.path(), word);
  }

  void ExpectTheTuneIsOffered() {
    EXPECT_EQ(KeptFiles().size(), 1);
    Start();
    platform_.messages->answers = {MessageAnswer::kYes};
    OfferWhatWasLeft(main_->Recovery());
    ASSERT_EQ(Boxes().size(), 1);
    EXPECT_TRUE(Boxes()[0].text.contains(QStringLiteral("Changed")));
    const auto tune = main_->MyTune();
    ASSERT_NE(tune, nullptr);
    EXPECT_EQ(tune->FileName(), QStringLiteral("ONE"));
    EXPECT_EQ(tune->Item(1)->Pitch(), QStringLiteral("A4"));
    EXPECT_TRUE(HasUnsavedWork(*tune));
    EXPECT_EQ(Front().windowTitle(), QStringLiteral("Zelmar - Front Screen - Bach - Changed"));
    EXPECT_EQ(Bar().Tune(), tune);
    // The database is as it was.
    EXPECT_EQ(database_.Column(QStringLiteral("select Title from tblMelodies where CodeName = 'ONE'")),
              QStringList{QStringLiteral("First")});
  }
  QStringList StoredRecentTunes() const {
    return database_.Column(QStringLiteral("select CodeName from tblRecentFiles"));
  }

  QTemporaryDir desk_;  // for what a program that is killed cannot tidy up
};

// Started by the tests below; by itself it ends at once.
TEST_F(EndedProgram, RunsUntilItIsEnded) {
  const QString directory = qEnvironmentVariable(kDirectoryVariable);
  if (!directory.isEmpty()) {
    SetApplicationDirectory(directory);
    Global().DatabasePath = directory + database_.Path().mid(database_.Directory().size());
  }
  Start();
  LoadAndChange();
  const EndOfSession end(*main_);
  if (Mode() == "keeps") {
    QObject::connect(&main_->Recovery(), &RecoveryKeeper::Kept, main_.get(), [] { Say("kept"); });
    Find<QTimer>(main_->Recovery(), "RecoveryTimer").setInterval(1);
  }
  QTimer boxes;
  if (Mode() == "asks" || Mode() == "closes") {
    // Real boxes, which stand until they are answered or taken away.
    InstallWidgetServices();
    boxes.callOnTimeout([&boxes] {
      if (qobject_cast<QMessageBox*>(QApplication::activeModalWidget()) == nullptr) return;
      boxes.stop();
      Say("ready");
    });
    boxes.start(1);
    QTimer::singleShot(0, main_.get(), [this] {
      if (Mode() == "asks")
        EXPECT_FALSE(MayReplaceTune());
      else
        main_->close();
    });
  }
  QTimer::singleShot(0, main_.get(), [] { Say(Mode() == "waits" ? "ready" : "runs"); });
  if (Mode().isEmpty()) QTimer::singleShot(0, main_.get(), [] { std::raise(SIGTERM); });
  EXPECT_EQ(QCoreApplication::exec(), 0);
  EXPECT_FALSE(main_->isVisible());
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_TRUE(Global().MainFormLoaded);
}

TEST_F(EndedProgram, WhatAKilledProgramKeptIsOfferedAtTheNextStart) {
  QProcess process;
  StartProgram(process, "keeps", "kept");
  // While it runs nobody else is offered its tune.
  EXPECT_TRUE(LeftRecoveries({database_.Directory()}).empty());
  process.kill();
  ASSERT_TRUE(process.waitForFinished());
  ExpectTheTuneIsOffered();
}

TEST_F(EndedProgram, ASignalHasTheTuneAndTheRecentTunesKeptAtOnce) {
  QProcess process;
  StartProgram(process, "waits", "ready");
  EXPECT_TRUE(KeptFiles().isEmpty());
  process.terminate();
  ASSERT_TRUE(process.waitForFinished());
  EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(process.exitCode(), 0) << process.readAll().toStdString();
  EXPECT_EQ(StoredRecentTunes(), (QStringList{QStringLiteral("ONE"), QStringLiteral("TWO")}));
  ExpectTheTuneIsOffered();
}

TEST_F(EndedProgram, ASignalTakesStandingBoxesAwayAndTheyAreNoAnswer) {
  for (const char* mode : {"asks", "closes"}) {
    QProcess process;
    StartProgram(process, mode, "ready");
    process.terminate();
    ASSERT_TRUE(process.waitForFinished()) << mode;
    EXPECT_EQ(process.exitCode(), 0) << mode << process.readAll().toStdString();
    auto left = LeftRecoveries({database_.Directory()});
    ASSERT_EQ(left.size(), 1U) << mode;
    EXPECT_EQ(left[0].Read().tune->Title(), QStringLiteral("Changed"));
    left[0].Remove();
  }
}

// --- The program itself ---

// A file that cannot be read is looked at once the main window stands, set aside, and told of in a box; the
// signal takes that away.
TEST_F(EndedProgram, TheProgramLooksForFilesAndEndsBySignals) {
  Global().DatabasePath = database_.Path();
  WritePathFile(database_.Directory() + QStringLiteral("/frmPath.txt"), PathFileWriter::kMidiSetup);
  const QString left = database_.Directory() + QStringLiteral("/Zelmar-unsaved-1-old.tune");
  {
    QFile file(left);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
  environment.insert(QStringLiteral("ZELMAR_AUDIO_DRIVER"), QStringLiteral("file"));
  environment.insert(QStringLiteral("ZELMAR_AUDIO_FILE"), desk_.filePath(QStringLiteral("sound.wav")));
  QProcess process;
  process.setProcessEnvironment(environment);
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(QStringLiteral(ZELMAR_BUILD_DIRECTORY "/src/zelmar"),
                {QStringLiteral("--application-directory"), database_.Directory()});
  ASSERT_TRUE(process.waitForStarted());
  ASSERT_TRUE(QTest::qWaitFor([&left] { return QFile::exists(left + QStringLiteral(".set-aside")); }, 60000));
  EXPECT_FALSE(QFile::exists(left));
  process.terminate();
  ASSERT_TRUE(process.waitForFinished());
  EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(process.exitCode(), 0);
}

// --- The session of the desktop ---

// Nobody looks at the manager; this stands for one, which only Qt can make.
QSessionManager& AnyManager() {
  return reinterpret_cast<QSessionManager&>(*qApp);
}

TEST_F(EndedProgram, ASessionThatSavesItselfHasAllKeptAndTheProgramGoesOn) {
  Start();
  LoadAndChange();
  const EndOfSession end(*main_);
  for (const auto request : {&QGuiApplication::commitDataRequest, &QGuiApplication::saveStateRequest}) {
    main_->Recovery().Forget();
    database_.Execute(QStringLiteral("delete * from tblRecentFiles"));
    Q_EMIT(qApp->*request)(AnyManager());
    EXPECT_EQ(KeptFiles().size(), 1);
    EXPECT_EQ(StoredRecentTunes(), (QStringList{QStringLiteral("ONE"), QStringLiteral("TWO")}));
  }
  EXPECT_TRUE(main_->isVisible());
  EXPECT_FALSE(Global().MainFormLoaded);
  EXPECT_TRUE(Boxes().isEmpty());
  // A person who closes it then is asked as ever.
  main_->close();
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(EndedProgram, ASessionThatEndsAsksNothing) {
  Start();
  LoadAndChange();
  const EndOfSession end(*main_);
  Q_EMIT qApp->commitDataRequest(AnyManager());
  QEvent quit(QEvent::Quit);
  QCoreApplication::sendEvent(qApp, &quit);
  EXPECT_FALSE(main_->isVisible());
  EXPECT_TRUE(Boxes().isEmpty());
  main_.reset();
  EXPECT_EQ(KeptFiles().size(), 1);
}

TEST_F(EndedProgram, ADatabaseThatIsGoneDoesNotHoldUpTheEnd) {
  Start();
  LoadAndChange();
  Global().DatabasePath = database_.Directory() + QStringLiteral("/gone.mdb");
  main_->EndWithoutAsking();
  EXPECT_FALSE(main_->isVisible());
  EXPECT_TRUE(Boxes().isEmpty());
  EXPECT_EQ(KeptFiles().size(), 1);
}

TEST_F(EndedProgram, ASaveThatIsOnItsWayComesToItsEndAndNothingIsOffered) {
  Start();
  LoadAndChange();
  platform_.events->on_serve = [&, done = false](int) mutable {
    if (FindLoadedForm(QStringLiteral("DialogWait")) == nullptr || std::exchange(done, true)) return;
    main_->EndWithoutAsking();
  };
  RunCommand(QStringLiteral("mnuFileSave"));
  EXPECT_FALSE(main_->isVisible());
  EXPECT_EQ(database_.Column(QStringLiteral("select Title from tblMelodies where CodeName = 'ONE'")),
            QStringList{QStringLiteral("Changed")});
  main_.reset();
  EXPECT_TRUE(KeptFiles().isEmpty());
}

TEST_F(EndedProgram, AnUnchangedTuneIsNotKept) {
  Start();
  LoadTune();
  main_->EndWithoutAsking();
  main_.reset();
  EXPECT_TRUE(KeptFiles().isEmpty());
}

}  // namespace
}  // namespace zelmar
