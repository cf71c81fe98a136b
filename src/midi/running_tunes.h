// The tunes that play just now, whichever window or command started them.
#pragma once

namespace zelmar {

class Tune;

// Counts a tune among the running ones for as long as its Play serves events.
class RunningTune {
 public:
  explicit RunningTune(Tune& tune);
  ~RunningTune();
  RunningTune(const RunningTune&) = delete;
  RunningTune& operator=(const RunningTune&) = delete;
};

// True when the loop of that tune's Play is the one that goes on next: the innermost of all, but for those of
// tunes that have ended and only wait to return.
bool RunsInnermost(const Tune& tune);

// Stops each tune that plays. Failures are ignored, so that all of them are stopped.
void StopRunningTunes();

}  // namespace zelmar
