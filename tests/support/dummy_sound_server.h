// A sound server without a sound card and a MIDI monitor that listens to it: two other programs, so that a
// test sees what really leaves this one.
//
//   DummySoundServer server;
//   MidiMonitor monitor(server);
//   ASSERT_TRUE(monitor.Listening()) << monitor.Trouble().toStdString();
//   ... open the device that PortDeviceOf(output, monitor.PortName()) gives, and send ...
//   ASSERT_TRUE(monitor.WaitForMessages(3));
//
// Needs a QCoreApplication. Each server has a name of its own, and a second one waits until the first has
// gone, also in another process, since servers that start and crash side by side disturb each other: tests
// can run side by side. The monitor takes in 127 messages a round.
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <vector>

#include "platform/services.h"

namespace zelmar::testing_support {

class DummySoundServer {
 public:
  // 43 ms a round: a busy machine keeps up with it.
  static constexpr int kFrames = 2048;

  // Starts the server and makes it the default one of this process. `frames` are those of a round, at 48000 a
  // second.
  explicit DummySoundServer(int frames = kFrames);
  // Ends the server and gives back what it held in shared memory, also after a Kill.
  ~DummySoundServer();
  DummySoundServer(const DummySoundServer&) = delete;
  DummySoundServer& operator=(const DummySoundServer&) = delete;

  bool Running() const { return running_; }
  // Why it does not run.
  QString Trouble() const { return trouble_; }
  const QString& Name() const { return name_; }

  // Ends it with no warning, as a crash does.
  void Kill();
  // Halts it, and lets it go on.
  void Freeze();
  void Thaw();

 private:
  bool TakeTurn();
  void Start();

  int turn_ = -1;  // a socket with the name of the turn
  QString name_;
  int frames_;
  QByteArray default_before_;
  bool had_default_ = false;
  QProcess process_;
  bool running_ = false;
  bool killed_ = false;
  QString trouble_;
};

class MidiMonitor {
 public:
  // Starts the monitor at the server and waits until it listens.
  explicit MidiMonitor(const DummySoundServer& server);
  ~MidiMonitor();
  MidiMonitor(const MidiMonitor&) = delete;
  MidiMonitor& operator=(const MidiMonitor&) = delete;

  bool Listening() const { return listening_; }
  QString Trouble() const { return trouble_; }
  // The port as a MIDI output lists it.
  QString PortName() const { return QStringLiteral("monitor:input"); }

  // Ends the monitor, and with it its port.
  void Stop();

  // What the monitor printed so far.
  QByteArray Printed() const;
  // The bytes of each message, in order of arrival.
  std::vector<QByteArray> Messages() const;
  // False when fewer have come within the time.
  bool WaitForMessages(std::size_t count, int milliseconds = 10000) const;

 private:
  QTemporaryDir folder_;
  QProcess process_;
  bool listening_ = false;
  QString trouble_;
};

// The number of the device with this name, -1 when the output has none. Looks again for a few seconds.
int PortDeviceOf(MidiOutput& output, const QString& name);

}  // namespace zelmar::testing_support
