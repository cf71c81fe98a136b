#include "support/dummy_sound_server.h"

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QThread>
#include <QUuid>
#include <algorithm>
#include <csignal>
#include <cstddef>
#include <string_view>

namespace zelmar::testing_support {

namespace {

constexpr const char* kDefaultServer = "JACK_DEFAULT_SERVER";
constexpr int kTurnMilliseconds = 80000;
constexpr int kStartMilliseconds = 20000;
constexpr int kEndMilliseconds = 5000;
constexpr int kPollMilliseconds = 20;
constexpr int kSettleMilliseconds = 100;
constexpr QDir::Filters kAnyFile = QDir::Files | QDir::System | QDir::Hidden;

// A test that crashes leaves nobody behind.
void EndWithThisProgram(QProcess& process) {
  process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

bool End(QProcess& process) {
  if (process.state() == QProcess::NotRunning) return true;
  process.terminate();
  if (process.waitForFinished(kEndMilliseconds)) return true;
  process.kill();
  process.waitForFinished(kEndMilliseconds);
  return false;
}

// A server that is told to end while a client is still leaving takes seconds over it.
void Settle() {
  QThread::msleep(kSettleMilliseconds);
}

QDir SharedMemory() {
  return QDir(QStringLiteral("/dev/shm"));
}

// The named semaphores of clients that lost their server.
void RemoveLeftovers(const QString& name) {
  QDir shared = SharedMemory();
  const QStringList files = shared.entryList({QStringLiteral("jack*%1_*").arg(name)}, kAnyFile);
  for (const QString& file : files) shared.remove(file);
}

// True once a program can connect. Each try is a client that comes and goes, which keeps the server busy, so
// the first look is at the file that it makes when it is ready for them.
bool ServerAnswers(const QString& name) {
  if (SharedMemory().entryList({QStringLiteral("jack_%1_*").arg(name)}, kAnyFile).isEmpty()) return false;
  Settle();
  QProcess question;
  question.setStandardOutputFile(QProcess::nullDevice());
  question.setStandardErrorFile(QProcess::nullDevice());
  question.start(QStringLiteral("jack_lsp"), {QStringLiteral("-s"), name});
  return question.waitForFinished(kEndMilliseconds) && question.exitStatus() == QProcess::NormalExit &&
         question.exitCode() == 0;
}

}  // namespace

DummySoundServer::DummySoundServer(int frames)
    : name_(QStringLiteral("zelmar-") + QUuid::createUuid().toString(QUuid::Id128).left(12)),
      frames_(frames),
      default_before_(qgetenv(kDefaultServer)),
      had_default_(qEnvironmentVariableIsSet(kDefaultServer)) {
  qputenv(kDefaultServer, name_.toLatin1());
  qputenv("JACK_NO_AUDIO_RESERVATION", "1");
  if (TakeTurn())
    Start();
  else
    trouble_ = QStringLiteral("another test keeps its sound server for too long");
}

bool DummySoundServer::TakeTurn() {
  // A name that only one socket bears at a time: it falls with its process and leaves no file.
  constexpr std::string_view kName = "zelmar-dummy-sound-server";
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::copy(kName.begin(), kName.end(), address.sun_path + 1);
  const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + kName.size());
  turn_ = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (turn_ < 0) return false;
  const QDeadlineTimer deadline(kTurnMilliseconds);
  while (::bind(turn_, reinterpret_cast<const sockaddr*>(&address), size) != 0) {
    if (deadline.hasExpired()) return false;
    QThread::msleep(kPollMilliseconds);
  }
  return true;
}

DummySoundServer::~DummySoundServer() {
  Thaw();
  Settle();
  if (!End(process_)) killed_ = true;
  // A server that was killed left its entry in the table that all servers share, which has few places. One of
  // the same name takes it over and gives it back.
  if (killed_) {
    Start();
    Settle();
    End(process_);
    RemoveLeftovers(name_);
  }
  if (turn_ >= 0) ::close(turn_);
  if (had_default_)
    qputenv(kDefaultServer, default_before_);
  else
    qunsetenv(kDefaultServer);
}

void DummySoundServer::Start() {
  running_ = false;
  EndWithThisProgram(process_);
  process_.setProcessChannelMode(QProcess::MergedChannels);
  process_.setStandardOutputFile(QProcess::nullDevice());
  process_.start(
      QStringLiteral("jackd"),
      {QStringLiteral("-r"), QStringLiteral("-n"), name_, QStringLiteral("-d"), QStringLiteral("dummy"),
       QStringLiteral("-r"), QStringLiteral("48000"), QStringLiteral("-p"), QString::number(frames_)});
  if (!process_.waitForStarted(kStartMilliseconds)) {
    trouble_ = QStringLiteral("jackd does not start: ") + process_.errorString();
    return;
  }
  const QDeadlineTimer deadline(kStartMilliseconds);
  while (!deadline.hasExpired() && process_.state() == QProcess::Running) {
    if (ServerAnswers(name_)) {
      running_ = true;
      return;
    }
    process_.waitForFinished(kPollMilliseconds);
  }
  trouble_ = QStringLiteral("jackd does not answer under the name ") + name_;
}

void DummySoundServer::Kill() {
  killed_ = true;
  running_ = false;
  process_.kill();
  process_.waitForFinished(kEndMilliseconds);
}

void DummySoundServer::Freeze() {
  if (process_.processId() > 0) ::kill(static_cast<pid_t>(process_.processId()), SIGSTOP);
}

void DummySoundServer::Thaw() {
  if (process_.processId() > 0) ::kill(static_cast<pid_t>(process_.processId()), SIGCONT);
}

MidiMonitor::MidiMonitor(const DummySoundServer& server) {
  if (!server.Running()) {
    trouble_ = server.Trouble();
    return;
  }
  EndWithThisProgram(process_);
  process_.setStandardOutputFile(folder_.filePath(QStringLiteral("printed")));
  process_.setStandardErrorFile(QProcess::nullDevice());
  process_.start(QStringLiteral("jack_midi_dump"), {QStringLiteral("monitor")});
  if (!process_.waitForStarted(kStartMilliseconds)) {
    trouble_ = QStringLiteral("jack_midi_dump does not start: ") + process_.errorString();
    return;
  }
  Settle();
  const QDeadlineTimer deadline(kStartMilliseconds);
  while (!deadline.hasExpired() && process_.state() == QProcess::Running) {
    QProcess ports;
    ports.start(QStringLiteral("jack_lsp"), {QStringLiteral("-s"), server.Name()});
    ports.waitForFinished(kEndMilliseconds);
    if (ports.readAllStandardOutput().contains(PortName().toUtf8())) {
      listening_ = true;
      return;
    }
    Settle();
  }
  trouble_ = QStringLiteral("jack_midi_dump does not listen");
}

MidiMonitor::~MidiMonitor() {
  Stop();
}

void MidiMonitor::Stop() {
  Settle();
  End(process_);
  Settle();
}

QByteArray MidiMonitor::Printed() const {
  QFile file(folder_.filePath(QStringLiteral("printed")));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::vector<QByteArray> MidiMonitor::Messages() const {
  // A line reads "   0: 90 3c 64 note on  (channel  0): pitch  60, velocity 100".
  std::vector<QByteArray> messages;
  const QByteArray printed = Printed();
  const QByteArray whole_lines = printed.left(printed.lastIndexOf('\n') + 1);
  for (const QByteArray& line : whole_lines.split('\n')) {
    const qsizetype colon = line.indexOf(':');
    if (colon < 0) continue;
    QByteArray bytes;
    for (const QByteArray& word : line.mid(colon + 1).simplified().split(' ')) {
      bool is_number = false;
      const int byte = word.toInt(&is_number, 16);
      if (word.size() != 2 || !is_number) break;
      bytes.append(static_cast<char>(byte));
    }
    if (!bytes.isEmpty()) messages.push_back(bytes);
  }
  return messages;
}

bool MidiMonitor::WaitForMessages(std::size_t count, int milliseconds) const {
  const QDeadlineTimer deadline(milliseconds);
  while (Messages().size() < count) {
    if (deadline.hasExpired()) return false;
    QThread::msleep(kPollMilliseconds);
  }
  return true;
}

int PortDeviceOf(MidiOutput& output, const QString& name) {
  const QDeadlineTimer deadline(kEndMilliseconds);
  do {
    const int count = output.DeviceCount();
    for (int device = 0; device < count; ++device)
      if (output.DeviceName(device) == name) return device;
    Settle();
  } while (!deadline.hasExpired());
  return -1;
}

}  // namespace zelmar::testing_support
