// Opening databases, good and bad, and what opening leaves behind.
#include "store/connection.h"

#include <unistd.h>

#include <QDir>
#include <QSqlDatabase>

#include "store/connect_database.h"
#include "store/schema.h"
#include "store/store_fixture.h"

namespace zelmar::testing_support {
namespace {

using Connecting = StoreTest;

// Of a file that is there it says what is wrong with it.
QString MessageFor(const QString& path, const QString& trouble = {}) {
  return (trouble.isEmpty() ? QStringLiteral("Zelmar Database cannot be found at the path = ") + path
                            : trouble) +
         QStringLiteral(
             "   Please go to the Options menu and choose 'Connect Database'  in order to connect to your "
             "current database of melodies, composers etc.");
}

TEST_F(Connecting, AnExistingDatabaseConnects) {
  Global().DatabaseFailed = true;
  std::shared_ptr<Connection> connection;
  ConnectDatabase(connection);
  EXPECT_FALSE(Global().DatabaseFailed);
  ASSERT_NE(connection, nullptr);
  EXPECT_TRUE(connection->IsOpen());
  EXPECT_TRUE(platform.messages->shown.isEmpty());
}

TEST_F(Connecting, APathWithBackslashesAndOtherCaseNamesTheSameFile) {
  Global().DatabasePath = database.Directory() + QStringLiteral("\\SAMPLE.MDB");
  std::shared_ptr<Connection> connection;
  ConnectDatabase(connection);
  EXPECT_NE(connection, nullptr);
}

TEST_F(Connecting, TablesAndColumnsStandInTheirOrder) {
  const struct {
    const char* name;
    const char* columns;
  } tables[] = {
      {"tblMelodies",
       "CodeName Title Description Composer Country Category SoloInstrument Ensemble Length Style BeatLength "
       "BeatsPerBar KeyMode KeySignature Tempo MIDIMode AccompPattern MelodyTrack Rank LastAbsRef"},
      {"tblTracks",
       "CodeName TrackNo TrackName Channel DefaultInstrument Muted DefaultBankMSB DefaultBankLSB"},
      {"tblWords", "FileName Bar Beat Tick WordText"},
      {"tblThemes", "CodeName ThemeNo ThemeStartBar ThemeEndBar ThemeNotes ThemeTrackNo Rank"},
      {"TemplateTune", "EventType AbsRef Bar Beat Tick Track Duration Instrument Pitch Volume EnHarmonic"},
      {"tblComposer", "COMPOSER FIRST_NAME BORN DIED NATIONAL Style"},
      {"tblCategory", "Category Description"},
      {"tblStyles", "Style FromYear ToYear Description"},
      {"tblEnsemble", "Ensemble"},
      {"tblCountry", "Country Capital Population Area"},
      {"tblInstruments", "InstrumentNo InstrumentName Family Favourite BestOctave HighPitch LowPitch"},
      {"tblFamily", "Family"},
      {"tblKingsEngland", "FirstYear MainText Description"},
      {"tblWorldEvents", "FirstYear MainText"},
      {"tblAustraliaNZ", "FirstYear MainText"},
      {"tblAmericas", "FirstYear MainText"},
      {"tblDBInfo", "Title Description"},
      {"tblRecentFiles", "CodeName Caption"},
      {"tblControlSettings", "Channel Volume reverb chorus PAN modulation"},
      {"tblGSToneBank", "Patch BankLSB BankMSB Name"},
      {"tblGM2ToneBank", "Patch BankLSB BankMSB Name"},
      {"tblXGToneBank", "Patch BankLSB BankMSB Name"},
      {"tblChords", "CodeName Bar Beat Tick Chord"},
  };
  const auto connection = database.Connect();
  QStringList names;
  for (const auto& table : tables) {
    names.append(QString::fromLatin1(table.name));
    const auto rows = Recordset::OpenTable(connection, names.last());
    QStringList columns;
    for (int i = 0; i < rows->FieldCount(); ++i) columns.append(rows->FieldName(i));
    EXPECT_EQ(columns.join(u' '), QString::fromLatin1(table.columns)) << table.name;
  }
  EXPECT_EQ(connection->TableNames(), names);
}

TEST_F(Connecting, SeveralConnectionsStandBesideEachOther) {
  const auto first = database.Connect();
  const auto second = database.Connect();
  first->Execute(QStringLiteral("INSERT INTO tblFamily VALUES ('Strings')"));
  const auto rows = Recordset::OpenTable(second, QStringLiteral("tblFamily"), CursorType::kForwardOnly);
  first->Execute(QStringLiteral("INSERT INTO tblFamily VALUES ('Brass')"));
  EXPECT_EQ(rows->Text(0), QStringLiteral("Strings"));
  EXPECT_EQ(database.Column(QStringLiteral("SELECT * FROM tblFamily")).size(), 2);
}

TEST_F(Connecting, ClosedConnectionsLeaveNothingBehind) {
  const auto before = QSqlDatabase::connectionNames();
  {
    const auto connection = database.Connect();
    connection->Execute(QStringLiteral("INSERT INTO tblFamily VALUES ('Strings')"));
  }
  EXPECT_EQ(QSqlDatabase::connectionNames(), before);
  EXPECT_EQ(QDir(database.Directory()).entryList(QDir::Files), QStringList(QStringLiteral("Sample.mdb")));
}

TEST_F(Connecting, AChangedDatabaseLogsAhead) {
  const QString path = database.Directory() + QStringLiteral("/Plain.mdb");
  {
    QSqlDatabase plain = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("plain"));
    plain.setDatabaseName(path);
    ASSERT_TRUE(plain.open());
    plain.exec(SchemaStatements().first());
    plain.close();
  }
  QSqlDatabase::removeDatabase(QStringLiteral("plain"));
  constexpr qsizetype kWriteVersionByte = 18;
  const QByteArray before = BytesOf(path);
  EXPECT_EQ(before[kWriteVersionByte], 1);
  {
    const auto connection = Connection::Open(path);
    const auto rows = Recordset::OpenTable(connection, QStringLiteral("tblMelodies"));
  }
  EXPECT_EQ(BytesOf(path), before) << "reading changes nothing";
  Connection::Open(path)->Execute(QStringLiteral("INSERT INTO tblMelodies (CodeName) VALUES ('x')"));
  EXPECT_EQ(BytesOf(path)[kWriteVersionByte], 2);
}

TEST_F(Connecting, CommittedRowsAreThereWhileTheirWriterIsStillOpen) {
  const auto writer = database.Connect();
  const auto rows = Recordset::OpenTable(writer, QStringLiteral("tblFamily"));
  rows->AddNew();
  rows->SetValue(0, QStringLiteral("Winds"));
  rows->UpdateBatch();
  EXPECT_EQ(database.Column(QStringLiteral("SELECT * FROM tblFamily")), QStringList(QStringLiteral("Winds")));
}

// --- Bad databases ---

class BadDatabase : public StoreTest {
 protected:
  BadDatabase() : path(database.Directory() + QStringLiteral("/Bad.mdb")) {}

  void Write(const QByteArray& bytes) const {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }

  QStringList Files() const {
    return QDir(database.Directory()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
  }

  QByteArray Content() const { return QFileInfo(path).isFile() ? BytesOf(path) : QByteArray(); }

  // Connects, expecting the message, and every file to be as it was.
  void ExpectRefused() {
    const QByteArray before = Content();
    const QStringList files = Files();
    Global().DatabasePath = path;
    std::shared_ptr<Connection> connection;
    ConnectDatabase(connection);
    EXPECT_TRUE(Global().DatabaseFailed);
    EXPECT_EQ(connection, nullptr);
    ASSERT_EQ(platform.messages->shown.size(), 1);
    EXPECT_EQ(platform.messages->shown[0].icon, MessageIcon::kInformation);
    EXPECT_EQ(platform.messages->shown[0].text,
              MessageFor(path, QFileInfo(path).isFile() ? ConnectFailureWords() : QString()));
    EXPECT_TRUE(ConnectFailureWords().contains(path));
    EXPECT_EQ(platform.messages->shown[0].buttons, MessageButtons::kOk);
    EXPECT_EQ(Content(), before);
    EXPECT_EQ(Files(), files);
    EXPECT_TRUE(QSqlDatabase::connectionNames().isEmpty());
  }

  QString path;
};

TEST_F(BadDatabase, AMissingFileIsNotMade) {
  ExpectRefused();
}

TEST_F(BadDatabase, AnEmptyPathIsNone) {
  path = QString();
  ExpectRefused();
}

TEST_F(BadDatabase, AFolderIsNone) {
  ASSERT_TRUE(QDir().mkdir(path));
  ExpectRefused();
}

TEST_F(BadDatabase, AnEmptyFileStaysEmpty) {
  Write(QByteArray());
  ExpectRefused();
  EXPECT_EQ(QFileInfo(path).size(), 0);
}

TEST_F(BadDatabase, RandomBytesStayAsTheyAre) {
  QByteArray bytes;
  for (int i = 0; i < 20000; ++i) bytes.append(static_cast<char>((i * 7919 + i / 13) % 251));
  Write(bytes);
  ExpectRefused();
}

TEST_F(BadDatabase, AFileOfAnotherProgramStaysAsItIs) {
  Write(QByteArray("\x00\x01\x00\x00Standard Database", 21) + QByteArray(4096, 'x'));
  ExpectRefused();
}

TEST_F(BadDatabase, AHeaderAloneIsNoDatabase) {
  Write(QByteArray("SQLite format 3\0", 16) + QByteArray(4080, '\x5A'));
  ExpectRefused();
}

TEST_F(BadDatabase, AFileCutShortIsNoDatabase) {
  const QByteArray whole = BytesOf(database.Path());
  for (const qsizetype size :
       {qsizetype{1}, qsizetype{10}, qsizetype{15}, qsizetype{16}, qsizetype{19}, qsizetype{99},
        qsizetype{100}, qsizetype{511}, qsizetype{4096}, whole.size() / 2, whole.size() - 4096}) {
    platform.messages->shown.clear();
    Write(whole.left(size));
    ExpectRefused();
  }
}

TEST_F(BadDatabase, EachIsRefusedWithItsNumber) {
  const auto number = [this] { return FailureNumber([this] { Connection::Open(path); }); };
  EXPECT_EQ(number(), database_error::kFileNotFound);
  Write(QByteArray());
  EXPECT_EQ(number(), database_error::kNotADatabase);
  Write(QByteArray("x"));
  EXPECT_EQ(number(), database_error::kNotADatabase);
  Write(QByteArray(100000, 'x'));
  EXPECT_EQ(number(), database_error::kNotADatabase);
  Write(BytesOf(database.Path()).left(4096));
  EXPECT_EQ(number(), database_error::kNotADatabase);
}

TEST_F(BadDatabase, AnUnreadableFileIsNone) {
  Write(BytesOf(database.Path()));
  ASSERT_TRUE(QFile::setPermissions(path, QFileDevice::Permissions()));
  constexpr uid_t kNobody = 65534;
  const bool privileged = geteuid() == 0;
  const QByteArray before = BytesOf(database.Path());
  if (privileged) {
    // The folder must stay open to the other user, so that it is the file that is refused.
    QFile::setPermissions(database.Directory(), QFileDevice::Permissions(0x7755));
    ASSERT_EQ(seteuid(kNobody), 0);
  }
  const bool neighbour_can_be_read = !BytesOf(database.Path()).isEmpty();
  Global().DatabasePath = path;
  std::shared_ptr<Connection> connection;
  ConnectDatabase(connection);
  if (privileged) {
    ASSERT_EQ(seteuid(0), 0);
  }
  EXPECT_TRUE(neighbour_can_be_read);
  EXPECT_TRUE(Global().DatabaseFailed);
  ASSERT_EQ(platform.messages->shown.size(), 1);
  EXPECT_EQ(
      platform.messages->shown[0].text,
      MessageFor(
          path,
          QStringLiteral("The file %1 cannot be opened; perhaps it or its folder is protected.").arg(path)));
  QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
  EXPECT_EQ(BytesOf(path), before);
}

}  // namespace
}  // namespace zelmar::testing_support
