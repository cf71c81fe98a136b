#include "platform/termination.h"

#include <QSocketNotifier>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#endif

namespace zelmar {

#ifdef Q_OS_UNIX

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

// The handler writes into the first, the event queue reads from the second. A handler may do no more.
int sockets[2] = {-1, -1};

void OnSignal(int) {
  const int error_before = errno;
  const char byte = 1;
  [[maybe_unused]] const auto written = ::write(sockets[0], &byte, 1);
  errno = error_before;
}

void SetHandlers(void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  sigemptyset(&action.sa_mask);
  action.sa_flags = SA_RESTART | SA_RESETHAND;
  for (const int signal : kSignals) sigaction(signal, &action, nullptr);
}

}  // namespace

TerminationWatch::TerminationWatch(QObject* parent) : QObject(parent) {
  if (::socketpair(AF_UNIX, SOCK_STREAM, 0, sockets) != 0) return;
  for (const int socket : sockets) ::fcntl(socket, F_SETFD, FD_CLOEXEC);
  notifier_ = std::make_unique<QSocketNotifier>(sockets[1], QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
    char byte = 0;
    if (::read(sockets[1], &byte, 1) == 1) Q_EMIT EndWanted();
  });
  SetHandlers(&OnSignal);
}

TerminationWatch::~TerminationWatch() {
  if (!notifier_) return;
  SetHandlers(SIG_DFL);
  notifier_.reset();
  for (int& socket : sockets) {
    ::close(socket);
    socket = -1;
  }
}

#else

TerminationWatch::TerminationWatch(QObject* parent) : QObject(parent) {}
TerminationWatch::~TerminationWatch() = default;

#endif

}  // namespace zelmar
