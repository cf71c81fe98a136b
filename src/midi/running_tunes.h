// The tunes that play just now, whichever window or command started them.
#pragma once

namespace zelmar {

class Tune;

// Counts a tune among the running ones for the length of its Play.
class RunningTune {
 public:
  explicit RunningTune(Tune& tune);
  ~RunningTune();
  RunningTune(const RunningTune&) = delete;
  RunningTune& operator=(const RunningTune&) = delete;
};

// Stops each tune that plays. Failures are ignored, so that all of them are stopped.
void StopRunningTunes();

}  // namespace zelmar
