// The start of the program: what its settings may lack, and all that the start-up tune sends.
#include "app/cold_start.h"

#include "app/main_window_fixture.h"
#include "model/path_file.h"

namespace zelmar {
namespace {

using namespace testing_support;

class Start : public MainWindowTest {
 protected:
  void WriteSettings(const char* mode, std::int16_t device = 0) {
    const Globals before = Global();
    Global().DatabasePath = database_.Path();
    Global().DatabaseChangeDate = QDate(2026, 1, 2);
    Global().DatabaseChangeTime = QTime(3, 4, 5);
    Global().MidiDeviceNumber = device;
    Global().MidiDeviceName = QStringLiteral("Recorder");
    Global().MidiMode = QString::fromLatin1(mode);
    WritePathFile(PathFile(), PathFileWriter::kMidiSetup);
    Global() = before;
  }
  // Settings of one's own making.
  void WriteRecords(const QByteArray& records) {
    QFile file(PathFile());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(records);
  }
  QString PathFile() const { return database_.Directory() + QStringLiteral("/frmPath.txt"); }
  QByteArray FirstTwoRecords() const {
    return "\"" + database_.Path().toUtf8() +
           "\",#2026-01-02#,#03:04:05#,\"me\",\"why\"\n\"Midi output device\",0,\"Recorder\"\n";
  }

  void RunColdStart() {
    start_ = ColdStart();
    QCoreApplication::processEvents();
  }

  ~Start() override { start_.main_window.reset(); }

  StartResult start_;
};

std::uint32_t Controller(std::uint32_t number, std::uint32_t channel, std::uint32_t value) {
  return 0xB0U + channel - 1U + number * 256U + value * 65536U;
}

TEST_F(Start, OpensTheDeviceResetsItAndPlaysTheSevenNotes) {
  WriteSettings("XG");
  RunColdStart();
  const auto& sent = platform_.midi->sent;
  ASSERT_GT(sent.size(), 2U);
  EXPECT_EQ(sent[0].kind, SentMessage::Kind::kOpen);
  EXPECT_EQ(sent[1].kind, SentMessage::Kind::kLong);
  EXPECT_EQ(sent[1].bytes, QByteArray::fromHex("f043104c00007e00f7"));

  std::vector<std::uint32_t> expected;
  const std::pair<std::uint32_t, std::uint32_t> controllers[] = {{121, 0}, {93, 0},  {91, 0},
                                                                 {7, 127}, {10, 64}, {1, 0}};
  for (std::uint32_t channel = 1; channel <= 16; ++channel)
    for (const auto& [number, value] : controllers) expected.push_back(Controller(number, channel, value));
  for (std::uint32_t channel = 1; channel <= 16; ++channel) {
    expected.push_back(Controller(7, channel, 127));
    expected.push_back(Controller(11, channel, 127));
  }
  // Banks of the track that a new tune has, and of the one that the melody brought.
  for (int track = 0; track < 2; ++track) {
    expected.push_back(Controller(0, 1, 0));
    expected.push_back(Controller(32, 1, 0));
  }
  const auto words = platform_.midi->ShortMessages();
  ASSERT_GT(words.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) ASSERT_EQ(words[i], expected[i]) << i;

  // E5 D5 C5 E5 G5 A5 G5 on patch 40, each ended before or as the next begins.
  std::vector<std::uint32_t> pitches;
  int patches = 0;
  int ends = 0;
  for (std::size_t i = expected.size(); i < words.size(); ++i) {
    const std::uint32_t status = words[i] & 0xFFU;
    if (status == 0xC0U) {
      EXPECT_EQ((words[i] >> 8) & 0xFFU, 40U);
      ++patches;
    } else if (status == 0x90U && (words[i] >> 16) != 0) {
      EXPECT_EQ(words[i] >> 16, 127U);
      pitches.push_back((words[i] >> 8) & 0xFFU);
    } else {
      EXPECT_EQ(status, 0x90U);
      ++ends;
    }
  }
  EXPECT_EQ(pitches, (std::vector<std::uint32_t>{76, 74, 72, 76, 79, 81, 79}));
  EXPECT_EQ(patches, 7);
  EXPECT_EQ(ends, 7);
}

TEST_F(Start, TheStartUpTuneRunsAt450CrotchetsAMinute) {
  WriteSettings("GM2");
  RunColdStart();
  // Seven notes of 400/3 milliseconds; the clock is held in single precision.
  EXPECT_NEAR(start_.tune_seconds, 7 * 60.0 / 450.0, 0.03);
}

TEST_F(Start, TwoRecordsAreEnoughAndTakeTheGMReset) {
  WriteRecords(FirstTwoRecords());
  RunColdStart();
  ASSERT_TRUE(start_.main_window);
  EXPECT_FALSE(Global().MediaPlayerInstalled);
  EXPECT_EQ(platform_.midi->sent[1].bytes, QByteArray::fromHex("f07e7f0901f7"));
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(Start, AnUnknownDeviceFallsBackToTheFirstAndTheFileStays) {
  WriteSettings("GM2", 7);
  QFile file(PathFile());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray before = file.readAll();
  file.close();
  RunColdStart();
  EXPECT_EQ(Global().MidiDeviceNumber, 0);
  EXPECT_EQ(platform_.midi->CountOf(SentMessage::Kind::kOpen), 2);
  EXPECT_EQ(platform_.midi->opened_device, 0);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), before);
}

TEST_F(Start, ARecordThatCannotBeReadEndsTheStartToo) {
  WriteRecords("not a record\n");
  RunColdStart();
  EXPECT_FALSE(start_.main_window);
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(Start, ADeviceThatCannotBeOpenedLeavesASilentWorkingProgram) {
  WriteSettings("GM2");
  platform_.midi->open_results = {MidiOutput::kAllocated};
  RunColdStart();
  ASSERT_TRUE(start_.main_window);
  EXPECT_FALSE(TheSoundCard()->Opened());
}

}  // namespace
}  // namespace zelmar
