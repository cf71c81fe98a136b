#include "platform/real_clock.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <ctime>
#include <thread>

namespace zelmar {

namespace {

// Longest single wait: a caller whose moment never comes (the clock went back at midnight) still sees the
// queue served.
constexpr double kLongestWaitSeconds = 0.020;

}  // namespace

double RealClock::SecondsSinceMidnight() {
  using namespace std::chrono;
  const auto now = system_clock::now();
  const std::time_t whole = system_clock::to_time_t(now);
  // localtime is slow and this is read a thousand times a second, so midnight is worked out once a minute.
  static std::time_t checked_minute = -1;
  static std::time_t midnight = 0;
  if (whole / 60 != checked_minute) {
    std::tm parts{};
#ifdef _WIN32
    localtime_s(&parts, &whole);
#else
    localtime_r(&whole, &parts);
#endif
    midnight = whole - (parts.tm_hour * 3600 + parts.tm_min * 60 + parts.tm_sec);
    checked_minute = whole / 60;
  }
  return duration<double>(now - system_clock::from_time_t(midnight)).count();
}

void RealEventService::Serve() {
  if (QCoreApplication::instance() != nullptr) QCoreApplication::processEvents();
}

void RealEventService::WaitUntil(double seconds) {
  const double remaining = std::min(seconds - SecondsSinceMidnight(), kLongestWaitSeconds);
  if (remaining <= 0.0 || QCoreApplication::instance() == nullptr) return;
  // Qt's timers count whole milliseconds, so the last fraction is slept through: the queue notices nothing of
  // it.
  const int milliseconds = static_cast<int>(remaining * 1000.0);
  if (milliseconds == 0) {
    std::this_thread::sleep_for(std::chrono::duration<double>(remaining));
    return;
  }
  QTimer timer;
  timer.setTimerType(Qt::PreciseTimer);
  timer.setSingleShot(true);
  timer.start(milliseconds);
  QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

}  // namespace zelmar
