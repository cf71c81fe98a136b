// A sound server that crashes or halts in the middle of a tune: every call comes back, and the program goes
// on. A call that hangs would end these tests by their time limit.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QThread>

#include "midi/jack_flow.h"
#include "midi/jack_server_watch.h"
#include "midi/system_midi_output.h"
#include "support/dummy_sound_server.h"
#include "support/sound_file.h"

namespace zelmar {
namespace {

using testing_support::DummySoundServer;
using testing_support::MidiMonitor;
using testing_support::PortDeviceOf;
using testing_support::ScopedVariable;

// More than the ring of a port holds, several times over.
constexpr int kFlood = 20000;
constexpr std::uint32_t kNote = 0x00643C90U;

void Flood(MidiOutput& output) {
  for (int i = 0; i < kFlood; ++i) output.ShortMessage(kNote);
  output.LongMessage(QByteArray::fromHex("f07e7f0901f7"));
}

void WaitForBurial() {
  for (int i = 0; i < 2000 && JackServerWatch::AnyLost(); ++i) QThread::msleep(5);
}

class VanishingPort : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(monitor_.Listening()) << monitor_.Trouble().toStdString();
    device_ = PortDeviceOf(output_, monitor_.PortName());
    ASSERT_GT(device_, 0);
    ASSERT_EQ(output_.Open(device_), 0);
    output_.ShortMessage(kNote);
    ASSERT_TRUE(monitor_.WaitForMessages(1));
  }

  DummySoundServer server_;
  MidiMonitor monitor_{server_};
  SystemMidiOutput output_;
  int device_ = -1;
};

TEST_F(VanishingPort, AKilledServerLeavesASilentOutput) {
  server_.Kill();
  QElapsedTimer timer;
  timer.start();
  Flood(output_);
  output_.Reset();
  const qint64 sent = timer.restart();
  output_.Close();
  const qint64 closed = timer.restart();
  EXPECT_EQ(output_.DeviceName(0), QStringLiteral("Zelmar synthesiser"));
  const int devices = output_.DeviceCount();
  const qint64 counted = timer.elapsed();
  std::printf("server killed: %d messages in %lld ms, close %lld ms, look for ports %lld ms\n", kFlood, sent,
              closed, counted);
  for (int device = 1; device < devices; ++device) EXPECT_NE(output_.DeviceName(device), monitor_.PortName());
  WaitForBurial();
  EXPECT_FALSE(JackServerWatch::AnyLost());
}

TEST_F(VanishingPort, MessagesGoOnWhileTheServerDies) {
  for (int i = 0; i < 400; ++i) {
    if (i == 100) server_.Kill();
    for (int k = 0; k < 50; ++k) output_.ShortMessage(kNote);
    QThread::usleep(200);
  }
  EXPECT_EQ(output_.Open(device_), MidiOutput::kNotEnabled);
  EXPECT_FALSE(output_.ErrorText(MidiOutput::kNotEnabled).isEmpty());
  WaitForBurial();
}

TEST_F(VanishingPort, AHaltedServerIsGivenUp) {
  server_.Freeze();
  QElapsedTimer timer;
  timer.start();
  Flood(output_);
  const qint64 sent = timer.restart();
  output_.Reset();
  output_.Close();
  const qint64 closed = timer.elapsed();
  std::printf("server halted: %d messages in %lld ms, reset and close %lld ms\n", kFlood, sent, closed);
  server_.Thaw();
  WaitForBurial();
  EXPECT_FALSE(JackServerWatch::AnyLost());
}

TEST_F(VanishingPort, AMonitorThatLeavesHarmsNothing) {
  monitor_.Stop();
  Flood(output_);
  output_.Reset();
  output_.Close();
  EXPECT_FALSE(JackServerWatch::AnyLost());
  EXPECT_EQ(output_.Open(device_), MidiOutput::kNotEnabled);
  EXPECT_TRUE(output_.ErrorText(MidiOutput::kNotEnabled).contains(monitor_.PortName()));
}

TEST(VanishingServer, ANewServerIsUsedAfterACrash) {
  SystemMidiOutput output;
  {
    DummySoundServer server;
    MidiMonitor monitor(server);
    ASSERT_TRUE(monitor.Listening()) << monitor.Trouble().toStdString();
    ASSERT_EQ(output.Open(PortDeviceOf(output, monitor.PortName())), 0);
    server.Kill();
    output.ShortMessage(kNote);
    output.Close();
    WaitForBurial();
  }
  DummySoundServer server;
  MidiMonitor monitor(server);
  ASSERT_TRUE(monitor.Listening()) << monitor.Trouble().toStdString();
  ASSERT_EQ(output.Open(PortDeviceOf(output, monitor.PortName())), 0);
  output.ShortMessage(kNote);
  EXPECT_TRUE(monitor.WaitForMessages(1));
  output.Close();
}

TEST(VanishingServer, BeatsComeWhileItRunsAndNoneWhileItIsHalted) {
  DummySoundServer server;
  ASSERT_TRUE(server.Running()) << server.Trouble().toStdString();
  const auto watch = JackServerWatch::Start();
  ASSERT_NE(watch, nullptr);
  const std::uint32_t before = watch->Beats();
  EXPECT_TRUE(watch->WaitForBeat(std::chrono::seconds(10)));
  EXPECT_NE(watch->Beats(), before);
  server.Freeze();
  // A round that was under way may still come to its end.
  watch->WaitForBeat(std::chrono::milliseconds(100));
  EXPECT_FALSE(watch->WaitForBeat(std::chrono::milliseconds(100)));
  EXPECT_TRUE(watch->Alive());
  server.Thaw();
  EXPECT_TRUE(watch->WaitForBeat(std::chrono::seconds(10)));
}

TEST(VanishingServer, TheSynthesiserOutlivesTheServerItSoundsThrough) {
  const ScopedVariable driver("ZELMAR_AUDIO_DRIVER", QStringLiteral("jack"));
  DummySoundServer server;
  ASSERT_TRUE(server.Running()) << server.Trouble().toStdString();
  SystemMidiOutput output;
  ASSERT_EQ(output.Open(0), 0) << output.ErrorText(MidiOutput::kNotEnabled).toStdString();
  EXPECT_EQ(output.Synthesiser().AudioDriver(), QStringLiteral("jack"));
  output.ShortMessage(kNote);
  server.Kill();
  QElapsedTimer timer;
  timer.start();
  Flood(output);
  const qint64 sent = timer.restart();
  output.Reset();
  EXPECT_GE(output.DeviceCount(), 1);
  output.Close();
  std::printf("server of the synthesiser killed: %d messages in %lld ms, close %lld ms\n", kFlood, sent,
              timer.elapsed());
  EXPECT_FALSE(JackServerWatch::AnyLost());
}

TEST(JackFlow, AdmitsWhatTheRingHoldsAndNoMoreUntilTheServerGoesRound) {
  JackFlow flow;
  std::size_t admitted = 0;
  while (flow.Admit(3, 0)) ++admitted;
  EXPECT_EQ(admitted, JackFlow::kRoom / 7);
  EXPECT_FALSE(flow.Admit(3, 1));
}

TEST(JackFlow, CountsAMessageUntilARoundHasSurelyTakenIt) {
  JackFlow flow;
  while (flow.Admit(3, 0)) {
  }
  // All of it came after the last mark, so the first whole round only moves it before the mark.
  EXPECT_FALSE(flow.Admit(3, 2));
  EXPECT_FALSE(flow.Admit(3, 3));
  EXPECT_TRUE(flow.Admit(3, 4));
}

TEST(JackFlow, TheCountOfRoundsMayWrap) {
  JackFlow flow;
  EXPECT_TRUE(flow.Admit(3, 0xFFFFFFFFU));
  while (flow.Admit(3, 0xFFFFFFFFU)) {
  }
  EXPECT_FALSE(flow.Admit(3, 1));
  EXPECT_TRUE(flow.Admit(3, 3));
}

TEST(JackFlow, AMessageLargerThanTheRingNeverFits) {
  EXPECT_TRUE(JackFlow::NeverFits(JackFlow::kRoom));
  EXPECT_FALSE(JackFlow::NeverFits(JackFlow::kRoom - JackFlow::kHeader));
}

}  // namespace
}  // namespace zelmar
