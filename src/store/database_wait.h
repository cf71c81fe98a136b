// Waiting for another program that holds the database: up to two seconds, with the event queue served. Who
// looks at the program meanwhile is told by a listener of the windows, and can end the wait.
//
// The waiting stands between two attempts at a statement and never inside the engine, so that what the queue
// brings meanwhile may use the database through any connection, and may throw.
#pragma once

#include <functional>

namespace zelmar {

// One statement's wait. Lives as long as the attempts at it.
class DatabaseWait {
 public:
  DatabaseWait() = default;
  ~DatabaseWait();
  DatabaseWait(const DatabaseWait&) = delete;
  DatabaseWait& operator=(const DatabaseWait&) = delete;

  // Serves the queue for a moment, 1 ms at first and 20 ms later on. False once two seconds have passed since
  // the first call, or once the wait was cancelled.
  bool GoesOn();
  bool Cancelled() const;

 private:
  void Tell();

  bool begun_ = false;
  bool told_ = false;
  double start_ = 0.0;    // seconds since midnight
  double pause_ = 0.001;  // seconds
  int cancels_before_ = 0;
};

// Ends all waits that are under way: their statements fail.
void CancelDatabaseWaits();

// Called with true when a wait has lasted so long that a person may notice, and with false when the last such
// one is over. An empty function takes the listener away.
void SetDatabaseWaitListener(std::function<void(bool waiting)> listener);

}  // namespace zelmar
