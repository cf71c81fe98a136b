// The program as it is called from a terminal: how a call is read by a table, and the program itself.
#include "app/terminal.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <QProcess>
#include <QTemporaryDir>
#include <climits>

#include "app/terminal_commands.h"
#include "platform/failure.h"

namespace zelmar {
namespace {

using enum TerminalRow::Kind;

// What the rows below were run with.
QStringList ran;

int Note(const TerminalArguments& arguments) {
  ran.append(arguments.values);
  return exit_status::kDone;
}

constexpr TerminalRow kRows[] = {
    {kQuestion, "--help, -h", "", "Tell.", &Note},
    {kCommand, "import", "<file> [<title>] [--replace] [--tempo <beats>]", "Read a file.", &Note},
    {kCommand, "play", "<tune>...", "Play tunes.", &Note},
    {kCommand, "fail", "", "Fail.",
     [](const TerminalArguments&) -> int {
       throw Failure(error_number::kInvalidCall, QStringLiteral("It is\nbroken."));
     }},
    {kWindowCommand, "--tour", "<picture>", "Go round.", &Note},
    {kSetting, "--application-directory", "<directory>", "Use that.", &Note},
};

class TerminalCalls : public ::testing::Test {
 protected:
  TerminalCalls() { ran.clear(); }
  static TerminalCall Read(const char* words) {
    return ReadCall(QString(QLatin1String(words)).split(QLatin1Char(' '), Qt::SkipEmptyParts), kRows);
  }
  static QString Mistake(const char* words) { return Read(words).mistake; }
  static QStringList Values(const char* words) {
    const TerminalCall call = Read(words);
    EXPECT_EQ(call.mistake, QString()) << words;
    return call.arguments.values;
  }
  static QStringList List(const char* words) { return QString(QLatin1String(words)).split(QLatin1Char(' ')); }
};

// --- Reading ---

TEST_F(TerminalCalls, WithoutAWordOpenTheMainWindow) {
  const TerminalCall call = Read("");
  EXPECT_EQ(call.mistake, QString());
  EXPECT_EQ(call.command, nullptr);
  EXPECT_TRUE(call.NeedsWindows());
}

TEST_F(TerminalCalls, NeedWindowsOnlyForACommandOfTheirs) {
  EXPECT_TRUE(Read("--tour a.png").NeedsWindows());
  EXPECT_FALSE(Read("import a.mid").NeedsWindows());
  EXPECT_FALSE(Read("-h").NeedsWindows());
  EXPECT_TRUE(Read("--application-directory d").NeedsWindows());
}

TEST_F(TerminalCalls, GiveACommandItsValuesInOrder) {
  EXPECT_EQ(Values("import a.mid"), List("a.mid"));
  EXPECT_EQ(Values("import a.mid Title"), List("a.mid Title"));
  EXPECT_EQ(Values("play one two three"), List("one two three"));
  EXPECT_EQ(Values("--tour=a.png"), List("a.png"));
  EXPECT_EQ(Values("import -"), List("-"));
}

TEST_F(TerminalCalls, TakeOptionsOfACommandAnywhereBehindItsName) {
  const TerminalCall call = Read("import --replace a.mid --tempo 90");
  EXPECT_EQ(call.mistake, QString());
  EXPECT_EQ(call.arguments.values, List("a.mid"));
  EXPECT_TRUE(call.arguments.Has("--replace"));
  EXPECT_EQ(call.arguments.options.value(QStringLiteral("--tempo")), QStringLiteral("90"));
  EXPECT_FALSE(Read("import a.mid").arguments.Has("--replace"));
  EXPECT_EQ(Read("import a.mid --tempo=90").arguments.options.value(QStringLiteral("--tempo")),
            QStringLiteral("90"));
}

TEST_F(TerminalCalls, TakeSettingsAnywhere) {
  for (const char* words :
       {"--application-directory d import a.mid", "import a.mid --application-directory d",
        "import --application-directory=d a.mid"}) {
    const TerminalCall call = Read(words);
    EXPECT_EQ(call.mistake, QString()) << words;
    EXPECT_EQ(call.arguments.values, List("a.mid")) << words;
    ASSERT_EQ(call.settings.size(), 1U) << words;
    ran.clear();
    UseSettings(call);
    EXPECT_EQ(ran, List("d")) << words;
  }
}

TEST_F(TerminalCalls, PassOverWhatTheToolkitTakes) {
  EXPECT_EQ(Values("-platform offscreen import a.mid --style=fusion -reverse"), List("a.mid"));
  EXPECT_EQ(Read("-session 1_2_3 --geometry 10x10").command, nullptr);
  EXPECT_EQ(Mistake("-session 1_2_3 --geometry 10x10"), QString());
}

TEST_F(TerminalCalls, AnswerAQuestionWhateverElseTheySay) {
  for (const char* words : {"--help", "-h", "import --help", "--bogus -h play"}) {
    const TerminalCall call = Read(words);
    EXPECT_EQ(call.mistake, QString()) << words;
    EXPECT_EQ(call.command, &kRows[0]) << words;
  }
}

// --- Wrong calls ---

TEST_F(TerminalCalls, ThatAreWrongSayWhatIsWrong) {
  struct Wrong {
    const char* words;
    const char* mistake;
  };
  for (const Wrong& wrong : {Wrong{"--bogus", "There is no option --bogus."},
                             {"-x", "There is no option -x."},
                             {"--bogus=3", "There is no option --bogus."},
                             {"--replace", "There is no option --replace."},
                             {"play one --replace", "There is no option --replace."},
                             {"sing", "There is no command sing."},
                             {"import", "import needs <file>."},
                             {"play", "play needs <tune>."},
                             {"--tour", "--tour needs <picture>."},
                             {"import a b c", "import takes no further word: c."},
                             {"fail now", "fail takes no further word: now."},
                             {"import a --tempo", "--tempo needs a value."},
                             {"import a --replace=yes", "--replace takes no value."},
                             {"fail=now", "There is no command fail=now."},
                             {"--application-directory", "--application-directory needs <directory>."},
                             {"import a play b", "import and play are two commands."}})
    EXPECT_EQ(Mistake(wrong.words), QLatin1String(wrong.mistake)) << wrong.words;
}

// --- Running ---

TEST_F(TerminalCalls, RunTheirCommandWithItsArguments) {
  EXPECT_EQ(RunCommandOf(Read("import a.mid Title")), exit_status::kDone);
  EXPECT_EQ(ran, List("a.mid Title"));
}

TEST_F(TerminalCalls, TellAFailureInOneLine) {
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(RunCommandOf(Read("fail")), exit_status::kFailure);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Zelmar: It is broken.\n");
}

TEST_F(TerminalCalls, HaveEveryRowInTheHelp) {
  const QString help = TerminalHelp(kRows);
  const QString commands = help.section(QStringLiteral("Settings:"), 0, 0);
  for (const TerminalRow& row : kRows) {
    const QString& part = row.kind == kSetting ? help : commands;
    EXPECT_TRUE(part.contains(QLatin1String(row.names) + QLatin1Char(' '))) << row.names;
    EXPECT_TRUE(part.contains(QLatin1String(row.arguments))) << row.names;
    EXPECT_TRUE(part.contains(QLatin1String(row.help))) << row.names;
  }
  EXPECT_FALSE(commands.contains(QStringLiteral("--application-directory")));
}

// --- The table of the program ---

TEST_F(TerminalCalls, TheTableOfTheProgramIsInOrder) {
  QStringList names;
  for (const TerminalRow& row : TerminalRows()) {
    names += QString(QLatin1String(row.names)).split(QStringLiteral(", "));
    EXPECT_NE(row.run, nullptr) << row.names;
    EXPECT_TRUE(QString(QLatin1String(row.help)).endsWith(QLatin1Char('.'))) << row.names;
    EXPECT_FALSE(QString(QLatin1String(row.help)).contains(QLatin1Char('\n'))) << row.names;
  }
  for (const char* name : {"--help", "-h", "--version", "-v", "--tour", "--application-directory"})
    EXPECT_EQ(names.count(QLatin1String(name)), 1) << name;
  const qsizetype count = names.size();
  names.removeDuplicates();
  EXPECT_EQ(names.size(), count);
}

// --- The program itself ---

class TerminalProgram : public ::testing::Test {
 protected:
  struct Outcome {
    int status = -1;
    QString output;
    QString errors;
  };

  // Runs it where no window can be made, and sees to it that no SoundFont is opened.
  enum class Display { kUnknown, kNone };
  Outcome Run(const QStringList& words, Display display = Display::kUnknown) {
    const QString font = folder_.filePath(QStringLiteral("font.sf2"));
    QFile file(font);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    const int watch = inotify_init1(IN_NONBLOCK);
    EXPECT_GE(inotify_add_watch(watch, qPrintable(font), IN_OPEN), 0);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("nowhere"));
    if (display == Display::kNone)
      for (const char* variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
        environment.remove(QLatin1String(variable));
    environment.insert(QStringLiteral("ZELMAR_SOUNDFONT"), font);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(ZELMAR_BUILD_DIRECTORY "/src/zelmar"), words);
    EXPECT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    char opened[sizeof(inotify_event) + NAME_MAX + 1];
    EXPECT_LT(read(watch, opened, sizeof opened), 0) << "the SoundFont was opened";
    close(watch);
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
  }

  QTemporaryDir folder_;
};

TEST_F(TerminalProgram, ListsItsCommands) {
  for (const char* name : {"--help", "-h"}) {
    const Outcome outcome = Run({QLatin1String(name)});
    EXPECT_EQ(outcome.status, exit_status::kDone);
    EXPECT_EQ(outcome.output, TerminalHelp(TerminalRows()));
    EXPECT_EQ(outcome.errors, QString());
  }
}

TEST_F(TerminalProgram, TellsItsVersion) {
  const Outcome outcome = Run({QStringLiteral("--version")});
  EXPECT_EQ(outcome.status, exit_status::kDone);
  EXPECT_EQ(outcome.output, QStringLiteral("zelmar " ZELMAR_VERSION "\n"));
  EXPECT_EQ(outcome.errors, QString());
}

TEST_F(TerminalProgram, WhereThereIsNoDisplaySaysSoInOneLine) {
  for (const QStringList& words :
       {QStringList(), QStringList{QStringLiteral("--tour"), folder_.filePath(QStringLiteral("tour.png"))}}) {
    const Outcome outcome = Run(words, Display::kNone);
    EXPECT_EQ(outcome.status, exit_status::kFailure);
    EXPECT_EQ(outcome.errors, QStringLiteral("Zelmar: There is no display to show a window on.\n"));
  }
}

TEST_F(TerminalProgram, CalledWronglySaysSoInOneLine) {
  for (const QStringList& words : {QStringList{QStringLiteral("--bogus")},
                                   {QStringLiteral("sing")},
                                   {QStringLiteral("--tour")},
                                   {QStringLiteral("--application-directory")}}) {
    const Outcome outcome = Run(words);
    EXPECT_EQ(outcome.status, exit_status::kWrongUsage) << qPrintable(words.first());
    EXPECT_EQ(outcome.output, QString());
    EXPECT_TRUE(outcome.errors.startsWith(QStringLiteral("Zelmar: "))) << qPrintable(outcome.errors);
    EXPECT_TRUE(outcome.errors.contains(words.first())) << qPrintable(outcome.errors);
    EXPECT_EQ(outcome.errors.count(QLatin1Char('\n')), 1) << qPrintable(outcome.errors);
  }
}

}  // namespace
}  // namespace zelmar
