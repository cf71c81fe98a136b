// Connecting a database: what is shown, what a choice changes at once, and files that will not do.
#include "app/options/frm_options_connect_db.h"

#include "app/cold_start.h"
#include "app/option_windows_fixture.h"
#include "app/troubled_database.h"
#include "store/connect_database.h"
#include "store/recordset.h"

namespace zelmar {
namespace {

using namespace testing_support;

class ConnectDB : public OptionWindowTest {
 protected:
  ConnectDB() { Start(); }

  FrmOptionsConnectDB& Open() { return Opened<FrmOptionsConnectDB>("mnuOptionsConnectDB"); }
  static bool IsShown() { return IsOpen("frmOptionsConnectDB"); }
  void Choose(FrmOptionsConnectDB& window, const QString& path) {
    platform_.files->answers = {path};
    Click(window, "cmdChangePath");
  }
  static QString Description(const FrmOptionsConnectDB& window) {
    return Find<QPlainTextEdit>(window, "txtDescription").toPlainText();
  }
  static QString State(const FrmOptionsConnectDB& window) {
    const auto& label = Find<QLabel>(window, "lblState");
    return label.isVisible() ? label.text() : QString();
  }

  // Another whole database beside the first.
  QString Other() const {
    const QString path = In(QStringLiteral("Other.mdb"));
    if (!QFile::exists(path)) {
      QFile::copy(database_.Path(), path);
      Connection::Open(path)->Execute(
          QStringLiteral("UPDATE tblDBInfo SET Title='The other', Description='Of others'"));
    }
    return path;
  }
  static QStringList Info(const QString& path) {
    const auto rows =
        Recordset::OpenStatement(Connection::Open(path), QStringLiteral("SELECT * FROM tblDBInfo"));
    return {rows->Text(QStringLiteral("Title")), rows->Text(QStringLiteral("Description"))};
  }
  QString ConnectionsBox(const QString& path) const {
    return QStringLiteral("Zelmar Database cannot be found at the path = ") + path + WhereToGo();
  }
  static QString WhereToGo() {
    return QStringLiteral(
        "   Please go to the Options menu and choose 'Connect Database'  in order to connect "
        "to your current database of melodies, composers etc.");
  }
};

TEST_F(ConnectDB, HasItsWordsOneByOne) {
  const auto& window = Open();
  EXPECT_TRUE(window.isModal());
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Connect database"));
  EXPECT_EQ(Words(Find<QPushButton>(window, "cmdChangePath").text()),
            QStringLiteral("Change Path to Database"));
  EXPECT_EQ(Words(Find<QPushButton>(window, "cmdQuit").text()), QStringLiteral("Save and Quit"));
  EXPECT_EQ(Words(Find<QPushButton>(window, "cmdBack").text()), QStringLiteral("Back  (Cancel)"));
}

TEST_F(ConnectDB, ReadsThePathFileAfreshAndShowsIt) {
  Global().DatabaseChangePerson = QStringLiteral("Somebody else");
  Global().DatabasePath = Other();
  Global().MediaPlayerInstalled = true;
  const auto& window = Open();
  EXPECT_EQ(FieldText(window, "txtCurrentPath"), database_.Path());
  EXPECT_EQ(FieldText(window, "txtDate"), QLocale().toString(QDate(2026, 3, 4), QLocale::ShortFormat));
  EXPECT_EQ(FieldText(window, "txtTime"), QStringLiteral("10:20:30"));
  EXPECT_EQ(FieldText(window, "txtPerson"), QStringLiteral("Ann"));
  EXPECT_EQ(FieldText(window, "txtComments"), QStringLiteral("First one"));
  EXPECT_EQ(Global().DatabasePath, database_.Path());
  EXPECT_FALSE(Global().MediaPlayerInstalled);
}

TEST_F(ConnectDB, ShowsWhatTheDatabaseSaysAboutItself) {
  const auto& window = Open();
  EXPECT_EQ(FieldText(window, "txtFileName"), QStringLiteral("Sample.mdb"));
  EXPECT_EQ(FieldText(window, "txtTitle"), QStringLiteral("Sample Tunes"));
  EXPECT_EQ(Description(window), QStringLiteral("For tests"));
  EXPECT_EQ(Global().DatabaseTitle, QStringLiteral("Sample Tunes"));
  EXPECT_EQ(State(window), QString());
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(ConnectDB, AsksTheDatabaseNothingWhenItHasFailed) {
  Global().DatabaseFailed = true;
  const auto& window = Open();
  EXPECT_EQ(FieldText(window, "txtTitle"), QString());
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(ConnectDB, OfADatabaseThatHasFailedItSaysWhy) {
  WriteBytes(database_.Path(), "A letter.\n");
  std::shared_ptr<Connection> connection;
  ConnectDatabase(connection);
  ASSERT_TRUE(Global().DatabaseFailed);
  platform_.messages->shown.clear();
  const auto& window = Open();
  EXPECT_EQ(State(window), QStringLiteral("The file %1 is not a database.").arg(database_.Path()));
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(ConnectDB, AChosenFileIsInUseAtOnce) {
  auto& window = Open();
  platform_.clock->SetSeconds(3723.5);
  const QByteArray settings = BytesOf(PathFile());
  Choose(window, Other());
  ASSERT_EQ(platform_.files->shown.size(), 1);
  EXPECT_EQ(platform_.files->shown[0].title, QStringLiteral("Choose Zelmar Data Base"));
  EXPECT_EQ(platform_.files->shown[0].filter, QStringLiteral("Database Files (*.MDB)|*.MDB"));
  EXPECT_EQ(platform_.files->shown[0].current, database_.Path());
  EXPECT_EQ(Global().DatabasePath, Other());
  EXPECT_EQ(FieldText(window, "txtCurrentPath"), Other());
  EXPECT_EQ(Global().DatabaseChangeDate, QDate::currentDate());
  EXPECT_EQ(Global().DatabaseChangeTime, QTime(1, 2, 3));
  EXPECT_EQ(FieldText(window, "txtTime"), QStringLiteral("01:02:03"));
  EXPECT_EQ(FieldText(window, "txtFileName"), QStringLiteral("Other.mdb"));
  EXPECT_EQ(FieldText(window, "txtTitle"), QStringLiteral("The other"));
  EXPECT_EQ(Description(window), QStringLiteral("Of others"));
  EXPECT_EQ(Global().DatabaseTitle, QStringLiteral("The other"));
  EXPECT_EQ(BytesOf(PathFile()), settings);
}

TEST_F(ConnectDB, NoFileGivesTheWarningAndChangesNothing) {
  auto& window = Open();
  Choose(window, QString());
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].icon, MessageIcon::kExclamation);
  EXPECT_EQ(Boxes()[0].text, QStringLiteral("Please select a valid DOS path for the Zelmar Database"));
  EXPECT_EQ(Global().DatabasePath, database_.Path());
  EXPECT_EQ(FieldText(window, "txtTime"), QStringLiteral("10:20:30"));
}

TEST_F(ConnectDB, SaveAndQuitKeepsAllAndShowsTheFrontPage) {
  auto& window = Open();
  OpenBareWindow();
  Choose(window, Other());
  Type(window, "txtPerson", QStringLiteral("Bob"));
  Type(window, "txtComments", QStringLiteral("Says \"so\""));
  Type(window, "txtTitle", QStringLiteral("Ours"));
  Find<QPlainTextEdit>(window, "txtDescription").setPlainText(QStringLiteral("It's ours"));
  Click(window, "cmdQuit");
  QCoreApplication::processEvents();
  EXPECT_FALSE(IsShown());
  EXPECT_EQ(main_->ActiveChild(), &Front());
  EXPECT_EQ(Info(Other()), (QStringList{QStringLiteral("Ours"), QStringLiteral("It's ours")}));
  EXPECT_EQ(TextOf(Front(), "lblDatabaseTitle"), QStringLiteral("Ours"));
  EXPECT_EQ(Info(database_.Path())[0], QStringLiteral("Sample Tunes"));
  const auto records = Records();
  ASSERT_EQ(records.size(), 4);
  EXPECT_TRUE(records[0].startsWith('"' + Other().toUtf8() + "\",#"));
  EXPECT_TRUE(records[0].endsWith("#,\"Bob\",\"Says \"\"so\"\"\""));
  EXPECT_EQ(records[1], "\"Midi output device\",0,\"Recorder\"");
  EXPECT_EQ(records[2], "\"Midi Mode, and Media Player info\",#FALSE#");
  EXPECT_EQ(records[3], "\"Midi mode\",\"GS\"");
}

TEST_F(ConnectDB, BackWritesNothingAndTheChosenFileStaysInUse) {
  const QByteArray settings = BytesOf(PathFile());
  auto& window = Open();
  Choose(window, Other());
  Type(window, "txtTitle", QStringLiteral("Ours"));
  Type(window, "txtPerson", QStringLiteral("Bob"));
  Click(window, "cmdBack");
  EXPECT_FALSE(IsShown());
  EXPECT_EQ(BytesOf(PathFile()), settings);
  EXPECT_EQ(Info(Other())[0], QStringLiteral("The other"));
  EXPECT_EQ(Global().DatabasePath, Other());
  EXPECT_EQ(Global().DatabaseChangePerson, QStringLiteral("Ann"));
}

TEST_F(ConnectDB, EscapeIsBack) {
  const QByteArray settings = BytesOf(PathFile());
  QTest::keyClick(&Open(), Qt::Key_Escape);
  EXPECT_FALSE(IsShown());
  EXPECT_EQ(BytesOf(PathFile()), settings);
}

// --- Files that will not do ---

TEST_F(ConnectDB, AFileThatIsGoneIsTold) {
  auto& window = Open();
  const QString path = In(QStringLiteral("gone.mdb"));
  Choose(window, path);
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].text, ConnectionsBox(path));
  EXPECT_EQ(State(window), QStringLiteral("There is no file %1.").arg(path));
  EXPECT_TRUE(Global().DatabaseFailed);
  EXPECT_EQ(Global().DatabasePath, path);
  EXPECT_EQ(FieldText(window, "txtTitle"), QString());
  EXPECT_FALSE(QFile::exists(path));
}

TEST_F(ConnectDB, AFileThatIsNoDatabaseIsToldAndStaysAsItIs) {
  for (const QByteArray& bytes : {QByteArray(), QByteArray("x"), QByteArray(50000, 'x')}) {
    const QString path = In(QStringLiteral("letter.mdb"));
    WriteBytes(path, bytes);
    platform_.messages->shown.clear();
    auto& window = Open();
    Choose(window, path);
    ASSERT_EQ(Boxes().size(), 1);
    EXPECT_EQ(Boxes()[0].text, QStringLiteral("The file %1 is not a database.").arg(path) + WhereToGo());
    EXPECT_EQ(State(window), QStringLiteral("The file %1 is not a database.").arg(path));
    EXPECT_EQ(BytesOf(path), bytes);
    // The next choice takes the trouble away.
    Choose(window, Other());
    EXPECT_FALSE(Global().DatabaseFailed);
    EXPECT_EQ(State(window), QString());
    EXPECT_EQ(FieldText(window, "txtTitle"), QStringLiteral("The other"));
    window.reject();
    LetClosedWindowsGo();
  }
}

TEST_F(ConnectDB, ADatabaseThatLacksTablesIsToldWithTheirNames) {
  Connection::Open(Other())->Execute(QStringLiteral("DROP TABLE tblWords"));
  Connection::Open(Other())->Execute(QStringLiteral("DROP TABLE tblChords"));
  auto& window = Open();
  Choose(window, Other());
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].text,
            QStringLiteral("%1 is a database and lacks tables that Zelmar needs: tblWords.").arg(Other()));
  EXPECT_EQ(State(window), Boxes()[0].text);
  EXPECT_EQ(FieldText(window, "txtTitle"), QStringLiteral("The other"));
  EXPECT_EQ(Global().DatabasePath, Other());
}

TEST_F(ConnectDB, ADatabaseOfAnotherProgramIsToldAndNotWrittenTo) {
  Connection::Open(Other())->Execute(QStringLiteral("DROP TABLE tblDBInfo"));
  auto& window = Open();
  Choose(window, Other());
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_TRUE(Boxes()[0].text.endsWith(QStringLiteral("lacks tables that Zelmar needs: tblDBInfo.")));
  EXPECT_FALSE(Global().DatabaseFailed);
  EXPECT_EQ(FieldText(window, "txtTitle"), QString());
  Click(window, "cmdQuit");
  EXPECT_FALSE(IsShown());
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(ConnectDB, ADatabaseWithoutARowAboutItselfIsTold) {
  Connection::Open(Other())->Execute(QStringLiteral("DELETE * FROM tblDBInfo"));
  auto& window = Open();
  Choose(window, Other());
  EXPECT_EQ(Boxes().size(), 1);
  EXPECT_NE(State(window), QString());
  EXPECT_TRUE(window.isVisible());
}

TEST_F(ConnectDB, ADatabaseThatCanOnlyBeReadIsToldAndKeepsItsWords) {
  const QString path = Other();
  auto& window = Open();
  {
    const ReadOnlyDatabase read_only(database_);
    Choose(window, path);
    EXPECT_EQ(FieldText(window, "txtTitle"), QStringLiteral("The other"));
    ASSERT_EQ(Boxes().size(), 1);
    const QString words = QStringLiteral("The database %1 can be read and not changed: %2.")
                              .arg(path, ReasonOf(read_only.Obstacle()));
    EXPECT_TRUE(Boxes()[0].text.startsWith(words)) << qPrintable(Boxes()[0].text);
    EXPECT_EQ(State(window), words);
    // What is known is not told again, and stands in the window all the same.
    Choose(window, path);
    EXPECT_EQ(Boxes().size(), 1);
    EXPECT_EQ(State(window), words);
    Type(window, "txtTitle", QStringLiteral("Ours"));
    Click(window, "cmdQuit");
    // The settings and the database both refuse, each with its own message.
    ASSERT_EQ(Boxes().size(), 3);
    EXPECT_EQ(Boxes()[1].title, QStringLiteral("Settings not saved"));
    EXPECT_EQ(Boxes()[2].title, QStringLiteral("Database not changed"));
    EXPECT_EQ(Boxes()[2].text,
              QStringLiteral(
                  "The title and the description could not be saved: The database file cannot be written "
                  "to: %1. The database keeps those that it had.")
                  .arg(ReasonOf(read_only.Obstacle())));
  }
  EXPECT_EQ(Info(path)[0], QStringLiteral("The other"));
}

TEST_F(ConnectDB, ADatabaseThatAnotherProgramHoldsIsTold) {
  const ShutDatabase shut(Other());
  auto& window = Open();
  Choose(window, Other());
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].text,
            QStringLiteral("Another program holds the database %1.").arg(Other()) + WhereToGo());
  EXPECT_EQ(State(window), QStringLiteral("Another program holds the database %1.").arg(Other()));
}

TEST_F(ConnectDB, WordsThatWereNeverReadAreNotWrittenOver) {
  Global().DatabaseFailed = true;
  auto& window = Open();
  Click(window, "cmdQuit");
  EXPECT_EQ(Info(database_.Path()),
            (QStringList{QStringLiteral("Sample Tunes"), QStringLiteral("For tests")}));
  EXPECT_FALSE(Global().DatabaseFailed);
}

TEST_F(ConnectDB, WordsOfADatabaseThatWasHeldWhenItWasChosenAreNotWrittenOver) {
  auto& window = Open();
  ASSERT_EQ(Description(window), QStringLiteral("For tests"));
  {
    const ShutDatabase shut(Other());
    Choose(window, Other());
  }
  EXPECT_EQ(Description(window), QString());
  Click(window, "cmdQuit");
  EXPECT_EQ(Info(Other()), (QStringList{QStringLiteral("The other"), QStringLiteral("Of others")}));
}

TEST_F(ConnectDB, APathFileThatIsGoneIsToldAndTheGlobalsAreShown) {
  QFile::remove(PathFile());
  const auto& window = Open();
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_TRUE(Boxes()[0].text.contains(PathFile()));
  EXPECT_EQ(FieldText(window, "txtCurrentPath"), database_.Path());
  EXPECT_EQ(FieldText(window, "txtTitle"), QStringLiteral("Sample Tunes"));
}

// --- At the start ---

class ConnectAtStart : public OptionWindowTest {};

TEST_F(ConnectAtStart, AFailedDatabaseOpensTheWindowAndTheStartWaitsForIt) {
  const QString whole = Global().DatabasePath;
  database_.AddRow(QStringLiteral("tblInstruments"), {40, QStringLiteral("Violin"), QStringLiteral("Strings"),
                                                      1, 5, QStringLiteral("E7"), QStringLiteral("G3")});
  Global().DatabasePath = In(QStringLiteral("gone.mdb"));
  WriteSettings();
  platform_.files->answers = {whole};
  bool shown = false;
  QTimer chooser;
  chooser.callOnTimeout([&] {
    auto* const window =
        qobject_cast<FrmOptionsConnectDB*>(FindLoadedForm(QStringLiteral("frmOptionsConnectDB")));
    if (window == nullptr || !window->isVisible() || shown) return;
    shown = true;
    EXPECT_TRUE(window->isModal());
    EXPECT_TRUE(IsOpen("frmFront"));
    Click(*window, "cmdChangePath");
    Click(*window, "cmdQuit");
  });
  chooser.start(1);
  StartResult start = ColdStart();
  EXPECT_TRUE(shown);
  // What needs the database has been read after the choice.
  EXPECT_EQ(Global().DatabasePath, whole);
  EXPECT_EQ(Global().DatabaseTitle, QStringLiteral("Sample Tunes"));
  EXPECT_EQ(Global().InstrumentNames[40], QStringLiteral("Violin"));
  EXPECT_TRUE(start.main_window->isVisible());
  start.main_window.reset();
}

}  // namespace
}  // namespace zelmar
