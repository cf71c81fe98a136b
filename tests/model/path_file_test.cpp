#include "model/path_file.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>

#include "model/first_start.h"
#include "model/globals.h"
#include "model/tune.h"
#include "model/tune_statements.h"
#include "platform/failure.h"
#include "support/application_directory.h"
#include "support/full_disk.h"
#include "support/scripted_services.h"

namespace zelmar {
namespace {

using testing_support::FullDisk;
using testing_support::ScriptedPlatform;
using testing_support::TemporaryApplicationDirectory;

constexpr char kRecord1[] = "\"/music/Zelmar.mdb\",#2026-03-04#,#10:20:30#,\"Ann\",\"First one\"\n";
constexpr char kRecord2[] = "\"Midi output device\",3,\"Port three\"\n";
constexpr char kRecord3[] = "\"Media Player\",#TRUE#\n";
constexpr char kRecord4[] = "\"MIDI Mode\",\"XG\"\n";

class PathFile : public ::testing::Test {
 protected:
  void Write(const QByteArray& bytes) const { directory_.Write(QStringLiteral("frmPath.txt"), bytes); }
  QString Path() const { return directory_.In(QStringLiteral("frmPath.txt")); }
  QByteArray Bytes() const { return directory_.Read(QStringLiteral("frmPath.txt")); }

  // The description of the failure of reading `bytes`; empty when they can be read. The file must not change.
  QString FailureOf(const QByteArray& bytes) const {
    Write(bytes);
    QString description;
    try {
      ReadPathFileIntoGlobals(Path());
    } catch (const Failure& failure) {
      description = failure.Description();
    }
    EXPECT_EQ(Bytes(), bytes);
    return description;
  }

  ScriptedPlatform platform_;
  TemporaryApplicationDirectory directory_;
};

TEST_F(PathFile, FourRecordsFillTheGlobals) {
  EXPECT_EQ(FailureOf(QByteArray(kRecord1) + kRecord2 + kRecord3 + kRecord4), QString());
  EXPECT_EQ(Global().DatabasePath, QStringLiteral("/music/Zelmar.mdb"));
  EXPECT_EQ(Global().DatabaseChangeDate, QDate(2026, 3, 4));
  EXPECT_EQ(Global().DatabaseChangeTime, QTime(10, 20, 30));
  EXPECT_EQ(Global().DatabaseChangePerson, QStringLiteral("Ann"));
  EXPECT_EQ(Global().DatabaseChangeComment, QStringLiteral("First one"));
  EXPECT_EQ(Global().MidiDeviceNumber, 3);
  EXPECT_EQ(Global().MidiDeviceName, QStringLiteral("Port three"));
  EXPECT_TRUE(Global().MediaPlayerInstalled);
  EXPECT_EQ(Global().MidiMode, QStringLiteral("XG"));
}

TEST_F(PathFile, OnlyTwoRecordsStartWithTheDefaults) {
  EXPECT_EQ(FailureOf(QByteArray(kRecord1) + kRecord2), QString());
  EXPECT_EQ(Global().MidiDeviceNumber, 3);
  EXPECT_TRUE(Global().MidiMode.isEmpty());
  EXPECT_FALSE(Global().MediaPlayerInstalled);
}

TEST_F(PathFile, ThreeRecordsLeaveTheMode) {
  EXPECT_EQ(FailureOf(QByteArray(kRecord1) + kRecord2 + kRecord3), QString());
  EXPECT_TRUE(Global().MediaPlayerInstalled);
  EXPECT_TRUE(Global().MidiMode.isEmpty());
}

TEST_F(PathFile, AMalformedLaterRecordIsIgnoredAndTheNextOneRead) {
  EXPECT_EQ(FailureOf(QByteArray(kRecord1) + kRecord2 + "\"Media Player\",#MAYBE#\n" + kRecord4), QString());
  EXPECT_FALSE(Global().MediaPlayerInstalled);
  EXPECT_EQ(Global().MidiMode, QStringLiteral("XG"));
  ResetGlobals();
  EXPECT_EQ(FailureOf(QByteArray(kRecord1) + kRecord2 + "\"Media Player\n" + kRecord4), QString());
  ResetGlobals();
  EXPECT_EQ(FailureOf(QByteArray(kRecord1) + kRecord2 + kRecord3 + "\"MIDI Mode\",7\n"), QString());
  EXPECT_TRUE(Global().MediaPlayerInstalled);
  EXPECT_TRUE(Global().MidiMode.isEmpty());
}

TEST_F(PathFile, BlanksBesideTheCommasDoNoHarm) {
  EXPECT_EQ(
      FailureOf("\"/music/Zelmar.mdb\", #2026-03-04# , #10:20:30#, \"Ann\" ,\"x\" \n" + QByteArray(kRecord2)),
      QString());
  EXPECT_EQ(Global().DatabaseChangePerson, QStringLiteral("Ann"));
}

TEST_F(PathFile, ADateThatWasNeverSetCanBeReadAgain) {
  WritePathFile(Path(), PathFileWriter::kMidiSetup);
  ReadPathFileIntoGlobals(Path());
  EXPECT_TRUE(Global().DatabaseChangeDate.isValid());
}

TEST_F(PathFile, AFileThatIsMissingIsNamed) {
  try {
    ReadPathFileIntoGlobals(Path());
    FAIL() << "a missing file was read";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), error_number::kFileNotFound);
    EXPECT_TRUE(failure.Description().contains(Path()));
  }
  EXPECT_FALSE(QFile::exists(Path()));
}

TEST_F(PathFile, AFileCutOffTellsTheRecord) {
  const QByteArray whole = QByteArray(kRecord1) + kRecord2;
  Global().DatabasePath = QStringLiteral("before");
  EXPECT_TRUE(FailureOf({}).contains(QStringLiteral("record 1")));
  EXPECT_TRUE(FailureOf(kRecord1).contains(QStringLiteral("record 2")));
  for (qsizetype length = 0; length < qsizetype(sizeof kRecord1) - 2; ++length)
    EXPECT_TRUE(FailureOf(whole.left(length)).contains(QStringLiteral("record 1"))) << length;
  for (qsizetype length = sizeof kRecord1; length < whole.size() - 2; ++length)
    EXPECT_TRUE(FailureOf(whole.left(length)).contains(QStringLiteral("record 2"))) << length;
  EXPECT_EQ(Global().DatabasePath, QStringLiteral("before"));
}

TEST_F(PathFile, AWrongTypeIsTold) {
  const QByteArray record2 = kRecord2;
  EXPECT_TRUE(
      FailureOf("7,#2026-03-04#,#10:20:30#,\"a\",\"b\"\n" + record2).contains(QStringLiteral("value 1")));
  EXPECT_TRUE(FailureOf("\"x\",\"2026-03-04\",#10:20:30#,\"a\",\"b\"\n" + record2)
                  .contains(QStringLiteral("value 2")));
  EXPECT_TRUE(
      FailureOf("\"x\",#someday#,#10:20:30#,\"a\",\"b\"\n" + record2).contains(QStringLiteral("not a date")));
  EXPECT_TRUE(
      FailureOf("\"x\",#2026-03-04#,#late#,\"a\",\"b\"\n" + record2).contains(QStringLiteral("not a time")));
  EXPECT_TRUE(FailureOf(QByteArray(kRecord1) + "\"label\",\"3\",\"name\"\n")
                  .contains(QStringLiteral("value 2 is of the wrong")));
  EXPECT_TRUE(FailureOf(QByteArray(kRecord1) + "\"label\",40000,\"name\"\n")
                  .contains(QStringLiteral("out of range")));
  EXPECT_TRUE(FailureOf(QByteArray(kRecord1) + "\"label\",3x,\"name\"\n").contains(QStringLiteral("3x")));
}

TEST_F(PathFile, LabelsAreNotReliedOn) {
  EXPECT_EQ(FailureOf(QByteArray(kRecord1) + "\"anything\",1,\"n\"\n\"\",#FALSE#\n\"?\",\"GS\"\n"),
            QString());
  EXPECT_EQ(Global().MidiMode, QStringLiteral("GS"));
}

TEST_F(PathFile, TextsSurviveARoundTrip) {
  Global().DatabasePath = QStringLiteral("C:\\Tunes, old\\\"best\".mdb");
  Global().DatabaseChangeDate = QDate(2026, 11, 21);
  Global().DatabaseChangeTime = QTime(23, 59, 59);
  Global().DatabaseChangePerson = QStringLiteral("Zoë \"Z\"");
  Global().DatabaseChangeComment = QStringLiteral("two\nlines # and \"\"");
  Global().MidiDeviceNumber = -5;
  Global().MidiDeviceName = QStringLiteral("\"");
  Global().MediaPlayerInstalled = true;
  Global().MidiMode = QStringLiteral("GM2");
  const Globals before = Global();
  WritePathFile(Path(), PathFileWriter::kMidiSetup);
  ResetGlobals();
  ReadPathFileIntoGlobals(Path());
  EXPECT_EQ(Global().DatabasePath, before.DatabasePath);
  EXPECT_EQ(Global().DatabaseChangeDate, before.DatabaseChangeDate);
  EXPECT_EQ(Global().DatabaseChangeTime, before.DatabaseChangeTime);
  EXPECT_EQ(Global().DatabaseChangePerson, before.DatabaseChangePerson);
  EXPECT_EQ(Global().DatabaseChangeComment, before.DatabaseChangeComment);
  EXPECT_EQ(Global().MidiDeviceNumber, before.MidiDeviceNumber);
  EXPECT_EQ(Global().MidiDeviceName, before.MidiDeviceName);
  EXPECT_TRUE(Global().MediaPlayerInstalled);
  EXPECT_EQ(Global().MidiMode, before.MidiMode);
}

TEST_F(PathFile, EveryWriterHasItsOwnLabels) {
  const auto labels = [this](PathFileWriter writer) {
    WritePathFile(Path(), writer);
    QStringList result;
    for (const QByteArray& line : Bytes().split('\n').mid(1, 3))
      result.append(QString::fromUtf8(line).section(u'"', 1, 1));
    return result;
  };
  EXPECT_EQ(labels(PathFileWriter::kMidiSetup),
            (QStringList{QStringLiteral("Midi output device"), QStringLiteral("Media Player"),
                         QStringLiteral("MIDI Mode")}));
  EXPECT_EQ(labels(PathFileWriter::kCreateDatabase),
            (QStringList{QStringLiteral("Midi output device"), QStringLiteral("Media player info"),
                         QStringLiteral("Midi mode")}));
  EXPECT_EQ(labels(PathFileWriter::kConnectDatabase),
            (QStringList{QStringLiteral("Midi output device"),
                         QStringLiteral("Midi Mode, and Media Player info"), QStringLiteral("Midi mode")}));
  const QStringList media = labels(PathFileWriter::kMediaPlayer);
  EXPECT_EQ(media[0], QStringLiteral("Midi output device"));
  EXPECT_EQ(media[2], QStringLiteral("Midi mode"));
}

TEST_F(PathFile, OneThatCannotBeWrittenIsAFailure) {
  EXPECT_THROW(
      WritePathFile(directory_.In(QStringLiteral("no/folder/frmPath.txt")), PathFileWriter::kMidiSetup),
      Failure);
}

TEST_F(PathFile, FirstStartFillsADirectoryAndTouchesNothingThatIsThere) {
  directory_.Write(QStringLiteral("source/ZelmarTemplate.mdb"), "template one");
  directory_.Write(QStringLiteral("source/Help/Texts/a.htm"), "page");
  const QString home = directory_.In(QStringLiteral("home"));
  const QString source = directory_.In(QStringLiteral("source"));
  FillApplicationDirectory(home, source);
  EXPECT_EQ(directory_.Read(QStringLiteral("home/Zelmar.mdb")), "template one");
  EXPECT_EQ(directory_.Read(QStringLiteral("home/Help/Texts/a.htm")), "page");
  ReadPathFileIntoGlobals(home + QStringLiteral("/frmPath.txt"));
  EXPECT_EQ(Global().DatabasePath, home + QStringLiteral("/Zelmar.mdb"));
  EXPECT_EQ(Global().MidiDeviceNumber, 0);

  directory_.Write(QStringLiteral("home/Zelmar.mdb"), "my tunes");
  directory_.Write(QStringLiteral("home/frmPath.txt"), "my settings");
  directory_.Write(QStringLiteral("source/ZelmarTemplate.mdb"), "template number two");
  FillApplicationDirectory(home, source);
  EXPECT_EQ(directory_.Read(QStringLiteral("home/Zelmar.mdb")), "my tunes");
  EXPECT_EQ(directory_.Read(QStringLiteral("home/frmPath.txt")), "my settings");
  EXPECT_EQ(directory_.Read(QStringLiteral("home/ZelmarTemplate.mdb")), "template number two");
}

// A copy that a full disk cut off is newer than what it was made of.
TEST_F(PathFile, AnOwnTemplateIsRenewedWhenItIsOlderOrCutOff) {
  const struct {
    const char* own;
    int days_newer;  // than the one that ships
    bool renewed;
  } kCases[] = {
      {"the templ", 1, true},     {"the templ", 0, true},     {"the templ", -1, true},    {"", 1, true},
      {"its template", 1, false}, {"its template", 0, false}, {"its template", -1, true},
  };
  const QDateTime shipped = QDateTime::currentDateTime().addDays(-10);
  directory_.Write(QStringLiteral("home/Zelmar.mdb"), "my tunes");
  const auto date = [this](const QString& name, const QDateTime& time) {
    QFile file(directory_.In(name));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(time, QFileDevice::FileModificationTime));
  };
  for (const auto& entry : kCases) {
    for (const char* name : {"ZelmarTemplate.mdb", "Help/Texts/a.htm"}) {
      const QString file = QLatin1String(name);
      directory_.Write(QStringLiteral("source/") + file, "the template");
      date(QStringLiteral("source/") + file, shipped);
      directory_.Write(QStringLiteral("home/") + file, entry.own);
      date(QStringLiteral("home/") + file, shipped.addDays(entry.days_newer));
    }
    FillApplicationDirectory(directory_.In(QStringLiteral("home")), directory_.In(QStringLiteral("source")));
    for (const char* name : {"ZelmarTemplate.mdb", "Help/Texts/a.htm"})
      EXPECT_EQ(directory_.Read(QStringLiteral("home/") + QLatin1String(name)),
                QByteArray(entry.renewed ? "the template" : entry.own))
          << entry.own << ", newer by " << entry.days_newer;
    EXPECT_EQ(directory_.Read(QStringLiteral("home/Zelmar.mdb")), "my tunes");
  }
}

TEST_F(PathFile, ANewerTemplateThatIsCutOffHarmsNoLibrary) {
  directory_.Write(QStringLiteral("source/ZelmarTemplate.mdb"), "templ");
  directory_.Write(QStringLiteral("home/ZelmarTemplate.mdb"), "the template");
  directory_.Write(QStringLiteral("home/Zelmar.mdb"), "my tunes");
  directory_.Write(QStringLiteral("home/frmPath.txt"), "my settings");
  FillApplicationDirectory(directory_.In(QStringLiteral("home")), directory_.In(QStringLiteral("source")));
  EXPECT_EQ(directory_.Read(QStringLiteral("home/Zelmar.mdb")), "my tunes");
  EXPECT_EQ(directory_.Read(QStringLiteral("home/frmPath.txt")), "my settings");
  const QStringList left = QDir(directory_.In(QStringLiteral("home"))).entryList(QDir::Files, QDir::Name);
  EXPECT_EQ(left, QStringList({QStringLiteral("Zelmar.mdb"), QStringLiteral("ZelmarTemplate.mdb"),
                               QStringLiteral("frmPath.txt")}));
}

TEST_F(PathFile, SettingsThatWereLostAreNotMadeUpAgain) {
  directory_.Write(QStringLiteral("source/ZelmarTemplate.mdb"), "template");
  directory_.Write(QStringLiteral("home/Zelmar.mdb"), "my tunes");
  FillApplicationDirectory(directory_.In(QStringLiteral("home")), directory_.In(QStringLiteral("source")));
  EXPECT_FALSE(QFile::exists(directory_.In(QStringLiteral("home/frmPath.txt"))));
  EXPECT_EQ(directory_.Read(QStringLiteral("home/Zelmar.mdb")), "my tunes");
}

TEST_F(PathFile, FirstStartTakesARelativeSource) {
  directory_.Write(QStringLiteral("source/ZelmarTemplate.mdb"), "template");
  directory_.Write(QStringLiteral("source/Help/Texts/a.htm"), "page");
  const QString before = QDir::currentPath();
  QDir::setCurrent(directory_.Path());
  FillApplicationDirectory(QStringLiteral("home"), QStringLiteral("source"));
  QDir::setCurrent(before);
  EXPECT_EQ(directory_.Read(QStringLiteral("home/Help/Texts/a.htm")), "page");
  EXPECT_EQ(directory_.Read(QStringLiteral("home/Zelmar.mdb")), "template");
}

TEST_F(PathFile, FirstStartWithoutATemplateIsAFailure) {
  EXPECT_THROW(FillApplicationDirectory(directory_.In(QStringLiteral("home")),
                                        directory_.In(QStringLiteral("nowhere"))),
               Failure);
  EXPECT_FALSE(QFile::exists(directory_.In(QStringLiteral("home/Zelmar.mdb"))));
}

TEST_F(PathFile, TuneStatementsSpellOutEveryEvent) {
  Tune tune;
  tune.SetTitle(QStringLiteral("Small"));
  tune.SetFileName(QStringLiteral("small"));
  tune.SetTempo(90);
  auto tone = std::make_shared<Tone>();
  tone->SetPitch(QStringLiteral("Ab5"));
  tone->SetBar(2);
  tone->SetBeat(3);
  tone->SetTick(30);
  tone->SetDuration(1.5);
  tone->SetInstrument(40);
  tone->SetAbsRef(9);
  tune.Add(tone);
  WriteTuneStatements(tune, tune.FileName());
  EXPECT_EQ(directory_.Read(QStringLiteral("small.TUN")),
            "Dim MyTone as tone, MyNewTune as tune\n"
            "Set myNewTune = New Tune\n"
            "MyNewTune.title=\"Small\"\n"
            "MyNewTune.FileName = \"small\"\n"
            "MyNewTune.beatsperbar = 4\n"
            "MyNewTune.tempo = 90\n"
            "Set MyTone = nothing\n"
            "set MyTone = new tone\n"
            "MyTone.pitch = \"Ab5\"\n"
            "MyTone.bar = 2\n"
            "MyTone.beat = 3\n"
            "MyTone.tick = 30\n"
            "MyTone.duration = 1.5\n"
            "MyTone.instrument= 40\n"
            "MyTone.track = 1\n"
            "MyTone.AbsRef = 9\n"
            "MyNewTune.Add MyTone\n"
            "mynewtune.MelodyStartTime=timer\n"
            "MyNewTune.Play\n");
}

TEST_F(PathFile, TuneStatementsGiveDurationsInFifteenDigits) {
  Tune tune;
  const struct {
    double duration;
    const char* text;
  } kDurations[] = {
      {1.0 / 3.0, "0.333333333333333"}, {0.1, "0.1"}, {4.0, "4"}, {2.0 / 3.0, "0.666666666666667"}};
  std::int32_t number = 0;
  for (const auto& entry : kDurations) {
    auto tone = std::make_shared<Tone>();
    tone->SetDuration(entry.duration);
    tone->SetAbsRef(++number);
    tune.Add(tone);
  }
  WriteTuneStatements(tune, QStringLiteral("digits"));
  QByteArrayList written;
  for (const QByteArray& line : directory_.Read(QStringLiteral("digits.TUN")).split('\n'))
    if (line.startsWith("MyTone.duration = ")) written.append(line.mid(18));
  ASSERT_EQ(written.size(), 4);
  for (qsizetype i = 0; i < 4; ++i) EXPECT_EQ(written[i], kDurations[i].text);
}

TEST_F(PathFile, ADiskThatIsFullKeepsTheOldRecords) {
  const QByteArray old = QByteArray(kRecord1) + kRecord2;
  EXPECT_EQ(FailureOf(old), QString());
  Global().DatabaseChangeComment = QString(200, u'x');
  {
    const FullDisk disk(static_cast<rlim_t>(old.size()));
    EXPECT_THROW(WritePathFile(Path(), PathFileWriter::kMidiSetup), Failure);
  }
  EXPECT_EQ(Bytes(), old);
}

TEST_F(PathFile, TuneStatementsNeverLeaveTheApplicationDirectory) {
  Tune tune;
  EXPECT_THROW(WriteTuneStatements(tune, QStringLiteral("../outside")), Failure);
  EXPECT_THROW(WriteTuneStatements(tune, QStringLiteral("no/such/folder")), Failure);
}

}  // namespace
}  // namespace zelmar
