#include "store/database_wait.h"

#include <algorithm>
#include <utility>

#include "platform/services.h"

namespace zelmar {

namespace {

// In seconds.
constexpr double kLongestWait = 2.0;
constexpr double kNoticedAfter = 0.2;
constexpr double kLongestPause = 0.020;
constexpr double kDay = 86400.0;

struct Waits {
  std::function<void(bool)> listener;
  int told = 0;  // waits that the listener knows of
  int cancels = 0;
};

Waits& AllWaits() {
  static Waits waits;
  return waits;
}

double SecondsFrom(double start) {
  const double passed = SecondsSinceMidnight() - start;
  return passed < 0.0 ? passed + kDay : passed;
}

}  // namespace

DatabaseWait::~DatabaseWait() {
  Waits& waits = AllWaits();
  if (!told_ || --waits.told > 0) return;
  if (waits.listener) waits.listener(false);
}

bool DatabaseWait::GoesOn() {
  if (!std::exchange(begun_, true)) {
    start_ = SecondsSinceMidnight();
    cancels_before_ = AllWaits().cancels;
  }
  const double passed = SecondsFrom(start_);
  if (passed >= kLongestWait || Cancelled()) return false;
  if (passed >= kNoticedAfter) Tell();
  ServeEvents();
  if (!Cancelled()) WaitUntil(SecondsSinceMidnight() + pause_);
  pause_ = std::min(2.0 * pause_, kLongestPause);
  return !Cancelled();
}

bool DatabaseWait::Cancelled() const {
  return begun_ && AllWaits().cancels != cancels_before_;
}

void DatabaseWait::Tell() {
  if (std::exchange(told_, true)) return;
  Waits& waits = AllWaits();
  if (++waits.told == 1 && waits.listener) waits.listener(true);
}

void CancelDatabaseWaits() {
  ++AllWaits().cancels;
}

void SetDatabaseWaitListener(std::function<void(bool waiting)> listener) {
  AllWaits().listener = std::move(listener);
}

}  // namespace zelmar
